// The animated GIF writer: the encoder's bytes read back by a small reader of our own written here from
// the GIF89a format alone, and by Qt's GIF reader; then actions turned into frames, on made-up sprites
// and on the real actions of a character, compared index for index with the sprites.

#include "QActionGif.h"
#include "QAirDocument.h"
#include "QAnimation.h"
#include "QAnimationFrame.h"
#include "QAnimations.h"
#include "QGifWriter.h"
#include "QSprite.h"
#include "QSpritePalette.h"
#include "QSprites.h"
#include "QTextElementRegistry.h"
#include "TestData.h"

#include <QBuffer>
#include <QFile>
#include <QImageReader>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

#include <cmath>
#include <functional>
#include <memory>

using Ints = QList<int>;

namespace {

// ---------------------------------------------------------------------------------------------------
// A GIF reader of its own, so that the encoder is not only checked by a decoder that forgives.

struct ReadFrame
{
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    int delay = -1;
    int disposal = -1;
    int transparent = -1;
    bool localTable = false;
    int tableSize = 0;
    // The table that applies: the frame's own or the global one.
    QList<QRgb> table;
    int minimumCodeSize = 0;
    QByteArray indices;
    // Clear codes met after the first, and the widest code read.
    int clears = 0;
    int widestCode = 0;
    bool loopBefore = false;
};

struct ReadGif
{
    QString error;
    int width = 0;
    int height = 0;
    int packed = 0;
    QList<QRgb> global;
    int loopCount = -1;
    int loopBlocks = 0;
    QList<ReadFrame> frames;
};

class ByteReader
{
public:
    explicit ByteReader(const QByteArray& bytes) : data(bytes) {}
    bool atEnd() const { return pos >= data.size(); }
    bool failed() const { return broken; }
    int byte()
    {
        if (pos >= data.size()) {
            broken = true;
            return 0;
        }
        return uchar(data.at(pos++));
    }
    int word()
    {
        const int low = byte();
        return low | (byte() << 8);
    }
    QByteArray take(int count)
    {
        if (pos + count > data.size()) {
            broken = true;
            return QByteArray();
        }
        pos += count;
        return data.mid(pos - count, count);
    }
    // Data sub-blocks up to the empty one, joined.
    QByteArray subBlocks()
    {
        QByteArray joined;
        for (int length = byte(); length != 0 && !broken; length = byte())
            joined += take(length);
        return joined;
    }
    QList<QRgb> table(int size)
    {
        QList<QRgb> colours;
        for (int i = 0; i < size; ++i) {
            const int r = byte(), g = byte(), b = byte();
            colours << qRgb(r, g, b);
        }
        return colours;
    }

private:
    const QByteArray& data;
    int pos = 0;
    bool broken = false;
};

// Variable-width LZW as the GIF format defines it; false with a reason on any code the table can't
// explain or data that ends before the end code.
bool decodeLzw(const QByteArray& data, ReadFrame& frame, QString* error)
{
    const int clear = 1 << frame.minimumCodeSize;
    const int end = clear + 1;
    int size = frame.minimumCodeSize + 1;
    int next = clear + 2;
    int old = -1;
    QVector<int> prefix(4096, -1), length(4096, 1);
    QVector<uchar> suffix(4096, 0);
    for (int i = 0; i < clear; ++i)
        suffix[i] = uchar(i);
    const auto string = [&](int code) {
        QByteArray text(length[code], '\0');
        for (int i = length[code] - 1; i >= 0; --i, code = prefix[code])
            text[i] = char(suffix[code]);
        return text;
    };
    qint64 bit = 0;
    const qint64 bits = qint64(data.size()) * 8;
    bool firstClear = true;
    for (;;) {
        if (bit + size > bits) {
            *error = QStringLiteral("the data ends before the end code");
            return false;
        }
        int code = 0;
        for (int i = 0; i < size; ++i, ++bit)
            code |= ((uchar(data.at(int(bit / 8))) >> (bit % 8)) & 1) << i;
        frame.widestCode = std::max(frame.widestCode, size);
        if (code == clear) {
            if (!firstClear) ++frame.clears;
            firstClear = false;
            size = frame.minimumCodeSize + 1;
            next = clear + 2;
            old = -1;
            continue;
        }
        if (code == end) break;
        QByteArray text;
        if (old < 0) {
            if (code >= clear) {
                *error = QStringLiteral("first code %1 is no colour").arg(code);
                return false;
            }
            text = string(code);
        } else if (code < next) {
            text = string(code);
            if (next < 4096) {
                prefix[next] = old;
                suffix[next] = uchar(text.at(0));
                length[next] = length[old] + 1;
                ++next;
            }
        } else if (code == next && next < 4096) {
            const QByteArray before = string(old);
            prefix[next] = old;
            suffix[next] = uchar(before.at(0));
            length[next] = length[old] + 1;
            ++next;
            text = string(code);
        } else {
            *error = QStringLiteral("code %1 beyond the table (%2)").arg(code).arg(next);
            return false;
        }
        frame.indices += text;
        old = code;
        if (next == (1 << size) && size < 12) ++size;
    }
    if (frame.indices.size() != frame.width * frame.height) {
        *error = QStringLiteral("%1 pixels for %2 x %3")
                     .arg(frame.indices.size())
                     .arg(frame.width)
                     .arg(frame.height);
        return false;
    }
    return true;
}

ReadGif readGif(const QByteArray& bytes)
{
    ReadGif gif;
    ByteReader in(bytes);
    if (in.take(6) != "GIF89a") {
        gif.error = QStringLiteral("no GIF89a signature");
        return gif;
    }
    gif.width = in.word();
    gif.height = in.word();
    gif.packed = in.byte();
    in.byte();
    in.byte();
    if (gif.packed & 0x80) gif.global = in.table(1 << ((gif.packed & 7) + 1));
    ReadFrame pending;
    while (!in.failed()) {
        const int introducer = in.byte();
        if (introducer == 0x3B) {
            if (!in.atEnd()) gif.error = QStringLiteral("bytes after the trailer");
            return gif;
        }
        if (introducer == 0x21) {
            const int label = in.byte();
            if (label == 0xF9) {
                if (in.byte() != 4) gif.error = QStringLiteral("graphic control of the wrong size");
                const int packed = in.byte();
                pending.disposal = (packed >> 2) & 7;
                pending.delay = in.word();
                const int transparent = in.byte();
                pending.transparent = (packed & 1) ? transparent : -1;
                if (in.byte() != 0) gif.error = QStringLiteral("graphic control without terminator");
            } else if (label == 0xFF) {
                const QByteArray blocks = in.subBlocks();
                if (blocks.startsWith("NETSCAPE2.0") && blocks.size() == 14 && blocks.at(11) == 1) {
                    gif.loopCount = uchar(blocks.at(12)) | (uchar(blocks.at(13)) << 8);
                    ++gif.loopBlocks;
                    pending.loopBefore = true;
                }
            } else {
                in.subBlocks();
            }
            continue;
        }
        if (introducer != 0x2C) {
            gif.error = QStringLiteral("unknown block 0x%1").arg(introducer, 0, 16);
            return gif;
        }
        ReadFrame frame = pending;
        pending = ReadFrame();
        frame.x = in.word();
        frame.y = in.word();
        frame.width = in.word();
        frame.height = in.word();
        const int packed = in.byte();
        if (packed & 0x40) gif.error = QStringLiteral("an interlaced frame");
        frame.localTable = packed & 0x80;
        frame.table = frame.localTable ? in.table(1 << ((packed & 7) + 1)) : gif.global;
        frame.tableSize = int(frame.table.size());
        frame.minimumCodeSize = in.byte();
        const QByteArray data = in.subBlocks();
        QString error;
        if (!decodeLzw(data, frame, &error)) {
            gif.error = QStringLiteral("frame %1: %2").arg(gif.frames.size()).arg(error);
            return gif;
        }
        for (char index : frame.indices)
            if (uchar(index) >= frame.tableSize) gif.error = QStringLiteral("an index beyond the table");
        gif.frames << frame;
    }
    gif.error = QStringLiteral("the file ends without trailer");
    return gif;
}

// The pixels of an indexed image as one array, without the padding of the scan lines.
QByteArray indicesOf(const QImage& image)
{
    QByteArray bytes;
    for (int y = 0; y < image.height(); ++y)
        bytes.append(reinterpret_cast<const char*>(image.constScanLine(y)), image.width());
    return bytes;
}

QImage indexed(int width, int height, const std::function<int(int, int)>& index)
{
    QImage image(width, height, QImage::Format_Indexed8);
    QList<QRgb> table(256);
    for (int i = 0; i < 256; ++i)
        table[i] = qRgb(i, 255 - i, (i * 7) & 0xFF);
    image.setColorTable(table);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            image.scanLine(y)[x] = uchar(index(x, y));
    return image;
}

QList<QRgb> greyTable(int count)
{
    QList<QRgb> table;
    for (int i = 0; i < count; ++i)
        table << qRgb(i, i, i);
    return table;
}

// Qt's reader over the bytes; null when this Qt can't read GIF at all.
std::unique_ptr<QImageReader> qtReader(QBuffer& buffer)
{
    if (!QImageReader::supportedImageFormats().contains("gif")) return nullptr;
    auto reader = std::make_unique<QImageReader>(&buffer, "gif");
    return reader;
}

// What a viewer shows of a frame once the one before is cleared away: the canvas transparent, the
// frame's non-zero indices in their colours.
QImage composed(const ReadGif& gif, const ReadFrame& frame)
{
    QImage canvas(gif.width, gif.height, QImage::Format_ARGB32);
    canvas.fill(0);
    for (int y = 0; y < frame.height; ++y)
        for (int x = 0; x < frame.width; ++x) {
            const int index = uchar(frame.indices.at(y * frame.width + x));
            if (index != frame.transparent)
                canvas.setPixel(frame.x + x, frame.y + y, frame.table.at(index) | 0xFF000000u);
        }
    return canvas;
}

// The first pixel where Qt's picture differs from ours, transparent pixels being equal whatever their
// colour; empty when none does.
QString compareWithQt(const QImage& qt, const QImage& expected)
{
    if (qt.size() != expected.size()) return QStringLiteral("size %1x%2").arg(qt.width()).arg(qt.height());
    const QImage argb = qt.convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < argb.height(); ++y)
        for (int x = 0; x < argb.width(); ++x) {
            const QRgb a = argb.pixel(x, y), b = expected.pixel(x, y);
            if (qAlpha(a) == 0 && qAlpha(b) == 0) continue;
            if (a != b)
                return QStringLiteral("pixel %1,%2: %3 instead of %4")
                    .arg(x)
                    .arg(y)
                    .arg(a, 8, 16, QLatin1Char('0'))
                    .arg(b, 8, 16, QLatin1Char('0'));
        }
    return QString();
}

