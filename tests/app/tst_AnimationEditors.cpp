// The animations editor in the window: its commands under their names and scope, its menu, the switch
// to it and to its text mode, the project it follows, and an edit saved through the project that
// changes exactly the lines it should.

#include "FileBytes.h"
#include "MainWindow.h"
#include "ProjectFixture.h"
#include "QActionInfo.h"
#include "QActionManager.h"
#include "QAnimSpriteWorkspace.h"
#include "QAnimation.h"
#include "QAnimationEditors.h"
#include "QAnimationFrame.h"
#include "QAnimations.h"
#include "QAnimationsEditor.h"
#include "QAnimationsPanel.h"
#include "QDialogRecorder.h"
#include "QInterface.h"
#include "QProject.h"
#include "QQuickFind.h"
#include "QSpriteEditors.h"
#include "QSyntaxTextEditor.h"
#include "QTextEditor.h"
#include "QTextEditors.h"
#include "QTextWorkspace.h"
#include "TestData.h"
#include "WindowTestConfig.h"

#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTextCursor>
#include <QTimer>
#include <QToolButton>

class tst_AnimationEditors : public QObject
{
    Q_OBJECT

    WindowTestConfig configDir;

    // The window's animation side: made by the window, or here while the window doesn't make it yet.
    static QAnimationEditors* part(MainWindow& window)
    {
        if (auto* made = window.interface()->findChild<QAnimationEditors*>()) return made;
        return new QAnimationEditors(window.interface(), &window, window.spriteEditorsPart()->workspace());
    }

    static QAction* action(MainWindow& window, const char* name)
    {
        return window.interface()->actionManager()->find(QLatin1String(name));
    }

private Q_SLOTS:
    void initTestCase() { configDir.claim(); }
    void init() { WindowTestConfig::fresh(); }
    void cleanup() { WindowTestConfig::drop(); }

