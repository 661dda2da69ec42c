#include "QBlockRows.h"

#include "QPNGRowDecoder.h"
#include "QRLE8Codec.h"
#include "QStreamCache.h"
#include "QStreamCacheFilter.h"

#include <cstring>

QBlockRows::QBlockRows(const QByteArray& data, uint form, const QImageInfo& image)
    : block(&data), filter(form), info(image)
{
    if (info.rawSize() <= 0 || (filter != QStreamCacheFilter::RawFilter &&
                                info.rawSize() > QStreamCache::plausibleRawSize(data.size()))) {
        undecodable = true;
        return;
    }
    switch (filter) {
    case QStreamCacheFilter::RLE8Filter:
        kind = RLE8;
        break;
    case QStreamCacheFilter::LZ5Filter:
        if (info.format != QImage::Format_Indexed8) {
            undecodable = true;
            return;
        }
        kind = LZ5;
        break;
    case QStreamCacheFilter::PNGFilter:
        png = std::make_unique<QPNGRowDecoder>();
        kind = png->open(data, info) ? PNG : Whole;
        if (kind == Whole) png.reset();
        break;
    default:
        break;
    }
}

QBlockRows::~QBlockRows() = default;
QBlockRows::QBlockRows(QBlockRows&&) noexcept = default;
QBlockRows& QBlockRows::operator=(QBlockRows&&) noexcept = default;

void QBlockRows::release()
{
    buffer = QByteArray();
    bytes = nullptr;
    png.reset();
}

void QBlockRows::decodeWhole()
{
    kind = Whole;
    png.reset();
    buffer = QStreamCache::decodeBlock(*block, filter, &info);
    if (buffer.size() != info.rawSize()) {
        undecodable = true;
        buffer = QByteArray();
        ready = 0;
        return;
    }
    bytes = reinterpret_cast<const uchar*>(buffer.constData());
    stride = info.bytesPerLine();
    ready = info.height;
}

// The stream has ended after written bytes: the rest of the image stays zero.
void QBlockRows::finishStream(qsizetype count)
{
    const qsizetype total = rowBytes() * info.height;
    std::memset(buffer.data() + count, 0, size_t(total - count));
    ready = info.height;
}

int QBlockRows::advance(int until)
{
    until = std::min(until, int(info.height));
    if (undecodable || ready >= until) return ready;
    if (kind == Whole) {
        decodeWhole();
        return ready;
    }
    const qsizetype line = rowBytes();
    const qsizetype total = line * info.height;
    if (buffer.isEmpty()) {
        buffer = QByteArray(total, Qt::Uninitialized);
        bytes = reinterpret_cast<const uchar*>(buffer.constData());
        stride = line;
        source = reinterpret_cast<const uchar*>(block->constData());
        lz5.src = source;
        lz5.end = source + block->size();
    }
    auto* out = reinterpret_cast<uchar*>(buffer.data());
    const qsizetype wanted = line * until;
    switch (kind) {
    case RLE8: {
        written = QRLE8Codec::decode(source, lz5.end, out, written, wanted, total);
        if (written < wanted)
            finishStream(written);
        else
            ready = int(written / line);
        break;
    }
    case LZ5:
        QLZ5Codec::decode(lz5, out, wanted, total);
        if (lz5.finished)
            finishStream(lz5.written);
        else
            ready = int(lz5.written / line);
        break;
    case PNG:
        ready = png->decode(out, line, until);
        // What this decoder finds broken is Qt's to judge.
        if (png->failed()) decodeWhole();
        break;
    case Whole:
        break;
    }
    return ready;
}
