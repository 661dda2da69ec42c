#include "QMediaSoundPlayer.h"

#include "QMediaBackend.h"

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
    connect(media, &QMediaPlayer::errorOccurred, this, [this](QMediaPlayer::Error, const QString& text) {
        if (!active) return;
        active = false;
        problem = text;
        emit failed(text);
    });
}

QMediaSoundPlayer::~QMediaSoundPlayer()
{
    stop();
}

bool QMediaSoundPlayer::load(const QByteArray& wav, bool loop)
{
    stop();
    if (wav.isEmpty()) {
        problem = tr("the sound has no bytes.");
        return false;
    }
    data = wav;
    buffer.setData(data);
    if (!buffer.open(QIODevice::ReadOnly)) {
        problem = buffer.errorString();
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
    setFactory([](QObject* parent, QString* error) -> QSoundPlayer* {
        if (!QMediaBackend::ready(error)) return nullptr;
        return new QMediaSoundPlayer(parent);
    });
}
