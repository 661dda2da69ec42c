#include "QImageInfo.h"

#include <cstring>

int QImageInfo::depth() const
{
    if (format == QImage::Format_Invalid || format >= QImage::NImageFormats) return 0;
    return QImage::toPixelFormat(imageFormat()).bitsPerPixel();
}

QImage QImageInfo::image(const QByteArray& raw) const
{
    if (raw.size() != rawSize() || raw.isEmpty()) return QImage();
    QImage result(width, height, imageFormat());
    if (result.isNull() || result.sizeInBytes() != raw.size()) return QImage();
    std::memcpy(result.bits(), raw.constData(), size_t(raw.size()));
    return result;
}

QByteArray QImageInfo::raw(const QImage& image)
{
    if (image.isNull()) return QByteArray();
    const qsizetype rowBytes = (qsizetype(image.width()) * image.depth() + 7) / 8;
    const qsizetype bytesPerLine = image.bytesPerLine();
    if (rowBytes == bytesPerLine)
        return QByteArray(reinterpret_cast<const char*>(image.constBits()), image.sizeInBytes());
    // The padding is whatever the image's maker left there; cleared, equal pixels give equal blocks.
    QByteArray raw(image.sizeInBytes(), Qt::Uninitialized);
    for (int y = 0; y < image.height(); ++y) {
        char* row = raw.data() + y * bytesPerLine;
        std::memcpy(row, image.constScanLine(y), size_t(rowBytes));
        std::memset(row + rowBytes, 0, size_t(bytesPerLine - rowBytes));
    }
    return raw;
}

QByteArray QImageInfo::unpadded(const QImage& image)
{
    if (image.isNull()) return QByteArray();
    const qsizetype rowBytes = qsizetype(image.width()) * image.depth() / 8;
    if (rowBytes == image.bytesPerLine()) return raw(image);
    QByteArray packed(rowBytes * image.height(), Qt::Uninitialized);
    for (int y = 0; y < image.height(); ++y)
        std::memcpy(packed.data() + y * rowBytes, image.constScanLine(y), size_t(rowBytes));
    return packed;
}

QImageInfo QImageInfo::of(const QImage& image)
{
    QImageInfo info;
    info.width = quint16(image.width());
    info.height = quint16(image.height());
    info.format = image.format();
    return info;
}
