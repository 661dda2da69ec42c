#pragma once

#include "QSamplePose.h"

#include <QImage>
#include <QPoint>
#include <QRect>
#include <QSize>

// One drawn sprite of the sample fighter: an indexed image cut to what it shows, where its axis lies,
// and, in axis coordinates (x forward, y down, the axis at 0, 0), the extent of the figure and the
// points that strike.
struct QSampleDrawing
{
    QImage image;
    QPoint axis;
    QRect bounds;
    QPoint frontFist;
    QPoint frontFoot;
};

// Draws the sample fighter from thick outlined limbs. The pixels are palette positions (see Colour), so
// that one drawing serves every palette; the colour table is the caller's. Drawing is without
// antialiasing, so only those positions ever occur.
class QSampleFigure
{
public:
    enum Colour
    {
        Transparent = 0,
        Outline,
        Skin,
        SkinShade,
        Gi,
        GiShade,
        Belt,
        Hair,
        Pants,
        PantsShade,
        Wraps,
        Band,
        Backdrop,
        ColourCount
    };

    static QSampleDrawing draw(const QSamplePose& pose);
    // Head and shoulders of the standing fighter on a backdrop, scaled, for the select screens; the
    // axis is the top left corner.
    static QSampleDrawing portrait(const QSize& size, double scale);
};