// ---------------------------------------------------------------------------------------------------
// Made-up sprite files for actions.

QVector<uint> paletteColours(int seed)
{
    QVector<uint> colours(256);
    for (int i = 0; i < 256; ++i)
        colours[i] = qRgb(i, (seed * 40 + i) & 0xFF, 255 - i);
    return colours;
}

struct SpriteSet
{
    QSprites sprites{nullptr, 0, false};

    QSpritePalette* palette(int seed)
    {
        return sprites.addPalette(paletteColours(seed), QSpritePaletteShareMode::Share, 1, seed);
    }
    QSprite* add(int group, int number, const QImage& image, QPoint axis, QSpritePalette* palette)
    {
        QSprite* sprite = sprites.add();
        sprite->setImage(image);
        sprite->setFields(palette, group, number, axis.x(), axis.y(), 0);
        return sprite;
    }
};

// A 5 x 3 sprite whose every pixel has an index of its own, 0 in the top left corner.
QImage numbered(int width = 5, int height = 3, int base = 0)
{
    return indexed(width, height, [=](int x, int y) { return (x + y * width + base) % 256; });
}

QByteArray gifOf(const QString& air, SpriteSet& set, QString* error = nullptr, int paletteIndex = -1)
{
    QAirDocument document(air);
    QGifWriter gif;
    if (!QActionGif::prepare(*document.model.at(0), set.sprites, &gif, error, paletteIndex))
        return QByteArray();
    return gif.data();
}

