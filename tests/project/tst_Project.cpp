// The project as a whole on a small character laid out as the engine's content is: opening with names
// written as Windows content writes them, stopping at every step, saving what changed, asking for
// files that have no place yet, backups and test copies.

#include "FileBytes.h"
#include "ProjectFixture.h"

#include "QAnimations.h"
#include "QCommands.h"
#include "QDefinitions.h"
#include "QDialogRecorder.h"
#include "QMugenModel.h"
#include "QProject.h"
#include "QSyntaxTextEditor.h"
#include "QTextElementRegistry.h"
#include "QTextEncoding.h"

#include <QDirIterator>
#include <QSignalSpy>
#include <QTest>
#include <QTextCodec>

namespace {

// Every file below a folder, relative to it and in lower case, sorted.
QStringList filesBelow(const QString& folder)
{
    QStringList result;
    QDirIterator it(folder, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext())
        result << QDir(folder).relativeFilePath(it.next()).toLower();
    result.sort();
    return result;
}

// Stops the operation when progress reaches a position.
void stopAt(QProject& project, uint position)
{
    QObject::connect(&project, &QProject::progress, &project,
                     [position](uint pos, uint, bool& allow) { allow = pos != position; });
}

} // namespace

class tst_Project : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { registerTextElements(); }

    void opensWhatTheEngineOpens()
    {
        ProjectFixture fixture;
        QVERIFY(fixture.make());
        QProject project(0, false);
        QList<uint> positions;
        connect(&project, &QProject::progress, this, [&](uint pos, uint max, bool&) {
            positions << pos;
            QCOMPARE(max, 18u);
        });
        QVERIFY(project.fromFile(fixture.def(), 0));

        QCOMPARE(project.type(), Character);
        QCOMPARE(project.displayName(), QStringLiteral("Test"));
        QStringList found;
        for (const QProjectFileEntry& entry : project.fileEntries())
            found << entry.role + QLatin1Char(' ') + entry.name + QLatin1Char(' ') +
                         (entry.loaded ? QDir(fixture.root.path()).relativeFilePath(entry.path)
                                       : QStringLiteral("-"));
        const QStringList expected = {
            "pal1 pal/p1.act chars/test/pal/P1.act", "sprite Sub/KFM.SFF chars/test/sub/kfm.sff",
            "anim TEST.air chars/test/test.air",     "sound test.snd chars/test/test.snd",
            "cmd test.cmd chars/test/test.cmd",      "states test.cns chars/test/test.cns",
            "states common1.cns data/common1.cns"};
        QCOMPARE(found, expected);
        // Palettes report only when their file exists; then one step per file.
        QCOMPARE(positions, (QList<uint>{0, 1, 13, 14, 15, 16, 17, 18}));

        QCOMPARE(project.sprites()->count(), 2u);
        QVERIFY(project.sprites()->findPalette(0, 1, 1) >= 0);
        QCOMPARE(project.animations()->count(), 1);
        QCOMPARE(project.commands()->count(), 1);
        QCOMPARE(project.statesCount(), 2);
        QCOMPARE(project.states(1)->fileIndex(), 1);
        QCOMPARE(project.states(1)->mugenVersion(), 0x1000000u);
        QVERIFY(!project.isEmpty());
        QVERIFY(QProject(0, false).isEmpty());
    }

    void stopsAtEveryStep_data()
    {
        QTest::addColumn<uint>("position");
        QTest::newRow("start") << 0u;
        QTest::newRow("palette") << 1u;
        QTest::newRow("sprites") << 13u;
        QTest::newRow("first state file") << 17u;
        QTest::newRow("last state file") << 18u;
    }

    void stopsAtEveryStep()
    {
        QFETCH(uint, position);
        ProjectFixture fixture;
        QVERIFY(fixture.make());
        QProject project(0, false);
        stopAt(project, position);
        QVERIFY(!project.fromFile(fixture.def(), 0));
    }

    void unreadableDefinitionsLoadNothing()
    {
        QProject project(0, false);
        QVERIFY(!project.fromFile(QStringLiteral("/nonexistent/x.def"), 0));
        QVERIFY(project.isEmpty());
    }

    void savesOnlyWhatChanged_data()
    {
        QTest::addColumn<bool>("onlyModified");
        QTest::newRow("only modified") << true;
        QTest::newRow("everything") << false;
    }

    void savesOnlyWhatChanged()
    {
        QFETCH(bool, onlyModified);
        QMugenModel settings;
        settings[QStringLiteral("save_only_modified")] = onlyModified;
        mugenModel = &settings;
        ProjectFixture fixture;
        QVERIFY(fixture.make());
        const QString sff = fixture.file(QStringLiteral("sub/kfm.sff"));
        QVERIFY(QFile::resize(sff, QFileInfo(sff).size()));
        const QDateTime sffTime = QFileInfo(sff).lastModified();
        {
            QProject project(0, false);
            QVERIFY(project.fromFile(fixture.def(), 0));
            project.commands()->setPlainText(QStringLiteral("[Command]\nname = \"b\"\ncommand = b\n"));
            QTest::qWait(20);
            QVERIFY(project.save());
            QVERIFY(!project.commands()->isModified());
        }
        mugenModel = nullptr;
        QCOMPARE(readBytes(fixture.file(QStringLiteral("test.cmd"))),
                 QByteArray("[Command]\nname = \"b\"\ncommand = b\n"));
        // An unchanged file is rewritten only when asked to write everything, and then byte for byte.
        QCOMPARE(QFileInfo(sff).lastModified() != sffTime, !onlyModified);
        QCOMPARE(readBytes(fixture.file(QStringLiteral("test.air"))).left(10), QByteArray("; actions\r"));
        QProject again(0, false);
        QVERIFY(again.fromFile(fixture.def(), 0));
        QCOMPARE(again.sprites()->count(), 2u);
        QCOMPARE(again.sprites()->version(), quint32(QSprites::Version_200));
    }

    void stoppedSaveKeepsTheRest()
    {
        ProjectFixture fixture;
        QVERIFY(fixture.make());
        const QByteArray states = readBytes(fixture.file(QStringLiteral("test.cns")));
        QProject project(0, false);
        QVERIFY(project.fromFile(fixture.def(), 0));
        project.commands()->setPlainText(QStringLiteral("[Command]\nname = \"c\"\n"));
        project.states(0)->setPlainText(QStringLiteral("[Statedef 1]\n"));
        stopAt(project, 3);
        QVERIFY(!project.save());
        // The commands step ran before the stop, the state files' did not.
        QCOMPARE(readBytes(fixture.file(QStringLiteral("test.cmd"))),
                 QByteArray("[Command]\nname = \"c\"\n"));
        QCOMPARE(readBytes(fixture.file(QStringLiteral("test.cns"))), states);
        QVERIFY(project.states(0)->isModified());
    }

    void asksVersionThenNameForANewSpriteFile()
    {
        ProjectFixture fixture;
        QVERIFY(fixture.make());
        QProject project(0, false);
        QVERIFY(project.fromFile(fixture.def(), 0));
        QVERIFY(QFile::remove(fixture.file(QStringLiteral("sub/kfm.sff"))));
        project.variables[QStringLiteral("proj_path")] = fixture.character();
        QStringList asked;
        const QString target = fixture.file(QStringLiteral("new.sff"));
        connect(&project, &QProject::spritesVersionToSave, this, [&](quint32 current) {
            asked << QStringLiteral("version %1").arg(current, 0, 16);
            return quint32(QSprites::Version_201);
        });
        connect(&project, &QProject::saveFileName, this, [&](QProjectFileType kind, const QString& dir) {
            asked << QStringLiteral("name %1 %2").arg(int(kind)).arg(dir == fixture.character());
            return kind == pftSprites ? target : QString();
        });
        QVERIFY(project.save());
        QCOMPARE(asked, (QStringList{"version 2000000", "name 1 1"}));
        QVERIFY(QFileInfo(target).isFile());
        QCOMPARE(project.sprites()->version(), quint32(QSprites::Version_201));
        QCOMPARE(project.variables.value(QStringLiteral("proj_path")), fixture.character());
    }

    // A name is the author's bytes: it is found on disk in any spelling of them, whatever code page is
    // configured, and the names found in no spelling are told once, at opening.
    void namesInEverySpelling_data()
    {
        QTest::addColumn<QByteArray>("definitions");
        QTest::addColumn<QStringList>("files"); // made beside the definitions (in UTF-8 names)
        QTest::addColumn<QByteArray>("codepage");
        QTest::addColumn<QStringList>("missing");

        const QByteArray head("[Info]\r\nname = \"N\"\r\n[Files]\r\n");
        const QByteArray gbk =
            QTextCodec::codecForName("GBK")->fromUnicode(QString::fromUtf8("st = 冰之舞.cns\r\n"));
        const QByteArray sjis =
            QTextCodec::codecForName("Shift_JIS")->fromUnicode(QString::fromUtf8("st = 氷の舞.cns\r\n"));
        const QStringList gbkFile{QString::fromUtf8("冰之舞.cns")};
        const QStringList sjisFile{QString::fromUtf8("氷の舞.cns")};
        QTest::newRow("GBK name") << head + gbk << gbkFile << QByteArray() << QStringList();
        QTest::newRow("GBK name, Thai page configured")
            << head + gbk << gbkFile << QByteArray("TIS-620") << QStringList();
        QTest::newRow("GBK name, Shift-JIS configured")
            << head + gbk << gbkFile << QByteArray("Shift_JIS") << QStringList();
        QTest::newRow("Shift-JIS name, GBK configured")
            << head + sjis << sjisFile << QByteArray("GBK") << QStringList();
        // The definitions of two authors: read in the page of the Japanese comments, the Chinese name's
        // bytes are partly unreadable, and only the bytes themselves give its spellings.
        QTest::newRow("GBK name among Shift-JIS comments")
            << head +
                   QTextCodec::codecForName("Shift_JIS")
                       ->fromUnicode(QString::fromUtf8(
                           "; ヘルパーがコントロール可能かどうか\r\n; 操作不可・操作可能\r\n"
                           "; 必殺技のステートファイル\r\n")) +
                   QTextCodec::codecForName("GBK")->fromUnicode(QString::fromUtf8("st = 身上白光.cns\r\n"))
            << QStringList{QString::fromUtf8("身上白光.cns")} << QByteArray() << QStringList();
        QTest::newRow("GBK name with backslash and case")
            << head +
                   QTextCodec::codecForName("GBK")->fromUnicode(QString::fromUtf8("st = ST\\冰之舞.CNS\r\n"))
            << QStringList{QString::fromUtf8("st/冰之舞.cns")} << QByteArray() << QStringList();
        QTest::newRow("missing in every spelling")
            << head + gbk + "pal2 = pal\\none.act\r\n"
            << QStringList() << QByteArray() << QStringList{"pal/none.act", QString::fromUtf8("冰之舞.cns")};
        // The engine's folder around the project has the common states, or lacks them.
        QTest::newRow("common states missing from the engine")
            << head + "stcommon = nocommon.cns\r\n"
            << QStringList() << QByteArray() << QStringList{"nocommon.cns"};
    }

    void namesInEverySpelling()
    {
        QFETCH(QByteArray, definitions);
        QFETCH(QStringList, files);
        QFETCH(QByteArray, codepage);
        QFETCH(QStringList, missing);

        ProjectFixture fixture;
        QVERIFY(fixture.make());
        QVERIFY(fixture.write(QStringLiteral("chars/test/n.def"), definitions));
        for (const QString& file : files)
            QVERIFY(fixture.write(QStringLiteral("chars/test/") + file, "[Statedef 1]\r\n"));
        QDialogRecorder dialogs;
        QProject project(0, false);
        QVERIFY(project.fromFile(fixture.file(QStringLiteral("n.def")),
                                 uint(QTextEncoding::codecIndex(codepage))));
        QCOMPARE(project.missingFiles(), missing);
        QCOMPARE(project.statesCount(), int(files.size()));
        if (missing.isEmpty()) {
            QVERIFY(dialogs.calls.isEmpty());
            return;
        }
        QCOMPARE(dialogs.calls.size(), 1);
        QCOMPARE(dialogs.calls.first().title, QStringLiteral("Missing files"));
        QCOMPARE(dialogs.calls.first().icon, QUserDialogs::Warning);
        QVERIFY(
            dialogs.calls.first().text.startsWith(QStringLiteral("n.def names files that are not there")));
        for (const QString& name : missing)
            QVERIFY2(dialogs.calls.first().text.contains(QLatin1Char('\n') + name + QLatin1Char('\n')),
                     qPrintable(dialogs.calls.first().text));
    }

    // Outside any engine's folder the common states are the engine's to give, not missing.
    void commonStatesOutsideAnEngine()
    {
        QTemporaryDir folder;
        QVERIFY(writeBytes(folder.filePath(QStringLiteral("a.def")),
                           "[Info]\r\nname = \"A\"\r\n[Files]\r\nstcommon = common1.cns\r\n"));
        QDialogRecorder dialogs;
        QProject project(0, false);
        QVERIFY(project.fromFile(folder.filePath(QStringLiteral("a.def")), 0));
        QCOMPARE(project.fileEntries().size(), 1);
        QVERIFY(project.fileEntries().first().fromEngine);
        QVERIFY(project.missingFiles().isEmpty());
        QVERIFY(dialogs.calls.isEmpty());
    }

    // Save as writes every file the definitions name beside the new definitions, under the name its
    // file has: the copy opens whole, and nothing is asked. The engine's common states stay with the
    // engine; the models move to the copy.
    void saveAsWritesEveryNamedFile()
    {
        ProjectFixture fixture;
        QVERIFY(fixture.make());
        QDialogRecorder dialogs;
        QProject project(0, false);
        QVERIFY(project.fromFile(fixture.def(), 0));
        QTemporaryDir target;
        QList<int> asked;
        connect(&project, &QProject::spritesVersionToSave, this, [](quint32 current) { return current; });
        connect(&project, &QProject::saveFileName, this, [&](QProjectFileType kind, const QString&) {
            asked << int(kind);
            return QString();
        });
        const QString copy = target.filePath(QStringLiteral("out/copy.def"));
        QVERIFY(project.toFile(copy, false));
        QVERIFY(asked.isEmpty());
        QVERIFY(dialogs.calls.isEmpty());
        QCOMPARE(filesBelow(target.filePath(QStringLiteral("out"))),
                 (QStringList{"copy.def", "pal/p1.act", "sub/kfm.sff", "test.air", "test.cmd", "test.cns",
                              "test.snd"}));
        QCOMPARE(project.writtenFiles().first(), copy);
        for (const char* name : {"test.air", "test.cmd", "test.cns", "test.snd", "pal/P1.act"})
            QVERIFY2(readBytes(target.filePath(QStringLiteral("out/") + QLatin1String(name))) ==
                         readBytes(fixture.file(QLatin1String(name))),
                     name);
        QCOMPARE(readBytes(copy), ProjectFixture::definitions());
        QCOMPARE(project.commands()->filePath(), target.filePath(QStringLiteral("out/test.cmd")));
        QCOMPARE(project.definitions()->baseDirectory(), target.filePath(QStringLiteral("out")));

        QProject again(0, false);
        QVERIFY(again.fromFile(copy, 0));
        QVERIFY(again.missingFiles().isEmpty());
        QCOMPARE(again.statesCount(), 1);
        QCOMPARE(again.sprites()->count(), 2u);
    }

    // Names the original has no file for: the copy lacks them too, and the user is told. Names that lead
    // out of the folder, or a folder that can't be made: nothing is written, the definitions least.
    void saveAsTellsWhatItCantWrite_data()
    {
        QTest::addColumn<QByteArray>("extra"); // more lines of [Files]
        QTest::addColumn<QString>("target");   // relative to the target folder
        QTest::addColumn<bool>("saved");
        QTest::addColumn<QString>("told");

        QTest::newRow("files the original lacks")
            << QByteArray("st = missing.st\r\npal2 = pal\\missing.act\r\n") << "out/copy.def" << true
            << "copy.def names files that the project doesn't have, so the copy lacks them "
               "too:\npal/missing.act\n"
               "missing.st";
        QTest::newRow("name out of the folder")
            << QByteArray("st = ..\\shared.st\r\n") << "out/copy.def" << false
            << "copy.def can't be saved as it stands: these files that it names can't be written.\n"
               "../shared.st: it lies outside the folder of the definitions";
        QTest::newRow("folder that can't be made") << QByteArray() << "file/copy.def" << false << "file";
    }

    void saveAsTellsWhatItCantWrite()
    {
        QFETCH(QByteArray, extra);
        QFETCH(QString, target);
        QFETCH(bool, saved);
        QFETCH(QString, told);

        ProjectFixture fixture;
        QVERIFY(fixture.make());
        QVERIFY(fixture.write(QStringLiteral("chars/shared.st"), "[Statedef 2]\r\n"));
        QVERIFY(fixture.write(QStringLiteral("chars/test/test.def"), ProjectFixture::definitions() + extra));
        QDialogRecorder dialogs;
        QProject project(0, false);
        QVERIFY(project.fromFile(fixture.def(), 0));
        dialogs.calls.clear();
        QTemporaryDir folder;
        QVERIFY(writeBytes(folder.filePath(QStringLiteral("file")), "not a folder"));
        connect(&project, &QProject::spritesVersionToSave, this, [](quint32 current) { return current; });

        QCOMPARE(project.toFile(folder.filePath(target), false), saved);
        QCOMPARE(QFileInfo::exists(folder.filePath(target)), saved);
        if (!saved) QCOMPARE(filesBelow(folder.path()), QStringList{"file"});
        QCOMPARE(dialogs.calls.size(), 1);
        QCOMPARE(dialogs.calls.first().title, QStringLiteral("Save project as"));
        QVERIFY2(dialogs.calls.first().text.contains(told), qPrintable(dialogs.calls.first().text));
        QCOMPARE(project.saveError().isEmpty(), saved);
        // The project stays where it was when nothing could be saved.
        if (!saved) QCOMPARE(project.definitions()->filePath(), fixture.def());
    }

    // A state file made in the editor that the definitions don't name is asked for.
    void saveAsAsksForUnnamedFiles()
    {
        ProjectFixture fixture;
        QVERIFY(fixture.make());
        QProject project(0, false);
        QVERIFY(project.fromFile(fixture.def(), 0));
        project.addStatesFile(QString())->setPlainText(QStringLiteral("[Statedef 3]\n"));
        QTemporaryDir target;
        QList<int> asked;
        connect(&project, &QProject::spritesVersionToSave, this, [](quint32 current) { return current; });
        connect(&project, &QProject::saveFileName, this, [&](QProjectFileType kind, const QString&) {
            asked << int(kind) << project.savingIndex();
            return target.filePath(QStringLiteral("extra.cns"));
        });
        QVERIFY(project.toFile(target.filePath(QStringLiteral("copy.def")), false));
        QCOMPARE(asked, (QList<int>{4, 2}));
        QCOMPARE(readBytes(target.filePath(QStringLiteral("extra.cns"))), QByteArray("[Statedef 3]\r\n"));
    }

    void backupsHoldEveryFile()
    {
        ProjectFixture fixture;
        QVERIFY(fixture.make());
        QProject project(0, false);
        QVERIFY(project.fromFile(fixture.def(), 0, true));
        const QString backups = fixture.file(QStringLiteral("backup"));
        QStringList folders = QDir(backups).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
        QCOMPARE(folders.size(), 1);
        const QStringList expected = {"common1.cns", "pal/p1.act", "sub/kfm.sff", "test.air",
                                      "test.cmd",    "test.cns",   "test.def",    "test.snd"};
        QCOMPARE(filesBelow(QDir(backups).filePath(folders.first())), expected);
        QVERIFY(QDir(backups).removeRecursively());

        const QString cmdPath = project.commands()->filePath();
        project.commands()->setPlainText(QStringLiteral("[Command]\nname = \"d\"\n"));
        QVERIFY(project.backup());
        folders = QDir(backups).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
        QCOMPARE(folders.size(), 1);
        const QString folder = QDir(backups).filePath(folders.first());
        QCOMPARE(filesBelow(folder), expected);
        // A backup leaves the models where they were, changes and all.
        QCOMPARE(project.commands()->filePath(), cmdPath);
        QVERIFY(project.commands()->isModified());

        // Loading the backup into the open project keeps the names of the files it came from.
        QVERIFY(project.fromFile(QDir(folder).filePath(QStringLiteral("test.def")), 0, false, true));
        QCOMPARE(project.commands()->filePath(), cmdPath);
        QCOMPARE(project.commands()->count(), 1);
        QCOMPARE(project.statesCount(), 2);
        QCOMPARE(project.states(0)->filePath(), fixture.file(QStringLiteral("test.cns")));
        QCOMPARE(project.sprites()->fileName(), fixture.file(QStringLiteral("sub/kfm.sff")));
    }

    void testCopyOfAStageNamesItsOwnSprites()
    {
        ProjectFixture fixture;
        QVERIFY(fixture.write(
            QStringLiteral("stages/s.def"),
            "[Info]\r\nname = \"S\"\r\n[BGDef]\r\nSPR = stages\\s.sff\r\n[BG 1]\r\ntype = normal\r\n"));
        QVERIFY(fixture.write(QStringLiteral("stages/s.sff"), "not a sprite file"));
        QDialogRecorder dialogs;
        QProject project(0, false);
        QVERIFY(project.fromFile(fixture.root.filePath(QStringLiteral("stages/s.def")), 0));
        QCOMPARE(project.type(), Stage);
        QTemporaryDir folder;
        QStringList written;
        QVERIFY(project.saveTestCopy(folder.path(), QStringLiteral("test"), &written));
        QCOMPARE(written, (QStringList{folder.filePath(QStringLiteral("test.def")),
                                       folder.filePath(QStringLiteral("test.sff"))}));
        QCOMPARE(
            readBytes(written.first()),
            QByteArray("[Info]\r\nname = \"S\"\r\n[BGDef]\r\nspr = test.sff\r\n[BG 1]\r\ntype = normal\r\n"));
        // Sprites that failed to load go along byte for byte under the name the copy's definitions use.
        QCOMPARE(readBytes(written.last()), QByteArray("not a sprite file"));
    }

    void stateFilesRenumber()
    {
        QDialogRecorder dialogs;
        QProject project(0, false);
        for (int i = 0; i < 3; ++i)
            project.addStatesFile(QString())->setPlainText(
                QStringLiteral("[Statedef %1]\nbad line\n").arg(i));
        QSyntaxTextEditor* last = project.states(2);
        project.moveStatesFile(2, 0);
        QCOMPARE(project.states(0), last);
        project.removeStatesFile(1);
        QCOMPARE(project.statesCount(), 2);
        QCOMPARE(project.states(0)->fileIndex(), 0);
        QCOMPARE(project.states(1)->fileIndex(), 1);

        // A changed file without a name on disk closes freely; one with a name asks.
        QVERIFY(project.canClose());
        QVERIFY(dialogs.calls.isEmpty());
    }
};

QTEST_MAIN(tst_Project)
#include "tst_Project.moc"
