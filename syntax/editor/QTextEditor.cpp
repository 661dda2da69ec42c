// The code editor: document hand-over, folding, bracket marks, the scope highlight and the painting of
// the text area. The gutter is in QTextEditorGutter.cpp, completion in QTextEditorCompletion.cpp.

#include "QTextEditor.h"

#include "QEditorExtraArea.h"
#include "QScopeColors.h"
#include "QTextDocLayout.h"
#include "QTextEditorBlockData.h"

#include <QCompleter>
#include <QPainter>
#include <QTextLayout>

namespace {

// Unfolding while a fold is repaired must not start another repair.
bool repairingFolds = false;

QTextEditorBlockData* dataOf(const QTextBlock& block)
{
    return static_cast<QTextEditorBlockData*>(block.userData());
}

QTextEdit::ExtraSelection markAt(QTextDocument* document, int from, int to, const QTextCharFormat& format)
{
    QTextEdit::ExtraSelection selection;
    selection.cursor = QTextCursor(document);
    selection.cursor.setPosition(from);
    selection.cursor.setPosition(to, QTextCursor::KeepAnchor);
    selection.format = format;
    return selection;
}

} // namespace

QTextEditor::QTextEditor(QWidget* parent)
    : QPlainTextEdit(parent), m_extraArea(new QEditorExtraArea(this)), m_completer(new QCompleter(this)),
      completionModels(this)
{
    // The editor fills the background itself, under the scope highlight.
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    // A scroll bar that comes and goes would change the width of the text while typing.
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setLineWrapMode(QPlainTextEdit::NoWrap);

    m_completer->setWidget(this);
    m_completer->setCompletionMode(QCompleter::PopupCompletion);
    m_completer->setModelSorting(QCompleter::CaseInsensitivelySortedModel);
    m_completer->setCaseSensitivity(Qt::CaseInsensitive);
    m_completer->setWrapAround(false);
    connect(m_completer, qOverload<const QString&>(&QCompleter::activated), this,
            &QTextEditor::insertCompletion);

    parenthesesTimer.setSingleShot(true);
    blockHighlightTimer.setSingleShot(true);
    connect(&parenthesesTimer, &QTimer::timeout, this, &QTextEditor::parenthesesMatchingTimeOut);
    connect(&blockHighlightTimer, &QTimer::timeout, this, &QTextEditor::blockHighlightTimeOut);

    connect(this, &QPlainTextEdit::blockCountChanged, this, &QTextEditor::slotUpdateExtraAreaWidth);
    connect(this, &QPlainTextEdit::updateRequest, this, &QTextEditor::slotUpdateRequest);
    connect(this, &QPlainTextEdit::selectionChanged, this, &QTextEditor::slotSelectionChanged);

    QTextCharFormat match;
    match.setBackground(QColor(180, 238, 180));
    QTextCharFormat mismatch;
    mismatch.setBackground(QColor(255, 160, 160));
    mismatch.setForeground(QColor(160, 0, 0));
    QTextCharFormat range;
    range.setBackground(QColor(236, 244, 236));
    setBracketFormats(match, mismatch, range);

    setDocument(nullptr);
}

QTextEditor::~QTextEditor()
{
    parenthesesTimer.stop();
    blockHighlightTimer.stop();
    // The document may outlive the editor; nothing of it may call back into a half-destroyed editor.
    if (QTextDocument* shown = document()) {
        disconnect(shown, nullptr, this, nullptr);
        if (shown->documentLayout()) disconnect(shown->documentLayout(), nullptr, this, nullptr);
    }
}

void QTextEditor::setDocument(QTextDocument* newDocument)
{
    disconnect(this, &QPlainTextEdit::cursorPositionChanged, this, &QTextEditor::slotCursorPositionChanged);
    parenthesesTimer.stop();
    blockHighlightTimer.stop();
    if (QTextDocument* old = document()) {
        disconnect(old, nullptr, this, nullptr);
        if (old->documentLayout()) disconnect(old->documentLayout(), nullptr, this, nullptr);
    }
    if (!newDocument) newDocument = new QTextDocument(this);

    QTextDocLayout* layout = QTextDocLayout::install(newDocument);
    QPlainTextEdit::setDocument(newDocument);
    connect(layout, &QAbstractTextDocumentLayout::updateBlock, this, &QTextEditor::slotUpdateBlockNotify);
    connect(newDocument, &QTextDocument::contentsChange, this, [this](int position, int, int added) {
        // An edit can end a fold (its header lost its scope) or put a visible line into a folded scope
        // (a new line behind the header); only the lines of the edit and the one before are concerned.
        QTextBlock block = document()->findBlock(position);
        const QTextBlock last = document()->findBlock(position + added);
        if (block.previous().isValid()) block = block.previous();
        for (; block.isValid(); block = block.next()) {
            slotUpdateBlockNotify(block);
            if (block == last) break;
        }
    });
    connect(this, &QTextEditor::requestBlockUpdate, layout, &QAbstractTextDocumentLayout::updateBlock,
            Qt::UniqueConnection);

    extraAreaHighlightBlock = nextHighlightBlock = extraAreaSelectionAnchor = currentLine = -1;
    scopes.clear();
    bracketSelections.clear();
    searchSelections.clear();
    currentLineSelections.clear();
    connect(this, &QPlainTextEdit::cursorPositionChanged, this, &QTextEditor::slotCursorPositionChanged);
    slotUpdateExtraAreaWidth();
    slotCursorPositionChanged();
}

