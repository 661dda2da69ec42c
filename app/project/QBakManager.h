#pragma once

#include <QDateTime>
#include <QList>
#include <QString>

// The backups of one project: the time-stamped folders under the "backup" folder beside its
// definitions, newest first. A folder whose name is not such a time, or that holds no definitions
// file, is not a backup of this program and is left out.
class QBakManager
{
public:
    struct Entry
    {
        QString folder;
        QDateTime time;
        // The definitions file in it: the one named like the project's, else the first one found.
        QString definitions;
    };

    // definitionsPath is the project's definitions file; its folder holds "backup".
    explicit QBakManager(const QString& definitionsPath);

    const QList<Entry>& entries() const { return m_entries; }
    // The names of the entries as the user reads them: the backup's date and time.
    QStringList titles() const;

    static QString timeFormat() { return QStringLiteral("dd-MM-yyyy h-m-s ap"); }

private:
    QList<Entry> m_entries;
};
