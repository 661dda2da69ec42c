#include "QCliApplication.h"

#include "QModelTables.h"

#include <QCoreApplication>

#include <optional>

QCliApplication::QCliApplication() = default;
QCliApplication::~QCliApplication() = default;

void QCliApplication::add(std::unique_ptr<QCliCommand> command)
{
    commands.push_back(std::move(command));
}

QCliCommand* QCliApplication::find(const QString& name) const
{
    for (const auto& command : commands)
        if (command->name() == name) return command.get();
    return nullptr;
}

void QCliApplication::printHelp(QTextStream& out) const
{
    out << "usage: tavrel-cli [--help] [--version] COMMAND [ARGUMENTS]\n\n"
        << "Reads and writes the content files of the M.U.G.E.N. engine as the Tavrel editor does.\n\n"
        << "Commands:\n";
    for (const auto& command : commands)
        out << "  " << command->name().leftJustified(12) << command->summary() << '\n';
    out << "\nRun 'tavrel-cli help COMMAND' for the arguments of one command.\n"
        << "Results go to standard output; errors to standard error as 'tavrel-cli: FILE: message'.\n"
        << "Exit status: 0 success, 1 the work failed or found errors, 2 wrong command line.\n";
    out.flush();
}

int QCliApplication::run(const QStringList& arguments, QTextStream& out, QTextStream& err)
{
    if (arguments.isEmpty()) {
        printHelp(err);
        return CliUsage;
    }
    const QString first = arguments.first();
    if (first == QLatin1String("--help") || first == QLatin1String("-h")) {
        printHelp(out);
        return CliSuccess;
    }
    if (first == QLatin1String("--version")) {
        out << "tavrel-cli " << QCoreApplication::applicationVersion() << Qt::endl;
        return CliSuccess;
    }
    if (first == QLatin1String("help")) {
        if (arguments.size() < 2) {
            printHelp(out);
            return CliSuccess;
        }
        QCliCommand* command = find(arguments.at(1));
        if (!command) {
            err << "tavrel-cli: unknown command '" << arguments.at(1) << "'" << Qt::endl;
            return CliUsage;
        }
        out << "usage: " << command->usage() << Qt::endl;
        return CliSuccess;
    }
    QCliCommand* command = find(first);
    if (!command) {
        err << "tavrel-cli: unknown command '" << first << "' (see 'tavrel-cli --help')" << Qt::endl;
        return CliUsage;
    }
    QCliContext context(arguments.mid(1), out, err);
    if (context.takeFlag(QStringLiteral("--help"))) {
        out << "usage: " << command->usage() << Qt::endl;
        return CliSuccess;
    }
    std::optional<QModelTables> tables;
    if (command->readsText()) tables.emplace();
    const int status = command->run(context);
    out.flush();
    err.flush();
    return status;
}
