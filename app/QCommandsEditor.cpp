#include "QCommandsEditor.h"

#include "QActionInfo.h"
#include "QCommands.h"
#include "QProject.h"

int QCommandsEditor::scope() const
{
    return QActionInfo::CommandsScope;
}

void QCommandsEditor::setProject(QProject* project)
{
    bind(project ? project->commands() : nullptr);
}
