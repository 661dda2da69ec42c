#include "QSFFReader.h"

#include "QBlockRows.h"
#include "QPCXCodec.h"
#include "QSprite.h"
#include "QSpriteColorTable.h"
#include "QSpriteImageRecord.h"
#include "QSpritePalette.h"
#include "QSprites.h"
#include "QStreamCache.h"
#include "QStreamCacheFilter.h"
#include "QUserDialogs.h"

#include <QFile>
#include <QtEndian>

#include <algorithm>
#include <cstring>
#include <numeric>

namespace {

// Raw pixels the reader keeps for the sharing pass (clipped version 1.01 sprites), at most.
constexpr qint64 KeepLimit = qint64(8) << 20;
// Pixels the sharing pass holds at once while it compares images of one size row by row; a larger set
// is compared image by image.
constexpr qint64 CompareBudget = qint64(64) << 20;
// The first step of the row by row comparison, in bytes; each further step adds a quarter of the rows
// done.
constexpr qsizetype FirstStep = 2048;
// Up to this many candidates are compared with each other directly, more are sorted by a hash first.
constexpr size_t SmallGroup = 8;

inline quint32 u32(const QByteArray& data, int at)
{
    return qFromLittleEndian<quint32>(data.constData() + at);
}

inline quint16 u16(const QByteArray& data, int at)
{
    return qFromLittleEndian<quint16>(data.constData() + at);
}

inline qint16 i16(const QByteArray& data, int at)
{
    return qFromLittleEndian<qint16>(data.constData() + at);
}

bool isSpecial(int group, int index)
{
    return (group == 0 || group == 9000) && index == 0;
}

// The colour table at the end of an 8-bit PCX file, found without decoding the pixels: 768 bytes
// behind the marker byte 12.
bool pcxTable(const QByteArray& data, const QPCXCodec::Header& header, QRGBPal* table)
{
    if (header.depth != 8 || header.planes != 1) return false;
    const qsizetype at = data.size() - QSFF::V1TableBytes;
    if (at < 129 || data.at(at - 1) != 12) return false;
    const auto* rgb = reinterpret_cast<const uchar*>(data.constData() + at);
    for (int i = 0; i < QRGBPal::TableSize; ++i)
        table[i] = QRGBPal(rgb[i * 3], rgb[i * 3 + 1], rgb[i * 3 + 2], 255);
    return true;
}

// Raw pixels of a file, rows without padding, in the row layout of the cache. Colours of deeper
// images come in the order red, green, blue (and alpha). What the file doesn't hold stays zero; an image
// far larger than its data is refused.
QByteArray rawPixels(const QByteArray& data, const QImageInfo& info)
{
    const int depth = info.depth();
    if (depth == 0 || info.rawSize() > 4 * qint64(data.size()) + (1 << 16)) return QByteArray();
    const int fileBytes =
        info.format == QImage::Format_Indexed8 ? 1 : (info.format == QImage::Format_RGB32 ? 3 : 4);
    QByteArray raw(info.rawSize(), '\0');
    const auto* from = reinterpret_cast<const uchar*>(data.constData());
    const qsizetype available = data.size();
    for (int y = 0; y < info.height; ++y) {
        uchar* row = reinterpret_cast<uchar*>(raw.data()) + y * info.bytesPerLine();
        for (int x = 0; x < info.width; ++x) {
            const qsizetype at = (qsizetype(y) * info.width + x) * fileBytes;
            if (at + fileBytes > available) return raw;
            if (fileBytes == 1) {
                row[x] = from[at];
                continue;
            }
            const uchar alpha = fileBytes == 4 ? from[at + 3] : 255;
            reinterpret_cast<QRgb*>(row)[x] = qRgba(from[at], from[at + 1], from[at + 2], alpha);
        }
    }
    return raw;
}

} // namespace

QSFFReader::QSFFReader(QSprites* sprites) : model(sprites) {}

bool QSFFReader::read(const QString& path, bool copy)
{
    QFile file(path);
    if (!file.exists() || !file.open(QIODevice::ReadOnly)) return false;
    return read(&file, path, copy);
}

