#include "QProjectStatus.h"

QString QProjectStatus::text(QProjectType type, quint32 version)
{
    return tr("Project: %1, Version: M.U.G.E.N. %2").arg(typeName(type), versionName(version));
}

QString QProjectStatus::typeName(QProjectType type)
{
    switch (type) {
    case Character:
        return tr("Character");
    case Storyboard:
        return tr("Storyboard");
    case Stage:
        return tr("Stage");
    case Font:
        return tr("Font");
    case SystemScreen:
        return tr("System screens");
    case FightFX:
        return tr("Fight HUD & effects");
    }
    return QString();
}

QString QProjectStatus::versionName(quint32 version)
{
    if (version < 0x1000000) return tr("Beta");
    return QStringLiteral("%1.%2").arg(version >> 24).arg((version >> 16) & 0xff);
}
