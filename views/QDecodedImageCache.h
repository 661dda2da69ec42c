#pragma once

#include <QHash>
#include <QImage>
#include <QList>

class QSprite;

// Decoded sprite pixels, kept for the views so that stepping back and forth through a character's
// sprites decodes each image once. Keyed by the image record's serial, which changes with every change
// of the pixels, so an entry can never be stale. Bounded by the bytes of the images it holds; the least
// recently used go first.
class QDecodedImageCache
{
public:
    explicit QDecodedImageCache(qint64 budgetBytes = 64ll * 1024 * 1024) : budget(budgetBytes) {}

    // The sprite's pixels without a colour table (null for an empty sprite).
    QImage pixels(const QSprite* sprite);
    void clear();

    qint64 bytes() const { return held; }
    qint64 peakBytes() const { return peak; }
    quint64 hits() const { return hitCount; }
    quint64 misses() const { return missCount; }
    qint64 budgetBytes() const { return budget; }

private:
    void trim();

    qint64 budget;
    qint64 held = 0;
    qint64 peak = 0;
    quint64 hitCount = 0;
    quint64 missCount = 0;
    QHash<quint64, QImage> images;
    // Serials from the least to the most recently used.
    QList<quint64> order;
};
