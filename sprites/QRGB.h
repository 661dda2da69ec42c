#pragma once

#include <QtGlobal>

// One colour of three bytes, red, green and blue, as the 24-bit palette files store it.
struct QRGB
{
    uchar r = 0;
    uchar g = 0;
    uchar b = 0;

    constexpr QRGB() = default;
    constexpr QRGB(uchar red, uchar green, uchar blue) : r(red), g(green), b(blue) {}

    constexpr bool operator==(const QRGB& other) const
    {
        return r == other.r && g == other.g && b == other.b;
    }
    constexpr bool operator!=(const QRGB& other) const { return !(*this == other); }
};

static_assert(sizeof(QRGB) == 3, "QRGB must stay three bytes: tables of it are read straight from files");
