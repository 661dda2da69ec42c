#pragma once

#include "QProjectFileEditor.h"

// The commands file of the current project as text.
class QCommandsEditor : public QProjectFileEditor
{
    Q_OBJECT
public:
    using QProjectFileEditor::QProjectFileEditor;

    QString title() const override
    {
        return QString::fromLatin1(QT_TRANSLATE_NOOP("QInterfaceEditor", "Commands"));
    }
    QProjectFileType fileType() const override { return pftCommands; }
    int number() const override { return 3; }
    int scope() const override;

protected:
    QSyntaxTextEditor* fileOf(QProject* project) const override;
};
