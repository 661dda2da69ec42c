#pragma once

#include <QByteArray>

struct QImageInfo;

// Turns a stored block back into raw pixels. The process-wide table holds one filter per stored form;
// index 0 stands for raw blocks and has no filter.
class QStreamCacheFilter
{
public:
    enum Index : uint
    {
        RawFilter = 0,
        PCXFilter = 1,
        RLE8Filter = 2,
        RLE5Filter = 3,
        LZ5Filter = 4,
        PNGFilter = 5,
        FilterCount = 6
    };

    virtual ~QStreamCacheFilter() = default;
    // The raw form of the block: bytesPerLine * height bytes of the image that info describes, or an
    // empty array when the block can't be decoded into that image.
    virtual QByteArray decode(const QByteArray& data, const QImageInfo* info) const = 0;

    // The filter of a table index; null for raw blocks and for unknown indices.
    static const QStreamCacheFilter* at(uint index);
    // The filter index of an SFF v2 sprite format byte: 2, 3 and 4 keep their numbers, 10 to 12 are
    // PNG, anything else is raw.
    static uint fromSffFormat(uint format);

protected:
    // A raw block of the image's size, or an empty one when info has no valid size.
    static QByteArray allocate(const QImageInfo* info);

    using StreamDecoder = qsizetype (*)(const uchar* src, qsizetype size, uchar* out, qsizetype total);
    // A raw block of the image's size filled by a stream codec whose output is the rows without their
    // padding; empty when info has no valid size.
    static QByteArray decodeRows(const QByteArray& data, const QImageInfo* info, StreamDecoder decoder);
};
