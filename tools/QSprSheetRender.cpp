#include "QSprSheetRender.h"

#include "QSheetDetector.h"

#include <QCursor>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>
#include <QWidget>

#include <cmath>

namespace {
const double zoomTable[QSprSheetRender::ZoomCount] = {0.25, 0.5, 1, 2, 3, 4, 5, 6, 7, 8};
constexpr int handleSize = 8;
} // namespace

QSprSheetRender::QSprSheetRender(QObject* parent) : QRenderer(parent) {}

double QSprSheetRender::zoomAt(int index)
{
    return zoomTable[qBound(0, index, ZoomCount - 1)];
}

void QSprSheetRender::setRectangles(const QList<QRect>& value)
{
    rects = value;
    if (selection >= rects.size()) selection = -1;
    hover = -1;
    update();
}

void QSprSheetRender::setImage(const QImage& value)
{
    sheet = value;
    rects.clear();
    selection = -1;
    hover = -1;
    imageOrigin = QPoint();
    update();
}

void QSprSheetRender::detect()
{
    if (sheet.isNull()) return;
    setRectangles(QSheetDetector::detect(sheet));
}

void QSprSheetRender::setZoomIndex(int index, const QPoint& anchor)
{
    index = qBound(0, index, ZoomCount - 1);
    if (index == zoomStep) return;
    const double before = zoom();
    const double after = zoomAt(index);
    // The sheet point under the anchor stays under it.
    const double x = (anchor.x() - imageOrigin.x()) / before;
    const double y = (anchor.y() - imageOrigin.y()) / before;
    imageOrigin = QPoint(anchor.x() - int(std::lround(x * after)), anchor.y() - int(std::lround(y * after)));
    zoomStep = quint8(index);
    emit zoomChanged(index);
    update();
}

void QSprSheetRender::zoomIn()
{
    setZoomIndex(zoomStep + 1, widget() ? widget()->rect().center() : imageOrigin);
}

void QSprSheetRender::zoomOut()
{
    setZoomIndex(zoomStep - 1, widget() ? widget()->rect().center() : imageOrigin);
}

void QSprSheetRender::setCreationMode(bool on)
{
    creating = on;
    updateCursor(on ? int(Pan) : hitTest(widget() ? widget()->mapFromGlobal(QCursor::pos()) : QPoint()));
}

void QSprSheetRender::setSelected(int index)
{
    selection = index >= 0 && index < rects.size() ? index : -1;
    update();
}

void QSprSheetRender::setOrigin(const QPoint& value)
{
    imageOrigin = value;
    update();
}

QPoint QSprSheetRender::toScreen(const QPoint& point) const
{
    const double z = zoom();
    return QPoint(int(std::lround(point.x() * z)), int(std::lround(point.y() * z))) + imageOrigin;
}

QRect QSprSheetRender::screenRect(const QRect& rect) const
{
    const double z = zoom();
    return QRect(toScreen(rect.topLeft()),
                 QSize(int(std::lround(rect.width() * z)), int(std::lround(rect.height() * z))));
}

QList<QPoint> QSprSheetRender::handlePoints() const
{
    if (selection < 0 || selection >= rects.size()) return {};
    // The handles stand on the outline as drawn, which runs around the last pixel.
    const QRect& rect = rects.at(selection);
    const int left = rect.left();
    const int right = rect.right() + 1;
    const int top = rect.top();
    const int bottom = rect.bottom() + 1;
    const int middleX = (left + right) / 2;
    const int middleY = (top + bottom) / 2;
    return {QPoint(left, top),     QPoint(middleX, top), QPoint(right, top),      QPoint(right, middleY),
            QPoint(left, middleY), QPoint(left, bottom), QPoint(middleX, bottom), QPoint(right, bottom)};
}

int QSprSheetRender::hitTest(const QPoint& pos)
{
    if (creating) return Pan;
    const QList<QPoint> points = handlePoints();
    for (int i = 0; i < points.size(); ++i) {
        handles[i] = points.at(i);
        const QPoint centre = toScreen(points.at(i));
        if (QRect(centre - QPoint(handleSize / 2, handleSize / 2), QSize(handleSize, handleSize))
                .contains(pos))
            return FirstHandle + i;
    }
    // Hits follow the outlines as they are drawn, at any zoom and wherever the sheet is panned.
    for (int i = 0; i < rects.size(); ++i) {
        if (screenRect(rects.at(i)).contains(pos)) {
            hover = i;
            return Rectangle;
        }
    }
    hover = -1;
    return Pan;
}

