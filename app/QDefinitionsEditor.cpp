#include "QDefinitionsEditor.h"

#include "QActionInfo.h"
#include "QDefinitions.h"
#include "QProject.h"
#include "QTextFileCommands.h"

int QDefinitionsEditor::scope() const
{
    return QActionInfo::DefinitionsScope;
}

void QDefinitionsEditor::setProject(QProject* current)
{
    project = current;
    bind(current ? current->definitions() : nullptr);
}

void QDefinitionsEditor::newFile()
{
    QTextFileCommands::clear(text());
}

void QDefinitionsEditor::openFile()
{
    QTextFileCommands::open(text(), pftDefinitions);
}

void QDefinitionsEditor::saveFile()
{
    QTextFileCommands::save(project, text(), pftDefinitions, 0);
}

void QDefinitionsEditor::saveFileAs()
{
    QTextFileCommands::saveAs(project, text(), pftDefinitions, 0);
}
