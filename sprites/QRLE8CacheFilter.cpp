#include "QRLE8CacheFilter.h"

#include "QImageInfo.h"
#include "QRLE8Codec.h"

QByteArray QRLE8CacheFilter::decode(const QByteArray& data, const QImageInfo* info) const
{
    return decodeRows(data, info, &QRLE8Codec::decode);
}
