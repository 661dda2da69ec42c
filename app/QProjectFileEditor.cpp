#include "QProjectFileEditor.h"

#include "QTextFileCommands.h"

void QProjectFileEditor::setProject(QProject* current)
{
    project = current;
    bind(current ? fileOf(current) : nullptr);
}

void QProjectFileEditor::newFile()
{
    QTextFileCommands::clear(text());
}

void QProjectFileEditor::openFile()
{
    QTextFileCommands::open(text(), fileType());
}

void QProjectFileEditor::saveFile()
{
    QTextFileCommands::save(project, text(), fileType(), 0);
}

void QProjectFileEditor::saveFileAs()
{
    QTextFileCommands::saveAs(project, text(), fileType(), 0);
}
