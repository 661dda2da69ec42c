#pragma once

#include <QImage>
#include <QList>
#include <QRect>

// Finds the separate drawings on a sprite sheet: every group of pixels that differ from the colour of
// the top left pixel and touch each other, diagonals included, gives its bounding rectangle. Only an
// indexed sheet can be read this way: an RGB sheet (or a null image) gives no rectangle at all.
//
// Two quirks are part of the result that users rely on: a drawing of one single pixel is left out,
// and a rectangle's right and bottom are never below 1 (a drawing that lies in the first row or
// column still gets a rectangle of some height or width).
class QSheetDetector
{
public:
    // Rectangles in image pixels, in the order the drawings are met scanning rows from the top.
    static QList<QRect> detect(const QImage& sheet);
};
