#include "QViewZoom.h"

#include <QtMath>

#include <algorithm>

namespace {

constexpr double factors[2][QViewZoom::Indices] = {{0.25, 0.5, 0.75, 1, 1.5, 2, 2.25, 2.5, 2.75, 3, 3.5, 4},
                                                   {0.25, 0.5, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10}};

int roundToInt(double value)
{
    return int(std::lround(value));
}

} // namespace

double QViewZoom::factorOf(int row, int index)
{
    return factors[std::clamp(row, 0, 1)][std::clamp(index, 0, Indices - 1)];
}

void QViewZoom::setRow(int row)
{
    m_row = std::clamp(row, 0, 1);
    m_index = std::min(m_index, Indices - 1);
}

QPoint QViewZoom::setIndex(int index, QPoint axis, QPoint viewCentre, Centre centre)
{
    const double before = factor();
    m_index = std::clamp(index, 0, Indices - 1);
    if (centre != WorkspaceCentre) return axis;
    // The sprite pixel under the centre before the change is under it after.
    const double scale = factor() / before;
    return QPoint(roundToInt(viewCentre.x() + (axis.x() - viewCentre.x()) * scale),
                  roundToInt(viewCentre.y() + (axis.y() - viewCentre.y()) * scale));
}

QPoint QViewZoom::zoomIn(QPoint axis, QPoint viewCentre, Centre centre)
{
    return setIndex(m_index + 1, axis, viewCentre, centre);
}

QPoint QViewZoom::zoomOut(QSize sprite, QPoint axis, QPoint viewCentre, Centre centre)
{
    const int smallest = std::min(sprite.width(), sprite.height());
    if ((m_index == 2 && smallest < 2) || (m_index == 1 && smallest < 4)) return axis;
    return setIndex(m_index - 1, axis, viewCentre, centre);
}

QPoint QViewZoom::zoomActual(QPoint axis, QPoint viewCentre, Centre centre)
{
    return setIndex(actualIndex(m_row), axis, viewCentre, centre);
}

QPoint QViewZoom::wheel(int delta, QPoint axis, QPoint viewCentre, Centre centre)
{
    const int stepped = std::clamp(m_index + delta / 120, 0, 9);
    return setIndex(stepped, axis, viewCentre, centre);
}

void QViewZoom::fitSprite(QSize size)
{
    const int smallest = std::min(size.width(), size.height());
    if (smallest < 2)
        m_index = std::max(m_index, 2);
    else if (smallest < 4 && m_index == 0)
        m_index = 1;
}

QPointF QViewZoom::toSprite(QPointF screen, QPoint axis) const
{
    return (screen - QPointF(axis)) / factor();
}

QPoint QViewZoom::toScreen(QPointF sprite, QPoint axis) const
{
    return QPoint(roundToInt(sprite.x() * factor()) + axis.x(), roundToInt(sprite.y() * factor()) + axis.y());
}

QRect QViewZoom::screenToModel(QRect screen, QPoint axis) const
{
    const int x1 = std::min(screen.left(), screen.right()), x2 = std::max(screen.left(), screen.right());
    const int y1 = std::min(screen.top(), screen.bottom()), y2 = std::max(screen.top(), screen.bottom());
    const double z = factor();
    const int width = roundToInt((x2 - x1 + 1) / z);
    const int height = roundToInt((y2 - y1 + 1) / z);
    const int x = roundToInt((x1 - axis.x()) / z);
    const int y = roundToInt((y1 - axis.y()) / z);
    return QRect(QPoint(x, y), QPoint(x + width - 1, y + height - 1));
}
