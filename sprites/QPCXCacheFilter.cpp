#include "QPCXCacheFilter.h"

#include "QImageInfo.h"
#include "QPCXCodec.h"

QByteArray QPCXCacheFilter::decode(const QByteArray& data, const QImageInfo* info) const
{
    QPCXCodec::Header header;
    if (!QPCXCodec::readHeader(data, header)) return QByteArray();
    QImageInfo own;
    own.width = quint16(header.width);
    own.height = quint16(header.height);
    own.format = header.format;
    // A file whose size doesn't fit in sixteen bits can't be described by an image record.
    if (own.width != header.width || own.height != header.height) return QByteArray();
    if (info && (info->width != own.width || info->height != own.height || info->format != own.format))
        return QByteArray();
    QByteArray raw = allocate(&own);
    if (raw.isEmpty()) return raw;
    qsizetype tableAt = -1;
    QPCXCodec::decodePixels(data, header, reinterpret_cast<uchar*>(raw.data()), own.bytesPerLine(), tableAt);
    return raw;
}
