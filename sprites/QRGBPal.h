#pragma once

#include <QColor>
#include <QRgb>

// One palette colour of four bytes in the memory order red, green, blue, alpha. That is the order of
// the palette data of version 2 sprite files, which are read straight into tables of it; it is not the
// order of a QRgb. A palette is always 256 of them (1024 bytes), and colour 0 is the transparent one.
struct QRGBPal
{
    static constexpr int TableSize = 256;
    static constexpr int TableBytes = 1024;

    uchar r = 0;
    uchar g = 0;
    uchar b = 0;
    uchar a = 255;

    constexpr QRGBPal() = default;
    constexpr QRGBPal(uchar red, uchar green, uchar blue, uchar alpha = 255)
        : r(red), g(green), b(blue), a(alpha)
    {}

    static constexpr QRGBPal fromRgb(QRgb value)
    {
        return QRGBPal(uchar(value >> 16), uchar(value >> 8), uchar(value), uchar(value >> 24));
    }
    static QRGBPal fromColor(const QColor& color)
    {
        const QColor rgb = color.toRgb();
        return QRGBPal(uchar(rgb.red()), uchar(rgb.green()), uchar(rgb.blue()), uchar(rgb.alpha()));
    }

    constexpr QRgb toRgb() const { return (QRgb(a) << 24) | (QRgb(r) << 16) | (QRgb(g) << 8) | QRgb(b); }
    QColor toColor() const { return QColor(r, g, b, a); }

    constexpr bool operator==(const QRGBPal& other) const
    {
        return r == other.r && g == other.g && b == other.b && a == other.a;
    }
    constexpr bool operator!=(const QRGBPal& other) const { return !(*this == other); }
};

static_assert(sizeof(QRGBPal) == 4, "QRGBPal must stay four bytes: palette tables are read straight into it");
