// Feeds arbitrary bytes to every sprite image decoder. The first four bytes choose the decoder, the
// image's size and form; the rest is the stream. Sizes are kept small so that each run is quick. Two
// more choices take the bytes as pixels instead and check that every encoder's output decodes back.

#include "QImageInfo.h"
#include "QLZ5Codec.h"
#include "QPCXCodec.h"
#include "QPNGCodec.h"
#include "QRLE5Codec.h"
#include "QRLE8Codec.h"
#include "QStreamCacheFilter.h"

#include <QBuffer>
#include <QByteArray>
#include <QImage>

#include <cstdint>
#include <cstring>
#include <memory>

namespace {

void checkSize(const QByteArray& raw, const QImageInfo& info)
{
    if (!raw.isEmpty() && raw.size() != info.rawSize()) __builtin_trap();
}

// The plain stream decoders, into a buffer of exactly the image's size, so that the sanitizer sees
// any write past it.
void decodeStreams(int codec, const uchar* src, size_t size, int width, int height)
{
    const qsizetype total = qsizetype(width) * height;
    std::unique_ptr<uchar[]> out(new uchar[size_t(total)]);
    qsizetype written = 0;
    if (codec == 0)
        written = QRLE8Codec::decode(src, qsizetype(size), out.get(), total);
    else if (codec == 1)
        written = QRLE5Codec::decode(src, qsizetype(size), out.get(), total);
    else
        written = QLZ5Codec::decode(src, qsizetype(size), out.get(), total);
    if (written < 0 || written > total) __builtin_trap();
}

// Pixels made from the input, repeated to fill the image, through an encoder and back.
void roundTrip(int which, const uchar* src, size_t size, int width, int height)
{
    if (size == 0) return;
    QImage image(width, height, QImage::Format_Indexed8);
    image.setColorCount(256);
    image.fill(0);
    size_t at = 0;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x, at = (at + 1) % size)
            image.scanLine(y)[x] = src[at];
    const QImageInfo info = QImageInfo::of(image);
    QByteArray block;
    uint filter;
    uchar mask = 0xFF;
    if (which == 0) {
        block = encodeLZ5(image);
        filter = QStreamCacheFilter::LZ5Filter;
        mask = 0x1F;
    } else if (which == 1) {
        block = encodeRLE8(image);
        filter = QStreamCacheFilter::RLE8Filter;
    } else {
        QBuffer buffer(&block);
        buffer.open(QIODevice::WriteOnly);
        encodePCX(image, &buffer);
        filter = QStreamCacheFilter::PCXFilter;
    }
    const QByteArray raw = QStreamCacheFilter::at(filter)->decode(block, &info);
    if (raw.size() != info.rawSize()) __builtin_trap();
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            if (uchar(raw[y * info.bytesPerLine() + x]) != (image.scanLine(y)[x] & mask)) __builtin_trap();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size < 4) return 0;
    const int codec = data[0] % 10;
    const int width = 1 + ((data[1] | ((data[2] & 1) << 8)) % 300);
    const int height = 1 + data[3] % 200;
    static const QImage::Format formats[] = {QImage::Format_Indexed8, QImage::Format_RGB32,
                                             QImage::Format_ARGB32, QImage::Format_Indexed8};
    QImageInfo info;
    info.width = quint16(width);
    info.height = quint16(height);
    info.format = formats[(data[2] >> 1) & 3];
    const uchar* stream = data + 4;
    const size_t length = size - 4;
    // Raw data keeps the sanitizer's view of the input's end: no copy with spare room behind it.
    const QByteArray payload =
        QByteArray::fromRawData(reinterpret_cast<const char*>(stream), qsizetype(length));

    switch (codec) {
    case 0:
        decodeRLE8(width, height, info.imageFormat(), payload);
        checkSize(QStreamCacheFilter::at(QStreamCacheFilter::RLE8Filter)->decode(payload, &info), info);
        break;
    case 1:
        decodeRLE5(width, height, payload);
        info.format = QImage::Format_Indexed8;
        checkSize(QStreamCacheFilter::at(QStreamCacheFilter::RLE5Filter)->decode(payload, &info), info);
        break;
    case 2:
        decodeLZ5(width, height, payload);
        info.format = QImage::Format_Indexed8;
        checkSize(QStreamCacheFilter::at(QStreamCacheFilter::LZ5Filter)->decode(payload, &info), info);
        break;
    case 3:
    case 4: {
        // The header's size fields are cut down to nine bits so that no run allocates much.
        QByteArray pcx(reinterpret_cast<const char*>(stream), qsizetype(length));
        if (pcx.size() >= 12)
            for (int at = 4; at < 12; at += 2)
                pcx[at + 1] = char(pcx[at + 1] & 0x01);
        const QImage image = decodePCX(pcx);
        QPCXCodec::Header header;
        if (QPCXCodec::readHeader(pcx, header)) {
            info.width = quint16(header.width);
            info.height = quint16(header.height);
            info.format = header.format;
            checkSize(QStreamCacheFilter::at(QStreamCacheFilter::PCXFilter)->decode(pcx, &info), info);
            if (image.isNull() && header.width < 600) __builtin_trap();
        }
        break;
    }
    case 5:
        checkSize(QStreamCacheFilter::at(QStreamCacheFilter::PNGFilter)->decode(payload, &info), info);
        break;
    case 8:
    case 9:
        roundTrip((codec - 8) * 2 + (data[2] >> 7), stream, length, 1 + width % 97, 1 + height % 61);
        break;
    default:
        decodeStreams(codec - 6 + (data[2] >> 7), stream, length, width, height);
        break;
    }
    return 0;
}
