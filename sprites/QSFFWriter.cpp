#include "QSFFWriter.h"

#include "QLZ5Codec.h"
#include "QPCXCodec.h"
#include "QPNGCodec.h"
#include "QRLE8Codec.h"
#include "QSFFFormat.h"
#include "QSprite.h"
#include "QSpriteColorTable.h"
#include "QSpriteImageRecord.h"
#include "QSpritePalette.h"
#include "QSprites.h"
#include "QStreamCache.h"
#include "QStreamCacheFilter.h"
#include "QUserDialogs.h"

#include <QBuffer>
#include <QHash>
#include <QSaveFile>
#include <QSet>
#include <QtEndian>

namespace {

void put32(QByteArray& bytes, int at, quint32 value)
{
    qToLittleEndian<quint32>(value, bytes.data() + at);
}

void put16(QByteArray& bytes, int at, quint16 value)
{
    qToLittleEndian<quint16>(value, bytes.data() + at);
}

QByteArray header(quint32 version, int textAt)
{
    QByteArray bytes(QSFF::HeaderSize, '\0');
    bytes.replace(0, QSFF::MagicSize, QSFF::magic());
    put32(bytes, 12, version);
    bytes.replace(textAt, QSFF::HeaderTextSize, QSFF::headerText());
    return bytes;
}

// Where the run-length pixels of an 8-bit, one-plane PCX end; -1 when they don't reach the last row.
qsizetype pcxPixelEnd(const QByteArray& data, const QPCXCodec::Header& header)
{
    const qint64 needed = qint64(header.bytesPerLine) * header.height;
    const auto* p = reinterpret_cast<const uchar*>(data.constData());
    const qsizetype size = data.size();
    qsizetype at = 128;
    qint64 count = 0;
    while (count < needed && at < size) {
        const uchar b = p[at++];
        if (b >= 192) {
            if (at >= size) return -1;
            ++at;
            count += b & 0x3F;
        } else {
            ++count;
        }
    }
    return count >= needed ? at : -1;
}

int bytesPerPixel(quint32 format)
{
    switch (format) {
    case QImage::Format_RGB32:
        return 3;
    case QImage::Format_ARGB32:
        return 4;
    default:
        return 1;
    }
}

} // namespace

QSFFWriter::QSFFWriter(QSprites* sprites) : model(sprites) {}

bool QSFFWriter::checkModel()
{
    for (uint i = 0; i < model->count(); ++i)
        if (!model->at(i)->hasImage()) {
            QUserDialogs::critical(
                QSprites::tr("Empty sprite!"),
                QSprites::tr("The sprite at index %1 is empty. You can't save a SFF file with "
                             "an empty sprite.")
                    .arg(i + 1));
            return false;
        }
    for (uint i = 0; i < model->paletteCount(); ++i)
        if (model->paletteAt(i)->isEmpty()) {
            QUserDialogs::critical(QSprites::tr("Empty palette!"),
                                   QSprites::tr("The palette at index %1 is empty. You can't save a SFF file "
                                                "with an empty palette.")
                                       .arg(i + 1));
            return false;
        }
    const quint32 version = model->version();
    if (version == QSFF::Version200 || version == QSFF::Version101) model->reduceToIndexed();
    if (version == QSFF::Version101 && model->projectType() == Character) {
        const QList<uint> list = model->characterPaletteOrder();
        if (!list.isEmpty()) {
            emit model->orderMustBeChanged(list);
            // The receiver may put the sprites in an order that works; a file in the old order would
            // give these sprites the wrong palette in the game.
            const QList<uint> still = model->characterPaletteOrder();
            if (!still.isEmpty()) {
                QStringList names;
                for (uint i : still.mid(0, 20))
                    names << QStringLiteral("%1,%2")
                                 .arg(model->at(i)->itemGroup())
                                 .arg(model->at(i)->itemIndex());
                if (still.size() > 20) names << QStringLiteral("...");
                QUserDialogs::critical(
                    QSprites::tr("Sprite order"),
                    QSprites::tr("These sprites use the character palette but stand where a version 1.01 "
                                 "file can't give it to them: %1.\nThe file was not saved. Put them right "
                                 "after sprite 0,0 or 9000,0 or after another such sprite, or save in "
                                 "version 2.00.")
                        .arg(names.join(QStringLiteral(", "))));
                return false;
            }
        }
    }
    return true;
}

