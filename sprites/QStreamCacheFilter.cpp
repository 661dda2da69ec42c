#include "QStreamCacheFilter.h"

#include "QImageInfo.h"
#include "QLZ5CacheFilter.h"
#include "QPCXCacheFilter.h"
#include "QPNGCacheFilter.h"
#include "QRLE5CacheFilter.h"
#include "QRLE8CacheFilter.h"
#include "QRawRaster.h"

#include <memory>

namespace {

// Made at first use and deleted at exit.
struct FilterTable
{
    std::unique_ptr<QStreamCacheFilter> filters[QStreamCacheFilter::FilterCount];

    FilterTable()
    {
        filters[QStreamCacheFilter::PCXFilter] = std::make_unique<QPCXCacheFilter>();
        filters[QStreamCacheFilter::RLE8Filter] = std::make_unique<QRLE8CacheFilter>();
        filters[QStreamCacheFilter::RLE5Filter] = std::make_unique<QRLE5CacheFilter>();
        filters[QStreamCacheFilter::LZ5Filter] = std::make_unique<QLZ5CacheFilter>();
        filters[QStreamCacheFilter::PNGFilter] = std::make_unique<QPNGCacheFilter>();
    }
};

} // namespace

const QStreamCacheFilter* QStreamCacheFilter::at(uint index)
{
    static const FilterTable table;
    return index < FilterCount ? table.filters[index].get() : nullptr;
}

uint QStreamCacheFilter::fromSffFormat(uint format)
{
    switch (format) {
    case 2:
        return RLE8Filter;
    case 3:
        return RLE5Filter;
    case 4:
        return LZ5Filter;
    case 10:
    case 11:
    case 12:
        return PNGFilter;
    default:
        return RawFilter;
    }
}

QByteArray QStreamCacheFilter::allocate(const QImageInfo* info)
{
    if (!info || info->rawSize() <= 0) return QByteArray();
    return QByteArray(info->rawSize(), Qt::Uninitialized);
}

QByteArray QStreamCacheFilter::decodeRows(const QByteArray& data, const QImageInfo* info,
                                          StreamDecoder decoder)
{
    QByteArray raw = allocate(info);
    if (raw.isEmpty()) return raw;
    const QRawRaster raster{reinterpret_cast<uchar*>(raw.data()), info->rowBytes(), info->height,
                            info->bytesPerLine()};
    const uchar* src = reinterpret_cast<const uchar*>(data.constData());
    raster.decodeStream([&](uchar* out, qsizetype total) { return decoder(src, data.size(), out, total); });
    return raw;
}