int QTextEditor::foldLevel(const QTextBlock& block)
{
    const QTextEditorBlockData* data = dataOf(block);
    return data ? data->foldLevel : 0;
}

bool QTextEditor::canFold(const QTextBlock& block)
{
    const QTextBlock next = block.next();
    return next.isValid() && foldLevel(next) > foldLevel(block);
}

QTextBlock QTextEditor::scopeEnd(const QTextBlock& block)
{
    const int level = foldLevel(block);
    QTextBlock last = block;
    for (QTextBlock next = block.next(); next.isValid() && foldLevel(next) > level; next = next.next())
        last = next;
    return last;
}

bool QTextEditor::isFolded(int blockNumber) const
{
    const QTextBlock block = document()->findBlockByNumber(blockNumber);
    const QTextEditorBlockData* data = dataOf(block);
    return data && data->folded && canFold(block);
}

void QTextEditor::foldBlock(int blockNumber)
{
    setFolded(document()->findBlockByNumber(blockNumber), true);
}

void QTextEditor::unfoldBlock(int blockNumber)
{
    setFolded(document()->findBlockByNumber(blockNumber), false);
}

void QTextEditor::unfoldAll()
{
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
        if (QTextEditorBlockData* data = dataOf(block)) data->folded = false;
        QTextDocLayout::setBlockHidden(block, false);
    }
    static_cast<QTextDocLayout*>(document()->documentLayout())->endHiding();
    slotUpdateExtraAreaWidth();
}

void QTextEditor::setFolded(const QTextBlock& block, bool folded)
{
    if (!block.isValid() || !canFold(block)) return;
    QTextEditorBlockData::of(block)->folded = folded;
    const int level = foldLevel(block);
    QTextBlock next = block.next();
    while (next.isValid() && foldLevel(next) > level) {
        QTextDocLayout::setBlockHidden(next, folded);
        const QTextEditorBlockData* data = dataOf(next);
        if (!folded && data && data->folded && canFold(next)) {
            // A scope folded on its own stays folded inside the one that opens.
            next = scopeEnd(next).next();
            continue;
        }
        next = next.next();
    }
    static_cast<QTextDocLayout*>(document()->documentLayout())->endHiding();
    emit requestBlockUpdate(block);
    if (folded) moveCursorVisible();
}

void QTextEditor::moveCursorVisible()
{
    QTextCursor cursor = textCursor();
    QTextBlock block = cursor.block();
    if (!block.isVisible()) {
        while (block.isValid() && !block.isVisible())
            block = block.previous();
        // Visual navigation lets later moves of this cursor skip the hidden lines.
        cursor.setVisualNavigation(true);
        cursor.setPosition(block.isValid() ? block.position() + block.length() - 1 : 0);
        setTextCursor(cursor);
    }
    ensureCursorVisible();
}

void QTextEditor::slotUpdateBlockNotify(const QTextBlock& block)
{
    if (repairingFolds || !block.isValid()) return;
    repairingFolds = true;
    const QTextEditorBlockData* data = dataOf(block);
    // A folded header whose scope lost its lines, or got a visible one, opens: a fold never hides text
    // the user did not see folded.
    if (data && data->folded && (!canFold(block) || block.next().isVisible())) {
        if (canFold(block)) {
            setFolded(block, false);
        } else {
            QTextEditorBlockData::of(block)->folded = false;
            for (QTextBlock next = block.next(); next.isValid() && !next.isVisible(); next = next.next())
                QTextDocLayout::setBlockHidden(next, false);
            static_cast<QTextDocLayout*>(document()->documentLayout())->endHiding();
        }
    }
    repairingFolds = false;
}

QBracketMatcher::Result QTextEditor::matchBracket() const
{
    const int position = textCursor().position();
    const QBracketMatcher::Result forward = QBracketMatcher::forward(document(), position);
    return forward.kind != QBracketMatcher::None ? forward : QBracketMatcher::backward(document(), position);
}

