#pragma once

#include <QByteArray>
#include <QList>

class QSounds;

// The sounds of the sample fighter, synthesised: swings of filtered noise in 8 bits, a shout and hits
// from sine waves in 16 bits, all mono PCM WAV files.
class QSampleSounds
{
public:
    struct Sound
    {
        int group;
        int sample;
        QByteArray wav;
    };

    static QList<Sound> sounds();
    // Adds them to an empty sound model.
    static void fill(QSounds& model);

    // A mono PCM WAV file of samples already in the file's form: one unsigned byte or two signed
    // little-endian bytes each.
    static QByteArray wav(const QByteArray& samples, int rate, int bits);
};
