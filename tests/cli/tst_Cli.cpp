// The command-line tool as its users see it: the real executable, its output streams and exit codes.

#include "CliTest.h"

#include <QJsonArray>
#include <QJsonObject>

using namespace CliRunner;

class tst_Cli : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { TAVREL_REQUIRE_CLI(); }

    // Every command's usage errors (2) and unreadable inputs (1): the message goes to the error stream,
    // and nothing to the output.
    void exitCodes_data()
    {
        QTest::addColumn<QString>("arguments");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QString>("outContains");
        QTest::addColumn<QString>("errContains");
        const auto row = [](const char* name, const char* arguments, int exitCode, const QString& out,
                            const QString& err) {
            QTest::newRow(name) << QString::fromUtf8(arguments) << exitCode << out << err;
        };
        row("help lists commands", "--help", 0, "  config ", "");
        row("version", "--version", 0, "tavrel-cli 3.", "");
        row("help of one command", "help config", 0, "usage: tavrel-cli config show", "");
        row("no arguments", "", 2, "", "usage: tavrel-cli");
        row("unknown command", "frobnicate", 2, "", "tavrel-cli: unknown command 'frobnicate'");
        row("bad subcommand arguments", "config dump", 2, "", "usage: tavrel-cli config");
        row("missing file", "config show /no/such/config.xml", 1, "",
            "tavrel-cli: /no/such/config.xml: no such file");
        row("lint: no file", "lint", 2, "", "usage: tavrel-cli lint");
        row("lint: bad version", "lint x.cns --version one", 2, "", "usage: tavrel-cli lint");
        row("lint: version without value", "lint x.cns --version", 2, "", "usage: tavrel-cli lint");
        row("lint: unknown option", "lint x.cns --strict", 2, "", "usage: tavrel-cli lint");
        row("def: missing file", "def info /no/such/file.def", 1, "",
            "tavrel-cli: /no/such/file.def: no such file");
        row("def: no file", "def info", 2, "", "tavrel-cli: def: expected");
        row("def: unknown verb", "def show a.def", 2, "", "usage: tavrel-cli def info");
        row("air: no action", "air", 2, "", "usage: tavrel-cli air list FILE [--json]");
        row("air: two files", "air list a b", 2, "", "usage: tavrel-cli air list");
        row("air: missing file", "air list /no/such.air", 1, "", "tavrel-cli: /no/such.air: no such file");
        row("pal: no action", "pal", 2, "", "usage: tavrel-cli pal convert IN OUT.act");
        row("pal: one file", "pal convert a", 2, "", "usage: tavrel-cli pal convert");
        row("pal: missing input", "pal convert /no/such.act /tmp/x.act", 1, "",
            "tavrel-cli: /no/such.act: no such file");
        row("snd: no action", "snd", 2, "", "expected");
        row("snd: json on extract", "snd extract a.snd d --json", 2, "", "--json");
        row("snd: missing", "snd list /no/such.snd", 1, "", "no such file");
        row("fnt: no output folder", "fnt convert a.fnt", 2, "", "usage");
        row("fnt: other verb", "fnt show a.fnt out", 2, "", "usage");
        row("sff: missing", "sff info /no/such.sff", 1, "", "tavrel-cli: /no/such.sff: no such file");
        row("sff: unknown action", "sff frobnicate a.sff", 2, "", "usage: tavrel-cli sff info");
        row("resave: no output", "resave a.cns", 2, "", "expected an input and an output");
    }

    void exitCodes()
    {
        QFETCH(QString, arguments);
        QFETCH(int, exitCode);
        QFETCH(QString, outContains);
        QFETCH(QString, errContains);
        const Result result = run(arguments.split(QLatin1Char(' '), Qt::SkipEmptyParts));
        QCOMPARE(result.exitCode, exitCode);
        QVERIFY2(result.out.contains(outContains), qPrintable(result.out));
        QVERIFY2(result.err.contains(errContains), qPrintable(result.err));
        if (exitCode != 0) QVERIFY(result.out.isEmpty());
    }

    void configShowsFileOverDefaultsAsJson()
    {
        QTemporaryDir dir;
        const QString path = CliTest::write(dir, QStringLiteral("mine.tvc3"),
                                            "<?xml version=\"1.0\"?>\n<configuration>\n"
                                            "  <config name=\"zoom_level\" value=\"5\"/>\n"
                                            "  <config name=\"mugen_0_name\" value=\"Engine\"/>\n"
                                            "  <config name=\"mugen_0_exe\" value=\"/games/mugen.exe\"/>\n"
                                            "</configuration>\n");
        const Result result =
            run({QStringLiteral("config"), QStringLiteral("show"), path, QStringLiteral("--json")});
        QCOMPARE(result.exitCode, 0);
        const QJsonObject root = CliTest::json(result).object();
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
