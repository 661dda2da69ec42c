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

#include <QDirIterator>
#include <QSignalSpy>
#include <QTest>

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
            QCOMPARE(max, 19u);
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
            "pal1 pal/p1.act chars/test/pal/P1.act",     "pal2 pal/missing.act -",
            "sprite Sub/KFM.SFF chars/test/sub/kfm.sff", "anim TEST.air chars/test/test.air",
            "sound test.snd chars/test/test.snd",        "cmd test.cmd chars/test/test.cmd",
            "states test.cns chars/test/test.cns",       "states missing.st -",
            "states common1.cns data/common1.cns"};
        QCOMPARE(found, expected);
        // Palettes report only when their file exists; then one step per file.
        QCOMPARE(positions, (QList<uint>{0, 1, 13, 14, 15, 16, 17, 18}));

        QCOMPARE(project.sprites()->count(), 2u);
        QVERIFY(project.sprites()->findPalette(0, 1, 1) >= 0);
        QCOMPARE(project.sprites()->findPalette(0, 1, 2), -1);
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

    void saveAsSkipsUnansweredFiles()
    {
        ProjectFixture fixture;
        QVERIFY(fixture.make());
        QProject project(0, false);
        QVERIFY(project.fromFile(fixture.def(), 0));
        QTemporaryDir target;
        QList<int> kinds;
        connect(&project, &QProject::spritesVersionToSave, this, [](quint32 current) { return current; });
        connect(&project, &QProject::saveFileName, this, [&](QProjectFileType kind, const QString&) {
            kinds << int(kind);
            return kind == pftCommands ? target.filePath(QStringLiteral("x.cmd")) : QString();
        });
        project.toFile(target.filePath(QStringLiteral("copy.def")), false);
        // Sprites, animations, commands, two state files, sounds: each asked once, in this order.
        QCOMPARE(kinds, (QList<int>{1, 2, 3, 4, 4, 5}));
        QCOMPARE(filesBelow(target.path()), (QStringList{"copy.def", "x.cmd"}));
        QCOMPARE(project.commands()->filePath(), target.filePath(QStringLiteral("x.cmd")));
        QCOMPARE(project.definitions()->baseDirectory(), target.path());
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
