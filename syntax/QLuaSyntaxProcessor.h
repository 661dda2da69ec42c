#pragma once

#include "QLuaSyntaxHierarchy.h"
#include "QSyntaxProcessor.h"

class QLuaSyntaxProperties;

// The colourer of Lua scripts: keywords, numbers, strings, comments and the names of the vocabulary's
// functions and classes, and the brackets of each line. It never reports a finding and sets no fold
// levels.
//
// The block state records a long string or long comment left open at the end of a line: the level of
// its bracket plus one in the low 30 bits, with LongStringState or LongCommentState on top. Every block
// is still lexed from the normal state, so the colour of such a span ends with its first line.
class QLuaSyntaxProcessor : public QSyntaxProcessor
{
    Q_OBJECT
public:
    // The lexer's token kinds; the reserved words are 17 to 37 in alphabetical order.
    enum TokenKind
    {
        End = 0,
        Name = 1,
        Number = 2,
        String = 3,
        LongString = 4,
        Comment = 5,
        LongComment = 6,
        Operator = 7,
        LessEqual = 8,
        GreaterEqual = 9,
        EqualEqual = 10,
        NotEqual = 11,
        Concat = 12,
        Dots = 13,
        BracketOpen = 14,
        BracketClose = 15,
        UnfinishedString = 16,
        FirstReserved = 17,
        LastReserved = 37
    };

    static constexpr int LongStringState = 0x40000000;
    static constexpr int LongCommentState = int(0xC0000000u);
    static constexpr int LevelMask = 0x3FFFFFFF;

    QLuaSyntaxProcessor(QTextDocument* document, QLuaSyntaxProperties* properties);

    QSyntaxHierarchy* hierarchy() override { return &m_hierarchy; }

protected:
    void highlightBlock(const QString& text) override;
    void refreshVersion() override;

private:
    int next();
    int longBracketLevel(int at) const;
    bool closeLongBracket(int level);
    void skipName();
    void readNumber();
    void colour(int kind);

    QLuaSyntaxProperties* m_vocabulary;
    QLuaSyntaxHierarchy m_hierarchy;

    // Scan state of the block in hand.
    const QChar* m_text = nullptr;
    int m_length = 0;
    int m_pos = 0;
    int m_start = 0;
    // The level of the long bracket that was open at the end of the previous block.
    int m_level = 0;
    int m_endState = 0;
};
