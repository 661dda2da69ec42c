#include "QDecodedImageCache.h"

#include "QSprite.h"
#include "QSpriteImageRecord.h"

QImage QDecodedImageCache::pixels(const QSprite* sprite)
{
    const QSpriteImageRecord* record = sprite ? sprite->imageRecord() : nullptr;
    if (!record) return QImage();
    const auto found = images.constFind(record->serial);
    if (found != images.constEnd()) {
        ++hitCount;
        // The recent end is where a hit moves to; the list stays short (a few hundred entries at most).
        order.removeOne(record->serial);
        order.append(record->serial);
        return found.value();
    }
    ++missCount;
    QImage image = record->image();
    if (image.isNull()) return image;
    // An image larger than the whole budget is shown but not kept.
    if (image.sizeInBytes() > budget) return image;
    images.insert(record->serial, image);
    order.append(record->serial);
    held += image.sizeInBytes();
    peak = qMax(peak, held);
    trim();
    return image;
}

void QDecodedImageCache::trim()
{
    while (held > budget && !order.isEmpty()) {
        const quint64 oldest = order.takeFirst();
        held -= images.take(oldest).sizeInBytes();
    }
}

void QDecodedImageCache::clear()
{
    images.clear();
    order.clear();
    held = 0;
}
