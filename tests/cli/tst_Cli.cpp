// The command-line tool as its users see it: the real executable, its output streams and exit codes.

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

class tst_Cli : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        if (!QFile::exists(toolPath())) QSKIP("tavrel-cli is not built next to the tests");
    }

    void globalOptions_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QString>("outContains");
        QTest::addColumn<QString>("errContains");
        QTest::newRow("help lists commands")
            << QStringList{QStringLiteral("--help")} << 0 << QStringLiteral("  config ") << QString();
        QTest::newRow("version") << QStringList{QStringLiteral("--version")} << 0
                                 << QStringLiteral("tavrel-cli 3.") << QString();
        QTest::newRow("help of one command")
            << QStringList{QStringLiteral("help"), QStringLiteral("config")} << 0
            << QStringLiteral("usage: tavrel-cli config show") << QString();
        QTest::newRow("no arguments")
            << QStringList() << 2 << QString() << QStringLiteral("usage: tavrel-cli");
        QTest::newRow("unknown command") << QStringList{QStringLiteral("frobnicate")} << 2 << QString()
                                         << QStringLiteral("tavrel-cli: unknown command 'frobnicate'");
        QTest::newRow("bad subcommand arguments")
            << QStringList{QStringLiteral("config"), QStringLiteral("dump")} << 2 << QString()
            << QStringLiteral("usage: tavrel-cli config");
        QTest::newRow("missing file")
            << QStringList{QStringLiteral("config"), QStringLiteral("show"),
                           QStringLiteral("/no/such/config.xml")}
            << 1 << QString() << QStringLiteral("tavrel-cli: /no/such/config.xml: no such file");
    }

    void globalOptions()
    {
        QFETCH(QStringList, arguments);
        QFETCH(int, exitCode);
        QFETCH(QString, outContains);
        QFETCH(QString, errContains);
        const Result result = run(arguments);
        QCOMPARE(result.exitCode, exitCode);
        if (!outContains.isEmpty()) QVERIFY2(result.out.contains(outContains), qPrintable(result.out));
        if (!errContains.isEmpty()) QVERIFY2(result.err.contains(errContains), qPrintable(result.err));
        if (exitCode != 0) QVERIFY(result.out.isEmpty());
    }

    void configShowsFileOverDefaultsAsJson()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("mine.tvc3"));
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("<?xml version=\"1.0\"?>\n<configuration>\n"
                   "  <config name=\"zoom_level\" value=\"5\"/>\n"
                   "  <config name=\"mugen_0_name\" value=\"Engine\"/>\n"
                   "  <config name=\"mugen_0_exe\" value=\"/games/mugen.exe\"/>\n"
                   "</configuration>\n");
        file.close();
        const Result result =
            run({QStringLiteral("config"), QStringLiteral("show"), path, QStringLiteral("--json")});
        QCOMPARE(result.exitCode, 0);
        const QJsonObject root = QJsonDocument::fromJson(result.out.toUtf8()).object();
        const QJsonObject settings = root.value(QStringLiteral("settings")).toObject();
        QCOMPARE(settings.value(QStringLiteral("zoom_level")).toString(), QStringLiteral("5"));
        QCOMPARE(settings.value(QStringLiteral("main_axis_x")).toString(), QStringLiteral("150"));
        const QJsonArray executables = root.value(QStringLiteral("executables")).toArray();
        QCOMPARE(executables.size(), 1);
        QCOMPARE(executables.at(0).toObject().value(QStringLiteral("exe")).toString(),
                 QStringLiteral("/games/mugen.exe"));
    }
};

QTEST_GUILESS_MAIN(tst_Cli)
#include "tst_Cli.moc"
