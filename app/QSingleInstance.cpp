#include "QSingleInstance.h"

#include <QDir>

bool isFirstInstance = false;

QSingleInstance::QSingleInstance(const QString& key)
    : path(QDir::tempPath() + QLatin1Char('/') + key + QStringLiteral(".lock")), lock(path)
{
    // A live first instance may run for days: only a dead owner makes the lock stale, never its age.
    lock.setStaleLockTime(0);
}

bool QSingleInstance::tryBecomeFirst()
{
    return lock.isLocked() || lock.tryLock(0);
}