bool QSFFWriter::write(const QString& path, bool copy)
{
    const quint32 version = model->version();
    if (version != QSFF::Version101 && version != QSFF::Version200 && version != QSFF::Version201)
        return false;
    if (!checkModel()) return false;
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) return false;
    if (!write(&file, copy)) {
        file.cancelWriting();
        return false;
    }
    if (!file.commit()) return false;
    if (!copy) {
        model->setFileName(path);
        model->setModified(false);
        emit model->changed();
        model->check();
    }
    return true;
}

bool QSFFWriter::write(QIODevice* device, bool copy)
{
    return model->version() == QSFF::Version101 ? writeVersion1(device) : writeVersion2(device, copy);
}

bool QSFFWriter::saveError(int position, const QString& reason)
{
    QUserDialogs::critical(QSprites::tr("Sprite saving error"),
                           QSprites::tr("An error occurred when saving the sprite %1.\n").arg(position) +
                               reason);
    return false;
}

// The PCX of a version 1.01 sprite. A stored PCX is reused: its pixels stay as they are and the
// sprite's palette goes behind them; anything else is encoded with the palette as its colour table.
// A sprite with the palette of the one before it leaves the table off and keeps the marker byte.
bool QSFFWriter::pcxBlock(const QSprite* sprite, int position, bool samePalette, QByteArray& data)
{
    const QSpriteImageRecord* record = sprite->imageRecord();
    QStreamCache* cache = model->cache();
    if (cache->filter(record->item) == QStreamCacheFilter::PCXFilter &&
        record->info.format == QImage::Format_Indexed8) {
        const QByteArray stored = cache->stored(record->item);
        QPCXCodec::Header pcx;
        if (QPCXCodec::readHeader(stored, pcx) && pcx.depth == 8 && pcx.planes == 1 &&
            pcx.width == record->info.width && pcx.height == record->info.height) {
            const qsizetype end = pcxPixelEnd(stored, pcx);
            if (end > 0) {
                data.reserve(end + 1 + (samePalette ? 0 : QSFF::V1TableBytes));
                data = stored.left(end);
                data.append(char(12));
                if (!samePalette) {
                    const QRGBPal* table = sprite->palette() ? sprite->palette()->table() : nullptr;
                    QByteArray rgb(QSFF::V1TableBytes, '\0');
                    if (table)
                        for (int i = 0; i < QRGBPal::TableSize; ++i) {
                            rgb[i * 3] = char(table[i].r);
                            rgb[i * 3 + 1] = char(table[i].g);
                            rgb[i * 3 + 2] = char(table[i].b);
                        }
                    data.append(rgb);
                }
                return true;
            }
        }
    }
    QBuffer buffer(&data);
    if (!buffer.open(QIODevice::WriteOnly))
        return saveError(position, QSprites::tr("Can't create a buffer for the image data."));
    if (!encodePCX(sprite->image(QSpriteImagePalette::Default), &buffer))
        return saveError(position, QSprites::tr("Can't create the PCX file."));
    buffer.close();
    if (samePalette && !data.isEmpty()) data.chop(std::min(qsizetype(QSFF::V1TableBytes), data.size()));
    return true;
}

bool QSFFWriter::writeVersion1(QIODevice* device)
{
    const uint count = model->count();
    const uint total = model->paletteCount() + count;
    bool allow = true;
    emit model->progress(0, total, allow);
    if (!allow) return false;

    QByteArray head = header(QSFF::Version101, QSFF::V1CommentOffset);
    QSet<int> groups;
    for (const QSprite* sprite : model->spriteItems())
        groups.insert(sprite->itemGroup());
    put32(head, 16, quint32(groups.size()));
    put32(head, 20, count);
    put32(head, 24, QSFF::HeaderSize);
    put32(head, 28, QSFF::V1SpriteHeaderSize);
    if (device->write(head) != head.size()) return false;

    QHash<QPair<const void*, const void*>, int> first;
    qint64 position = QSFF::HeaderSize;
    for (uint i = 0; i < count; ++i) {
        const QSprite* sprite = model->at(i);
        const QPair<const void*, const void*> key(sprite->imageRecord(), sprite->palette());
        const int link = first.value(key, -1);
        if (link < 0) first.insert(key, int(i));
        const bool samePalette =
            i == 0 ? sprite->palette() == nullptr : sprite->palette() == model->at(i - 1)->palette();
        QByteArray data;
        if (link < 0 && sprite->hasImage() && !pcxBlock(sprite, int(i), samePalette, data)) return false;

        QByteArray spriteHead(QSFF::V1SpriteHeaderSize, '\0');
        const qint64 next = position + QSFF::V1SpriteHeaderSize + data.size();
        put32(spriteHead, 0, quint32(next));
        put32(spriteHead, 4, quint32(data.size()));
        put16(spriteHead, 8, quint16(sprite->offsetX()));
        put16(spriteHead, 10, quint16(sprite->offsetY()));
        put16(spriteHead, 12, quint16(sprite->itemGroup()));
        put16(spriteHead, 14, quint16(sprite->itemIndex()));
        put16(spriteHead, 16, quint16(link >= 1 ? link : 0));
        spriteHead[18] = samePalette ? 1 : 0;
        if (device->write(spriteHead) != spriteHead.size() || device->write(data) != data.size())
            return false;
        position = next;
        emit model->progress(i + 1, total, allow);
        if (!allow) return false;
    }
    return true;
}

