#pragma once

#include "QAbstractPalette.h"

// Adobe Swatch Exchange, big-endian with 32-bit floats: "ASEF", version 1.0, a block count, then
// blocks of a type and a length. Colour entries (type 1) in RGB, CMYK or Gray take the next entry, up
// to 256; Lab and other models take none. Group start and end blocks hold at most a name.
class QASEPalette : public QAbstractPalette
{
public:
    bool read(QIODevice* device, QRGBPal* target) override;
};
