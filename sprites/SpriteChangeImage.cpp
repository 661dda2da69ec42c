#include "SpriteChangeImage.h"

#include "QSprite.h"
#include "QSpriteImageRecord.h"
#include "QSprites.h"
#include "QStreamCache.h"
#include "QStreamCacheFilter.h"

SpriteChangeImage::SpriteChangeImage(QSprites* sprites, uint position, bool inPlace)
    : SpriteUndoCommand(sprites, QObject::tr("Change image")), position(position), inPlace(false),
      other(nullptr)
{
    const QSprite* sprite = sprites->at(position);
    QSpriteImageRecord* record = sprite ? sprite->imageRecord() : nullptr;
    if (inPlace && record) {
        this->inPlace = true;
        other = QSpriteImageRecord::retain(QSpriteImageRecord::create(sprites->cache()));
        QStreamCache* cache = sprites->cache();
        // A raw block is stored squeezed; it goes in again as the raw pixels it stands for.
        const uint filter = cache->filter(record->item);
        other->setBlock(filter == QStreamCacheFilter::RawFilter ? cache->decoded(record->item)
                                                                : cache->stored(record->item),
                        filter, record->info, record->item ? record->item->hash : 0, true);
    } else {
        other = QSpriteImageRecord::retain(record);
    }
}

SpriteChangeImage::~SpriteChangeImage()
{
    QSpriteImageRecord::release(other);
}

void SpriteChangeImage::swap()
{
    QSprite* sprite = sprites->at(position);
    if (!sprite) return;
    if (inPlace) {
        if (sprite->imageRecord()) sprite->imageRecord()->swapContents(other);
        return;
    }
    QSpriteImageRecord* mine = QSpriteImageRecord::retain(sprite->imageRecord());
    sprite->setImageRecord(other);
    QSpriteImageRecord::release(other);
    other = mine;
}

void SpriteChangeImage::undo()
{
    const Applying applying(sprites);
    swap();
}

void SpriteChangeImage::apply()
{
    swap();
}
