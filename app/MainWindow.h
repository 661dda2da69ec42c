#pragma once

#include <QMainWindow>

#include <memory>

class QInterface;
class QModelTables;
class QAnimationEditors;
class QSpriteEditors;
class QTextEditors;
class QListView;
class QMenu;
class QToolBar;
struct QWindowState;

// The one top-level window. Its form is the menu bar with the five menus, the dock of the action list
// and the central area where QInterface puts the project tabs and the workspaces.
class MainWindow : public QMainWindow
{
    Q_OBJECT
public:
    explicit MainWindow(QWidget* parent = nullptr);
    ~MainWindow() override;

    QInterface* interface() const { return iface; }
    // The text workspace and its editors; they live as long as the interface.
    QTextEditors* texts() const { return textEditors; }
    QSpriteEditors* spriteEditorsPart() const { return spriteEditors; }
    QMenu* fileMenu() const { return menuFile; }
    QMenu* editMenu() const { return menuEdit; }
    QMenu* viewMenu() const { return menuView; }
    QMenu* toolsMenu() const { return menuTools; }
    QMenu* helpMenu() const { return menuHelp; }
    // The project and edit commands, and the switches between the editors.
    QToolBar* mainToolBar() const { return mainBar; }
    QToolBar* extraToolBar() const { return extraBar; }
    void restoreToolbars(const QWindowState& state);
    void storeToolbars(QWindowState* state) const;

public Q_SLOTS:
    void retranslate();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void buildForm();

    QWidget* centralArea = nullptr;
    QMenu* menuFile = nullptr;
    QMenu* menuEdit = nullptr;
    QMenu* menuView = nullptr;
    QMenu* menuTools = nullptr;
    QMenu* menuHelp = nullptr;
    QToolBar* mainBar = nullptr;
    QToolBar* extraBar = nullptr;
    QDockWidget* actionsDock = nullptr;
    QListView* actList = nullptr;
    QInterface* iface = nullptr;
    QTextEditors* textEditors = nullptr;
    QSpriteEditors* spriteEditors = nullptr;
    QAnimationEditors* animationEditors = nullptr;
    std::unique_ptr<QModelTables> tables;
};
