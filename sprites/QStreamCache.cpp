#include "QStreamCache.h"

#include "QCrc64.h"
#include "QImageInfo.h"
#include "QStreamCacheFilter.h"

#include <QDir>

#include <cstring>

namespace {

// The process-wide pool: every item ever made, and the free ones among them. It lives as long as the
// process, so that a cache destroyed late at exit still finds it.
struct Pool
{
    QList<QStreamCacheItem*> all;
    QList<QStreamCacheItem*> free;
};

Pool& pool()
{
    static Pool* instance = new Pool;
    return *instance;
}

QStreamCacheItem* takeItem()
{
    Pool& p = pool();
    if (!p.free.isEmpty()) {
        QStreamCacheItem* item = p.free.takeLast();
        *item = QStreamCacheItem();
        return item;
    }
    auto* item = new QStreamCacheItem;
    p.all.append(item);
    return item;
}

void giveBack(QStreamCacheItem* item)
{
    item->data = QByteArray();
    item->info = nullptr;
    pool().free.append(item);
}

constexpr qint64 MoveChunk = 1 << 20;

} // namespace

QStreamCache::QStreamCache(const QString& fileTemplate, uint mode, bool compress, int level)
    : m_mode(MemoryMode), m_compress(compress), m_level(level),
      m_file(QDir::tempPath() + QLatin1Char('/') + fileTemplate)
{
    if (mode == FileMode && m_file.open()) m_mode = FileMode;
}

QStreamCache::~QStreamCache()
{
    for (QStreamCacheItem* item : std::as_const(m_items))
        giveBack(item);
}

QStreamCacheItem* QStreamCache::add(const QByteArray& data, uint filter, QImageInfo* info, quint64 hash)
{
    QStreamCacheItem* item = takeItem();
    store(item, data, filter, info, hash);
    m_items.append(item);
    return item;
}

QStreamCacheItem* QStreamCache::addLazy(const QByteArray& data, uint filter, QImageInfo* info)
{
    QStreamCacheItem* item = takeItem();
    store(item, data, filter, info, 0, true);
    m_items.append(item);
    return item;
}

void QStreamCache::setHash(QStreamCacheItem* item, quint64 hash) const
{
    if (item) item->hash = hash;
}

void QStreamCache::replace(QStreamCacheItem* item, const QByteArray& data, uint filter, QImageInfo* info,
                           quint64 hash)
{
    if (!item || !m_items.contains(item)) return;
    cut(item);
    store(item, data, filter, info, hash);
}

void QStreamCache::remove(QStreamCacheItem* item)
{
    if (!item || !m_items.removeOne(item)) return;
    cut(item);
    giveBack(item);
}

void QStreamCache::clear()
{
    for (QStreamCacheItem* item : std::as_const(m_items))
        giveBack(item);
    m_items.clear();
    if (m_mode == FileMode) m_file.resize(0);
}

void QStreamCache::store(QStreamCacheItem* item, const QByteArray& data, uint filter, QImageInfo* info,
                         quint64 hash, bool lazy)
{
    item->filter = filter;
    item->info = info;
    if (hash != 0 || lazy)
        item->hash = hash;
    else if (filter != QStreamCacheFilter::RawFilter)
        item->hash = crc64(decode(data, item));
    else
        item->hash = crc64(data);
    item->data = (m_compress && filter == QStreamCacheFilter::RawFilter) ? qCompress(data, m_level) : data;
    item->size = quint32(item->data.size());
    item->rawSize = quint32(data.size());
    item->offset = 0;
    if (m_mode == FileMode) {
        item->offset = quint32(m_file.size());
        m_file.seek(item->offset);
        m_file.write(item->data);
        m_file.flush();
        item->data = QByteArray();
    }
}

// Takes the item's bytes out of the temporary file: what follows moves down, and so do the offsets
// of the items behind it.
void QStreamCache::cut(QStreamCacheItem* item)
{
    if (m_mode != FileMode) {
        item->data = QByteArray();
        return;
    }
    const qint64 size = item->size;
    if (size == 0) return;
    const qint64 end = m_file.size();
    qint64 from = qint64(item->offset) + size;
    qint64 to = item->offset;
    while (from < end) {
        m_file.seek(from);
        const QByteArray chunk = m_file.read(std::min(MoveChunk, end - from));
        if (chunk.isEmpty()) break;
        m_file.seek(to);
        m_file.write(chunk);
        from += chunk.size();
        to += chunk.size();
    }
    m_file.resize(std::max(qint64(item->offset), end - size));
    const qint64 behind = qint64(item->offset) + size;
    for (QStreamCacheItem* other : std::as_const(m_items))
        if (other != item && other->offset >= behind) other->offset -= quint32(size);
    item->size = 0;
}

