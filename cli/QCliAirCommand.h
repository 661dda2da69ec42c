#pragma once

#include "QCliCommand.h"

// "air": animation files. "list" prints every action of an AIR file with its frames, their tails and
// marks, and every collision box with its slot.
class QCliAirCommand : public QCliCommand
{
public:
    QString name() const override { return QStringLiteral("air"); }
    QString summary() const override;
    QString usage() const override;
    int run(QCliContext& context) override;
};
