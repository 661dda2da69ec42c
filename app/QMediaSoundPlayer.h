#pragma once

#include "QSoundPlayer.h"

#include <QBuffer>

class QAudioOutput;
class QMediaPlayer;

// The desktop program's sound player: Qt Multimedia plays the WAV bytes straight from memory through
// the default audio output. install() makes every sound model use it from its first play on, once
// QMediaBackend has found a back end that works; construct one directly only after that.
class QMediaSoundPlayer : public QSoundPlayer
{
    Q_OBJECT

public:
    explicit QMediaSoundPlayer(QObject* parent = nullptr);
    ~QMediaSoundPlayer() override;

    bool play(const QByteArray& wav, bool loop) override;
    void stop() override;
    bool isPlaying() const override { return active; }

    // Hands the bytes to the media player without starting it; play() is load() and a start.
    bool load(const QByteArray& wav, bool loop);
    const QByteArray& bytes() const { return data; }
    bool isLooping() const;
    QMediaPlayer* mediaPlayer() const { return media; }

    static void install();

private:
    QByteArray data;
    QBuffer buffer;
    QMediaPlayer* media;
    QAudioOutput* output;
    bool active = false;
};
