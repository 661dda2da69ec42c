#pragma once

#include "QStreamCacheItem.h"

#include <QByteArray>
#include <QList>
#include <QTemporaryFile>

struct QImageInfo;

// Blocks of image or sound bytes, kept in the form in which they were read and decoded on demand by the
// filter stored with them. Raw blocks (filter 0) may be squeezed with qCompress. The blocks live in
// memory (mode 0) or in a temporary file (mode 1), which is compacted at every removal. A block carries
// a hash of its decoded bytes so that duplicates are found without comparing bytes; blocks added lazily
// (a file being opened) leave it unknown until something asks for it.
class QStreamCache
{
public:
    enum Mode : uint
    {
        MemoryMode = 0,
        FileMode = 1
    };

    // The temporary file is made in the temporary folder from the template and opened only in file
    // mode; a file that can't be opened leaves the cache in memory.
    QStreamCache(const QString& fileTemplate, uint mode, bool compress, int level = -1);
    ~QStreamCache();
    QStreamCache(const QStreamCache&) = delete;
    QStreamCache& operator=(const QStreamCache&) = delete;

    // Adds a block. A hash of 0 means unknown: it is then computed from the decoded bytes.
    QStreamCacheItem* add(const QByteArray& data, uint filter, QImageInfo* info, quint64 hash = 0);
    // Adds a block without decoding it: its hash stays 0 (unknown) until hash(), equal() or find()
    // needs it, or setHash() gives it.
    QStreamCacheItem* addLazy(const QByteArray& data, uint filter, QImageInfo* info);
    // Records a hash of the item's decoded bytes that the caller already knows.
    void setHash(QStreamCacheItem* item, quint64 hash) const;
    void replace(QStreamCacheItem* item, const QByteArray& data, uint filter, QImageInfo* info,
                 quint64 hash = 0);
    void remove(QStreamCacheItem* item);
    void clear();

    // The block as stored; empty for a null item.
    QByteArray stored(const QStreamCacheItem* item) const;
    // The block in raw form; empty for a null item or a block that can't be decoded.
    QByteArray decoded(const QStreamCacheItem* item) const;
    uint filter(const QStreamCacheItem* item) const { return item ? item->filter : 0; }
    // The hash of the item's decoded bytes, computed now if it isn't known yet.
    quint64 hash(QStreamCacheItem* item) const;
    // Whether two blocks decode to the same bytes.
    bool equal(QStreamCacheItem* a, QStreamCacheItem* b) const;
    // The first item other than except whose decoded bytes are raw, or null. Items whose image can't
    // have that many bytes are passed over without being decoded.
    QStreamCacheItem* find(const QByteArray& raw, const QStreamCacheItem* except = nullptr) const;

    uint mode() const { return m_mode; }
    bool compress() const { return m_compress; }
    int level() const { return m_level; }
    const QList<QStreamCacheItem*>& items() const { return m_items; }
    // The temporary file's size; 0 in memory mode.
    qint64 fileSize() const;
    QString fileName() const { return m_file.fileName(); }

    // The hash of the cache (CRC-64 of the bytes).
    static quint64 hash(const QByteArray& bytes);
    // A block in the form that filter names, uncompressed, turned into raw form; empty when it can't be.
    static QByteArray decodeBlock(const QByteArray& block, uint filter, const QImageInfo* info);
    // The most raw bytes that an encoded block of storedSize bytes may decode to. No codec packs more
    // than about a thousand pixels bytes into one stored byte, so a block whose image claims more is
    // refused before anything is allocated for it.
    static qint64 plausibleRawSize(qint64 storedSize);

    // The pool: every item ever made and the free ones among them. Closing a project calls
    // releasePool(), which deletes every item that no cache holds.
    static void releasePool();
    static int poolSize();
    static int freeCount();

private:
    void store(QStreamCacheItem* item, const QByteArray& data, uint filter, QImageInfo* info, quint64 hash,
               bool lazy = false);
    void cut(QStreamCacheItem* item);
    QByteArray decode(const QByteArray& stored, const QStreamCacheItem* item) const;

    uint m_mode;
    bool m_compress;
    int m_level;
    QList<QStreamCacheItem*> m_items;
    mutable QTemporaryFile m_file;
};
