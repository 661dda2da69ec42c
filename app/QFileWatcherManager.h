#pragma once

#include <QFileSystemWatcher>
#include <QHash>
#include <QObject>

// Tells of files changed from outside the program. Several open documents may name one path, so each
// path is watched once and counted; the watch is only active while the setting
// "enable_file_watcher" is on.
class QFileWatcherManager : public QObject
{
    Q_OBJECT
public:
    explicit QFileWatcherManager(QObject* parent = nullptr);

    void watch(const QString& path);
    void unwatch(const QString& path);
    QStringList watchedPaths() const { return counts.keys(); }

Q_SIGNALS:
    void changedOutside(const QString& path);

public Q_SLOTS:
    void fileChanged(const QString& path);

private:
    static bool enabled();
    QFileSystemWatcher watcher;
    QHash<QString, int> counts;
};

extern QFileWatcherManager* fileWatcherManager;
