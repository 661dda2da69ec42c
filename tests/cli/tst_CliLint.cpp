// "tavrel-cli lint": the real executable checking M.U.G.E.N. text files and reporting each finding in
// the form compilers use.

#include "CliTest.h"

#include <QRegularExpression>

using namespace CliRunner;

class tst_CliLint : public QObject
{
    Q_OBJECT

    QTemporaryDir dir;
    QString write(const QString& name, const QByteArray& bytes) { return CliTest::write(dir, name, bytes); }

private slots:
    void findings_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QStringList>("lines");

        const QByteArray states = "[Statedef 200]\r\ntype = S\r\n\r\n[State 200, 1]\r\ntype = Zoom\r\n"
                                  "trigger1 = tme || timemod = 4, 3\r\nvalue = 1\r\n";
        QTest::newRow("clean") << QByteArray("[Data]\nlife = 1000\n") << QStringList{} << 0 << QStringList{};
        QTest::newRow("notice only") << QByteArray("[Size]\ndraw.offset = 1\n") << QStringList{} << 0
                                     << QStringList{"F:2:15: notice: This parameter requires 2 value(s)"};
        QTest::newRow("errors in line order, columns from 1")
            << states << QStringList{} << 1
            << QStringList{"F:6:12: error: Unknown trigger 'tme'",
                           "F:6:19: warning: Trigger deprecated in the M.U.G.E.N 1.0",
                           "F:7:1: error: Unknown parameter 'value' for the 'Zoom' controller"};
        QTest::newRow("older version")
            << states << QStringList{"--version", "1.0"} << 1
            << QStringList{
                   "F:5:8: error: Controller invalid for the M.U.G.E.N. version of the current project",
                   "F:6:12: error: Unknown trigger 'tme'",
                   "F:6:19: warning: Trigger deprecated in the M.U.G.E.N 1.0",
                   "F:7:1: error: Syntax error - code ends before line"};
    }

    void findings()
    {
        QFETCH(QByteArray, text);
        QFETCH(QStringList, arguments);
        QFETCH(int, exitCode);
        QFETCH(QStringList, lines);
        const QString path = write(QStringLiteral("states.cns"), text);
        const Result result = run(QStringList{"lint", path} + arguments);
        QCOMPARE(result.err, QString());
        QCOMPARE(result.exitCode, exitCode);
        lines.replaceInStrings(QRegularExpression(QStringLiteral("^F:")), path + QLatin1Char(':'));
        QCOMPARE(result.out.split(QLatin1Char('\n'), Qt::SkipEmptyParts), lines);
    }

    void missingFile()
    {
        const QString clean = write(QStringLiteral("clean.air"), "[Begin Action 0]\n0,0, 0,0, 5\n");
        const Result result = run({"lint", clean, dir.filePath(QStringLiteral("absent.cns"))});
        QCOMPARE(result.exitCode, 1);
        QVERIFY(result.err.contains(QLatin1String("absent.cns: can't be read")));
    }

    void realCharacter()
    {
        TAVREL_REQUIRE_TESTDATA();
        const QString kfm = TestData::root() + QStringLiteral("/elecbyte-mugen11/chars/kfm/");
        const Result result = run(
            {"lint", kfm + "kfm.cns", kfm + "kfm.cmd", kfm + "kfm.air", kfm + "kfm.def", "--version", "1.0"});
        QCOMPARE(result.exitCode, 0);
        QVERIFY2(!result.out.contains(QLatin1String(": error: ")), qPrintable(result.out));
    }
};

QTEST_GUILESS_MAIN(tst_CliLint)
#include "tst_CliLint.moc"
