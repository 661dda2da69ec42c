#pragma once

#include <QByteArray>
#include <QImage>

// PNG blocks of SFF v2 (formats 10, 11 and 12) go through Qt's image codec.
QImage decodePNG(const QByteArray& data);
// An indexed image is written with a colour table of 256 opaque blacks: the colours of a sprite live
// in its palette, never in its image block.
QByteArray encodePNG(const QImage& image);
