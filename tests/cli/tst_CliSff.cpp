// "tavrel-cli sff": the real executable on a file the test builds and on the real content.

#include "CliTest.h"
#include "QLZ5Codec.h"
#include "QProjectContext.h"
#include "QRLE8Codec.h"
#include "QSFFInfo.h"
#include "QSprites.h"

#include <QImage>
#include <QJsonArray>
#include <QJsonObject>
#include <QtEndian>

#include <zlib.h>

using namespace CliRunner;

namespace {

void put32(QByteArray& bytes, int at, quint32 value)
{
    qToLittleEndian<quint32>(value, bytes.data() + at);
}

void put16(QByteArray& bytes, int at, quint16 value)
{
    qToLittleEndian<quint16>(value, bytes.data() + at);
}

QImage indexed(int width, int height, int seed)
{
    QImage image(width, height, QImage::Format_Indexed8);
    image.setColorCount(256);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            image.scanLine(y)[x] = uchar((x * 3 + y + seed) % 31);
    return image;
}

QByteArray unpadded(const QImage& image)
{
    QByteArray bytes;
    for (int y = 0; y < image.height(); ++y)
        bytes.append(reinterpret_cast<const char*>(image.constScanLine(y)), image.width());
    return bytes;
}

// A version 2.01 file: one 256-colour palette (1, 1), then sprites (group, 0) as RLE8 5 x 3, (1, 1) as
// LZ5 7 x 2, and (2, 0) linked to sprite 0. With group 0 it is a character's; with another, sprite 0
// can't have the palette of group 1 in version 1.01, and nothing can be sorted before it.
QByteArray sampleFile(int group = 0)
{
    const QByteArray rle = encodeRLE8(indexed(5, 3, 0));
    const QByteArray lz5 = encodeLZ5(indexed(7, 2, 4));
    QByteArray colours;
    for (int i = 0; i < 256; ++i)
        for (int channel : {i, i / 2, 255 - i, 255})
            colours += char(channel);
    QByteArray ldata = colours;
    QByteArray nodes(3 * 28, '\0');
    const auto node = [&](int n, int group, int index, int w, int h, int format, int link,
                          const QByteArray& block) {
        const int at = n * 28;
        put16(nodes, at, quint16(group));
        put16(nodes, at + 2, quint16(index));
        put16(nodes, at + 4, quint16(w));
        put16(nodes, at + 6, quint16(h));
        put16(nodes, at + 12, quint16(link));
        nodes[at + 14] = char(format);
        nodes[at + 15] = 8;
        put32(nodes, at + 16, quint32(ldata.size()));
        put32(nodes, at + 20, block.isEmpty() ? 0 : quint32(block.size() + 4));
        if (!block.isEmpty()) {
            QByteArray size(4, '\0');
            put32(size, 0, quint32(w * h));
            ldata += size + block;
        }
    };
    node(0, group, 0, 5, 3, 2, 0, rle);
    node(1, 1, 1, 7, 2, 4, 0, lz5);
    node(2, 2, 0, 5, 3, 1, 0, QByteArray());
    QByteArray palette(16, '\0');
    put16(palette, 0, 1);
    put16(palette, 2, 1);
    put16(palette, 4, 256);
    put32(palette, 12, 1024);
    QByteArray header(512, '\0');
    header.replace(0, 12, QByteArray("ElecbyteSpr", 12));
    put32(header, 12, 0x02000100);
    put32(header, 36, 528);
    put32(header, 40, 3);
    put32(header, 44, 512);
    put32(header, 48, 1);
    put32(header, 52, 528 + 84);
    put32(header, 56, quint32(ldata.size()));
    put32(header, 60, quint32(528 + 84 + ldata.size()));
    return header + palette + nodes + ldata;
}

// The kind of content that a file is read for, as "sff --type" names it.
class KindOnly : public QProjectContext
{
public:
    explicit KindOnly(QProjectType kind) : kind(kind) {}
    QProjectType projectType() const override { return kind; }
    quint32 mugenVersion() const override { return 0x1010000; }
    QMessageList* messageList() const override { return nullptr; }

private:
    QProjectType kind;
};

} // namespace

class tst_CliSff : public QObject
{
    Q_OBJECT

    QTemporaryDir dir;
    QString sample;

private Q_SLOTS:
    void initTestCase()
    {
        TAVREL_REQUIRE_CLI();
        sample = CliTest::write(dir, QStringLiteral("sample.sff"), sampleFile());
    }

    void info()
    {
        const Result text = run({"sff", "info", sample});
        QCOMPARE(text.exitCode, 0);
        QVERIFY2(text.out.contains("version: 2.01\nsprites: 3\npalettes: 1\n"), qPrintable(text.out));
        QVERIFY(text.out.contains("format lz5: 1\nformat rle8: 1\nlinked sprites: 1\n"));
        const Result json = run({"sff", "info", sample, "--json"});
        const QJsonObject root = CliTest::json(json).object();
        QCOMPARE(root.value("sprites").toInt(), 3);
        QCOMPARE(root.value("formats").toObject().value("rle8").toInt(), 1);
        QCOMPARE(root.value("linkedSprites").toInt(), 1);
    }