QByteArray QSFFReader::view(qint64 offset, qint64 length) const
{
    if (offset < 0 || length <= 0 || offset >= fileSize) return QByteArray();
    length = std::min(length, fileSize - offset);
    return QByteArray::fromRawData(contents.constData() + offset, qsizetype(length));
}

void QSFFReader::linkError(int sprite, qint64 link, bool palette)
{
    const QString text = palette ? QSprites::tr("%1(%2): Sprite incorrectly linked to the palette index %3")
                                 : QSprites::tr("%1(%2): Sprite incorrectly linked to the index %3");
    QUserDialogs::critical(QSprites::tr("Sprite loading error"), text.arg(name).arg(sprite).arg(link));
}

void QSFFReader::discard(QList<QSprite*>& loaded)
{
    for (QSprite* sprite : std::as_const(loaded))
        if (sprite->imageRecord()) sprite->imageRecord()->detach();
    qDeleteAll(loaded);
    loaded.clear();
}

bool QSFFReader::fail(QList<QSprite*>& loaded)
{
    blocks.clear();
    contents = QByteArray();
    discard(loaded);
    model->clear();
    model->endNoUndo();
    model->setLoading(false);
    return false;
}

bool QSFFReader::read(QIODevice* device, const QString& fileName, bool copy)
{
    name = fileName;
    contents = device->isSequential() ? device->readAll()
                                      : (device->seek(0) ? device->read(device->size()) : QByteArray());
    fileSize = contents.size();
    layout = QSFFLayout();
    paletteByColours.clear();
    blocks.clear();
    keptBytes = 0;

    const QString keptName = model->fileName();
    model->beginNoUndo();
    model->setLoading(true);
    model->clear();
    if (copy) model->setFileName(keptName);

    QList<QSprite*> loaded;
    const QByteArray start = view(0, 16);
    if (start.size() < 16 || start.left(QSFF::MagicSize) != QSFF::magic()) return fail(loaded);
    const quint32 version = u32(start, 12);
    bool ok = false;
    if (version == QSFF::Version101) {
        model->setVersion(version);
        ok = readVersion1(loaded);
    } else if (version == QSFF::Version200 || version == QSFF::Version201) {
        model->setVersion(version);
        ok = readVersion2(version, loaded);
    } else {
        QUserDialogs::critical(QSprites::tr("Sprite loading error"),
                               QSprites::tr("%1(0): SFF version '%2.%3.%4.%5' not supported yet")
                                   .arg(name)
                                   .arg(version >> 24)
                                   .arg((version >> 16) & 0xFF)
                                   .arg((version >> 8) & 0xFF)
                                   .arg(version & 0xFF));
    }
    if (!ok) return fail(loaded);

    layout.version = version;
    model->appendLoaded(loaded);
    loaded.clear();
    shareEqualImages();
    blocks.clear();
    contents = QByteArray();

    model->endNoUndo();
    model->setLoading(false);
    if (!copy) model->setFileName(name);
    model->setModified(false);
    model->setStoredLayout(layout);
    emit model->changed();
    model->check();
    return true;
}

// ---- Version 1.01

QSpritePalette* QSFFReader::ownPalette(const QRGBPal* colours, int group)
{
    const QByteArray key(reinterpret_cast<const char*>(colours), QRGBPal::TableBytes);
    const auto it = paletteByColours.constFind(key);
    if (it != paletteByColours.constEnd() && it.value()->itemGroup() != 1) return it.value();
    QSpritePalette* palette = model->addPalette(colours, QSpritePaletteShareMode::Share, group, -1);
    if (it == paletteByColours.constEnd()) paletteByColours.insert(key, palette);
    return palette;
}

