// "tavrel-cli pal convert": the real executable turning palette files into ACT files.

#include "CliTest.h"

#include <QBuffer>
#include <QImage>

using namespace CliRunner;

class tst_CliPal : public QObject
{
    Q_OBJECT

    QTemporaryDir dir;

    QString write(const QString& name, const QByteArray& bytes) { return CliTest::write(dir, name, bytes); }

    // The ACT bytes of a table whose colour i is (i, 2i, 255 - i): listed from colour 255 down.
    static QByteArray expectedAct(int colours)
    {
        QByteArray bytes(768, '\0');
        for (int i = 0; i < colours; ++i) {
            const int at = 3 * (255 - i);
            bytes[at] = char(i);
            bytes[at + 1] = char(2 * i);
            bytes[at + 2] = char(255 - i);
        }
        return bytes;
    }

private Q_SLOTS:
    void initTestCase() { TAVREL_REQUIRE_CLI(); }

    void convert_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QByteArray>("expected");
        QByteArray jasc = "JASC-PAL\n0100\n4\n";
        for (int i = 0; i < 4; ++i)
            jasc += QByteArray::number(i) + ' ' + QByteArray::number(2 * i) + ' ' +
                    QByteArray::number(255 - i) + '\n';
        QTest::newRow("jasc") << QStringLiteral("in.pal") << jasc << expectedAct(4);
        QTest::newRow("act to act") << QStringLiteral("in.act") << expectedAct(256) << expectedAct(256);

        QImage image(2, 2, QImage::Format_Indexed8);
        QList<QRgb> table;
        for (int i = 0; i < 16; ++i)
            table << qRgb(i, 2 * i, 255 - i);
        image.setColorTable(table);
        image.fill(3);
        QByteArray png;
        QBuffer buffer(&png);
        buffer.open(QIODevice::WriteOnly);
        image.save(&buffer, "PNG");
        QTest::newRow("png table") << QStringLiteral("in.png") << png << expectedAct(16);
    }

    void convert()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, bytes);
        QFETCH(QByteArray, expected);
        const QString input = write(name, bytes);
        const QString output = dir.filePath(QStringLiteral("out.act"));
        QFile::remove(output);
        const Result result = run({QStringLiteral("pal"), QStringLiteral("convert"), input, output});
        QCOMPARE(result.exitCode, 0);
        QVERIFY2(result.err.isEmpty(), qPrintable(result.err));
        QVERIFY(result.out.contains(output));
        QCOMPARE(readBytes(output), expected);
    }

    void failures_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("outputName");
        QTest::addColumn<QString>("errContains");
        QTest::newRow("short act") << QStringLiteral("short.act") << QByteArray(100, 'x')
                                   << QStringLiteral("o.act")
                                   << QStringLiteral("short.act: an ACT palette needs 768 bytes");
        QTest::newRow("unknown jasc version")
            << QStringLiteral("v.pal") << QByteArray("JASC-PAL\n0200\n0\n") << QStringLiteral("o.act")
            << QStringLiteral("v.pal: unknown JASC-PAL version");
        QTest::newRow("true-colour png")
            << QStringLiteral("rgb.png") << QByteArray() << QStringLiteral("o.act")
            << QStringLiteral("rgb.png: not a colour-indexed image");
        QTest::newRow("output folder missing")
            << QStringLiteral("fine.act") << QByteArray(768, '\1') << QStringLiteral("missing/o.act")
            << QStringLiteral("missing/o.act: can't be written");
    }

    void failures()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, bytes);
        QFETCH(QString, outputName);
        QFETCH(QString, errContains);
        if (name.endsWith(QLatin1String(".png"))) {
            QImage rgb(2, 2, QImage::Format_RGB32);
            rgb.fill(Qt::blue);
            QVERIFY(rgb.save(dir.filePath(name)));
        } else {
            write(name, bytes);
        }
        const QString output = dir.filePath(outputName);
        const Result result =
            run({QStringLiteral("pal"), QStringLiteral("convert"), dir.filePath(name), output});
        QCOMPARE(result.exitCode, 1);
        QVERIFY2(result.err.startsWith(QStringLiteral("tavrel-cli: ")), qPrintable(result.err));
        QVERIFY2(result.err.contains(errContains), qPrintable(result.err));
        QVERIFY(result.out.isEmpty());
        QVERIFY(!QFile::exists(output));
    }

    void realPalettesConvertToThemselves()
    {
        TAVREL_REQUIRE_TESTDATA();
        const QStringList files = TestData::files({QStringLiteral("*.act")});
        if (files.isEmpty()) QSKIP("the test data holds no .act palette");
        const QString output = dir.filePath(QStringLiteral("real.act"));
        const Result result = run({QStringLiteral("pal"), QStringLiteral("convert"), files.first(), output});
        QCOMPARE(result.exitCode, 0);
        QCOMPARE(readBytes(output), readBytes(files.first()).left(768));
    }
};

QTEST_GUILESS_MAIN(tst_CliPal)
#include "tst_CliPal.moc"
