// The recent projects: newest first, each path once, capped by "max_history", kept across runs; a
// project whose file is gone is offered for removal instead of opened.

#include "MainWindow.h"
#include "ProjectFixture.h"
#include "QDialogRecorder.h"
#include "QHistoryManager.h"
#include "QInterface.h"
#include "QMugenModel.h"
#include "QProject.h"
#include "QSingleInstance.h"
#include "WindowTestConfig.h"

#include <QAction>
#include <QMenu>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

class tst_HistoryManager : public QObject
{
    Q_OBJECT

    QTemporaryDir dir;
    WindowTestConfig config;

    QString touch(const QString& name) const
    {
        QFile file(dir.filePath(name));
        file.open(QIODevice::WriteOnly);
        return file.fileName();
    }

private Q_SLOTS:
    void initTestCase() { config.claim(); }
    void init() { WindowTestConfig::fresh(); }
    void cleanup() { WindowTestConfig::drop(); }

    void orderCapAndStore()
    {
        (*mugenModel)[QStringLiteral("max_history")] = 2;
        const QString path = dir.filePath(QStringLiteral("history.xml"));
        const QString a = touch(QStringLiteral("a.def")), b = touch(QStringLiteral("b.def")),
                      c = touch(QStringLiteral("c.def"));
        {
            QHistoryManager history(path);
            history.add(a, QStringLiteral("A"));
            history.add(b, QStringLiteral("B"));
            history.add(a, QStringLiteral("A again"));
            history.add(c, QStringLiteral("C"));
        }
        QHistoryManager read(path);
        QCOMPARE(read.entries().size(), 2);
        QCOMPARE(read.entries().at(0).file, c);
        QCOMPARE(read.entries().at(1).file, a);
        QCOMPARE(read.entries().at(1).name, QStringLiteral("A again"));

        // "Open all" opens the oldest first, so that the newest is current at the end.
        QMenu menu;
        read.setMenu(&menu);
        QSignalSpy opened(&read, &QHistoryManager::entryTriggered);
        read.allTriggered();
        QCOMPARE(opened.count(), 2);
        QCOMPARE(opened.at(1).at(0).toString(), c);
        read.clearTriggered();
        QVERIFY(QHistoryManager(path).entries().isEmpty());
    }

    void goneFileIsOfferedForRemoval()
    {
        const QString path = dir.filePath(QStringLiteral("gone.xml"));
        const QString gone = touch(QStringLiteral("gone.def"));
        QHistoryManager history(path);
        history.add(gone, QStringLiteral("Gone"));
        QFile::remove(gone);
        QMenu menu;
        history.setMenu(&menu);
        QSignalSpy opened(&history, &QHistoryManager::entryTriggered);
        QDialogRecorder dialogs;
        dialogs.answers.enqueue(QUserDialogs::No);
        menu.actions().first()->trigger();
        QCOMPARE(dialogs.calls.size(), 1);
        QCOMPARE(dialogs.calls.first().title, QStringLiteral("File not found!"));
        QCOMPARE(dialogs.calls.first().text,
                 QStringLiteral("The file '%1' doesn't exists. Do you want to remove it from the history?")
                     .arg(QDir::toNativeSeparators(gone)));
        QCOMPARE(history.entries().size(), 1);
        dialogs.answers.enqueue(QUserDialogs::Yes);
        menu.actions().first()->trigger();
        QVERIFY(history.entries().isEmpty());
        QCOMPARE(opened.count(), 0);
    }

    // Opening a project in the window records it; its menu entry opens it again.
    void windowRecordsOpenedProjects()
    {
        ProjectFixture fixture;
        QVERIFY(fixture.make());
        QDialogRecorder dialogs;
        MainWindow window;
        QInterface* iface = window.interface();
        iface->openProject(fixture.def());
        QCOMPARE(iface->history()->entries().first().file, QFileInfo(fixture.def()).absoluteFilePath());
        iface->fileCloseAll();
        QCOMPARE(iface->currentProject()->isEmpty(), true);
        auto* recent = window.fileMenu()->findChild<QMenu*>(QStringLiteral("menuRecent"));
        recent->actions().first()->trigger();
        QCOMPARE(iface->projectCount(), 1);
        QVERIFY(!iface->currentProject()->isEmpty());
    }
};

QTEST_MAIN(tst_HistoryManager)
#include "tst_HistoryManager.moc"
