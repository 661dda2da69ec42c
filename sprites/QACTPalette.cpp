#include "QACTPalette.h"

#include <QIODevice>

#include <algorithm>
#include <array>

bool QACTPalette::read(QIODevice* device, QRGBPal* target)
{
    std::array<char, FileBytes> bytes;
    if (device->read(bytes.data(), FileBytes) != FileBytes)
        return fail(QStringLiteral("an ACT palette needs 768 bytes"));
    for (int i = 0; i < QRGBPal::TableSize; ++i)
        target[i] = QRGBPal(uchar(bytes[3 * i]), uchar(bytes[3 * i + 1]), uchar(bytes[3 * i + 2]));
    reverseTable(target);
    return succeed();
}

bool QACTPalette::write(QIODevice* device, const QRGBPal* table)
{
    std::array<char, FileBytes> bytes;
    for (int i = 0; i < QRGBPal::TableSize; ++i) {
        const QRGBPal& colour = table[QRGBPal::TableSize - 1 - i];
        bytes[3 * i] = char(colour.r);
        bytes[3 * i + 1] = char(colour.g);
        bytes[3 * i + 2] = char(colour.b);
    }
    return device->write(bytes.data(), FileBytes) == FileBytes;
}
