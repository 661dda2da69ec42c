#pragma once

#include <QByteArray>
#include <QtGlobal>

// The facts of one WAV file that the sounds list shows. Everything is zero when the bytes aren't PCM.
struct QSoundInfo
{
    quint8 channels = 0;
    uint sampleRate = 0;
    quint8 bitsPerSample = 0;
    // Seconds: the size of the "data" chunk over the byte rate.
    float duration = 0.0f;

    // Reads the facts the way the game's own sound loader does: the "fmt " chunk is taken to be the
    // first chunk, and the "data" chunk is the first place the four letters occur in the bytes. A file
    // with another chunk ahead of "fmt " therefore reads wrong values; that is what the game sees too.
    static QSoundInfo fromWav(const QByteArray& bytes);

    bool operator==(const QSoundInfo& other) const
    {
        return channels == other.channels && sampleRate == other.sampleRate &&
               bitsPerSample == other.bitsPerSample && duration == other.duration;
    }
};
