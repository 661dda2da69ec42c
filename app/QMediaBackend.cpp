#include "QMediaBackend.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QProcess>

namespace {

enum class State
{
    Unknown,
    Ready,
    Unavailable
};

State state = State::Unknown;
QString backend;
QString problem;
QString probeProgram;

QString tr(const char* text)
{
    return QCoreApplication::translate("QMediaBackend", text);
}

QString label(const QString& name)
{
    return name.isEmpty() ? QStringLiteral("(Qt's default)") : name;
}

QString program()
{
    if (!probeProgram.isEmpty()) return probeProgram;
    return QCoreApplication::applicationDirPath() + QStringLiteral("/tavrel-media-probe");
}

// Runs the probe on one back end: empty on success, else what went wrong. A no-output system is
// reported too, since nothing could be heard.
QString probe(const QString& name)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::SeparateChannels);
    process.start(program(), {name});
    if (!process.waitForStarted(5000)) return tr("The program tavrel-media-probe can't be started.");
    // A first start of GStreamer scans its plugins, which can take a few seconds.
    if (!process.waitForFinished(20000)) {
        process.kill();
        process.waitForFinished(1000);
        return tr("The audio back end did not answer in time.");
    }
    const QString output = QString::fromLocal8Bit(process.readAllStandardOutput());
    if (process.exitStatus() != QProcess::NormalExit)
        return tr("The audio back end %1 crashed when it was made. Installing the packages "
                  "gstreamer1.0-plugins-base and gstreamer1.0-plugins-good may help.")
            .arg(label(name));
    if (output.contains(QLatin1String("outputs 0"))) return tr("No audio output device was found.");
    if (process.exitCode() == 0) return QString();
    const int at = output.indexOf(QLatin1String("error "));
    if (at >= 0) return tr("The audio back end %1 says: %2").arg(label(name), output.mid(at + 6).trimmed());
    return tr("The audio back end %1 can't read WAV sounds.").arg(label(name));
}

} // namespace

QStringList QMediaBackend::candidates()
{
    const QString asked = qEnvironmentVariable("QT_MEDIA_BACKEND");
    if (!asked.isEmpty()) return {asked};
    return {QString(), QStringLiteral("ffmpeg")};
}

bool QMediaBackend::ready(QString* reason)
{
    if (state == State::Unknown) {
        QStringList reasons;
        for (const QString& name : candidates()) {
            const QString found = probe(name);
            if (found.isEmpty()) {
                backend = name;
                // Must be set before the first object of Qt Multimedia is made in this process.
                if (!name.isEmpty()) qputenv("QT_MEDIA_BACKEND", name.toLocal8Bit());
                state = State::Ready;
                break;
            }
            reasons << found;
        }
        if (state != State::Ready) {
            reasons.removeDuplicates();
            problem = reasons.join(QLatin1Char('\n'));
            state = State::Unavailable;
        }
    }
    if (state == State::Unavailable && reason) *reason = problem;
    return state == State::Ready;
}

QString QMediaBackend::chosen()
{
    return backend;
}

void QMediaBackend::setProbeProgram(const QString& path)
{
    probeProgram = path;
}

void QMediaBackend::reset()
{
    state = State::Unknown;
    backend.clear();
    problem.clear();
}
