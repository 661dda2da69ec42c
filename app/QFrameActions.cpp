#include "QFrameActions.h"

#include "MainWindow.h"
#include "QActionInfo.h"
#include "QActionManager.h"
#include "QActionTexts.h"
#include "QHistoryManager.h"
#include "QInterface.h"

#include <QDockWidget>
#include <QMenu>
#include <QToolBar>

#include <utility>

QFrameActions::QFrameActions(QActionManager* manager, QInterface* iface, MainWindow* window)
    : QObject(iface), manager(manager), iface(iface)
{
    QMenu* project = window->fileMenu();
    project->addAction(add("file_new", SLOT(fileNew())));
    project->addAction(add("file_open", SLOT(fileOpen())));
    QMenu* recent = project->addMenu(QString());
    recent->setObjectName(QStringLiteral("menuRecent"));
    iface->history()->setMenu(recent);
    project->addSeparator();
    project->addAction(add("file_save", SLOT(fileSave())));
    project->addAction(add("file_saveas", SLOT(fileSaveAs())));
    project->addAction(add("file_backup", SLOT(fileBackup())));
    project->addAction(add("file_load_backup", SLOT(fileLoadBackup())));
    project->addSeparator();
    // The file of the current editor, whichever it is.
    project->addAction(add("editor_new", SLOT(editorNew())));
    project->addAction(add("editor_open", SLOT(editorOpen())));
    project->addAction(add("editor_save", SLOT(editorSave())));
    project->addAction(add("editor_saveas", SLOT(editorSaveAs())));
    if (auto* files = window->fileMenu()->findChild<QMenu*>(QStringLiteral("menuEditorFiles")))
        project->addMenu(files);
    project->addSeparator();
    project->addAction(add("file_close", SLOT(fileClose())));
    project->addAction(add("file_close_all", SLOT(fileCloseAll())));
    project->addAction(add("file_close_others", SLOT(fileCloseAllCurr())));
    project->addSeparator();
    project->addAction(add("file_check_errors", SLOT(fileCheck())));
    project->addAction(add("file_run_mugen", SLOT(fileRunMugen())));
    project->addSeparator();
    QAction* exit =
        manager->add({QActionInfo::Everywhere}, QStringLiteral("file_exit"),
                     QActionTexts::id(QStringLiteral("file_exit")), false, window, &MainWindow::close);
    project->addAction(exit);

    QMenu* edit = window->editMenu();
    QToolBar* bar = window->mainToolBar();
    bar->addActions({manager->find(QStringLiteral("file_new")), manager->find(QStringLiteral("file_open")),
                     manager->find(QStringLiteral("file_save"))});
    bar->addSeparator();
    for (const auto& [name, slot] : {std::pair{"edit_undo", SLOT(editUndo())},
                                     {"edit_redo", SLOT(editRedo())},
                                     {"edit_cut", SLOT(editCut())},
                                     {"edit_copy", SLOT(editCopy())},
                                     {"edit_paste", SLOT(editPaste())}}) {
        edit->addAction(add(name, slot));
        if (qstrcmp(name, "edit_redo") == 0) edit->addSeparator();
    }
    edit->addSeparator();
    bar->addActions({manager->find(QStringLiteral("edit_undo")), manager->find(QStringLiteral("edit_redo"))});

    // The dock's own toggle keeps the check mark true when the dock is closed by its title bar.
    QDockWidget* dock = window->findChild<QDockWidget*>(QStringLiteral("actions"));
    QAction* actions = manager->add({QActionInfo::Everywhere}, QStringLiteral("view_actions"),
                                    QActionTexts::id(QStringLiteral("view_actions")), true, dock,
                                    [dock](bool shown) { dock->setVisible(shown); });
    if (dock) {
        actions->setChecked(!dock->isHidden());
        connect(dock, &QDockWidget::visibilityChanged, actions, [actions, dock]() {
            const QSignalBlocker blocker(actions);
            actions->setChecked(!dock->isHidden());
        });
    }
    window->viewMenu()->addAction(actions);
    QAction* left = manager->add({QActionInfo::Everywhere}, QStringLiteral("view_left_panel"),
                                 QActionTexts::id(QStringLiteral("view_left_panel")), true, iface,
                                 SLOT(viewLeftPanel(bool)));
    QAction* right = manager->add({QActionInfo::Everywhere}, QStringLiteral("view_right_panel"),
                                  QActionTexts::id(QStringLiteral("view_right_panel")), true, iface,
                                  SLOT(viewRightPanel(bool)));
    window->viewMenu()->addSeparator();
    window->viewMenu()->addAction(add("view_zoomin", SLOT(zoomIn())));
    window->viewMenu()->addAction(add("view_zoomout", SLOT(zoomOut())));
    window->viewMenu()->addAction(add("view_zoomreset", SLOT(zoomActual())));
    window->viewMenu()->addSeparator();
    window->viewMenu()->addAction(left);
    window->viewMenu()->addAction(right);
    window->toolsMenu()->addAction(add("tools_options", SLOT(toolsOptions())));
    window->helpMenu()->addAction(add("help_about", SLOT(helpAbout())));
}

void QFrameActions::showPanelStates()
{
    // Called once the window state is restored, without running the slots again.
    for (const auto& [name, shown] : {std::pair{"view_left_panel", iface->isLeftPanelShown()},
                                      {"view_right_panel", iface->isRightPanelShown()}}) {
        QAction* action = manager->find(QLatin1String(name));
        const QSignalBlocker blocker(action);
        action->setChecked(shown);
    }
}

QAction* QFrameActions::add(const char* name, const char* slot)
{
    const QString key = QLatin1String(name);
    return manager->add({QActionInfo::Everywhere}, key, QActionTexts::id(key), false, iface, slot);
}