// The frame lines of an action, one per time, all of sprite 0,0.
QString actionOfTimes(const Ints& times)
{
    QString text = QStringLiteral("[Begin Action 7]\n");
    for (int time : times)
        text += QStringLiteral("0,0, 0,0, %1\n").arg(time);
    return text;
}

} // namespace

class tst_GifWriter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { registerTextElements(); }
    void cleanupTestCase() { unregisterTextElements(); }

    void compressesEveryImage_data();
    void compressesEveryImage();
    void fileLayout();
    void invalidFramesWriteNothing_data();
    void invalidFramesWriteNothing();
    void failedSaveKeepsTheOldFile();

    void delays_data();
    void delays();
    void placement_data();
    void placement();
    void palettes();
    void loopBlock_data();
    void loopBlock();
    void framesWithoutSprite();
    void trueColourSprite();
    void qtShowsTheActionAsWeDo();
    void realActions();
};

// ---------------------------------------------------------------------------------------------------
// The encoder alone.

void tst_GifWriter::compressesEveryImage_data()
{
    QTest::addColumn<QImage>("image");
    QTest::addColumn<int>("tableEntries");
    QTest::addColumn<int>("writtenTable");
    QTest::addColumn<int>("minimumClears");

    QRandomGenerator random(1234);
    QTest::newRow("one pixel") << indexed(1, 1, [](int, int) { return 0; }) << 256 << 256 << 0;
    QTest::newRow("one-colour table") << indexed(7, 3, [](int, int) { return 0; }) << 1 << 2 << 0;
    QTest::newRow("two-colour checker")
        << indexed(9, 9, [](int x, int y) { return (x + y) & 1; }) << 2 << 2 << 0;
    QTest::newRow("five colours, a table of eight")
        << indexed(6, 5, [](int x, int y) { return (x * y) % 5; }) << 5 << 8 << 0;
    QTest::newRow("index above a short table widens it")
        << indexed(4, 4, [](int x, int) { return x == 3 ? 200 : 1; }) << 16 << 256 << 0;
    QTest::newRow("odd width, every index")
        << indexed(13, 29, [](int x, int y) { return (x * 29 + y) % 256; }) << 256 << 256 << 0;
    QTest::newRow("one long run") << indexed(3000, 2, [](int, int) { return 77; }) << 256 << 256 << 0;
    // Noise runs the table past 4096 codes several times over: clear codes, and 9 bits again after.
    QImage noise = indexed(160, 120, [&random](int, int) { return int(random.bounded(256)); });
    QTest::newRow("noise of 256 colours") << noise << 256 << 256 << 3;
    QImage fewNoise = indexed(300, 200, [&random](int, int) { return int(random.bounded(4)); });
    QTest::newRow("noise of 4 colours, 2-bit codes") << fewNoise << 4 << 4 << 1;
    QTest::newRow("a column") << indexed(1, 700, [](int, int y) { return y % 3; }) << 256 << 256 << 0;
}

