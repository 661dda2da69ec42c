// The file commands of the states editor: each state file is a tab, so new and open add one.
#include "QStatesEditor.h"

#include "QSyntaxTextEditor.h"
#include "QTextFileCommands.h"

#include <QTabBar>

void QStatesEditor::newFile()
{
    if (!project) return;
    project->addStatesFile(QString());
    refreshTabs();
    tabs->setCurrentIndex(tabs->count() - 1);
}

void QStatesEditor::openFile()
{
    if (!project) return;
    const QString path = QTextFileCommands::askOpenName(pftStates);
    if (path.isEmpty()) return;
    QSyntaxTextEditor* file = project->addStatesFile(QString());
    file->setObjectName(path);
    if (!QTextFileCommands::load(file, path)) {
        project->removeStatesFile(project->statesCount() - 1);
        return;
    }
    refreshTabs();
    tabs->setCurrentIndex(tabs->count() - 1);
}

void QStatesEditor::saveFile()
{
    const int index = tabs->currentIndex();
    if (project && index >= 0 && QTextFileCommands::save(project, text(), pftStates, index)) refreshTabs();
}

void QStatesEditor::saveFileAs()
{
    const int index = tabs->currentIndex();
    if (project && index >= 0 && QTextFileCommands::saveAs(project, text(), pftStates, index)) refreshTabs();
}

void QStatesEditor::tabClosed(int index)
{
    if (!project || index < 0 || index >= project->statesCount()) return;
    if (!project->states(index)->canDiscard()) return;
    // The workspace must not show a document that is about to go.
    if (text() == project->states(index)) bind(nullptr);
    project->removeStatesFile(index);
    refreshTabs();
}

void QStatesEditor::tabMoved(int from, int to)
{
    if (!project || from == to) return;
    project->moveStatesFile(from, to);
}
