#include "QSamplePalettes.h"

#include "QSampleFigure.h"

namespace {

// Outline, skin, skin shade, gi, gi shade, belt, hair, pants, pants shade, wraps, band, backdrop.
constexpr QRGBPal sets[QSamplePalettes::Count][QSampleFigure::ColourCount - 1] = {
    {{28, 22, 30},
     {238, 190, 142},
     {196, 146, 104},
     {214, 70, 48},
     {150, 44, 32},
     {34, 30, 36},
     {72, 44, 26},
     {46, 58, 120},
     {30, 38, 84},
     {226, 216, 194},
     {240, 240, 236},
     {38, 52, 88}},
    {{24, 26, 22},
     {238, 190, 142},
     {196, 146, 104},
     {62, 150, 84},
     {36, 100, 54},
     {120, 80, 30},
     {20, 20, 24},
     {40, 40, 46},
     {24, 24, 30},
     {200, 196, 186},
     {214, 60, 48},
     {70, 40, 40}},
    {{30, 20, 36},
     {176, 120, 80},
     {136, 88, 56},
     {120, 70, 170},
     {80, 44, 120},
     {30, 30, 30},
     {236, 204, 96},
     {200, 190, 160},
     {150, 140, 112},
     {230, 230, 230},
     {60, 60, 70},
     {40, 70, 60}},
};

} // namespace

QSamplePalettes::Table QSamplePalettes::table(int number)
{
    Table table;
    table[0] = QRGBPal(0, 0, 0, 0);
    for (int i = 1; i < QSampleFigure::ColourCount; ++i)
        table[i] = sets[number - 1][i - 1];
    const int first = QSampleFigure::ColourCount;
    for (int i = first; i < QRGBPal::TableSize; ++i) {
        const auto grey = uchar((i - first) * 255 / (QRGBPal::TableSize - 1 - first));
        table[i] = QRGBPal(grey, grey, grey);
    }
    return table;
}

QVector<QRgb> QSamplePalettes::rgb(int number)
{
    const Table colours = table(number);
    QVector<QRgb> result;
    for (const QRGBPal& colour : colours)
        result.append(colour.toRgb());
    return result;
}
