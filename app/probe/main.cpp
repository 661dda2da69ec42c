// tavrel-media-probe [BACKEND]: makes a media player on Qt Multimedia's back end (the default one, or
// the one named) and loads a short WAV from memory, as the editor does when it plays a sound. Some
// back ends crash inside their constructor when parts of them are missing (GStreamer without its
// plugins), so the editor asks this program first and never risks its own process.
// Exit status: 0 the WAV loaded; 2 it did not (the reason on standard output); 3 no answer in time.
// Standard output also says how many audio outputs the system has.

#include <QAudioDevice>
#include <QAudioOutput>
#include <QBuffer>
#include <QGuiApplication>
#include <QMediaDevices>
#include <QMediaPlayer>
#include <QTimer>
#include <QUrl>
#include <QtEndian>

#include <cstdio>

namespace {

// 100 ms of 8-bit mono silence at 8 kHz.
QByteArray silence()
{
    const quint32 samples = 800;
    QByteArray wav;
    auto word = [&wav](quint32 value, int size) {
        for (int i = 0; i < size; ++i)
            wav.append(char((value >> (8 * i)) & 0xff));
    };
    wav.append("RIFF");
    word(36 + samples, 4);
    wav.append("WAVEfmt ");
    word(16, 4);
    word(1, 2);
    word(1, 2);
    word(8000, 4);
    word(8000, 4);
    word(1, 2);
    word(8, 2);
    wav.append("data");
    word(samples, 4);
    wav.append(QByteArray(int(samples), char(0x80)));
    return wav;
}

} // namespace

int main(int argc, char** argv)
{
    // The probe shows nothing and must run where no display is.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    if (argc > 1 && argv[1][0] != '\0') qputenv("QT_MEDIA_BACKEND", argv[1]);
    QGuiApplication app(argc, argv);
    std::printf("outputs %d\n", int(QMediaDevices::audioOutputs().size()));
    std::fflush(stdout);

    QMediaPlayer player;
    QAudioOutput output;
    output.setVolume(0);
    player.setAudioOutput(&output);
    QBuffer buffer;
    buffer.setData(silence());
    buffer.open(QIODevice::ReadOnly);

    int status = 3;
    QObject::connect(&player, &QMediaPlayer::mediaStatusChanged, &app, [&](QMediaPlayer::MediaStatus media) {
        if (media == QMediaPlayer::LoadedMedia || media == QMediaPlayer::BufferedMedia) {
            status = 0;
            app.quit();
        } else if (media == QMediaPlayer::InvalidMedia) {
            status = 2;
            app.quit();
        }
    });
    QObject::connect(&player, &QMediaPlayer::errorOccurred, &app,
                     [&](QMediaPlayer::Error, const QString& text) {
                         std::printf("error %s\n", qPrintable(text));
                         status = 2;
                         app.quit();
                     });
    QTimer::singleShot(8000, &app, &QCoreApplication::quit);
    player.setSourceDevice(&buffer, QUrl(QStringLiteral("probe.wav")));
    if (status == 3) app.exec();
    std::fflush(stdout);
    return status;
}
