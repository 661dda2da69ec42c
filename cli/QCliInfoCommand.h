#pragma once

#include "QCliCommand.h"

// "info": what a project holds once opened as the editor opens it: its kind, version and name, every
// file its definitions name with whether it loaded, and the counts of its models.
class QCliInfoCommand : public QCliCommand
{
public:
    QString name() const override { return QStringLiteral("info"); }
    QString summary() const override;
    QString usage() const override;
    int run(QCliContext& context) override;
};
