#include "QSNDReader.h"

#include <QCoreApplication>
#include <QIODevice>
#include <QList>
#include <QtEndian>

namespace {

constexpr char Signature[] = "ElecbyteSnd"; // with its NUL: 12 bytes
constexpr qint64 SignatureSize = 12;
constexpr qint64 ReadStep = 1 << 20;

QString tr(const char* text)
{
    return QCoreApplication::translate("QSNDReader", text);
}

quint32 word(const QByteArray& bytes, int at)
{
    return qFromLittleEndian<quint32>(bytes.constData() + at);
}

} // namespace

QSNDReader::QSNDReader(QIODevice* device) : device(device) {}

bool QSNDReader::fail(const QString& message)
{
    error = message;
    return false;
}

bool QSNDReader::readBytes(qint64 size, QByteArray* bytes)
{
    bytes->clear();
    if (size <= 0) return true;
    // A device that knows its size is asked first, so that a lying size is refused before anything is
    // read; other devices are read in steps until they run dry.
    if (!device->isSequential() && device->size() - device->pos() < size) return false;
    while (bytes->size() < size) {
        const QByteArray chunk = device->read(std::min(ReadStep, size - bytes->size()));
        if (chunk.isEmpty()) return false;
        bytes->append(chunk);
    }
    pos += size;
    return true;
}

bool QSNDReader::readHeader()
{
    if (!device || !device->isReadable()) return fail(tr("The file can't be read."));
    const QByteArray header = device->read(HeaderSize);
    pos += header.size();
    const QByteArray signature(Signature, SignatureSize);
    if (!header.startsWith(signature) && (header.size() >= SignatureSize || !signature.startsWith(header)))
        return fail(tr("This is not a sound file: the signature \"ElecbyteSnd\" is missing."));
    if (header.size() < HeaderSize) return fail(tr("The file ends inside its header of 512 bytes."));
    fileVersion = word(header, 12);
    soundCount = word(header, 16);
    first = word(header, 20);
    text = header.mid(24);
    return true;
}

bool QSNDReader::readRecord(QSNDRecord* record)
{
    const quint32 number = index;
    const qint64 start = pos;
    const QByteArray head = device->read(RecordHeaderSize);
    pos += head.size();
    if (head.isEmpty())
        return fail(tr("The file ends after %1 of its %2 sounds.").arg(number).arg(soundCount));
    if (head.size() < RecordHeaderSize)
        return fail(tr("The file ends inside the record of sound #%1.").arg(number));
    const quint32 next = word(head, 0);
    const quint32 size = word(head, 4);
    record->group = word(head, 8);
    record->sample = word(head, 12);
    record->bytes.clear();
    if (size != 0) {
        qint64 length = size;
        if (next != 0) {
            if (qint64(next) < pos)
                return fail(tr("The record of sound #%1 at %2 names %3 as the next record, which lies behind "
                               "it.")
                                .arg(number)
                                .arg(start)
                                .arg(next));
            length = qint64(next) - pos;
        }
        if (!readBytes(length, &record->bytes))
            return fail(tr("The sample of sound #%1 runs past the end of the file.").arg(number));
    }
    ++index;
    return true;
}

bool QSNDReader::readAll(QIODevice* device, QList<QSNDRecord>* records, QString* error)
{
    QSNDReader reader(device);
    bool ok = reader.readHeader();
    for (quint32 i = 0; ok && i < reader.count(); ++i) {
        QSNDRecord record;
        ok = reader.readRecord(&record);
        if (ok) records->append(record);
    }
    if (!ok && error) *error = reader.errorString();
    return ok;
}
