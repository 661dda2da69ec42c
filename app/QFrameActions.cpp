#include "QFrameActions.h"

#include "MainWindow.h"
#include "QActionInfo.h"
#include "QActionManager.h"
#include "QActionTexts.h"
#include "QInterface.h"

#include <QDockWidget>
#include <QMenu>

QFrameActions::QFrameActions(QActionManager* manager, QInterface* iface, MainWindow* window)
    : QObject(iface), manager(manager), iface(iface)
{
    QMenu* project = window->fileMenu();
    project->addAction(add("file_new", SLOT(fileNew())));
    project->addAction(add("file_open", SLOT(fileOpen())));
    project->addSeparator();
    project->addAction(add("file_save", SLOT(fileSave())));
    project->addAction(add("file_saveas", SLOT(fileSaveAs())));
    project->addAction(add("file_backup", SLOT(fileBackup())));
    project->addSeparator();
    project->addAction(add("file_close", SLOT(fileClose())));
    project->addAction(add("file_close_all", SLOT(fileCloseAll())));
    project->addAction(add("file_close_others", SLOT(fileCloseAllCurr())));
    project->addSeparator();
    project->addAction(add("file_check_errors", SLOT(fileCheck())));
    project->addSeparator();
    QAction* exit =
        manager->add({QActionInfo::Everywhere}, QStringLiteral("file_exit"),
                     QActionTexts::id(QStringLiteral("file_exit")), false, window, &MainWindow::close);
    project->addAction(exit);

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
}

QAction* QFrameActions::add(const char* name, const char* slot)
{
    const QString key = QLatin1String(name);
    return manager->add({QActionInfo::Everywhere}, key, QActionTexts::id(key), false, iface, slot);
}
