#include "QCliProjectCommand.h"

#include "QCliProject.h"
#include "QDefinitions.h"
#include "QProject.h"
#include "QProjectPaths.h"
#include "QSFFFormat.h"
#include "QSpritePalette.h"
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
    const QString targetDir = QFileInfo(target).absolutePath();
    if (!QDir().mkpath(targetDir)) return context.fail(targetDir, QStringLiteral("can't be made"));
    const QString oldBase = project->definitions()->baseDirectory();

    // Each file goes beside the new definitions under the name the definitions give it, so that the
    // copied definitions still name every file. A file from outside the project's folder (one the
    // engine shares, such as common1.cns) stays where it is, and the engine finds it there.
    QStringList written;
    bool spritesWritten = false;
    QObject::connect(project.get(), &QProject::saveFileName, project.get(),
                     [&](QProjectFileType kind, const QString&) -> QString {
                         const QString relative = QDir(oldBase).relativeFilePath(project->savingPath());
                         if (project->savingPath().isEmpty() || relative.startsWith(QLatin1String("..")))
                             return QString();
                         const QString path = QDir(targetDir).filePath(relative);
                         QDir().mkpath(QFileInfo(path).absolutePath());
                         written << path;
                         spritesWritten = spritesWritten || kind == pftSprites;
                         return path;
                     });
    QObject::connect(project.get(), &QProject::spritesVersionToSave, project.get(),
                     [&](quint32 current) { return version ? version : current; });
    QSprites* sprites = project->sprites();
    const quint32 storedVersion = sprites->version();
    project->toFile(target, false);
    if (!QFileInfo::exists(target)) return context.fail(target, QStringLiteral("can't be written"));
    if (sprites->count() > 0 && !spritesWritten)
        return context.fail(sprites->fileName(),
                            QStringLiteral("the sprites can't be saved in version %1 as they stand (see "
                                           "'tavrel-cli sff convert --reorder')")
                                .arg(QSFF::versionText(version ? version : storedVersion)));

    // The palette files go along as they are; a palette that no file holds yet is written from the model.
    for (const QProjectFileEntry& entry : project->fileEntries()) {
        if (!entry.role.startsWith(QLatin1String("pal"))) continue;
        const QString path = QDir(targetDir).filePath(QProjectPaths::normalized(entry.name));
        QDir().mkpath(QFileInfo(path).absolutePath());
        QFile::remove(path);
        bool copied = !entry.path.isEmpty() && QFile::copy(entry.path, path);
        if (!copied) {
            const int palette = sprites->findPalette(0, 1, entry.role.mid(3).toInt());
            copied = palette >= 0 && sprites->paletteAt(uint(palette))->toFile(path);
        }
        if (copied) written << path;
    }

    context.out << "wrote " << target << '\n';
    for (const QString& path : std::as_const(written))
        context.out << "wrote " << path << '\n';
    if (version && version != storedVersion)
        context.out << "sprites: version " << QSFF::versionText(storedVersion) << " -> "
                    << QSFF::versionText(sprites->version()) << '\n';
    return CliSuccess;
}
