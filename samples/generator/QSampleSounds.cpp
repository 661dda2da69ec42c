#include "QSampleSounds.h"

#include "QSounds.h"

#include <QDataStream>
#include <QIODevice>

#include <algorithm>
#include <cmath>

namespace {

constexpr double Pi = 3.14159265358979323846;

// The same noise on every run: a linear congruential generator with a fixed seed, from -1 to 1.
class Noise
{
public:
    double next()
    {
        state = state * 1103515245u + 12345u;
        return double((state >> 8) & 0xffff) / 32767.5 - 1.0;
    }

private:
    quint32 state = 20240101u;
};

// Rises over the first tenth and falls away to nothing.
double envelope(double t, double length)
{
    const double attack = length / 10;
    if (t < attack) return t / attack;
    return std::pow(1.0 - (t - attack) / (length - attack), 2.0);
}

QByteArray eightBit(const QList<double>& values)
{
    QByteArray bytes;
    for (double v : values)
        bytes.append(char(std::clamp(int(std::lround(128 + 127 * v)), 0, 255)));
    return bytes;
}

QByteArray sixteenBit(const QList<double>& values)
{
    QByteArray bytes;
    for (double v : values) {
        const int sample = std::clamp(int(std::lround(32767 * v)), -32768, 32767);
        bytes.append(char(sample & 0xff));
        bytes.append(char((sample >> 8) & 0xff));
    }
    return bytes;
}

// Noise through a one-pole low pass: the smaller smoothing, the duller the swing.
QList<double> swing(int rate, double length, double smoothing, double loudness)
{
    Noise noise;
    QList<double> values;
    double filtered = 0;
    const int count = int(rate * length);
    for (int i = 0; i < count; ++i) {
        const double t = double(i) / rate;
        filtered += smoothing * (noise.next() - filtered);
        values.append(loudness * envelope(t, length) * filtered * 2.5);
    }
    return values;
}

// A falling voiced tone with a few harmonics and a little vibrato.
QList<double> shout(int rate, double length)
{
    QList<double> values;
    double phase = 0;
    const int count = int(rate * length);
    for (int i = 0; i < count; ++i) {
        const double t = double(i) / rate;
        const double pitch = 240 - 90 * t / length + 6 * std::sin(2 * Pi * 7 * t);
        phase += 2 * Pi * pitch / rate;
        const double voice = 0.6 * std::sin(phase) + 0.25 * std::sin(2 * phase) + 0.12 * std::sin(3 * phase);
        values.append(0.8 * envelope(t, length) * voice);
    }
    return values;
}

// A low thump with a short burst of noise on top.
QList<double> thump(int rate, double length, double pitch, double loudness)
{
    Noise noise;
    QList<double> values;
    const int count = int(rate * length);
    for (int i = 0; i < count; ++i) {
        const double t = double(i) / rate;
        const double body = std::sin(2 * Pi * pitch * t * (1.0 - 0.4 * t / length)) * std::exp(-t * 14);
        const double crack = t < 0.025 ? noise.next() * (1.0 - t / 0.025) : 0.0;
        values.append(loudness * (0.8 * body + 0.5 * crack));
    }
    return values;
}

} // namespace

QByteArray QSampleSounds::wav(const QByteArray& samples, int rate, int bits)
{
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out.setByteOrder(QDataStream::LittleEndian);
    const quint16 blockAlign = quint16(bits / 8);
    out.writeRawData("RIFF", 4);
    out << quint32(36 + samples.size());
    out.writeRawData("WAVEfmt ", 8);
    out << quint32(16) << quint16(1) << quint16(1) << quint32(rate) << quint32(rate * blockAlign)
        << blockAlign << quint16(bits);
    out.writeRawData("data", 4);
    out << quint32(samples.size());
    out.writeRawData(samples.constData(), int(samples.size()));
    return bytes;
}

QList<QSampleSounds::Sound> QSampleSounds::sounds()
{
    return {
        {0, 0, wav(eightBit(swing(11025, 0.16, 0.45, 0.7)), 11025, 8)},
        {0, 1, wav(eightBit(swing(11025, 0.24, 0.2, 0.9)), 11025, 8)},
        {1, 0, wav(sixteenBit(shout(22050, 0.35)), 22050, 16)},
        {5, 0, wav(sixteenBit(thump(22050, 0.18, 110, 0.8)), 22050, 16)},
        {5, 1, wav(sixteenBit(thump(22050, 0.3, 70, 1.0)), 22050, 16)},
    };
}

void QSampleSounds::fill(QSounds& model)
{
    model.setUndoEnabled(false);
    for (const Sound& sound : sounds())
        model.add(uint(sound.group), uint(sound.sample), sound.wav);
    model.setUndoEnabled(true);
}
