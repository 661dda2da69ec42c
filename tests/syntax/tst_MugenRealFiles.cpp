// The engine's own content, checked as a project of its version would be: characters, the common
// states, stages, fonts, storyboards, and the system, fight and select definitions. No line of it may
// draw an error.

#include "MugenSyntaxTestSupport.h"

#include "QTextEncoding.h"

#include <QDir>
#include <QFile>
#include <QTest>

using namespace MugenSyntaxTest;

namespace {

const QString root = QStringLiteral("elecbyte-mugen11/");

// Content that uses 1.1 keys (the camera zoom, the loop points and volumes of the screen music, the windows
// of the faces on the screens): checked at 1.1 only.
const QStringList onlyNew = {"stages/kfm.def",  "data/mugen1/system.def", "data/mugen1/fight.def",
                             "data/system.def", "data/kfm/system.def",    "data/big/system.def"};

// The errors of a checked text as "line:column: text", both counted from 1.
QStringList errors(const Checked& checked)
{
    QStringList found;
    for (QTextBlock block = checked.document->firstBlock(); block.isValid(); block = block.next())
        for (const QSyntaxMessage& message : checked.messages(block.blockNumber()))
            if (message.kind == SyntaxError)
                found << QStringLiteral("%1:%2: %3")
                             .arg(block.blockNumber() + 1)
                             .arg(message.start + 1)
                             .arg(message.text);
    return found;
}

} // namespace

class tst_MugenRealFiles : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(!shippedVocabulary()->stateControllers().isEmpty()); }

    void noErrors_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<uint>("version");
        const QString base = TestData::root();
        if (base.isEmpty()) return;
        const QDir dir(base + QLatin1Char('/') + root);
        QStringList files;
        for (const QString& path : TestData::files({"*.def", "*.cns", "*.cmd", "*.air", "*.st"}))
            if (path.contains(QLatin1Char('/') + root)) files << dir.relativeFilePath(path);
        for (const QString& file : files) {
            QTest::newRow(qPrintable(file + " 1.1")) << dir.filePath(file) << 0x1010000u;
            if (!onlyNew.contains(file))
                QTest::newRow(qPrintable(file + " 1.0")) << dir.filePath(file) << 0x1000000u;
        }
    }

    void noErrors()
    {
        TAVREL_REQUIRE_TESTDATA();
        QFETCH(QString, path);
        QFETCH(uint, version);
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const Checked checked = check(QTextEncoding::decode(file.readAll(), 0), version);

        const QStringList found = errors(checked);
        QVERIFY2(found.isEmpty(), qPrintable(found.mid(0, 10).join(QLatin1Char('\n'))));
    }

    // One mistake seeded into a screen, a select definition and a storyboard of the engine is the one
    // error of the file: their sections are checked, not passed over.
    void seededMistake_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("from");
        QTest::addColumn<QString>("to");
        QTest::addColumn<QString>("expected");
        QTest::newRow("system screen key")
            << "data/system.def"
            << "menu.pos = "
            << "menu.poss = "
            << "86:1: Unknown parameter 'menu.poss' for the 'Title Info' controller";
        QTest::newRow("fight screen key")
            << "data/fight.def"
            << "p1.range.x  = 0,-127"
            << "p1.range.z  = 0,-127"
            << "47:1: Unknown parameter 'p1.range.z' for the 'Lifebar' controller";
        QTest::newRow("select option values") << "data/select.def"
                                              << "arcade.maxmatches = 6,1,1,0,0,0,0,0,0,0"
                                              << "arcade.maxmatches = 6,1,1,0,0,0,0,0,0,0,0"
                                              << "91:40: Syntax error - code ends before line";
        QTest::newRow("storyboard background") << "data/kfm/intro.def"
                                               << "[BG0 Wall]"
                                               << "[BG0 Wall"
                                               << "37:10: Invalid group";
    }

    void seededMistake()
    {
        TAVREL_REQUIRE_TESTDATA();
        QFETCH(QString, file);
        QFETCH(QString, from);
        QFETCH(QString, to);
        QFETCH(QString, expected);
        QFile source(TestData::root() + QLatin1Char('/') + root + file);
        QVERIFY(source.open(QIODevice::ReadOnly));
        QString text = QTextEncoding::decode(source.readAll(), 0);
        const qsizetype at = text.indexOf(from);
        QVERIFY(at >= 0);
        text.replace(at, from.size(), to);
        QCOMPARE(errors(check(text, 0x1010000)), QStringList{expected});
    }

    // A 1.1 stage in a 1.0 project: the camera zoom is newer than the project.
    void newerStageAtOldVersion()
    {
        TAVREL_REQUIRE_TESTDATA();
        QFile file(TestData::root() + QLatin1Char('/') + root + QStringLiteral("stages/kfm.def"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const Checked checked = check(QString::fromUtf8(file.readAll()), 0x1000000);
        const QStringList found = errors(checked);
        const QString invalid =
            QStringLiteral("Parameter invalid for the M.U.G.E.N. version of the current project");
        QCOMPARE(found, (QStringList{"74:1: " + invalid, "74:9: Syntax error - code ends before line",
                                     "75:1: " + invalid, "75:8: Syntax error - code ends before line"}));
    }
};

QTEST_GUILESS_MAIN(tst_MugenRealFiles)
#include "tst_MugenRealFiles.moc"
