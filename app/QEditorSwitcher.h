#pragma once

#include "QProjectTypes.h"

#include <QMap>
#include <QString>

#include <functional>

class QInterfaceEditor;
class QInterfaceWorkspace;

// Keeps exactly one editor and one workspace current, apart from the window that shows them, so that
// the rules can be tested without a window. Valid editor numbers are below 9 and workspace numbers
// below 4; 9 and 4 mean none. The window listens through the hooks.
class QEditorSwitcher
{
public:
    static constexpr int NoEditor = 9;
    static constexpr int NoWorkspace = 4;

    struct Hooks
    {
        std::function<void(int workspace)> showWorkspace;
        std::function<void(int scope)> setScope;
        std::function<void(int editor)> checkEditorAction;
        std::function<void(const QString& title)> setPanelTitle;
        // No editor for the number asked: the side panels are emptied and hidden.
        std::function<void()> clearPanels;
    };

    explicit QEditorSwitcher(Hooks hooks = Hooks());

    // Registration does not take ownership.
    void addEditor(QInterfaceEditor* editor);
    void addWorkspace(int number, QInterfaceWorkspace* workspace);

    // Makes editor N current: the old one is cut and deactivated (only deactivated when it stays
    // current), the workspace changes only when the new editor lives in another one, and the new
    // editor is activated with its scope.
    void switchTo(int number);
    // The first available editor of that file kind goes to the place; false when none qualifies.
    bool navigate(QProjectFileType file, int fileIndex, int index, int subIndex);
    // The panel title of the current editor: its title, and "*" while it is modified.
    QString panelTitle(const std::function<QString(const QString&)>& translate) const;

    int currentEditor() const { return editorNumber; }
    int currentWorkspace() const { return workspaceNumber; }
    QInterfaceEditor* editor(int number) const { return editors.value(number); }
    QInterfaceWorkspace* workspace(int number) const { return workspaces.value(number); }

private:
    Hooks hooks;
    QMap<int, QInterfaceEditor*> editors;
    QMap<int, QInterfaceWorkspace*> workspaces;
    int editorNumber = NoEditor;
    int workspaceNumber = NoWorkspace;
};
