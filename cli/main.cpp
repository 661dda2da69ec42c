#include "QCliApplication.h"
#include "QConsoleDialogs.h"
#include "QModelTables.h"

#include <QCoreApplication>
#include <cstdio>

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("tavrel-cli"));
    QCoreApplication::setApplicationVersion(QStringLiteral(TAVREL_VERSION));
    QTextStream out(stdout);
    QTextStream err(stderr);
    QConsoleDialogs dialogs(err);
    QUserDialogs::install(&dialogs);
    QModelTables tables;

    QCliApplication cli;
    registerCliCommands(cli);
    const int status = cli.run(QCoreApplication::arguments().mid(1), out, err);
    QUserDialogs::install(nullptr);
    return status;
}
