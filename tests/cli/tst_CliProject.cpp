// "tavrel-cli info", "check" and "project save-as": the real executable on a small character and on the
// engine's own.

#include "CliRunner.h"
#include "ProjectFixture.h"
#include "TestData.h"

#include <QDirIterator>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

using namespace CliRunner;

class tst_CliProject : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        if (!QFile::exists(toolPath())) QSKIP("tavrel-cli is not built next to the tests");
    }

    void info()
    {
        ProjectFixture fixture;
        QVERIFY(fixture.make());
        Result result = run({QStringLiteral("info"), fixture.def()});
        QCOMPARE(result.exitCode, 0);
        const QString base = fixture.character() + QLatin1Char('/');
        const QString expected =
            QStringLiteral("type: Character\nversion: 1.0\nname: Test\n"
                           "pal1: pal/p1.act (loaded) %1pal/P1.act\n"
                           "sprite: Sub/KFM.SFF (loaded) %1sub/kfm.sff\nanim: TEST.air (loaded) %1test.air\n"
                           "sound: test.snd (loaded) %1test.snd\ncmd: test.cmd (loaded) %1test.cmd\n"
                           "states: test.cns (loaded) %1test.cns\n"
                           "states: common1.cns (loaded) %2\n"
                           "sprites: 2\npalettes: 2\nactions: 1\ncommands: 1\nstates: 2\nsounds: 2\n")
                .arg(base, fixture.root.filePath(QStringLiteral("data/common1.cns")));
        QCOMPARE(result.out.split(QLatin1Char('\n')), expected.split(QLatin1Char('\n')));

        result = run({QStringLiteral("info"), fixture.def(), QStringLiteral("--json")});
        QCOMPARE(result.exitCode, 0);
        const QJsonObject root = QJsonDocument::fromJson(result.out.toUtf8()).object();
        QCOMPARE(root.value(QStringLiteral("counts")).toObject().value(QStringLiteral("sounds")).toInt(), 2);
        QCOMPARE(root.value(QStringLiteral("files")).toArray().size(), 7);

        QCOMPARE(run({QStringLiteral("info"), fixture.file(QStringLiteral("none.def"))}).exitCode, 1);
        QCOMPARE(run({QStringLiteral("info")}).exitCode, 2);
    }

    void check()
    {
        ProjectFixture fixture;
        QVERIFY(fixture.make());
        // The little character lacks the sprites the engine requires of every character; its texts are clean.
        Result result = run({QStringLiteral("check"), fixture.def()});
        QCOMPARE(result.exitCode, 1);
        QVERIFY(result.out.startsWith(QLatin1String("SFF(-1): Required sprite 5000, 0 is missing!\n")));
        QVERIFY2(!result.out.contains(QLatin1String("ST ")), qPrintable(result.out));

        QVERIFY(fixture.write(QStringLiteral("chars/test/test.cns"),
                              "[Statedef 0]\ntype = S\n\n[State 0, x]\ntype = Nonsense\n"));
        result = run({QStringLiteral("check"), fixture.def()});
        QCOMPARE(result.exitCode, 1);
        QVERIFY2(result.out.contains(QLatin1String("\nST 0(5): ")), qPrintable(result.out));
    }

    void checkTheEnginesCharacters_data()
    {
        QTest::addColumn<QString>("path");
        QTest::newRow("kfm") << QStringLiteral("elecbyte-mugen11/chars/kfm/kfm.def");
        QTest::newRow("kfm720") << QStringLiteral("elecbyte-mugen11/chars/kfm720/kfm720.def");
    }

    void checkTheEnginesCharacters()
    {
        TAVREL_REQUIRE_TESTDATA();
        QFETCH(QString, path);
        const Result result = run({QStringLiteral("check"), TestData::root() + QLatin1Char('/') + path});
        QVERIFY2(result.exitCode == 0, qPrintable(result.out));
    }

    // The engine's screens, effects, stages and storyboards: the animations of their own "[Begin Action]"
    // sections are counted, and each file is checked for the version it declares (stage0.def says 1.0,
    // so keys that 1.1 deprecates are not warned about).
    void otherKindsOfDefinitions_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("type");
        QTest::addColumn<QString>("actions");
        QTest::newRow("system") << "data/system.def"
                                << "SystemScreen"
                                << "3";
        QTest::newRow("fight") << "data/fight.def"
                               << "FightFX"
                               << "5";
        QTest::newRow("stage, version 1.0") << "stages/stage0.def"
                                            << "Stage"
                                            << "0";
        QTest::newRow("storyboard") << "chars/kfm/intro.def"
                                    << "Storyboard"
                                    << "11";
    }

    void otherKindsOfDefinitions()
    {
        TAVREL_REQUIRE_TESTDATA();
        QFETCH(QString, path);
        QFETCH(QString, type);
        QFETCH(QString, actions);
        const QString file = TestData::root() + QStringLiteral("/elecbyte-mugen11/") + path;
        const Result info = run({QStringLiteral("info"), file});
        QVERIFY2(info.out.contains(QStringLiteral("type: ") + type + QLatin1Char('\n')),
                 qPrintable(info.out));
        QVERIFY2(info.out.contains(QStringLiteral("\nactions: ") + actions + QLatin1Char('\n')),
                 qPrintable(info.out));
        const Result check = run({QStringLiteral("check"), file});
        QVERIFY2(!check.out.contains(QLatin1String("deprecated")), qPrintable(check.out));
    }

    // The bundled sample is made by the build beside the tools; the editor's run command opens it.
    void checkTheSample()
    {
        const QString sample = TestData::binDir() + QStringLiteral("/samples/Roan/Roan.def");
        if (!QFileInfo::exists(sample)) QSKIP("the sample character is not built");
        const Result result = run({QStringLiteral("check"), sample});
        QCOMPARE(result.exitCode, 0);
        QCOMPARE(result.out, QString());
    }

    // Names are the author's bytes: those that no spelling finds are told, in "info" and "check" alike,
    // and the engine's common states of content outside an engine are the engine's to give.
    void missingFilesAreTold_data()
    {
        QTest::addColumn<QString>("command");
        QTest::newRow("info") << "info";
        QTest::newRow("check") << "check";
    }

    void missingFilesAreTold()
    {
        QFETCH(QString, command);
        ProjectFixture fixture;
        QVERIFY(fixture.make());
        QVERIFY(fixture.write(QStringLiteral("chars/test/test.def"),
                              ProjectFixture::definitions() + "st = gone.st\r\npal2 = pal\\gone.act\r\n"));
        const Result result = run({command, fixture.def()});
        QVERIFY2(result.err.contains(
                     QStringLiteral("tavrel-cli: Missing files: test.def names files that are not "
                                    "there, in any spelling of their names: pal/gone.act gone.st ")),
                 qPrintable(result.err));
        if (command == QLatin1String("info")) {
            QVERIFY(result.out.contains(QLatin1String("\npal2: pal/gone.act (missing)\n")));
            QVERIFY(result.out.contains(QLatin1String("\nstates: gone.st (missing)\n")));
        }
    }

    void kulaOpensWhole()
    {
        TAVREL_REQUIRE_TESTDATA();
        const Result result = run(
            {QStringLiteral("info"), TestData::root() + QStringLiteral("/kof-h-cjk/chars/kula/kula.def")});
        QCOMPARE(result.exitCode, 0);
        for (const char* name : {"新·冻结处刑.cns", "冷月之舞.cns", "完全冻结.cns", "裁决の刃.cns"})
            QVERIFY2(result.out.contains(QStringLiteral("states: %1 (loaded) ").arg(QString::fromUtf8(name))),
                     qPrintable(result.out));
        QVERIFY(result.out.contains(QLatin1String("states: common1.cns (from the engine)\n")));
        // The repository's sprites and sounds of this character could not be had.
        QVERIFY2(result.err.contains(QLatin1String(": kula.sff kula.snd ")), qPrintable(result.err));
    }

    void saveAs()
    {
        ProjectFixture fixture;
        QVERIFY(fixture.make());
        QTemporaryDir target;
        const QString def = target.filePath(QStringLiteral("out/hero.def"));
        Result result = run({QStringLiteral("project"), QStringLiteral("save-as"), fixture.def(), def,
                             QStringLiteral("--sff-version"), QStringLiteral("2.01")});
        QVERIFY2(result.exitCode == 0, qPrintable(result.err));
        // Each file keeps the name it has on disk beside the new definitions; the shared common states stay
        // where they are.
        for (const char* name :
             {"hero.def", "sub/kfm.sff", "test.air", "test.cmd", "test.cns", "test.snd", "pal/P1.act"})
            QVERIFY2(QFileInfo::exists(target.filePath(QStringLiteral("out/") + QLatin1String(name))), name);
        QVERIFY(!QFileInfo::exists(target.filePath(QStringLiteral("out/common1.cns"))));
        QCOMPARE(ProjectFixture::definitions(), [&] {
            QFile file(def);
            return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
        }());

        result = run({QStringLiteral("info"), def});
        QVERIFY(result.out.contains(QLatin1String("sprites: 2\n")));
        QVERIFY(!result.out.contains(QLatin1String("sprite: Sub/KFM.SFF (missing)")));
        result = run({QStringLiteral("sff"), QStringLiteral("info"),
                      target.filePath(QStringLiteral("out/sub/kfm.sff"))});
        QVERIFY2(result.out.contains(QLatin1String("2.01")), qPrintable(result.out));

        QCOMPARE(run({QStringLiteral("project"), QStringLiteral("save-as"), fixture.def(), def,
                      QStringLiteral("--sff-version"), QStringLiteral("3")})
                     .exitCode,
                 2);
    }

    // A name that leads out of the folder can't be written beside the copy: the command fails with the
    // name, and no definitions are written that would name what is not there.
    void saveAsFailsWithTheName()
    {
        ProjectFixture fixture;
        QVERIFY(fixture.make());
        QVERIFY(fixture.write(QStringLiteral("chars/shared.st"), "[Statedef 2]\r\n"));
        QVERIFY(fixture.write(QStringLiteral("chars/test/test.def"),
                              ProjectFixture::definitions() + "st = ..\\shared.st\r\n"));
        QTemporaryDir target;
        const QString def = target.filePath(QStringLiteral("out/hero.def"));
        const Result result = run({QStringLiteral("project"), QStringLiteral("save-as"), fixture.def(), def});
        QCOMPARE(result.exitCode, 1);
        QVERIFY2(
            result.err.contains(QLatin1String("../shared.st: it lies outside the folder of the definitions")),
            qPrintable(result.err));
        QVERIFY(!QFileInfo::exists(def));
    }

    void saveAsOfKula()
    {
        TAVREL_REQUIRE_TESTDATA();
        const QString source = TestData::root() + QStringLiteral("/kof-h-cjk/chars/kula");
        QTemporaryDir target;
        const QString def = target.filePath(QStringLiteral("out/kula.def"));
        Result result =
            run({QStringLiteral("project"), QStringLiteral("save-as"), source + "/kula.def", def});
        QVERIFY2(result.exitCode == 0, qPrintable(result.err));
        QVERIFY2(result.err.contains(QLatin1String("the copy lacks them too: kula.sff kula.snd")),
                 qPrintable(result.err));
        QDirIterator it(source, QDir::Files, QDirIterator::Subdirectories);
        while (it.hasNext()) {
            const QString file = it.next();
            const QString copy =
                target.filePath(QStringLiteral("out/") + QDir(source).relativeFilePath(file));
            QVERIFY2(readBytes(copy) == readBytes(file), qPrintable(copy));
        }
        result = run({QStringLiteral("info"), def});
        QCOMPARE(result.out.count(QLatin1String("(missing)")), 2);
        QCOMPARE(result.out.count(QLatin1String("(loaded)")), 23);
    }
};

QTEST_GUILESS_MAIN(tst_CliProject)
#include "tst_CliProject.moc"
