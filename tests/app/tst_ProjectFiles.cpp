// The project list and its file commands without a window: which project is current after a close,
// the question before changes are lost, and the empty project that is always left.

#include "ProjectFixture.h"
#include "QDialogRecorder.h"
#include "QModelTables.h"
#include "QMugenModel.h"
#include "QProject.h"
#include "QProjectFiles.h"
#include "QSyntaxTextEditor.h"
#include "TestData.h"
#include "WindowTestConfig.h"

#include <QSignalSpy>
#include <QTest>

class tst_ProjectFiles : public QObject
{
    Q_OBJECT

    // The definitions name their files only once the text elements are known.
    QModelTables tables{TestData::binDir()};

private Q_SLOTS:
    void init() { WindowTestConfig::fresh(); }
    void cleanup() { WindowTestConfig::drop(); }

    void listFollowsTheTabRules()
    {
        ProjectFixture fixture;
        QVERIFY(fixture.make());
        QVERIFY(fixture.write(QStringLiteral("chars/test/test.cns"), "[Statedef 0]\ntype = S\n"));
        QDialogRecorder dialogs;
        QProjectFiles files(nullptr);
        QSignalSpy removed(&files, &QProjectFiles::projectRemoved);
        files.newProject();
        files.openProject(fixture.def());
        // The empty project gives way to the first real one.
        QCOMPARE(files.projectCount(), 1);
        QCOMPARE(removed.count(), 1);
        QProject* character = files.currentProject();
        files.newProject();
        files.newProject();
        QProject* last = files.project(2);
        files.setCurrentIndex(1);
        QVERIFY(files.closeProject(1));
        // The project right of a closed current one takes its place.
        QCOMPARE(files.currentProject(), last);

        QSyntaxTextEditor* states = character->states(0);
        states->document->setPlainText(QStringLiteral("[Statedef 1]\n"));
        dialogs.answers.enqueue(QUserDialogs::No);
        files.setCurrentIndex(1);
        files.fileCloseAll();
        QCOMPARE(dialogs.calls.size(), 1);
        QCOMPARE(dialogs.calls.first().title, QStringLiteral("Discard changes"));
        QCOMPARE(files.projectCount(), 1);
        QCOMPARE(files.currentProject(), character);
        QVERIFY(!files.onlyEmptyProjectLeft());

        dialogs.answers.enqueue(QUserDialogs::Yes);
        files.fileClose();
        QCOMPARE(files.projectCount(), 1);
        QVERIFY(files.currentProject() != character);
        QVERIFY(files.onlyEmptyProjectLeft());
    }
};

QTEST_MAIN(tst_ProjectFiles)
#include "tst_ProjectFiles.moc"
