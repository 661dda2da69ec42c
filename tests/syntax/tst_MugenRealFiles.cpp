// The engine's own content, checked as a project of its version would be: characters, the common
// states, stages, fonts, storyboards and screens. Sections that the checker doesn't know (the screen
// sections of system, fight and select definitions, numbered storyboard backgrounds) are reported as
// "Invalid group" and their lines are not held against the checker; every other line must be clean.

#include "MugenSyntaxTestSupport.h"

#include "QTextEncoding.h"

#include <QDir>
#include <QFile>
#include <QTest>

using namespace MugenSyntaxTest;

namespace {

const QString root = QStringLiteral("elecbyte-mugen11/");

// Definitions whose sections are partly outside the checker's built-in set.
const QStringList screens = {
    "data/system.def",        "data/fight.def",        "data/select.def",     "data/big/system.def",
    "data/mugen1/system.def", "data/mugen1/fight.def", "data/kfm/system.def", "data/kfm/select.def",
    "data/kfm/intro.def",     "data/kfm/credits.def",
};

// Content that uses 1.1 keys (the camera zoom, the loop points and volumes of the screen music): checked
// at 1.1 only.
const QStringList onlyNew = {"stages/kfm.def",  "data/mugen1/system.def", "data/mugen1/fight.def",
                             "data/system.def", "data/kfm/system.def",    "data/big/system.def"};

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
        QTest::addColumn<bool>("strict");
        const QString base = TestData::root();
        if (base.isEmpty()) return;
        const QDir dir(base + QLatin1Char('/') + root);
        QStringList files;
        for (const QString& path : TestData::files({"*.def", "*.cns", "*.cmd", "*.air", "*.st"}))
            if (path.contains(QLatin1Char('/') + root)) files << dir.relativeFilePath(path);
        for (const QString& file : files) {
            const bool strict = !screens.contains(file);
            QTest::newRow(qPrintable(file + " 1.1")) << dir.filePath(file) << 0x1010000u << strict;
            if (!onlyNew.contains(file))
                QTest::newRow(qPrintable(file + " 1.0")) << dir.filePath(file) << 0x1000000u << strict;
        }
    }

    void noErrors()
    {
        TAVREL_REQUIRE_TESTDATA();
        QFETCH(QString, path);
        QFETCH(uint, version);
        QFETCH(bool, strict);
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const Checked checked = check(QTextEncoding::decode(file.readAll(), 0), version);

        QStringList found;
        bool unknownSection = false;
        int unknownSections = 0;
        for (QTextBlock block = checked.document->firstBlock(); block.isValid(); block = block.next()) {
            const auto* data = static_cast<const QTextEditorBlockData*>(block.userData());
            if (data->header) {
                unknownSection = false;
                for (const QSyntaxMessage& message : data->messages)
                    unknownSection = unknownSection || message.text == QLatin1String("Invalid group");
                unknownSections += unknownSection;
            }
            if (unknownSection) continue;
            for (const QSyntaxMessage& message : data->messages)
                if (message.kind == SyntaxError)
                    found << QStringLiteral("%1:%2: %3")
                                 .arg(block.blockNumber() + 1)
                                 .arg(message.start + 1)
                                 .arg(message.text);
        }
        if (strict) QCOMPARE(unknownSections, 0);
        QVERIFY2(found.isEmpty(), qPrintable(found.mid(0, 10).join(QLatin1Char('\n'))));
    }

    // A 1.1 stage in a 1.0 project: the camera zoom is newer than the project.
    void newerStageAtOldVersion()
    {
        TAVREL_REQUIRE_TESTDATA();
        QFile file(TestData::root() + QLatin1Char('/') + root + QStringLiteral("stages/kfm.def"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const Checked checked = check(QString::fromUtf8(file.readAll()), 0x1000000);
        QStringList found;
        for (QTextBlock block = checked.document->firstBlock(); block.isValid(); block = block.next())
            for (const QSyntaxMessage& message : checked.messages(block.blockNumber()))
                if (message.kind == SyntaxError)
                    found << QStringLiteral("%1:%2: %3")
                                 .arg(block.blockNumber() + 1)
                                 .arg(message.start + 1)
                                 .arg(message.text);
        const QString invalid =
            QStringLiteral("Parameter invalid for the M.U.G.E.N. version of the current project");
        QCOMPARE(found, (QStringList{"74:1: " + invalid, "74:9: Syntax error - code ends before line",
                                     "75:1: " + invalid, "75:8: Syntax error - code ends before line"}));
    }
};

QTEST_GUILESS_MAIN(tst_MugenRealFiles)
#include "tst_MugenRealFiles.moc"
