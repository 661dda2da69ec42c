#include "QSoundTransfer.h"

#include "QSound.h"
#include "QSounds.h"
#include "QTextScanner.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QSaveFile>

namespace {

bool writeFile(const QString& path, const QByteArray& bytes)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) return false;
    if (file.write(bytes) != bytes.size()) {
        file.cancelWriting();
        return false;
    }
    return file.commit();
}

uint numberValue(const QList<QTextToken>& values)
{
    if (values.isEmpty()) return 0;
    const QTextToken& token = values.first();
    if (token.kind == tkInteger) return token.text.toUInt();
    if (token.kind == tkReal) return uint(qMax(0.0, token.text.toDouble()));
    return 0;
}

// A file name runs from behind the "=" to the end of the line or a comment; the scanner would cut it
// into numbers and identifiers, so it is taken from the line itself.
QString fileValue(const QString& line, int column)
{
    QString value = line.mid(column);
    const int comment = value.indexOf(QLatin1Char(';'));
    if (comment >= 0) value.truncate(comment);
    value = value.trimmed();
    if (value.size() >= 2 && value.startsWith(QLatin1Char('"')) && value.endsWith(QLatin1Char('"')))
        value = value.mid(1, value.size() - 2);
    return value;
}

} // namespace

QString QSoundTransfer::wavFileName(uint group, uint sample)
{
    return QStringLiteral("%1-%2.wav").arg(group).arg(sample);
}

QStringList QSoundTransfer::wavFileNames(const QSounds& sounds)
{
    QStringList names;
    QHash<QString, int> uses;
    for (const QSound* sound : sounds.soundItems()) {
        const QString name = wavFileName(sound->group, sound->sample);
        const int use = ++uses[name];
        names << (use == 1 ? name
                           : QStringLiteral("%1-%2_%3.wav").arg(sound->group).arg(sound->sample).arg(use));
    }
    return names;
}

QString QSoundTransfer::exportText(const QSounds& sounds, const QStringList& files)
{
    QString text;
    for (uint i = 0; i < sounds.count(); ++i) {
        const QSound* sound = sounds.at(i);
        text +=
            QStringLiteral("\n[SoundDef]\ngroup = %1\nsample = %2\n").arg(sound->group).arg(sound->sample);
        text += QStringLiteral("file = %1\n").arg(files.value(int(i)));
    }
    return text;
}

QString QSoundTransfer::sndMakerText(const QSounds& sounds, const QStringList& files, const QString& baseName)
{
    QString text = baseName + QLatin1Char('\n');
    for (uint i = 0; i < sounds.count(); ++i) {
        const QSound* sound = sounds.at(i);
        text += QStringLiteral("%1\n%2\n%3\n").arg(files.value(int(i))).arg(sound->group).arg(sound->sample);
    }
    return text;
}

QList<QSoundTransfer::Entry> QSoundTransfer::readExport(const QString& text)
{
    const QStringList lines = text.split(QLatin1Char('\n'));
    QList<Entry> entries;
    bool inSound = false;
    QTextScanner scanner(text);
    QList<QTextToken> tokens;
    int line = 0;
    const auto readLine = [&]() {
        if (tokens.isEmpty()) return;
        if (tokens.at(0).kind == tkLeftBracket) {
            inSound = tokens.size() >= 2 &&
                      tokens.at(1).text.compare(QLatin1String("SoundDef"), Qt::CaseInsensitive) == 0;
            if (inSound) entries.append(Entry());
            return;
        }
        if (!inSound || tokens.size() < 2 || tokens.at(0).kind != tkIdentifier ||
            tokens.at(1).kind != tkEqual)
            return;
        const QString key = tokens.at(0).text.toLower();
        Entry& entry = entries.last();
        if (key == QLatin1String("group"))
            entry.group = numberValue(tokens.mid(2));
        else if (key == QLatin1String("sample"))
            entry.sample = numberValue(tokens.mid(2));
        else if (key == QLatin1String("file") && line >= 1 && line <= lines.size())
            entry.file = fileValue(lines.at(line - 1), tokens.at(1).column + 1);
    };
    for (;;) {
        const int kind = scanner.next();
        if (kind == tkEnd || kind == tkEndOfLine) {
            readLine();
            tokens.clear();
            if (kind == tkEnd) break;
            continue;
        }
        if (tokens.isEmpty()) line = scanner.line();
        tokens.append(QTextToken{kind, scanner.tokenColumn(), scanner.text()});
    }
    return entries;
}

bool QSoundTransfer::exportTo(const QSounds& sounds, const QString& target, bool* listWritten,
                              const Progress& progress)
{
    if (listWritten) *listWritten = false;
    const QFileInfo info(target);
    const QDir folder = info.absoluteDir();
    const QStringList files = wavFileNames(sounds);
    // The list is opened first: a target that can't be written ends the export before any WAV file
    // lands beside it.
    QSaveFile list(target);
    if (!list.open(QIODevice::WriteOnly)) return false;
    bool ok = true;
    for (uint i = 0; i < sounds.count(); ++i) {
        if (progress && !progress(i, sounds.count())) {
            list.cancelWriting();
            return false;
        }
        ok = writeFile(folder.filePath(files.at(int(i))), sounds.bytes(i)) && ok;
    }
    if (progress) progress(sounds.count(), sounds.count());
    const bool sndMaker = info.suffix().compare(QLatin1String("def"), Qt::CaseInsensitive) == 0;
    const QByteArray text = sndMaker ? sndMakerText(sounds, files, info.completeBaseName()).toLatin1()
                                     : exportText(sounds, files).toUtf8();
    const bool written = list.write(text) == text.size() && list.commit();
    if (listWritten) *listWritten = written;
    return ok && written;
}

namespace {

struct Incoming
{
    uint group;
    uint sample;
    QByteArray bytes;
};

// Nothing to add makes no undo step.
int append(QSounds& sounds, const QList<Incoming>& incoming)
{
    if (incoming.isEmpty()) return 0;
    sounds.beginEdit();
    for (const Incoming& sound : incoming)
        sounds.add(sound.group, sound.sample, sound.bytes);
    sounds.endEdit();
    return int(incoming.size());
}

} // namespace

int QSoundTransfer::importFrom(QSounds& sounds, const QString& path, const Progress& progress)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return 0;
    const QList<Entry> entries = readExport(QString::fromUtf8(file.readAll()));
    const QDir folder = QFileInfo(path).absoluteDir();
    QList<Incoming> incoming;
    for (int i = 0; i < entries.size(); ++i) {
        if (progress && !progress(uint(i), uint(entries.size()))) return 0;
        const Entry& entry = entries.at(i);
        if (entry.file.isEmpty()) continue;
        QFile wav(folder.filePath(entry.file));
        if (!wav.open(QIODevice::ReadOnly)) continue;
        incoming.append({entry.group, entry.sample, wav.readAll()});
    }
    if (progress) progress(uint(entries.size()), uint(entries.size()));
    return append(sounds, incoming);
}

int QSoundTransfer::importSounds(QSounds& sounds, const QSounds& source, const QList<uint>& rows)
{
    QList<Incoming> incoming;
    for (const uint row : rows)
        if (const QSound* sound = source.at(row))
            incoming.append({sound->group, sound->sample, source.bytes(row)});
    return append(sounds, incoming);
}
