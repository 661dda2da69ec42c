#include "QRIFFPalette.h"

#include <QIODevice>
#include <QtEndian>

bool QRIFFPalette::read(QIODevice* device, QRGBPal* target)
{
    // "RIFF", the RIFF size, "PAL data", the chunk size, then version and count up to offset 24.
    const QByteArray header = device->read(24);
    if (header.size() < 20 || header.mid(8, 8) != "PAL data")
        return fail(QStringLiteral("not a RIFF palette: no \"PAL data\" chunk"));
    // The chunk size counts the 4 bytes of version and count before the entries, and 4 more.
    const quint32 chunkSize = qFromLittleEndian<quint32>(header.constData() + 16);
    if (chunkSize < 8 || chunkSize - 8 > quint32(QRGBPal::TableBytes))
        return fail(QStringLiteral("the palette data is larger than 256 colours"));
    const qint64 size = qint64(chunkSize - 8);
    qint64 got = 0;
    if (header.size() == 24) got = device->read(reinterpret_cast<char*>(target), size);
    for (int i = 0; i < QRGBPal::TableSize; ++i)
        target[i].a = 255;
    reverseTable(target);
    if (got != size) return fail(QStringLiteral("the palette data is truncated"));
    return succeed();
}
