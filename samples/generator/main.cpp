// tavrel-make-sample OUTDIR: writes the sample character into OUTDIR/Roan.

#include "QSampleCharacter.h"
#include "QSampleDialogs.h"

#include <QCoreApplication>
#include <QStringList>

#include <cstdio>

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    const QStringList arguments = QCoreApplication::arguments().mid(1);
    if (arguments.size() != 1 || arguments.first().startsWith(QLatin1Char('-'))) {
        std::fprintf(stderr, "usage: tavrel-make-sample OUTDIR\n");
        return 2;
    }
    QSampleDialogs dialogs;
    QUserDialogs::install(&dialogs);
    QSampleCharacter character;
    const bool written = character.write(arguments.first());
    QUserDialogs::install(nullptr);
    if (!written) {
        std::fprintf(stderr, "tavrel-make-sample: %s\n", qPrintable(character.errorString()));
        return 1;
    }
    return dialogs.boxes() == 0 ? 0 : 1;
}
