#include "QTextEncoding.h"

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

bool isUnicode(const QTextCodec* codec)
{
    const int mib = codec->mibEnum();
    return mib == 106 || (mib >= 1013 && mib <= 1019);
}

QByteArray byteOrderMark(const QTextCodec* codec)
{
    switch (codec->mibEnum()) {
    case 106:
        return QByteArrayLiteral("\xEF\xBB\xBF");
    case 1013:
        return QByteArrayLiteral("\xFE\xFF");
    case 1014:
    case 1015:
        return QByteArrayLiteral("\xFF\xFE");
    case 1018:
        return QByteArrayLiteral("\x00\x00\xFE\xFF");
    case 1017:
    case 1019:
        return QByteArrayLiteral("\xFF\xFE\x00\x00");
    default:
        return QByteArray();
    }
}

bool startsWithMark(const QByteArray& bytes)
{
    return bytes.startsWith("\xEF\xBB\xBF") || bytes.startsWith("\xFF\xFE") || bytes.startsWith("\xFE\xFF");
}

} // namespace

int QTextEncoding::codecIndex(const QByteArray& name)
{
    const int index = int(table().indexOf(name));
    return index > 0 ? index : 0;
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

QString QTextEncoding::decode(const QByteArray& bytes, int wantedIndex, int* outIndex, bool* hadBom)
{
    QTextCodec* used = nullptr;
    const QByteArray detected = detect(bytes);
    // Plain ASCII fits every codec of the table, so naming it tells nothing: the file keeps the codec
    // it was asked to have, and later non-ASCII text can still be saved.
    if (!detected.isEmpty() && detected != "ASCII") used = QTextCodec::codecForName(detected);
    if (!used && wantedIndex > 0 && wantedIndex < table().size())
        used = QTextCodec::codecForName(table().at(wantedIndex));
    if (!used) used = QTextCodec::codecForLocale();

    if (outIndex) *outIndex = used->name() == "System" ? 0 : codecIndex(used->name());
    QString text = used->toUnicode(bytes);
    const bool mark = isUnicode(used) && startsWithMark(bytes);
    if (text.startsWith(QChar(0xFEFF))) text.remove(0, 1);
    if (hadBom) *hadBom = mark;
    return text;
}

QByteArray QTextEncoding::encode(const QString& text, int index, bool bom)
{
    QTextCodec* used = codec(index);
    QByteArray bytes = used->fromUnicode(text);
    if (bom && isUnicode(used) && !startsWithMark(bytes)) bytes.prepend(byteOrderMark(used));
    return bytes;
}
