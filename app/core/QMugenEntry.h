#pragma once

#include <QString>

// One configured M.U.G.E.N. executable: the name shown in menus, the program to start, its command
// line (with the run placeholders) and an optional icon file.
struct QMugenEntry
{
    QString name;
    QString exe;
    QString params;
    QString icon;
};
