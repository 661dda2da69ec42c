// The Qt Multimedia sound player: it takes WAV bytes from memory and lets go of them on stop. Nothing
// is played aloud, so no audio device is needed.

#include "QMediaSoundPlayer.h"
#include "QSounds.h"

#include <QMediaPlayer>
#include <QTest>

class tst_MediaSoundPlayer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void loadAndStop_data()
    {
        QTest::addColumn<bool>("loop");
        QTest::newRow("once") << false;
        QTest::newRow("looped") << true;
    }

    void loadAndStop()
    {
        QFETCH(bool, loop);
        QMediaSoundPlayer player;
        const QByteArray wav("RIFF\x24\x00\x00\x00WAVEfmt ", 16);
        QVERIFY(player.load(wav, loop));
        QCOMPARE(player.bytes(), wav);
        QCOMPARE(player.isLooping(), loop);
        QVERIFY(player.mediaPlayer()->sourceDevice());
        player.stop();
        QVERIFY(!player.isPlaying());
        QVERIFY(player.bytes().isEmpty());
        QVERIFY(!player.mediaPlayer()->sourceDevice());
        QVERIFY(!player.load(QByteArray(), loop));
    }

    void installedForModels()
    {
        QMediaSoundPlayer::install();
        QSounds sounds(nullptr, 0, false);
        QVERIFY(qobject_cast<QMediaSoundPlayer*>(sounds.soundPlayer()));
        QSoundPlayer::setFactory(nullptr);
        QSounds silent(nullptr, 0, false);
        QVERIFY(qobject_cast<QSilentSoundPlayer*>(silent.soundPlayer()));
    }
};

QTEST_MAIN(tst_MediaSoundPlayer)
#include "tst_MediaSoundPlayer.moc"
