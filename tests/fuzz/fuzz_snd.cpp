// The sound file reader on arbitrary bytes, then the model's validation and, for small models, the
// model written again and read back. Nothing may crash, hang or allocate beyond what the bytes justify.

#include "QSNDReader.h"
#include "QSounds.h"

#include <QBuffer>
#include <QList>

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    QBuffer buffer;
    buffer.setData(bytes);
    if (!buffer.open(QIODevice::ReadOnly)) return 0;
    QList<QSNDRecord> records;
    const bool plain = QSNDReader::readAll(&buffer, &records);

    buffer.seek(0);
    QSounds sounds(nullptr, 0, size % 2 == 0);
    const bool model = sounds.read(&buffer);
    if (plain != model) std::abort();
    if (!model) return 0;
    for (uint i = 0; i < sounds.count(); ++i)
        if (sounds.bytes(i) != records.at(int(i)).bytes) std::abort();
    if (sounds.count() < 256) {
        QBuffer out;
        out.open(QIODevice::ReadWrite);
        if (!sounds.write(&out)) return 0;
        out.seek(0);
        QSounds again(nullptr, 0, false);
        if (!again.read(&out) || again.count() != sounds.count()) std::abort();
    }
    return 0;
}
