// "tavrel-cli air list": the real executable listing actions, frames and boxes of AIR files.

#include "CliTest.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QRegularExpression>

using namespace CliRunner;

class tst_CliAir : public QObject
{
    Q_OBJECT

    QTemporaryDir dir;
    QString sample;

private Q_SLOTS:
    void initTestCase()
    {
        TAVREL_REQUIRE_CLI();
        sample =
            CliTest::write(dir, QStringLiteral("sample.air"),
                           "; Stand\n[Begin Action 0]\nClsn2Default: 1\n Clsn2[0] = 10, 0, -10, -80\n"
                           "0,0, 0,0, 10\nLoopStart\nClsn1: 1\n  Clsn1[0] = 5, -50, 40, -40\n"
                           "0,1, 2,-3, 5, H, AS200D100, 2,,30\n\n[Begin Action 20]\n20,0, 0,0, -1, , S\n");
    }

    void listText_data()
    {
        QTest::addColumn<QString>("line");
        QTest::newRow("named action") << "action 0 \"Stand\" (2 frames)";
        QTest::newRow("default box") << "    Clsn2 default[0] = -10, -80, 10, 0";
        QTest::newRow("frame with a tail and a mark") << "  frame 1: sprite 0,1 offset 2,-3 time 5 flip H "
                                                         "blend add 200/100 scale 2,1 angle 30 [LoopStart]";
        QTest::newRow("per-frame box") << "    Clsn1[0] = 5, -50, 40, -40";
        QTest::newRow("second action") << "action 20 (1 frames)";
        QTest::newRow("subtraction")
            << "  frame 0: sprite 20,0 offset 0,0 time -1 flip none blend subtract scale 1,1 angle 0";
    }

    void listText()
    {
        QFETCH(QString, line);
        const Result result = run({QStringLiteral("air"), QStringLiteral("list"), sample});
        QCOMPARE(result.exitCode, 0);
        QVERIFY2(result.err.isEmpty(), qPrintable(result.err));
        QVERIFY2(result.out.split(QLatin1Char('\n')).contains(line), qPrintable(result.out));
    }

    void listJson()
    {
        const Result result =
            run({QStringLiteral("air"), QStringLiteral("list"), sample, QStringLiteral("--json")});
        QCOMPARE(result.exitCode, 0);
        const QJsonArray actions = CliTest::json(result).object().value("actions").toArray();
        QCOMPARE(actions.size(), 2);
        QCOMPARE(actions.at(0).toObject().value("name").toString(), QStringLiteral("Stand"));
        const QJsonObject frame = actions.at(0).toObject().value("frames").toArray().at(1).toObject();
        QCOMPARE(frame.value("flip").toString(), QStringLiteral("H"));
        QCOMPARE(frame.value("blend").toObject().value("source").toInt(), 200);
        QCOMPARE(frame.value("blend").toObject().value("destination").toInt(), 100);
        QCOMPARE(frame.value("scaleX").toDouble(), 2.0);
        QCOMPARE(frame.value("angle").toDouble(), 30.0);
        QCOMPARE(frame.value("marks").toArray().at(0).toString(), QStringLiteral("LoopStart"));
        const QJsonObject box = frame.value("boxes").toArray().at(0).toObject();
        QCOMPARE(box.value("slot").toString(), QStringLiteral("Clsn1"));
        QCOMPARE(box.value("default").toBool(), false);
        QCOMPARE(box.value("index").toInt(), 0);
        QCOMPARE(box.value("y1").toInt(), -50);
        const QJsonObject first = actions.at(0).toObject().value("frames").toArray().at(0).toObject();
        QCOMPARE(first.value("boxes").toArray().at(0).toObject().value("default").toBool(), true);
        QCOMPARE(first.value("boxes").toArray().at(0).toObject().value("slot").toString(),
                 QStringLiteral("Clsn2"));
    }

    void realFiles()
    {
        TAVREL_REQUIRE_TESTDATA();
        const QStringList files = TestData::files({QStringLiteral("*.air")});
        if (files.isEmpty()) QSKIP("the test data holds no AIR file");
        static const QRegularExpression header(QStringLiteral("^\\s*\\[\\s*begin\\s+action\\s+-?\\d+\\s*\\]"),
                                               QRegularExpression::CaseInsensitiveOption |
                                                   QRegularExpression::MultilineOption);
        for (const QString& path : files) {
            const Result result =
                run({QStringLiteral("air"), QStringLiteral("list"), path, QStringLiteral("--json")});
            QCOMPARE(result.exitCode, 0);
            const QString text = QString::fromLatin1(readBytes(path));
            int headers = 0;
            for (auto it = header.globalMatch(text); it.hasNext(); it.next())
                ++headers;
            QCOMPARE(CliTest::json(result).object().value("actions").toArray().size(), headers);
        }
    }
};

QTEST_GUILESS_MAIN(tst_CliAir)
#include "tst_CliAir.moc"
