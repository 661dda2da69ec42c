#pragma once

#include "QSNDRecord.h"

#include <QList>
#include <QString>

class QIODevice;

// Reads a sound file (SND) from a device, one record at a time.
//
// The header is taken at its word: 12 bytes of signature, then the count; the version is ignored and
// records are taken to start right behind the 512 bytes of header whatever the first offset says. A
// record's sample runs up to the position its next-record field names, which also swallows the gaps
// that some tools leave between records; a field of 0 falls back to the stated size.
//
// Past the header, a file is read as far as it goes, as the engine does: a sample that runs past the
// end is cut short, a next-record field that points back into the record falls back to the stated
// size, and a file that stops before its count keeps the sounds before the stop. Each of these leaves
// a warning. Nothing is allocated for a sample beyond what the device holds, so a huge count or size
// costs nothing.
class QSNDReader
{
public:
    static constexpr qint64 HeaderSize = 512;
    static constexpr qint64 RecordHeaderSize = 16;

    explicit QSNDReader(QIODevice* device);

    // Reads the 512 bytes of header; false with errorString() when they are short or the signature is
    // wrong.
    bool readHeader();
    // Reads the next record; false when the file has stopped before it (with a warning).
    bool readRecord(QSNDRecord* record);

    // Reads a whole file; false only when its header is wrong, with the reason in error.
    static bool readAll(QIODevice* device, QList<QSNDRecord>* records, QString* error = nullptr);

    // Something read in a way the file did not quite state, at the sound it concerns.
    struct Warning
    {
        quint32 sound;
        QString text;
    };
    const QList<Warning>& warnings() const { return notes; }

    quint32 count() const { return soundCount; }
    quint32 version() const { return fileVersion; }
    quint32 firstOffset() const { return first; }
    const QByteArray& comment() const { return text; }
    // Records read so far.
    quint32 recordsRead() const { return index; }
    QString errorString() const { return error; }

private:
    // Reads up to size bytes in steps, so that a lying size never allocates more than arrives; answers
    // how many came.
    qint64 readUpTo(qint64 size, QByteArray* bytes);
    bool fail(const QString& message);
    void warn(quint32 sound, const QString& text);

    QIODevice* device;
    qint64 pos = 0;
    quint32 soundCount = 0;
    quint32 fileVersion = 0;
    quint32 first = 0;
    quint32 index = 0;
    QByteArray text;
    QString error;
    QList<Warning> notes;
};
