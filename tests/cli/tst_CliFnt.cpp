// "tavrel-cli fnt convert": the real executable turning old fonts into a definitions file and an SFF.

#include "CliTest.h"
#include "QSprite.h"
#include "QSprites.h"

#include <QFileInfo>
#include <QImage>
#include <QtEndian>

using namespace CliRunner;

class tst_CliFnt : public QObject
{
    Q_OBJECT

    QTemporaryDir dir;

    QString write(const QString& name, const QByteArray& bytes) { return CliTest::write(dir, name, bytes); }

    // A font of two glyphs over a 6 by 2 image of 16 colours, as a PCX by hand: one run per row.
    static QByteArray smallFont()
    {
        QByteArray pcx(128, '\0');
        uchar* h = reinterpret_cast<uchar*>(pcx.data());
        h[0] = 10;
        h[1] = 5;
        h[2] = 1;
        h[3] = 8;
        qToLittleEndian<quint16>(5, h + 8);
        qToLittleEndian<quint16>(1, h + 10);
        h[65] = 1;
        qToLittleEndian<quint16>(6, h + 66);
        pcx += QByteArray("\xC6\xF1\xC6\xF2", 4);
        pcx += '\x0C';
        for (int i = 0; i < 256; ++i)
            pcx += QByteArray(3, char(i));
        const QByteArray text = "[Def]\r\nType = Variable\r\nSize = 2,2\r\nSpacing = 1,1\r\nColors = 16\r\n"
                                "Offset = 0,0\r\n[Map]\r\n0x30 0 2\r\n1 3 3\r\n";
        QByteArray header(64, '\0');
        std::memcpy(header.data(), "ElecbyteFnt", 12);
        uchar* fields = reinterpret_cast<uchar*>(header.data());
        qToLittleEndian<quint32>(64, fields + 16);
        qToLittleEndian<quint32>(quint32(pcx.size()), fields + 20);
        qToLittleEndian<quint32>(quint32(64 + pcx.size()), fields + 24);
        qToLittleEndian<quint32>(quint32(text.size()), fields + 28);
        return header + pcx + text;
    }

private Q_SLOTS:
    void initTestCase() { TAVREL_REQUIRE_CLI(); }

    void smallFontConverts()
    {
        const QString input = write(QStringLiteral("tiny.fnt"), smallFont());
        const QString out = dir.filePath(QStringLiteral("made/here"));
        const Result result = run({QStringLiteral("fnt"), QStringLiteral("convert"), input, out});
        QCOMPARE(result.exitCode, 0);
        QVERIFY2(result.err.isEmpty(), qPrintable(result.err));
        QVERIFY(result.out.contains(QStringLiteral("2 glyphs, 16 palettes")));
        // Definitions files are written with the line end of the game's own files.
        QCOMPARE(
            readBytes(out + QStringLiteral("/tiny.def")),
            QByteArray("[FNT v2]\r\nfntversion = 2,00\r\nname = \"tiny\"\r\n\r\n[Def]\r\ntype = Bitmap\r\n"
                       "size = 2,2\r\nspacing = 1,1\r\noffset = 0,0\r\nfile = tiny.sff\r\n"));
        QSprites sprites(nullptr, 0, false);
        QVERIFY(sprites.fromFile(out + QStringLiteral("/tiny.sff")));
        QCOMPARE(sprites.version(), quint32(QSprites::Version_200));
        QCOMPARE(sprites.count(), 2u);
        QCOMPARE(sprites.paletteCount(), 16u);
        const QImage zero = sprites.at(0)->image();
        QCOMPARE(sprites.at(0)->itemIndex(), int('0'));
        QCOMPARE(zero.size(), QSize(2, 2));
        QCOMPARE(zero.pixelIndex(1, 0), 0xF1);
        QCOMPARE(zero.pixelIndex(0, 1), 0xF2);
        QCOMPARE(sprites.at(1)->itemIndex(), int('1'));
        QCOMPARE(sprites.at(1)->image().size(), QSize(3, 2));
    }

    void realFonts_data()
    {
        QTest::addColumn<QString>("path");
        for (const QString& path : TestData::files({QStringLiteral("*.fnt")}))
            QTest::newRow(qPrintable(QDir(TestData::root()).relativeFilePath(path))) << path;
    }

    void realFonts()
    {
        TAVREL_REQUIRE_TESTDATA();
        QFETCH(QString, path);
        const QString out = dir.filePath(QStringLiteral("real"));
        const Result result = run({QStringLiteral("fnt"), QStringLiteral("convert"), path, out});
        QCOMPARE(result.exitCode, 0);
        QVERIFY2(result.err.isEmpty(), qPrintable(result.err));
        const QString base = out + QLatin1Char('/') + QFileInfo(path).completeBaseName();
        QVERIFY(readBytes(base + QStringLiteral(".def")).startsWith("[FNT v2]\r\nfntversion = 2,00\r\n"));
        QSprites sprites(nullptr, 0, false);
        QVERIFY(sprites.fromFile(base + QStringLiteral(".sff")));
        QVERIFY(sprites.count() > 0);
        QVERIFY(result.out.contains(QStringLiteral("(%1 glyphs").arg(sprites.count())));
    }

    void failures_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QString>("errContains");
        const QByteArray font = smallFont();
        const QString cut = write(QStringLiteral("cut.fnt"), font.left(font.size() - 10));
        const QString wrong =
            write(QStringLiteral("wrong.fnt"), QByteArray("ElecbyteSpr").append(font.mid(11)));
        const QString out = dir.filePath(QStringLiteral("failed"));
        QTest::newRow("truncated") << QStringList{QStringLiteral("convert"), cut, out} << 1
                                   << QStringLiteral("cut.fnt: is not a font file or is damaged");
        QTest::newRow("wrong magic") << QStringList{QStringLiteral("convert"), wrong, out} << 1
                                     << QStringLiteral("wrong.fnt: is not a font file or is damaged");
        QTest::newRow("missing") << QStringList{QStringLiteral("convert"), dir.filePath("none.fnt"), out} << 1
                                 << QStringLiteral("none.fnt: no such file");
    }

    void failures()
    {
        QFETCH(QStringList, arguments);
        const Result result = run(QStringList{QStringLiteral("fnt")} + arguments);
        QTEST(result.exitCode, "exitCode");
        QFETCH(QString, errContains);
        QVERIFY2(result.err.contains(errContains, Qt::CaseInsensitive), qPrintable(result.err));
        QVERIFY(!QFileInfo::exists(dir.filePath(QStringLiteral("failed"))));
    }
};

QTEST_GUILESS_MAIN(tst_CliFnt)
#include "tst_CliFnt.moc"
