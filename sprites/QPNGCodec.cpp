#include "QPNGCodec.h"

#include "QEncodeCounters.h"

#include <QBuffer>

QImage decodePNG(const QByteArray& data)
{
    QImage image;
    image.loadFromData(data, "PNG");
    return image;
}

QByteArray encodePNG(const QImage& image)
{
    ++QEncodeCounters::png;
    if (image.isNull()) return QByteArray();
    QImage source = image;
    if (source.format() == QImage::Format_Indexed8) source.setColorTable(QList<QRgb>(256, qRgb(0, 0, 0)));
    QByteArray bytes;
    QBuffer buffer(&bytes);
    if (!buffer.open(QIODevice::WriteOnly) || !source.save(&buffer, "PNG", 0)) return QByteArray();
    return bytes;
}