// Pixels beyond a small palette's colours are mapped to what the colour table of the PCX says; the
// block becomes raw pixels when anything changed. The hash of the raw pixels is stored either way.
void QSFFReader::clip(Block& block, int colorCount, const QRGBPal* table, int tableColours)
{
    QSpriteImageRecord* record = block.record;
    const QImageInfo& info = record->info;
    QByteArray raw = QStreamCache::decodeBlock(block.bytes, block.filter, &info);
    if (raw.isEmpty()) return;
    bool changed = false;
    uchar map[QRGBPal::TableSize];
    for (int p = 0; p < QRGBPal::TableSize; ++p) {
        map[p] = uchar(p);
        if (p < colorCount) continue;
        if (p < tableColours) {
            map[p] = 255;
            for (int k = 0; k < tableColours; ++k)
                if (table[k].toRgb() == QRgb(p)) {
                    map[p] = uchar(k);
                    break;
                }
        } else {
            map[p] = 0;
        }
    }
    for (int y = 0; y < info.height; ++y) {
        uchar* row = reinterpret_cast<uchar*>(raw.data()) + y * info.bytesPerLine();
        for (int x = 0; x < info.width; ++x) {
            const uchar now = map[row[x]];
            changed = changed || now != row[x];
            row[x] = now;
        }
    }
    const quint64 hash = QStreamCache::hash(raw);
    if (changed)
        record->setBlock(raw, QStreamCacheFilter::RawFilter, info, hash, false);
    else
        model->cache()->setHash(record->item, hash);
    // The sharing pass compares these pixels rather than decode the block again.
    if (changed || keptBytes + raw.size() <= KeepLimit) {
        if (!changed) keptBytes += raw.size();
        block.bytes = raw;
        block.filter = QStreamCacheFilter::RawFilter;
    }
}

bool QSFFReader::readVersion1(QList<QSprite*>& loaded)
{
    const QByteArray header = view(0, QSFF::HeaderSize);
    if (header.size() < 24) return true;
    const qint64 room = std::max(qint64(0), (fileSize - QSFF::HeaderSize) / QSFF::V1SpriteHeaderSize);
    const uint images = uint(std::min(qint64(u32(header, 20)), room));
    bool allow = true;
    emit model->progress(0, images, allow);
    if (!allow) return false;

    for (QSpritePalette* palette : model->paletteItems())
        if (palette->table()) {
            const QByteArray key(reinterpret_cast<const char*>(palette->table()), QRGBPal::TableBytes);
            if (!paletteByColours.contains(key)) paletteByColours.insert(key, palette);
        }
    const int characterAt = model->findPalette(0, 1, 1);
    QSpritePalette* character = characterAt >= 0 ? model->paletteAt(uint(characterAt)) : nullptr;
    const bool characterRule = model->projectType() == Character;
    QSpritePalette* previous = nullptr;
    qint64 position = QSFF::HeaderSize;

    for (uint i = 0; i < images; ++i) {
        const QByteArray head = view(position, QSFF::V1SpriteHeaderSize);
        if (head.size() < QSFF::V1SpriteHeaderSize) break;
        const quint32 next = u32(head, 0);
        const quint32 length = u32(head, 4);
        const int group = u16(head, 12);
        const int index = u16(head, 14);
        const quint16 link = u16(head, 16);
        const bool samePalette = uchar(head.at(18)) == 1;
        auto* sprite = new QSprite(model);
        sprite->setFields(nullptr, group, index, i16(head, 8), i16(head, 10), 0);

        const qint64 dataAt = position + QSFF::V1SpriteHeaderSize;
        qint64 dataLength = next != 0 ? qint64(next) - dataAt : qint64(length);
        dataLength = std::clamp(dataLength, qint64(0), std::max(qint64(0), fileSize - dataAt));

        QSFFStoredSprite stored;
        stored.samePalette = samePalette;
        stored.length = length;
        QSpritePalette* palette = nullptr;
        if (length == 0) {
            stored.format = QSFF::NoDataFormat;
            stored.link = link;
            if (link < loaded.size()) {
                const QSprite* target = loaded.at(link);
                sprite->setImageRecord(target->imageRecord());
                palette = samePalette ? previous : target->palette();
            } else {
                linkError(int(i), link, false);
                palette = samePalette ? previous : nullptr;
            }
        } else {
            stored.format = QSFF::PcxFormat;
            const QByteArray data = view(dataAt, dataLength);
            QPCXCodec::Header pcx;
            QImageInfo info;
            QRGBPal table[QRGBPal::TableSize];
            bool hasTable = false;
            if (QPCXCodec::readHeader(data, pcx) && pcx.width <= 0xFFFF && pcx.height <= 0xFFFF) {
                info.width = quint16(pcx.width);
                info.height = quint16(pcx.height);
                info.format = pcx.format;
                stored.depth = quint8(pcx.depth);
                hasTable = pcxTable(data, pcx, table);
            }
            if (characterRule && isSpecial(group, index)) {
                if (!character) {
                    QRGBPal colours[QRGBPal::TableSize];
                    if (hasTable) {
                        std::copy(table, table + QRGBPal::TableSize, colours);
                    } else {
                        std::memset(static_cast<void*>(colours), 0, sizeof colours);
                        emit model->charPalette(colours);
                    }
                    colours[0].a = 0;
                    character = model->addPalette(colours, QSpritePaletteShareMode::Share, 1, 1);
                    const QByteArray key(reinterpret_cast<const char*>(colours), QRGBPal::TableBytes);
                    if (!paletteByColours.contains(key)) paletteByColours.insert(key, character);
                }
                palette = character;
            } else if (i == 0 || !samePalette) {
                QRGBPal colours[QRGBPal::TableSize];
                if (hasTable)
                    std::copy(table, table + QRGBPal::TableSize, colours);
                else
                    std::memset(static_cast<void*>(colours), 0, sizeof colours);
                colours[0].a = 0;
                palette = ownPalette(colours, group);
            } else {
                palette = previous;
            }

            QSpriteImageRecord* record = QSpriteImageRecord::create(model->cache());
            record->setBlock(QByteArray(data.constData(), data.size()), QStreamCacheFilter::PCXFilter, info,
                             0, true);
            sprite->setImageRecord(record);
            blocks.push_back(Block{record, data, QStreamCacheFilter::PCXFilter});
            if (palette && palette->colorCount() < QSpritePalette::MaxColors &&
                info.format == QImage::Format_Indexed8)
                clip(blocks.back(), palette->colorCount(), table, hasTable ? QRGBPal::TableSize : 0);
        }
        sprite->setPalettePointer(palette);
        layout.sprites.append(stored);
        loaded.append(sprite);
        previous = palette;
        position = dataAt + dataLength;
        emit model->progress(i + 1, images, allow);
        if (!allow) return false;
    }
    return true;
}

