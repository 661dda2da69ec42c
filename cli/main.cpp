#include "QCliApplication.h"
#include "QConsoleDialogs.h"

#include <QCoreApplication>
#include <cstdio>

#if defined(__GLIBC__)
#include <malloc.h>
#endif

int main(int argc, char** argv)
{
#if defined(__GLIBC__)
    // One command, then the process ends: freed memory is kept for the next sprite instead of going back
    // to the system, which would hand it out again page by page, each page a fault to be cleared.
    mallopt(M_MMAP_THRESHOLD, 32 << 20); // the largest that glibc takes
    mallopt(M_TRIM_THRESHOLD, 512 << 20);
#endif
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("tavrel-cli"));
    QCoreApplication::setApplicationVersion(QStringLiteral(TAVREL_VERSION));
    QTextStream out(stdout);
    QTextStream err(stderr);
    QConsoleDialogs dialogs(err);
    QUserDialogs::install(&dialogs);

    QCliApplication cli;
    registerCliCommands(cli);
    const int status = cli.run(QCoreApplication::arguments().mid(1), out, err);
    QUserDialogs::install(nullptr);
    return status;
}
