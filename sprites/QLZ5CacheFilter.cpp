#include "QLZ5CacheFilter.h"

#include "QImageInfo.h"
#include "QLZ5Codec.h"

QByteArray QLZ5CacheFilter::decode(const QByteArray& data, const QImageInfo* info) const
{
    // The form only knows indexed pixels.
    if (!info || info->format != QImage::Format_Indexed8) return QByteArray();
    return decodeRows(data, info, &QLZ5Codec::decode);
}
