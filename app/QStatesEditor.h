#pragma once

#include "QProject.h"
#include "QTextDocumentEditor.h"

#include <QPointer>

class QStatesTools;
class QTabBar;

// The state files of the current project, one tab each above the text.
class QStatesEditor : public QTextDocumentEditor
{
    Q_OBJECT
public:
    QStatesEditor(QTextWorkspace* workspace, QObject* parent = nullptr);
    ~QStatesEditor() override;

    QString title() const override
    {
        return QString::fromLatin1(QT_TRANSLATE_NOOP("QInterfaceEditor", "States"));
    }
    QProjectFileType fileType() const override { return pftStates; }
    int number() const override { return 4; }
    int scope() const override;
    void activate() override;
    void deactivate() override;
    // fileIndex picks the state file, index the line in it.
    void navigate(int fileIndex, int index, int subIndex) override;

    QTabBar* tabBar() const { return tabs; }
    // A new empty state file in a tab of its own; the file of another name joins the same way.
    void newFile() override;
    void openFile() override;
    void saveFile() override;
    void saveFileAs() override;
    QProject* project() const { return m_project; }
    QStatesTools* tools() const { return m_tools; }

public Q_SLOTS:
    void setProject(QProject* project);

    // Closing a tab takes the state file out of the project, once its changes may go.
    void tabClosed(int index);
    void tabMoved(int from, int to);

Q_SIGNALS:
    // Whether the tools that write into the current file can work: the editor is current and shows one.
    void enabled(bool on);

private:
    // The tabs follow the project's state files, which may have come or gone since the last look.
    void refreshTabs();
    void showFile(int index);
    void tellEnabled();

    QPointer<QProject> m_project;
    QTabBar* tabs;
    QStatesTools* m_tools;
};
