#pragma once

#include "QUserDialogs.h"

#include <QCoreApplication>

class QSprites;

// The numbers that sprites added from files take in turn, within one group. When a number is in use,
// the user is asked whether to move on to the next free one, to insert as is, or to skip the file; a
// Yes or No holds for the rest of the run. After each file the number moves on by 1, or by 10 when the
// step is 0, to the next free one unless the user chose to insert as is.
class QSpriteNumbering
{
    Q_DECLARE_TR_FUNCTIONS(QSpriteNumbering)

public:
    // step: how far a number in use moves on to find a free one; 0 means by tens.
    QSpriteNumbering(const QSprites& sprites, int group, int first, int step);

    // The number of the next file, or -1 when it is to be skipped. Call taken() once it is inserted.
    int next();
    // The number that next() gave is now in use.
    void taken(int number);
    // What the run holds to; NoButton until a Yes or No was given.
    QUserDialogs::Button answer() const { return remembered; }

private:
    bool inUse(int number) const;
    int freeFrom(int number) const;

    const QSprites& sprites;
    int group;
    int number;
    int step;
    QUserDialogs::Button remembered = QUserDialogs::NoButton;
};
