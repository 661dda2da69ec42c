// The frame of the main window as the entry routine builds it: its form, the close question, and the
// projects it holds: the empty start project giving way, failed opens, closing the last project, and
// the questions a project asks through the window.

#include "BakDlg.h"
#include "ErrorDlg.h"
#include "MainWindow.h"
#include "ProjectFixture.h"
#include "QActionInfo.h"
#include "QActionList.h"
#include "QActionManager.h"
#include "QAnimations.h"
#include "QCommands.h"
#include "QDefinitions.h"
#include "QDialogRecorder.h"
#include "QInterface.h"
#include "QMugenModel.h"
#include "QPanelWidget.h"
#include "QProject.h"
#include "QProjectStatus.h"
#include "QQuickFind.h"
#include "QRGBPalette.h"
#include "QSingleInstance.h"
#include "QSounds.h"
#include "QSprites.h"
#include "QSyntaxTextEditor.h"
#include "QTextEditor.h"
#include "QTextEditors.h"
#include "QTextElementReg.h"
#include "QTextWorkspace.h"
#include "WindowTestConfig.h"

#include <QActionGroup>
#include <QApplication>
#include <QDockWidget>
#include <QFile>
#include <QLabel>
#include <QListView>
#include <QListWidget>
#include <QMenuBar>
#include <QTabBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>
#include <QTreeView>

class tst_MainWindow : public QObject
{
    Q_OBJECT

    WindowTestConfig configDir;

    // The user's "shortcuts.xml" in the test's configuration folder, holding these elements.
    QString writeShortcuts(const QByteArray& elements) const
    {
        const QString path = configDir.filePath(QStringLiteral("shortcuts.xml"));
        QFile file(path);
        if (file.open(QIODevice::WriteOnly)) file.write("<shortcuts>" + elements + "</shortcuts>\n");
        return path;
    }

    static QStringList tabs(const MainWindow& window)
    {
        QStringList names;
        auto* bar = window.findChild<QTabBar*>(QStringLiteral("projectTabs"));
        for (int i = 0; bar && i < bar->count(); ++i)
            names << bar->tabText(i);
        return names;
    }

private Q_SLOTS:
    void initTestCase()
    {
        // The window writes the configuration when it is destroyed; keep that out of the build tree.
        configDir.claim();
    }

    void init() { WindowTestConfig::fresh(); }

    void cleanup() { WindowTestConfig::drop(); }

    void formHasTitleMenusAndActionDock()
    {
        MainWindow window;
        QCOMPARE(window.windowTitle(), QStringLiteral("Orlenmark Tavrel"));
        QStringList titles;
        for (QAction* action : window.menuBar()->actions())
            titles << action->text();
        // The frame's menus, with the editors' own between View and Tools.
        QCOMPARE(titles.mid(0, 3),
                 (QStringList{QStringLiteral("Project"), QStringLiteral("Edit"), QStringLiteral("View")}));
        const int tools = int(titles.indexOf(QStringLiteral("Tools")));
        QCOMPARE(titles.mid(tools, 2), (QStringList{QStringLiteral("Tools"), QStringLiteral("Help")}));
        const QStringList editors = titles.mid(3, tools - 3);
        for (const char* menu : {"Sprites", "Palettes", "Animations", "Sounds"})
            QVERIFY2(editors.contains(QLatin1String(menu)), menu);
        auto* dock = window.findChild<QDockWidget*>(QStringLiteral("actions"));
        QVERIFY(dock);
        QCOMPARE(dock->windowTitle(), QStringLiteral("Action list"));
        auto* list = dock->findChild<QListView*>(QStringLiteral("actList"));
        QVERIFY(list);
        // Picking an entry of the list runs it: here the switch of the text bar.
        QAction* bar = window.interface()->actionManager()->find(QStringLiteral("view_text_bar"));
        const bool before = bar->isChecked();
        QActionList* shown = window.interface()->actionManager()->actionList();
        QVERIFY(shown->rowOf(bar) >= 0);
        emit list->activated(list->model()->index(shown->rowOf(bar), 0));
        QCOMPARE(bar->isChecked(), !before);
        QVERIFY(window.findChild<QWidget*>(QStringLiteral("centralWidget")));
        // Final setup leaves exactly one empty project, and the first editor current.
        QCOMPARE(window.interface()->projectCount(), 1);
        QCOMPARE(window.interface()->currentEditor(), 0);
    }

