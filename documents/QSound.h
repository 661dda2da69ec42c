#pragma once

#include "QSoundInfo.h"

struct QStreamCacheItem;

// One sound of a sound file. Its bytes live in the sound model's cache; an empty sound has none.
class QSound
{
public:
    QStreamCacheItem* data = nullptr;
    uint group = 0;
    uint sample = 0;
    QSoundInfo info;
};
