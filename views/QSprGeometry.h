#pragma once

#include <QList>
#include <QPoint>
#include <QRect>
#include <QSize>

#include <array>

// Where the sprite view draws things, in screen pixels, from the zoom factor z and the main axis (the
// screen position of the sprite origin). Scaled positions are truncated towards zero, the way the
// view has always placed them; the view caches these rectangles and paints from the cache.
namespace QSprGeometry {
// What a frame of an animation does to its sprite: an offset and mirroring.
struct Frame
{
    QPoint offset;
    bool flipH = false;
    bool flipV = false;
};

// The whole zoom that cross images are scaled by: at least 1.
int wholeZoom(double z);
// An image placed at a position in sprite pixels (the background).
QRect placed(QPoint position, QSize image, double z, QPoint axis);
// The sprite's axis as the frame shows it: mirrored by a flip (width - x - 1) before the frame's offset
// is taken off.
QPoint axisInFrame(QPoint spriteAxis, QSize size, const Frame& frame);
// A sprite whose axis stands at the main axis.
QRect sprite(QSize size, QPoint axisInUse, double z, QPoint axis);
// The sprite cross, centred on the main axis, and a cross at a position in sprite pixels (the frame's
// or the extra cross).
QRect axisCross(QSize cross, double z, QPoint axis);
QRect crossAt(QPoint position, QSize cross, double z, QPoint axis);
// A collision box of the model (inclusive corners) on the screen.
QRect box(QRect modelBox, double z, QPoint axis);
// The eight grab handles around the union of the selected boxes, in the order top left, top middle,
// top right, right middle, left middle, bottom left, bottom middle, bottom right.
std::array<QPoint, 8> handles(const QList<QRect>& selected);
} // namespace QSprGeometry
