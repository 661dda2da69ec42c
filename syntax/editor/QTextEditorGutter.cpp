// The gutter of the code editor: its width, painting, fold clicks, the scope hover and whole-line
// selection by dragging, with auto scrolling past the edges.

#include "QEditorExtraArea.h"
#include "QScopeColors.h"
#include "QTextEditor.h"

#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QScrollBar>
#include <QStyle>

namespace {

const int outerMargin = 3;
const int numberMargin = 4;

// The end of a line for line selection: the start of the next visible line, so that selecting a
// folded line takes its hidden scope along.
int lineEnd(const QTextBlock& block)
{
    QTextBlock next = block.next();
    while (next.isValid() && !next.isVisible())
        next = next.next();
    return next.isValid() ? next.position() : block.position() + block.length() - 1;
}

} // namespace

QWidget* QTextEditor::extraArea() const
{
    return m_extraArea;
}

int QTextEditor::extraAreaWidth(QFontMetrics* out) const
{
    const QFontMetrics metrics(font());
    if (out) *out = metrics;
    int width = 2 * outerMargin;
    if (m_lineNumbersVisible) {
        const int digits = qMax(2, int(QString::number(qMax(1, blockCount())).size()));
        width += metrics.horizontalAdvance(QLatin1Char('9')) * digits + numberMargin;
    }
    if (m_foldingEnabled) width += metrics.lineSpacing();
    return width;
}

int QTextEditor::foldMarkerLeft() const
{
    return m_extraArea->width() - outerMargin - (m_foldingEnabled ? QFontMetrics(font()).lineSpacing() : 0);
}

void QTextEditor::setLineNumbersVisible(bool visible)
{
    m_lineNumbersVisible = visible;
    slotUpdateExtraAreaWidth();
    m_extraArea->update();
}

void QTextEditor::setFoldingEnabled(bool enabled)
{
    m_foldingEnabled = enabled;
    if (!enabled) unfoldAll();
    slotUpdateExtraAreaWidth();
    m_extraArea->update();
}

void QTextEditor::slotUpdateExtraAreaWidth()
{
    const int width = extraAreaWidth();
    if (isLeftToRight())
        setViewportMargins(width, 0, 0, 0);
    else
        setViewportMargins(0, 0, width, 0);
    const QRect contents = contentsRect();
    const QRect area = QStyle::visualRect(layoutDirection(), contents,
                                          QRect(contents.left(), contents.top(), width, contents.height()));
    if (m_extraArea->geometry() != area) m_extraArea->setGeometry(area);
}

void QTextEditor::slotUpdateRequest(const QRect& r, int dy)
{
    if (dy)
        m_extraArea->scroll(0, dy);
    else if (r.width() > 4) // narrower bands are the blinking text cursor
        m_extraArea->update(0, r.y(), m_extraArea->width(), r.height());
    if (r.contains(viewport()->rect())) slotUpdateExtraAreaWidth();
}

void QTextEditor::resizeEvent(QResizeEvent* event)
{
    QPlainTextEdit::resizeEvent(event);
    slotUpdateExtraAreaWidth();
}

QTextBlock QTextEditor::blockAtY(int y) const
{
    const int bounded = qBound(0, y, qMax(0, viewport()->height() - 1));
    return cursorForPosition(QPoint(0, bounded)).block();
}

void QTextEditor::extraAreaPaintEvent(QPaintEvent* event)
{
    QPainter painter(m_extraArea);
    const QRect area = event->rect();
    const QPalette& colors = palette();
    painter.fillRect(area, colors.color(QPalette::Window));

    QFontMetrics metrics(font());
    extraAreaWidth(&metrics);
    const int markerLeft = foldMarkerLeft();
    const int markerSize = metrics.lineSpacing();
    const int current = textCursor().blockNumber();
    QFont bold = font();
    bold.setBold(true);
    const QPointF offset = contentOffset();

    for (QTextBlock block = firstVisibleBlock(); block.isValid(); block = block.next()) {
        if (!block.isVisible()) continue;
        const QRectF geometry = blockBoundingGeometry(block).translated(offset);
        const int top = int(geometry.top());
        if (top > area.bottom()) break;
        if (geometry.bottom() < area.top()) continue;
        const int number = block.blockNumber();

        if (m_foldingEnabled) {
            for (int i = int(scopes.size()) - 1; i >= 0; --i) {
                if (number < scopes[i].first || number > scopes[i].second) continue;
                painter.fillRect(QRect(markerLeft, top, markerSize, int(geometry.height())),
                                 QScopeColors::color(colors.color(QPalette::Base), i, int(scopes.size())));
                break;
            }
        }
        if (m_lineNumbersVisible) {
            painter.setFont(number == current ? bold : font());
            painter.setPen(colors.color(number == current ? QPalette::WindowText : QPalette::Dark));
            painter.drawText(QRect(0, top, markerLeft - numberMargin, metrics.height()), Qt::AlignRight,
                             QString::number(number + 1));
        }
        if (m_foldingEnabled && canFold(block)) {
            // An open scope points down, a folded one to its hidden text.
            const QRectF box(markerLeft + markerSize * 0.25, top + markerSize * 0.25, markerSize * 0.5,
                             markerSize * 0.5);
            QPainterPath triangle;
            if (isFolded(number)) {
                triangle.moveTo(box.topLeft());
                triangle.lineTo(box.right(), box.center().y());
                triangle.lineTo(box.bottomLeft());
            } else {
                triangle.moveTo(box.topLeft());
                triangle.lineTo(box.topRight());
                triangle.lineTo(box.center().x(), box.bottom());
            }
            triangle.closeSubpath();
            painter.setRenderHint(QPainter::Antialiasing);
            painter.fillPath(triangle, colors.color(number == extraAreaHighlightBlock ? QPalette::Highlight
                                                                                      : QPalette::Dark));
            painter.setRenderHint(QPainter::Antialiasing, false);
        }
    }
}