void tst_GifWriter::compressesEveryImage()
{
    QFETCH(QImage, image);
    QFETCH(int, tableEntries);
    QFETCH(int, writtenTable);
    QFETCH(int, minimumClears);

    QGifWriter writer;
    writer.width = ushort(image.width() + 3);
    writer.height = ushort(image.height() + 2);
    QGifFrame frame;
    frame.image = image;
    frame.palette = greyTable(tableEntries);
    frame.x = 3;
    frame.y = 1;
    frame.delay = 12;
    frame.loop = true;
    writer.frames << frame;
    const QByteArray bytes = writer.data();
    QVERIFY(!bytes.isEmpty());

    const ReadGif gif = readGif(bytes);
    QCOMPARE(gif.error, QString());
    QCOMPARE(gif.frames.size(), 1);
    const ReadFrame& read = gif.frames.first();
    QCOMPARE(read.indices, indicesOf(image));
    QCOMPARE(read.tableSize, writtenTable);
    QCOMPARE(read.table.mid(0, tableEntries), greyTable(tableEntries));
    QVERIFY(read.clears >= minimumClears);
    QVERIFY(read.widestCode <= 12);
    if (minimumClears > 0) QCOMPARE(read.widestCode, 12);
    QCOMPARE(QRect(read.x, read.y, read.width, read.height), QRect(QPoint(3, 1), image.size()));

    QBuffer buffer;
    buffer.setData(bytes);
    auto reader = qtReader(buffer);
    if (!reader) QSKIP("this Qt has no GIF reader plug-in; the own reader passed");
    const QImage qt = reader->read();
    QVERIFY2(!qt.isNull(), qPrintable(reader->errorString()));
    QCOMPARE(compareWithQt(qt, composed(gif, read)), QString());
}

void tst_GifWriter::fileLayout()
{
    QGifWriter writer;
    writer.width = 4;
    writer.height = 3;
    writer.palette = greyTable(256);
    QGifFrame frame;
    frame.image = indexed(2, 2, [](int x, int) { return x; });
    frame.delay = 0x1234;
    frame.loop = true;
    writer.frames << frame;
    frame.loop = false;
    frame.x = 2;
    frame.y = 1;
    frame.delay = 0xFFFF;
    writer.frames << frame;
    const QByteArray bytes = writer.data();

    QCOMPARE(bytes.left(13), QByteArray::fromHex("474946383961"
                                                 "0400"
                                                 "0300"
                                                 "F7"
                                                 "00"
                                                 "00"));
    QCOMPARE(bytes.mid(13 + 2 * 3, 3), QByteArray::fromHex("020202"));
    int at = 13 + 768;
    QCOMPARE(bytes.mid(at, 19),
             QByteArray::fromHex("21FF0B") + "NETSCAPE2.0" + QByteArray::fromHex("0301000000"));
    at += 19;
    // Disposal 2 with transparency, the delay, transparent index 0.
    QCOMPARE(bytes.mid(at, 8), QByteArray::fromHex("21F904093412"
                                                   "0000"));
    at += 8;
    QCOMPARE(bytes.mid(at, 10), QByteArray::fromHex("2C"
                                                    "0000"
                                                    "0000"
                                                    "0200"
                                                    "0200"
                                                    "00"));
    QCOMPARE(bytes.at(at + 10), char(8));
    QCOMPARE(bytes.count(QByteArray("NETSCAPE2.0")), 1);
    QVERIFY(bytes.contains(QByteArray::fromHex("21F90409FFFF0000"
                                               "2C"
                                               "0200"
                                               "0100")));
    QCOMPARE(bytes.back(), char(0x3B));

    const ReadGif gif = readGif(bytes);
    QCOMPARE(gif.error, QString());
    QCOMPARE(gif.loopCount, 0);
    QCOMPARE(gif.frames.size(), 2);
    QCOMPARE(gif.frames.at(1).delay, 0xFFFF);
    QCOMPARE(gif.frames.at(1).disposal, 2);
    QCOMPARE(gif.frames.at(1).transparent, 0);
    QVERIFY(!gif.frames.at(1).localTable);

    // Without a global table every frame carries its own, and the screen's packed byte says so.
    writer.palette.clear();
    writer.frames[0].palette = greyTable(256);
    writer.frames[1].palette = greyTable(256);
    const QByteArray local = writer.data();
    QCOMPARE(uchar(local.at(10)), uchar(0x77));
    QCOMPARE(uchar(local.at(13 + 19 + 8 + 9)), uchar(0x87));
    QCOMPARE(local.size(), bytes.size() + 768);
}

void tst_GifWriter::invalidFramesWriteNothing_data()
{
    QTest::addColumn<QImage>("image");
    QTest::addColumn<int>("x");
    QTest::addColumn<bool>("withTable");
    QTest::addColumn<QString>("error");

    const QImage good = indexed(4, 4, [](int x, int) { return x; });
    QTest::newRow("true colour") << good.convertToFormat(QImage::Format_RGB32) << 0 << true
                                 << QStringLiteral("Frame 1 is not an indexed image.");
    QTest::newRow("null image") << QImage() << 0 << true
                                << QStringLiteral("Frame 1 is not an indexed image.");
    QTest::newRow("beyond the canvas")
        << good << 7 << true << QStringLiteral("Frame 1 reaches beyond the picture.");
    QTest::newRow("no table at all") << good << 0 << false << QStringLiteral("Frame 1 has no colour table.");
}

