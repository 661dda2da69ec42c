#include "QCliSndCommand.h"

#include "QSound.h"
#include "QSounds.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>

#include <cmath>

QString QCliSndCommand::summary() const
{
    return QStringLiteral("list or extract the sounds of a sound file (SND)");
}

QString QCliSndCommand::usage() const
{
    return QStringLiteral("tavrel-cli snd list FILE [--json]\n"
                          "tavrel-cli snd extract FILE DIR");
}

bool QCliSndCommand::resave(const QString& input, const QString& output, QString* problem)
{
    QSounds sounds(nullptr, 0, false);
    if (!sounds.fromFile(input)) {
        *problem = QStringLiteral("not a sound file: ") + sounds.errorString();
        return false;
    }
    if (!sounds.toFile(output, true)) {
        *problem = QStringLiteral("can't be written");
        return false;
    }
    return true;
}

int QCliSndCommand::run(QCliContext& context)
{
    const bool json = context.takeFlag(QStringLiteral("--json"));
    const QString action = context.arguments.value(0);
    const bool list = action == QLatin1String("list");
    const bool extract = action == QLatin1String("extract");
    if (!(list && context.arguments.size() == 2) && !(extract && context.arguments.size() == 3))
        return context.usageError(QStringLiteral("snd: expected list FILE or extract FILE DIR"), usage());
    if (json && !list) return context.usageError(QStringLiteral("snd: --json belongs to list"), usage());

    const QString input = context.arguments.at(1);
    if (!QFileInfo(input).isFile()) return context.fail(input, QStringLiteral("no such file"));
    QSounds sounds(nullptr, 0, false);
    if (!sounds.fromFile(input))
        return context.fail(input, QStringLiteral("not a sound file: ") + sounds.errorString());
    for (const QString& warning : sounds.readWarnings())
        context.err << "tavrel-cli: " << input << ": warning: " << warning << '\n';

    if (list) {
        if (json) {
            QJsonArray array;
            for (uint i = 0; i < sounds.count(); ++i) {
                const QSound* sound = sounds.at(i);
                array.append(QJsonObject{{QStringLiteral("position"), int(i)},
                                         {QStringLiteral("group"), qint64(sound->group)},
                                         {QStringLiteral("sample"), qint64(sound->sample)},
                                         {QStringLiteral("bytes"), sounds.bytes(i).size()},
                                         {QStringLiteral("channels"), sound->info.channels},
                                         {QStringLiteral("rate"), qint64(sound->info.sampleRate)},
                                         {QStringLiteral("bits"), sound->info.bitsPerSample},
                                         {QStringLiteral("duration"),
                                          std::round(double(sound->info.duration) * 1000.0) / 1000.0}});
            }
            context.out << QJsonDocument(array).toJson(QJsonDocument::Indented);
            return CliSuccess;
        }
        context.out << "pos\tgroup\tsample\tbytes\tchannels\trate\tbits\tduration\n";
        for (uint i = 0; i < sounds.count(); ++i) {
            const QSound* sound = sounds.at(i);
            context.out << i << '\t' << sound->group << '\t' << sound->sample << '\t'
                        << sounds.bytes(i).size() << '\t' << sound->info.channels << '\t'
                        << sound->info.sampleRate << '\t' << sound->info.bitsPerSample << '\t'
                        << QString::number(double(sound->info.duration), 'f', 3) << '\n';
        }
        return CliSuccess;
    }

    const QString folder = context.arguments.at(2);
    if (!QDir().mkpath(folder)) return context.fail(folder, QStringLiteral("can't be made"));
    int written = 0;
    for (uint i = 0; i < sounds.count(); ++i) {
        const QSound* sound = sounds.at(i);
        const QString name = QStringLiteral("%1_%2_%3.wav")
                                 .arg(i, 5, 10, QLatin1Char('0'))
                                 .arg(sound->group)
                                 .arg(sound->sample);
        const QString path = QDir(folder).filePath(name);
        QSaveFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(sounds.bytes(i)) < 0 || !file.commit())
            return context.fail(path, QStringLiteral("can't be written"));
        ++written;
    }
    context.out << "wrote " << written << " sounds to " << folder << Qt::endl;
    return CliSuccess;
}
