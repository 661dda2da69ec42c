#include "QEditorSwitcher.h"

#include "QInterfaceEditor.h"

QEditorSwitcher::QEditorSwitcher(Hooks hooks) : hooks(std::move(hooks)) {}

void QEditorSwitcher::addEditor(QInterfaceEditor* editor)
{
    editors.insert(editor->number(), editor);
}

void QEditorSwitcher::addWorkspace(int number, QInterfaceWorkspace* workspace)
{
    workspaces.insert(number, workspace);
}

void QEditorSwitcher::switchTo(int number)
{
    if (QInterfaceEditor* old = editors.value(editorNumber)) {
        // Switching to the current editor keeps its wiring but runs the hooks again, so that it can
        // refresh what it shows.
        if (old->number() != number) old->disconnectEditor();
        old->deactivate();
    }
    QInterfaceEditor* next = editors.value(number);
    if (editorNumber != number) {
        if (next) next->connectEditor();
        editorNumber = next ? number : NoEditor;
        if (hooks.checkEditorAction) hooks.checkEditorAction(editorNumber);
    }
    if (!next) {
        if (QInterfaceWorkspace* workspace = workspaces.value(workspaceNumber)) {
            workspace->disconnectWorkspace();
            workspace->deactivate();
        }
        workspaceNumber = NoWorkspace;
        if (hooks.clearPanels) hooks.clearPanels();
        if (hooks.setScope) hooks.setScope(NoEditor);
        return;
    }
    if (hooks.setPanelTitle) hooks.setPanelTitle(panelTitle([](const QString& text) { return text; }));
    const int wanted = next->workspace();
    if (wanted != workspaceNumber) {
        if (QInterfaceWorkspace* workspace = workspaces.value(workspaceNumber)) {
            workspace->disconnectWorkspace();
            workspace->deactivate();
        }
        workspaceNumber = wanted;
        if (hooks.showWorkspace) hooks.showWorkspace(wanted);
        if (QInterfaceWorkspace* workspace = workspaces.value(wanted)) {
            workspace->connectWorkspace();
            workspace->activate();
        }
    }
    next->activate();
    if (hooks.setScope) hooks.setScope(next->scope());
}

bool QEditorSwitcher::navigate(QProjectFileType file, int fileIndex, int index, int subIndex)
{
    for (QInterfaceEditor* editor : std::as_const(editors)) {
        if (editor->fileType() != file || !editor->isAvailable()) continue;
        switchTo(editor->number());
        editor->navigate(fileIndex, index, subIndex);
        return true;
    }
    return false;
}

QString QEditorSwitcher::panelTitle(const std::function<QString(const QString&)>& translate) const
{
    const QInterfaceEditor* editor = editors.value(editorNumber);
    if (!editor) return QString();
    QString title = translate(editor->title());
    if (editor->isModified()) title += QLatin1Char('*');
    return title;
}
