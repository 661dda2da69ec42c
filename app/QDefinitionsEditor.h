#pragma once

#include "QProjectFileEditor.h"

// The definitions file of the current project as text.
class QDefinitionsEditor : public QProjectFileEditor
{
    Q_OBJECT
public:
    using QProjectFileEditor::QProjectFileEditor;

    QString title() const override
    {
        return QString::fromLatin1(QT_TRANSLATE_NOOP("QInterfaceEditor", "Definitions"));
    }
    QProjectFileType fileType() const override { return pftDefinitions; }
    int number() const override { return 0; }
    int scope() const override;

protected:
    QSyntaxTextEditor* fileOf(QProject* project) const override;
};