bool QTextEditor::jumpToMatchingBracket()
{
    const QBracketMatcher::Result result = matchBracket();
    if (result.kind != QBracketMatcher::Match) return false;
    QTextCursor cursor = textCursor();
    cursor.setPosition(result.partner > result.bracket ? result.partner + 1 : result.partner);
    setTextCursor(cursor);
    return true;
}

bool QTextEditor::selectToMatchingBracket()
{
    const QBracketMatcher::Result result = matchBracket();
    if (result.kind != QBracketMatcher::Match) return false;
    QTextCursor cursor = textCursor();
    const bool forward = result.partner > result.bracket;
    cursor.setPosition(forward ? result.bracket : result.bracket + 1);
    cursor.setPosition(forward ? result.partner + 1 : result.partner, QTextCursor::KeepAnchor);
    setTextCursor(cursor);
    return true;
}

void QTextEditor::parenthesesMatchingTimeOut()
{
    if (isReadOnly()) return;
    const bool hadMarks = !bracketSelections.isEmpty();
    bracketSelections.clear();
    const int position = textCursor().position();
    QList<QTextEdit::ExtraSelection> brackets;
    for (const QBracketMatcher::Result& result :
         {QBracketMatcher::forward(document(), position), QBracketMatcher::backward(document(), position)}) {
        if (result.kind == QBracketMatcher::Mismatch) {
            brackets << markAt(document(), result.bracket, result.bracket + 1, m_mismatchFormat);
        } else if (result.kind == QBracketMatcher::Match) {
            const int first = qMin(result.bracket, result.partner);
            const int second = qMax(result.bracket, result.partner);
            // The range lies under the brackets' own marks.
            if (m_parenthesesMatching && second > first + 1)
                bracketSelections << markAt(document(), first + 1, second, m_rangeFormat);
            brackets << markAt(document(), first, first + 1, m_matchFormat)
                     << markAt(document(), second, second + 1, m_matchFormat);
        }
    }
    bracketSelections << brackets;
    // Most cursor moves are nowhere near a bracket; they cost no repaint.
    if (hadMarks || !bracketSelections.isEmpty()) applyExtraSelections();
}

void QTextEditor::blockHighlightTimeOut()
{
    if (extraAreaHighlightBlock < 0 && nextHighlightBlock < 0) return;
    extraAreaHighlightBlock = nextHighlightBlock;
    computeScopes();
    viewport()->update();
    m_extraArea->update();
}

void QTextEditor::computeScopes()
{
    scopes.clear();
    const QTextBlock block = document()->findBlockByNumber(extraAreaHighlightBlock);
    if (!block.isValid()) return;
    int level = foldLevel(block);
    if (canFold(block)) scopes.prepend({block.blockNumber(), scopeEnd(block).blockNumber()});
    // The enclosing scopes, each opened by the nearest earlier line of a lower level.
    for (QTextBlock previous = block.previous(); previous.isValid(); previous = previous.previous()) {
        const int previousLevel = foldLevel(previous);
        if (previousLevel >= level) continue;
        level = previousLevel;
        if (canFold(previous)) scopes.prepend({previous.blockNumber(), scopeEnd(previous).blockNumber()});
    }
}

void QTextEditor::slotCursorPositionChanged()
{
    const QTextCursor cursor = textCursor();
    const QTextBlock block = cursor.block();
    emit cursorChanged(QPoint(cursor.positionInBlock() + 1, block.blockNumber() + 1));
    if (block.blockNumber() != currentLine) {
        const QTextBlock old = document()->findBlockByNumber(currentLine);
        currentLine = block.blockNumber();
        // Only the two numbers whose weight changes are painted again.
        for (const QTextBlock& changed : {old, block}) {
            if (!changed.isValid() || !changed.isVisible()) continue;
            const QRectF geometry = blockBoundingGeometry(changed).translated(contentOffset());
            m_extraArea->update(0, int(geometry.top()), m_extraArea->width(), int(geometry.height()) + 1);
        }
        updateCurrentLineSelection();
        emit currentLineChanged(currentLine);
    }
    parenthesesTimer.start(bracketSelections.isEmpty() ? 0 : 50);
    if (m_highlightBlocks) {
        nextHighlightBlock = currentLine;
        blockHighlightTimer.start(100);
    }
}

void QTextEditor::slotSelectionChanged()
{
    // A selection hides the current line: its colour would cover the selection's.
    updateCurrentLineSelection();
}

void QTextEditor::updateCurrentLineSelection()
{
    const bool hadLine = !currentLineSelections.isEmpty();
    currentLineSelections.clear();
    if (m_highlightCurrentLine && !textCursor().hasSelection()) {
        QTextEdit::ExtraSelection line;
        const QColor base = palette().color(QPalette::Base);
        line.format.setBackground(base.value() < 129 ? base.lighter(130) : base.darker(106));
        line.format.setProperty(QTextFormat::FullWidthSelection, true);
        line.cursor = textCursor();
        line.cursor.clearSelection();
        currentLineSelections << line;
    }
    if (hadLine || !currentLineSelections.isEmpty()) applyExtraSelections();
}

