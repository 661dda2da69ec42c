#pragma once

#include "QCliCommand.h"

// "check": opens a project as the editor does and prints its issue list, one row per line as the
// editor's issue dialog shows it, syntax findings of every text file included. Fails when there is an
// error.
class QCliCheckCommand : public QCliCommand
{
public:
    QString name() const override { return QStringLiteral("check"); }
    QString summary() const override;
    QString usage() const override;
    int run(QCliContext& context) override;
};