    void list()
    {
        const Result text = run({"sff", "list", sample});
        QCOMPARE(text.exitCode, 0);
        const QStringList lines = text.out.split('\n', Qt::SkipEmptyParts);
        QCOMPARE(lines.size(), 4);
        QCOMPARE(lines.at(1), QStringLiteral("0\t0\t0\t0\t0\t5\t3\trle8\t8\t0\tnone\t0"));
        QCOMPARE(lines.at(3), QStringLiteral("2\t2\t0\t0\t0\t5\t3\tnone\t8\t0\t0\t0"));
        const QJsonArray rows = CliTest::json(run({"sff", "list", sample, "--json"})).array();
        QCOMPARE(rows.size(), 3);
        QCOMPARE(rows.at(1).toObject().value("format").toString(), QStringLiteral("lz5"));
        QVERIFY(rows.at(0).toObject().value("link").isNull());
        QCOMPARE(rows.at(2).toObject().value("link").toInt(), 0);
    }

    void decode()
    {
        const Result result = run({"sff", "decode", sample, "--json"});
        QCOMPARE(result.exitCode, 0);
        const QJsonObject root = CliTest::json(result).object();
        const QJsonArray sums = root.value("sprites").toArray();
        QCOMPARE(sums.size(), 3);
        const auto crc = [](const QByteArray& bytes) {
            return QStringLiteral("%1").arg(
                quint32(crc32(0, reinterpret_cast<const Bytef*>(bytes.constData()), uInt(bytes.size()))), 8,
                16, QLatin1Char('0'));
        };
        QCOMPARE(sums.at(0).toObject().value("crc32").toString(), crc(unpadded(indexed(5, 3, 0))));
        QCOMPARE(sums.at(1).toObject().value("crc32").toString(), crc(unpadded(indexed(7, 2, 4))));
        QCOMPARE(sums.at(2).toObject().value("crc32").toString(), crc(unpadded(indexed(5, 3, 0))));
        QVERIFY(root.contains("milliseconds"));
    }

    void extract()
    {
        const QString out = dir.filePath("extracted");
        const Result result = run({"sff", "extract", sample, out});
        QCOMPARE(result.exitCode, 0);
        const QImage first(out + "/00000_0_0.png");
        QCOMPARE(first.format(), QImage::Format_Indexed8);
        QCOMPARE(first.size(), QSize(5, 3));
        QCOMPARE(first.pixelIndex(2, 1), indexed(5, 3, 0).pixelIndex(2, 1));
        QCOMPARE(first.color(7), qRgb(7, 3, 248));
        QVERIFY(QFile::exists(out + "/00002_2_0.png"));
        QFile act(out + "/palettes/00000_1_1.act");
        QVERIFY(act.open(QIODevice::ReadOnly));
        QCOMPARE(act.size(), qint64(768));
    }

    // Every version keeps the pixels. The kind of file decides whether version 1.01's rule for the
    // character's palette applies: sample file 5 has no 0,0 or 9000,0 sprite.
    void convert_data()
    {
        QTest::addColumn<int>("file");
        QTest::addColumn<QString>("options");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QString>("error");
        QTest::newRow("1.01") << 0 << "--version 1.01" << 0 << QString();
        QTest::newRow("2.00") << 0 << "--version 2.00" << 0 << QString();
        QTest::newRow("2.01") << 0 << "--version 2.01" << 0 << QString();
        const QString old = QStringLiteral("--version 1.01 ");
        QTest::newRow("a file without 9000,0 is a stage's") << 5 << old + "--reorder" << 0 << QString();
        QTest::newRow("stage") << 5 << old + "--type stage" << 0 << QString();
        QTest::newRow("storyboard") << 5 << old + "--type=storyboard --reorder" << 0 << QString();
        QTest::newRow("fightfx") << 5 << old + "--type fightfx" << 0 << QString();
        // Sorted by group, sprite (1, 1) comes first, still with no 0,0 or 9000,0 to stand behind.
        QTest::newRow("character") << 5 << old + "--type character --reorder" << 1
                                   << "can't give the character's palette to these sprites where they stand: "
                                      "#0 (1, 1)";
        QTest::newRow("character, without --reorder")
            << 5 << old + "--type character" << 1 << "(--reorder lets the sprites be sorted)";
        QTest::newRow("unknown kind") << 5 << old + "--type chars" << 2
                                      << "--type takes character, stage, storyboard, font, system or fightfx";
        QTest::newRow("no kind") << 5 << old + "--type" << 2 << QString();
    }

