// The PNG decoders of sprite blocks (QPNGDecoder whole, QPNGRowDecoder row by row, the cache filter
// in front of both) against Qt's reader, which decides what a PNG block holds: every file, well made or
// broken, must give the pixels that Qt gives for it, or nothing where Qt gives nothing.

#include "QImageInfo.h"
#include "QPNGCodec.h"
#include "QPNGDecoder.h"
#include "QPNGRowDecoder.h"
#include "QPNGUnfilter.h"
#include "QStreamCacheFilter.h"
#include "TestData.h"

#include <QFile>
#include <QRandomGenerator>
#include <QScopeGuard>
#include <QTest>
#include <QtEndian>

#include <zlib.h>

#include <cstdlib>

Q_DECLARE_METATYPE(QPNGDecoder::Result)
Q_DECLARE_METATYPE(QImageInfo)

namespace {

constexpr int Cycle = -1; // a filter type per row: None, Sub, Up, Average, Paeth, None, ...

int channelsOf(int colourType)
{
    return colourType == 2 ? 3 : colourType == 6 ? 4 : 1;
}

uchar paeth(int a, int b, int c)
{
    const int p = a + b - c;
    const int pa = std::abs(p - a), pb = std::abs(p - b), pc = std::abs(p - c);
    return uchar(pa <= pb && pa <= pc ? a : pb <= pc ? b : c);
}

// The predictor of filter type for byte x, written plainly from the PNG format's definition.
int predictor(int type, const uchar* row, const uchar* prior, int x, int bpp)
{
    const int a = x >= bpp ? row[x - bpp] : 0;
    const int b = prior ? prior[x] : 0;
    const int c = prior && x >= bpp ? prior[x - bpp] : 0;
    switch (type) {
    case 1:
        return a;
    case 2:
        return b;
    case 3:
        return (a + b) / 2;
    case 4:
        return paeth(a, b, c);
    default:
        return 0;
    }
}

QByteArray chunk(const char* type, const QByteArray& body)
{
    QByteArray out(4, '\0');
    qToBigEndian<quint32>(quint32(body.size()), out.data());
    const QByteArray named = QByteArray(type, 4) + body;
    out += named;
    QByteArray crc(4, '\0');
    qToBigEndian<quint32>(
        quint32(crc32(0, reinterpret_cast<const Bytef*>(named.constData()), uInt(named.size()))), crc.data());
    return out + crc;
}

QByteArray zlibOf(const QByteArray& bytes)
{
    uLongf size = compressBound(uLong(bytes.size()));
    QByteArray out(qsizetype(size), '\0');
    compress2(reinterpret_cast<Bytef*>(out.data()), &size, reinterpret_cast<const Bytef*>(bytes.constData()),
              uLong(bytes.size()), 6);
    out.resize(qsizetype(size));
    return out;
}

// A PNG file written by hand, so that every filter type, interlacing and the odd corners of the
// format can be chosen; the pixels are rows of width * channels bytes.
struct Png
{
    int width = 13;
    int height = 7;
    int colourType = 3;
    bool interlaced = false;
    int filter = Cycle;
    int badFilterRow = -1; // this row's filter byte becomes 5
    int paletteSize = 256;
    bool transparency = false;
    int parts = 1;     // IDAT chunks
    int extraRows = 0; // filtered bytes past the image (negative: missing at the end)
    QByteArray pixels;

    int channels() const { return channelsOf(colourType); }

