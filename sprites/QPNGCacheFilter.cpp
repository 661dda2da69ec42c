#include "QPNGCacheFilter.h"

#include "QImageInfo.h"
#include "QPNGCodec.h"
#include "QPNGDecoder.h"

QByteArray QPNGCacheFilter::decode(const QByteArray& data, const QImageInfo* info) const
{
    if (info) {
        QByteArray raw;
        switch (QPNGDecoder::decode(data, *info, &raw)) {
        case QPNGDecoder::Decoded:
            return raw;
        case QPNGDecoder::Undecodable:
            return QByteArray();
        case QPNGDecoder::LeftToQt:
            break;
        }
    }
    QImage image = decodePNG(data);
    if (image.isNull()) return QByteArray();
    if (info) {
        if (image.width() != info->width || image.height() != info->height || info->depth() == 0)
            return QByteArray();
        // Qt reads a PNG in the form that suits it best (a 1-bit palette as Mono, grey as
        // Grayscale8); the raw form follows the image record.
        if (image.format() != info->imageFormat()) image = image.convertToFormat(info->imageFormat());
    }
    return QImageInfo::raw(image);
}
