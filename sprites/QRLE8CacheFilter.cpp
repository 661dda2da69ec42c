#include "QRLE8CacheFilter.h"

#include "QImageInfo.h"
#include "QRLE8Codec.h"
#include "QRawRaster.h"

QByteArray QRLE8CacheFilter::decode(const QByteArray& data, const QImageInfo* info) const
{
    QByteArray raw = allocate(info);
    if (raw.isEmpty()) return raw;
    const QRawRaster raster{reinterpret_cast<uchar*>(raw.data()), info->rowBytes(), info->height,
                            info->bytesPerLine()};
    const uchar* src = reinterpret_cast<const uchar*>(data.constData());
    raster.decodeStream(
        [&](uchar* out, qsizetype total) { return QRLE8Codec::decode(src, data.size(), out, total); });
    return raw;
}