void QTextEditor::extraAreaMouseEvent(QMouseEvent* event)
{
    const QPoint pos = event->position().toPoint();
    const bool inFoldColumn = m_foldingEnabled && pos.x() >= foldMarkerLeft();

    if (event->type() == QEvent::MouseMove) {
        if (extraAreaSelectionAnchor >= 0 && (event->buttons() & Qt::LeftButton)) {
            autoScrollPos = pos;
            if (pos.y() < 0 || pos.y() >= m_extraArea->height()) {
                if (!autoScrollTimer.isActive()) autoScrollTimer.start(100, this);
            } else {
                autoScrollTimer.stop();
            }
            gutterSelect(pos.y());
            return;
        }
        const int next = inFoldColumn ? blockAtY(pos.y()).blockNumber() : -1;
        m_extraArea->setCursor(inFoldColumn ? Qt::PointingHandCursor : Qt::ArrowCursor);
        if (next == nextHighlightBlock && (blockHighlightTimer.isActive() || next == extraAreaHighlightBlock))
            return;
        hoverTimer.stop();
        nextHighlightBlock = next;
        // Moving along the column settles before the colours follow; a first highlight shows at once.
        blockHighlightTimer.start(extraAreaHighlightBlock >= 0 ? 120 : 0);
        return;
    }

    if (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick) {
        if (event->button() != Qt::LeftButton) return;
        const QTextBlock block = blockAtY(pos.y());
        if (inFoldColumn) {
            if (canFold(block)) {
                if (isFolded(block.blockNumber()))
                    unfoldBlock(block.blockNumber());
                else
                    foldBlock(block.blockNumber());
            }
            return;
        }
        extraAreaSelectionAnchor = block.blockNumber();
        gutterSelect(pos.y());
        return;
    }

    if (event->type() == QEvent::MouseButtonRelease) {
        extraAreaSelectionAnchor = -1;
        autoScrollTimer.stop();
    }
}

void QTextEditor::extraAreaLeaveEvent(QEvent*)
{
    m_extraArea->unsetCursor();
    if (extraAreaHighlightBlock >= 0 || blockHighlightTimer.isActive()) {
        blockHighlightTimer.stop();
        hoverTimer.start(120, this);
    }
}

void QTextEditor::gutterSelect(int y)
{
    const QTextBlock anchor = document()->findBlockByNumber(extraAreaSelectionAnchor);
    const QTextBlock block = blockAtY(y);
    if (!anchor.isValid() || !block.isValid()) return;
    QTextCursor cursor(document());
    if (block.blockNumber() >= anchor.blockNumber()) {
        cursor.setPosition(anchor.position());
        cursor.setPosition(lineEnd(block), QTextCursor::KeepAnchor);
    } else {
        cursor.setPosition(lineEnd(anchor));
        cursor.setPosition(block.position(), QTextCursor::KeepAnchor);
    }
    setTextCursor(cursor);
}

void QTextEditor::autoScrollStep()
{
    const int height = m_extraArea->height();
    const int distance = autoScrollPos.y() < 0 ? -autoScrollPos.y() : autoScrollPos.y() - height + 1;
    if (extraAreaSelectionAnchor < 0 || distance <= 0) {
        autoScrollTimer.stop();
        return;
    }
    verticalScrollBar()->triggerAction(autoScrollPos.y() < 0 ? QAbstractSlider::SliderSingleStepSub
                                                             : QAbstractSlider::SliderSingleStepAdd);
    gutterSelect(autoScrollPos.y());
    // The farther out the pointer, the faster the scroll: 100 ms at 7 pixels, a tenth of that at 22.
    const int near = qMax(7, distance);
    autoScrollTimer.start(qMax(1, 4900 / (near * near)), this);
}