    QByteArray filtered() const
    {
        static const int x0[7] = {0, 4, 0, 2, 0, 1, 0}, y0[7] = {0, 0, 4, 0, 2, 0, 1};
        static const int dx[7] = {8, 8, 4, 4, 2, 2, 1}, dy[7] = {8, 8, 8, 4, 4, 2, 2};
        const int bpp = channels();
        QByteArray out;
        int rowNumber = 0;
        for (int pass = 0; pass < (interlaced ? 7 : 1); ++pass) {
            const int px = interlaced ? x0[pass] : 0, py = interlaced ? y0[pass] : 0;
            const int sx = interlaced ? dx[pass] : 1, sy = interlaced ? dy[pass] : 1;
            const int w = width > px ? (width - px + sx - 1) / sx : 0;
            const int h = height > py ? (height - py + sy - 1) / sy : 0;
            if (w == 0) continue;
            QByteArray prior;
            for (int y = 0; y < h; ++y, ++rowNumber) {
                QByteArray row;
                for (int x = 0; x < w; ++x)
                    row += pixels.mid((qsizetype(py + y * sy) * width + px + x * sx) * bpp, bpp);
                const int type = filter == Cycle ? rowNumber % 5 : filter;
                const auto* r = reinterpret_cast<const uchar*>(row.constData());
                const auto* p = y > 0 ? reinterpret_cast<const uchar*>(prior.constData()) : nullptr;
                out += char(rowNumber == badFilterRow ? 5 : type);
                for (int x = 0; x < row.size(); ++x)
                    out += char(r[x] - predictor(type, r, p, x, bpp));
                prior = row;
            }
        }
        if (extraRows > 0) out += QByteArray(extraRows * (width * bpp + 1), '\0');
        if (extraRows < 0) out.chop(-extraRows * (width * bpp + 1));
        return out;
    }

    QByteArray header() const
    {
        QByteArray ihdr(13, '\0');
        qToBigEndian<quint32>(quint32(width), ihdr.data());
        qToBigEndian<quint32>(quint32(height), ihdr.data() + 4);
        ihdr[8] = 8;
        ihdr[9] = char(colourType);
        ihdr[12] = char(interlaced ? 1 : 0);
        return QByteArray("\x89PNG\r\n\x1a\n", 8) + chunk("IHDR", ihdr);
    }

    QByteArray beforePixels() const
    {
        QByteArray out;
        if (colourType == 3) {
            QByteArray plte;
            for (int i = 0; i < paletteSize; ++i)
                plte += char(i) + QByteArray(1, char(255 - i)) + char(i * 7);
            out += chunk("PLTE", plte);
        }
        if (transparency) out += chunk("tRNS", colourType == 3 ? QByteArray(4, '\x80') : QByteArray(6, '\0'));
        return out;
    }

    QByteArray idat(const QByteArray& stream) const
    {
        QByteArray out;
        const qsizetype step = (stream.size() + parts - 1) / parts;
        for (int i = 0; i < parts; ++i)
            out += chunk("IDAT", stream.mid(i * step, step));
        return out;
    }

    QByteArray file() const
    {
        return header() + beforePixels() + idat(zlibOf(filtered())) + chunk("IEND", QByteArray());
    }

