// Palette files: every reader on small files built byte by byte here, the choice of reader by suffix
// and content, the ACT writer, hostile and truncated input, and the real palettes of characters.

#include "QACOPalette.h"
#include "QACTPalette.h"
#include "QASEPalette.h"
#include "QIndexedImagePalette.h"
#include "QJascPalette.h"
#include "QPainterPalette.h"
#include "QRGBPalette.h"
#include "QRIFFPalette.h"
#include "SffBuilder.h"
#include "SpriteTestKit.h"

#include <QBuffer>
#include <QElapsedTimer>
#include <QFile>
#include <QImage>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QtEndian>

#include <array>
#include <cstring>
#include <functional>
#include <limits>
#include <memory>

#include <signal.h>
#include <sys/resource.h>

using Table = std::array<QRGBPal, 256>;
using ReaderFactory = std::function<std::unique_ptr<QAbstractPalette>()>;
using Entries = QList<QPair<int, QRGBPal>>; // table positions and the colours expected there

Q_DECLARE_METATYPE(ReaderFactory)

using SffBuilder::le32;

namespace {

// File colour k of the hand-made files: all different.
QRGBPal fileColour(int k)
{
    return QRGBPal(uchar(k), uchar(255 - k), uchar((k * 7) & 0xFF));
}

QByteArray be16(int value)
{
    QByteArray bytes(2, '\0');
    qToBigEndian<quint16>(quint16(value), bytes.data());
    return bytes;
}

QByteArray be32(quint32 value)
{
    QByteArray bytes(4, '\0');
    qToBigEndian<quint32>(value, bytes.data());
    return bytes;
}

QByteArray beFloat(float value)
{
    quint32 bits;
    std::memcpy(&bits, &value, 4);
    return be32(bits);
}

QByteArray le16(int value)
{
    QByteArray bytes(2, '\0');
    qToLittleEndian<quint16>(quint16(value), bytes.data());
    return bytes;
}

QByteArray actFile(const QByteArray& footer = QByteArray())
{
    QByteArray bytes;
    for (int k = 0; k < 256; ++k) {
        const QRGBPal c = fileColour(k);
        bytes.append(char(c.r)).append(char(c.g)).append(char(c.b));
    }
    return bytes + footer;
}

QByteArray riffFile(int colours)
{
    QByteArray data = le16(0x300) + le16(colours);
    for (int k = 0; k < colours; ++k) {
        const QRGBPal c = fileColour(k);
        data.append(char(c.r)).append(char(c.g)).append(char(c.b)).append(char(0));
    }
    return "RIFF" + le32(quint32(4 + 8 + data.size())) + "PAL data" + le32(quint32(data.size())) + data;
}

QByteArray jascFile(int colours)
{
    QByteArray text = "JASC-PAL\r\n0100\r\n" + QByteArray::number(colours) + "\r\n";
    for (int k = 0; k < colours; ++k) {
        const QRGBPal c = fileColour(k);
        text +=
            QByteArray::number(c.r) + ' ' + QByteArray::number(c.g) + ' ' + QByteArray::number(c.b) + "\r\n";
    }
    return text;
}

QByteArray acoRecord(int space, int w, int x, int y, int z)
{
    return be16(space) + be16(w) + be16(x) + be16(y) + be16(z);
}

// Version 1: orange in RGB, a Lab colour that takes no entry, green in HSB, magenta in CMYK and a
// light grey; then, as newer files have it, a version 2 section with other colours and names.
QByteArray acoFile(bool withVersion2)
{
    QByteArray bytes = be16(1) + be16(5);
    bytes += acoRecord(0, 65535, 32896, 0, 0);
    bytes += acoRecord(7, 5000, 100, 100, 0);
    bytes += acoRecord(1, 21906, 65535, 65535, 0);
    bytes += acoRecord(2, 65535, 0, 65535, 65535);
    bytes += acoRecord(8, 2000, 0, 0, 0);
    if (withVersion2) {
        bytes += be16(2) + be16(1) + acoRecord(0, 0, 0, 65535, 0);
        bytes += be32(2) + QByteArray("\0A\0\0", 4);
    }
    return bytes;
}

QByteArray utf16Name(const char* name)
{
    QByteArray bytes = be16(int(std::strlen(name)) + 1);
    for (const char* p = name; *p; ++p)
        bytes += be16(*p);
    return bytes + be16(0);
}

QByteArray aseColour(const char* name, const QByteArray& model, const QList<float>& values)
{
    QByteArray data = utf16Name(name) + model;
    for (float value : values)
        data += beFloat(value);
    data += be16(2);
    return be16(1) + be32(quint32(data.size())) + data;
}

// A group around RGB orange, CMYK magenta, a Lab colour (no entry) and a grey, then an unknown
// block and a loose RGB colour with channels beyond the range.
QByteArray aseFile()
{
    const QByteArray groupName = utf16Name("Group");
    QByteArray blocks = be16(0xC001) + be32(quint32(groupName.size())) + groupName;
    blocks += aseColour("Orange", "RGB ", {1.0f, 0.5f, 0.0f});
    blocks += aseColour("Magenta", "CMYK", {0.0f, 1.0f, 0.0f, 0.0f});
    blocks += aseColour("Lab", "LAB ", {50.0f, 10.0f, 10.0f});
    blocks += aseColour("Grey", "Gray", {0.2f});
    blocks += be16(0xC002) + be32(0);
    blocks += be16(0x0099) + be32(5) + "abcde";
    blocks += aseColour("Wild", "RGB ", {1.5f, -0.25f, std::numeric_limits<float>::quiet_NaN()});
    return "ASEF" + be16(1) + be16(0) + be32(8) + blocks;
}

QByteArray painterFile()
{
    return "ROWS 16\nCOLS 16\nWIDTH 16\nHEIGHT 16\nTEXTHEIGHT 0\nSPACING 1\n"
           "R: 255, G:128, B:0 HV: 0.08, SV: 1.00, VV: 1.00\n"
           "this line is no colour\n"
           "R:10,G:20,B:30 A: 128\n"
           "R: 300, G: 0, B: 999\n";
}

// An 8-bit PCX of 2 by 1 pixels: header, run-length data, the 0x0C marker and the table.
QByteArray pcxFile(int bitsPerPixel = 8, int planes = 1, bool withTable = true)
{
    QByteArray header(128, '\0');
    header[0] = 0x0A;
    header[1] = 5;
    header[2] = 1;
    header[3] = char(bitsPerPixel);
    header[8] = 1; // xmax
    header[65] = char(planes);
    header[66] = 2; // bytes per line
    QByteArray bytes = header + QByteArray("\x01\x02", 2);
    if (!withTable) return bytes;
    bytes += char(0x0C);
    for (int k = 0; k < 256; ++k) {
        const QRGBPal c = fileColour(k);
        bytes.append(char(c.r)).append(char(c.g)).append(char(c.b));
    }
    return bytes;
}

QByteArray imageFile(const QImage& image, const char* format)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, format);
    return bytes;
}

