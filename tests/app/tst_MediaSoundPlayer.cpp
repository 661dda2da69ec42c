// The sound player of the editor and the choice of its media back end. The back end is tried in a
// probe process, because Qt's GStreamer back end crashes in QMediaPlayer's constructor when GStreamer
// has no plugins; these cases run scripted probes for each answer and the real probe on a GStreamer
// stripped of its plugins. Nothing is played aloud.

#include "QMediaBackend.h"
#include "QMediaSoundPlayer.h"
#include "QSounds.h"
#include "TestData.h"

#include <QDir>
#include <QFile>
#include <QMediaPlayer>
#include <QTemporaryDir>
#include <QTest>

class tst_MediaSoundPlayer : public QObject
{
    Q_OBJECT

    QTemporaryDir dir;

    // A probe that answers by a shell script: its first argument is the back end asked for.
    QString script(const QString& name, const QByteArray& body)
    {
        const QString path = dir.filePath(name);
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly)) return QString();
        file.write("#!/bin/sh\n" + body + "\n");
        file.close();
        file.setPermissions(file.permissions() | QFileDevice::ExeOwner);
        return path;
    }

private Q_SLOTS:
    void init()
    {
        QMediaBackend::reset();
        qunsetenv("QT_MEDIA_BACKEND");
    }

    void cleanupTestCase()
    {
        QMediaBackend::setProbeProgram(QString());
        QSoundPlayer::setFactory(nullptr);
    }

    void probeAnswers_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<bool>("ready");
        QTest::addColumn<QString>("backend");
        QTest::addColumn<QString>("reason");
        QTest::newRow("default works")
            << QByteArray("echo outputs 1; exit 0") << true << QString() << QString();
        QTest::newRow("default crashes, ffmpeg works")
            << QByteArray("[ \"$1\" = ffmpeg ] && { echo outputs 2; exit 0; }; kill -SEGV $$") << true
            << QStringLiteral("ffmpeg") << QString();
        QTest::newRow("every one crashes")
            << QByteArray("kill -SEGV $$") << false << QString()
            << QStringLiteral(
                   "The audio back end (Qt's default) crashed when it was made. Installing the packages "
                   "gstreamer1.0-plugins-base and gstreamer1.0-plugins-good may help.\n"
                   "The audio back end ffmpeg crashed when it was made. Installing the packages "
                   "gstreamer1.0-plugins-base and gstreamer1.0-plugins-good may help.");
        QTest::newRow("no device") << QByteArray("echo outputs 0; exit 0") << false << QString()
                                   << QStringLiteral("No audio output device was found.");
        QTest::newRow("media error")
            << QByteArray("[ \"$1\" = ffmpeg ] && exit 2; echo outputs 1; echo error Could not "
                          "decode; exit 2")
            << false << QString()
            << QStringLiteral("The audio back end (Qt's default) says: Could not decode\n"
                              "The audio back end ffmpeg can't read WAV sounds.");
        QTest::newRow("missing program")
            << QByteArray() << false << QString()
            << QStringLiteral("The program tavrel-media-probe can't be started.");
    }

    // Each answer of the probe gives its decision, the chosen back end reaches QT_MEDIA_BACKEND, and the
    // installed factory hands the reason to the sound model instead of making a player.
    void probeAnswers()
    {
        QFETCH(QByteArray, body);
        QFETCH(bool, ready);
        QFETCH(QString, backend);
        QFETCH(QString, reason);
        QMediaBackend::setProbeProgram(body.isEmpty()
                                           ? dir.filePath(QStringLiteral("absent"))
                                           : script(QString::fromLatin1(QTest::currentDataTag()), body));
        QString why;
        QCOMPARE(QMediaBackend::ready(&why), ready);
        QCOMPARE(why, reason);
        QCOMPARE(QMediaBackend::chosen(), backend);
        QCOMPARE(qEnvironmentVariable("QT_MEDIA_BACKEND"), backend);
        if (!ready) {
            QMediaSoundPlayer::install();
            QString told;
            QVERIFY(!QSoundPlayer::create(nullptr, &told));
            QCOMPARE(told, reason);
        }
    }

    // The real probe on a GStreamer that finds no plugin: whatever the back end does, this process lives
    // and gets an answer.
    void realProbeWithoutGStreamerPlugins()
    {
        const QString probe = TestData::binDir() + QStringLiteral("/tavrel-media-probe");
        if (!QFile::exists(probe)) QSKIP("tavrel-media-probe is not built next to the tests");
        QMediaBackend::setProbeProgram(probe);
        const QString empty = dir.filePath(QStringLiteral("no-plugins"));
        QVERIFY(QDir().mkpath(empty));
        qputenv("GST_PLUGIN_SYSTEM_PATH_1_0", empty.toLocal8Bit());
        qputenv("GST_PLUGIN_PATH_1_0", empty.toLocal8Bit());
        qputenv("GST_REGISTRY_1_0", dir.filePath(QStringLiteral("registry.bin")).toLocal8Bit());
        qputenv("QT_MEDIA_BACKEND", "gstreamer");
        QString why;
        QVERIFY(!QMediaBackend::ready(&why));
        QVERIFY2(!why.isEmpty(), "a reason is given");
        qunsetenv("GST_PLUGIN_SYSTEM_PATH_1_0");
        qunsetenv("GST_PLUGIN_PATH_1_0");
        qunsetenv("GST_REGISTRY_1_0");
    }

    // Where a back end works, the player takes the bytes from memory and lets go of them on stop.
    void loadAndStop()
    {
        const QString probe = TestData::binDir() + QStringLiteral("/tavrel-media-probe");
        QMediaBackend::setProbeProgram(probe);
        QString why;
        if (!QMediaBackend::ready(&why)) QSKIP(qPrintable(QStringLiteral("no media back end here: ") + why));
        for (const bool loop : {false, true}) {
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
            QCOMPARE(player.errorString(), QStringLiteral("the sound has no bytes."));
        }
    }
};

QTEST_MAIN(tst_MediaSoundPlayer)
#include "tst_MediaSoundPlayer.moc"