    void commandsAndTheirScope_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("checkable");
        QTest::addColumn<bool>("onPanel");
        for (const char* name :
             {"air_new",         "air_open",          "air_save",          "air_saveas",
              "air_add",         "air_delete",        "air_duplicate",     "air_edit_text",
              "air_save_gif",    "air_frameall_time", "air_frameall_flip", "air_frameall_trans",
              "air_frame_align", "air_clsn_del",      "air_clsn_delall",   "air_clsn_delall_anim",
              "air_clsn_type",   "air_clsn_default",  "air_clsn_prev",     "air_clsn_allinst",
              "air_import_proj"})
            QTest::newRow(name) << QString::fromLatin1(name) << false << false;
        QTest::newRow("air_text_mode") << QStringLiteral("air_text_mode") << true << false;
        for (const char* name : {"air_play", "air_clsn_add1", "air_clsn_add2"})
            QTest::newRow(name) << QString::fromLatin1(name) << true << true;
        for (const char* name :
             {"air_stop", "air_frame_add", "air_frame_delete", "air_pos_left", "air_pos_up", "air_pos_right",
              "air_pos_down", "air_prev_anim", "air_next_anim", "air_prev_frame", "air_next_frame"})
            QTest::newRow(name) << QString::fromLatin1(name) << false << true;
    }

    // Every command lives in the animations scope alone and stands in the Animations menu; the ones
    // used while looking at a frame are the panel's buttons too.
    void commandsAndTheirScope()
    {
        QFETCH(QString, name);
        QFETCH(bool, checkable);
        QFETCH(bool, onPanel);
        MainWindow window;
        QAnimationEditors* animations = part(window);
        QAction* command = window.interface()->actionManager()->find(name);
        QVERIFY(command);
        QCOMPARE(command->isCheckable(), checkable);
        const QActionInfo info = QActionInfo::of(command);
        for (int scope = 0; scope < QActionInfo::ScopeCount; ++scope)
            QVERIFY2(info.inScope(scope) == (scope == QActionInfo::AnimationsScope),
                     qPrintable(QString::number(scope)));
        QVERIFY(animations->menu()->actions().contains(command));
        QToolButton* button = animations->animations()->controls()->findChild<QToolButton*>(name);
        QCOMPARE(button != nullptr, onPanel);
        QVERIFY(!command->text().isEmpty());
    }

    // The Animations menu stands before Tools; its switch shows the editor on the sprite page, and
    // text mode moves it to the text page and back.
    void switchesAndTextMode()
    {
        MainWindow window;
        QAnimationEditors* animations = part(window);
        QInterface* iface = window.interface();
        QActionManager* manager = iface->actionManager();
        QCOMPARE(animations->menu()->title(), QStringLiteral("Animations"));
        const QList<QAction*> menus = window.menuBar()->actions();
        QVERIFY(menus.indexOf(animations->menu()->menuAction()) >= 0);
        QVERIFY(menus.indexOf(animations->menu()->menuAction()) <
                menus.indexOf(window.toolsMenu()->menuAction()));
        QAction* show = action(window, "editor_animations");
        QVERIFY(show && show->isCheckable());
        QCOMPARE(show->objectName(), QStringLiteral("2"));
        QVERIFY(QActionInfo::of(show).inScope(QActionInfo::Everywhere));
        manager->load(TestData::binDir() + QStringLiteral("/shortcuts.xml"));
        QCOMPARE(manager->shortcut(show), QKeySequence(QStringLiteral("Ctrl+3")));

        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        show->trigger();
        QAnimationsEditor* editor = animations->animations();
        QCOMPARE(iface->currentEditor(), 2);
        QCOMPARE(manager->scope(), int(QActionInfo::AnimationsScope));
        QVERIFY(window.spriteEditorsPart()->workspace()->page()->isVisible());
        QVERIFY(editor->controls()->isVisible());
        QCOMPARE(editor->animations(), iface->currentProject()->animations());
        QCOMPARE(editor->controls()->positionLabel()->text(), QStringLiteral("0 / 0"));

        action(window, "air_text_mode")->trigger();
        QVERIFY(editor->isTextMode());
        QVERIFY(window.texts()->workspace()->isVisible());
        QVERIFY(!window.spriteEditorsPart()->workspace()->page()->isVisible());
        QCOMPARE(window.texts()->workspace()->text(), iface->currentProject()->animationText());
        // The text page's search bar searches the animation text while it is shown.
        QTextCursor cursor(iface->currentProject()->animationText()->document);
        cursor.insertText(QStringLiteral("; walk\n[Begin Action 20]\n"));
        QDialogRecorder dialogs;
        const QQuickFindOptions circular{{QQuickFindOption::Circular, true}};
        emit window.texts()->workspace()->findBar()->doFind(QStringLiteral("action 20"), circular);
        QCOMPARE(window.texts()->workspace()->editor()->textCursor().selectedText(),
                 QStringLiteral("Action 20"));
        QVERIFY(dialogs.calls.isEmpty());
        action(window, "air_text_mode")->trigger();
        QVERIFY(!editor->isTextMode());
        QVERIFY(window.spriteEditorsPart()->workspace()->page()->isVisible());
        QVERIFY(!action(window, "air_text_mode")->isChecked());
    }

    // A frame added by its command and saved through the project: the file has one frame more and
    // every other line byte for byte as it was.
    void addedFrameSavesExactly()
    {
        MainWindow window;
        QAnimationEditors* animations = part(window);
        QInterface* iface = window.interface();
        ProjectFixture fixture;
        QVERIFY(fixture.make());
        QDialogRecorder dialogs;
        iface->openProject(fixture.def());
        QProject* project = iface->currentProject();
        QVERIFY(project && project->animations()->count() == 1);
        QAnimationsEditor* editor = animations->animations();
        QCOMPARE(editor->animations(), project->animations());
        iface->switchEditor(2);
        QCOMPARE(editor->controls()->framePositionLabel()->text(), QStringLiteral("1 / 2 - 5 ticks"));
        const QString path = fixture.file(QStringLiteral("test.air"));
        const QByteArray before = readBytes(path);
        action(window, "air_frame_add")->trigger();
        QCOMPARE(project->animations()->at(0)->frameCount(), 3);
        QCOMPARE(editor->framePosition(), 1);
        QVERIFY(editor->isModified());
        action(window, "air_save")->trigger();
        QVERIFY(!editor->isModified());
        const QList<QByteArray> old = before.split('\n');
        const QList<QByteArray> now = readBytes(path).split('\n');
        QCOMPARE(now.size(), old.size() + 1);
        int added = -1;
        for (int i = 0, j = 0; i < now.size(); ++i) {
            if (j < old.size() && now.at(i) == old.at(j)) {
                ++j;
                continue;
            }
            QCOMPARE(added, -1);
            added = i;
        }
        QVERIFY(now.at(added).startsWith("-1,0, 0,0, 10"));

        // The action as a GIF, under the name asked.
        QTemporaryDir out;
        const QString gif = out.filePath(QStringLiteral("stand.gif"));
        dialogs.fileAnswers << QStringList{gif};
        action(window, "air_save_gif")->trigger();
        QVERIFY(readBytes(gif).startsWith("GIF89a"));

        // One undo and a save bring the file back exactly.
        iface->editUndo();
        QCOMPARE(project->animations()->at(0)->frameCount(), 2);
        action(window, "air_save")->trigger();
        QCOMPARE(readBytes(path), before);
    }

    // Playing stops when the current project changes under it.
    void projectSwitchStopsPlaying()
    {
        MainWindow window;
        QAnimationEditors* animations = part(window);
        QInterface* iface = window.interface();
        ProjectFixture fixture;
        QVERIFY(fixture.make());
        QDialogRecorder dialogs;
        iface->openProject(fixture.def());
        iface->switchEditor(2);
        QAnimationsEditor* editor = animations->animations();
        QTimer::singleShot(100, iface, [iface]() { iface->newProject(); });
        action(window, "air_play")->trigger();
        QVERIFY(!editor->isPlaying());
        QVERIFY(!action(window, "air_play")->isChecked());
        QCOMPARE(editor->animations(), iface->currentProject()->animations());
        QVERIFY(animations->rateLabel()->isHidden());

        // Closing the project shown leaves the editor on the one that is current then.
        iface->switchEditor(2);
        const int shown = iface->projectCount();
        QVERIFY(iface->closeProject(shown - 1));
        QCOMPARE(editor->animations(),
                 iface->currentProject() ? iface->currentProject()->animations() : nullptr);
        action(window, "air_next_frame")->trigger();
        action(window, "air_frame_add")->trigger();
    }
};

QTEST_MAIN(tst_AnimationEditors)
#include "tst_AnimationEditors.moc"
