#include "QRLE5CacheFilter.h"

#include "QImageInfo.h"
#include "QRLE5Codec.h"

QByteArray QRLE5CacheFilter::decode(const QByteArray& data, const QImageInfo* info) const
{
    // The form only knows indexed pixels.
    if (!info || info->format != QImage::Format_Indexed8) return QByteArray();
    return decodeRows(data, info, &QRLE5Codec::decode);
}
