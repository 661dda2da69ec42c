#include "QIndexedImagePalette.h"

#include "QPCXCodec.h"

#include <QIODevice>
#include <QImage>
#include <QImageReader>

#include <algorithm>

namespace {

void copyTable(const QImage& image, QRGBPal* target)
{
    const QList<QRgb> table = image.colorTable();
    const int count = std::min<int>(int(table.size()), QRGBPal::TableSize);
    for (int i = 0; i < count; ++i)
        target[i] = QRGBPal::fromRgb(table.at(i));
}

} // namespace

QIndexedImagePalette::QIndexedImagePalette(const QString& format) : format(format.toLower()) {}

bool QIndexedImagePalette::handles(const QString& suffix)
{
    const QString lower = suffix.toLower();
    return lower == QLatin1String("png") || lower == QLatin1String("pcx") || lower == QLatin1String("bmp");
}

bool QIndexedImagePalette::read(QIODevice* device, QRGBPal* target)
{
    if (format == QLatin1String("pcx")) return readPcx(device, target);
    QImageReader reader(device, format.toLatin1());
    reader.setAllocationLimit(AllocationLimitMB);
    const QImage image = reader.read();
    if (image.isNull())
        return fail(
            QStringLiteral("not a readable %1 image: %2").arg(format.toUpper(), reader.errorString()));
    if (image.format() != QImage::Format_Indexed8)
        return fail(QStringLiteral("not a colour-indexed image with 8 bits per pixel"));
    copyTable(image, target);
    return succeed();
}

bool QIndexedImagePalette::readPcx(QIODevice* device, QRGBPal* target)
{
    constexpr qint64 limit = qint64(AllocationLimitMB) << 20;
    const QByteArray data = readAtMost(device, limit + 1);
    if (data.size() > limit) return fail(QStringLiteral("the PCX image is too large"));
    QPCXCodec::Header header;
    if (!QPCXCodec::readHeader(data, header)) return fail(QStringLiteral("not a PCX image"));
    if (header.format != QImage::Format_Indexed8)
        return fail(QStringLiteral("not a colour-indexed image with 8 bits per pixel"));
    // A run of two bytes gives at most 63 pixels: an image that claims more than its bytes can hold is
    // cut short, and the table that ends a whole image can't be there.
    const qint64 pixels = qint64(header.width) * header.height;
    if (pixels > limit) return fail(QStringLiteral("the PCX image is too large"));
    if (pixels > 32 * qint64(data.size()) + 1024) return fail(QStringLiteral("the PCX image is truncated"));
    const QImage image = decodePCX(data);
    if (image.format() != QImage::Format_Indexed8) return fail(QStringLiteral("not a readable PCX image"));
    if (image.colorCount() == 0) return fail(QStringLiteral("the PCX image has no colour table"));
    copyTable(image, target);
    return succeed();
}
