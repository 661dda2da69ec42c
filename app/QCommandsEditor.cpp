#include "QCommandsEditor.h"

#include "QActionInfo.h"
#include "QCommands.h"
#include "QProject.h"
#include "QTextFileCommands.h"

int QCommandsEditor::scope() const
{
    return QActionInfo::CommandsScope;
}

void QCommandsEditor::setProject(QProject* current)
{
    project = current;
    bind(current ? current->commands() : nullptr);
}

void QCommandsEditor::newFile()
{
    QTextFileCommands::clear(text());
}

void QCommandsEditor::openFile()
{
    QTextFileCommands::open(text(), pftCommands);
}

void QCommandsEditor::saveFile()
{
    QTextFileCommands::save(project, text(), pftCommands, 0);
}

void QCommandsEditor::saveFileAs()
{
    QTextFileCommands::saveAs(project, text(), pftCommands, 0);
}
