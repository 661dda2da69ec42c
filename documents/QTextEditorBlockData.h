#pragma once

#include <QList>
#include <QString>
#include <QTextBlock>
#include <QTextBlockUserData>

class QTextElement;

// How grave a finding of a syntax processor is. Only errors count as errors; the issue list takes the
// other two as warnings, and they are kept even when the processor's checking is off.
enum QSyntaxMessageKind : int
{
    SyntaxError = 0,
    SyntaxWarning = 1,
    SyntaxNotice = 2
};

// One finding of a syntax processor on a line: columns start to end (exclusive) of the block.
struct QSyntaxMessage
{
    QSyntaxMessageKind kind = SyntaxError;
    int start = 0;
    int end = 0;
    QString text;
};

// One bracket of a line, for bracket matching in the code editor.
struct QSyntaxParenthesis
{
    enum Type : int
    {
        Opening = 0,
        Closing = 1
    };

    int type = Opening;
    // The bracket's character code: '(', ')', '[' or ']'.
    int character = 0;
    // Column in the block.
    int position = 0;
};

// What a text block remembers. Every user data set on the blocks of an element document is of this
// class: the element side keeps the element of the line here, the syntax side its own findings.
class QTextEditorBlockData : public QTextBlockUserData
{
public:
    QTextEditorBlockData() = default;
    ~QTextEditorBlockData() override;

    // The data of the block, made on first need.
    static QTextEditorBlockData* of(QTextBlock block);
    // The element on the block, or null; never makes data.
    static QTextElement* elementOf(const QTextBlock& block)
    {
        auto* data = static_cast<QTextEditorBlockData*>(block.userData());
        return data ? data->element : nullptr;
    }

    // The element on this line, or null.
    QTextElement* element = nullptr;

    // Written by the syntax processor each time it reads the line.
    int reserved = 0;
    // The line's first token is "[": a section header.
    bool header = false;
    // A blank, comment or header line from which the next section header follows with nothing but
    // blank and comment lines between.
    bool preSection = false;
    // 0 at the top of the file; negative in a text that starts out of order.
    int foldLevel = 0;
    QList<QSyntaxMessage> messages;
    // The brackets of the line in text order.
    QList<QSyntaxParenthesis> parentheses;
    // The code editor folded the lines of this block's scope. Kept on the block, as the hidden state of
    // those lines is, so that a scope folded inside a folded one stays folded when the outer one opens.
    bool folded = false;

    // The line of the file as it was last read that this block was made from, or -1. Saving uses it to
    // give lines that were not edited their own bytes and line end again.
    int sourceLine = -1;
};
