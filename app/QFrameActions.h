#pragma once

#include <QObject>

class MainWindow;
class QAction;
class QActionManager;
class QInterface;

// Registers the commands of the frame (projects, the issue check, the action list) in the action
// manager and puts them into the window's menus. Only commands that work are registered: a menu
// entry that does nothing would be a lie to the user.
class QFrameActions : public QObject
{
    Q_OBJECT

public:
    QFrameActions(QActionManager* manager, QInterface* iface, MainWindow* window);
    // Checks the panel switches as the restored window state has them.
    void showPanelStates();

private:
    QAction* add(const char* name, const char* slot);

    QActionManager* manager;
    QInterface* iface;
};