void QSprSheetRender::updateCursor(int over)
{
    QWidget* view = widget();
    if (!view) return;
    Qt::CursorShape shape = Qt::OpenHandCursor;
    switch (over) {
    case Pan:
        shape = creating ? Qt::CrossCursor : pressed ? Qt::ClosedHandCursor : Qt::OpenHandCursor;
        break;
    case Rectangle:
        shape = Qt::SizeAllCursor;
        break;
    case 2:
    case 9:
        shape = Qt::SizeFDiagCursor;
        break;
    case 3:
    case 8:
        shape = Qt::SizeVerCursor;
        break;
    case 4:
    case 7:
        shape = Qt::SizeBDiagCursor;
        break;
    default:
        shape = Qt::SizeHorCursor;
        break;
    }
    view->setCursor(shape);
}

void QSprSheetRender::keyPress(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape && creating) {
        setCreationMode(false);
        emit creationModeExit();
    }
}

void QSprSheetRender::mousePress(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton) return;
    if (widget()) widget()->setFocus();
    pressed = true;
    moved = false;
    lastPoint = event->position().toPoint();
    target = event->modifiers() & Qt::ControlModifier ? int(Pan) : hitTest(lastPoint);
    updateCursor(target);
}

void QSprSheetRender::mouseRelease(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton) return;
    pressed = false;
    if (creating) return;
    moved = false;
    updateCursor(hitTest(event->position().toPoint()));
}

void QSprSheetRender::mouseMove(QMouseEvent* event)
{
    const QPoint pos = event->position().toPoint();
    if (!pressed) {
        updateCursor(hitTest(pos));
        return;
    }
    QPoint delta = pos - lastPoint;
    const double z = zoom();
    // Zoomed in, the drag goes in whole sheet pixels; what is left of the mouse's way waits for the
    // next move, so the sheet stays under the mouse.
    if (z > 1) {
        delta = QPoint(int(std::lround(int(delta.x() / z) * z)), int(std::lround(int(delta.y() / z) * z)));
    }
    if (target == 3 || target == 8) delta.setX(0);
    if (target == 5 || target == 6) delta.setY(0);
    if (target < FirstHandle) lastPoint += delta;
    if (target == Pan)
        imageOrigin += delta;
    else
        moved = true;
    repaintNow();
}

void QSprSheetRender::wheel(QWheelEvent* event)
{
    const int steps = event->angleDelta().y() / 120;
    if (steps == 0) return;
    setZoomIndex(zoomStep + steps, event->position().toPoint());
    event->accept();
}

void QSprSheetRender::paint(QPainter& painter, QPaintEvent*)
{
    if (widget()) painter.fillRect(widget()->rect(), Qt::gray);
    const double z = zoom();
    if (!sheet.isNull()) {
        const QSize size(int(std::lround(sheet.width() * z)), int(std::lround(sheet.height() * z)));
        painter.drawImage(QRect(imageOrigin, size), sheet, sheet.rect(), Qt::AutoColor);
    }
    if (selection >= 0 && selection < rects.size()) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(QBrush(Qt::black, Qt::FDiagPattern));
        painter.drawRect(screenRect(rects.at(selection)));
    }
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Qt::blue, 1));
    for (const QRect& rect : std::as_const(rects)) {
        // A cosmetic pen draws one pixel beyond the rectangle's size; keep the outline on the drawing.
        const QRect shown = screenRect(rect);
        painter.drawRect(shown.adjusted(0, 0, -1, -1));
    }
    const QList<QPoint> points = handlePoints();
    painter.setPen(QPen(Qt::gray, 1));
    painter.setBrush(Qt::white);
    for (const QPoint& point : points)
        painter.drawRect(
            QRect(toScreen(point) - QPoint(handleSize / 2, handleSize / 2), QSize(handleSize, handleSize)));
}
