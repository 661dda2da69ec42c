#include "QSoundPlayer.h"

namespace {

QSoundPlayer::Factory installedFactory = nullptr;

} // namespace

QSoundPlayer::QSoundPlayer(QObject* parent) : QObject(parent) {}

QSoundPlayer::~QSoundPlayer() = default;

QSoundPlayer* QSoundPlayer::create(QObject* parent, QString* error)
{
    if (installedFactory) return installedFactory(parent, error);
    return new QSilentSoundPlayer(parent);
}

void QSoundPlayer::setFactory(Factory factory)
{
    installedFactory = factory;
}

QSilentSoundPlayer::QSilentSoundPlayer(QObject* parent) : QSoundPlayer(parent) {}

bool QSilentSoundPlayer::play(const QByteArray& wav, bool loop)
{
    data = wav;
    looping = loop;
    playing = true;
    return true;
}

void QSilentSoundPlayer::stop()
{
    data = QByteArray();
    playing = false;
    looping = false;
}
