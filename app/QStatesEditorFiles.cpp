// The file commands of the states editor: each state file is a tab, so new and open add one.
#include "QStatesEditor.h"

#include "QSyntaxTextEditor.h"
#include "QTextFileCommands.h"

#include <QTabBar>

void QStatesEditor::newFile()
{
    if (!m_project) return;
    m_project->addStatesFile(QString());
    refreshTabs();
    tabs->setCurrentIndex(tabs->count() - 1);
}

void QStatesEditor::openFile()
{
    if (!m_project) return;
    const QString path = QTextFileCommands::askOpenName(pftStates);
    if (path.isEmpty()) return;
    QSyntaxTextEditor* file = m_project->addStatesFile(QString());
    file->setObjectName(path);
    if (!QTextFileCommands::load(file, path)) {
        m_project->removeStatesFile(m_project->statesCount() - 1);
        return;
    }
    refreshTabs();
    tabs->setCurrentIndex(tabs->count() - 1);
}

void QStatesEditor::saveFile()
{
    const int index = tabs->currentIndex();
    if (m_project && index >= 0 && QTextFileCommands::save(m_project, text(), pftStates, index))
        refreshTabs();
}

void QStatesEditor::saveFileAs()
{
    const int index = tabs->currentIndex();
    if (m_project && index >= 0 && QTextFileCommands::saveAs(m_project, text(), pftStates, index))
        refreshTabs();
}

void QStatesEditor::tabClosed(int index)
{
    if (!m_project || index < 0 || index >= m_project->statesCount()) return;
    if (!m_project->states(index)->canDiscard()) return;
    // The workspace must not show a document that is about to go.
    if (text() == m_project->states(index)) bind(nullptr);
    m_project->removeStatesFile(index);
    refreshTabs();
}

void QStatesEditor::tabMoved(int from, int to)
{
    if (!m_project || from == to) return;
    m_project->moveStatesFile(from, to);
}
