#pragma once

#include "QRGBPal.h"

#include <QVector>

#include <array>

// The three colour sets of the sample fighter. Positions 1 to 12 are the figure's (see
// QSampleFigure::Colour), colour 0 is the transparent one, and the rest is a grey ramp, so that every
// table uses all 256 entries.
class QSamplePalettes
{
public:
    static constexpr int Count = 3;
    using Table = std::array<QRGBPal, QRGBPal::TableSize>;

    // number runs from 1 to Count.
    static Table table(int number);
    static QVector<QRgb> rgb(int number);
};
