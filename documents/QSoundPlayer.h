#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>

// Plays one WAV file held in memory, once or looped, until stopped. The sound model knows only this
// interface: the desktop program installs a factory for a player on the platform's audio output,
// while tools and tests get a silent player that keeps the bytes and plays nothing. A sound model
// asks for its player when a sound is first played, so that a project opens even where no audio
// back end can be made.
class QSoundPlayer : public QObject
{
    Q_OBJECT

public:
    // Makes a player, or answers nullptr with the reason in error when none can be made here.
    using Factory = QSoundPlayer* (*)(QObject* parent, QString* error);

    explicit QSoundPlayer(QObject* parent = nullptr);
    ~QSoundPlayer() override;

    // Stops what plays and starts wav; false when the bytes can't be played, with errorString() set.
    virtual bool play(const QByteArray& wav, bool loop) = 0;
    virtual void stop() = 0;
    virtual bool isPlaying() const = 0;
    QString errorString() const { return problem; }

    // A player from the installed factory, or a silent one when none is installed; nullptr with the
    // reason in error when the installed factory can't make one.
    static QSoundPlayer* create(QObject* parent, QString* error);
    // Installs the factory of the players made from now on; nullptr goes back to the silent player.
    static void setFactory(Factory factory);

Q_SIGNALS:
    // Playing stopped on its own because of a problem found after play() had accepted the bytes.
    void failed(const QString& reason);

protected:
    QString problem;
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
