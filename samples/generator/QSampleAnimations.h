#pragma once

#include <QByteArray>
#include <QList>

class QSampleSprites;

// The actions of the sample fighter and their AIR text. Collision boxes follow the drawings: the body
// box of an action is the extent of its first sprite, and a striking frame adds a box of its own for
// the whole figure and an attack box around the fist or foot that strikes.
class QSampleAnimations
{
public:
    enum Strike
    {
        NoStrike,
        Fist,
        Foot
    };

    struct Frame
    {
        int group;
        int index;
        int time;
        Strike strike = NoStrike;
    };

    struct Action
    {
        int number;
        const char* title;
        QList<Frame> frames;
        // Whether the action has a body box; lying on the ground it has none.
        bool vulnerable = true;
    };

    static QList<Action> actions();
    // The AIR file, lines ending in CR LF.
    static QByteArray text(const QSampleSprites& sprites);
};
