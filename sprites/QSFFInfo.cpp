#include "QSFFInfo.h"

#include "QImageInfo.h"
#include "QSprite.h"
#include "QSpriteImageRecord.h"
#include "QSpritePalette.h"
#include "QSprites.h"

#include <QSet>

namespace QSFFInfo {

Summary summary(const QSprites& sprites)
{
    Summary result;
    const QSFFLayout& layout = sprites.storedLayout();
    result.version = QSFF::versionText(sprites.version());
    result.sprites = int(sprites.count());
    result.palettes = int(sprites.paletteCount());
    for (const QSFFStoredSprite& stored : layout.sprites) {
        if (stored.link >= 0)
            ++result.linkedSprites;
        else
            ++result.formats[QSFF::formatName(stored.format)];
    }
    for (const QSFFStoredPalette& stored : layout.palettes)
        if (stored.link >= 0) ++result.linkedPalettes;
    QSet<const QSpriteImageRecord*> seen;
    for (const QSprite* sprite : sprites.spriteItems()) {
        if (!sprite->imageRecord()) continue;
        if (seen.contains(sprite->imageRecord()))
            ++result.sharedSprites;
        else
            seen.insert(sprite->imageRecord());
    }
    return result;
}

QList<Row> rows(const QSprites& sprites)
{
    QList<Row> result;
    const QSFFLayout& layout = sprites.storedLayout();
    const bool known = layout.sprites.size() == qsizetype(sprites.count());
    for (uint i = 0; i < sprites.count(); ++i) {
        const QSprite* sprite = sprites.at(i);
        const QImageInfo info = sprite->imageProperties();
        Row row;
        row.position = int(i);
        row.group = sprite->itemGroup();
        row.index = sprite->itemIndex();
        row.axisX = sprite->offsetX();
        row.axisY = sprite->offsetY();
        row.width = info.width;
        row.height = info.height;
        row.depth = info.depth();
        row.palette = sprites.paletteIndexOf(sprite->palette());
        row.flags = sprite->flags();
        if (known) {
            const QSFFStoredSprite& stored = layout.sprites.at(i);
            row.format = QSFF::formatName(stored.format);
            if (stored.depth != 0) row.depth = stored.depth;
            row.link = stored.link;
        } else {
            row.format = QStringLiteral("memory");
        }
        result.append(row);
    }
    return result;
}

QByteArray pixels(const QSprite& sprite)
{
    const QImage image = sprite.imageRecord() ? sprite.imageRecord()->image() : QImage();
    if (image.isNull()) return QByteArray();
    if (image.format() == QImage::Format_Indexed8) return QImageInfo::unpadded(image);
    return QImageInfo::unpadded(image.convertToFormat(QImage::Format_RGBA8888));
}

} // namespace QSFFInfo
