#include "QCommandsEditor.h"

#include "QActionInfo.h"
#include "QCommands.h"

int QCommandsEditor::scope() const
{
    return QActionInfo::CommandsScope;
}

QSyntaxTextEditor* QCommandsEditor::fileOf(QProject* project) const
{
    return project->commands();
}