    // The recognisers stand for the window's lifetime, once however often a window is made.
    void registersTextElementsForItsLifetime()
    {
        QVERIFY(QTextElementReg::registered().isEmpty());
        qsizetype count = 0;
        {
            MainWindow window;
            count = QTextElementReg::registered().size();
            QVERIFY(count > 0);
        }
        QVERIFY(QTextElementReg::registered().isEmpty());
        MainWindow again;
        QCOMPARE(QTextElementReg::registered().size(), count);
    }

    void closeAsksWhenConfigured_data()
    {
        QTest::addColumn<QString>("confirm");
        QTest::addColumn<int>("answer");
        QTest::addColumn<bool>("asked");
        QTest::addColumn<bool>("closed");
        QTest::newRow("yes closes") << QStringLiteral("true") << int(QUserDialogs::Yes) << true << true;
        QTest::newRow("no keeps it open") << QStringLiteral("true") << int(QUserDialogs::No) << true << false;
        QTest::newRow("escape keeps it open")
            << QStringLiteral("true") << int(QUserDialogs::Cancel) << true << false;
        QTest::newRow("no question when off")
            << QStringLiteral("false") << int(QUserDialogs::No) << false << true;
    }

    void closeAsksWhenConfigured()
    {
        QFETCH(QString, confirm);
        QFETCH(int, answer);
        QFETCH(bool, asked);
        QFETCH(bool, closed);
        (*mugenModel)[QStringLiteral("confirm_close")] = confirm;
        QDialogRecorder dialogs;
        dialogs.answers.enqueue(QUserDialogs::Button(answer));
        MainWindow window;
        window.show();
        QCOMPARE(window.close(), closed);
        QCOMPARE(dialogs.calls.size(), asked ? 1 : 0);
        if (asked) {
            const QDialogRecorder::Call& call = dialogs.calls.first();
            QCOMPARE(call.title, QStringLiteral("Close"));
            QCOMPARE(call.text, QStringLiteral("Do you really want to close Tavrel?"));
            QCOMPARE(call.buttons, QUserDialogs::Buttons(QUserDialogs::Yes | QUserDialogs::No));
            QCOMPARE(call.defaultButton, QUserDialogs::No);
        }
    }

