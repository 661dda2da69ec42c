#include "QPNGRowDecoder.h"

#include "QImageInfo.h"

#include <QtEndian>

#include <cstdlib>
#include <cstring>

#include <zlib.h>

namespace {

constexpr uchar Signature[8] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};

inline quint32 be32(const uchar* p)
{
    return qFromBigEndian<quint32>(p);
}

inline bool isType(const uchar* chunk, const char* type)
{
    return std::memcmp(chunk + 4, type, 4) == 0;
}

inline uchar paeth(int a, int b, int c)
{
    const int p = a + b - c;
    const int pa = std::abs(p - a);
    const int pb = std::abs(p - b);
    const int pc = std::abs(p - c);
    return uchar(pa <= pb && pa <= pc ? a : (pb <= pc ? b : c));
}

} // namespace

struct QPNGRowDecoder::Stream
{
    z_stream z{};
    bool started = false;
    ~Stream()
    {
        if (started) inflateEnd(&z);
    }
};

QPNGRowDecoder::QPNGRowDecoder() : stream(std::make_unique<Stream>()) {}

QPNGRowDecoder::~QPNGRowDecoder() = default;

bool QPNGRowDecoder::open(const QByteArray& data, const QImageInfo& info)
{
    const auto* p = reinterpret_cast<const uchar*>(data.constData());
    end = p + data.size();
    if (data.size() < 8 + 25 || std::memcmp(p, Signature, 8) != 0) return false;
    p += 8;
    if (be32(p) != 13 || !isType(p, "IHDR")) return false;
    const uchar* header = p + 8;
    width = int(be32(header));
    height = int(be32(header + 4));
    const int depth = header[8];
    const int colourType = header[9];
    if (depth != 8 || header[10] != 0 || header[11] != 0 || header[12] != 0) return false;
    if (width != info.width || height != info.height || width == 0 || height == 0) return false;
    QImage::Format format = QImage::Format_Invalid;
    switch (colourType) {
    case 3:
        channels = 1;
        format = QImage::Format_Indexed8;
        break;
    case 2:
        channels = 3;
        format = QImage::Format_RGB32;
        break;
    case 6:
        channels = 4;
        format = QImage::Format_ARGB32;
        break;
    default:
        return false;
    }
    if (info.imageFormat() != format) return false;
    p += 12 + 13;
    // Up to the first IDAT: a palette file needs its PLTE, an RGB file must have no tRNS (Qt would
    // then add alpha).
    bool palette = false;
    while (end - p >= 12) {
        const quint32 length = be32(p);
        if (length > quint32(end - p - 12)) return false;
        if (isType(p, "IDAT")) break;
        if (isType(p, "PLTE")) palette = true;
        if (isType(p, "tRNS") && colourType == 2) return false;
        if (isType(p, "IEND")) return false;
        p += 12 + length;
    }
    if (end - p < 12 || (colourType == 3 && !palette)) return false;
    chunk = p;
    // The zlib header is checked and skipped, and the stream inflated raw: its checksum would cost a
    // fifth of the decoding and says nothing about which pixels the rows hold.
    if (!nextData() || stream->z.avail_in < 2 || (stream->z.next_in[0] & 0x0F) != 8 ||
        (stream->z.next_in[1] & 0x20) != 0 || ((stream->z.next_in[0] << 8) | stream->z.next_in[1]) % 31 != 0)
        return false;
    stream->z.next_in += 2;
    stream->z.avail_in -= 2;
    if (inflateInit2(&stream->z, -15) != Z_OK) return false;
    stream->started = true;
    const qsizetype stride = qsizetype(width) * channels;
    current = QByteArray(stride + 1, Qt::Uninitialized);
    previous = QByteArray(stride, '\0');
    return true;
}

// Hands the next IDAT chunk to the inflater; false when there is none.
bool QPNGRowDecoder::nextData()
{
    if (!chunk || end - chunk < 12 || !isType(chunk, "IDAT")) return false;
    const quint32 length = be32(chunk);
    if (length > quint32(end - chunk - 12)) return false;
    stream->z.next_in = const_cast<Bytef*>(chunk + 8);
    stream->z.avail_in = uInt(length);
    chunk += 12 + length;
    return true;
}

bool QPNGRowDecoder::unfilter()
{
    const qsizetype stride = previous.size();
    auto* row = reinterpret_cast<uchar*>(current.data()) + 1;
    const auto* up = reinterpret_cast<const uchar*>(previous.constData());
    const int bpp = channels;
    switch (uchar(current.at(0))) {
    case 0:
        break;
    case 1:
        for (qsizetype x = bpp; x < stride; ++x)
            row[x] = uchar(row[x] + row[x - bpp]);
        break;
    case 2:
        for (qsizetype x = 0; x < stride; ++x)
            row[x] = uchar(row[x] + up[x]);
        break;
    case 3:
        for (qsizetype x = 0; x < stride; ++x)
            row[x] = uchar(row[x] + ((x >= bpp ? row[x - bpp] : 0) + up[x]) / 2);
        break;
    case 4:
        for (qsizetype x = 0; x < stride; ++x)
            row[x] = uchar(row[x] + (x >= bpp ? paeth(row[x - bpp], up[x], up[x - bpp]) : up[x]));
        break;
    default:
        return false;
    }
    std::memcpy(previous.data(), row, size_t(stride));
    return true;
}

int QPNGRowDecoder::decode(uchar* out, qsizetype rowBytes, int until)
{
    z_stream& z = stream->z;
    until = std::min(until, height);
    while (!broken && done < until) {
        z.next_out = reinterpret_cast<Bytef*>(current.data());
        z.avail_out = uInt(current.size());
        while (z.avail_out > 0) {
            if (z.avail_in == 0 && !nextData()) {
                broken = true;
                break;
            }
            const int result = inflate(&z, Z_NO_FLUSH);
            if (result == Z_STREAM_END && z.avail_out > 0) broken = true;
            if (result != Z_OK && result != Z_STREAM_END && result != Z_BUF_ERROR) broken = true;
            if (broken || result == Z_STREAM_END) break;
        }
        if (broken || !unfilter()) {
            broken = true;
            break;
        }
        const auto* pixels = reinterpret_cast<const uchar*>(previous.constData());
        uchar* target = out + qsizetype(done) * rowBytes;
        if (channels == 1) {
            std::memcpy(target, pixels, size_t(width));
        } else {
            // Qt's raw form of RGB32 and ARGB32 is blue, green, red, alpha in memory.
            for (int x = 0; x < width; ++x, pixels += channels, target += 4) {
                target[0] = pixels[2];
                target[1] = pixels[1];
                target[2] = pixels[0];
                target[3] = channels == 4 ? pixels[3] : 0xFF;
            }
        }
        ++done;
    }
    return done;
}
