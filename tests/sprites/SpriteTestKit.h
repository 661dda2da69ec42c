#pragma once

// Small helpers that several sprite tests share: readable colours in failure messages, PNG blocks at a
// chosen compression, palettes of distinct colours, a snapshot of a whole model and the rows of every real
// sprite file.

#include "QRGBPalette.h"
#include "QSprite.h"
#include "QSpritePalette.h"
#include "QSprites.h"
#include "TestData.h"

#include <QBuffer>
#include <QDir>
#include <QImage>
#include <QStringList>
#include <QTest>
#include <QVector>

Q_DECLARE_METATYPE(QRGBPal)

namespace QTest {
template <>
inline char* toString(const QRGBPal& c)
{
    return qstrdup(QByteArray::number(c.r) + ',' + QByteArray::number(c.g) + ',' + QByteArray::number(c.b) +
                   ',' + QByteArray::number(c.a));
}
} // namespace QTest

namespace SpriteTestKit {

// A PNG through Qt's writer; quality 0 is the strongest compression, 100 none.
inline QByteArray pngAt(const QImage& image, int quality)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG", quality);
    return bytes;
}

// 256 colours (i, seed, 255 - i); entries beyond differentUpTo all equal (1, 2, 3).
inline QVector<uint> colours(int seed, int differentUpTo = 255)
{
    QVector<uint> table(256);
    for (int i = 0; i < 256; ++i)
        table[i] = i <= differentUpTo ? qRgb(i, seed & 0xFF, 255 - i) : qRgb(1, 2, 3);
    return table;
}

// Everything a user can see of the model, with positions in place of pointers.
inline QStringList snapshot(const QSprites& sprites)
{
    QStringList lines;
    for (uint i = 0; i < sprites.count(); ++i) {
        const QSprite* s = sprites.at(i);
        const QImage image = s->image(QSpriteImagePalette::None);
        const QByteArray pixels =
            image.isNull()
                ? QByteArray()
                : QByteArray(reinterpret_cast<const char*>(image.constBits()), int(image.sizeInBytes()));
        lines << QStringLiteral("sprite %1: %2,%3 axis %4,%5 flags %6 palette %7 image %8x%9/%10 %11")
                     .arg(i)
                     .arg(s->itemGroup())
                     .arg(s->itemIndex())
                     .arg(s->offsetX())
                     .arg(s->offsetY())
                     .arg(s->flags())
                     .arg(sprites.paletteIndexOf(s->palette()))
                     .arg(image.width())
                     .arg(image.height())
                     .arg(int(image.format()))
                     .arg(QString::fromLatin1(pixels.toHex()));
    }
    for (uint i = 0; i < sprites.paletteCount(); ++i) {
        const QSpritePalette* p = sprites.paletteAt(i);
        QByteArray table;
        for (uint colour : p->colors())
            table += QByteArray::number(colour, 16) + ' ';
        lines << QStringLiteral("palette %1: %2,%3 count %4 %5 %6")
                     .arg(i)
                     .arg(p->itemGroup())
                     .arg(p->itemIndex())
                     .arg(p->colorCount())
                     .arg(p->isEmpty() ? QStringLiteral("empty") : QStringLiteral("colours"))
                     .arg(QString::fromLatin1(table));
    }
    return lines;
}

// One data row, "path", per sprite file of the test data.
inline void addSffFileRows()
{
    QTest::addColumn<QString>("path");
    for (const QString& path : TestData::files({QStringLiteral("*.sff")}))
        QTest::newRow(qPrintable(QDir(TestData::root()).relativeFilePath(path))) << path;
}

} // namespace SpriteTestKit