void tst_GifWriter::invalidFramesWriteNothing()
{
    QFETCH(QImage, image);
    QFETCH(int, x);
    QFETCH(bool, withTable);
    QFETCH(QString, error);

    QGifWriter writer;
    writer.width = 10;
    writer.height = 10;
    QGifFrame frame;
    frame.image = image;
    frame.x = ushort(x);
    if (withTable) frame.palette = greyTable(256);
    writer.frames << frame;
    QString reason;
    QVERIFY(!writer.isValid(&reason));
    QCOMPARE(reason, error);
    QVERIFY(writer.data().isEmpty());
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("out.gif"));
    QVERIFY(!writer.save(path));
    QVERIFY(!QFile::exists(path));
}

void tst_GifWriter::failedSaveKeepsTheOldFile()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("action.gif"));
    QFile old(path);
    QVERIFY(old.open(QIODevice::WriteOnly));
    old.write("earlier picture");
    old.close();

    SpriteSet set;
    QAirDocument nothing(QStringLiteral("[Begin Action 3]\n9,9, 0,0, 5\n"));
    QString error;
    QVERIFY(!QActionGif::write(*nothing.model.at(0), set.sprites, path, &error));
    QCOMPARE(error, QStringLiteral("No frame of action 3 shows a sprite of the sprite file."));
    QVERIFY(old.open(QIODevice::ReadOnly));
    QCOMPARE(old.readAll(), QByteArray("earlier picture"));
    old.close();

    set.add(9, 9, numbered(), QPoint(0, 0), set.palette(1));
    QVERIFY(!QActionGif::write(*nothing.model.at(0), set.sprites, dir.filePath("missing/a.gif"), &error));
    QVERIFY(!error.isEmpty());
    QVERIFY(QActionGif::write(*nothing.model.at(0), set.sprites, path, &error));
    QVERIFY(old.open(QIODevice::ReadOnly));
    QCOMPARE(readGif(old.readAll()).frames.size(), 1);
}

// ---------------------------------------------------------------------------------------------------
// Actions into frames.

void tst_GifWriter::delays_data()
{
    QTest::addColumn<Ints>("times");
    QTest::addColumn<Ints>("delays");

    QTest::newRow("6 and 60 ticks") << Ints{6, 60} << Ints{10, 100};
    QTest::newRow("negative time, last") << Ints{6, -1} << Ints{10, 0xFFFF};
    QTest::newRow("negative time ends the action") << Ints{4, -1, 4, 4} << Ints{7, 0xFFFF};
    QTest::newRow("seven ticks each") << Ints{7, 7, 7} << Ints{12, 11, 12};
    QTest::newRow("single ticks") << Ints{1, 1, 1, 1, 1, 1} << Ints{2, 1, 2, 2, 1, 2};
    QTest::newRow("no time is left out") << Ints{5, 0, 5} << Ints{8, 9};
    QTest::newRow("only no time") << Ints{0} << Ints{0};
    QTest::newRow("longer than a GIF holds") << Ints{50000, 3} << Ints{0xFFFF, 5};
}

void tst_GifWriter::delays()
{
    QFETCH(Ints, times);
    QFETCH(Ints, delays);

    SpriteSet set;
    set.add(0, 0, numbered(), QPoint(1, 1), set.palette(1));
    QString error;
    const ReadGif gif = readGif(gifOf(actionOfTimes(times), set, &error));
    QCOMPARE(error, QString());
    QCOMPARE(gif.error, QString());
    Ints read;
    for (const ReadFrame& frame : gif.frames)
        read << frame.delay;
    QCOMPARE(read, delays);
    // However the hundredths fall, the whole stays within one of the action's time.
    if (!times.contains(-1) && !times.contains(50000)) {
        int ticks = 0, sum = 0;
        for (int time : times)
            ticks += time;
        for (int delay : read)
            sum += delay;
        QVERIFY(std::abs(sum - ticks * 100.0 / 60) <= 1);
    }
}

