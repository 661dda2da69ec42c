#pragma once

#include <QStringList>
#include <QTextStream>

// Exit statuses shared by every subcommand.
enum QCliStatus
{
    CliSuccess = 0,
    CliFailed = 1, // the work failed or found errors
    CliUsage = 2   // the command line was wrong
};

// What a subcommand runs with: its arguments (without the subcommand's own name) and the two output
// streams. Results go to standard output; errors to standard error as "tavrel-cli: FILE: message".
class QCliContext
{
public:
    QCliContext(const QStringList& arguments, QTextStream& out, QTextStream& err);

    QStringList arguments;
    QTextStream& out;
    QTextStream& err;

    // Removes a flag such as "--json" from the arguments; true when it was there.
    bool takeFlag(const QString& flag);
    // Removes "--name VALUE" (or "--name=VALUE"); false with a usage message when the value is missing.
    bool takeOption(const QString& name, QString* value, bool* present);
    // Prints "tavrel-cli: FILE: message" and answers CliFailed.
    int fail(const QString& file, const QString& message);
    // Prints "tavrel-cli: message" and the usage line, and answers CliUsage.
    int usageError(const QString& message, const QString& usage);
};
