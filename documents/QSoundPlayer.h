#pragma once

#include <QByteArray>
#include <QObject>

// Plays one WAV file held in memory, once or looped, until stopped. The sound model owns one and
// knows only this interface: the desktop program installs a factory for a player on the platform's
// audio output, while tools and tests get a silent player that keeps the bytes and plays nothing.
class QSoundPlayer : public QObject
{
    Q_OBJECT

public:
    using Factory = QSoundPlayer* (*)(QObject* parent);

    explicit QSoundPlayer(QObject* parent = nullptr);
    ~QSoundPlayer() override;

    // Stops what plays and starts wav; false when the bytes can't be played.
    virtual bool play(const QByteArray& wav, bool loop) = 0;
    virtual void stop() = 0;
    virtual bool isPlaying() const = 0;

    // A player from the installed factory, or a silent one when none is installed.
    static QSoundPlayer* create(QObject* parent = nullptr);
    // Installs the factory of the players made from now on; nullptr goes back to the silent player.
    static void setFactory(Factory factory);
};

// The player of tools and tests: accepts any bytes, plays nothing, and counts as playing until
// stopped.
class QSilentSoundPlayer : public QSoundPlayer
{
    Q_OBJECT

public:
    explicit QSilentSoundPlayer(QObject* parent = nullptr);

    bool play(const QByteArray& wav, bool loop) override;
    void stop() override;
    bool isPlaying() const override { return playing; }

    const QByteArray& bytes() const { return data; }
    bool isLooping() const { return looping; }

private:
    QByteArray data;
    bool playing = false;
    bool looping = false;
};
