#pragma once

#include <QLockFile>
#include <QString>

// Decides whether this process is the first running editor. A lock file in the temporary folder,
// named from the instance key, is held for the whole run; the operating system frees it with the
// process, and a lock left behind by a killed process is recognised as stale (its owner is gone),
// so a crash never turns every later start into a "second instance".
class QSingleInstance
{
public:
    explicit QSingleInstance(const QString& key = QStringLiteral("Tavrel3"));

    // Tries to take the lock; true when no other live editor holds it. Any failure counts as
    // another instance running.
    bool tryBecomeFirst();
    QString lockPath() const { return path; }

private:
    QString path;
    QLockFile lock;
};

// Whether this process holds the single-instance lock. Set once by the entry routine.
extern bool isFirstInstance;
