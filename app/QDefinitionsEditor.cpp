#include "QDefinitionsEditor.h"

#include "QActionInfo.h"
#include "QDefinitions.h"

int QDefinitionsEditor::scope() const
{
    return QActionInfo::DefinitionsScope;
}

QSyntaxTextEditor* QDefinitionsEditor::fileOf(QProject* project) const
{
    return project->definitions();
}
