#pragma once

#include <QByteArray>
#include <QImage>

// Decoded size and form of one image. Raw pixels of an image are always the bytes of a QImage as they
// stand: bytesPerLine() * height bytes, every row padded to four bytes.
struct QImageInfo
{
    quint16 width = 0;
    quint16 height = 0;
    quint32 format = QImage::Format_Invalid;

    QImage::Format imageFormat() const { return QImage::Format(format); }
    // Bits per pixel of the format, 0 for an invalid one.
    int depth() const;
    // Meaningful bytes of one row, without the padding.
    qsizetype rowBytes() const { return qsizetype(width) * depth() / 8; }
    qsizetype bytesPerLine() const { return ((qsizetype(width) * depth() + 31) >> 5) << 2; }
    qsizetype rawSize() const { return bytesPerLine() * height; }

    // The image made again from raw pixels with one copy; a null image if the size does not fit.
    QImage image(const QByteArray& raw) const;
    // The raw pixels of an image, with the row padding cleared.
    static QByteArray raw(const QImage& image);
    // The pixels of an image with the row padding left out: rows of width * depth / 8 bytes.
    static QByteArray unpadded(const QImage& image);
    static QImageInfo of(const QImage& image);
};
