#include "QCliProjectCommand.h"

#include "QCliProject.h"
#include "QDefinitions.h"
#include "QProject.h"
#include "QSFFFormat.h"
#include "QSprites.h"

#include <QDir>
#include <QFileInfo>

QString QCliProjectCommand::summary() const
{
    return QStringLiteral("save a whole project under a new definitions file");
}

QString QCliProjectCommand::usage() const
{
    return QStringLiteral(
        "tavrel-cli project save-as PROJECT.def DIR/NAME.def [--sff-version 1.01|2.00|2.01]");
}

int QCliProjectCommand::run(QCliContext& context)
{
    QString versionText;
    bool versionGiven = false;
    if (!context.takeOption(QStringLiteral("--sff-version"), &versionText, &versionGiven))
        return context.usageError(QStringLiteral("project: --sff-version needs a value"), usage());
    if (context.arguments.size() != 3 || context.arguments.at(0) != QLatin1String("save-as"))
        return context.usageError(QStringLiteral("project: expected 'save-as', a project and a target"),
                                  usage());
    const quint32 version = versionGiven ? QSFF::parseVersion(versionText) : 0;
    if (versionGiven && version == 0)
        return context.usageError(QStringLiteral("project: '%1' is no sprite file version").arg(versionText),
                                  usage());
    const QString source = context.arguments.at(1);
    const QString target = QFileInfo(context.arguments.at(2)).absoluteFilePath();
    const std::unique_ptr<QProject> project = QCliProject::open(context, source, false);
    if (!project) return CliFailed;
    const QString oldBase = project->definitions()->baseDirectory();

    // Every file the definitions name goes beside the new definitions under that name (QProject); a
    // model that they don't name keeps its place relative to the definitions, unless it lies outside
    // their folder.
    const QString targetDir = QFileInfo(target).absolutePath();
    QObject::connect(project.get(), &QProject::saveFileName, project.get(),
                     [&](QProjectFileType, const QString&) -> QString {
                         const QString relative = QDir(oldBase).relativeFilePath(project->savingPath());
                         if (project->savingPath().isEmpty() || relative.startsWith(QLatin1String("..")))
                             return QString();
                         const QString path = QDir(targetDir).filePath(relative);
                         QDir().mkpath(QFileInfo(path).absolutePath());
                         return path;
                     });
    QObject::connect(project.get(), &QProject::spritesVersionToSave, project.get(),
                     [&](quint32 current) { return version ? version : current; });
    QSprites* sprites = project->sprites();
    const quint32 storedVersion = sprites->version();
    if (!project->toFile(target, false)) {
        // What could not be written was told through the dialog seam already.
        if (!project->saveError().isEmpty()) return CliFailed;
        return context.fail(sprites->fileName(),
                            QStringLiteral("the sprites can't be saved in version %1 as they stand (see "
                                           "'tavrel-cli sff convert --reorder')")
                                .arg(QSFF::versionText(version ? version : storedVersion)));
    }

    for (const QString& path : project->writtenFiles())
        context.out << "wrote " << path << '\n';
    if (version && version != storedVersion)
        context.out << "sprites: version " << QSFF::versionText(storedVersion) << " -> "
                    << QSFF::versionText(sprites->version()) << '\n';
    return CliSuccess;
}
