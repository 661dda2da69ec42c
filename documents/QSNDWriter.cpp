#include "QSNDWriter.h"

#include "QSNDReader.h"

#include <QCoreApplication>
#include <QIODevice>
#include <QtEndian>

namespace {

constexpr quint32 Version = 0x00010001;

void putWord(QByteArray& bytes, int at, quint32 value)
{
    qToLittleEndian<quint32>(value, bytes.data() + at);
}

} // namespace

QSNDWriter::QSNDWriter(QIODevice* device) : device(device) {}

QByteArray QSNDWriter::comment()
{
    return QByteArrayLiteral("Made with Tavrel, an editor of M.U.G.E.N. content - https://tavrel.github.io");
}

bool QSNDWriter::write(const QByteArray& bytes)
{
    if (!device || device->write(bytes) != bytes.size()) {
        error = QCoreApplication::translate("QSNDWriter", "The file can't be written.");
        return false;
    }
    pos += bytes.size();
    return true;
}

bool QSNDWriter::writeHeader(quint32 count)
{
    QByteArray header(int(QSNDReader::HeaderSize), '\0');
    const QByteArray signature("ElecbyteSnd");
    std::copy(signature.begin(), signature.end(), header.begin());
    putWord(header, 12, Version);
    putWord(header, 16, count);
    putWord(header, 20, quint32(QSNDReader::HeaderSize));
    const QByteArray text = comment();
    std::copy(text.begin(), text.end(), header.begin() + 24);
    return write(header);
}

bool QSNDWriter::writeRecord(quint32 group, quint32 sample, const QByteArray& bytes)
{
    const qint64 next = pos + QSNDReader::RecordHeaderSize + bytes.size();
    if (next > qint64(0xFFFFFFFFu)) {
        error = QCoreApplication::translate("QSNDWriter", "The sounds don't fit in a file of 4 GB.");
        return false;
    }
    QByteArray head(int(QSNDReader::RecordHeaderSize), '\0');
    putWord(head, 0, quint32(next));
    putWord(head, 4, quint32(bytes.size()));
    putWord(head, 8, group);
    putWord(head, 12, sample);
    return write(head) && write(bytes);
}
