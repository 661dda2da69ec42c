#include "QPNGRowDecoder.h"

#include "QImageInfo.h"
#include "QPNGDecoder.h"
#include "QPNGUnfilter.h"

#include <zlib.h>

namespace {

// Rows are inflated one by one, by zlib, while the requests stay within the first 1/WholeFraction of
// the image; a request past it has the whole image inflated at once, by libdeflate, which is several
// times quicker per byte. Comparisons of sprites mostly end in the first rows, and those that don't
// mostly go to the end; on the test data an eighth gave the quickest opens.
constexpr int WholeFraction = 8;

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
    if (!chunks.read(data) || chunks.interlaced || chunks.qtFormat() != info.imageFormat() ||
        chunks.width != info.width || chunks.height != info.height)
        return false;
    source = &data;
    record = info;
    width = int(chunks.width);
    height = int(chunks.height);
    channels = chunks.channels();
    // The zlib header is checked and skipped, and the stream inflated raw: the rows read this way are
    // never the last ones (see decode()), and the whole decoder checks the stream's end and checksum.
    uchar method = 0;
    uchar flags = 0;
    if (!takeByte(&method) || !takeByte(&flags)) return false;
    if ((method & 0x0F) != 8 || (method >> 4) > 7 || (flags & 0x20) != 0 || ((method << 8) | flags) % 31 != 0)
        return false;
    if (inflateInit2(&stream->z, -15) != Z_OK) return false;
    stream->started = true;
    const qsizetype stride = qsizetype(width) * channels;
    current = QByteArray(stride + 1, Qt::Uninitialized);
    previous = QByteArray(stride + 1, Qt::Uninitialized);
    return true;
}

// Hands the next IDAT chunk to the inflater; false when there is none.
bool QPNGRowDecoder::nextData()
{
    if (nextSpan >= chunks.pixels.size()) return false;
    const QPNGChunks::Span& span = chunks.pixels.at(nextSpan++);
    stream->z.next_in = const_cast<Bytef*>(span.data);
    stream->z.avail_in = uInt(span.size);
    return true;
}

// The next byte of the stream, wherever the chunks cut it.
bool QPNGRowDecoder::takeByte(uchar* byte)
{
    while (stream->z.avail_in == 0)
        if (!nextData()) return false;
    *byte = *stream->z.next_in++;
    --stream->z.avail_in;
    return true;
}

bool QPNGRowDecoder::inflateRow()
{
    z_stream& z = stream->z;
    z.next_out = reinterpret_cast<Bytef*>(current.data());
    z.avail_out = uInt(current.size());
    while (z.avail_out > 0) {
        if (z.avail_in == 0 && !nextData()) return false;
        const int result = inflate(&z, Z_NO_FLUSH);
        if (result == Z_STREAM_END) break;
        if (result != Z_OK && result != Z_BUF_ERROR) return false;
    }
    return z.avail_out == 0;
}

int QPNGRowDecoder::decode(uchar* out, qsizetype rowBytes, int until)
{
    until = std::min(until, height);
    if (!broken && done < until && qint64(until) * WholeFraction >= height) {
        // Far enough down that inflating the rest by zlib would cost more than the whole by libdeflate.
        broken = QPNGDecoder::decode(*source, record, out, rowBytes) != QPNGDecoder::Decoded;
        done = broken ? done : height;
        return done;
    }
    const qsizetype stride = current.size() - 1;
    const uchar palette = chunks.paletteSize < 256 ? uchar(chunks.paletteSize) : 0;
    while (!broken && done < until) {
        auto* row = reinterpret_cast<uchar*>(current.data());
        const uchar* prior = done > 0 ? reinterpret_cast<const uchar*>(previous.constData()) + 1 : nullptr;
        if (!inflateRow() || !QPNGUnfilter::row(row[0], row + 1, prior, stride, channels)) {
            broken = true;
            break;
        }
        uchar* target = out + qsizetype(done) * rowBytes;
        QPNGDecoder::layOut(row + 1, target, width, channels);
        // Qt takes an index past the end of the palette as 0.
        if (palette)
            for (int x = 0; x < width; ++x)
                target[x] = target[x] < palette ? target[x] : 0;
        current.swap(previous);
        ++done;
    }
    return done;
}
