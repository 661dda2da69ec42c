#pragma once

#include "QBracketMatcher.h"
#include "QCompletionModels.h"

#include <QBasicTimer>
#include <QPlainTextEdit>
#include <QTextBlock>
#include <QTimer>

class QCompleter;
class QEditorExtraArea;

// The code editor of the program, for project text files and scripts. It shows a document that a
// QSyntaxTextEditor owns (or a bare one) and reads what the checkers leave on each block: the fold
// level for folding and the bracket lists for bracket matching. Everything costly (bracket search,
// scope highlight) runs off single-shot timers, so typing and cursor moves never wait for it, and the
// gutter only repaints the band the text repainted.
class QTextEditor : public QPlainTextEdit
{
    Q_OBJECT
public:
    explicit QTextEditor(QWidget* parent = nullptr);
    ~QTextEditor() override;

    // Shows the document, giving it a QTextDocLayout; null shows a new empty document of the editor.
    void setDocument(QTextDocument* document);

    // Reads the word lists; false when the file is absent, unreadable or not a completion file.
    bool setCompletionFile(const QString& path);
    QCompleter* completer() const { return m_completer; }

    // A block without checker data is at level 0.
    static int foldLevel(const QTextBlock& block);
    // The next block is deeper than this one.
    static bool canFold(const QTextBlock& block);
    // The last block of the scope a foldable block opens (the block itself when it can't fold).
    static QTextBlock scopeEnd(const QTextBlock& block);
    bool isFolded(int blockNumber) const;
    void foldBlock(int blockNumber);
    void unfoldBlock(int blockNumber);
    void unfoldAll();

    // The bracket at the cursor and its partner, as the marks show them.
    QBracketMatcher::Result matchBracket() const;
    // Moves the cursor behind the partner of the bracket at the cursor (or selects up to and including
    // it); false when there is no matched partner.
    bool jumpToMatchingBracket();
    bool selectToMatchingBracket();

    bool lineNumbersVisible() const { return m_lineNumbersVisible; }
    void setLineNumbersVisible(bool visible);
    bool foldingEnabled() const { return m_foldingEnabled; }
    void setFoldingEnabled(bool enabled);
    bool highlightBlocks() const { return m_highlightBlocks; }
    void setHighlightBlocks(bool enabled) { m_highlightBlocks = enabled; }
    bool parenthesesMatching() const { return m_parenthesesMatching; }
    void setParenthesesMatching(bool enabled) { m_parenthesesMatching = enabled; }
    bool highlightCurrentLine() const { return m_highlightCurrentLine; }
    void setHighlightCurrentLine(bool enabled);

    // The formats of a matched bracket, of an unmatched one and of the text between a matched pair.
    QTextCharFormat matchFormat() const { return m_matchFormat; }
    QTextCharFormat mismatchFormat() const { return m_mismatchFormat; }
    QTextCharFormat rangeFormat() const { return m_rangeFormat; }
    void setBracketFormats(const QTextCharFormat& match, const QTextCharFormat& mismatch,
                           const QTextCharFormat& range);
    // The marks of a search, kept apart from the editor's own marks.
    void setSearchSelections(const QList<QTextEdit::ExtraSelection>& selections);

    // The gutter and its parts, in gutter coordinates.
    QWidget* extraArea() const;
    int foldMarkerLeft() const;
    // Where a line stands in the viewport (and, vertically, in the gutter); empty for a hidden line.
    QRect lineRect(int blockNumber) const;
    // The " ... " box behind a folded block, in viewport coordinates; empty when not shown.
    QRect foldedBoxRect(int blockNumber) const;
    // The block whose scope is highlighted, -1 for none.
    int highlightedBlock() const { return extraAreaHighlightBlock; }

    virtual int extraAreaWidth(QFontMetrics* out = nullptr) const;
    virtual void extraAreaLeaveEvent(QEvent* event);
    virtual void extraAreaPaintEvent(QPaintEvent* event);
    virtual void extraAreaMouseEvent(QMouseEvent* event);

Q_SIGNALS:
    void requestBlockUpdate(const QTextBlock& block);
    // 1-based column and line of the cursor.
    void cursorChanged(QPoint pos);
    // 0-based line of the cursor, when it changes.
    void currentLineChanged(int line);

public Q_SLOTS:
    void slotUpdateExtraAreaWidth();
    void slotUpdateRequest(const QRect& r, int dy);
    void slotCursorPositionChanged();
    void slotUpdateBlockNotify(const QTextBlock& block);
    void slotSelectionChanged();
    void insertCompletion(const QString& completion);
    void parenthesesMatchingTimeOut();
    void blockHighlightTimeOut();

protected:
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void applyExtraSelections();
    void updateCurrentLineSelection();
    void setFolded(const QTextBlock& block, bool folded);
    void moveCursorVisible();
    void updateCompletion(QKeyEvent* event);
    void gutterSelect(int y);
    void autoScrollStep();
    void computeScopes();
    QTextBlock blockAtY(int y) const;
    QString wordBeforeCursor() const;

    QEditorExtraArea* m_extraArea;
    QCompleter* m_completer;
    QCompletionModels completionModels;
    QTimer parenthesesTimer;
    QTimer blockHighlightTimer;
    QBasicTimer autoScrollTimer;
    QBasicTimer hoverTimer;
    QPoint autoScrollPos;

    QTextCharFormat m_matchFormat;
    QTextCharFormat m_mismatchFormat;
    QTextCharFormat m_rangeFormat;
    QList<QTextEdit::ExtraSelection> currentLineSelections;
    QList<QTextEdit::ExtraSelection> bracketSelections;
    QList<QTextEdit::ExtraSelection> searchSelections;

    int extraAreaHighlightBlock = -1;
    int nextHighlightBlock = -1;
    int extraAreaSelectionAnchor = -1;
    int currentLine = -1;
    // The highlighted scopes from the outermost in, as first and last block numbers.
    QList<QPair<int, int>> scopes;

    bool m_lineNumbersVisible = true;
    bool m_foldingEnabled = true;
    bool m_highlightBlocks = false;
    bool m_parenthesesMatching = true;
    bool m_highlightCurrentLine = true;
};
