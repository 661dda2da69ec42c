#pragma once

#include "QProjectTypes.h"

#include <QString>

class QProject;
class QWidget;

// A workspace: the page of the central area that one or more editors show themselves in (the text
// workspace, the sprite workspace). Switching editors switches workspaces only when they differ.
class QInterfaceWorkspace
{
public:
    virtual ~QInterfaceWorkspace() = default;
    // Wires the workspace to the window's commands (find, replace, zoom) while it is current.
    virtual void connectWorkspace() {}
    virtual void disconnectWorkspace() {}
    virtual void activate() {}
    virtual void deactivate() {}
    // The zoom controls of the status bar act on the workspace that is shown.
    virtual void zoomIn() {}
    virtual void zoomOut() {}
    virtual void zoomActual() {}
};

// An editor of one kind of file (definitions, sprites, animations, commands, states, sounds). It owns
// nothing of a project: it is switched to the current project and shows what that project owns.
class QInterfaceEditor
{
public:
    virtual ~QInterfaceEditor() = default;
    // The panel title, untranslated; the window translates it and marks a modified editor with "*".
    virtual QString title() const = 0;
    virtual bool isModified() const = 0;
    // The number of the workspace the editor shows itself in.
    virtual int workspace() const = 0;
    virtual QProjectFileType fileType() const = 0;
    // Its number among the editors, which is also the object name of its action.
    virtual int number() const = 0;
    // The scope of its commands' keys.
    virtual int scope() const = 0;
    // Wires the window's undo, redo, clipboard and search commands to the editor while it is current.
    virtual void connectEditor() {}
    virtual void disconnectEditor() {}
    virtual void activate() {}
    virtual void deactivate() {}
    // Goes to a place of its file: for text, the line index of the state file fileIndex.
    virtual void navigate(int fileIndex, int index, int subIndex) = 0;
    // Whether the user can reach the editor now (its action is visible).
    virtual bool isAvailable() const { return true; }
    // What the editor shows in the left side panel while it is current (its outline, its list), or
    // null; the editor keeps it and the panel only borrows it.
    virtual QWidget* panel() const { return nullptr; }
    // The file commands of the current editor: a new file, another file, saving the one shown.
    virtual void newFile() {}
    virtual void openFile() {}
    virtual void saveFile() {}
    virtual void saveFileAs() {}
    // The window's edit commands, sent to whichever editor is current.
    virtual void undo() {}
    virtual void redo() {}
    virtual void cut() {}
    virtual void copy() {}
    virtual void paste() {}
};

// A side editor: what the right side panel shows beside the current editor (the palettes of the
// sprites, ...). Numbers are below 4; 4 means none.
class QInterfaceExtraEditor
{
public:
    virtual ~QInterfaceExtraEditor() = default;
    // The panel title, untranslated; the window marks a modified side editor with "*".
    virtual QString title() const = 0;
    virtual bool isModified() const = 0;
    virtual int number() const = 0;
    // The widget the right panel shows; the side editor keeps it.
    virtual QWidget* panel() const = 0;
    virtual void activate() {}
    virtual void deactivate() {}
};
