#pragma once

#include "QCliCommand.h"

// "def": definitions files. "info" prints what a definitions file tells a project: its kind, target
// version, name and the files that belong to it.
class QCliDefCommand : public QCliCommand
{
public:
    QString name() const override { return QStringLiteral("def"); }
    QString summary() const override;
    QString usage() const override;
    int run(QCliContext& context) override;
};