    QImageInfo info() const
    {
        QImageInfo info;
        info.width = quint16(width);
        info.height = quint16(height);
        info.format = colourType == 3   ? QImage::Format_Indexed8
                      : colourType == 2 ? QImage::Format_RGB32
                                        : QImage::Format_ARGB32;
        return info;
    }
};

// Pixels with smooth runs and sharp steps, so that every predictor meets carries and wraps.
QByteArray pixelsFor(int width, int height, int channels, quint32 seed, int values = 256)
{
    QRandomGenerator rng(seed);
    QByteArray out(qsizetype(width) * height * channels, '\0');
    for (qsizetype i = 0; i < out.size(); ++i) {
        const int x = int(i / channels % width), y = int(i / channels / width);
        const int smooth = (x * 9 + y * 5 + int(i % channels) * 60) % values;
        out[i] = char(rng.bounded(4) == 0 ? int(rng.bounded(values)) : smooth);
    }
    return out;
}

Png pngOf(int colourType, int width, int height, quint32 seed)
{
    Png png;
    png.colourType = colourType;
    png.width = width;
    png.height = height;
    png.pixels = pixelsFor(width, height, png.channels(), seed);
    return png;
}

// What Qt's reader makes of the block in the record's raw form: the reference of every decoder here.
QByteArray qtRaw(const QByteArray& data, const QImageInfo& info)
{
    QImage image = decodePNG(data);
    if (image.isNull() || image.width() != info.width || image.height() != info.height) return QByteArray();
    if (image.format() != info.imageFormat()) image = image.convertToFormat(info.imageFormat());
    return QImageInfo::raw(image);
}

QByteArray filterDecode(const QByteArray& data, const QImageInfo& info)
{
    return QStreamCacheFilter::at(QStreamCacheFilter::PNGFilter)->decode(data, &info);
}

// Replaces the body of the first chunk of that type, keeping its CRC right unless told otherwise.
qsizetype chunkAt(const QByteArray& file, const char* type)
{
    const qsizetype at = file.indexOf(QByteArray(type, 4));
    return at < 0 ? -1 : at - 4;
}

QByteArray withByte(QByteArray file, qsizetype at, char value)
{
    file[at] = value;
    return file;
}

// The PNG blocks of every SFF v2 file of the test data, with the record each sprite node gives.
QList<QPair<QByteArray, QImageInfo>> realBlocks()
{
    QList<QPair<QByteArray, QImageInfo>> blocks;
    for (const QString& path : TestData::files({QStringLiteral("*.sff")})) {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly)) continue;
        const QByteArray bytes = file.readAll();
        const auto* d = reinterpret_cast<const uchar*>(bytes.constData());
        if (bytes.size() < 512 || d[15] != 2) continue;
        const auto u32 = [&](qsizetype at) { return qsizetype(qFromLittleEndian<quint32>(d + at)); };
        const auto u16 = [&](qsizetype at) { return qFromLittleEndian<quint16>(d + at); };
        for (qsizetype i = 0; i < u32(40); ++i) {
            const qsizetype node = u32(36) + i * 28;
            if (node + 28 > bytes.size()) break;
            const qsizetype length = u32(node + 20);
            if (d[node + 14] < 10 || d[node + 14] > 12 || length <= 4) continue;
            const qsizetype at = u32(node + 16) + ((u16(node + 26) & 1) ? u32(60) : u32(52));
            if (at + length > bytes.size()) continue;
            QImageInfo info;
            info.width = u16(node + 4);
            info.height = u16(node + 6);
            info.format = d[node + 15] == 32   ? QImage::Format_ARGB32
                          : d[node + 15] == 24 ? QImage::Format_RGB32
                                               : QImage::Format_Indexed8;
            blocks.append({bytes.mid(at + 4, length - 4), info});
        }
    }
    return blocks;
}

// The row decoder's rows, asked for a few at a time as the comparisons of the sharing pass ask.
QByteArray rowsOf(const QByteArray& data, const QImageInfo& info, bool* opened, bool* failed)
{
    QPNGRowDecoder decoder;
    *opened = decoder.open(data, info);
    *failed = false;
    if (!*opened) return QByteArray();
    const qsizetype line = info.rowBytes();
    QByteArray out(line * info.height, '\0');
    for (int until = 1;; until = std::min<int>(info.height, until + std::max(1, until / 4))) {
        const int done = decoder.decode(reinterpret_cast<uchar*>(out.data()), line, until);
        if (decoder.failed()) {
            *failed = true;
            return QByteArray();
        }
        if (done < until) return QByteArray();
        if (until == info.height) return out;
    }
}

QByteArray unpadded(const QByteArray& raw, const QImageInfo& info)
{
    QByteArray out;
    for (int y = 0; y < info.height; ++y)
        out += raw.mid(y * info.bytesPerLine(), info.rowBytes());
    return out;
}

} // namespace

class tst_PngDecode : public QObject
{
    Q_OBJECT

private slots:
    void unfilter_data();
    void unfilter();
    void wellMade_data();
    void wellMade();
    void broken_data();
    void broken();
    void mutationsAgreeWithQt_data();
    void mutationsAgreeWithQt();
    void impossibleSizeAllocatesNothing();
    void realFiles();
};

void tst_PngDecode::unfilter_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("bpp");
    QTest::addColumn<bool>("firstRow");
    QTest::addColumn<bool>("baseline");
    const char* names[] = {"none", "sub", "up", "average", "paeth"};
    for (int type = 0; type < 5; ++type)
        for (int bpp : {1, 2, 3, 4, 6, 8})
            for (bool first : {false, true})
                for (bool baseline : {false, true})
                    if (bpp == 4 || !baseline)
                        QTest::addRow("%s, %d bytes per pixel%s%s", names[type], bpp,
                                      first ? ", first row" : "", baseline ? ", baseline instructions" : "")
                            << type << bpp << first << baseline;
}

