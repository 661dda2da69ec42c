#include "QCliInfoCommand.h"

#include "QAnimations.h"
#include "QCliProject.h"
#include "QCommands.h"
#include "QDefinitions.h"
#include "QProject.h"
#include "QSounds.h"
#include "QSprites.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

QString QCliInfoCommand::summary() const
{
    return QStringLiteral("open a project and show its kind, files and counts");
}

QString QCliInfoCommand::usage() const
{
    return QStringLiteral("tavrel-cli info PROJECT.def|FONT.fnt [--json]");
}

int QCliInfoCommand::run(QCliContext& context)
{
    const bool json = context.takeFlag(QStringLiteral("--json"));
    if (context.arguments.size() != 1 || context.arguments.at(0).startsWith(QLatin1String("--")))
        return context.usageError(QStringLiteral("info: expected one definitions file"), usage());
    const QString path = context.arguments.at(0);
    const std::unique_ptr<QProject> project = QCliProject::open(context, path, false);
    if (!project) return CliFailed;

    const QList<QPair<QString, int>> counts = {
        {QStringLiteral("sprites"), int(project->sprites()->count())},
        {QStringLiteral("palettes"), int(project->sprites()->paletteCount())},
        {QStringLiteral("actions"), project->animations()->count()},
        {QStringLiteral("commands"), project->commands()->count()},
        {QStringLiteral("states"), project->statesCount()},
        {QStringLiteral("sounds"), int(project->sounds()->count())}};
    const QDefinitions* definitions = project->definitions();

    if (json) {
        QJsonArray files;
        for (const QProjectFileEntry& entry : project->fileEntries())
            files.append(QJsonObject{{QStringLiteral("role"), entry.role},
                                     {QStringLiteral("name"), entry.name},
                                     {QStringLiteral("path"), entry.path},
                                     {QStringLiteral("loaded"), entry.loaded},
                                     {QStringLiteral("fromEngine"), entry.fromEngine}});
        QJsonObject countObject;
        for (const auto& count : counts)
            countObject.insert(count.first, count.second);
        const QJsonObject root{{QStringLiteral("file"), QFileInfo(path).absoluteFilePath()},
                               {QStringLiteral("type"), QCliProject::typeName(project->type())},
                               {QStringLiteral("version"), QCliProject::versionText(definitions->version())},
                               {QStringLiteral("name"), project->displayName()},
                               {QStringLiteral("files"), files},
                               {QStringLiteral("counts"), countObject}};
        context.out << QJsonDocument(root).toJson(QJsonDocument::Indented);
        return CliSuccess;
    }

    context.out << "type: " << QCliProject::typeName(project->type()) << '\n'
                << "version: " << QCliProject::versionText(definitions->version()) << '\n'
                << "name: " << project->displayName() << '\n';
    for (const QProjectFileEntry& entry : project->fileEntries()) {
        // The engine's common states of content outside an engine's folder are the engine's to give.
        const QString state = entry.loaded           ? QStringLiteral("loaded")
                              : entry.fromEngine     ? QStringLiteral("from the engine")
                              : entry.path.isEmpty() ? QStringLiteral("missing")
                                                     : QStringLiteral("not loaded");
        context.out << entry.role << ": " << entry.name << " (" << state << ")";
        if (!entry.path.isEmpty()) context.out << " " << entry.path;
        context.out << '\n';
    }
    for (const auto& count : counts)
        context.out << count.first << ": " << count.second << '\n';
    return CliSuccess;
}
