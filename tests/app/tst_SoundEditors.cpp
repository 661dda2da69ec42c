// The sounds editor in the window: its commands under their names and scopes, its menu and page, the
// switch by its key, the project it follows, saving through the project, and playing where no audio
// back end or device works, which must say so and leave nothing checked.

#include "MainWindow.h"
#include "ProjectFixture.h"
#include "QActionInfo.h"
#include "QActionManager.h"
#include "QDialogRecorder.h"
#include "QInterface.h"
#include "QMediaBackend.h"
#include "QMediaSoundPlayer.h"
#include "QProject.h"
#include "QSound.h"
#include "QSoundEditors.h"
#include "QSoundPlayer.h"
#include "QSoundWorkspace.h"
#include "QSounds.h"
#include "QSoundsEditor.h"
#include "QSoundsPanel.h"
#include "TestData.h"
#include "WindowTestConfig.h"

#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>

class tst_SoundEditors : public QObject
{
    Q_OBJECT

    WindowTestConfig configDir;
    QTemporaryDir scripts;

    // The window's sound side: made by the window, or here while the window doesn't make it yet.
    static QSoundEditors* part(MainWindow& window)
    {
        if (auto* made = window.interface()->findChild<QSoundEditors*>()) return made;
        return new QSoundEditors(window.interface(), &window);
    }

    static QAction* action(MainWindow& window, const char* name)
    {
        return window.interface()->actionManager()->find(QLatin1String(name));
    }

    // A media probe that answers as a shell script does.
    QString probe(const QString& name, const QByteArray& body)
    {
        const QString path = scripts.filePath(name);
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly)) return QString();
        file.write("#!/bin/sh\n" + body + "\n");
        file.close();
        file.setPermissions(file.permissions() | QFileDevice::ExeOwner);
        return path;
    }