// Every filter type at every pixel size against the plain definition above, on rows that wrap around
// 255 often.
void tst_PngDecode::unfilter()
{
    QFETCH(int, type);
    QFETCH(int, bpp);
    QFETCH(bool, firstRow);
    QFETCH(bool, baseline);
    QPNGUnfilter::setBaselineOnly(baseline);
    const auto restore = qScopeGuard([] { QPNGUnfilter::setBaselineOnly(false); });
    const int size = bpp * 37;
    const QByteArray priorBytes = pixelsFor(size, 1, 1, 3);
    const QByteArray raw = pixelsFor(size, 1, 1, 4);
    const auto* prior = firstRow ? nullptr : reinterpret_cast<const uchar*>(priorBytes.constData());
    QByteArray expected = raw;
    auto* e = reinterpret_cast<uchar*>(expected.data());
    for (int x = 0; x < size; ++x)
        e[x] = uchar(e[x] + predictor(type, e, prior, x, bpp));
    QByteArray row = raw;
    QVERIFY(QPNGUnfilter::row(uchar(type), reinterpret_cast<uchar*>(row.data()), prior, size, bpp));
    QCOMPARE(row, expected);
    QVERIFY(!QPNGUnfilter::row(5, reinterpret_cast<uchar*>(row.data()), prior, size, bpp));
}

void tst_PngDecode::wellMade_data()
{
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<QImageInfo>("info");
    QTest::addColumn<QPNGDecoder::Result>("result");
    QTest::addColumn<bool>("rowDecoder"); // whether the row decoder takes it

    for (int type : {3, 2, 6})
        for (int width : {1, 3, 17, 64}) {
            for (int filter : {0, 1, 2, 3, 4, Cycle}) {
                Png png = pngOf(type, width, 9, quint32(width * 10 + type));
                png.filter = filter;
                QTest::addRow("type %d, %d wide, filter %d", type, width, filter)
                    << png.file() << png.info() << QPNGDecoder::Decoded << true;
            }
            Png png = pngOf(type, width, 11, quint32(width));
            png.interlaced = true;
            QTest::addRow("type %d, %d wide, interlaced", type, width)
                << png.file() << png.info() << QPNGDecoder::Decoded << false;
        }

    Png split = pngOf(6, 40, 30, 7);
    split.parts = 5;
    QTest::newRow("pixels in five IDAT chunks")
        << split.file() << split.info() << QPNGDecoder::Decoded << true;
    Png withEmpty = pngOf(3, 20, 20, 8);
    QByteArray file = withEmpty.file();
    file.insert(chunkAt(file, "IDAT"), chunk("IDAT", QByteArray()));
    QTest::newRow("an empty IDAT chunk first") << file << withEmpty.info() << QPNGDecoder::Decoded << true;

    Png small = pngOf(3, 15, 6, 9);
    small.paletteSize = 16;
    QTest::newRow("indices past a short palette become 0")
        << small.file() << small.info() << QPNGDecoder::Decoded << true;
    Png seeThrough = pngOf(3, 15, 6, 10);
    seeThrough.transparency = true;
    QTest::newRow("palette with transparency")
        << seeThrough.file() << seeThrough.info() << QPNGDecoder::Decoded << true;
    Png keyed = pngOf(2, 15, 6, 11);
    keyed.transparency = true;
    QTest::newRow("RGB with a transparent colour is Qt's")
        << keyed.file() << keyed.info() << QPNGDecoder::LeftToQt << false;
    Png rgba = pngOf(6, 15, 6, 12);
    QImageInfo indexedRecord = rgba.info();
    indexedRecord.format = QImage::Format_Indexed8;
    QTest::newRow("record of another form is Qt's")
        << rgba.file() << indexedRecord << QPNGDecoder::LeftToQt << false;
    QImageInfo wider = rgba.info();
    wider.width = 16;
    QTest::newRow("record of another size") << rgba.file() << wider << QPNGDecoder::Undecodable << false;
    Png extra = pngOf(3, 15, 6, 13);
    extra.extraRows = 2;
    QTest::newRow("data past the rows is Qt's")
        << extra.file() << extra.info() << QPNGDecoder::LeftToQt << true;
    QByteArray withText = small.file();
    withText.insert(chunkAt(withText, "IDAT"), chunk("tEXt", QByteArray("Comment\0made by hand", 20)));
    QTest::newRow("a text chunk") << withText << small.info() << QPNGDecoder::Decoded << true;

    // Qt's own writer, as the editor writes sprites.
    QImage image(21, 5, QImage::Format_Indexed8);
    image.setColorTable(QList<QRgb>(256, qRgb(0, 0, 0)));
    for (int y = 0; y < 5; ++y)
        for (int x = 0; x < 21; ++x)
            image.scanLine(y)[x] = uchar(x * y);
    QTest::newRow("written by encodePNG")
        << encodePNG(image) << QImageInfo::of(image) << QPNGDecoder::Decoded << true;
}

