#pragma once

#include <QString>

// Writes the states of a throw: the thrower's grab, the thrower's throw, and the two custom states the
// opponent is put in, held and then thrown.
//
// The code is written here in C++ for as long as the program has no script host; once scripts arrive,
// the "common/Throw" script takes this over and this class goes.
class QThrowWriter
{
public:
    // The number of the grab; the throw takes the next one, the opponent's states the tenth and
    // eleventh after it.
    int stateDef = 800;
    // The grab's animation, the throw's animation, and the opponent's animation while held (one of the
    // thrower's animations, as every animation of a custom state).
    int p1AnimStart = 800;
    int p1Anim = 810;
    int p2Anim = 820;
    // The opponent's velocity when let go; a positive x throws away from the thrower.
    double xVelocity = 4;
    double yVelocity = -7;
    // How many ticks the thrower holds the opponent before letting go.
    int bindCount = 20;
    // The opponent's sprite priority while held; the thrower draws one above it.
    int sprPriority = 1;

    QString code() const;
};
