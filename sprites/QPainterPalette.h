#pragma once

#include "QAbstractPalette.h"

// Corel Painter swatches: text beginning with "ROWS"; every line "R: r, G: g, B: b" (optionally
// followed by "A: a") takes the next entry, up to 256. Other lines, such as the layout keys, are
// passed over.
class QPainterPalette : public QAbstractPalette
{
public:
    static constexpr qint64 MaxBytes = 1 << 20;

    bool read(QIODevice* device, QRGBPal* target) override;
};
