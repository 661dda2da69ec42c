#pragma once

#include "QCliCommand.h"

#include <QTextStream>
#include <memory>
#include <vector>

// The dispatcher of tavrel-cli: global options (--help, --version, help NAME) and the subcommands.
class QCliApplication
{
public:
    QCliApplication();
    ~QCliApplication();

    void add(std::unique_ptr<QCliCommand> command);
    int run(const QStringList& arguments, QTextStream& out, QTextStream& err);
    QCliCommand* find(const QString& name) const;

private:
    void printHelp(QTextStream& out) const;
    std::vector<std::unique_ptr<QCliCommand>> commands;
};

// Registers every subcommand the tool has.
void registerCliCommands(QCliApplication& application);
