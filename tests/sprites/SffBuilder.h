#pragma once

// Builds small sprite files byte by byte, so that tests can make every case the reader meets,
// including broken ones.

#include "QPCXCodec.h"

#include <QBuffer>
#include <QByteArray>
#include <QImage>
#include <QList>
#include <QtEndian>

namespace SffBuilder {

constexpr quint32 Auto = 0xFFFFFFFF;

inline void put32(QByteArray& bytes, int at, quint32 value)
{
    qToLittleEndian<quint32>(value, bytes.data() + at);
}

inline void put16(QByteArray& bytes, int at, quint16 value)
{
    qToLittleEndian<quint16>(value, bytes.data() + at);
}

inline QByteArray le32(quint32 value)
{
    QByteArray bytes(4, '\0');
    put32(bytes, 0, value);
    return bytes;
}

// An indexed image whose pixel (x, y) is (x + y * width + seed) % colours.
inline QImage indexedImage(int width, int height, int colours = 16, int seed = 0)
{
    QImage image(width, height, QImage::Format_Indexed8);
    QList<QRgb> table(256);
    for (int i = 0; i < 256; ++i)
        table[i] = qRgb(i, 255 - i, (i * 7) & 0xFF);
    image.setColorTable(table);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            image.scanLine(y)[x] = uchar((x + y * width + seed) % colours);
    return image;
}

inline QByteArray pcx(const QImage& image)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    encodePCX(image, &buffer);
    return bytes;
}

struct V1Sprite
{
    QByteArray data;
    int group = 0;
    int index = 0;
    int x = 0;
    int y = 0;
    int link = 0;
    bool samePalette = false;
    quint32 next = Auto;   // Auto: the real next header; set 0 or another value to test the reader
    quint32 length = Auto; // Auto: the data's size
};

inline QByteArray v1(const QList<V1Sprite>& sprites, quint32 images = Auto)
{
    QByteArray file(512, '\0');
    file.replace(0, 12, QByteArray("ElecbyteSpr", 12));
    put32(file, 12, 0x01000100);
    put32(file, 20, images == Auto ? quint32(sprites.size()) : images);
    put32(file, 24, 512);
    put32(file, 28, 32);
    for (const V1Sprite& sprite : sprites) {
        QByteArray head(32, '\0');
        const quint32 next = quint32(file.size() + 32 + sprite.data.size());
        put32(head, 0, sprite.next == Auto ? next : sprite.next);
        put32(head, 4, sprite.length == Auto ? quint32(sprite.data.size()) : sprite.length);
        put16(head, 8, quint16(sprite.x));
        put16(head, 10, quint16(sprite.y));
        put16(head, 12, quint16(sprite.group));
        put16(head, 14, quint16(sprite.index));
        put16(head, 16, quint16(sprite.link));
        head[18] = sprite.samePalette ? 1 : 0;
        file += head + sprite.data;
    }
    return file;
}

struct V2Palette
{
    QByteArray colours; // RGBA bytes, stored in ldata
    int group = 1;
    int index = 1;
    int count = 256;
    int link = 0;
    quint32 length = Auto; // Auto: the size of colours
};

struct V2Sprite
{
    QByteArray block; // encoded bytes, without the decoded size in front
    int group = 0;
    int index = 0;
    int width = 0;
    int height = 0;
    int x = 0;
    int y = 0;
    int link = 0;
    int format = 2;
    int depth = 8;
    int palette = 0;
    int flags = 0;
    quint32 offset = Auto; // Auto: where the block goes in ldata or tdata
    quint32 length = Auto; // Auto: block size + 4, or 0 without a block
    bool rawBlock = false; // the block goes in without the decoded size in front
};

struct V2Counts
{
    quint32 sprites = Auto;
    quint32 palettes = Auto;
    quint32 spriteOffset = Auto;
    quint32 paletteOffset = Auto;
};

inline QByteArray v2(quint32 version, const QList<V2Palette>& palettes, const QList<V2Sprite>& sprites,
                     V2Counts counts = V2Counts())
{
    QByteArray ldata;
    QByteArray tdata;
    QByteArray paletteNodes;
    for (const V2Palette& palette : palettes) {
        QByteArray node(16, '\0');
        put16(node, 0, quint16(palette.group));
        put16(node, 2, quint16(palette.index));
        put16(node, 4, quint16(palette.count));
        put16(node, 6, quint16(palette.link));
        put32(node, 8, quint32(ldata.size()));
        put32(node, 12, palette.length == Auto ? quint32(palette.colours.size()) : palette.length);
        ldata += palette.colours;
        paletteNodes += node;
    }
    QByteArray spriteNodes;
    for (const V2Sprite& sprite : sprites) {
        QByteArray node(28, '\0');
        QByteArray& data = (sprite.flags & 1) ? tdata : ldata;
        put16(node, 0, quint16(sprite.group));
        put16(node, 2, quint16(sprite.index));
        put16(node, 4, quint16(sprite.width));
        put16(node, 6, quint16(sprite.height));
        put16(node, 8, quint16(sprite.x));
        put16(node, 10, quint16(sprite.y));
        put16(node, 12, quint16(sprite.link));
        node[14] = char(sprite.format);
        node[15] = char(sprite.depth);
        put32(node, 16, sprite.offset == Auto ? quint32(data.size()) : sprite.offset);
        const quint32 size =
            sprite.block.isEmpty() ? 0 : quint32(sprite.block.size() + (sprite.rawBlock ? 0 : 4));
        put32(node, 20, sprite.length == Auto ? size : sprite.length);
        put16(node, 24, quint16(sprite.palette));
        put16(node, 26, quint16(sprite.flags));
        if (!sprite.block.isEmpty()) {
            if (!sprite.rawBlock) data += le32(quint32(sprite.width) * quint32(sprite.height));
            data += sprite.block;
        }
        spriteNodes += node;
    }
    QByteArray file(512, '\0');
    file.replace(0, 12, QByteArray("ElecbyteSpr", 12));
    put32(file, 12, version);
    put32(file, 24, version);
    const quint32 spriteOffset = quint32(512 + paletteNodes.size());
    const quint32 ldataOffset = spriteOffset + quint32(spriteNodes.size());
    put32(file, 36, counts.spriteOffset == Auto ? spriteOffset : counts.spriteOffset);
    put32(file, 40, counts.sprites == Auto ? quint32(sprites.size()) : counts.sprites);
    put32(file, 44, counts.paletteOffset == Auto ? 512 : counts.paletteOffset);
    put32(file, 48, counts.palettes == Auto ? quint32(palettes.size()) : counts.palettes);
    put32(file, 52, ldataOffset);
    put32(file, 56, quint32(ldata.size()));
    put32(file, 60, ldataOffset + quint32(ldata.size()));
    put32(file, 64, quint32(tdata.size()));
    return file + paletteNodes + spriteNodes + ldata + tdata;
}

// 256 RGBA colours where colour i is (i, 2i, 255 - i, alpha).
inline QByteArray rgbaColours(int count = 256, int alpha = 255)
{
    QByteArray bytes;
    for (int i = 0; i < count; ++i) {
        bytes += char(i);
        bytes += char(2 * i);
        bytes += char(255 - i);
        bytes += char(alpha);
    }
    return bytes;
}

} // namespace SffBuilder
