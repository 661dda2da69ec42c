// "tavrel-cli def info": the real executable reading definitions files.

#include "CliTest.h"

#include <QJsonArray>
#include <QJsonObject>

using namespace CliRunner;

class tst_CliDef : public QObject
{
    Q_OBJECT

    QTemporaryDir dir;

private Q_SLOTS:
    void initTestCase() { TAVREL_REQUIRE_CLI(); }

    void textOutput()
    {
        const QString path = CliTest::write(
            dir, QStringLiteral("hero.def"),
            "[Info]\r\nname = \"Hero\"\r\nmugenversion = 1.1\r\n[Files]\r\nsprite = art\\hero.sff\r\n"
            "cmd = hero.cmd\r\nst = a.st\r\nst1 = a.st\r\nst2 = b.st\r\npal2 = p2.act\r\n");
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
        const auto row = [](const char* name, const char* path, const char* type, const char* version,
                            const char* sprite, const QStringList& states) {
            QTest::newRow(name) << QString::fromUtf8(path) << QString::fromUtf8(type)
                                << QString::fromUtf8(version) << QString::fromUtf8(sprite) << states;
        };
        row("kfm", "elecbyte-mugen11/chars/kfm/kfm.def", "Character", "1.0", "kfm.sff",
            {"kfm.cns", "common1.cns"});
        row("stage", "elecbyte-mugen11/stages/kfm.def", "Stage", "1.1", "kfm.sff", {});
        row("storyboard", "elecbyte-mugen11/chars/kfm/intro.def", "Storyboard", "1.1", "intro.sff", {});
        row("font", "elecbyte-mugen11/font/num1.def", "Font", "1.1", "num1.sff", {});
        row("system", "elecbyte-mugen11/data/system.def", "SystemScreen", "1.0", "system.sff", {});
        row("fight", "elecbyte-mugen11/data/fight.def", "FightFX", "1.1", "fight.sff", {});
    }

    void jsonOutput()
    {
        TAVREL_REQUIRE_TESTDATA();
        QFETCH(QString, path);
        const Result result = run({QStringLiteral("def"), QStringLiteral("info"),
                                   TestData::root() + QLatin1Char('/') + path, QStringLiteral("--json")});
        QCOMPARE(result.exitCode, 0);
        const QJsonObject root = CliTest::json(result).object();
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
};

QTEST_GUILESS_MAIN(tst_CliDef)
#include "tst_CliDef.moc"