    void convert()
    {
        QFETCH(int, file);
        QFETCH(QString, options);
        QFETCH(int, exitCode);
        QFETCH(QString, error);
        const QString in = CliTest::write(dir, "in.sff", sampleFile(file));
        const QString out = dir.filePath("converted.sff");
        QFile::remove(out);
        const Result result = run(QStringList{"sff", "convert", in, out} + options.split(' '));
        QCOMPARE(result.exitCode, exitCode);
        QVERIFY2(result.err.contains(error), qPrintable(result.err));
        QCOMPARE(QFile::exists(out), exitCode == 0);
        if (exitCode != 0) return;
        QVERIFY(result.out.contains("version " + options.section(' ', 1, 1)));
        const Result before = run({"sff", "decode", in});
        const Result after = run({"sff", "decode", out});
        QCOMPARE(after.out.section('\n', 0, 2), before.out.section('\n', 0, 2));
    }

    void help()
    {
        const Result result = run({"help", "sff"});
        QCOMPARE(result.exitCode, 0);
        QVERIFY(result.out.contains("--type character|stage|storyboard|font|system|fightfx"));
        QVERIFY(result.out.contains("sprite 9000,0 is a\n  character's"));
    }

    void errors()
    {
        QCOMPARE(run({"sff", "convert", sample, dir.filePath("x.sff"), "--version", "3.0"}).exitCode, 2);
        const Result result = run({"sff", "list", CliTest::write(dir, "text.sff", "not a sprite file")});
        QCOMPARE(result.exitCode, 1);
        QVERIFY(result.err.contains("not a sprite file"));
    }

    void realFile()
    {
        TAVREL_REQUIRE_TESTDATA();
        const QStringList files = TestData::files({"kfm.sff"});
        if (files.isEmpty()) QSKIP("no kfm.sff in the test data");
        const QString path = files.first();
        const Result info = run({"sff", "info", path, "--json"});
        QCOMPARE(info.exitCode, 0);
        const QJsonObject root = CliTest::json(info).object();
        QVERIFY(root.value("sprites").toInt() > 100);
        const Result decode = run({"sff", "decode", path});
        QCOMPARE(decode.exitCode, 0);
        QVERIFY(decode.out.contains(
            QStringLiteral("decoded %1 of %1 sprites").arg(root.value("sprites").toInt())));
        const QString copy = dir.filePath("kfm-copy.sff");
        QCOMPARE(run({"sff", "convert", path, copy}).exitCode, 0);
        QCOMPARE(run({"sff", "decode", copy}).out.section('\n', 0, -3), decode.out.section('\n', 0, -3));
    }

    void decodeSumsThePixels_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("kind");
        QTest::newRow("PNG8 and PNG32, shared and linked sprites") << "kof-h-cjk/chars/Chang/Chang.sff"
                                                                   << "character";
        QTest::newRow("PNG32") << "ikemen-screenpack/data/fight.sff"
                               << "system";
        QTest::newRow("PNG24, PNG8 and LZ5") << "ikemen-screenpack/stages/stageZ.sff"
                                             << "stage";
        QTest::newRow("LZ5, version 2.00") << "ikemen-go-2019/data/continue.sff"
                                           << "storyboard";
        QTest::newRow("PCX, version 1.01") << "elecbyte-mugen11/chars/kfm/intro.sff"
                                           << "storyboard";
    }

    // The sums that decode prints without making an image of each sprite are those of the pixels as the
    // model gives them: indexed rows without padding, true colour as RGBA.
    void decodeSumsThePixels()
    {
        TAVREL_REQUIRE_TESTDATA();
        QFETCH(QString, file);
        QFETCH(QString, kind);
        const QString path = TestData::root() + QLatin1Char('/') + file;
        if (!QFile::exists(path)) QSKIP("the file is not in the test data");
        const Result decode = run({"sff", "decode", path, "--type", kind});
        QCOMPARE(decode.exitCode, 0);
        const QStringList lines = decode.out.split('\n', Qt::SkipEmptyParts);
        KindOnly project(kind == QLatin1String("character") ? Character
                         : kind == QLatin1String("stage")   ? Stage
                         : kind == QLatin1String("system")  ? SystemScreen
                                                            : Storyboard);
        QSprites sprites(&project, 0, false);
        QVERIFY(sprites.fromFile(path));
        QCOMPARE(lines.size(), qsizetype(sprites.count()) + 1);
        for (uint i = 0; i < sprites.count(); ++i) {
            const QByteArray pixels = QSFFInfo::pixels(*sprites.at(i));
            const quint32 crc =
                quint32(crc32(0, reinterpret_cast<const Bytef*>(pixels.constData()), uInt(pixels.size())));
            QCOMPARE(lines.at(i), QStringLiteral("%1\t%2").arg(i).arg(crc, 8, 16, QLatin1Char('0')));
        }
    }
};

QTEST_GUILESS_MAIN(tst_CliSff)
#include "tst_CliSff.moc"
