#pragma once

#include "QAbstractPalette.h"

// Microsoft RIFF palette: "RIFF", size, "PAL data", the chunk size, then from offset 24 the entries as
// red, green, blue and flags. The flags byte is no alpha: every colour is opaque. Like ACT, the file
// lists the colours from the last to the first.
class QRIFFPalette : public QAbstractPalette
{
public:
    bool read(QIODevice* device, QRGBPal* target) override;
};