// Files that Qt reads: each decoder gives Qt's pixels, and the whole decoder takes them itself unless
// told otherwise.
void tst_PngDecode::wellMade()
{
    QFETCH(QByteArray, data);
    QFETCH(QImageInfo, info);
    QFETCH(QPNGDecoder::Result, result);
    QFETCH(bool, rowDecoder);
    const QByteArray reference = qtRaw(data, info);
    QCOMPARE(reference.isEmpty(), result == QPNGDecoder::Undecodable);
    QByteArray raw;
    QCOMPARE(QPNGDecoder::decode(data, info, &raw), result);
    if (result == QPNGDecoder::Decoded) QCOMPARE(raw, reference);
    QCOMPARE(filterDecode(data, info), reference);
    bool opened = false, failed = false;
    const QByteArray rows = rowsOf(data, info, &opened, &failed);
    QCOMPARE(opened, rowDecoder);
    if (opened && !failed) QCOMPARE(rows, unpadded(reference, info));
}

void tst_PngDecode::broken_data()
{
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<QImageInfo>("info");
    QTest::addColumn<QPNGDecoder::Result>("result");

    Png png = pngOf(3, 20, 12, 21);
    png.parts = 2;
    const QByteArray good = png.file();
    const QImageInfo info = png.info();
    const qsizetype idat = chunkAt(good, "IDAT");
    const qsizetype iend = chunkAt(good, "IEND");
    const auto row = [&](const char* name, const QByteArray& data, QPNGDecoder::Result result) {
        QTest::newRow(name) << data << info << result;
    };
    row("truncated in the pixels", good.left(idat + 20), QPNGDecoder::LeftToQt);
    row("truncated before IEND", good.left(iend), QPNGDecoder::LeftToQt);
    row("IEND without its CRC", good.left(good.size() - 4), QPNGDecoder::Decoded);
    row("IEND with a wrong CRC", withByte(good, good.size() - 1, 0), QPNGDecoder::LeftToQt);
    row("wrong CRC of IDAT", withByte(good, idat + 8 + 5, char(good[idat + 13] ^ 0x10)),
        QPNGDecoder::LeftToQt);
    row("wrong CRC of IHDR", withByte(good, 8 + 8 + 3, 1), QPNGDecoder::LeftToQt);
    row("bad signature", withByte(good, 1, 'p'), QPNGDecoder::LeftToQt);
    QByteArray badText = chunk("tEXt", QByteArray("Comment\0x", 9));
    badText[badText.size() - 1] = char(badText[badText.size() - 1] ^ 1);
    row("wrong CRC of a text chunk", QByteArray(good).insert(idat, badText), QPNGDecoder::Decoded);
    row("unknown critical chunk", QByteArray(good).insert(idat, chunk("ABCD", "x")), QPNGDecoder::LeftToQt);
    row("unknown ancillary chunk", QByteArray(good).insert(idat, chunk("abCd", "x")), QPNGDecoder::Decoded);
    row("chunk name with a digit", QByteArray(good).insert(idat, chunk("ab1d", "x")), QPNGDecoder::LeftToQt);
    row("chunk longer than the file", QByteArray(good).insert(iend, QByteArray("\0\0\xff\xfftEXt", 8)),
        QPNGDecoder::LeftToQt);
    row("IDAT chunks split by a text chunk",
        QByteArray(good).insert(chunkAt(good.mid(idat + 12), "IDAT") + idat + 12,
                                chunk("tEXt", QByteArray("a\0b", 3))),
        QPNGDecoder::LeftToQt);
    row("PLTE after the pixels", QByteArray(good).insert(iend, chunk("PLTE", QByteArray(6, '\1'))),
        QPNGDecoder::LeftToQt);
    QByteArray missing = good;
    const qsizetype plte = chunkAt(missing, "PLTE");
    missing.remove(plte, 12 + 768);
    row("no palette", missing, QPNGDecoder::LeftToQt);
    row("two palettes", QByteArray(good).insert(plte, chunk("PLTE", QByteArray(6, '\1'))),
        QPNGDecoder::LeftToQt);
    row("IHDR not first", QByteArray(good).insert(8, chunk("tEXt", QByteArray("a\0b", 3))),
        QPNGDecoder::LeftToQt);

    Png badFilter = png;
    badFilter.badFilterRow = 9;
    row("filter type 5", badFilter.file(), QPNGDecoder::LeftToQt);
    Png shortStream = png;
    shortStream.extraRows = -2;
    row("two rows missing", shortStream.file(), QPNGDecoder::LeftToQt);

    // The zlib stream of a single IDAT chunk, broken in its header or its checksum.
    Png single = png;
    single.parts = 1;
    const QByteArray one = single.file();
    const qsizetype stream = chunkAt(one, "IDAT") + 8;
    const auto reChunked = [&](QByteArray zlib) {
        return single.header() + single.beforePixels() + chunk("IDAT", zlib) + chunk("IEND", QByteArray());
    };
    const QByteArray zlib = one.mid(stream, chunkAt(one, "IEND") - 4 - stream);
    QByteArray badAdler = zlib;
    badAdler[badAdler.size() - 1] = char(badAdler[badAdler.size() - 1] ^ 1);
    row("wrong zlib checksum", reChunked(badAdler), QPNGDecoder::LeftToQt);
    row("zlib checksum missing", reChunked(zlib.chopped(4)), QPNGDecoder::LeftToQt);
    row("zlib checksum cut short", reChunked(zlib.chopped(2)), QPNGDecoder::LeftToQt);
    row("zlib preset dictionary", reChunked(withByte(zlib, 1, char(0x20 | (31 - (0x78 * 256 + 0x20) % 31)))),
        QPNGDecoder::LeftToQt);
    row("zlib method 7", reChunked(withByte(zlib, 0, 0x77)), QPNGDecoder::LeftToQt);
    row("junk after the zlib stream", reChunked(zlib + "junk"), QPNGDecoder::Decoded);
}