// ---- Version 2

bool QSFFReader::readVersion2(quint32 version, QList<QSprite*>& loaded)
{
    const QByteArray header = view(0, QSFF::HeaderSize);
    if (header.size() < 68) return true;
    const qint64 spriteOffset = u32(header, 36);
    const qint64 paletteOffset = u32(header, 44);
    const qint64 ldataOffset = u32(header, 52);
    const qint64 tdataOffset = u32(header, 60);
    const auto room = [&](qint64 offset, qint64 nodeSize) {
        return offset >= fileSize ? qint64(0) : (fileSize - offset) / nodeSize;
    };
    const uint spriteCount =
        uint(std::min(qint64(u32(header, 40)), room(spriteOffset, QSFF::SpriteNodeSize)));
    const uint paletteCount =
        uint(std::min(qint64(u32(header, 48)), room(paletteOffset, QSFF::PaletteNodeSize)));

    for (uint i = model->paletteCount(); i-- > 0;)
        delete model->takePalette(i);

    bool allow = true;
    const uint total = spriteCount + paletteCount;
    emit model->progress(0, total, allow);
    if (!allow) return false;
    const QByteArray paletteNodes = view(paletteOffset, qint64(paletteCount) * QSFF::PaletteNodeSize);
    const QByteArray spriteNodes = view(spriteOffset, qint64(spriteCount) * QSFF::SpriteNodeSize);

    uint done = 0;
    QList<QSpritePalette*> palettes;
    for (uint k = 0; k < paletteCount; ++k) {
        const int at = int(k * QSFF::PaletteNodeSize);
        if (at + QSFF::PaletteNodeSize > paletteNodes.size()) break;
        const quint16 link = u16(paletteNodes, at + 6);
        const quint32 length = u32(paletteNodes, at + 12);
        auto* palette = new QSpritePalette(model);
        palette->setFields(u16(paletteNodes, at), u16(paletteNodes, at + 2), i16(paletteNodes, at + 4));
        QSFFStoredPalette stored;
        stored.length = length;
        if (length == 0) {
            stored.link = link;
            if (link < palettes.size()) palette->setColorTable(palettes.at(link)->colorTable());
        } else {
            QSpriteColorTable* table = QSpriteColorTable::create();
            const QByteArray bytes = view(ldataOffset + u32(paletteNodes, at + 8),
                                          std::min(qint64(length), qint64(QRGBPal::TableBytes)));
            std::memcpy(static_cast<void*>(table->colors), bytes.constData(), size_t(bytes.size()));
            if (version == QSFF::Version200)
                for (int c = 0; c < QRGBPal::TableSize; ++c)
                    table->colors[c].a = c == 0 ? 0 : 255;
            palette->setColorTable(table);
        }
        model->insertPaletteObject(model->paletteCount(), palette);
        palettes.append(palette);
        layout.palettes.append(stored);
        emit model->progress(++done, total, allow);
        if (!allow) return false;
    }

    // Blocks already read, by where they lie and in which form: a file that points many sprites at one
    // block gives them one record, and reading stops where the blocks would add up to more than the
    // file holds.
    QHash<QPair<qint64, qint64>, QSpriteImageRecord*> readBlocks;
    qint64 budget = fileSize;
    for (uint i = 0; i < spriteCount; ++i) {
        const int at = int(i * QSFF::SpriteNodeSize);
        if (at + QSFF::SpriteNodeSize > spriteNodes.size()) break;
        const quint16 link = u16(spriteNodes, at + 12);
        const quint8 format = quint8(spriteNodes.at(at + 14));
        const quint8 depth = quint8(spriteNodes.at(at + 15));
        const quint32 offset = u32(spriteNodes, at + 16);
        const quint32 length = u32(spriteNodes, at + 20);
        const quint16 paletteIndex = u16(spriteNodes, at + 24);
        const quint16 flags = u16(spriteNodes, at + 26);
        auto* sprite = new QSprite(model);
        QSpritePalette* palette = nullptr;
        if (depth <= 8) {
            if (paletteIndex < palettes.size())
                palette = palettes.at(paletteIndex);
            else
                linkError(int(i), paletteIndex, true);
        }
        sprite->setFields(palette, u16(spriteNodes, at), u16(spriteNodes, at + 2), i16(spriteNodes, at + 8),
                          i16(spriteNodes, at + 10), flags);
        QSFFStoredSprite stored;
        stored.format = format;
        stored.depth = depth;
        stored.palette = paletteIndex;
        stored.flags = flags;
        stored.length = length;
        if (length == 0) {
            stored.link = link;
            if (link < loaded.size())
                sprite->setImageRecord(loaded.at(link)->imageRecord());
            else
                linkError(int(i), link, false);
        } else {
            // Raw pixels have no decoded size in front of them: the engines read them from the offset.
            const bool raw = format == QSFF::RawFormat;
            const qint64 blockAt = qint64(offset) + ((flags & 1) ? tdataOffset : ldataOffset) + (raw ? 0 : 4);
            const qint64 wanted = raw ? qint64(length) : std::max(qint64(0), qint64(length) - 4);
            QImageInfo info;
            info.width = u16(spriteNodes, at + 4);
            info.height = u16(spriteNodes, at + 6);
            info.format = quint32(QSFF::imageFormatOfDepth(depth));
            const uint filter =
                raw ? uint(QStreamCacheFilter::RawFilter) : QStreamCacheFilter::fromSffFormat(format);
            const QPair<qint64, qint64> where(blockAt, wanted);
            QSpriteImageRecord* record = readBlocks.value(where);
            if (!record || record->info.width != info.width || record->info.height != info.height ||
                record->info.format != info.format || model->cache()->filter(record->item) != filter) {
                const qint64 size = std::min(wanted, std::max(qint64(0), fileSize - blockAt));
                QByteArray data;
                if (size <= budget) {
                    data = view(blockAt, size);
                    budget -= data.size();
                }
                record = QSpriteImageRecord::create(model->cache());
                if (raw) {
                    const QByteArray pixels = rawPixels(data, info);
                    record->setBlock(pixels, filter, info, QStreamCache::hash(pixels), false);
                    blocks.push_back(Block{record, pixels, filter});
                } else {
                    record->setBlock(QByteArray(data.constData(), data.size()), filter, info, 0, true);
                    blocks.push_back(Block{record, data, filter});
                }
                if (!readBlocks.contains(where)) readBlocks.insert(where, record);
            }
            sprite->setImageRecord(record);
        }
        layout.sprites.append(stored);
        loaded.append(sprite);
        emit model->progress(++done, total, allow);
        if (!allow) return false;
    }
    return true;
}