    // What the user left is what the next start shows: panels, dock, tool bars and sizes go through
    // the configuration, and keys the configuration never held keep the window usable.
    void windowStateRoundTrip()
    {
        QMugenModel& config = *mugenModel;
        config[QStringLiteral("show_left_panel")] = false;
        config[QStringLiteral("show_action_list")] = false;
        config[QStringLiteral("toolbar_first")] = false;
        config[QStringLiteral("toolbar_break")] = true;
        config[QStringLiteral("main_toolbar")] = false;
        config.settings.remove(QStringLiteral("window_width"));
        config[QStringLiteral("window_height")] = QStringLiteral("not a number");
        config[QStringLiteral("find_multi_x")] = 40;
        config[QStringLiteral("show_quicksearch")] = true;
        {
            MainWindow window;
            auto* left = window.findChild<QPanelWidget*>(QStringLiteral("leftPanel"));
            QVERIFY(left && left->isHidden());
            QVERIFY(window.findChild<QDockWidget*>(QStringLiteral("actions"))->isHidden());
            QVERIFY(window.mainToolBar()->isHidden());
            QVERIFY(!window.texts()->workspace()->findBar()->isHidden());
            window.texts()->workspace()->findBar()->hide();
            QVERIFY(window.toolBarBreak(window.mainToolBar()));
            QCOMPARE(
                window.interface()->restoredState().floating.value(QStringLiteral("find_multi")).position,
                QPoint(40, 0));
            // The fallback size, not a window of nothing.
            QCOMPARE(window.size(), QSize(580, 750));
            window.interface()->actionManager()->find(QStringLiteral("view_left_panel"))->trigger();
            QVERIFY(!left->isHidden());
            window.resize(640, 480);
            window.show();
            QVERIFY(QTest::qWaitForWindowExposed(&window));
        }
        QCOMPARE(config[QStringLiteral("window_width")].toInt(), 640);
        QCOMPARE(config[QStringLiteral("window_height")].toInt(), 480);
        QCOMPARE(config[QStringLiteral("show_left_panel")].toBool(), true);
        QCOMPARE(config[QStringLiteral("show_action_list")].toBool(), false);
        QCOMPARE(config[QStringLiteral("main_toolbar")].toBool(), false);
        QCOMPARE(config[QStringLiteral("toolbar_first")].toBool(), false);
        QCOMPARE(config[QStringLiteral("find_multi_x")].toInt(), 40);
        QCOMPARE(config[QStringLiteral("show_quicksearch")].toBool(), false);
        QVERIFY(QFile::exists(configDir.filePath(QStringLiteral("config.xml"))));
    }

    void openingAndClosing()
    {
        ProjectFixture fixture;
        QVERIFY(fixture.make());
        QDialogRecorder dialogs;
        MainWindow window;
        QInterface* iface = window.interface();
        QCOMPARE(tabs(window), QStringList{"Project 1"});

        // A definitions file that can't be read adds nothing and says nothing beyond the definitions.
        iface->openProject(fixture.file(QStringLiteral("nothing.def")));
        QCOMPARE(tabs(window), QStringList{"Project 1"});

        // The first real project replaces the empty one; a second one closes nothing.
        iface->openProject(fixture.def());
        QCOMPARE(tabs(window), QStringList{"Test"});
        QCOMPARE(iface->currentProject()->variables.value(QStringLiteral("proj_path")), fixture.character());
        iface->openProject(fixture.def());
        QCOMPARE(tabs(window), (QStringList{"Test", "Test"}));
        QCOMPARE(iface->currentProject(), iface->project(1));

        QVERIFY(iface->closeProject(1));
        QVERIFY(iface->closeProject(0));
        // Closing the last project leaves a new empty one, named by the next number.
        QCOMPARE(tabs(window), QStringList{"Project 2"});
        QVERIFY(iface->onlyEmptyProjectLeft());
        QVERIFY(dialogs.calls.isEmpty());
    }

    // A handed-over file of one kind goes into the current project while it has none of that kind, and
    // into a project of its own after that; a file that can't be read is told and adds nothing.
    void looseFilesFromAHandOff()
    {
        ProjectFixture fixture;
        QVERIFY(fixture.make());
        QDialogRecorder dialogs;
        MainWindow window;
        QInterface* iface = window.interface();
        QProject* first = iface->currentProject();
        for (const char* name : {"sub/kfm.sff", "test.air", "test.cmd", "test.cns", "test.snd"})
            iface->openHandedFile(fixture.file(QLatin1String(name)));
        QCOMPARE(iface->projectCount(), 1);
        QCOMPARE(first->sprites()->count(), 2u);
        // The sprite file was read as a copy: saving asks where to write it.
        QVERIFY(first->sprites()->fileName().isEmpty());
        QCOMPARE(first->animations()->count(), 1);
        QCOMPARE(first->commands()->count(), 1);
        QCOMPARE(first->statesCount(), 1);
        QCOMPARE(first->states(0)->objectName(), fixture.file(QStringLiteral("test.cns")));
        QCOMPARE(first->sounds()->count(), 2u);
        QVERIFY(dialogs.calls.isEmpty());

        iface->openHandedFile(fixture.file(QStringLiteral("test.cns")));
        QCOMPARE(iface->projectCount(), 2);
        QCOMPARE(iface->currentProject()->statesCount(), 1);

        QVERIFY(fixture.write(QStringLiteral("chars/test/broken.snd"), "not a sound file"));
        iface->openHandedFile(fixture.file(QStringLiteral("broken.snd")));
        QCOMPARE(iface->projectCount(), 2);
        QCOMPARE(dialogs.calls.size(), 1);
        QCOMPARE(dialogs.calls.first().title, QStringLiteral("Open"));
        QCOMPARE(
            dialogs.calls.first().text,
            QStringLiteral("The file %1 can't be opened.").arg(fixture.file(QStringLiteral("broken.snd"))));
    }