// Broken files: the filter gives exactly what Qt gives, and the whole decoder takes only what it can
// take without a doubt.
void tst_PngDecode::broken()
{
    QFETCH(QByteArray, data);
    QFETCH(QImageInfo, info);
    QFETCH(QPNGDecoder::Result, result);
    const QByteArray reference = qtRaw(data, info);
    QByteArray raw;
    QCOMPARE(QPNGDecoder::decode(data, info, &raw), result);
    if (result == QPNGDecoder::Decoded) QCOMPARE(raw, reference);
    QCOMPARE(filterDecode(data, info), reference);
    bool opened = false, failed = false;
    const QByteArray rows = rowsOf(data, info, &opened, &failed);
    if (opened && !failed) QCOMPARE(rows, unpadded(reference, info));
}

void tst_PngDecode::mutationsAgreeWithQt_data()
{
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<QImageInfo>("info");
    Png palette = pngOf(3, 24, 16, 31);
    palette.parts = 3;
    palette.paletteSize = 200;
    QTest::newRow("palette") << palette.file() << palette.info();
    const Png rgba = pngOf(6, 18, 14, 32);
    QTest::newRow("rgba") << rgba.file() << rgba.info();
    Png interlaced = pngOf(2, 19, 13, 33);
    interlaced.interlaced = true;
    QTest::newRow("interlaced rgb") << interlaced.file() << interlaced.info();
}

