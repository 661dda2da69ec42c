#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>

// The zoom of the sprite view and the mapping between screen and sprite pixels, apart from any widget
// so that every rule can be tested alone. The zoom is an index into one of two rows of factors; the
// main axis is the screen position of the sprite's origin.
class QViewZoom
{
public:
    enum Row
    {
        SmallRange = 0, // up to 4X
        LargeRange = 1  // up to 10X
    };
    enum Centre
    {
        SpriteAxis = 0,     // the main axis stays where it is
        WorkspaceCentre = 1 // the point under the middle of the view stays where it is
    };
    static constexpr int Indices = 12;

    static double factorOf(int row, int index);
    // The index that shows sprites at their size: 3 in the small range, 2 in the large one.
    static int actualIndex(int row) { return row == SmallRange ? 3 : 2; }

    int row() const { return m_row; }
    int index() const { return m_index; }
    double factor() const { return factorOf(m_row, m_index); }

    // Another row keeps the index, held to the row's last one.
    void setRow(int row);
    // Sets the index, held to 0..11 (a step below 0 stays at 0); answers the main axis after it, which
    // moves with WorkspaceCentre so that the view's middle keeps showing the same sprite pixel.
    QPoint setIndex(int index, QPoint axis, QPoint viewCentre, Centre centre);
    QPoint zoomIn(QPoint axis, QPoint viewCentre, Centre centre);
    // Refuses to go below index 2 for a sprite under 2 pixels wide or high, and below 1 for one under
    // 4, so that a tiny sprite never vanishes into less than a pixel.
    QPoint zoomOut(QSize sprite, QPoint axis, QPoint viewCentre, Centre centre);
    QPoint zoomActual(QPoint axis, QPoint viewCentre, Centre centre);
    // The wheel steps by whole notches and never goes past index 9.
    QPoint wheel(int delta, QPoint axis, QPoint viewCentre, Centre centre);
    // A sprite or frame just shown raises a zoom it would vanish in: to 2 under 2 pixels, 0 to 1 under 4.
    void fitSprite(QSize size);

    // The sprite pixel under a screen point, and the screen point of a sprite pixel's corner.
    QPointF toSprite(QPointF screen, QPoint axis) const;
    QPoint toScreen(QPointF sprite, QPoint axis) const;
    // A rectangle drawn on the screen as the rectangle of sprite pixels it covers, normalised.
    QRect screenToModel(QRect screen, QPoint axis) const;

private:
    int m_row = LargeRange;
    int m_index = 2;
};
