// "tavrel-cli def info": the real executable reading definitions files.

#include "CliRunner.h"
#include "TestData.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace CliRunner;

class tst_CliDef : public QObject
{
    Q_OBJECT

    QTemporaryDir dir;

private Q_SLOTS:
    void initTestCase()
    {
        if (!QFile::exists(toolPath())) QSKIP("tavrel-cli is not built next to the tests");
    }

    void textOutput()
    {
        const QString path = dir.filePath(QStringLiteral("hero.def"));
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("[Info]\r\nname = \"Hero\"\r\nmugenversion = 1.1\r\n[Files]\r\nsprite = art\\hero.sff\r\n"
                   "cmd = hero.cmd\r\nst = a.st\r\nst1 = a.st\r\nst2 = b.st\r\npal2 = p2.act\r\n");
        file.close();
        const Result result = run({QStringLiteral("def"), QStringLiteral("info"), path});
        QCOMPARE(result.exitCode, 0);
        QVERIFY2(result.err.isEmpty(), qPrintable(result.err));
        const QString expected =
            QStringLiteral("type: Character\nversion: 1.1\nname: Hero\nbase: %1\nsprite: "
                           "art/hero.sff\nanim: \nsound: \ncmd: hero.cmd\npal2: p2.act\n"
                           "states: a.st\nstates: b.st\n")
                .arg(QFileInfo(path).absolutePath());
        QCOMPARE(result.out, expected);
    }

    void jsonOutput_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("type");
        QTest::addColumn<QString>("version");
        QTest::addColumn<QString>("sprite");
        QTest::addColumn<QStringList>("states");
        QTest::newRow("kfm") << "elecbyte-mugen11/chars/kfm/kfm.def"
                             << "Character"
                             << "1.0"
                             << "kfm.sff" << QStringList{"kfm.cns", "common1.cns"};
        QTest::newRow("stage") << "elecbyte-mugen11/stages/kfm.def"
                               << "Stage"
                               << "1.1"
                               << "kfm.sff" << QStringList();
        QTest::newRow("storyboard") << "elecbyte-mugen11/chars/kfm/intro.def"
                                    << "Storyboard"
                                    << "1.1"
                                    << "intro.sff" << QStringList();
        QTest::newRow("font") << "elecbyte-mugen11/font/num1.def"
                              << "Font"
                              << "1.1"
                              << "num1.sff" << QStringList();
        QTest::newRow("system") << "elecbyte-mugen11/data/system.def"
                                << "SystemScreen"
                                << "1.0"
                                << "system.sff" << QStringList();
        QTest::newRow("fight") << "elecbyte-mugen11/data/fight.def"
                               << "FightFX"
                               << "1.1"
                               << "fight.sff" << QStringList();
    }

    void jsonOutput()
    {
        TAVREL_REQUIRE_TESTDATA();
        QFETCH(QString, path);
        const Result result = run({QStringLiteral("def"), QStringLiteral("info"),
                                   TestData::root() + QLatin1Char('/') + path, QStringLiteral("--json")});
        QCOMPARE(result.exitCode, 0);
        const QJsonObject root = QJsonDocument::fromJson(result.out.toUtf8()).object();
        QTEST(root.value(QStringLiteral("type")).toString(), "type");
        QTEST(root.value(QStringLiteral("version")).toString(), "version");
        const QJsonObject files = root.value(QStringLiteral("files")).toObject();
        QTEST(files.value(QStringLiteral("sprite")).toString(), "sprite");
        QStringList states;
        for (const QJsonValue& value : files.value(QStringLiteral("states")).toArray())
            states << value.toString();
        QTEST(states, "states");
        QCOMPARE(files.value(QStringLiteral("pal")).toArray().size(), 12);
    }

    void failures_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QString>("error");
        QTest::newRow("missing file") << QStringList{"def", "info", "/no/such/file.def"} << 1
                                      << "tavrel-cli: /no/such/file.def: no such file";
        QTest::newRow("no file") << QStringList{"def", "info"} << 2 << "tavrel-cli: def: expected";
        QTest::newRow("unknown verb")
            << QStringList{"def", "show", "a.def"} << 2 << "usage: tavrel-cli def info";
    }

    void failures()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, error);
        const Result result = run(arguments);
        QTEST(result.exitCode, "exitCode");
        QVERIFY2(result.err.contains(error), qPrintable(result.err));
        QVERIFY(result.out.isEmpty());
    }
};

QTEST_GUILESS_MAIN(tst_CliDef)
#include "tst_CliDef.moc"
