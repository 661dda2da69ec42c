#pragma once

#include "QProjectTypes.h"

#include <QString>

// One file that a project's definitions name, as the last open found it.
struct QProjectFileEntry
{
    QProjectFileType kind = pftDefinitions;
    // "sprite", "anim", "sound", "cmd", "pal1".."pal12" or "states".
    QString role;
    // The name as the definitions give it, with forward slashes.
    QString name;
    // The file it was found as; empty when there is none.
    QString path;
    bool loaded = false;
    // The common states ("stcommon") of a project outside any engine's folder: the engine supplies
    // them from its own data folder, so they are not missing when not found.
    bool fromEngine = false;
};
