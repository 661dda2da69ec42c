#include "QSpriteImageRecord.h"

#include "QStreamCache.h"
#include "QStreamCacheFilter.h"

#include <QPixmap>

#include <atomic>
#include <utility>

namespace {
quint64 nextSerial()
{
    static std::atomic<quint64> counter{0};
    return ++counter;
}
} // namespace

QSpriteImageRecord* QSpriteImageRecord::create(QStreamCache* cache)
{
    auto* record = new QSpriteImageRecord;
    record->cache = cache;
    record->serial = nextSerial();
    return record;
}

QSpriteImageRecord* QSpriteImageRecord::retain(QSpriteImageRecord* record)
{
    if (record) ++record->refCount;
    return record;
}

void QSpriteImageRecord::release(QSpriteImageRecord* record)
{
    if (!record) return;
    if (record->refCount > 1) {
        --record->refCount;
        return;
    }
    delete record;
}

QSpriteImageRecord::~QSpriteImageRecord()
{
    dropPixmaps();
    if (cache && item) cache->remove(item);
}

QByteArray QSpriteImageRecord::decoded() const
{
    return cache ? cache->decoded(item) : QByteArray();
}

QImage QSpriteImageRecord::image() const
{
    return info.image(decoded());
}

void QSpriteImageRecord::setPixels(const QImage& image)
{
    const QByteArray raw = QImageInfo::raw(image);
    setBlock(raw, QStreamCacheFilter::RawFilter, QImageInfo::of(image), QStreamCache::hash(raw), false);
}

void QSpriteImageRecord::setBlock(const QByteArray& data, uint filter, const QImageInfo& form, quint64 hash,
                                  bool lazy)
{
    info = form;
    dropPixmaps();
    if (!cache) return;
    if (item)
        cache->replace(item, data, filter, &info, hash);
    else if (lazy && hash == 0)
        item = cache->addLazy(data, filter, &info);
    else
        item = cache->add(data, filter, &info, hash);
}

void QSpriteImageRecord::swapContents(QSpriteImageRecord* other)
{
    if (!other || other == this) return;
    std::swap(info, other->info);
    std::swap(item, other->item);
    std::swap(cache, other->cache);
    if (item) item->info = &info;
    if (other->item) other->item->info = &other->info;
    dropPixmaps();
    other->dropPixmaps();
}

void QSpriteImageRecord::dropPixmaps()
{
    serial = nextSerial();
    for (QPixmap*& pixmap : pixmaps) {
        delete pixmap;
        pixmap = nullptr;
    }
}
