#pragma once

#include <QByteArray>
#include <QtGlobal>

// One sound as a sound file stores it: its numbers and the WAV file's bytes, whole (empty for an empty
// sound).
struct QSNDRecord
{
    quint32 group = 0;
    quint32 sample = 0;
    QByteArray bytes;
};
