#pragma once

#include "QCliCommand.h"

// "project save-as": saves a whole project under a new definitions file, as the editor's "save as"
// does, answering its questions without asking: every file keeps its name relative to the definitions,
// now beside the new one, and the sprite file keeps its version unless --sff-version gives another.
class QCliProjectCommand : public QCliCommand
{
public:
    QString name() const override { return QStringLiteral("project"); }
    QString summary() const override;
    QString usage() const override;
    int run(QCliContext& context) override;
};
