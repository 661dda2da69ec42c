#include "QRLE5Codec.h"

#include "QRawRaster.h"

qsizetype QRLE5Codec::decode(const uchar* src, qsizetype size, uchar* out, qsizetype total)
{
    const uchar* const end = src + size;
    uchar* o = out;
    uchar* const oend = out + total;
    while (end - src >= 2 && o < oend) {
        const qsizetype run = qsizetype(src[0]) + 1;
        const uchar len = src[1];
        src += 2;
        uchar colour = 0;
        if (len & 0x80) {
            if (src == end) break;
            colour = *src++ & 0x1F;
        }
        const qsizetype k = std::min(run, qsizetype(oend - o));
        std::memset(o, colour, size_t(k));
        o += k;
        const qsizetype n = std::min(qsizetype(len & 0x1F), qsizetype(end - src));
        const uchar* const stop = src + n;
        // Each byte writes at most eight pixels: with room for eight, write eight and step by the
        // count; the surplus is overwritten by what follows or cleared when the stream ends.
        while (src < stop && oend - o >= 8) {
            const uchar d = *src++;
            std::memset(o, d & 0x1F, 8);
            o += (d >> 5) + 1;
        }
        while (src < stop) {
            const uchar d = *src++;
            const qsizetype m = std::min(qsizetype((d >> 5) + 1), qsizetype(oend - o));
            std::memset(o, d & 0x1F, size_t(m));
            o += m;
        }
        if (n < (len & 0x1F)) break;
    }
    return o - out;
}

QImage decodeRLE5(int width, int height, const QByteArray& data)
{
    QImage image(width, height, QImage::Format_Indexed8);
    if (image.isNull()) return QImage();
    const QRawRaster raster{image.bits(), width, height, image.bytesPerLine()};
    const uchar* src = reinterpret_cast<const uchar*>(data.constData());
    raster.decodeStream(
        [&](uchar* out, qsizetype total) { return QRLE5Codec::decode(src, data.size(), out, total); });
    return image;
}
