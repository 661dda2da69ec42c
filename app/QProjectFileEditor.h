#pragma once

#include "QProject.h"
#include "QTextDocumentEditor.h"

#include <QPointer>

// A text editor of the one file of its kind that a project has (the definitions, the commands): it
// shows that file of the current project and carries its new, open, save and save as.
class QProjectFileEditor : public QTextDocumentEditor
{
    Q_OBJECT
public:
    using QTextDocumentEditor::QTextDocumentEditor;

    void newFile() override;
    void openFile() override;
    void saveFile() override;
    void saveFileAs() override;

public Q_SLOTS:
    void setProject(QProject* project);

protected:
    // The project's file that this editor shows.
    virtual QSyntaxTextEditor* fileOf(QProject* project) const = 0;

private:
    QPointer<QProject> project;
};
