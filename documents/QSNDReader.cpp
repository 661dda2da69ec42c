#include "QSNDReader.h"

#include <QCoreApplication>
#include <QIODevice>
#include <QList>
#include <QtEndian>

#include <algorithm>

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

qint64 QSNDReader::readUpTo(qint64 size, QByteArray* bytes)
{
    bytes->clear();
    if (size <= 0) return 0;
    // A device that knows its size gives no more than it holds, so that a lying size never allocates
    // more than arrives; other devices are read in steps until they run dry.
    if (!device->isSequential()) size = std::min(size, std::max<qint64>(0, device->size() - device->pos()));
    while (bytes->size() < size) {
        const QByteArray chunk = device->read(std::min(ReadStep, size - bytes->size()));
        if (chunk.isEmpty()) break;
        bytes->append(chunk);
    }
    pos += bytes->size();
    return bytes->size();
}

void QSNDReader::warn(quint32 sound, const QString& text)
{
    notes.append(Warning{sound, text});
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
    // The engine reads what a file has; a file that stops early keeps the sounds before the stop.
    if (head.size() < RecordHeaderSize) {
        const quint32 last = number > 0 ? number - 1 : 0;
        if (head.isEmpty())
            warn(last, tr("The file ends after %1 of its %2 sounds.").arg(number).arg(soundCount));
        else
            warn(last, tr("The file ends inside the record of sound #%1, which is left out.").arg(number));
        return false;
    }
    const quint32 next = word(head, 0);
    const quint32 size = word(head, 4);
    record->group = word(head, 8);
    record->sample = word(head, 12);
    record->bytes.clear();
    if (size != 0) {
        qint64 length = size;
        if (next != 0) {
            if (qint64(next) < pos)
                warn(number,
                     tr("The record of sound #%1 at %2 names %3 as the next record, which lies behind "
                        "it; its stated size of %4 bytes is read.")
                         .arg(number)
                         .arg(start)
                         .arg(next)
                         .arg(size));
            else
                length = qint64(next) - pos;
        }
        if (readUpTo(length, &record->bytes) < length)
            warn(number,
                 tr("The sample of sound #%1 runs past the end of the file: %2 of its %3 bytes are there.")
                     .arg(number)
                     .arg(record->bytes.size())
                     .arg(length));
    }
    ++index;
    return true;
}

bool QSNDReader::readAll(QIODevice* device, QList<QSNDRecord>* records, QString* error)
{
    QSNDReader reader(device);
    if (!reader.readHeader()) {
        if (error) *error = reader.errorString();
        return false;
    }
    for (quint32 i = 0; i < reader.count(); ++i) {
        QSNDRecord record;
        if (!reader.readRecord(&record)) break;
        records->append(record);
    }
    return true;
}
