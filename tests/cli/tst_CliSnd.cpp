// "tavrel-cli snd" and "resave" of sound files: the real executable on files made here and on the
// real content files.

#include "CliTest.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonObject>
#include <QtEndian>

using namespace CliRunner;

namespace {

QByteArray le32(quint32 value)
{
    QByteArray bytes(4, '\0');
    qToLittleEndian<quint32>(value, bytes.data());
    return bytes;
}

QByteArray le16(quint16 value)
{
    QByteArray bytes(2, '\0');
    qToLittleEndian<quint16>(value, bytes.data());
    return bytes;
}

QByteArray wav(quint16 channels, quint32 rate, quint16 bits, quint32 frames)
{
    const quint16 align = quint16(channels * bits / 8);
    const QByteArray samples(int(frames * align), '\x40');
    return "RIFF" + le32(36 + samples.size()) + "WAVE" + "fmt " + le32(16) + le16(1) + le16(channels) +
           le32(rate) + le32(rate * align) + le16(align) + le16(bits) + "data" +
           le32(quint32(samples.size())) + samples;
}

// A sound file whose records follow one another, as the game's own tools write them.
QByteArray snd(const QList<std::tuple<quint32, quint32, QByteArray>>& sounds)
{
    QByteArray bytes =
        QByteArray("ElecbyteSnd", 12) + le32(0x00010001) + le32(quint32(sounds.size())) + le32(512);
    bytes.append(QByteArray(512 - bytes.size(), '\0'));
    for (const auto& [group, sample, data] : sounds)
        bytes += le32(quint32(bytes.size() + 16 + data.size())) + le32(quint32(data.size())) + le32(group) +
                 le32(sample) + data;
    return bytes;
}

} // namespace

class tst_CliSnd : public QObject
{
    Q_OBJECT

    QTemporaryDir dir;

    QString write(const QString& name, const QByteArray& bytes) { return CliTest::write(dir, name, bytes); }

private Q_SLOTS:
    void initTestCase() { TAVREL_REQUIRE_CLI(); }

    void listJson()
    {
        const QString input = write(QStringLiteral("a.snd"),
                                    snd({{0, 1, wav(1, 11025, 8, 11025)}, {5, 2, wav(2, 22050, 16, 2205)}}));
        const Result result =
            run({QStringLiteral("snd"), QStringLiteral("list"), input, QStringLiteral("--json")});
        QCOMPARE(result.exitCode, 0);
        const QJsonArray rows = CliTest::json(result).array();
        QCOMPARE(rows.size(), 2);
        const QJsonObject second = rows.at(1).toObject();
        QCOMPARE(second.value(QStringLiteral("group")).toInt(), 5);
        QCOMPARE(second.value(QStringLiteral("sample")).toInt(), 2);
        QCOMPARE(second.value(QStringLiteral("channels")).toInt(), 2);
        QCOMPARE(second.value(QStringLiteral("rate")).toInt(), 22050);
        QCOMPARE(second.value(QStringLiteral("bits")).toInt(), 16);
        QCOMPARE(second.value(QStringLiteral("duration")).toDouble(), 0.1);
        QCOMPARE(rows.at(0).toObject().value(QStringLiteral("duration")).toDouble(), 1.0);

        const Result text = run({QStringLiteral("snd"), QStringLiteral("list"), input});
        QCOMPARE(text.exitCode, 0);
        QVERIFY2(text.out.contains(QStringLiteral("1\t5\t2\t")), qPrintable(text.out));
    }

    void extract()
    {
        const QByteArray a = wav(1, 8000, 8, 100);
        const QByteArray b = wav(1, 8000, 16, 50);
        const QString input =
            write(QStringLiteral("b.snd"), snd({{7, 0, a}, {7, 1, QByteArray()}, {12, 3, b}}));
        const QString out = dir.filePath(QStringLiteral("out"));
        const Result result = run({QStringLiteral("snd"), QStringLiteral("extract"), input, out});
        QCOMPARE(result.exitCode, 0);
        QCOMPARE(QDir(out).entryList(QDir::Files),
                 QStringList({QStringLiteral("00000_7_0.wav"), QStringLiteral("00001_7_1.wav"),
                              QStringLiteral("00002_12_3.wav")}));
        QCOMPARE(readBytes(out + QStringLiteral("/00000_7_0.wav")), a);
        QCOMPARE(readBytes(out + QStringLiteral("/00001_7_1.wav")), QByteArray());
        QCOMPARE(readBytes(out + QStringLiteral("/00002_12_3.wav")), b);
    }

    void failures_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QString>("errContains");
        QTest::newRow("not a sound file") << QByteArray(600, 'x') << QStringLiteral("signature");
    }

    // A sample cut short by the end of the file is read as far as it goes and told as a warning.
    void cutShort()
    {
        const QByteArray file = snd({{1, 1, wav(1, 8000, 8, 100)}}).left(600);
        const Result result =
            run({QStringLiteral("snd"), QStringLiteral("list"), write(QStringLiteral("cut.snd"), file)});
        QCOMPARE(result.exitCode, 0);
        QVERIFY2(result.err.contains(
                     QLatin1String("warning: The sample of sound #0 runs past the end of the file: "
                                   "72 of its 144 bytes are there.")),
                 qPrintable(result.err));
        QVERIFY2(result.out.contains(QLatin1String("\n0\t1\t1\t72\t")), qPrintable(result.out));
    }

    void failures()
    {
        QFETCH(QByteArray, file);
        QFETCH(QString, errContains);
        const Result result =
            run({QStringLiteral("snd"), QStringLiteral("list"), write(QStringLiteral("bad.snd"), file)});
        QCOMPARE(result.exitCode, 1);
        QVERIFY2(result.err.contains(errContains), qPrintable(result.err));
    }

    void resave_data()
    {
        QTest::addColumn<QString>("path");
        for (const QString& path : TestData::files({QStringLiteral("*.snd")}))
            QTest::newRow(qPrintable(path.mid(TestData::root().size() + 1))) << path;
    }

    // The records of a resaved file are the original's byte for byte; resaving that again changes
    // nothing at all.
    void resave()
    {
        TAVREL_REQUIRE_TESTDATA();
        QFETCH(QString, path);
        const QString once = dir.filePath(QStringLiteral("once.snd"));
        const QString twice = dir.filePath(QStringLiteral("twice.snd"));
        Result result = run({QStringLiteral("resave"), path, once});
        QCOMPARE(result.exitCode, 0);
        result = run({QStringLiteral("resave"), once, twice});
        QCOMPARE(result.exitCode, 0);
        const QByteArray original = readBytes(path);
        QVERIFY(readBytes(once).mid(512) == original.mid(512));
        QVERIFY(readBytes(twice) == readBytes(once));
    }
};

QTEST_GUILESS_MAIN(tst_CliSnd)
#include "tst_CliSnd.moc"
