#pragma once

#include "QEditorSwitcher.h"
#include "QProjectFiles.h"
#include "QProjectTypes.h"
#include "QWindowState.h"

#include <QFileSystemWatcher>
#include <QMap>
#include <QObject>
#include <QPointer>

class ErrorDlg;
class QInterfaceEditor;
class QInterfaceExtraEditor;
class QInterfaceWorkspace;
class QActionManager;
class MainWindow;
class QProject;
class QRGBPal;
class QActionGroup;
class QDockWidget;
class QWidget;
class QListView;
class QModelIndex;
class QMenu;
class QTabBar;
class QLabel;
class QToolButton;
class QMugenRunner;
class QHistoryManager;
class QStackedLayout;
class QSplitter;
class QPanelWidget;

// The object behind the main window: it holds the open projects (one tab each), answers their
// questions, carries every menu command of the frame and reads the hand-off file of later starts.
class QInterface : public QObject
{
    Q_OBJECT
public:
    QInterface(MainWindow* window, QDockWidget* actionsDock, QListView* actionList);
    ~QInterface() override;

    // The last step of the window's construction: restores the window, makes the first (empty)
    // project, builds the appearance menus and, in the first instance, starts reading hand-offs.
    void setup();

    // The open projects and the file commands; the tabs show them.
    QProjectFiles* projectFiles() const { return files; }
    QHistoryManager* history() const { return recent; }
    int projectCount() const { return files->projectCount(); }
    QProject* project(int index) const { return files->project(index); }
    QProject* currentProject() const { return files->currentProject(); }
    bool onlyEmptyProjectLeft() const { return files->onlyEmptyProjectLeft(); }
    bool closeProject(int index) { return files->closeProject(index); }
    int currentEditor() const { return switcher.currentEditor(); }
    // Editors and workspaces join in their order; the window keeps them, this only switches them.
    void registerEditor(QInterfaceEditor* editor);
    // The page of a workspace goes into the central area at the workspace's number.
    void registerWorkspace(int number, QInterfaceWorkspace* workspace, QWidget* page = nullptr);
    void switchEditor(int number) { switcher.switchTo(number); }
    // Side editors join by their numbers; switching to 4 (or a number with none) empties the right panel.
    void registerExtraEditor(QInterfaceExtraEditor* editor);
    void switchExtraEditor(int number);
    int currentExtraEditor() const { return extraEditorNumber; }
    QInterfaceEditor* editor(int number) const { return switcher.editor(number); }
    // The checkable actions of the editors, whose object names are the editor numbers.
    QActionGroup* editorActions() const { return editorGroup; }
    QToolButton* issueStatus() const { return issueButton; }
    QActionManager* actionManager() const { return actions; }
    ErrorDlg* issueDialog() const { return issues; }

    void openHandedFile(const QString& path) { files->openHandedFile(path); }
    // The search bar, whose being shown the window state keeps.
    void setQuickSearch(QWidget* bar) { quickSearch = bar; }
    // A floating tool window (the multi-file find, ...) that remembers whether it was open and where.
    void addFloatingTool(const QString& name, QWidget* tool);
    // The state the window was restored to, for the parts that are built later.
    const QWindowState& restoredState() const { return windowState; }
    bool isLeftPanelShown() const { return leftPanelWanted; }
    bool isRightPanelShown() const { return rightPanelWanted; }

public Q_SLOTS:
    // The Project menu's commands belong to the project list; these keep the frame's names for them.
    void newProject(bool fromTemplate) { files->newProject(fromTemplate); }
    void newProject() { files->newProject(); }
    void fileNew() { files->fileNew(); }
    void fileOpen() { files->fileOpen(); }
    void openProject(const QString& fileName) { files->openProject(fileName); }
    void fileSave() { files->fileSave(); }
    void fileSaveAs() { files->fileSaveAs(); }
    void fileBackup() { files->fileBackup(); }
    void fileLoadBackup() { files->fileLoadBackup(); }
    void fileClose() { files->fileClose(); }
    void fileCloseAll() { files->fileCloseAll(); }
    void fileCloseAllCurr() { files->fileCloseAllCurr(); }
    QString saveFileName(QProjectFileType file, const QString& path)
    {
        return files->saveFileName(file, path);
    }
    quint32 spritesVersionToSave(quint32 version) { return files->spritesVersionToSave(version); }
    void charPalette(QRGBPal* palette) { files->charPalette(palette); }
    void fileChanged(const QString& path);
    // Tests the open projects in the configured game.
    void fileRunMugen();
    void projTabsChanged(int index);
    void projTabsMoved(int from, int to);
    void projTabsClosed(int index);
    void navigateTo(QProjectFileType file, int fileIndex, int index, int subIndex);
    void retranslate();
    // Shows the error and warning counts of the current project on the issue button.
    void updateErrorStatus();
    // Shows the kind and engine version of the current project in the status bar.
    void updateProjectStatus();
    // Checks every file of the current project and shows its issues.
    void fileCheck();
    // Shows the current editor's title in the panel title, with "*" while it is modified.
    void updateEditorName();
    // An action picked in the action list runs as if chosen from its menu.
    void actionChanged(const QModelIndex& index);
    // The zoom of the shown workspace.
    void zoomIn();
    void zoomOut();
    void zoomActual();
    // The file commands of the current editor.
    void editorNew();
    void editorOpen();
    void editorSave();
    void editorSaveAs();
    // The edit commands go to the current editor, whichever kind it is.
    void editUndo();
    void editRedo();
    void editCut();
    void editCopy();
    void editPaste();
    // The right panel's title: the side editor's, with "*" while it is modified.
    void updateExtraEditorName();
    void viewLeftPanel(bool shown);
    void viewRightPanel(bool shown);
    // The program's name, version and the libraries it stands on.
    void helpAbout();
    // Opens the options dialog, whose applied settings reach applyConfig().
    void toolsOptions();
    // Hands the settings as they now stand to the workspaces and editors.
    void applyConfig();

Q_SIGNALS:
    // Another project became current (null while the window goes away); editors switch to it.
    void currentProjectChanged(QProject* project);
    // The settings changed; everything that reads them at start reads them again.
    void configApplied();

private:
    void readHandOff();
    void buildAppearanceMenus();
    void restoreWindowState();
    void restoreShortcuts();
    void storeWindowState();

    QProjectFiles* files;
    MainWindow* window;
    QDockWidget* actionsDock;
    QListView* actionList;
    QTabBar* projectTabs;
    QStackedLayout* workspaces;
    QLabel* projectLabel;
    QSplitter* splitter;
    QPanelWidget* leftPanel;
    QPanelWidget* rightPanel;
    QActionGroup* editorGroup;
    QToolButton* issueButton;
    ErrorDlg* issues = nullptr;
    QActionManager* actions;
    QMenu* appearanceMenu = nullptr;
    QFileSystemWatcher handOffWatcher;
    QString handOffPath;
    QEditorSwitcher switcher;
    QList<QInterfaceEditor*> editorList;
    QMugenRunner* runner;
    QHistoryManager* recent;
    QMap<int, QInterfaceExtraEditor*> extraEditors;
    int extraEditorNumber = 4;
    QWindowState windowState;
    QMap<QString, QPointer<QWidget>> floatingTools;
    QPointer<QWidget> quickSearch;
    bool leftPanelWanted = true;
    bool rightPanelWanted = true;
};
