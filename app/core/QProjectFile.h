#pragma once

#include "QMessages.h"
#include "QProjectTypes.h"

class QProjectContext;

// The interface every file model of a project implements beside its own base classes: the questions a
// project asks before saving and closing, and the list of issues that check() fills.
class QProjectFile
{
public:
    explicit QProjectFile(QProjectFileType fileType, QProjectContext* project = nullptr);
    virtual ~QProjectFile();

    // May the model be written now in this version; models ask the user where they may not.
    virtual bool canSave(quint32 version);
    // Whether unsaved changes may be thrown away: true when unmodified, else the model asks.
    virtual bool canDiscard() = 0;
    virtual bool isModified() = 0;
    virtual bool isEmpty() = 0;
    // Runs the validation and fills messages().
    virtual void check() = 0;

    QProjectContext* project() const { return owner; }
    // Joins a project (or leaves it, with nullptr); the issues move to the project's list.
    void setProject(QProjectContext* project);
    // The owning project's type; a model that stands alone is taken as a character's.
    QProjectType projectType() const;
    QProjectFileType fileType() const { return kind; }
    QMessages* messages() { return &issues; }
    const QMessages* messages() const { return &issues; }

private:
    QProjectFileType kind;
    QProjectContext* owner;
    QMessages issues;
};
