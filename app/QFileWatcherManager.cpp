#include "QFileWatcherManager.h"

#include "QMugenModel.h"

#include <QFileInfo>

QFileWatcherManager* fileWatcherManager = nullptr;

QFileWatcherManager::QFileWatcherManager(QObject* parent) : QObject(parent)
{
    connect(&watcher, &QFileSystemWatcher::fileChanged, this, &QFileWatcherManager::fileChanged);
}

bool QFileWatcherManager::enabled()
{
    return mugenModel && (*mugenModel)[QStringLiteral("enable_file_watcher")].toBool();
}

void QFileWatcherManager::watch(const QString& path)
{
    const QString key = QFileInfo(path).absoluteFilePath();
    if (counts[key]++ == 0 && QFileInfo::exists(key)) watcher.addPath(key);
}

void QFileWatcherManager::unwatch(const QString& path)
{
    const QString key = QFileInfo(path).absoluteFilePath();
    auto it = counts.find(key);
    if (it == counts.end()) return;
    if (--it.value() <= 0) {
        counts.erase(it);
        watcher.removePath(key);
    }
}

void QFileWatcherManager::fileChanged(const QString& path)
{
    // Editors that save replace the file, which ends the watch; put it back while the file exists.
    if (counts.contains(path) && !watcher.files().contains(path) && QFileInfo::exists(path))
        watcher.addPath(path);
    if (enabled()) Q_EMIT changedOutside(path);
}
