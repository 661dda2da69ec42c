#pragma once

#include "QTextEditorBlockData.h"

#include <QColor>
#include <QList>
#include <QSyntaxHighlighter>

class QSyntaxHierarchy;
class QSyntaxProperties;

// The languages a text document can be read in.
enum QSyntaxType : int
{
    SyntaxNone = 0,
    SyntaxMugen = 1,
    SyntaxLua = 2
};

// Reads a document block by block: colours it, notes findings, brackets and the fold level in each
// block's QTextEditorBlockData, and passes a block state on to the next block. Each language derives
// its own; the processor also owns the outline (hierarchy) of its language.
//
// A subclass's highlightBlock() calls the base first, which gives the block its data, then sets the
// block state to 0, parses the block collecting findings with addMessage() and brackets with
// addParenthesis(), hands them to the block with storeFindings(), and takes the previous block's state
// when its own is still 0.
class QSyntaxProcessor : public QSyntaxHighlighter
{
    Q_OBJECT
public:
    QSyntaxProcessor(QTextDocument* document, int syntaxType, QSyntaxProperties* properties = nullptr);
    ~QSyntaxProcessor() override;

protected:
    // Makes sure the block in hand has its data; subclasses call it first.
    void highlightBlock(const QString& text) override;

public:
    // The outline of the text; a part of the processor.
    virtual QSyntaxHierarchy* hierarchy() = 0;

protected:
    // Called after the version changed.
    virtual void refreshVersion() = 0;

public:
    int syntaxType() const { return m_syntaxType; }
    QSyntaxProperties* properties() const { return m_properties; }

    // The encoded M.U.G.E.N. version the text is checked against; 0x1010000 is 1.1.0.0.
    quint32 mugenVersion() const { return m_mugenVersion; }
    void setMugenVersion(quint32 version);

    // With checking off, errors are neither reported nor underlined; warnings and notices still are.
    bool isChecking() const { return m_checking; }
    void setChecking(bool checking) { m_checking = checking; }

    // The number of findings of kind error in the whole document.
    int errorCount() const;

    // The underline colour of a kind of finding.
    static QColor messageColor(int kind);

    static constexpr quint32 DefaultMugenVersion = 0x1010000;

protected:
    // The data of the block in hand, made on first need.
    QTextEditorBlockData* blockData();
    // Notes a finding of the block in hand and underlines its columns, leaving the colour of the text
    // as it is. An error is dropped while checking is off.
    void addMessage(QSyntaxMessageKind kind, int start, int end, const QString& text);
    // Underlines the columns from start up to end in a colour, keeping the colours the text has.
    void underline(int start, int end, const QColor& color);
    void addParenthesis(int type, int character, int position);
    // Moves the collected findings and brackets into the block's data, replacing what it held.
    void storeFindings(QTextEditorBlockData* data);

    QList<QSyntaxMessage> m_messages;
    QList<QSyntaxParenthesis> m_parentheses;

private:
    int m_syntaxType;
    QSyntaxProperties* m_properties;
    quint32 m_mugenVersion = DefaultMugenVersion;
    bool m_checking = true;
};
