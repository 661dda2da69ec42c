#pragma once

#include <QtGlobal>

// One step of a command: the directions and buttons held together, how, and for how long.
struct QCommandStep
{
    // Direction bits: U 1, D 2, B 4, F 8 (diagonals are sums); buttons a 16, b 32, c 64, x 128,
    // y 256, z 512, s 1024.
    quint32 keys = 0;
    // "/" 1 (hold), "~" 2 (release), "$" 4 (direction or its diagonals), ">" 8 (nothing in between).
    quint16 modifiers = 0;
    // The release time read after "~".
    quint16 time = 0;

    bool operator==(const QCommandStep& other) const
    {
        return keys == other.keys && modifiers == other.modifiers && time == other.time;
    }
};
