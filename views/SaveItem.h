#pragma once

#include <QList>

class QSprites;

// Which sprites a command of the sprites editor takes: the current one, all of them, or a group with
// all of its numbers or a run of them.
struct SaveItem
{
    enum Kind
    {
        Current,
        All,
        Group
    };

    Kind kind = Current;
    int group = 0;
    bool allNumbers = true;
    int from = 0;
    int to = 0;

    bool isRange() const { return kind != Current; }
    // The rows it names, in list order; for Current the row given, when there is a sprite there.
    QList<uint> rows(const QSprites& sprites, int current) const;
};
