#pragma once

#include "QImageInfo.h"

#include <QByteArray>
#include <QImage>

class QPixmap;
class QStreamCache;
struct QStreamCacheItem;

// The pixels of one or more sprites: the form of the image and its block in the owner's cache. Sprites
// and undo commands hold records by reference count; the last release gives the block back to the
// cache. A record may be released after its cache has forgotten every block (detach()).
struct QSpriteImageRecord
{
    QImageInfo info;
    quint32 refCount = 0;
    // Drawing caches of the views, made by them on demand and dropped whenever the pixels change.
    QPixmap* pixmaps[2] = {nullptr, nullptr};
    QStreamCache* cache = nullptr;
    QStreamCacheItem* item = nullptr;
    // Names these pixels for caches outside the model: a new number, never used before in this process,
    // whenever the pixels change, so a cache keyed by it can never show stale pixels even when a record
    // is freed and another is made at the same address.
    quint64 serial = 0;

    // A record without pixels and with a count of 0.
    static QSpriteImageRecord* create(QStreamCache* cache);
    static QSpriteImageRecord* retain(QSpriteImageRecord* record);
    static void release(QSpriteImageRecord* record);

    // The block in raw form; empty when there is none or it can't be decoded.
    QByteArray decoded() const;
    // The pixels as an image without colour table; null when they can't be decoded.
    QImage image() const;
    // Stores the pixels of an Indexed8, RGB32 or ARGB32 image, replacing the block if there is one.
    void setPixels(const QImage& image);
    // Stores a block as it is.
    void setBlock(const QByteArray& data, uint filter, const QImageInfo& form, quint64 hash, bool lazy);
    // Exchanges pixels with another record of the same cache; references stay where they are.
    void swapContents(QSpriteImageRecord* other);
    // Forgets the block without touching the cache, which is being cleared.
    void detach() { item = nullptr; }
    void dropPixmaps();

    ~QSpriteImageRecord();
};
