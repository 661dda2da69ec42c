#include "QTextEncoding.h"

#include "QCharsetDetector.h"
#include "QCodecList.h"

#include <QCoreApplication>
#include <QTextCodec>

#include <uchardet/uchardet.h>

namespace {

const QList<QByteArray>& table()
{
    if (codecList().isEmpty()) buildCodecList();
    return codecList();
}

} // namespace

int QTextEncoding::codecIndex(const QByteArray& name)
{
    const int index = int(table().indexOf(name));
    return index > 0 ? index : 0;
}

int QTextEncoding::indexOf(const QTextCodec* codec)
{
    return codec ? codecIndex(codec->name()) : 0;
}

QString QTextEncoding::codecName(int index)
{
    if (index <= 0 || index >= table().size()) return QCoreApplication::translate("QTextEncoding", "System");
    return QString::fromLatin1(table().at(index));
}

QTextCodec* QTextEncoding::codec(int index)
{
    if (index > 0 && index < table().size())
        if (QTextCodec* named = QTextCodec::codecForName(table().at(index))) return named;
    return QTextCodec::codecForLocale();
}

QByteArray QTextEncoding::detect(const QByteArray& bytes)
{
    uchardet_t detector = uchardet_new();
    uchardet_handle_data(detector, bytes.constData(), size_t(bytes.size()));
    uchardet_data_end(detector);
    QByteArray name(uchardet_get_charset(detector));
    uchardet_delete(detector);
    return name;
}

QString QTextEncoding::toUnicode(QTextCodec* codec, const char* bytes, qsizetype size)
{
    // Without a state Qt's own Unicode codecs swallow a leading mark, so that a line which starts with
    // one would lose it; a fresh state per call keeps one call from leaking into the next.
    QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
    return codec->toUnicode(bytes, int(size), &state);
}

QString QTextEncoding::toUnicode(QTextCodec* codec, const QByteArray& bytes)
{
    return toUnicode(codec, bytes.constData(), bytes.size());
}

QByteArray QTextEncoding::byteOrderMark(const QTextCodec* codec)
{
    switch (codec ? codec->mibEnum() : 0) {
    case 106:
        return QByteArrayLiteral("\xEF\xBB\xBF");
    case 1013:
    case 1015:
        return QByteArrayLiteral("\xFE\xFF");
    case 1014:
        return QByteArrayLiteral("\xFF\xFE");
    case 1017:
    case 1018:
        return QByteArray("\x00\x00\xFE\xFF", 4);
    case 1019:
        return QByteArray("\xFF\xFE\x00\x00", 4);
    default:
        return QByteArray();
    }
}

QTextCodec* QTextEncoding::markedCodec(const QByteArray& bytes, int* length)
{
    // The four-byte marks first: the little-endian one begins with the two-byte one.
    static const struct
    {
        QByteArray mark;
        int mib;
    } marks[] = {{QByteArray("\xFF\xFE\x00\x00", 4), 1019},
                 {QByteArray("\x00\x00\xFE\xFF", 4), 1018},
                 {QByteArrayLiteral("\xEF\xBB\xBF"), 106},
                 {QByteArrayLiteral("\xFF\xFE"), 1014},
                 {QByteArrayLiteral("\xFE\xFF"), 1013}};
    for (const auto& entry : marks)
        if (bytes.startsWith(entry.mark)) {
            if (length) *length = int(entry.mark.size());
            return QTextCodec::codecForMib(entry.mib);
        }
    if (length) *length = 0;
    return nullptr;
}

QString QTextEncoding::decode(const QByteArray& bytes, int wantedIndex, int* outIndex, bool* hadBom)
{
    const QCharsetDetector::Choice choice = QCharsetDetector::choose(bytes, wantedIndex);
    if (outIndex) *outIndex = choice.codec;
    if (hadBom) *hadBom = choice.bom;
    const int skip = choice.bom ? int(byteOrderMark(codec(choice.codec)).size()) : 0;
    return toUnicode(codec(choice.codec), bytes.constData() + skip, bytes.size() - skip);
}

QByteArray QTextEncoding::encode(const QString& text, int index, bool bom)
{
    QTextCodec* used = codec(index);
    // A stateless call of a codec that writes its own mark (plain "UTF-16") writes it already.
    QByteArray bytes = used->fromUnicode(text);
    const QByteArray mark = byteOrderMark(used);
    if (bom && !mark.isEmpty() && !bytes.startsWith(mark)) bytes.prepend(mark);
    return bytes;
}
