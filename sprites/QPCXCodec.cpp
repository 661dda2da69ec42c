#include "QPCXCodec.h"

#include "QEncodeCounters.h"

#include <QIODevice>

#include <algorithm>
#include <cstring>
#include <vector>

namespace {

constexpr int HeaderSize = 128;
constexpr int TableSize = 768;

inline int u16(const uchar* p)
{
    return p[0] | (p[1] << 8);
}

inline void put16(uchar* p, int value)
{
    p[0] = uchar(value & 0xFF);
    p[1] = uchar((value >> 8) & 0xFF);
}

// Reads the run-length bytes of the pixel data. A run may go on past the end of a plane's line, and
// what is left of it is kept for the next one.
struct RunReader
{
    const uchar* s;
    const uchar* end;
    uchar value = 0;
    qsizetype pending = 0;

    // Writes up to n bytes, or drops them when dst is null; answers how many there were.
    qsizetype take(uchar* dst, qsizetype n)
    {
        qsizetype done = std::min(pending, n);
        if (done > 0) {
            if (dst) std::memset(dst, value, size_t(done));
            pending -= done;
        }
        while (done < n && s < end) {
            const uchar b = *s++;
            if (b < 192) {
                if (dst) dst[done] = b;
                ++done;
                continue;
            }
            if (s == end) break;
            value = *s++;
            const qsizetype count = b & 0x3F;
            const qsizetype k = std::min(count, n - done);
            if (dst) std::memset(dst + done, value, size_t(k));
            done += k;
            pending = count - k;
        }
        return done;
    }
};

void swapRedBlue(uchar* bits, qsizetype bytesPerLine, int width, int height)
{
    for (int y = 0; y < height; ++y) {
        uchar* p = bits + y * bytesPerLine;
        for (int x = 0; x < width; ++x, p += 4)
            std::swap(p[0], p[2]);
    }
}

} // namespace

bool QPCXCodec::readHeader(const QByteArray& data, Header& header)
{
    if (data.size() < HeaderSize) return false;
    const uchar* h = reinterpret_cast<const uchar*>(data.constData());
    if (h[0] != 10 || h[1] != 5) return false;
    header.planes = h[65];
    header.depth = (h[3] * header.planes) & 0xFF;
    switch (header.depth) {
    case 5:
    case 8:
        header.format = QImage::Format_Indexed8;
        break;
    case 24:
        header.format = QImage::Format_RGB32;
        break;
    case 32:
        header.format = QImage::Format_ARGB32;
        break;
    default:
        return false;
    }
    header.width = u16(h + 8) - u16(h + 4) + 1;
    header.height = u16(h + 10) - u16(h + 6) + 1;
    header.bytesPerLine = u16(h + 66);
    return header.width > 0 && header.height > 0;
}

bool QPCXCodec::decodePixels(const QByteArray& data, const Header& header, uchar* bits,
                             qsizetype bytesPerLine, qsizetype& tableAt)
{
    const bool indexed = header.format == QImage::Format_Indexed8;
    const qsizetype rowBytes = qsizetype(header.width) * (indexed ? 1 : 4);
    std::memset(bits, 0, size_t(bytesPerLine * header.height));
    if (header.format == QImage::Format_RGB32)
        for (int y = 0; y < header.height; ++y) {
            uchar* row = bits + y * bytesPerLine;
            for (qsizetype x = 3; x < rowBytes; x += 4)
                row[x] = 0xFF;
        }

    const uchar* const start = reinterpret_cast<const uchar*>(data.constData());
    RunReader reader{start + HeaderSize, start + data.size()};
    const qsizetype lineBytes = header.bytesPerLine;
    const qsizetype step = header.planes == 3 ? 4 : header.planes;
    std::vector<uchar> line(header.planes == 1 ? 0 : size_t(lineBytes));
    bool finished = true;
    for (int y = 0; y < header.height && finished; ++y) {
        uchar* row = bits + y * bytesPerLine;
        for (int plane = 0; plane < header.planes; ++plane) {
            if (header.planes == 1) {
                const qsizetype inRow = std::min(lineBytes, rowBytes);
                if (reader.take(row, inRow) < inRow ||
                    reader.take(nullptr, lineBytes - inRow) < lineBytes - inRow) {
                    finished = false;
                    break;
                }
                continue;
            }
            const qsizetype got = reader.take(line.data(), lineBytes);
            const qsizetype n = std::min(got, qsizetype(header.width));
            for (qsizetype x = 0, at = plane; x < n && at < rowBytes; ++x, at += step)
                row[at] = line[size_t(x)];
            if (got < lineBytes) {
                finished = false;
                break;
            }
        }
    }
    if (!indexed) swapRedBlue(bits, bytesPerLine, header.width, header.height);

    tableAt = -1;
    if (header.depth == 8 && reader.s < reader.end) {
        qsizetype at;
        uchar marker;
        if (finished) {
            at = std::max(qsizetype(0), data.size() - TableSize);
            marker = 12;
        } else {
            marker = *reader.s++;
            at = reader.s - start;
        }
        if (marker == 12 && at < data.size()) tableAt = at;
    }
    return finished;
}

