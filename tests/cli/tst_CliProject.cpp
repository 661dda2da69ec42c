// "tavrel-cli info", "check" and "project save-as": the real executable on a small character and on the
// engine's own.

#include "CliRunner.h"
#include "ProjectFixture.h"
#include "TestData.h"

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
                           "pal1: pal/p1.act (loaded) %1pal/P1.act\npal2: pal/missing.act (missing)\n"
                           "sprite: Sub/KFM.SFF (loaded) %1sub/kfm.sff\nanim: TEST.air (loaded) %1test.air\n"
                           "sound: test.snd (loaded) %1test.snd\ncmd: test.cmd (loaded) %1test.cmd\n"
                           "states: test.cns (loaded) %1test.cns\nstates: missing.st (missing)\n"
                           "states: common1.cns (loaded) %2\n"
                           "sprites: 2\npalettes: 2\nactions: 1\ncommands: 1\nstates: 2\nsounds: 2\n")
                .arg(base, fixture.root.filePath(QStringLiteral("data/common1.cns")));
        QCOMPARE(result.out.split(QLatin1Char('\n')), expected.split(QLatin1Char('\n')));

        result = run({QStringLiteral("info"), fixture.def(), QStringLiteral("--json")});
        QCOMPARE(result.exitCode, 0);
        const QJsonObject root = QJsonDocument::fromJson(result.out.toUtf8()).object();
        QCOMPARE(root.value(QStringLiteral("counts")).toObject().value(QStringLiteral("sounds")).toInt(), 2);
        QCOMPARE(root.value(QStringLiteral("files")).toArray().size(), 9);

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

    // The bundled sample is made by the build beside the tools; the editor's run command opens it.
    void checkTheSample()
    {
        const QString sample = TestData::binDir() + QStringLiteral("/samples/Roan/Roan.def");
        if (!QFileInfo::exists(sample)) QSKIP("the sample character is not built");
        const Result result = run({QStringLiteral("check"), sample});
        QCOMPARE(result.exitCode, 0);
        QCOMPARE(result.out, QString());
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
        // Each file keeps its name beside the new definitions; the shared common states stay where they are.
        for (const char* name :
             {"hero.def", "sub/kfm.sff", "test.air", "test.cmd", "test.cns", "test.snd", "pal/p1.act"})
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
};

QTEST_GUILESS_MAIN(tst_CliProject)
#include "tst_CliProject.moc"
