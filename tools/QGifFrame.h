#pragma once

#include <QImage>
#include <QList>
#include <QRgb>

// One picture of an animated GIF: indexed pixels placed on the canvas, shown for a time. Index 0 is
// always the transparent colour, as it is for the engine's sprites.
struct QGifFrame
{
    // The frame's own colour table; empty when the frame uses the writer's global table.
    QList<QRgb> palette;
    // Format_Indexed8; only the first width() bytes of each scan line are read.
    QImage image;
    // Position on the canvas.
    ushort x = 0;
    ushort y = 0;
    // Hundredths of a second.
    ushort delay = 0;
    // The looping block goes out ahead of this frame.
    bool loop = false;
};
