#pragma once

#include <QMetaType>

// Kinds of project; the values are bit-like because scripts and the definitions file combine them.
enum QProjectType
{
    Character = 2,
    Storyboard = 4,
    Stage = 8,
    Font = 16,
    SystemScreen = 32,
    FightFX = 64
};

// The kind of one file inside a project. The numbers are stored in issue rows and navigation requests.
enum QProjectFileType
{
    pftDefinitions = 0,
    pftSprites = 1,
    pftAnimations = 2,
    pftCommands = 3,
    pftStates = 4,
    pftSounds = 5
};

Q_DECLARE_METATYPE(QProjectFileType)
