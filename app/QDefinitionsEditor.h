#pragma once

#include "QTextDocumentEditor.h"

class QProject;

// The definitions file of the current project as text.
class QDefinitionsEditor : public QTextDocumentEditor
{
    Q_OBJECT
public:
    using QTextDocumentEditor::QTextDocumentEditor;

    QString title() const override
    {
        return QString::fromLatin1(QT_TRANSLATE_NOOP("QInterfaceEditor", "Definitions"));
    }
    QProjectFileType fileType() const override { return pftDefinitions; }
    int number() const override { return 0; }
    int scope() const override;

public Q_SLOTS:
    void setProject(QProject* project);
};
