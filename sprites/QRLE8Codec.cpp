#include "QRLE8Codec.h"

#include "QEncodeCounters.h"
#include "QImageInfo.h"
#include "QRawRaster.h"

qsizetype QRLE8Codec::decode(const uchar* src, qsizetype size, uchar* out, qsizetype total)
{
    return decode(src, src + size, out, 0, total, total);
}

qsizetype QRLE8Codec::decode(const uchar*& src, const uchar* end, uchar* out, qsizetype written,
                             qsizetype until, qsizetype total)
{
    uchar* o = out + written;
    uchar* const stop = out + std::min(until, total);
    uchar* const oend = out + total;
    while (src < end && o < stop) {
        const uchar b = *src++;
        if ((b & 0xC0) != 0x40) {
            *o++ = b;
            continue;
        }
        if (src == end) break;
        const uchar v = *src++;
        const qsizetype n = b & 0x3F;
        if (oend - o >= 64) {
            // A fixed-size fill is a few vector stores; the bytes past the run are written over by
            // what follows, or cleared by the caller when the stream ends here.
            std::memset(o, v, 64);
            o += n;
        } else {
            const qsizetype k = std::min(n, qsizetype(oend - o));
            std::memset(o, v, size_t(k));
            o += k;
        }
    }
    return o - out;
}

QByteArray QRLE8Codec::encode(const uchar* pixels, qsizetype total)
{
    QByteArray result(total * 2, Qt::Uninitialized);
    uchar* const start = reinterpret_cast<uchar*>(result.data());
    uchar* o = start;
    qsizetype p = 0;
    while (p < total) {
        const uchar v = pixels[p];
        qsizetype run = 1;
        while (run < 63 && p + run < total && pixels[p + run] == v)
            ++run;
        if (run == 1 && (v & 0xC0) != 0x40) {
            *o++ = v;
        } else {
            *o++ = uchar(0x40 + run);
            *o++ = v;
        }
        p += run;
    }
    result.truncate(o - start);
    return result;
}

QImage decodeRLE8(int width, int height, QImage::Format format, const QByteArray& data)
{
    QImage image(width, height, format);
    if (image.isNull()) return QImage();
    const QRawRaster raster{image.bits(), qsizetype(width) * image.depth() / 8, height, image.bytesPerLine()};
    const uchar* src = reinterpret_cast<const uchar*>(data.constData());
    raster.decodeStream(
        [&](uchar* out, qsizetype total) { return QRLE8Codec::decode(src, data.size(), out, total); });
    return image;
}

QByteArray encodeRLE8(const QImage& image)
{
    ++QEncodeCounters::rle8;
    const QByteArray packed = QImageInfo::unpadded(image);
    return QRLE8Codec::encode(reinterpret_cast<const uchar*>(packed.constData()), packed.size());
}