void tst_GifWriter::placement_data()
{
    QTest::addColumn<QString>("secondFrame");
    QTest::addColumn<QSize>("canvas");
    QTest::addColumn<QRect>("first");
    QTest::addColumn<QRect>("second");
    QTest::addColumn<bool>("horizontal");
    QTest::addColumn<bool>("vertical");

    // The sprite is 5 x 3 with its axis at 2,1; the first frame shows it plain at offset 0,0.
    QTest::newRow("same frame again")
        << "0,0, 0,0, 5" << QSize(5, 3) << QRect(0, 0, 5, 3) << QRect(0, 0, 5, 3) << false << false;
    QTest::newRow("offset right and up")
        << "0,0, 3,-2, 5" << QSize(8, 5) << QRect(0, 2, 5, 3) << QRect(3, 0, 5, 3) << false << false;
    // Flipped, the axis mirrors to width - x - 1 = 2 and height - y - 1 = 1, so nothing moves here.
    QTest::newRow("horizontal") << "0,0, 0,0, 5, H" << QSize(5, 3) << QRect(0, 0, 5, 3) << QRect(0, 0, 5, 3)
                                << true << false;
    QTest::newRow("horizontal, offset")
        << "0,0, 3,-2, 5, H" << QSize(8, 5) << QRect(0, 2, 5, 3) << QRect(3, 0, 5, 3) << true << false;
    QTest::newRow("vertical") << "0,0, 0,0, 5, V" << QSize(5, 3) << QRect(0, 0, 5, 3) << QRect(0, 0, 5, 3)
                              << false << true;
    QTest::newRow("both") << "0,0, -4,1, 5, HV" << QSize(9, 4) << QRect(4, 0, 5, 3) << QRect(0, 1, 5, 3)
                          << true << true;
    // An axis off the middle: 4,0 mirrors to 0,2.
    QTest::newRow("other sprite, both")
        << "1,0, 0,0, 5, VH" << QSize(7, 4) << QRect(0, 1, 5, 3) << QRect(2, 0, 5, 3) << true << true;
}

void tst_GifWriter::placement()
{
    QFETCH(QString, secondFrame);
    QFETCH(QSize, canvas);
    QFETCH(QRect, first);
    QFETCH(QRect, second);
    QFETCH(bool, horizontal);
    QFETCH(bool, vertical);

    SpriteSet set;
    QSpritePalette* palette = set.palette(1);
    set.add(0, 0, numbered(), QPoint(2, 1), palette);
    set.add(1, 0, numbered(5, 3, 100), QPoint(4, 0), palette);
    const QString air = QStringLiteral("[Begin Action 1]\n0,0, 0,0, 5\n%1\n").arg(secondFrame);
    const ReadGif gif = readGif(gifOf(air, set));
    QCOMPARE(gif.error, QString());
    QCOMPARE(QSize(gif.width, gif.height), canvas);
    QCOMPARE(gif.frames.size(), 2);
    const ReadFrame& a = gif.frames.at(0);
    const ReadFrame& b = gif.frames.at(1);
    QCOMPARE(QRect(a.x, a.y, a.width, a.height), first);
    QCOMPARE(QRect(b.x, b.y, b.width, b.height), second);
    QCOMPARE(a.indices, indicesOf(numbered()));
    const QImage shown = secondFrame.startsWith('1') ? numbered(5, 3, 100) : numbered();
    QCOMPARE(b.indices, indicesOf(shown.mirrored(horizontal, vertical)));
}

void tst_GifWriter::palettes()
{
    SpriteSet set;
    QSpritePalette* one = set.palette(1);
    QSpritePalette* two = set.palette(2);
    // A second palette object with the colours of the first still shares the global table.
    QSpritePalette* copy = set.palette(3);
    copy->setColors(one->colors());
    set.add(0, 0, numbered(), QPoint(0, 0), one);
    set.add(0, 1, numbered(5, 3, 50), QPoint(0, 0), copy);
    set.add(0, 2, numbered(5, 3, 90), QPoint(0, 0), two);
    const QList<QRgb> first = paletteColours(1);
    const QList<QRgb> second = paletteColours(2);
    const auto rgb = [](QList<QRgb> table) {
        for (QRgb& colour : table)
            colour = qRgb(qRed(colour), qGreen(colour), qBlue(colour));
        return table;
    };

    const ReadGif shared = readGif(gifOf("[Begin Action 1]\n0,0, 0,0, 5\n0,1, 0,0, 5\n", set));
    QCOMPARE(shared.error, QString());
    QCOMPARE(shared.packed, 0xF7);
    QCOMPARE(shared.global, rgb(first));
    QVERIFY(!shared.frames.at(0).localTable);
    QVERIFY(!shared.frames.at(1).localTable);

    const ReadGif own = readGif(gifOf("[Begin Action 1]\n0,0, 0,0, 5\n0,2, 0,0, 5\n", set));
    QCOMPARE(own.error, QString());
    QCOMPARE(own.packed, 0x77);
    QCOMPARE(own.frames.at(0).table, rgb(first));
    QCOMPARE(own.frames.at(1).table, rgb(second));
    QCOMPARE(own.frames.at(1).indices, indicesOf(numbered(5, 3, 90)));

    // The palette in use of the view stands in for every sprite's own; the indices stay.
    const int index = set.sprites.paletteIndexOf(two);
    const ReadGif chosen =
        readGif(gifOf("[Begin Action 1]\n0,0, 0,0, 5\n0,2, 0,0, 5\n", set, nullptr, index));
    QCOMPARE(chosen.packed, 0xF7);
    QCOMPARE(chosen.global, rgb(second));
    QCOMPARE(chosen.frames.at(0).indices, indicesOf(numbered()));

    // A link of the remap table shows the palette it names in place of the chosen one.
    set.sprites.remapModel()->addRow();
    set.sprites.remapModel()->setRow(0, 1, 2, 1, 1);
    const ReadGif linked = readGif(gifOf("[Begin Action 1]\n0,2, 0,0, 5\n", set, nullptr, index));
    QCOMPARE(linked.global, rgb(first));
}

