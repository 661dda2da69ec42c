// A test run in the game: the command line's placeholders, and a whole run against a stand-in game
// (a shell script) that records what it was given and what it found in its folders.

#include "MainWindow.h"
#include "ProjectFixture.h"
#include "QDialogRecorder.h"
#include "QInterface.h"
#include "QMugenModel.h"
#include "QMugenParams.h"
#include "QSingleInstance.h"
#include "WindowTestConfig.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

class tst_MugenRunner : public QObject
{
    Q_OBJECT

    WindowTestConfig configDir;

private Q_SLOTS:
    void initTestCase() { configDir.claim(); }
    void init() { WindowTestConfig::fresh(); }
    void cleanup() { WindowTestConfig::drop(); }

    void placeholders()
    {
        // Two digits are one number; repeats count once, in the order of their first appearance.
        QCOMPARE(QMugenParams::placeholders(QStringLiteral("%10 %1 %0 %1 -p2.ai 1")), (QList<int>{10, 1, 0}));
        QVERIFY(QMugenParams::placeholders(QStringLiteral("kfm kfm")).isEmpty());
        QCOMPARE(QMugenParams::replace(QStringLiteral("%1 %10 %1x"), 1, QStringLiteral("tv3_0")),
                 QStringLiteral("tv3_0 %10 tv3_0x"));
        QCOMPARE(QMugenParams::arguments(QStringLiteral("  a  b ")), (QStringList{"a", "b"}));
    }

    void refusesWhatCannotRun()
    {
        QDialogRecorder dialogs;
        MainWindow window;
        QInterface* iface = window.interface();
        iface->fileRunMugen();
        QCOMPARE(
            dialogs.calls.last().text,
            QStringLiteral("Oops, you need to configure a M.U.G.E.N. first. Do it in the Tools / Options."));
        QTemporaryDir engine;
        const QString exe = engine.filePath(QStringLiteral("mugen.sh"));
        QFile script(exe);
        QVERIFY(script.open(QIODevice::WriteOnly));
        script.write("#!/bin/sh\n");
        script.close();
        mugenModel->addEntry(QStringLiteral("M"), exe, QStringLiteral("kfm kfm"), QString());
        iface->fileRunMugen();
        QCOMPARE(dialogs.calls.last().text,
                 QStringLiteral("Oops, wrong parameters on the M.U.G.E.N. "
                                "configuration. Check it in the Tools / Options."));
    }

    // The character is written once for two placeholders, the game sees it under the throw-away name
    // and runs in its own folder, a second run meanwhile is refused, and the copy goes afterwards.
    void runsTheCurrentCharacter()
    {
        ProjectFixture fixture;
        QVERIFY(fixture.make());
        QTemporaryDir engine;
        QVERIFY(QDir().mkpath(engine.filePath(QStringLiteral("chars"))));
        const QString exe = engine.filePath(QStringLiteral("mugen.sh"));
        const QString record = engine.filePath(QStringLiteral("record.txt"));
        QFile script(exe);
        QVERIFY(script.open(QIODevice::WriteOnly));
        script.write(
            QStringLiteral("#!/bin/sh\necho \"$@\" > '%1'\npwd >> '%1'\nls chars/tv3_0 >> '%1'\nsleep 1\n")
                .arg(record)
                .toLocal8Bit());
        script.close();
        script.setPermissions(script.permissions() | QFileDevice::ExeOwner);
        mugenModel->addEntry(QStringLiteral("M"), exe, QStringLiteral("%0 %0 -p2.ai 1"), QString());

        QDialogRecorder dialogs;
        MainWindow window;
        QInterface* iface = window.interface();
        iface->openProject(fixture.def());
        dialogs.calls.clear();
        QTimer::singleShot(300, iface, &QInterface::fileRunMugen);
        iface->fileRunMugen();
        QCOMPARE(dialogs.calls.size(), 1);
        QCOMPARE(dialogs.calls.first().title, QStringLiteral("Warning!"));
        QCOMPARE(dialogs.calls.first().text,
                 QStringLiteral("Oops, you can run only one instance of M.U.G.E.N. at the same time."));
        QFile recorded(record);
        QVERIFY(recorded.open(QIODevice::ReadOnly));
        const QStringList lines = QString::fromLocal8Bit(recorded.readAll()).split(QLatin1Char('\n'));
        QCOMPARE(lines.value(0), QStringLiteral("tv3_0 tv3_0 -p2.ai 1"));
        QCOMPARE(QFileInfo(lines.value(1)).canonicalFilePath(), QFileInfo(engine.path()).canonicalFilePath());
        QVERIFY2(lines.contains(QStringLiteral("tv3_0.def")), qPrintable(lines.join(QLatin1Char('|'))));
        QVERIFY(!QFileInfo::exists(engine.filePath(QStringLiteral("chars/tv3_0"))));
    }
};

QTEST_MAIN(tst_MugenRunner)
#include "tst_MugenRunner.moc"
