#pragma once

#include <QByteArray>
#include <QString>

class QIODevice;

// Writes a sound file (SND): the 512 bytes of header, then one record after the other, each pointing at
// the position right behind itself, so that the last one points at the end of the file.
class QSNDWriter
{
public:
    explicit QSNDWriter(QIODevice* device);

    bool writeHeader(quint32 count);
    // An empty bytes writes an empty sound: a record with a data size of 0.
    bool writeRecord(quint32 group, quint32 sample, const QByteArray& bytes);

    // The text in the header's comment field.
    static QByteArray comment();
    QString errorString() const { return error; }

private:
    bool write(const QByteArray& bytes);

    QIODevice* device;
    qint64 pos = 0;
    QString error;
};