void tst_GifWriter::loopBlock_data()
{
    QTest::addColumn<QString>("air");
    QTest::addColumn<Ints>("loopFrames");

    QTest::newRow("no mark: before the first frame")
        << "[Begin Action 1]\n0,0, 0,0, 5\n0,0, 0,0, 5\n0,0, 0,0, 5\n"
        << Ints{0};
    QTest::newRow("mark on frame 3")
        << "[Begin Action 1]\n0,0, 0,0, 5\n0,0, 0,0, 5\nLoopStart\n0,0, 0,0, 5\n0,0, 0,0, 5\n"
        << Ints{2};
    QTest::newRow("mark on a frame of no time goes on to the next")
        << "[Begin Action 1]\n0,0, 0,0, 5\nLoopStart\n0,0, 0,0, 0\n0,0, 0,0, 5\n"
        << Ints{1};
    QTest::newRow("mark behind a negative time is never reached")
        << "[Begin Action 1]\n0,0, 0,0, 5\n0,0, 0,0, -1\nLoopStart\n0,0, 0,0, 5\n"
        << Ints{0};
}

void tst_GifWriter::loopBlock()
{
    QFETCH(QString, air);
    QFETCH(Ints, loopFrames);

    SpriteSet set;
    set.add(0, 0, numbered(), QPoint(0, 0), set.palette(1));
    const ReadGif gif = readGif(gifOf(air, set));
    QCOMPARE(gif.error, QString());
    Ints read;
    for (int i = 0; i < gif.frames.size(); ++i)
        if (gif.frames.at(i).loopBefore) read << i;
    QCOMPARE(read, loopFrames);
    QCOMPARE(gif.loopCount, 0);
}

void tst_GifWriter::framesWithoutSprite()
{
    SpriteSet set;
    set.add(0, 0, numbered(), QPoint(2, 1), set.palette(1));
    set.add(0, 1, numbered(5, 3, 9), QPoint(2, 1), set.palette(2));
    // A frame of no sprite shows nothing for its time, as the engine does for -1 and missing numbers.
    const ReadGif gif =
        readGif(gifOf("[Begin Action 1]\n0,0, 0,0, 6\n-1,0, 0,0, 12\n0,1, 0,0, 6\n44,44, 0,0, 6\n", set));
    QCOMPARE(gif.error, QString());
    QCOMPARE(gif.frames.size(), 4);
    QCOMPARE(QSize(gif.width, gif.height), QSize(5, 3));
    for (int blank : {1, 3}) {
        const ReadFrame& frame = gif.frames.at(blank);
        QCOMPARE(QSize(frame.width, frame.height), QSize(1, 1));
        QCOMPARE(frame.indices, QByteArray(1, '\0'));
        QCOMPARE(frame.transparent, 0);
        QCOMPARE(frame.disposal, 2);
    }
    QCOMPARE(gif.frames.at(1).delay, 20);
    QCOMPARE(gif.frames.at(2).indices, indicesOf(numbered(5, 3, 9)));
}

void tst_GifWriter::trueColourSprite()
{
    SpriteSet set;
    QImage picture(4, 2, QImage::Format_ARGB32);
    picture.fill(Qt::transparent);
    picture.setPixel(1, 0, qRgb(200, 10, 10));
    picture.setPixel(2, 1, qRgb(10, 10, 200));
    set.add(0, 0, picture, QPoint(0, 0), nullptr);
    const ReadGif gif = readGif(gifOf("[Begin Action 1]\n0,0, 0,0, 3, H\n", set));
    QCOMPARE(gif.error, QString());
    QCOMPARE(gif.frames.size(), 1);
    const ReadFrame& frame = gif.frames.first();
    const QImage expected = picture.mirrored(true, false);
    for (int y = 0; y < 2; ++y)
        for (int x = 0; x < 4; ++x) {
            const int index = uchar(frame.indices.at(y * 4 + x));
            if (qAlpha(expected.pixel(x, y)) == 0)
                QCOMPARE(index, 0);
            else
                QCOMPARE(frame.table.at(index), expected.pixel(x, y));
        }
}

void tst_GifWriter::qtShowsTheActionAsWeDo()
{
    SpriteSet set;
    set.add(0, 0, numbered(7, 4), QPoint(3, 3), set.palette(1));
    set.add(0, 1, numbered(3, 6, 17), QPoint(1, 5), set.palette(2));
    const QByteArray bytes = gifOf(
        "[Begin Action 1]\n0,0, 0,0, 6\n0,1, 2,-1, 9, H\n-1,0, 0,0, 3\nLoopStart\n0,0, 1,1, 4, V\n", set);
    const ReadGif gif = readGif(bytes);
    QCOMPARE(gif.error, QString());
    QBuffer buffer;
    buffer.setData(bytes);
    auto reader = qtReader(buffer);
    if (!reader) QSKIP("this Qt has no GIF reader plug-in");
    QCOMPARE(reader->imageCount(), gif.frames.size());
    for (int i = 0; i < gif.frames.size(); ++i) {
        const QImage qt = reader->read();
        QVERIFY2(!qt.isNull(), qPrintable(reader->errorString()));
        // Qt answers with the time of the picture just read, in milliseconds.
        QCOMPARE(reader->nextImageDelay(), gif.frames.at(i).delay * 10);
        QCOMPARE(compareWithQt(qt, composed(gif, gif.frames.at(i))), QString());
    }
    QCOMPARE(reader->loopCount(), -1);
}