// ---- Sharing

// Gives every set of sprites with equal pixels the record of the first of them. Only records of the
// same width, height and format are compared: first by their stored bytes, which settles equal blocks
// without decoding, then by their pixels, row by row.
void QSFFReader::shareEqualImages()
{
    const int count = int(blocks.size());
    if (count < 2) return;
    std::vector<quint64> forms(size_t(count), 0);
    for (int b = 0; b < count; ++b) {
        const QImageInfo& info = blocks[size_t(b)].record->info;
        forms[size_t(b)] = (quint64(info.width) << 48) | (quint64(info.height) << 32) | info.format;
    }
    std::vector<int> order(static_cast<size_t>(count));
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(),
                     [&](int a, int b) { return forms[size_t(a)] < forms[size_t(b)]; });

    QHash<QSpriteImageRecord*, QSpriteImageRecord*> replacement;
    std::vector<int> members;
    std::vector<int> distinct;
    for (size_t start = 0; start < order.size();) {
        size_t stop = start + 1;
        while (stop < order.size() && forms[size_t(order[stop])] == forms[size_t(order[start])])
            ++stop;
        if (stop - start < 2) {
            start = stop;
            continue;
        }
        // Equal stored bytes in the same form decode to equal pixels: they share without decoding.
        members.assign(order.begin() + qsizetype(start), order.begin() + qsizetype(stop));
        std::stable_sort(members.begin(), members.end(), [&](int a, int b) {
            const Block& x = blocks[size_t(a)];
            const Block& y = blocks[size_t(b)];
            return x.filter != y.filter ? x.filter < y.filter : x.bytes.size() < y.bytes.size();
        });
        distinct.clear();
        for (size_t m = 0; m < members.size();) {
            size_t end = m + 1;
            const Block& first = blocks[size_t(members[m])];
            while (end < members.size() && blocks[size_t(members[end])].filter == first.filter &&
                   blocks[size_t(members[end])].bytes.size() == first.bytes.size())
                ++end;
            const size_t kept = distinct.size();
            for (size_t k = m; k < end; ++k) {
                const Block& block = blocks[size_t(members[k])];
                bool same = false;
                for (size_t d = kept; d < distinct.size() && !same; ++d) {
                    const Block& other = blocks[size_t(distinct[d])];
                    if (std::memcmp(block.bytes.constData(), other.bytes.constData(),
                                    size_t(block.bytes.size())) == 0) {
                        replacement.insert(block.record, other.record);
                        same = true;
                    }
                }
                if (!same) distinct.push_back(members[k]);
            }
            m = end;
        }
        if (distinct.size() >= 2) {
            std::sort(distinct.begin(), distinct.end());
            shareEqualPixels(distinct, replacement);
        }
        start = stop;
    }
    if (replacement.isEmpty()) return;
    for (QSprite* sprite : model->spriteItems()) {
        QSpriteImageRecord* target = sprite->imageRecord();
        for (auto it = replacement.constFind(target); it != replacement.constEnd();
             it = replacement.constFind(target))
            target = it.value();
        if (target != sprite->imageRecord()) sprite->setImageRecord(target);
    }
}

