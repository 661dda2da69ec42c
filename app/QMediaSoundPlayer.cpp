#include "QMediaSoundPlayer.h"

#include <QAudioOutput>
#include <QMediaPlayer>
#include <QUrl>

QMediaSoundPlayer::QMediaSoundPlayer(QObject* parent)
    : QSoundPlayer(parent), media(new QMediaPlayer(this)), output(new QAudioOutput(this))
{
    media->setAudioOutput(output);
    connect(media, &QMediaPlayer::mediaStatusChanged, this, [this](QMediaPlayer::MediaStatus status) {
        if (status == QMediaPlayer::EndOfMedia || status == QMediaPlayer::InvalidMedia) active = false;
    });
}

QMediaSoundPlayer::~QMediaSoundPlayer()
{
    stop();
}

bool QMediaSoundPlayer::load(const QByteArray& wav, bool loop)
{
    stop();
    if (wav.isEmpty()) return false;
    data = wav;
    buffer.setData(data);
    if (!buffer.open(QIODevice::ReadOnly)) {
        data = QByteArray();
        return false;
    }
    media->setLoops(loop ? QMediaPlayer::Infinite : QMediaPlayer::Once);
    // The URL only tells the backend what kind of bytes the device gives.
    media->setSourceDevice(&buffer, QUrl(QStringLiteral("sound.wav")));
    return true;
}

bool QMediaSoundPlayer::play(const QByteArray& wav, bool loop)
{
    if (!load(wav, loop)) return false;
    media->play();
    active = true;
    return true;
}

void QMediaSoundPlayer::stop()
{
    active = false;
    media->stop();
    media->setSourceDevice(nullptr);
    buffer.close();
    buffer.setData(QByteArray());
    data = QByteArray();
}

bool QMediaSoundPlayer::isLooping() const
{
    return media->loops() == QMediaPlayer::Infinite;
}

void QMediaSoundPlayer::install()
{
    setFactory([](QObject* parent) -> QSoundPlayer* { return new QMediaSoundPlayer(parent); });
}