    // The status bar tells the current project's kind, version and issue counts and follows the tabs; the
    // issue button opens the issue list.
    void issueButtonShowsTheCounts()
    {
        ProjectFixture fixture;
        QVERIFY(fixture.make());
        QVERIFY(
            fixture.write(QStringLiteral("chars/test/test.cns"), "[Statedef 0]\ntype = Q\n[Statedef 0]\n"));
        QDialogRecorder dialogs;
        MainWindow window;
        QInterface* iface = window.interface();
        QToolButton* button = iface->issueStatus();
        auto* label = window.findChild<QLabel*>(QStringLiteral("projectStatus"));
        QVERIFY(label);
        QCOMPARE(button->toolTip(), QStringLiteral("No issues found!"));
        QCOMPARE(label->text(), QStringLiteral("Project: Character, Version: M.U.G.E.N. 1.1"));
        iface->openProject(fixture.def());
        // The fixture's definitions state 1.0.
        QCOMPARE(label->text(), QStringLiteral("Project: Character, Version: M.U.G.E.N. 1.0"));
        iface->currentProject()->check();
        const int errors = iface->currentProject()->messageList()->count(0);
        QVERIFY(errors > 0);
        QCOMPARE(button->toolTip(), QStringLiteral("%1 error(s) found!").arg(errors));
        iface->newProject();
        QCOMPARE(button->toolTip(), QStringLiteral("No issues found!"));
        auto* bar = window.findChild<QTabBar*>(QStringLiteral("projectTabs"));
        bar->setCurrentIndex(0);
        QCOMPARE(button->toolTip(), QStringLiteral("%1 error(s) found!").arg(errors));

        QTest::mouseClick(button, Qt::LeftButton);
        ErrorDlg* issues = iface->issueDialog();
        QVERIFY(issues);
        QVERIFY(issues->isVisible());
        QCOMPARE(issues->windowTitle(), QStringLiteral("Issues"));
        QCOMPARE(issues->list(), iface->currentProject()->messageList());
        QCOMPARE(issues->view()->model()->rowCount(), iface->currentProject()->messageList()->count(3));
        QCOMPARE(QProjectStatus::text(FightFX, 0),
                 QStringLiteral("Project: Fight HUD & effects, Version: M.U.G.E.N. Beta"));
    }