QByteArray QStreamCache::stored(const QStreamCacheItem* item) const
{
    if (!item) return QByteArray();
    if (m_mode != FileMode) return item->data;
    if (item->size == 0 || !m_file.seek(item->offset)) return QByteArray();
    return m_file.read(item->size);
}

QByteArray QStreamCache::decode(const QByteArray& stored, const QStreamCacheItem* item) const
{
    if (item->filter == QStreamCacheFilter::RawFilter && m_compress) return qUncompress(stored);
    return decodeBlock(stored, item->filter, item->info);
}

QByteArray QStreamCache::decodeBlock(const QByteArray& block, uint filter, const QImageInfo* info)
{
    if (filter == QStreamCacheFilter::RawFilter) return block;
    if (info && info->rawSize() > plausibleRawSize(block.size())) return QByteArray();
    const QStreamCacheFilter* decoder = QStreamCacheFilter::at(filter);
    return decoder ? decoder->decode(block, info) : QByteArray();
}

QByteArray QStreamCache::decoded(const QStreamCacheItem* item) const
{
    if (!item) return QByteArray();
    return decode(stored(item), item);
}

quint64 QStreamCache::hash(QStreamCacheItem* item) const
{
    if (!item) return 0;
    if (item->hash == 0) item->hash = crc64(decoded(item));
    return item->hash;
}

bool QStreamCache::equal(QStreamCacheItem* a, QStreamCacheItem* b) const
{
    if (!a || !b) return false;
    QByteArray rawA;
    QByteArray rawB;
    const bool decodedA = a->hash == 0;
    const bool decodedB = b->hash == 0;
    if (decodedA) {
        rawA = decoded(a);
        a->hash = crc64(rawA);
    }
    if (decodedB) {
        rawB = decoded(b);
        b->hash = crc64(rawB);
    }
    if (a->hash != b->hash) return false;
    if (!decodedA && !decodedB && a->filter == b->filter) return stored(a) == stored(b);
    if (!decodedA) rawA = decoded(a);
    if (!decodedB) rawB = decoded(b);
    return !rawA.isEmpty() && rawA == rawB;
}

QStreamCacheItem* QStreamCache::find(const QByteArray& raw, const QStreamCacheItem* except) const
{
    if (raw.isEmpty()) return nullptr;
    const quint64 wanted = crc64(raw);
    for (QStreamCacheItem* item : m_items) {
        if (item == except) continue;
        if (item->filter == QStreamCacheFilter::RawFilter ? item->rawSize != quint32(raw.size())
                                                          : item->info && item->info->rawSize() != raw.size())
            continue;
        QByteArray bytes;
        bool decodedNow = false;
        if (item->hash == 0) {
            bytes = decoded(item);
            item->hash = crc64(bytes);
            decodedNow = true;
        }
        if (item->hash != wanted) continue;
        if (!decodedNow) bytes = decoded(item);
        if (bytes.size() == raw.size() &&
            std::memcmp(bytes.constData(), raw.constData(), size_t(raw.size())) == 0)
            return item;
    }
    return nullptr;
}

qint64 QStreamCache::fileSize() const
{
    return m_mode == FileMode ? m_file.size() : 0;
}

quint64 QStreamCache::hash(const QByteArray& bytes)
{
    return crc64(bytes);
}

qint64 QStreamCache::plausibleRawSize(qint64 storedSize)
{
    constexpr qint64 Slack = 1 << 16;
    constexpr qint64 Ratio = 1100;
    constexpr qint64 Ceiling = qint64(512) << 20;
    return std::min(Ceiling, Slack + std::max(qint64(0), storedSize) * Ratio);
}

void QStreamCache::releasePool()
{
    Pool& p = pool();
    for (QStreamCacheItem* item : std::as_const(p.free)) {
        p.all.removeOne(item);
        delete item;
    }
    p.free.clear();
}

int QStreamCache::poolSize()
{
    return int(pool().all.size());
}

int QStreamCache::freeCount()
{
    return int(pool().free.size());
}