// Thousands of files with a few bytes changed, cut or repeated: whatever Qt makes of each, the filter
// and the row decoder make the same.
void tst_PngDecode::mutationsAgreeWithQt()
{
    QFETCH(QByteArray, data);
    QFETCH(QImageInfo, info);
    QRandomGenerator rng(2024);
    for (int round = 0; round < 1500; ++round) {
        QByteArray mutated = data;
        const int edits = 1 + int(rng.bounded(3));
        for (int e = 0; e < edits; ++e) {
            const qsizetype at = rng.bounded(mutated.size());
            switch (rng.bounded(4)) {
            case 0:
                mutated.truncate(at);
                break;
            case 1:
                mutated.insert(at, mutated.mid(rng.bounded(mutated.size()), 1 + rng.bounded(8)));
                break;
            default:
                mutated[at] = char(rng.bounded(256));
                break;
            }
            if (mutated.isEmpty()) mutated = data;
        }
        const QByteArray reference = qtRaw(mutated, info);
        QVERIFY2(filterDecode(mutated, info) == reference, qPrintable(QStringLiteral("round %1").arg(round)));
        bool opened = false, failed = false;
        const QByteArray rows = rowsOf(mutated, info, &opened, &failed);
        if (opened && !failed)
            QVERIFY2(rows == unpadded(reference, info),
                     qPrintable(QStringLiteral("rows, round %1").arg(round)));
    }
}

// A header that claims 60,000 by 60,000 true-colour pixels over a few bytes of data can't be decoded,
// and the decoder knows it before allocating anything for them.
void tst_PngDecode::impossibleSizeAllocatesNothing()
{
    Png png = pngOf(6, 4, 4, 41);
    QByteArray file = png.file();
    QByteArray ihdr = file.mid(16, 13);
    qToBigEndian<quint32>(60000, ihdr.data());
    qToBigEndian<quint32>(60000, ihdr.data() + 4);
    file.replace(8, 25, chunk("IHDR", ihdr));
    QImageInfo info = png.info();
    info.width = info.height = 60000;
    QByteArray raw;
    QCOMPARE(QPNGDecoder::decode(file, info, &raw), QPNGDecoder::Undecodable);
    QVERIFY(raw.isEmpty());
    QByteArray line(info.rowBytes(), '\0');
    // Into rows that the caller made: nothing is written before the rows are known to fit the data.
    QCOMPARE(QPNGDecoder::decode(file, info, reinterpret_cast<uchar*>(line.data()), 0),
             QPNGDecoder::Undecodable);
    QCOMPARE(line, QByteArray(info.rowBytes(), '\0'));
    QPNGRowDecoder rows;
    QVERIFY(rows.open(file, info));
    QCOMPARE(rows.decode(reinterpret_cast<uchar*>(line.data()), line.size(), 1), 0);
    QVERIFY(rows.failed());
}

// Every PNG sprite of the test data: our decoder takes it and gives Qt's pixels.
void tst_PngDecode::realFiles()
{
    TAVREL_REQUIRE_TESTDATA();
    const auto blocks = realBlocks();
    QVERIFY(blocks.size() > 1000);
    for (qsizetype i = 0; i < blocks.size(); ++i) {
        const QByteArray& data = blocks.at(i).first;
        const QImageInfo& info = blocks.at(i).second;
        QByteArray raw;
        QCOMPARE(QPNGDecoder::decode(data, info, &raw), QPNGDecoder::Decoded);
        QVERIFY2(raw == qtRaw(data, info), qPrintable(QStringLiteral("block %1").arg(i)));
        if (i % 16 == 0) {
            bool opened = false, failed = false;
            QVERIFY(rowsOf(data, info, &opened, &failed) == unpadded(raw, info));
            QVERIFY(opened && !failed);
        }
    }
}

QTEST_MAIN(tst_PngDecode)
#include "tst_PngDecode.moc"
