#include "QProjectFile.h"

#include "QProjectContext.h"

QProjectContext::~QProjectContext() = default;

QProjectFile::QProjectFile(QProjectFileType fileType, QProjectContext* project)
    : kind(fileType), owner(project), issues(fileType, project ? project->messageList() : nullptr)
{}

QProjectFile::~QProjectFile() = default;

bool QProjectFile::canSave(quint32)
{
    return true;
}

void QProjectFile::setProject(QProjectContext* project)
{
    owner = project;
    issues.setParentList(project ? project->messageList() : nullptr);
}

QProjectType QProjectFile::projectType() const
{
    return owner ? owner->projectType() : Character;
}