QImage indexedImage(int colours)
{
    QImage image(4, 4, QImage::Format_Indexed8);
    QList<QRgb> table;
    for (int k = 0; k < colours; ++k)
        table << fileColour(k).toRgb();
    table[1] = qRgba(10, 20, 30, 128);
    image.setColorTable(table);
    for (int y = 0; y < 4; ++y)
        for (int x = 0; x < 4; ++x)
            image.setPixel(x, y, uint((x + y) % colours));
    return image;
}

template <typename Reader, typename... Args>
ReaderFactory reader(Args... args)
{
    return [=] { return std::make_unique<Reader>(args...); };
}

Table marked()
{
    Table table;
    table.fill(QRGBPal(1, 2, 3, 4));
    return table;
}

} // namespace

class tst_PaletteFiles : public QObject
{
    Q_OBJECT

    QTemporaryDir dir;

    QString write(const QString& name, const QByteArray& bytes)
    {
        const QString path = dir.filePath(name);
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(bytes) != bytes.size())
            qFatal("cannot write %s", qPrintable(path));
        return path;
    }

    // Reads a file through QRGBPalette; the table starts marked, so that untouched entries show.
    static bool load(const QString& path, Table& table, QString* problem = nullptr)
    {
        table = marked();
        QRGBPalette palette(table.data());
        return palette.fromFile(path, problem);
    }

