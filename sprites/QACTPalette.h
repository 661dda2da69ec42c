#pragma once

#include "QAbstractPalette.h"

// Adobe Color Table: 256 triples of red, green and blue, 768 bytes; anything behind them (the 4-byte
// footer of newer files) is ignored. The file lists the colours from the last to the first, so file
// colour 0 is colour 255 of the table.
class QACTPalette : public QAbstractPalette
{
public:
    static constexpr int FileBytes = 768;

    bool read(QIODevice* device, QRGBPal* target) override;
    // Writes the 256 colours of a table in the ACT order, without alpha: 768 bytes.
    static bool write(QIODevice* device, const QRGBPal* table);
};