QImage decodePCX(const QByteArray& data)
{
    QPCXCodec::Header header;
    if (!QPCXCodec::readHeader(data, header)) return QImage();
    QImage image(header.width, header.height, header.format);
    if (image.isNull()) return QImage();
    qsizetype tableAt = -1;
    QPCXCodec::decodePixels(data, header, image.bits(), image.bytesPerLine(), tableAt);
    if (tableAt >= 0) {
        // Bytes missing at the end of the data read as zeros.
        uchar rgb[TableSize] = {};
        std::memcpy(rgb, data.constData() + tableAt,
                    size_t(std::min(qsizetype(TableSize), data.size() - tableAt)));
        QList<QRgb> table(256);
        for (int i = 0; i < 256; ++i)
            table[i] = qRgb(rgb[i * 3], rgb[i * 3 + 1], rgb[i * 3 + 2]);
        image.setColorTable(table);
    }
    return image;
}

bool encodePCX(QImage image, QIODevice* device)
{
    ++QEncodeCounters::pcx;
    if (image.isNull() || !device || image.width() > 65536 || image.height() > 65536) return false;
    if (image.format() != QImage::Format_Indexed8 && image.format() != QImage::Format_RGB32 &&
        image.format() != QImage::Format_ARGB32)
        image = image.convertToFormat(QImage::Format_ARGB32);
    const int width = image.width();
    const int height = image.height();
    const int planes = image.depth() / 8;

    QByteArray out(HeaderSize + qsizetype(width) * 2 * planes * height + 1 + TableSize, '\0');
    uchar* const begin = reinterpret_cast<uchar*>(out.data());
    begin[0] = 10;
    begin[1] = 5;
    begin[2] = 1;
    begin[3] = 8;
    put16(begin + 8, width - 1);
    put16(begin + 10, height - 1);
    begin[65] = uchar(planes);
    put16(begin + 66, width);
    put16(begin + 68, 1);

    if (planes > 1) swapRedBlue(image.bits(), image.bytesPerLine(), width, height);
    const int step = planes == 1 ? 1 : 4;
    uchar* o = begin + HeaderSize;
    for (int y = 0; y < height; ++y) {
        const uchar* row = image.constScanLine(y);
        for (int plane = 0; plane < planes; ++plane) {
            const uchar* p = row + plane;
            for (int x = 0; x < width;) {
                const uchar v = p[x * step];
                int run = 1;
                while (run < 63 && x + run < width && p[(x + run) * step] == v)
                    ++run;
                if (run == 1 && v < 192) {
                    *o++ = v;
                } else {
                    *o++ = uchar(192 + run);
                    *o++ = v;
                }
                x += run;
            }
        }
    }
    if (planes == 1) {
        *o++ = 12;
        const QList<QRgb> table = image.colorTable();
        for (int i = 0; i < 256; ++i) {
            const QRgb c = i < table.size() ? table[i] : 0;
            *o++ = uchar(qRed(c));
            *o++ = uchar(qGreen(c));
            *o++ = uchar(qBlue(c));
        }
    }
    out.truncate(o - begin);
    return device->write(out) == out.size();
}
