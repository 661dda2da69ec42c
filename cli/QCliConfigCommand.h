#pragma once

#include "QCliCommand.h"

// "config": shows the settings that the editor would use, from the built-in defaults or from a
// "config.xml" or ".tvc3" file laid over them.
class QCliConfigCommand : public QCliCommand
{
public:
    QString name() const override { return QStringLiteral("config"); }
    QString summary() const override;
    QString usage() const override;
    int run(QCliContext& context) override;
    bool readsText() const override { return false; }
};
