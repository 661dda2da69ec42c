#include "QDefinitionsEditor.h"

#include "QActionInfo.h"
#include "QDefinitions.h"
#include "QProject.h"

int QDefinitionsEditor::scope() const
{
    return QActionInfo::DefinitionsScope;
}

void QDefinitionsEditor::setProject(QProject* project)
{
    bind(project ? project->definitions() : nullptr);
}
