#include "QCliConfigCommand.h"

#include "QMugenModel.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

QString QCliConfigCommand::summary() const
{
    return QStringLiteral("show the editor's settings: defaults, or a config.xml/.tvc3 file over them");
}

QString QCliConfigCommand::usage() const
{
    return QStringLiteral("tavrel-cli config show [FILE] [--json]");
}

int QCliConfigCommand::run(QCliContext& context)
{
    const bool json = context.takeFlag(QStringLiteral("--json"));
    if (context.arguments.value(0) != QLatin1String("show") || context.arguments.size() > 2)
        return context.usageError(QStringLiteral("config: expected 'show' and at most one file"), usage());

    QMugenModel model;
    if (context.arguments.size() == 2) {
        const QString file = context.arguments.at(1);
        if (!QFileInfo(file).isFile()) return context.fail(file, QStringLiteral("no such file"));
        if (!model.load(file)) return context.fail(file, QStringLiteral("not a configuration file"));
    }

    if (json) {
        QJsonObject settings;
        for (auto it = model.settings.constBegin(); it != model.settings.constEnd(); ++it)
            if (!it.key().startsWith(QLatin1String("mugen_"))) settings[it.key()] = it.value().toString();
        QJsonArray executables;
        for (int row = 0; row < model.rowCount(); ++row) {
            const QMugenEntry* entry = model.entries.at(row);
            executables.append(QJsonObject{{QStringLiteral("name"), entry->name},
                                           {QStringLiteral("exe"), entry->exe},
                                           {QStringLiteral("params"), entry->params},
                                           {QStringLiteral("icon"), entry->icon}});
        }
        const QJsonObject root{{QStringLiteral("settings"), settings},
                               {QStringLiteral("executables"), executables}};
        context.out << QJsonDocument(root).toJson(QJsonDocument::Indented);
        return CliSuccess;
    }
    for (auto it = model.settings.constBegin(); it != model.settings.constEnd(); ++it)
        if (!it.key().startsWith(QLatin1String("mugen_")))
            context.out << it.key() << " = " << it.value().toString() << '\n';
    for (int row = 0; row < model.rowCount(); ++row) {
        const QMugenEntry* entry = model.entries.at(row);
        context.out << "executable " << row << ": " << entry->name << " | " << entry->exe << " | "
                    << entry->params << " | " << entry->icon << '\n';
    }
    return CliSuccess;
}
