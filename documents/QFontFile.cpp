#include "QFontFile.h"

#include "QDefinitions.h"
#include "QFntReader.h"
#include "QRGBPal.h"
#include "QSprite.h"
#include "QSpritePalette.h"
#include "QSprites.h"

#include <QFile>
#include <QFileInfo>

bool QFontFile::importFnt(const QString& path, QDefinitions& definitions, QSprites& sprites)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return false;
    return importFnt(&file, QFileInfo(path).completeBaseName(), definitions, sprites);
}

bool QFontFile::importFnt(QIODevice* device, const QString& name, QDefinitions& definitions,
                          QSprites& sprites)
{
    QFntFont font;
    if (!QFntReader::read(device, font)) return false;
    definitions.clear();
    definitions.setPlainText(definitionsText(font, name));
    toSprites(font, sprites);
    return true;
}

QString QFontFile::definitionsText(const QFntFont& font, const QString& name)
{
    return QStringLiteral("[FNT v2]\nfntversion = 2,00\nname = \"%1\"\n\n[Def]\ntype = Bitmap\nsize = %2,%3\n"
                          "spacing = %4,%5\noffset = %6,%7\nfile = %1.sff\n")
        .arg(name)
        .arg(font.size.width())
        .arg(font.size.height())
        .arg(font.spacing.x())
        .arg(font.spacing.y())
        .arg(font.offset.x())
        .arg(font.offset.y());
}

void QFontFile::toSprites(const QFntFont& font, QSprites& sprites)
{
    const bool wasLoading = sprites.isLoading();
    sprites.beginNoUndo();
    sprites.setLoading(true);
    sprites.clear();
    sprites.clearPalettes();
    sprites.setVersion(QSprites::Version_200);

    QList<QRgb> table = font.image.colorTable();
    table.resize(QRGBPal::TableSize, qRgb(0, 0, 0));
    const int colors =
        font.colors > 0 && font.colors <= QRGBPal::TableSize ? font.colors : QRGBPal::TableSize;
    const int top = QRGBPal::TableSize - colors;
    QSpritePalette* first = nullptr;
    for (int bank = 0; bank < QRGBPal::TableSize / colors; ++bank) {
        QRGBPal colours[QRGBPal::TableSize];
        for (int i = 0; i < QRGBPal::TableSize; ++i)
            colours[i] = QRGBPal::fromRgb(table.at(i < top ? i : i - bank * colors) | 0xff000000u);
        colours[0].a = 0;
        QSpritePalette* palette = sprites.addPalette(colours, QSpritePaletteShareMode::Share, 0, bank);
        // All 256 entries count: the glyphs' indices lie at the top of the table.
        palette->setFields(0, bank, QRGBPal::TableSize);
        if (!first) first = palette;
    }

    for (const QFntGlyph& glyph : font.map) {
        const QRect cell = font.cell(glyph);
        QImage pixels;
        if (cell.isEmpty()) {
            // A glyph with nothing of the image in its cell still needs an image to be saved.
            pixels = QImage(1, 1, QImage::Format_Indexed8);
            pixels.setColorTable(font.image.colorTable());
            pixels.fill(0);
        } else {
            pixels = font.image.copy(cell);
        }
        QSprite* sprite = sprites.add();
        sprite->setFields(first, 0, glyph.code, 0, 0, 0);
        sprite->setImage(pixels, QSpriteShareMode::Share);
    }

    sprites.setLoading(wasLoading);
    sprites.endNoUndo();
    sprites.finishChange();
}