    // The frame's commands are in the Project menu and have the keys of the user's "shortcuts.xml",
    // which the window writes back when it closes.
    void frameCommandsAndTheirKeys()
    {
        const QString shortcuts =
            writeShortcuts("<shortcut action=\"file_new\" keys=\"Ctrl+N\"/>"
                           "<shortcut action=\"file_close_others\" keys=\"Ctrl+Alt+W\"/>"
                           "<shortcut action=\"no_such_action\" keys=\"Ctrl+K\"/>");
        QFile file(shortcuts);
        QDialogRecorder dialogs;
        {
            MainWindow window;
            window.show();
            QVERIFY(QTest::qWaitForWindowExposed(&window));
            QStringList names;
            for (QAction* action : window.fileMenu()->actions())
                if (!action->isSeparator())
                    names << action->text().section(QLatin1Char('\t'), 0, 0).remove('&');
            QVERIFY(names.contains(QStringLiteral("Close other projects")));
            QCOMPARE(names.first(), QStringLiteral("New project"));
            QInterface* iface = window.interface();
            QTest::keyClick(&window, Qt::Key_N, Qt::ControlModifier);
            QTest::keyClick(&window, Qt::Key_N, Qt::ControlModifier);
            QCOMPARE(iface->projectCount(), 3);
            QTest::keyClick(&window, Qt::Key_W, Qt::ControlModifier | Qt::AltModifier);
            QCOMPARE(iface->projectCount(), 1);
            QCOMPARE(tabs(window), QStringList{QStringLiteral("Project 3")});
            QVERIFY(dialogs.calls.isEmpty());
            iface->actionManager()->setShortcut(
                iface->actionManager()->find(QStringLiteral("file_check_errors")),
                QKeySequence(QStringLiteral("F7")));
        }
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray written = file.readAll();
        QVERIFY2(written.contains("action=\"file_check_errors\" keys=\"F7\""), written.constData());
        QVERIFY(!written.contains("no_such_action"));
        QDialogRecorder about;
        {
            MainWindow window;
            window.interface()->actionManager()->find(QStringLiteral("help_about"))->trigger();
        }
        QCOMPARE(about.calls.size(), 1);
        QCOMPARE(about.calls.first().title, QStringLiteral("About Tavrel"));
        QFile::remove(shortcuts);
    }

    // The keys of the editors switch among the text files of the current project; what is typed there
    // is saved with the project, and every line not typed in keeps its bytes.
    void textEditorsShowAndSaveTheProjectsFiles()
    {
        const QString shortcuts = writeShortcuts("<shortcut action=\"editor_definitions\" keys=\"Ctrl+1\"/>"
                                                 "<shortcut action=\"editor_states\" keys=\"Ctrl+5\"/>"
                                                 "<shortcut action=\"file_save\" keys=\"Ctrl+S\"/>");
        ProjectFixture fixture;
        QVERIFY(fixture.make());
        const QByteArray states = "[Statedef 0]\r\ntype = S\r\nctrl = 0 \n\r\n";
        QVERIFY(fixture.write(QStringLiteral("chars/test/test.cns"), states));
        QDialogRecorder dialogs;
        MainWindow window;
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QInterface* iface = window.interface();
        iface->openProject(fixture.def());
        QTextWorkspace* workspace = window.texts()->workspace();
        QTextEditor* editor = workspace->editor();
        auto* panel = window.findChild<QPanelWidget*>(QStringLiteral("leftPanel"));
        QVERIFY(panel);
        QCOMPARE(panel->title(), QStringLiteral("Definitions"));
        QCOMPARE(panel->content()->objectName(), QStringLiteral("def_tree"));
        QCOMPARE(editor->document(), iface->currentProject()->definitions()->document);

        QTest::keyClick(&window, Qt::Key_5, Qt::ControlModifier);
        QCOMPARE(iface->currentEditor(), 4);
        QCOMPARE(panel->title(), QStringLiteral("States"));
        QStringList checked;
        for (QAction* action : iface->editorActions()->actions())
            if (action->isChecked()) checked << action->objectName();
        QCOMPARE(checked, QStringList{QStringLiteral("4")});
        auto* tabs = window.findChild<QTabBar*>(QStringLiteral("statesTabs"));
        QVERIFY(tabs && tabs->isVisible());
        QCOMPARE(tabs->tabText(0), QStringLiteral("test.cns"));
        QCOMPARE(editor->document(), iface->currentProject()->states(0)->document);
        QCOMPARE(editor->toPlainText(), QStringLiteral("[Statedef 0]\ntype = S\nctrl = 0 \n\n"));
        // The outline in the side panel takes the user to the line of an item.
        auto* tree = qobject_cast<QTreeView*>(panel->content());
        QVERIFY(tree && tree->objectName() == QStringLiteral("st_tree") && tree->isVisible());
        QTRY_VERIFY(tree->model() && tree->model()->rowCount() == 1);
        const QModelIndex stateDef = tree->model()->index(0, 0);
        QCOMPARE(stateDef.data().toString(), QStringLiteral("0"));
        editor->moveCursor(QTextCursor::End);
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, tree->visualRect(stateDef).center());
        QCOMPARE(editor->textCursor().blockNumber(), 0);

