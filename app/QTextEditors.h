#pragma once

#include <QMenu>
#include <QObject>
#include <QPointer>

class MainWindow;
class QActionManager;
class QCommandsEditor;
class QDefinitionsEditor;
class QInterface;
class QStatesEditor;
class QTextDocumentEditor;
class QTextWorkspace;

// The text side of the window: the text workspace (number 0) and the editors of the definitions,
// commands and state files, registered in the interface in that order, with their commands in the
// action manager and the window's menus. Made before the interface's final setup, so that the keys
// read there reach these commands too.
class QTextEditors : public QObject
{
    Q_OBJECT
public:
    QTextEditors(QInterface* iface, MainWindow* window);

    QTextWorkspace* workspace() const { return m_workspace; }
    QDefinitionsEditor* definitions() const { return m_definitions; }
    QCommandsEditor* commands() const { return m_commands; }
    QStatesEditor* states() const { return m_states; }
    // The text editor that is current, or null when another kind of editor is.
    QTextDocumentEditor* current() const;

public Q_SLOTS:
    void retranslate();

private:
    void addEditorAction(const char* name, QTextDocumentEditor* editor);
    void addTextActions(MainWindow* window);
    // new, open, save and save as of each text editor under its own names and scope.
    void addFileActions(MainWindow* window);

    QInterface* iface;
    QActionManager* manager;
    QTextWorkspace* m_workspace;
    QDefinitionsEditor* m_definitions;
    QCommandsEditor* m_commands;
    QStatesEditor* m_states;
    QPointer<QMenu> filesMenu;
};
