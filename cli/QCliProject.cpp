#include "QCliProject.h"

#include "QCliContext.h"
#include "QDefinitions.h"
#include "QModelTables.h"
#include "QProject.h"

#include <QCoreApplication>
#include <QFileInfo>

std::unique_ptr<QProject> QCliProject::open(QCliContext& context, const QString& path, bool withCheckers)
{
    if (!QFileInfo(path).isFile()) {
        context.fail(path, QStringLiteral("no such file"));
        return nullptr;
    }
    if (withCheckers && !QModelTables::checkers()) {
        context.fail(QModelTables::dataDir(), QStringLiteral("the vocabularies can't be read"));
        return nullptr;
    }
    // The command line keeps everything in memory: nothing of a project outlives the run.
    auto project = std::make_unique<QProject>(0, false);
    const bool font = path.endsWith(QLatin1String(".fnt"), Qt::CaseInsensitive);
    if (font ? !project->fromFontFile(path) : !project->fromFile(path, 0)) {
        context.fail(path,
                     font ? QStringLiteral("can't be read as a font") : QStringLiteral("can't be read"));
        return nullptr;
    }
    return project;
}

QString QCliProject::typeName(QProjectType type)
{
    switch (type) {
    case Character:
        return QStringLiteral("Character");
    case Storyboard:
        return QStringLiteral("Storyboard");
    case Stage:
        return QStringLiteral("Stage");
    case Font:
        return QStringLiteral("Font");
    case SystemScreen:
        return QStringLiteral("SystemScreen");
    case FightFX:
        return QStringLiteral("FightFX");
    }
    return QString::number(int(type));
}

QString QCliProject::versionText(quint32 version)
{
    QString text = QStringLiteral("%1.%2").arg(version >> 24).arg((version >> 16) & 0xff);
    if (version & 0xffff) text += QStringLiteral(".%1.%2").arg((version >> 8) & 0xff).arg(version & 0xff);
    return text;
}