private Q_SLOTS:
    void initTestCase() { configDir.claim(); }
    void init() { WindowTestConfig::fresh(); }
    void cleanup()
    {
        QSoundPlayer::setFactory(nullptr);
        QMediaBackend::setProbeProgram(QString());
        QMediaBackend::reset();
        WindowTestConfig::drop();
    }

    void commandsAndTheirScopes_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("checkable");
        QTest::addColumn<bool>("onPanel");
        for (const char* name : {"snd_new", "snd_open", "snd_save", "snd_saveas", "snd_add", "snd_delete",
                                 "snd_openwav", "snd_savewav", "snd_duplicate", "snd_delete_grp",
                                 "snd_rename_grp", "snd_export", "snd_import", "snd_import_proj"})
            QTest::newRow(name) << QString::fromLatin1(name) << false << false;
        for (const char* name : {"snd_play", "snd_play_loop", "snd_stop"})
            QTest::newRow(name) << QString::fromLatin1(name) << true << true;
        for (const char* name : {"snd_prev_grp", "snd_next_grp", "snd_prev", "snd_next"})
            QTest::newRow(name) << QString::fromLatin1(name) << false << true;
    }

    // Every command lives in the sounds scope alone, stands in the Sounds menu, and the position and
    // play commands are the panel's buttons too.
    void commandsAndTheirScopes()
    {
        QFETCH(QString, name);
        QFETCH(bool, checkable);
        QFETCH(bool, onPanel);
        MainWindow window;
        QSoundEditors* sounds = part(window);
        QAction* command = window.interface()->actionManager()->find(name);
        QVERIFY(command);
        QCOMPARE(command->isCheckable(), checkable);
        const QActionInfo info = QActionInfo::of(command);
        for (int scope = 0; scope < QActionInfo::ScopeCount; ++scope)
            QVERIFY2(info.inScope(scope) == (scope == QActionInfo::SoundsScope),
                     qPrintable(QString::number(scope)));
        QVERIFY(sounds->menu()->actions().contains(command));
        QToolButton* button = sounds->sounds()->controls()->findChild<QToolButton*>(name);
        QCOMPARE(button != nullptr, onPanel);
        if (button) QCOMPARE(button->defaultAction(), command);
        QVERIFY(!command->text().isEmpty());
    }

    // The Sounds menu stands before Tools; Ctrl+6 shows the editor on its own page in its own scope.
    void editorSwitchesByItsKey()
    {
        MainWindow window;
        QSoundEditors* sounds = part(window);
        QInterface* iface = window.interface();
        QActionManager* manager = iface->actionManager();
        QCOMPARE(sounds->menu()->title(), QStringLiteral("Sounds"));
        const QList<QAction*> menus = window.menuBar()->actions();
        QVERIFY(menus.indexOf(sounds->menu()->menuAction()) >= 0);
        QVERIFY(menus.indexOf(sounds->menu()->menuAction()) <
                menus.indexOf(window.toolsMenu()->menuAction()));
        QAction* show = action(window, "editor_sounds");
        QVERIFY(show && show->isCheckable());
        QCOMPARE(show->objectName(), QStringLiteral("5"));
        QVERIFY(QActionInfo::of(show).inScope(QActionInfo::Everywhere));
        // The keys shipped beside the program bind the editor's switch.
        manager->load(TestData::binDir() + QStringLiteral("/shortcuts.xml"));
        QCOMPARE(manager->shortcut(show), QKeySequence(QStringLiteral("Ctrl+6")));

        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        show->trigger();
        QCOMPARE(iface->currentEditor(), QSoundsEditor::Number);
        QCOMPARE(manager->scope(), QActionInfo::SoundsScope);
        QVERIFY(sounds->workspace()->page()->isVisible());
        QVERIFY(sounds->sounds()->controls()->isVisible());
        // The empty start project: dashes everywhere.
        QCOMPARE(sounds->sounds()->sounds(), iface->currentProject()->sounds());
        QCOMPARE(sounds->sounds()->controls()->infoLabel()->text(),
                 QStringLiteral("Channels: ---\nSample rate: ---\nBits per sample: ---\nDuration: ---"));
        iface->switchEditor(1);
        QVERIFY(!sounds->workspace()->page()->isVisible());
    }

    // Opening a project binds its sounds; its commands act on them through their actions, with one undo.
    void followsTheCurrentProject()
    {
        MainWindow window;
        QSoundEditors* sounds = part(window);
        QInterface* iface = window.interface();
        ProjectFixture fixture;
        QVERIFY(fixture.make());
        QDialogRecorder dialogs;
        iface->openProject(fixture.def());
        QProject* project = iface->currentProject();
        QVERIFY(project && project->sounds()->count() == 2);
        QSoundsEditor* editor = sounds->sounds();
        QCOMPARE(editor->sounds(), project->sounds());
        iface->switchEditor(QSoundsEditor::Number);
        QCOMPARE(editor->controls()->positionLabel()->text(), QStringLiteral("1 / 2"));
        action(window, "snd_next")->trigger();
        QCOMPARE(editor->position(), 1);
        QCOMPARE(editor->controls()->infoLabel()->text(),
                 QStringLiteral("Channels: 2 (Stereo)\nSample rate: 11025 Hz\nBits per sample: 16 bits\n"
                                "Duration: 0.005 seconds"));
        action(window, "snd_duplicate")->trigger();
        QCOMPARE(project->sounds()->count(), 3u);
        iface->editUndo();
        QCOMPARE(project->sounds()->count(), 2u);

        // Save as goes through the project's question for a name and writes what the model holds.
        QTemporaryDir dir;
        const QString copy = dir.filePath(QStringLiteral("copy.snd"));
        project->sounds()->setInfo(0, 40, 41);
        dialogs.fileAnswers << QStringList{copy};
        action(window, "snd_saveas")->trigger();
        QSounds back;
        QVERIFY(back.fromFile(copy));
        QCOMPARE(back.at(0)->group, 40u);
        QCOMPARE(back.bytes(1), project->sounds()->bytes(1));
        QVERIFY(!project->sounds()->isModified());
    }

    // A real character's sounds in the window's list.
    void realCharacterList()
    {
        TAVREL_REQUIRE_TESTDATA();
        const QStringList defs = TestData::files({QStringLiteral("kfm.def")});
        if (defs.isEmpty()) QSKIP("no kfm.def in the test data");
        MainWindow window;
        QSoundEditors* sounds = part(window);
        QDialogRecorder dialogs;
        window.interface()->openProject(defs.first());
        QSounds* model = window.interface()->currentProject()->sounds();
        QVERIFY(model->count() > 0);
        QTableView* list = sounds->workspace()->list();
        QCOMPARE(list->model()->rowCount(), int(model->count()));
        const QSound* last = model->at(model->count() - 1);
        QCOMPARE(list->model()->index(int(model->count()) - 1, 0).data().toString(),
                 QString::number(last->group));
        sounds->sounds()->definePos(int(model->count()) - 1);
        QCOMPARE(sounds->sounds()->controls()->infoLabel()->text(), QSoundsEditor::infoText(last));
        QVERIFY(!model->isModified());
    }

    void noAudioDevice_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QString>("reason");
        QTest::newRow("no device") << QByteArray("echo outputs 0; exit 0")
                                   << QStringLiteral("No audio output device was found.");
        QTest::newRow("back end crashes") << QByteArray("kill -SEGV $$") << QString();
    }

    // Where nothing can play, the play command says so under "Play sound", unchecks itself and the
    // window goes on.
    void noAudioDevice()
    {
        QFETCH(QByteArray, body);
        QFETCH(QString, reason);
        MainWindow window;
        part(window);
        QMediaSoundPlayer::install();
        QMediaBackend::reset();
        QMediaBackend::setProbeProgram(
            probe(QString::fromLatin1(QTest::currentDataTag()).replace(' ', '_'), body));
        ProjectFixture fixture;
        QVERIFY(fixture.make());
        QDialogRecorder dialogs;
        window.interface()->openProject(fixture.def());
        window.interface()->switchEditor(QSoundsEditor::Number);
        dialogs.calls.clear();
        for (const char* name : {"snd_play", "snd_play_loop"}) {
            QAction* play = action(window, name);
            play->trigger();
            QVERIFY(!play->isChecked());
        }
        QVERIFY(!window.interface()->currentProject()->sounds()->isPlaying());
        QVERIFY(!dialogs.calls.isEmpty());
        QCOMPARE(dialogs.calls.first().title, QStringLiteral("Play sound"));
        QVERIFY(dialogs.calls.first().text.startsWith(
            QStringLiteral("Sounds can't be played on this computer.\n")));
        if (!reason.isEmpty())
            QCOMPARE(dialogs.calls.first().text,
                     QStringLiteral("Sounds can't be played on this computer.\n") + reason);
    }

    // The real probe where the tests run: either a back end plays (then stop ends it), or the user is
    // told why not; never a crash.
    void realProbe()
    {
        const QString program = TestData::binDir() + QStringLiteral("/tavrel-media-probe");
        if (!QFile::exists(program)) QSKIP("tavrel-media-probe is not built next to the tests");
        MainWindow window;
        part(window);
        QMediaSoundPlayer::install();
        QMediaBackend::reset();
        QMediaBackend::setProbeProgram(program);
        ProjectFixture fixture;
        QVERIFY(fixture.make());
        QDialogRecorder dialogs;
        window.interface()->openProject(fixture.def());
        window.interface()->switchEditor(QSoundsEditor::Number);
        dialogs.calls.clear();
        QAction* loop = action(window, "snd_play_loop");
        loop->trigger();
        if (loop->isChecked()) {
            action(window, "snd_stop")->trigger();
            QVERIFY(!loop->isChecked());
        } else {
            QVERIFY(!dialogs.calls.isEmpty());
            QCOMPARE(dialogs.calls.first().title, QStringLiteral("Play sound"));
        }
    }

    // With a player that works, a loop plays until stop(true), which unchecks every play command.
    void loopStoppedByStop()
    {
        MainWindow window;
        QSoundEditors* sounds = part(window);
        QSoundPlayer::setFactory(nullptr);
        ProjectFixture fixture;
        QVERIFY(fixture.make());
        QDialogRecorder dialogs;
        window.interface()->openProject(fixture.def());
        window.interface()->switchEditor(QSoundsEditor::Number);
        QAction* play = action(window, "snd_play");
        QAction* loop = action(window, "snd_play_loop");
        QAction* stop = action(window, "snd_stop");
        loop->trigger();
        QVERIFY(loop->isChecked());
        QVERIFY(window.interface()->currentProject()->sounds()->isPlaying());
        play->trigger();
        QVERIFY(play->isChecked() && !loop->isChecked());
        loop->trigger();
        sounds->sounds()->stop(true);
        QVERIFY(!play->isChecked() && !loop->isChecked() && !stop->isChecked());
        QVERIFY(!window.interface()->currentProject()->sounds()->isPlaying());
        QVERIFY(dialogs.calls.isEmpty());
    }
};

QTEST_MAIN(tst_SoundEditors)
#include "tst_SoundEditors.moc"
