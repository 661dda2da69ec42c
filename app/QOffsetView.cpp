#include "QOffsetView.h"

#include <QMouseEvent>
#include <QPainter>

QOffsetView::QOffsetView(QWidget* parent) : QWidget(parent)
{
    setMinimumSize(320, 320);
    setCursor(Qt::CrossCursor);
}

void QOffsetView::setSprite(const QImage& sprite, const QPoint& spriteAxis)
{
    image = sprite;
    axis = spriteAxis;
    update();
}

void QOffsetView::setOffset(const QPoint& offset)
{
    if (offset == m_offset) return;
    m_offset = offset;
    update();
    emit offsetChanged(offset);
}

// The axis stands in the middle across and at three quarters down, where the ground of a character is.
QPoint QOffsetView::axisPosition() const
{
    return QPoint(width() / 2, height() * 3 / 4);
}

QPoint QOffsetView::toWidget(const QPoint& offset) const
{
    return axisPosition() + offset * Zoom;
}

QPoint QOffsetView::toOffset(const QPoint& position) const
{
    const QPoint delta = position - axisPosition();
    // Floor division, so that each sprite pixel left or above the axis has its own offset.
    auto down = [](int value) { return value >= 0 ? value / Zoom : -((-value + Zoom - 1) / Zoom); };
    return QPoint(down(delta.x()), down(delta.y()));
}

void QOffsetView::paintEvent(QPaintEvent* event)
{
    Q_UNUSED(event);
    QPainter painter(this);
    painter.fillRect(rect(), palette().base());
    const QPoint origin = axisPosition();
    if (!image.isNull()) painter.drawImage(QRect(origin - axis * Zoom, image.size() * Zoom), image);
    painter.setPen(QPen(Qt::red, 1));
    painter.drawLine(origin.x(), 0, origin.x(), height());
    painter.drawLine(0, origin.y(), width(), origin.y());
    const QPoint mark = toWidget(m_offset) + QPoint(Zoom / 2, Zoom / 2);
    painter.setPen(QPen(Qt::blue, 1));
    painter.drawLine(mark - QPoint(6, 0), mark + QPoint(6, 0));
    painter.drawLine(mark - QPoint(0, 6), mark + QPoint(0, 6));
}

void QOffsetView::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton) setOffset(toOffset(event->position().toPoint()));
}

void QOffsetView::mouseMoveEvent(QMouseEvent* event)
{
    if (event->buttons() & Qt::LeftButton) setOffset(toOffset(event->position().toPoint()));
}
