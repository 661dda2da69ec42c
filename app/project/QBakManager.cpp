#include "QBakManager.h"

#include <QDir>
#include <QFileInfo>
#include <QLocale>

#include <algorithm>

QBakManager::QBakManager(const QString& definitionsPath)
{
    const QFileInfo project(definitionsPath);
    if (definitionsPath.isEmpty()) return;
    const QDir backups(project.absolutePath() + QStringLiteral("/backup"));
    const QLocale c = QLocale::c();
    for (const QFileInfo& folder : backups.entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        // The names are written in the C locale's "am"/"pm"; any other name is someone else's folder.
        const QDateTime time = c.toDateTime(folder.fileName(), timeFormat());
        if (!time.isValid()) continue;
        const QDir inside(folder.absoluteFilePath());
        QString definitions;
        const QStringList defs = inside.entryList({QStringLiteral("*.def")}, QDir::Files, QDir::Name);
        for (const QString& name : defs)
            if (name.compare(project.fileName(), Qt::CaseInsensitive) == 0)
                definitions = inside.filePath(name);
        if (definitions.isEmpty() && !defs.isEmpty()) definitions = inside.filePath(defs.first());
        if (definitions.isEmpty()) continue;
        m_entries.append({folder.absoluteFilePath(), time, definitions});
    }
    std::stable_sort(m_entries.begin(), m_entries.end(),
                     [](const Entry& a, const Entry& b) { return a.time > b.time; });
}

QStringList QBakManager::titles() const
{
    QStringList names;
    for (const Entry& entry : m_entries)
        names << QLocale().toString(entry.time, QLocale::LongFormat);
    return names;
}
