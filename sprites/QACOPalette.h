#pragma once

#include "QAbstractPalette.h"

// Adobe Color Swatch, big-endian: version 1, a count, then per colour a colour space and four 16-bit
// values. Only the first (version 1) section is read; the version 2 section that follows it in newer
// files repeats the colours with names. RGB, HSB, CMYK and greyscale colours take an entry in turn;
// other colour spaces (Lab, ...) take none.
class QACOPalette : public QAbstractPalette
{
public:
    bool read(QIODevice* device, QRGBPal* target) override;
    // The colour of one record, or false for a colour space without a conversion here.
    static bool convert(quint16 space, quint16 w, quint16 x, quint16 y, quint16 z, QRGBPal* colour);
};
