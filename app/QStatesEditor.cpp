#include "QStatesEditor.h"

#include "QActionInfo.h"
#include "QProject.h"
#include "QStatesTools.h"
#include "QSyntaxTextEditor.h"
#include "QTextWorkspace.h"

#include <QFileInfo>
#include <QTabBar>

QStatesEditor::QStatesEditor(QTextWorkspace* workspace, QObject* parent)
    : QTextDocumentEditor(workspace, parent), tabs(new QTabBar(workspace)), m_tools(new QStatesTools(this))
{
    tabs->setObjectName(QStringLiteral("statesTabs"));
    tabs->setDocumentMode(true);
    // Tabs as wide as their names, as in any editor, not stretched over the whole text.
    tabs->setExpanding(false);
    tabs->setTabsClosable(true);
    tabs->setMovable(true);
    tabs->hide();
    connect(tabs, &QTabBar::currentChanged, this, &QStatesEditor::showFile);
    connect(tabs, &QTabBar::tabCloseRequested, this, &QStatesEditor::tabClosed);
    connect(tabs, &QTabBar::tabMoved, this, &QStatesEditor::tabMoved);
}

QStatesEditor::~QStatesEditor() = default;

int QStatesEditor::scope() const
{
    return QActionInfo::StatesScope;
}

void QStatesEditor::setProject(QProject* current)
{
    m_project = current;
    refreshTabs();
}

void QStatesEditor::refreshTabs()
{
    const QSignalBlocker blocker(tabs);
    const int keep = tabs->currentIndex();
    while (tabs->count() > 0)
        tabs->removeTab(0);
    const int count = m_project ? m_project->statesCount() : 0;
    for (int index = 0; index < count; ++index) {
        const QSyntaxTextEditor* file = m_project->states(index);
        QString name = QFileInfo(file->filePath()).fileName();
        if (name.isEmpty()) name = file->fileTitle();
        if (name.isEmpty()) name = QFileInfo(file->objectName()).fileName();
        if (name.isEmpty()) name = tr("States %1").arg(index + 1);
        tabs->addTab(name);
    }
    const int shown = count == 0 ? -1 : qBound(0, keep, count - 1);
    tabs->setCurrentIndex(shown);
    showFile(shown);
}

void QStatesEditor::showFile(int index)
{
    bind(m_project && index >= 0 ? m_project->states(index) : nullptr);
    tellEnabled();
}

void QStatesEditor::tellEnabled()
{
    emit enabled(isActive() && text() != nullptr);
}

void QStatesEditor::activate()
{
    refreshTabs();
    textWorkspace()->setHeader(tabs);
    QTextDocumentEditor::activate();
    tellEnabled();
}

void QStatesEditor::deactivate()
{
    textWorkspace()->setHeader(nullptr);
    QTextDocumentEditor::deactivate();
    tellEnabled();
}

void QStatesEditor::navigate(int fileIndex, int index, int subIndex)
{
    if (fileIndex >= 0 && fileIndex < tabs->count()) tabs->setCurrentIndex(fileIndex);
    QTextDocumentEditor::navigate(fileIndex, index, subIndex);
}
