#include "QGifWriter.h"

#include <QCoreApplication>
#include <QSaveFile>

#include <algorithm>
#include <cstring>

namespace {

constexpr int MaxCodes = 4096;
constexpr int MaxBits = 12;

void putByte(QByteArray& out, int value)
{
    out.append(char(value & 0xFF));
}

void putWord(QByteArray& out, int value)
{
    putByte(out, value);
    putByte(out, value >> 8);
}

// The largest index that the pixels use, so that a small table still covers every pixel.
int highestIndex(const QImage& image)
{
    int highest = 0;
    for (int y = 0; y < image.height() && highest < 255; ++y) {
        const uchar* line = image.constScanLine(y);
        highest = std::max<int>(highest, *std::max_element(line, line + image.width()));
    }
    return highest;
}

// The exponent of the table that holds count entries: 2 entries at least, 256 at most.
int tableBits(int count)
{
    int bits = 1;
    while ((1 << bits) < count)
        ++bits;
    return bits;
}

// A table written out at its power-of-two size, padded with black.
void putTable(QByteArray& out, const QList<QRgb>& table, int bits)
{
    const int size = 1 << bits;
    for (int i = 0; i < size; ++i) {
        const QRgb colour = i < table.size() ? table.at(i) : 0;
        putByte(out, qRed(colour));
        putByte(out, qGreen(colour));
        putByte(out, qBlue(colour));
    }
}

QString tr(const char* text)
{
    return QCoreApplication::translate("QGifWriter", text);
}

} // namespace

bool QGifWriter::isValid(QString* error) const
{
    const auto fail = [error](const QString& reason) {
        if (error) *error = reason;
        return false;
    };
    if (width == 0 || height == 0) return fail(tr("The picture has no size."));
    if (frames.isEmpty()) return fail(tr("The animation has no frame."));
    if (palette.size() > 256) return fail(tr("A colour table holds more than 256 colours."));
    for (int i = 0; i < frames.size(); ++i) {
        const QGifFrame& frame = frames.at(i);
        const QImage& image = frame.image;
        if (image.isNull() || image.format() != QImage::Format_Indexed8)
            return fail(tr("Frame %1 is not an indexed image.").arg(i + 1));
        if (frame.x + image.width() > width || frame.y + image.height() > height)
            return fail(tr("Frame %1 reaches beyond the picture.").arg(i + 1));
        if (frame.palette.size() > 256) return fail(tr("A colour table holds more than 256 colours."));
        if (frame.palette.isEmpty() && palette.isEmpty())
            return fail(tr("Frame %1 has no colour table.").arg(i + 1));
    }
    return true;
}

QByteArray QGifWriter::data()
{
    if (!isValid()) return QByteArray();
    QByteArray out;
    out.reserve(1024 + frames.size() * 1024);
    out.append("GIF89a", 6);
    putWord(out, width);
    putWord(out, height);
    globalBits = 0;
    if (!palette.isEmpty()) {
        // The global table must name every index of the frames that use it.
        int needed = int(palette.size());
        for (const QGifFrame& frame : frames)
            if (frame.palette.isEmpty()) needed = std::max(needed, highestIndex(frame.image) + 1);
        globalBits = tableBits(needed);
        // Global table, 8 bits of colour resolution, unsorted.
        putByte(out, 0xF0 | (globalBits - 1));
    } else {
        // No table; the size bits stay set as older writers left them, which readers ignore.
        putByte(out, 0x77);
    }
    putByte(out, 0); // background index
    putByte(out, 0); // square pixels
    if (globalBits) putTable(out, palette, globalBits);
    for (const QGifFrame& frame : frames)
        writeFrame(out, frame);
    putByte(out, 0x3B);
    return out;
}

bool QGifWriter::save(const QString& path, QString* error)
{
    if (!isValid(error)) return false;
    const QByteArray bytes = data();
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit()) {
        if (error) *error = file.errorString();
        return false;
    }
    return true;
}

