#include "QPNGDecoder.h"

#include "QImageInfo.h"
#include "QInflater.h"
#include "QPNGChunks.h"
#include "QPNGUnfilter.h"

#include <QImageReader>
#include <QtEndian>

#include <cstring>

namespace {

// DEFLATE can't make more than 1032 bytes of one; anything that claims more can't be decoded.
constexpr qsizetype MaxRatio = 1100;
constexpr qsizetype Slack = 1 << 16;
// Scratch memory above this is given back after each image.
constexpr qsizetype KeptScratch = 4 << 20;

struct Pass
{
    int x0, y0, dx, dy;
};
constexpr Pass Whole[1] = {{0, 0, 1, 1}};
constexpr Pass Adam7[7] = {{0, 0, 8, 8}, {4, 0, 8, 8}, {0, 4, 4, 8}, {2, 0, 4, 4},
                           {0, 2, 2, 4}, {1, 0, 2, 2}, {0, 1, 1, 2}};

int passSide(int size, int start, int step)
{
    return size > start ? (size - start + step - 1) / step : 0;
}

// Byte buffers that keep their room from one image to the next.
struct Scratch
{
    QByteArray stream;
    QByteArray rows;

    static uchar* reserve(QByteArray& buffer, qsizetype size)
    {
        // Grown afresh: what it held is of no use.
        if (buffer.size() < size) buffer = QByteArray(size, Qt::Uninitialized);
        return reinterpret_cast<uchar*>(buffer.data());
    }
    void trim()
    {
        if (stream.capacity() > KeptScratch) stream = QByteArray();
        if (rows.capacity() > KeptScratch) rows = QByteArray();
    }
};

} // namespace

void QPNGDecoder::layOut(const uchar* src, uchar* dst, int count, int channels, int x0, int step)
{
    switch (channels) {
    case 1:
        if (step == 1) {
            std::memcpy(dst + x0, src, size_t(count));
        } else {
            for (int i = 0; i < count; ++i)
                dst[x0 + i * step] = src[i];
        }
        break;
    case 3: {
        auto* out = reinterpret_cast<quint32*>(dst) + x0;
        for (int i = 0; i < count; ++i, src += 3)
            out[i * step] = 0xFF000000u | (quint32(src[0]) << 16) | (quint32(src[1]) << 8) | src[2];
        break;
    }
    default: {
        // The stored order is red, green, blue, alpha; QRgb is alpha, red, green, blue.
        auto* out = reinterpret_cast<quint32*>(dst) + x0;
        for (int i = 0; i < count; ++i, src += 4) {
            const quint32 v = qFromLittleEndian<quint32>(src);
            out[i * step] = (v & 0xFF00FF00u) | ((v >> 16) & 0xFFu) | ((v & 0xFFu) << 16);
        }
        break;
    }
    }
}

QPNGDecoder::Result QPNGDecoder::decode(const QByteArray& data, const QImageInfo& info, QByteArray* raw)
{
    if (info.rawSize() <= 0) return LeftToQt;
    // Rows take at most twice their stored bytes in the raw form (a 1-pixel indexed row: 1 + 1 against
    // 4), so no room is made for pixels that the data can't hold, whichever decoder would read it.
    if (info.rawSize() > 4 * (MaxRatio * data.size() + Slack)) return Undecodable;
    QByteArray out(info.rawSize(), Qt::Uninitialized);
    auto* pixels = reinterpret_cast<uchar*>(out.data());
    const qsizetype rowBytes = info.rowBytes();
    const qsizetype bytesPerLine = info.bytesPerLine();
    const Result result = decode(data, info, pixels, bytesPerLine);
    if (result != Decoded) return result;
    if (rowBytes < bytesPerLine)
        for (int y = 0; y < info.height; ++y)
            std::memset(pixels + y * bytesPerLine + rowBytes, 0, size_t(bytesPerLine - rowBytes));
    *raw = std::move(out);
    return Decoded;
}

QPNGDecoder::Result QPNGDecoder::decode(const QByteArray& data, const QImageInfo& info, uchar* pixels,
                                        qsizetype pitch)
{
    QPNGChunks chunks;
    if (!chunks.read(data)) return LeftToQt;
    const QImage::Format format = chunks.qtFormat();
    if (format == QImage::Format_Invalid || format != info.imageFormat()) return LeftToQt;
    // Qt would read the file and then find it of another size than the record's.
    if (chunks.width != info.width || chunks.height != info.height) return Undecodable;
    const int width = int(chunks.width);
    const int height = int(chunks.height);
    const int channels = chunks.channels();

    const Pass* passes = chunks.interlaced ? Adam7 : Whole;
    const int passCount = chunks.interlaced ? 7 : 1;
    qsizetype filteredSize = 0;
    for (int i = 0; i < passCount; ++i) {
        const int w = passSide(width, passes[i].x0, passes[i].dx);
        const int h = passSide(height, passes[i].y0, passes[i].dy);
        if (w > 0) filteredSize += (qsizetype(w) * channels + 1) * h;
    }
    // Not even the best compression makes these rows of these bytes.
    if (filteredSize > MaxRatio * chunks.streamSize + Slack) return Undecodable;
    // Qt refuses images above its allocation limit.
    const qint64 limit = QImageReader::allocationLimit();
    if (limit > 0 && info.rawSize() > limit * 1024 * 1024) return LeftToQt;

    thread_local Scratch scratch;
    const uchar* stream = chunks.stream(scratch.stream);
    uchar* rows = Scratch::reserve(scratch.rows, filteredSize);
    // A short stream, a wrong checksum or data past the rows are for Qt to judge: it forgives some.
    if (QInflater::zlib(stream, chunks.streamSize, rows, filteredSize) != QInflater::Inflated) {
        scratch.trim();
        return LeftToQt;
    }

    uchar* row = rows;
    bool good = true;
    for (int i = 0; i < passCount && good; ++i) {
        const Pass& pass = passes[i];
        const int w = passSide(width, pass.x0, pass.dx);
        const int h = passSide(height, pass.y0, pass.dy);
        if (w == 0) continue;
        const qsizetype stride = qsizetype(w) * channels;
        const uchar* prior = nullptr;
        for (int y = 0; y < h; ++y) {
            if (!QPNGUnfilter::row(row[0], row + 1, prior, stride, channels)) {
                good = false;
                break;
            }
            layOut(row + 1, pixels + qsizetype(pass.y0 + y * pass.dy) * pitch, w, channels, pass.x0, pass.dx);
            prior = row + 1;
            row += stride + 1;
        }
    }
    scratch.trim();
    // libpng stops at a filter type that PNG doesn't define.
    if (!good) return LeftToQt;

    // Qt takes an index past the end of the palette as 0.
    if (format == QImage::Format_Indexed8 && chunks.paletteSize < 256) {
        const uchar size = uchar(chunks.paletteSize);
        for (int y = 0; y < height; ++y) {
            uchar* line = pixels + y * pitch;
            for (int x = 0; x < width; ++x)
                line[x] = line[x] < size ? line[x] : 0;
        }
    }
    return Decoded;
}