namespace {

// Rows first to last of a decoded block as one value, to sort candidates before comparing bytes.
size_t rowsHash(const QBlockRows& rows, int first, int last)
{
    size_t seed = 0;
    for (int y = first; y < last; ++y)
        seed = qHashBits(rows.row(y), size_t(rows.rowBytes()), seed);
    return seed;
}

bool sameRows(const QBlockRows& a, const QBlockRows& b, int first, int last)
{
    for (int y = first; y < last; ++y)
        if (std::memcmp(a.row(y), b.row(y), size_t(a.rowBytes())) != 0) return false;
    return true;
}

} // namespace

// Blocks of one form whose stored bytes differ, in the order of their first sprites: those whose pixels
// are equal take the record of the first of them. Candidates are decoded step by step, each step adding
// a quarter of the rows done so far, and a candidate leaves as soon as its rows differ from every other's.
void QSFFReader::shareEqualPixels(const std::vector<int>& members,
                                  QHash<QSpriteImageRecord*, QSpriteImageRecord*>& into)
{
    std::vector<QBlockRows> rows;
    rows.reserve(members.size());
    for (int b : members) {
        const Block& block = blocks[size_t(b)];
        rows.emplace_back(block.bytes, block.filter, block.record->info);
    }
    const QImageInfo& info = blocks[size_t(members.front())].record->info;
    const int height = info.height;
    const qsizetype line = std::max(qsizetype(1), info.rowBytes());
    const auto share = [&](const std::vector<int>& equal) {
        for (size_t k = 1; k < equal.size(); ++k)
            into.insert(blocks[size_t(members[size_t(equal[k])])].record,
                        blocks[size_t(members[size_t(equal[0])])].record);
    };

    if (qint64(members.size()) * info.rawSize() > CompareBudget) {
        // Too many pixels to hold at once: each candidate is decoded whole and hashed, and only equal
        // hashes are compared, against a first candidate decoded again.
        QMultiHash<size_t, int> byHash;
        std::vector<int> firsts;
        for (int c = 0; c < int(rows.size()); ++c) {
            QBlockRows& candidate = rows[size_t(c)];
            if (candidate.advance(height) < height) continue;
            const size_t hash = rowsHash(candidate, 0, height);
            candidate.release();
            bool shared = false;
            for (auto it = byHash.constFind(hash); it != byHash.constEnd() && it.key() == hash && !shared;
                 ++it) {
                const Block& a = blocks[size_t(members[size_t(it.value())])];
                const Block& b = blocks[size_t(members[size_t(c)])];
                QBlockRows left(a.bytes, a.filter, a.record->info);
                QBlockRows right(b.bytes, b.filter, b.record->info);
                if (left.advance(height) == height && right.advance(height) == height &&
                    sameRows(left, right, 0, height)) {
                    share({it.value(), c});
                    shared = true;
                }
            }
            if (!shared) byHash.insert(hash, c);
        }
        return;
    }

    struct Group
    {
        std::vector<int> candidates;
        int done = 0;
    };
    std::vector<Group> open;
    Group all;
    for (int c = 0; c < int(rows.size()); ++c)
        all.candidates.push_back(c);
    open.push_back(std::move(all));
    std::vector<std::pair<size_t, int>> keyed;
    std::vector<int> heads;
    while (!open.empty()) {
        Group group = std::move(open.back());
        open.pop_back();
        const int until = group.done == 0 ? int(std::clamp(FirstStep / line, qsizetype(1), qsizetype(height)))
                                          : std::min(height, group.done + std::max(1, group.done / 4));
        // A few candidates are compared with each other directly; many are sorted by a hash first.
        const bool hashed = group.candidates.size() > SmallGroup;
        keyed.clear();
        for (int c : group.candidates) {
            if (rows[size_t(c)].advance(until) < until) {
                rows[size_t(c)].release();
                continue;
            }
            keyed.emplace_back(hashed ? rowsHash(rows[size_t(c)], group.done, until) : 0, c);
        }
        std::sort(keyed.begin(), keyed.end());
        for (size_t k = 0; k < keyed.size();) {
            size_t end = k + 1;
            while (end < keyed.size() && keyed[end].first == keyed[k].first)
                ++end;
            // Candidates with equal hashes, split by their bytes; each part keeps the candidates' order.
            std::vector<Group> parts;
            for (size_t e = k; e < end; ++e) {
                const int c = keyed[e].second;
                Group* part = nullptr;
                for (Group& p : parts)
                    if (sameRows(rows[size_t(p.candidates.front())], rows[size_t(c)], group.done, until)) {
                        part = &p;
                        break;
                    }
                if (!part) {
                    parts.push_back(Group{{}, until});
                    part = &parts.back();
                }
                part->candidates.push_back(c);
            }
            for (Group& part : parts) {
                if (part.candidates.size() < 2 || until == height) {
                    if (part.candidates.size() >= 2) share(part.candidates);
                    for (int c : part.candidates)
                        rows[size_t(c)].release();
                    continue;
                }
                open.push_back(std::move(part));
            }
            k = end;
        }
    }
}