// Every action of a character: each frame's sprite with its exact indices, its palette, all sprites on
// one origin, and the time of the action.
void tst_GifWriter::realActions()
{
    TAVREL_REQUIRE_TESTDATA();
    const QString folder = TestData::root() + QStringLiteral("/elecbyte-mugen11/chars/kfm/");
    QSprites sprites(nullptr, 0, false);
    QFile air(folder + QStringLiteral("kfm.air"));
    if (!sprites.fromFile(folder + QStringLiteral("kfm.sff")) || !air.open(QIODevice::ReadOnly))
        QSKIP("kfm is not among the test data");
    QAirDocument document(QString::fromLatin1(air.readAll()));
    QVERIFY(document.model.count() > 100);

    int checkedFrames = 0, flipped = 0, looped = 0, qtFrames = 0;
    for (int a = 0; a < document.model.count(); ++a) {
        const QAnimation* action = document.model.at(uint(a));
        QGifWriter writer;
        QString error;
        if (!QActionGif::prepare(*action, sprites, &writer, &error)) {
            // Only an action that shows no sprite at all may fail.
            for (const QAnimationFrame* frame : action->frames)
                QVERIFY2(sprites.find(0, frame->spriteGroup, frame->spriteIndex) < 0, qPrintable(error));
            continue;
        }
        const ReadGif gif = readGif(writer.data());
        QVERIFY2(gif.error.isEmpty(),
                 qPrintable(QStringLiteral("action %1: %2").arg(action->number).arg(gif.error)));

        qint64 ticks = 0;
        int read = 0, sum = 0;
        QPoint origin(-1, -1);
        bool ended = false;
        for (const QAnimationFrame* frame : action->frames) {
            const qint64 start = ticks;
            if (frame->time >= 0) ticks += frame->time;
            const auto cs = [](qint64 t) { return int((t * 100 + 30) / 60); };
            if (frame->time >= 0 && cs(ticks) == cs(start)) continue;
            QVERIFY(read < gif.frames.size());
            const ReadFrame& out = gif.frames.at(read++);
            QCOMPARE(out.transparent, 0);
            QCOMPARE(out.disposal, 2);
            if (frame->time < 0) {
                QCOMPARE(out.delay, 0xFFFF);
            } else {
                QVERIFY(std::abs(out.delay - frame->time * 100.0 / 60) < 1.0);
                sum += out.delay;
            }
            if (frame->checkInterFrame(QInterFrameElementType::LoopStart)) {
                QVERIFY(out.loopBefore);
                ++looped;
            }
            if (frame->time < 0) ended = true;
            const int found = sprites.find(0, frame->spriteGroup, frame->spriteIndex);
            const QSprite* sprite = found >= 0 ? sprites.at(uint(found)) : nullptr;
            if (!sprite || !sprite->hasImage()) {
                QCOMPARE(out.width * out.height, 1);
                if (ended) break;
                continue;
            }
            const bool h = frame->flip & 2, v = frame->flip & 1;
            const QImage image = sprite->image(QSpriteImagePalette::Default);
            QCOMPARE(out.indices, indicesOf(image.mirrored(h, v)));
            for (int i = 0; i < 256; ++i)
                QCOMPARE(out.table.at(i), image.colorTable().at(i) | 0xFF000000u);
            const int axisX = h ? image.width() - sprite->offsetX() - 1 : sprite->offsetX();
            const int axisY = v ? image.height() - sprite->offsetY() - 1 : sprite->offsetY();
            const QPoint here(out.x + axisX - frame->offsetX, out.y + axisY - frame->offsetY);
            if (origin.x() < 0) origin = here;
            QCOMPARE(here, origin);
            flipped += (h || v) ? 1 : 0;
            ++checkedFrames;
            if (ended) break;
        }
        QCOMPARE(read, gif.frames.size());
        // Every tenth action also through Qt's reader, picture for picture.
        QBuffer buffer;
        buffer.setData(writer.data());
        auto reader = a % 10 == 0 ? qtReader(buffer) : nullptr;
        for (int i = 0; reader && i < gif.frames.size(); ++i) {
            const QImage qt = reader->read();
            QCOMPARE(compareWithQt(qt, composed(gif, gif.frames.at(i))), QString());
            ++qtFrames;
        }
        if (ticks > 0 && gif.frames.last().delay != 0xFFFF) QVERIFY(std::abs(sum - ticks * 100.0 / 60) <= 1);
    }
    QVERIFY(checkedFrames > 500);
    QVERIFY(flipped > 3);
    QVERIFY(looped > 3);
    if (QImageReader::supportedImageFormats().contains("gif")) QVERIFY(qtFrames > 50);
}

QTEST_MAIN(tst_GifWriter)
#include "tst_GifWriter.moc"
