#include "QSprGeometry.h"

#include <algorithm>

namespace {

// C++ conversion truncates towards zero, which is the placement rule of the view.
int truncated(double value)
{
    return int(value);
}

} // namespace

int QSprGeometry::wholeZoom(double z)
{
    return truncated(std::max(z, 1.0));
}

QRect QSprGeometry::placed(QPoint position, QSize image, double z, QPoint axis)
{
    return QRect(truncated(position.x() * z + axis.x()), truncated(position.y() * z + axis.y()),
                 truncated(image.width() * z), truncated(image.height() * z));
}

QPoint QSprGeometry::axisInFrame(QPoint spriteAxis, QSize size, const Frame& frame)
{
    const int x = frame.flipH ? size.width() - spriteAxis.x() - 1 : spriteAxis.x();
    const int y = frame.flipV ? size.height() - spriteAxis.y() - 1 : spriteAxis.y();
    return QPoint(x - frame.offset.x(), y - frame.offset.y());
}

QRect QSprGeometry::sprite(QSize size, QPoint axisInUse, double z, QPoint axis)
{
    if (size.isEmpty()) return QRect();
    return QRect(truncated(axis.x() - axisInUse.x() * z), truncated(axis.y() - axisInUse.y() * z),
                 truncated(size.width() * z), truncated(size.height() * z));
}

QRect QSprGeometry::axisCross(QSize cross, double z, QPoint axis)
{
    const int k = wholeZoom(z);
    const int half = k >> 1;
    const int w = cross.width() * k, h = cross.height() * k;
    return QRect(axis.x() - (w >> 1) + half, axis.y() - (h >> 1) + half, w, h);
}

QRect QSprGeometry::crossAt(QPoint position, QSize cross, double z, QPoint axis)
{
    const int k = wholeZoom(z);
    const int half = k >> 1;
    const int w = cross.width() * k, h = cross.height() * k;
    return QRect(truncated(position.x() * z + half - (w >> 1) + axis.x()),
                 truncated(position.y() * z + half - (h >> 1) + axis.y()), w, h);
}

QRect QSprGeometry::box(QRect modelBox, double z, QPoint axis)
{
    const int left = truncated(modelBox.left() * z + axis.x());
    const int top = truncated(modelBox.top() * z + axis.y());
    const int right = truncated((modelBox.right() - modelBox.left() + 1) * z) + left - 1;
    const int bottom = truncated((modelBox.bottom() - modelBox.top() + 1) * z) + top - 1;
    return QRect(QPoint(left, top), QPoint(right, bottom));
}

std::array<QPoint, 8> QSprGeometry::handles(const QList<QRect>& selected)
{
    int x1 = 5000, y1 = 5000, x2 = -5000, y2 = -5000;
    for (const QRect& rect : selected) {
        x1 = std::min(x1, rect.left());
        y1 = std::min(y1, rect.top());
        x2 = std::max(x2, rect.right());
        y2 = std::max(y2, rect.bottom());
    }
    const int mx = x1 + (x2 - x1) / 2, my = y1 + (y2 - y1) / 2;
    return {QPoint(x1, y1), QPoint(mx, y1), QPoint(x2, y1), QPoint(x2, my),
            QPoint(x1, my), QPoint(x1, y2), QPoint(mx, y2), QPoint(x2, y2)};
}