bool QSFFWriter::writeVersion2(QIODevice* device, bool copy)
{
    const quint32 version = model->version();
    const uint paletteCount = model->paletteCount();
    const uint spriteCount = model->count();
    const uint total = paletteCount + spriteCount;
    bool allow = true;
    emit model->progress(0, total, allow);
    if (!allow) return false;
    uint done = 0;

    QByteArray paletteNodes(int(paletteCount) * QSFF::PaletteNodeSize, '\0');
    QByteArray paletteData;
    QHash<const void*, int> firstTable;
    QHash<const QSpritePalette*, int> paletteNumber;
    for (uint k = 0; k < paletteCount; ++k) {
        const QSpritePalette* palette = model->paletteAt(k);
        paletteNumber.insert(palette, int(k));
        const int link = firstTable.value(palette->colorTable(), -1);
        if (link < 0) firstTable.insert(palette->colorTable(), int(k));
        const int at = int(k) * QSFF::PaletteNodeSize;
        const int colours = palette->colorCount();
        put16(paletteNodes, at, quint16(palette->itemGroup()));
        put16(paletteNodes, at + 2, quint16(palette->itemIndex()));
        put16(paletteNodes, at + 4, quint16(colours));
        put16(paletteNodes, at + 6, quint16(link >= 1 ? link : 0));
        put32(paletteNodes, at + 8, quint32(paletteData.size()));
        if (link < 0) {
            put32(paletteNodes, at + 12, quint32(colours * 4));
            if (palette->table())
                paletteData.append(reinterpret_cast<const char*>(palette->table()), colours * 4);
            else
                paletteData.append(QByteArray(colours * 4, '\0'));
        }
        emit model->progress(++done, total, allow);
        if (!allow) return false;
    }

    struct Block
    {
        QByteArray bytes;
        quint32 decodedSize = 0;
    };
    QList<Block> ldata;
    QList<Block> tdata;
    qint64 ldataSize = paletteData.size();
    qint64 tdataSize = 0;
    QByteArray spriteNodes(int(spriteCount) * QSFF::SpriteNodeSize, '\0');
    QHash<const QSpriteImageRecord*, int> firstRecord;
    QStreamCache* cache = model->cache();
    for (uint i = 0; i < spriteCount; ++i) {
        const QSprite* sprite = model->at(i);
        QSpriteImageRecord* record = sprite->imageRecord();
        const int link = record ? firstRecord.value(record, -1) : -1;
        if (record && link < 0) firstRecord.insert(record, int(i));
        const QImageInfo info = sprite->imageProperties();
        const bool indexed = info.format == QImage::Format_Indexed8;
        const bool is32 = indexed && sprite->palette() && sprite->palette()->colorCount() == 32;
        int depth = 0;
        if (indexed)
            depth = is32 ? 5 : 8;
        else if (info.format == QImage::Format_RGB32)
            depth = 24;
        else if (info.format == QImage::Format_ARGB32)
            depth = 32;

        int format = QSFF::NoDataFormat;
        QByteArray bytes;
        if (record && link < 0) {
            if (info.format == QImage::Format_ARGB32)
                format = QSFF::PNG32Format;
            else if (info.format == QImage::Format_RGB32)
                format = QSFF::PNG24Format;
            else if (is32)
                format = QSFF::LZ5Format;
            else if (version == QSFF::Version200)
                format = QSFF::RLE8Format;
            else
                format = QSFF::PNG8Format;
            // A stored block that this version can hold is kept as it is.
            const uint stored = cache->filter(record->item);
            if (indexed && stored == QStreamCacheFilter::RLE8Filter)
                format = QSFF::RLE8Format;
            else if (indexed && stored == QStreamCacheFilter::LZ5Filter)
                format = QSFF::LZ5Format;
            else if (indexed && stored == QStreamCacheFilter::PNGFilter && version == QSFF::Version201)
                format = QSFF::PNG8Format;
            const uint filter = QStreamCacheFilter::fromSffFormat(uint(format));
            if (stored == filter) {
                bytes = cache->stored(record->item);
            } else {
                const QByteArray raw = record->decoded();
                const QImage image = info.image(raw);
                if (!image.isNull()) {
                    if (format == QSFF::RLE8Format)
                        bytes = encodeRLE8(image);
                    else if (format == QSFF::LZ5Format)
                        bytes = encodeLZ5(image);
                    else
                        bytes = encodePNG(image);
                }
                if (bytes.isEmpty()) return saveError(int(i), QSprites::tr("Can't compress the image."));
                if (!copy) {
                    const quint64 hash =
                        record->item && record->item->hash ? record->item->hash : QStreamCache::hash(raw);
                    cache->replace(record->item, bytes, filter, &record->info, hash);
                }
            }
            if (bytes.isEmpty()) format = QSFF::NoDataFormat;
        }

        const bool inTdata = sprite->flags() & 1;
        const int at = int(i) * QSFF::SpriteNodeSize;
        put16(spriteNodes, at, quint16(sprite->itemGroup()));
        put16(spriteNodes, at + 2, quint16(sprite->itemIndex()));
        put16(spriteNodes, at + 4, info.width);
        put16(spriteNodes, at + 6, info.height);
        put16(spriteNodes, at + 8, quint16(sprite->offsetX()));
        put16(spriteNodes, at + 10, quint16(sprite->offsetY()));
        put16(spriteNodes, at + 12, quint16(link >= 1 ? link : 0));
        spriteNodes[at + 14] = char(format);
        spriteNodes[at + 15] = char(depth);
        put32(spriteNodes, at + 16, quint32(inTdata ? tdataSize : ldataSize));
        put16(spriteNodes, at + 24, quint16(paletteNumber.value(sprite->palette(), 0)));
        put16(spriteNodes, at + 26, sprite->flags());
        if (format != QSFF::NoDataFormat) {
            put32(spriteNodes, at + 20, quint32(bytes.size() + 4));
            const Block block{bytes, quint32(info.width) * info.height * quint32(bytesPerPixel(info.format))};
            if (inTdata) {
                tdata.append(block);
                tdataSize += bytes.size() + 4;
            } else {
                ldata.append(block);
                ldataSize += bytes.size() + 4;
            }
        }
        emit model->progress(++done, total, allow);
        if (!allow) return false;
    }

    QByteArray head = header(version, QSFF::V2CommentOffset);
    const quint32 spriteOffset = QSFF::HeaderSize + paletteCount * QSFF::PaletteNodeSize;
    const quint32 ldataOffset = spriteOffset + spriteCount * QSFF::SpriteNodeSize;
    put32(head, 24, version);
    put32(head, 36, spriteOffset);
    put32(head, 40, spriteCount);
    put32(head, 44, QSFF::HeaderSize);
    put32(head, 48, paletteCount);
    put32(head, 52, ldataOffset);
    put32(head, 56, quint32(ldataSize));
    put32(head, 60, quint32(ldataOffset + ldataSize));
    put32(head, 64, quint32(tdataSize));
    if (device->write(head) != head.size() || device->write(paletteNodes) != paletteNodes.size() ||
        device->write(spriteNodes) != spriteNodes.size() || device->write(paletteData) != paletteData.size())
        return false;
    for (const QList<Block>* blocks : {&ldata, &tdata})
        for (const Block& block : *blocks) {
            char size[4];
            qToLittleEndian<quint32>(block.decodedSize, size);
            if (device->write(size, 4) != 4 || device->write(block.bytes) != block.bytes.size()) return false;
        }
    return true;
}
