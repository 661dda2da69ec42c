#pragma once

#include "QAbstractPalette.h"

// The colour table of an indexed image file: PNG and BMP through QImageReader, PCX through the sprite
// codec. An image that isn't indexed with 8 bits is refused and leaves the table alone; otherwise its
// colours, alpha included, replace the first entries of the table, and the entries beyond the image's
// colour count stay as they were.
class QIndexedImagePalette : public QAbstractPalette
{
public:
    // format: "png", "bmp" or "pcx", in any case.
    explicit QIndexedImagePalette(const QString& format);

    // True for the suffixes whose colour table is read through this class.
    static bool handles(const QString& suffix);

    bool read(QIODevice* device, QRGBPal* target) override;

    // Decoding stops at files and images whose pixels would need more than this many megabytes.
    static constexpr int AllocationLimitMB = 64;

private:
    bool readPcx(QIODevice* device, QRGBPal* target);

    QString format;
};
