#include "QCliFntCommand.h"

#include "QDefinitions.h"
#include "QFontFile.h"
#include "QSprites.h"

#include <QDir>
#include <QFileInfo>

QString QCliFntCommand::summary() const
{
    return QStringLiteral("convert an old FNT font to a font definitions file and an SFF v2");
}

QString QCliFntCommand::usage() const
{
    return QStringLiteral("tavrel-cli fnt convert FILE.fnt OUTDIR");
}

int QCliFntCommand::run(QCliContext& context)
{
    if (context.arguments.value(0) != QLatin1String("convert") || context.arguments.size() != 3)
        return context.usageError(QStringLiteral("fnt: expected 'convert', a font file and an output folder"),
                                  usage());
    const QString input = context.arguments.at(1);
    const QString output = context.arguments.at(2);
    if (!QFileInfo(input).isFile()) return context.fail(input, QStringLiteral("no such file"));

    QDefinitions definitions;
    QSprites sprites(nullptr, 0, false);
    if (!QFontFile::importFnt(input, definitions, sprites))
        return context.fail(input, QStringLiteral("is not a font file or is damaged"));
    if (!QDir().mkpath(output)) return context.fail(output, QStringLiteral("can't be created"));

    const QString base = QDir(output).filePath(QFileInfo(input).completeBaseName());
    const QString defPath = base + QStringLiteral(".def");
    const QString sffPath = base + QStringLiteral(".sff");
    // Both writers go through a save file: a failed write leaves an earlier file of that name whole.
    if (!definitions.toFile(defPath, true)) return context.fail(defPath, QStringLiteral("can't be written"));
    if (!sprites.toFile(sffPath, 0, true)) return context.fail(sffPath, QStringLiteral("can't be written"));
    context.out << "wrote " << defPath << " and " << sffPath << " (" << sprites.count() << " glyphs, "
                << sprites.paletteCount() << " palettes)" << Qt::endl;
    return CliSuccess;
}
