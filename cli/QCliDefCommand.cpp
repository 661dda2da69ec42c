#include "QCliDefCommand.h"

#include "QCliProject.h"
#include "QDefinitions.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

QString QCliDefCommand::summary() const
{
    return QStringLiteral("show the kind, version, name and file list of a definitions file");
}

QString QCliDefCommand::usage() const
{
    return QStringLiteral("tavrel-cli def info FILE.def [--json]");
}

int QCliDefCommand::run(QCliContext& context)
{
    const bool json = context.takeFlag(QStringLiteral("--json"));
    if (context.arguments.value(0) != QLatin1String("info") || context.arguments.size() != 2)
        return context.usageError(QStringLiteral("def: expected 'info' and a definitions file"), usage());
    const QString path = context.arguments.at(1);
    if (!QFileInfo(path).isFile()) return context.fail(path, QStringLiteral("no such file"));

    QDefinitions definitions;
    if (!definitions.fromFile(path, 0)) return context.fail(path, QStringLiteral("can't be read"));
    const QDefinitionFiles files = definitions.files();

    if (json) {
        QJsonArray palettes;
        for (const QString& palette : files.palettes)
            palettes.append(palette);
        const QJsonObject fileList{{QStringLiteral("sprite"), files.sprite},
                                   {QStringLiteral("anim"), files.animation},
                                   {QStringLiteral("sound"), files.sound},
                                   {QStringLiteral("cmd"), files.commands},
                                   {QStringLiteral("pal"), palettes},
                                   {QStringLiteral("states"), QJsonArray::fromStringList(files.states)}};
        const QJsonObject root{{QStringLiteral("file"), QFileInfo(path).absoluteFilePath()},
                               {QStringLiteral("type"), QCliProject::typeName(definitions.type())},
                               {QStringLiteral("version"), QCliProject::versionText(definitions.version())},
                               {QStringLiteral("versionValue"), qint64(definitions.version())},
                               {QStringLiteral("name"), definitions.name()},
                               {QStringLiteral("baseDirectory"), files.baseDirectory},
                               {QStringLiteral("files"), fileList}};
        context.out << QJsonDocument(root).toJson(QJsonDocument::Indented);
        return CliSuccess;
    }

    context.out << "type: " << QCliProject::typeName(definitions.type()) << '\n'
                << "version: " << QCliProject::versionText(definitions.version()) << '\n'
                << "name: " << definitions.name() << '\n'
                << "base: " << files.baseDirectory << '\n'
                << "sprite: " << files.sprite << '\n'
                << "anim: " << files.animation << '\n'
                << "sound: " << files.sound << '\n'
                << "cmd: " << files.commands << '\n';
    for (int number = 1; number <= 12; ++number)
        if (!files.pal(number).isEmpty()) context.out << "pal" << number << ": " << files.pal(number) << '\n';
    for (const QString& states : files.states)
        context.out << "states: " << states << '\n';
    return CliSuccess;
}
