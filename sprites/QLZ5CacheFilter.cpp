#include "QLZ5CacheFilter.h"

#include "QImageInfo.h"
#include "QLZ5Codec.h"
#include "QRawRaster.h"

QByteArray QLZ5CacheFilter::decode(const QByteArray& data, const QImageInfo* info) const
{
    // The form only knows indexed pixels.
    if (!info || info->format != QImage::Format_Indexed8) return QByteArray();
    QByteArray raw = allocate(info);
    if (raw.isEmpty()) return raw;
    const QRawRaster raster{reinterpret_cast<uchar*>(raw.data()), info->width, info->height,
                            info->bytesPerLine()};
    const uchar* src = reinterpret_cast<const uchar*>(data.constData());
    raster.decodeStream(
        [&](uchar* out, qsizetype total) { return QLZ5Codec::decode(src, data.size(), out, total); });
    return raw;
}