private Q_SLOTS:
    // What each reader makes of a file, entry by entry; colour 0 always turns clear.
    void reads_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<Entries>("entries");
        const auto clear = [](const QRGBPal& c) { return QRGBPal(c.r, c.g, c.b, 0); };
        const Entries act{
            {0, clear(fileColour(255))}, {1, fileColour(254)}, {128, fileColour(127)}, {255, fileColour(0)}};
        QTest::newRow("act of 768 bytes") << "a.act" << actFile() << act;
        QTest::newRow("act with a footer") << "a.act" << actFile(QByteArray("\x00\x10\xFF\xFF", 4)) << act;
        // The size in the chunk header counts 8 bytes that aren't colours: 255 colours are taken.
        QTest::newRow("riff of 256") << "r.pal" << riffFile(256)
                                     << Entries{{255, fileColour(0)},
                                                {100, fileColour(155)},
                                                {1, fileColour(254)},
                                                {0, QRGBPal(0, 0, 0, 0)}};
        QTest::newRow("riff of 16") << "r16.pal" << riffFile(16)
                                    << Entries{{255, fileColour(0)},
                                               {241, fileColour(14)},
                                               {240, QRGBPal(0, 0, 0, 255)},
                                               {0, QRGBPal(0, 0, 0, 0)}};
        // The other 240 entries stay cleared, alpha included.
        QTest::newRow("jasc") << "j.pal" << jascFile(16)
                              << Entries{{0, clear(fileColour(0))},
                                         {15, fileColour(15)},
                                         {16, QRGBPal(0, 0, 0, 0)},
                                         {255, QRGBPal(0, 0, 0, 0)}};
        QTest::newRow("jasc lines") << "lines.pal"
                                    << QByteArray("JASC-PAL\n0100\n\n\n5\n1 2 3\n4 5 6 7\n8 x 9\n300 0 256\n"
                                                  "1 2 3 \n10\t20\t30\r11 22 33\n")
                                    << Entries{{0, QRGBPal(1, 2, 3, 0)}, {1, QRGBPal(4, 5, 6, 7)},
                                               {2, QRGBPal(0, 0, 0, 0)}, {3, QRGBPal(255, 0, 255)},
                                               {4, QRGBPal(0, 0, 0, 0)}, {5, QRGBPal(10, 20, 30)},
                                               {6, QRGBPal(11, 22, 33)}};
        const Entries aco{{0, QRGBPal(255, 128, 0, 0)},
                          {1, QRGBPal(0, 255, 0)},
                          {2, QRGBPal(255, 0, 255)},
                          {3, QRGBPal(204, 204, 204)},
                          {4, QRGBPal(0, 0, 0, 0)}};
        QTest::newRow("aco version 1") << "s.aco" << acoFile(false) << aco;
        QTest::newRow("aco version 1 and 2") << "s.aco" << acoFile(true) << aco;
        QTest::newRow("ase") << "s.ase" << aseFile()
                             << Entries{{0, QRGBPal(255, 128, 0, 0)},
                                        {1, QRGBPal(255, 0, 255)},
                                        {2, QRGBPal(51, 51, 51)},
                                        {3, QRGBPal(255, 0, 0)},
                                        {4, QRGBPal(0, 0, 0, 0)}};
        QByteArray many = "ASEF" + be16(1) + be16(0) + be32(300);
        for (int k = 0; k < 300; ++k)
            many += aseColour("c", "Gray", {float(k % 256) / 255.0f});
        QTest::newRow("ase stops at 256 colours")
            << "many.ase" << many << Entries{{255, QRGBPal(255, 255, 255)}, {100, QRGBPal(100, 100, 100)}};
        QTest::newRow("painter") << "swatches.txt" << painterFile()
                                 << Entries{{0, QRGBPal(255, 128, 0, 0)},
                                            {1, QRGBPal(10, 20, 30, 128)},
                                            {2, QRGBPal(255, 0, 255)},
                                            {3, QRGBPal(0, 0, 0, 0)}};
    }

    void reads()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, bytes);
        QFETCH(Entries, entries);
        Table table = marked();
        QRGBPalette palette(table.data());
        QSignalSpy changing(&palette, &QRGBPalette::changing);
        QSignalSpy changed(&palette, &QRGBPalette::changed);
        QString problem;
        QVERIFY(palette.fromFile(write(name, bytes), &problem));
        QCOMPARE(problem, QString());
        for (const auto& [at, colour] : entries)
            QCOMPARE(table[at], colour);
        QCOMPARE(changing.count(), 1);
        QCOMPARE(changed.count(), 1);
    }

    // Broken files still read (the table cleared beyond what was taken), with a problem to show.
    void refused_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<int>("colours");
        const auto riffSized = [](int colours, quint32 size) {
            QByteArray bytes = riffFile(colours);
            qToLittleEndian<quint32>(size, bytes.data() + 16);
            return bytes;
        };
        QTest::newRow("riff of more than 256 colours") << "bad.pal" << riffSized(256, 1024 + 9) << 0;
        QTest::newRow("riff size of 4 GB") << "bad.pal" << riffSized(4, 0xFFFFFFFF) << 0;
        QTest::newRow("riff size below 8") << "bad.pal" << riffSized(4, 3) << 0;
        QTest::newRow("riff of another chunk") << "bad.pal" << riffFile(4).replace(8, 8, "PAL junk") << 0;
        QTest::newRow("aco version 2 alone")
            << "bad.aco" << QByteArray(be16(2) + be16(1) + acoRecord(0, 65535, 0, 0, 0)) << 0;
        QTest::newRow("aco count beyond the records")
            << "bad.aco"
            << QByteArray(be16(1) + be16(65535) + acoRecord(0, 65535, 0, 0, 0) + acoRecord(0, 0, 65535, 0, 0))
            << 2;
        QTest::newRow("Jasc text named .aco") << "bad.aco" << jascFile(4) << 0;
        QTest::newRow("ase version 2.0") << "bad.ase" << aseFile().replace(4, 2, be16(2)) << 0;
        QTest::newRow("ase version 1.1") << "bad.ase" << aseFile().replace(6, 2, be16(1)) << 0;
        QTest::newRow("ase of endless blocks of 4 GB")
            << "bad.ase"
            << QByteArray("ASEF" + be16(1) + be16(0) + be32(0xFFFFFFFF) + aseColour("A", "RGB ", {1, 0, 0}) +
                          be16(0x0055) + be32(0xFFFFFFFF) + "xy")
            << 1;
        QTest::newRow("ase colour cut short")
            << "bad.ase"
            << QByteArray("ASEF" + be16(1) + be16(0) + be32(1) + aseColour("A", "RGB ", {1, 0, 0}).left(20))
            << 0;
    }

    void refused()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, bytes);
        QFETCH(int, colours);
        Table table;
        QString problem;
        QVERIFY(load(write(name, bytes), table, &problem));
        QVERIFY(!problem.isEmpty());
        for (int i = colours; i < 256; ++i)
            QCOMPARE(table[i], QRGBPal(0, 0, 0, 0));
        if (colours > 1) QCOMPARE(table[1], QRGBPal(0, 255, 0));
    }

    void readerByNameAndContent_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QRGBPal>("colour1");
        const QRGBPal act1 = fileColour(254);
        QTest::newRow(".pal with JASC") << QStringLiteral("x.pal") << jascFile(4) << fileColour(1);
        QTest::newRow(".pal with RIFF") << QStringLiteral("x.pal") << riffFile(256) << act1;
        QTest::newRow(".act holding Jasc text") << QStringLiteral("x.act") << jascFile(4) << fileColour(1);
        QTest::newRow("no suffix, ASE") << QStringLiteral("x") << aseFile() << QRGBPal(255, 0, 255);
        QTest::newRow(".dat with ACT bytes") << QStringLiteral("x.dat") << actFile() << act1;
        QTest::newRow(".ACO in capitals") << QStringLiteral("x.ACO") << acoFile(false) << QRGBPal(0, 255, 0);
        QTest::newRow(".aco whatever the content")
            << QStringLiteral("y.aco") << QByteArray("RIFF" + acoFile(false)) << QRGBPal(0, 0, 0, 0);
        QTest::newRow(".txt without ROWS is ACT")
            << QStringLiteral("x.txt") << QByteArray("R: 1, G: 2, B: 3\n") << QRGBPal(0, 0, 0, 0);
        QTest::newRow("empty file") << QStringLiteral("empty.act") << QByteArray() << QRGBPal(0, 0, 0, 0);
    }

    void readerByNameAndContent()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, bytes);
        QFETCH(QRGBPal, colour1);
        Table table;
        QVERIFY(load(write(name, bytes), table));
        QCOMPARE(table[1], colour1);
        QCOMPARE(table[0].a, uchar(0));
    }

    void imageTables_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<int>("colours");
        QTest::newRow("png of 4 colours")
            << QStringLiteral("i.png") << imageFile(indexedImage(4), "PNG") << 4;
        QTest::newRow("bmp of 16 colours")
            << QStringLiteral("i.BMP") << imageFile(indexedImage(16), "BMP") << 16;
        QTest::newRow("pcx") << QStringLiteral("i.pcx") << pcxFile() << 256;
    }

    void imageTables()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, bytes);
        QFETCH(int, colours);
        Table table;
        QString problem;
        QVERIFY2(load(write(name, bytes), table, &problem), qPrintable(problem));
        const QRGBPal first = fileColour(0);
        QCOMPARE(table[0], QRGBPal(first.r, first.g, first.b, 0));
        // BMP keeps no alpha in its table.
        if (colours < 256)
            QCOMPARE(table[1],
                     name.endsWith(QLatin1String("png")) ? QRGBPal(10, 20, 30, 128) : QRGBPal(10, 20, 30));
        QCOMPARE(table[2], fileColour(2));
        QCOMPARE(table[colours - 1], fileColour(colours - 1));
        if (colours < 256) QCOMPARE(table[colours], QRGBPal(1, 2, 3, 4));
    }

    void imageWithoutTable_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("bytes");
        QImage rgb(3, 3, QImage::Format_RGB32);
        rgb.fill(Qt::red);
        QTest::newRow("rgb png") << QStringLiteral("rgb.png") << imageFile(rgb, "PNG");
        QTest::newRow("24-bit pcx") << QStringLiteral("rgb.pcx") << pcxFile(8, 3);
        QByteArray giant = pcxFile();
        giant.replace(8, 4, le16(59999) + le16(59999));
        QTest::newRow("pcx claiming 60000 by 60000") << QStringLiteral("giant.pcx") << giant;
        QByteArray tall = pcxFile();
        tall.replace(10, 2, le16(39999));
        QTest::newRow("pcx of 2 by 40000 in 900 bytes") << QStringLiteral("tall.pcx") << tall;
        QTest::newRow("pcx without table") << QStringLiteral("notable.pcx") << pcxFile(8, 1, false);
        QTest::newRow("not an image") << QStringLiteral("text.png") << QByteArray("JASC-PAL\n0100\n");
        QTest::newRow("act bytes named .pcx") << QStringLiteral("act.pcx") << actFile();
    }

    void imageWithoutTable()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, bytes);
        Table table = marked();
        QRGBPalette palette(table.data());
        QSignalSpy changed(&palette, &QRGBPalette::changed);
        QString problem;
        QVERIFY(!palette.fromFile(write(name, bytes), &problem));
        QVERIFY(!problem.isEmpty());
        QCOMPARE(changed.count(), 0);
        for (int i = 0; i < 256; ++i)
            QCOMPARE(table[i], QRGBPal(1, 2, 3, 4));
    }

    void missingFile()
    {
        Table table = marked();
        QRGBPalette palette(table.data());
        QSignalSpy changed(&palette, &QRGBPalette::changed);
        QString problem;
        QVERIFY(!palette.fromFile(dir.filePath(QStringLiteral("absent.act")), &problem));
        QCOMPARE(problem, QStringLiteral("no such file"));
        QCOMPARE(changed.count(), 0);
        QCOMPARE(table[0], QRGBPal(1, 2, 3, 4));
    }

    void actRoundTrip()
    {
        Table source;
        for (int i = 0; i < 256; ++i)
            source[i] = QRGBPal(uchar(i * 3), uchar(i ^ 0x55), uchar(255 - i), uchar(i));
        const QString path = dir.filePath(QStringLiteral("round.act"));
        QVERIFY(QRGBPalette(source.data()).toFile(path));
        QCOMPARE(QFileInfo(path).size(), 768);
        Table table;
        QVERIFY(load(path, table));
        QCOMPARE(table[0], QRGBPal(source[0].r, source[0].g, source[0].b, 0));
        for (int i = 1; i < 256; ++i)
            QCOMPARE(table[i], QRGBPal(source[i].r, source[i].g, source[i].b, 255));

        // Any suffix still gives an ACT file.
        const QString other = dir.filePath(QStringLiteral("round.pal"));
        QVERIFY(QRGBPalette(source.data()).toFile(other));
        QFile a(path), b(other);
        QVERIFY(a.open(QIODevice::ReadOnly) && b.open(QIODevice::ReadOnly));
        QCOMPARE(a.readAll(), b.readAll());
    }

    void actWriterOrder()
    {
        Table table{};
        table[255] = QRGBPal(1, 2, 3);
        table[0] = QRGBPal(7, 8, 9, 0);
        QByteArray bytes;
        QBuffer buffer(&bytes);
        QVERIFY(buffer.open(QIODevice::WriteOnly));
        QVERIFY(QACTPalette::write(&buffer, table.data()));
        QCOMPARE(bytes.left(3), QByteArray("\x01\x02\x03", 3));
        QCOMPARE(bytes.right(3), QByteArray("\x07\x08\x09", 3));
    }

    void failedSaveKeepsTheOldFile()
    {
        const QString path = write(QStringLiteral("keep.act"), actFile());
        Table table{};
        QVERIFY(!QRGBPalette(table.data()).toFile(dir.filePath(QStringLiteral("no/such/folder/x.act"))));

        // A file size limit below 768 bytes makes the write itself fail, even for root.
        struct rlimit old;
        QCOMPARE(getrlimit(RLIMIT_FSIZE, &old), 0);
        struct sigaction ignore = {}, previous = {};
        ignore.sa_handler = SIG_IGN;
        sigaction(SIGXFSZ, &ignore, &previous);
        struct rlimit limited = old;
        limited.rlim_cur = 100;
        QCOMPARE(setrlimit(RLIMIT_FSIZE, &limited), 0);
        const bool saved = QRGBPalette(table.data()).toFile(path);
        setrlimit(RLIMIT_FSIZE, &old);
        sigaction(SIGXFSZ, &previous, nullptr);
        QVERIFY(!saved);

        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), actFile());
        QCOMPARE(QDir(dir.path()).entryList(QStringList{QStringLiteral("keep.act*")}, QDir::Files),
                 QStringList{QStringLiteral("keep.act")});
    }

    // Every prefix of every valid file, straight to its reader: no crash, no read beyond the bytes, and
    // the whole file is accepted.
    void truncatedInput_data()
    {
        QTest::addColumn<ReaderFactory>("reader");
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<int>("acceptedFrom");
        QTest::newRow("act") << reader<QACTPalette>() << actFile(QByteArray(4, 'x')) << 768;
        QTest::newRow("riff") << reader<QRIFFPalette>() << riffFile(256) << 1044;
        QTest::newRow("jasc") << reader<QJascPalette>() << jascFile(256) << 14;
        QTest::newRow("aco") << reader<QACOPalette>() << acoFile(true) << 54;
        QTest::newRow("ase") << reader<QASEPalette>() << aseFile() << int(aseFile().size());
        QTest::newRow("painter") << reader<QPainterPalette>() << painterFile()
                                 << int(painterFile().indexOf("B:0") + 3);
        QTest::newRow("pcx") << reader<QIndexedImagePalette>(QStringLiteral("pcx")) << pcxFile() << -1;
        QTest::newRow("png") << reader<QIndexedImagePalette>(QStringLiteral("png"))
                             << imageFile(indexedImage(4), "PNG") << -1;
        QTest::newRow("bmp") << reader<QIndexedImagePalette>(QStringLiteral("bmp"))
                             << imageFile(indexedImage(16), "BMP") << -1;
    }

    void truncatedInput()
    {
        QFETCH(ReaderFactory, reader);
        QFETCH(QByteArray, bytes);
        QFETCH(int, acceptedFrom);
        for (int size = 0; size <= bytes.size(); ++size) {
            // A copy of exactly this size, so that a read past it is caught by the sanitizers.
            QByteArray prefix(bytes.constData(), size);
            QBuffer buffer(&prefix);
            QVERIFY(buffer.open(QIODevice::ReadOnly));
            Table table{};
            const std::unique_ptr<QAbstractPalette> palette = reader();
            const bool accepted = palette->read(&buffer, table.data());
            QCOMPARE(accepted, palette->errorString().isEmpty());
            if (size == bytes.size()) QVERIFY2(accepted, qPrintable(palette->errorString()));
            if (acceptedFrom >= 0) QCOMPARE(accepted, size >= acceptedFrom);
        }
    }

    void hostileInput_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("jasc of 2 MB of colour lines")
            << QStringLiteral("big.pal") << QByteArray("JASC-PAL\n0100\n256\n" + QByteArray(2 << 20, '\n'));
        QTest::newRow("painter of one endless line")
            << QStringLiteral("big.txt") << QByteArray("ROWS " + QByteArray(2 << 20, '9'));
        QTest::newRow("aco of 65535 lab colours")
            << QStringLiteral("lab.aco")
            << QByteArray(be16(1) + be16(65535) + acoRecord(7, 1, 2, 3, 4).repeated(300));
        QTest::newRow("ase with a name of 65535 characters")
            << QStringLiteral("name.ase")
            << QByteArray("ASEF" + be16(1) + be16(0) + be32(1) + be16(1) + be32(10) + be16(65535) + "RGB ");
        QTest::newRow("aco with grey beyond black")
            << QStringLiteral("grey.aco") << QByteArray(be16(1) + be16(1) + acoRecord(8, 65535, 0, 0, 0));
        QTest::newRow("png claiming 65535 by 65535") << QStringLiteral("huge.png") << [] {
            QByteArray png = imageFile(indexedImage(4), "PNG");
            png.replace(16, 8, be32(65535) + be32(65535));
            return png;
        }();
    }

    void hostileInput()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, bytes);
        Table table;
        QElapsedTimer timer;
        timer.start();
        load(write(name, bytes), table);
        QVERIFY(timer.elapsed() < 5000);
        QVERIFY(table[0].a == 0 || table[0] == QRGBPal(1, 2, 3, 4));
    }

    void realPalettes()
    {
        TAVREL_REQUIRE_TESTDATA();
        const QStringList files = TestData::files({QStringLiteral("*.act"), QStringLiteral("*.ACT")});
        if (files.isEmpty()) QSKIP("the test data holds no .act palette");
        for (const QString& path : files) {
            Table table;
            QString problem;
            QVERIFY2(load(path, table, &problem), qPrintable(path));
            QVERIFY2(problem.isEmpty(), qPrintable(path + QStringLiteral(": ") + problem));
            QCOMPARE(table[0].a, uchar(0));
            for (int i = 1; i < 256; ++i)
                QCOMPARE(table[i].a, uchar(255));
            // Writing it again gives the same 256 colours, byte for byte.
            const QString copy = dir.filePath(QStringLiteral("copy.act"));
            QVERIFY(QRGBPalette(table.data()).toFile(copy));
            QFile original(path), written(copy);
            QVERIFY(original.open(QIODevice::ReadOnly) && written.open(QIODevice::ReadOnly));
            QCOMPARE(written.readAll(), original.read(768));
        }
    }
};

QTEST_GUILESS_MAIN(tst_PaletteFiles)
#include "tst_PaletteFiles.moc"