void QGifWriter::writeFrame(QByteArray& out, const QGifFrame& frame)
{
    if (frame.loop) {
        out.append("\x21\xFF\x0B", 3);
        out.append("NETSCAPE2.0", 11);
        putByte(out, 3);
        putByte(out, 1);
        putWord(out, loopCount);
        putByte(out, 0);
    }
    // Graphic control: restore to background afterwards, index 0 transparent.
    out.append("\x21\xF9\x04\x09", 4);
    putWord(out, frame.delay);
    putByte(out, 0);
    putByte(out, 0);

    const QImage& image = frame.image;
    putByte(out, 0x2C);
    putWord(out, frame.x);
    putWord(out, frame.y);
    putWord(out, image.width());
    putWord(out, image.height());
    int bits = 0;
    if (!frame.palette.isEmpty()) {
        bits = tableBits(std::max(int(frame.palette.size()), highestIndex(image) + 1));
        putByte(out, 0x80 | (bits - 1));
        putTable(out, frame.palette, bits);
    } else {
        putByte(out, 0);
        bits = globalBits;
    }
    // The decoder needs room for the clear and end codes above the colours: 2 bits at least.
    const int minimumCodeSize = std::max(2, bits);
    putByte(out, minimumCodeSize);
    compress(out, image, minimumCodeSize);
    putByte(out, 0);
}

void QGifWriter::resetCodes()
{
    std::memset(codes, 0, sizeof(codes));
}

// LZW with a hashed table of (prefix, colour) pairs; a full table of 4096 codes is emptied with a
// clear code and compression starts over at the narrowest code width.
void QGifWriter::compress(QByteArray& out, const QImage& image, int minimumCodeSize)
{
    stream = &out;
    initBits = minimumCodeSize + 1;
    bits = initBits;
    maxCode = (1 << bits) - 1;
    clearCode = ushort(1 << minimumCodeSize);
    endCode = ushort(clearCode + 1);
    freeCode = ushort(clearCode + 2);
    first = true;
    accumulator = 0;
    accumulatedBits = 0;
    blockLength = 0;
    resetCodes();
    output(clearCode);

    const int width = image.width();
    for (int y = 0; y < image.height(); ++y) {
        const uchar* line = image.constScanLine(y);
        for (int x = 0; x < width; ++x) {
            const int c = line[x];
            if (first) {
                prefix = short(c);
                first = false;
                continue;
            }
            int h = c * 16 + prefix;
            if (h >= HashSize) h -= HashSize;
            const uint key = (uint(prefix) << 8) | uint(c);
            if (codes[h] != 0) {
                if (keys[h] == key) {
                    prefix = short(codes[h]);
                    continue;
                }
                const int step = h == 0 ? 1 : HashSize - h;
                bool found = false;
                for (;;) {
                    h -= step;
                    if (h < 0) h += HashSize;
                    if (codes[h] == 0) break;
                    if (keys[h] == key) {
                        found = true;
                        break;
                    }
                }
                if (found) {
                    prefix = short(codes[h]);
                    continue;
                }
            }
            output(prefix);
            if (freeCode < MaxCodes) {
                codes[h] = freeCode++;
                keys[h] = key;
            } else {
                resetCodes();
                freeCode = ushort(clearCode + 2);
                output(clearCode);
                bits = initBits;
                maxCode = (1 << bits) - 1;
            }
            prefix = short(c);
        }
    }
    if (!first) output(prefix);
    output(endCode);
    if (accumulatedBits > 0) {
        block[++blockLength] = uchar(accumulator & 0xFF);
        accumulator = 0;
        accumulatedBits = 0;
    }
    if (blockLength > 0) flushBlock();
    stream = nullptr;
}

void QGifWriter::output(int code)
{
    accumulator |= code << accumulatedBits;
    accumulatedBits += bits;
    while (accumulatedBits >= 8) {
        block[++blockLength] = uchar(accumulator & 0xFF);
        if (blockLength == 255) flushBlock();
        accumulator >>= 8;
        accumulatedBits -= 8;
    }
    if (freeCode > maxCode) {
        ++bits;
        maxCode = bits == MaxBits ? MaxCodes : (1 << bits) - 1;
    }
}

void QGifWriter::flushBlock()
{
    block[0] = uchar(blockLength);
    stream->append(reinterpret_cast<const char*>(block), blockLength + 1);
    blockLength = 0;
}
