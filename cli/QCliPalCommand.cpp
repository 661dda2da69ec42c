#include "QCliPalCommand.h"

#include "QRGBPalette.h"

#include <QFileInfo>

#include <array>

QString QCliPalCommand::summary() const
{
    return QStringLiteral("convert a palette file (act, pal, aco, ase, txt, png, pcx, bmp) to ACT");
}

QString QCliPalCommand::usage() const
{
    return QStringLiteral("tavrel-cli pal convert IN OUT.act");
}

int QCliPalCommand::run(QCliContext& context)
{
    if (context.arguments.value(0) != QLatin1String("convert") || context.arguments.size() != 3)
        return context.usageError(QStringLiteral("pal: expected 'convert', an input and an output file"),
                                  usage());
    const QString input = context.arguments.at(1);
    const QString output = context.arguments.at(2);
    if (!QFileInfo(input).isFile()) return context.fail(input, QStringLiteral("no such file"));

    std::array<QRGBPal, QRGBPal::TableSize> table{};
    QRGBPalette palette(table.data());
    QString problem;
    // The editor keeps whatever part of a refused file it could read; a conversion must not write that.
    if (!palette.fromFile(input, &problem) || !problem.isEmpty()) return context.fail(input, problem);
    if (!palette.toFile(output)) return context.fail(output, QStringLiteral("can't be written"));
    context.out << "wrote " << output << " (256 colours)" << Qt::endl;
    return CliSuccess;
}