        QTextCursor cursor(editor->document()->findBlockByNumber(1));
        cursor.movePosition(QTextCursor::EndOfBlock);
        editor->setTextCursor(cursor);
        editor->setFocus();
        QTest::keyClicks(editor, QStringLiteral("A"));
        QCOMPARE(panel->title(), QStringLiteral("States*"));
        QTest::keyClick(&window, Qt::Key_S, Qt::ControlModifier);
        QCOMPARE(panel->title(), QStringLiteral("States"));
        QFile saved(fixture.file(QStringLiteral("test.cns")));
        QVERIFY(saved.open(QIODevice::ReadOnly));
        QCOMPARE(saved.readAll(), QByteArray("[Statedef 0]\r\ntype = SA\r\nctrl = 0 \n\r\n"));
        QVERIFY(dialogs.calls.isEmpty());

        // The issue list's way to a line: from another editor to line 2 of the first state file.
        QTest::keyClick(&window, Qt::Key_1, Qt::ControlModifier);
        QCOMPARE(iface->currentEditor(), 0);
        QVERIFY(!tabs->isVisible());
        iface->navigateTo(pftStates, 0, 1, 0);
        QCOMPARE(iface->currentEditor(), 4);
        QCOMPARE(editor->document(), iface->currentProject()->states(0)->document);
        QCOMPARE(editor->textCursor().blockNumber(), 1);
        QCOMPARE(editor->textCursor().positionInBlock(), 0);
        QFile::remove(shortcuts);
    }

    // State files come and go as tabs: new and open add one, a move reorders the project's list, and
    // closing a changed file asks first; the editor's own save writes only that file.
    void stateFileTabs()
    {
        ProjectFixture fixture;
        QVERIFY(fixture.make());
        QVERIFY(fixture.write(QStringLiteral("chars/test/test.cns"), "[Statedef 0]\ntype = S\n"));
        const QString other = fixture.file(QStringLiteral("other.st"));
        {
            QFile file(other);
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write("[Statedef 5]\r\n");
        }
        QDialogRecorder dialogs;
        MainWindow window;
        QInterface* iface = window.interface();
        iface->openProject(fixture.def());
        iface->switchEditor(4);
        QProject* project = iface->currentProject();
        auto* tabs = window.findChild<QTabBar*>(QStringLiteral("statesTabs"));
        QActionManager* actions = iface->actionManager();
        const int first = tabs->count();
        actions->find(QStringLiteral("st_new"))->trigger();
        QCOMPARE(tabs->count(), first + 1);
        QCOMPARE(tabs->tabText(first), QStringLiteral("States %1").arg(first + 1));
        QCOMPARE(tabs->currentIndex(), first);
        dialogs.fileAnswers.enqueue({other});
        actions->find(QStringLiteral("editor_open"))->trigger();
        QCOMPARE(dialogs.calls.last().title, QStringLiteral("Open states"));
        QCOMPARE(tabs->tabText(first + 1), QStringLiteral("other.st"));
        QCOMPARE(window.texts()->workspace()->editor()->toPlainText(), QStringLiteral("[Statedef 5]\n"));

        // The status bar's zoom acts on the shown workspace.
        QTextEditor* shownText = window.texts()->workspace()->editor();
        const int size = shownText->font().pointSize();
        QTest::mouseClick(window.findChild<QToolButton*>(QStringLiteral("zoomIn")), Qt::LeftButton);
        QCOMPARE(shownText->font().pointSize(), size + 1);
        QTest::mouseClick(window.findChild<QToolButton*>(QStringLiteral("zoomActual")), Qt::LeftButton);
        QCOMPARE(shownText->font().pointSize(), window.texts()->workspace()->baseFontSize());

        tabs->moveTab(first + 1, 0);
        QCOMPARE(project->states(0)->filePath(), other);

        QTextEditor* editor = window.texts()->workspace()->editor();
        tabs->setCurrentIndex(0);
        editor->moveCursor(QTextCursor::End);
        QTest::keyClicks(editor, QStringLiteral("; changed"));
        dialogs.calls.clear();
        dialogs.answers.enqueue(QUserDialogs::No);
        emit tabs->tabCloseRequested(0);
        QCOMPARE(dialogs.calls.size(), 1);
        QCOMPARE(dialogs.calls.first().title, QStringLiteral("Discard changes"));
        QCOMPARE(project->statesCount(), first + 2);
        actions->find(QStringLiteral("st_save"))->trigger();
        QFile saved(other);
        QVERIFY(saved.open(QIODevice::ReadOnly));
        QCOMPARE(saved.readAll(), QByteArray("[Statedef 5]\r\n; changed"));
        emit tabs->tabCloseRequested(0);
        QCOMPARE(project->statesCount(), first + 1);
        QCOMPARE(tabs->count(), first + 1);
        QCOMPARE(editor->document(), project->states(tabs->currentIndex())->document);
    }

    // The right panel shows the side editor with its title and mark, and nothing while there is none.
    void sideEditorInTheRightPanel()
    {
        MainWindow window;
        QInterface* iface = window.interface();
        struct Side : QInterfaceExtraEditor
        {
            QLabel label;
            bool modified = false;
            int activations = 0;
            QString title() const override { return QStringLiteral("Palettes"); }
            bool isModified() const override { return modified; }
            int number() const override { return 1; }
            QWidget* panel() const override { return const_cast<QLabel*>(&label); }
            void activate() override { ++activations; }
        } side;
        iface->registerExtraEditor(&side);
        auto* right = window.findChild<QPanelWidget*>(QStringLiteral("rightPanel"));
        QVERIFY(right->isHidden());
        iface->switchExtraEditor(1);
        QCOMPARE(side.activations, 1);
        QCOMPARE(right->content(), &side.label);
        QVERIFY(!right->isHidden());
        side.modified = true;
        iface->updateExtraEditorName();
        QCOMPARE(right->title(), QStringLiteral("Palettes*"));
        iface->actionManager()->find(QStringLiteral("view_right_panel"))->trigger();
        QVERIFY(right->isHidden());
        iface->actionManager()->find(QStringLiteral("view_right_panel"))->trigger();
        QVERIFY(!right->isHidden());
        iface->switchExtraEditor(4);
        QVERIFY(right->isHidden());
        QCOMPARE(right->title(), QString());
    }

    // A backup comes back into the project under the project's own file names; a project without
    // backups says so instead of showing an empty chooser.
    void loadsABackup()
    {
        ProjectFixture fixture;
        QVERIFY(fixture.make());
        QVERIFY(fixture.write(QStringLiteral("chars/test/test.cns"), "[Statedef 0]\ntype = S\n"));
        QDialogRecorder dialogs;
        MainWindow window;
        QInterface* iface = window.interface();
        iface->openProject(fixture.def());
        QProject* project = iface->currentProject();
        iface->fileLoadBackup();
        QCOMPARE(dialogs.calls.size(), 1);
        QCOMPARE(dialogs.calls.first().title, QStringLiteral("Load backup"));
        QCOMPARE(dialogs.calls.first().text, QStringLiteral("This project has no backups yet."));

        QVERIFY(project->backup());
        QSyntaxTextEditor* states = project->states(0);
        const QString path = states->filePath();
        states->document->setPlainText(QStringLiteral("[Statedef 1]\n"));
        QVERIFY(states->save());
        QTimer::singleShot(0, [&]() {
            auto* chooser = qobject_cast<BakDlg*>(QApplication::activeModalWidget());
            QVERIFY(chooser);
            QCOMPARE(chooser->windowTitle(), QStringLiteral("Load backup"));
            QCOMPARE(chooser->list()->count(), 1);
            chooser->accept();
        });
        iface->fileLoadBackup();
        QCOMPARE(project->states(0)->document->toPlainText(), QStringLiteral("[Statedef 0]\ntype = S\n"));
        QCOMPARE(project->states(0)->filePath(), path);
        QCOMPARE(window.texts()->workspace()->editor()->document()->isEmpty(), false);
    }

    // Each project shows its own files; a closed project leaves nothing of it in the editors.
    void textEditorsFollowTheCurrentProject()
    {
        ProjectFixture fixture;
        QVERIFY(fixture.make());
        QDialogRecorder dialogs;
        MainWindow window;
        QInterface* iface = window.interface();
        iface->switchEditor(3);
        QTextEditor* editor = window.texts()->workspace()->editor();
        iface->openProject(fixture.def());
        QProject* first = iface->currentProject();
        QCOMPARE(editor->document(), first->commands()->document);
        QVERIFY(!editor->isReadOnly());
        iface->newProject();
        QCOMPARE(editor->document(), iface->currentProject()->commands()->document);
        window.findChild<QTabBar*>(QStringLiteral("projectTabs"))->setCurrentIndex(0);
        QCOMPARE(editor->document(), first->commands()->document);
        iface->switchEditor(4);
        QVERIFY(iface->closeProject(0));
        QCOMPARE(iface->currentProject()->statesCount(), 0);
        QCOMPARE(window.texts()->workspace()->text(), nullptr);
        QVERIFY(editor->isReadOnly());
    }

    void answersTheProjectsQuestions()
    {
        QDialogRecorder dialogs;
        MainWindow window;
        QInterface* iface = window.interface();

        dialogs.fileAnswers << QStringList{"1.01"} << QStringList();
        QCOMPARE(iface->spritesVersionToSave(QSprites::Version_200), quint32(QSprites::Version_101));
        QCOMPARE(iface->spritesVersionToSave(QSprites::Version_200), 0u);
        QCOMPARE(dialogs.calls.first().kind, QStringLiteral("item"));

        dialogs.calls.clear();
        dialogs.fileAnswers << QStringList{"/x/y.cns"};
        QCOMPARE(iface->saveFileName(pftStates, QStringLiteral("/x")), QStringLiteral("/x/y.cns"));
        QCOMPARE(dialogs.calls.first().text,
                 QStringLiteral("Constants (*.cns);;States (*.st);;Text (*.txt);;Lua script (*.lua)"));
        QCOMPARE(dialogs.calls.first().dir, QStringLiteral("/x"));
    }

    void asksForTheCharacterPalette()
    {
        ProjectFixture fixture;
        QVERIFY(fixture.make());
        QDialogRecorder dialogs;
        MainWindow window;
        dialogs.fileAnswers << QStringList{fixture.file(QStringLiteral("pal/P1.act"))};
        QRGBPal table[QRGBPal::TableSize];
        window.interface()->charPalette(table);
        QCOMPARE(dialogs.calls.size(), 2);
        QCOMPARE(dialogs.calls.at(0).title, QStringLiteral("Palette warning!"));
        QCOMPARE(
            dialogs.calls.at(0).text,
            QStringLiteral("Tavrel not found the character palette. To view all sprites properly you must "
                           "select an external palette file."));
        QCOMPARE(dialogs.calls.at(1).kind, QStringLiteral("open"));
        QCOMPARE(QRGBPalette(table).color(3).g, uchar(20));
    }
};

QTEST_MAIN(tst_MainWindow)
#include "tst_MainWindow.moc"
