#pragma once

#include "QCliContext.h"

#include <QString>

// One subcommand of tavrel-cli. Subcommands register in QCliApplication and are listed by --help in
// the order of registration.
class QCliCommand
{
public:
    virtual ~QCliCommand();
    virtual QString name() const = 0;
    // One line for the command list of --help.
    virtual QString summary() const = 0;
    // The full usage, shown by "tavrel-cli help NAME" and on a usage error.
    virtual QString usage() const = 0;
    virtual int run(QCliContext& context) = 0;
    // Whether the command reads text documents (DEF, AIR, CMD, CNS and the like), for which the text
    // element tables are set up before it runs; the others start without them.
    virtual bool readsText() const { return true; }
};
