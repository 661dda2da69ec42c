#pragma once

#include <QCoreApplication>
#include <QList>
#include <QString>
#include <QStringList>

#include <functional>

class QSounds;

// Sounds leaving a sound file as WAV files with a list that names them, and coming back from such a
// list or from another open project. The list is the program's own export file (".tve", UTF-8, one
// "[SoundDef]" section per sound), the only form that is read back, or a definitions file for
// Elecbyte's SndMaker (".def", ISO 8859-1), which lets the engine's tools build the file again.
class QSoundTransfer
{
    Q_DECLARE_TR_FUNCTIONS(QSoundTransfer)

public:
    // One sound of an export list; the file is relative to the list's folder.
    struct Entry
    {
        uint group = 0;
        uint sample = 0;
        QString file;
    };

    // Answers whether to go on; pos of max sounds are done.
    using Progress = std::function<bool(uint pos, uint max)>;

    // "group-sample.wav".
    static QString wavFileName(uint group, uint sample);
    // The WAV file of every row: wavFileName(), and for a pair that an earlier row uses already the
    // same with "_2", "_3", ... so that no export overwrites the sound of another.
    static QStringList wavFileNames(const QSounds& sounds);

    static QString exportText(const QSounds& sounds, const QStringList& files);
    static QString sndMakerText(const QSounds& sounds, const QStringList& files, const QString& baseName);
    // Reads the "[SoundDef]" sections of an export list in file order.
    static QList<Entry> readExport(const QString& text);

    // Writes the WAV files into the target's folder, then the list, whose form the suffix chooses
    // ("def" for SndMaker). listWritten is false when the list couldn't be written; the answer is false
    // when anything couldn't be written or progress stopped it.
    static bool exportTo(const QSounds& sounds, const QString& target, bool* listWritten = nullptr,
                         const Progress& progress = Progress());
    // Appends the sounds of an export list, in one undo step; answers how many. A missing WAV file
    // is passed over; an existing empty one gives an empty sound.
    static int importFrom(QSounds& sounds, const QString& path, const Progress& progress = Progress());
    // Appends rows of another sound file, in one undo step; answers how many.
    static int importSounds(QSounds& sounds, const QSounds& source, const QList<uint>& rows);
};
