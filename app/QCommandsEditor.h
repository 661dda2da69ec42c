#pragma once

#include "QProject.h"
#include "QTextDocumentEditor.h"

#include <QPointer>

// The commands file of the current project as text.
class QCommandsEditor : public QTextDocumentEditor
{
    Q_OBJECT
public:
    using QTextDocumentEditor::QTextDocumentEditor;

    QString title() const override
    {
        return QString::fromLatin1(QT_TRANSLATE_NOOP("QInterfaceEditor", "Commands"));
    }
    QProjectFileType fileType() const override { return pftCommands; }
    int number() const override { return 3; }
    int scope() const override;

    void newFile() override;
    void openFile() override;
    void saveFile() override;
    void saveFileAs() override;

public Q_SLOTS:
    void setProject(QProject* project);

private:
    QPointer<QProject> project;
};