void QTextEditor::setHighlightCurrentLine(bool enabled)
{
    m_highlightCurrentLine = enabled;
    updateCurrentLineSelection();
}

void QTextEditor::setBracketFormats(const QTextCharFormat& match, const QTextCharFormat& mismatch,
                                    const QTextCharFormat& range)
{
    m_matchFormat = match;
    m_mismatchFormat = mismatch;
    m_rangeFormat = range;
}

void QTextEditor::setSearchSelections(const QList<QTextEdit::ExtraSelection>& selections)
{
    searchSelections = selections;
    applyExtraSelections();
}

void QTextEditor::applyExtraSelections()
{
    setExtraSelections(currentLineSelections + searchSelections + bracketSelections);
}

QRect QTextEditor::lineRect(int blockNumber) const
{
    const QTextBlock block = document()->findBlockByNumber(blockNumber);
    if (!block.isValid() || !block.isVisible()) return QRect();
    return blockBoundingGeometry(block).translated(contentOffset()).toRect();
}

QRect QTextEditor::foldedBoxRect(int blockNumber) const
{
    const QTextBlock block = document()->findBlockByNumber(blockNumber);
    if (!block.isVisible() || !isFolded(blockNumber)) return QRect();
    const QTextLayout* layout = block.layout();
    if (!layout || layout->lineCount() == 0) return QRect();
    const QRectF geometry = blockBoundingGeometry(block).translated(contentOffset());
    const QRectF line =
        layout->lineAt(layout->lineCount() - 1).naturalTextRect().translated(geometry.topLeft());
    const QFontMetrics metrics(font());
    return QRect(int(line.right()) + metrics.horizontalAdvance(QLatin1Char(' ')), int(line.top()),
                 metrics.horizontalAdvance(QStringLiteral(" ... ")) + 12, int(line.height()));
}

void QTextEditor::paintEvent(QPaintEvent* event)
{
    const QRect area = event->rect();
    const QColor base = palette().color(QPalette::Base);
    {
        QPainter painter(viewport());
        painter.fillRect(area, base);
        if (!scopes.isEmpty()) {
            const QPointF offset = contentOffset();
            for (QTextBlock block = firstVisibleBlock(); block.isValid(); block = block.next()) {
                if (!block.isVisible()) continue;
                const QRectF geometry = blockBoundingGeometry(block).translated(offset);
                if (geometry.top() > area.bottom()) break;
                const int number = block.blockNumber();
                for (int i = scopes.size() - 1; i >= 0; --i) {
                    if (number < scopes[i].first || number > scopes[i].second) continue;
                    painter.fillRect(QRectF(area.left(), geometry.top(), area.width(), geometry.height()),
                                     QScopeColors::color(base, i, int(scopes.size())));
                    break;
                }
            }
        }
    }
    QPlainTextEdit::paintEvent(event);

    QPainter painter(viewport());
    const QPointF offset = contentOffset();
    for (QTextBlock block = firstVisibleBlock(); block.isValid(); block = block.next()) {
        if (!block.isVisible()) continue;
        if (blockBoundingGeometry(block).translated(offset).top() > area.bottom()) break;
        const QRect box = foldedBoxRect(block.blockNumber());
        if (box.isEmpty()) continue;
        painter.setPen(palette().color(QPalette::Mid));
        painter.setBrush(palette().color(QPalette::AlternateBase));
        painter.drawRoundedRect(box.adjusted(0, 1, -1, -1), 3, 3);
        painter.setPen(palette().color(QPalette::Text));
        painter.drawText(box, Qt::AlignCenter, QStringLiteral(" ... "));
    }
}

void QTextEditor::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton) {
        const QPoint pos = event->position().toPoint();
        const QTextBlock block = cursorForPosition(pos).block();
        if (foldedBoxRect(block.blockNumber()).contains(pos)) {
            unfoldBlock(block.blockNumber());
            event->accept();
            return;
        }
    }
    QPlainTextEdit::mousePressEvent(event);
}

void QTextEditor::timerEvent(QTimerEvent* event)
{
    if (event->timerId() == autoScrollTimer.timerId()) {
        autoScrollStep();
    } else if (event->timerId() == hoverTimer.timerId()) {
        hoverTimer.stop();
        nextHighlightBlock = -1;
        blockHighlightTimeOut();
    } else {
        QPlainTextEdit::timerEvent(event);
    }
}

void QTextEditor::changeEvent(QEvent* event)
{
    QPlainTextEdit::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::LayoutDirectionChange)
        slotUpdateExtraAreaWidth();
}
