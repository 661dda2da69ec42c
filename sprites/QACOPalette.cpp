#include "QACOPalette.h"

#include <QColor>
#include <QIODevice>
#include <QtEndian>

#include <algorithm>
#include <cmath>

bool QACOPalette::convert(quint16 space, quint16 w, quint16 x, quint16 y, quint16 z, QRGBPal* colour)
{
    switch (space) {
    case 0:
        *colour = QRGBPal(uchar(w / 257), uchar(x / 257), uchar(y / 257));
        return true;
    case 1: {
        // Photoshop keeps the hue in 1/182.5487 of a degree, so 65535 is just under 360.
        const int hue = std::min(int(std::lround(w / 182.5487)), 359);
        *colour = QRGBPal::fromColor(QColor::fromHsv(hue, x / 257, y / 257, 255));
        return true;
    }
    case 2:
        *colour = QRGBPal::fromColor(
            QColor::fromCmyk(255 - w / 257, 255 - x / 257, 255 - y / 257, 255 - z / 257, 255));
        return true;
    case 8: {
        // Greyscale is 0 (white) to 10000 (black).
        const int grey = std::clamp(255 - int(std::lround(w / 39.2157)), 0, 255);
        *colour = QRGBPal(uchar(grey), uchar(grey), uchar(grey));
        return true;
    }
    default:
        return false;
    }
}

bool QACOPalette::read(QIODevice* device, QRGBPal* target)
{
    uchar header[4];
    if (device->read(reinterpret_cast<char*>(header), 4) != 4)
        return fail(QStringLiteral("not an ACO palette: the file is too short"));
    if (qFromBigEndian<quint16>(header) != 1) return fail(QStringLiteral("not an ACO palette of version 1"));
    const int records = std::min<int>(qFromBigEndian<quint16>(header + 2), QRGBPal::TableSize);
    int entry = 0;
    for (int record = 0; record < records; ++record) {
        uchar bytes[10];
        if (device->read(reinterpret_cast<char*>(bytes), 10) != 10)
            return fail(QStringLiteral("the colour list is truncated"));
        QRGBPal colour;
        if (convert(qFromBigEndian<quint16>(bytes), qFromBigEndian<quint16>(bytes + 2),
                    qFromBigEndian<quint16>(bytes + 4), qFromBigEndian<quint16>(bytes + 6),
                    qFromBigEndian<quint16>(bytes + 8), &colour))
            target[entry++] = colour;
    }
    return succeed();
}
