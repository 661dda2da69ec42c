#pragma once

#include "QSNDRecord.h"

#include <QString>

class QIODevice;

// Reads a sound file (SND) from a device, one record at a time.
//
// The header is taken at its word: 12 bytes of signature, then the count; the version is ignored and
// records are taken to start right behind the 512 bytes of header whatever the first offset says. A
// record's sample runs up to the position its next-record field names, which also swallows the gaps
// that some tools leave between records; a field of 0 falls back to the stated size.
//
// Hostile files are refused with a reason rather than trusted: a record or sample that runs past the
// end, or a next-record field that points back into the record, ends the read. Nothing is allocated
// for a sample before the device is known to hold it, so a huge count or size costs nothing.
class QSNDReader
{
public:
    static constexpr qint64 HeaderSize = 512;
    static constexpr qint64 RecordHeaderSize = 16;

    explicit QSNDReader(QIODevice* device);

    // Reads the 512 bytes of header; false with errorString() when they are short or the signature is
    // wrong.
    bool readHeader();
    // Reads the next record; false with errorString() when the file can't hold it.
    bool readRecord(QSNDRecord* record);

    // Reads a whole file; false with the reason in error. records has what was read before a failure.
    static bool readAll(QIODevice* device, QList<QSNDRecord>* records, QString* error = nullptr);

    quint32 count() const { return soundCount; }
    quint32 version() const { return fileVersion; }
    quint32 firstOffset() const { return first; }
    const QByteArray& comment() const { return text; }
    // Records read so far.
    quint32 recordsRead() const { return index; }
    QString errorString() const { return error; }

private:
    // Reads exactly size bytes in steps, so that a lying size never allocates more than arrives.
    bool readBytes(qint64 size, QByteArray* bytes);
    bool fail(const QString& message);

    QIODevice* device;
    qint64 pos = 0;
    quint32 soundCount = 0;
    quint32 fileVersion = 0;
    quint32 first = 0;
    quint32 index = 0;
    QByteArray text;
    QString error;
};
