#include "QCodecList.h"

#include <QTextCodec>

#include <algorithm>

QList<QByteArray>& codecList()
{
    static QList<QByteArray> list;
    return list;
}

void buildCodecList()
{
    QList<QByteArray>& list = codecList();
    QList<QByteArray> known = QTextCodec::availableCodecs();
    std::sort(known.begin(), known.end());
    known.erase(std::unique(known.begin(), known.end()), known.end());
    list.clear();
    list.append(QByteArrayLiteral("System"));
    list.append(known);
}

const QList<QByteArray>& detectionCodecs()
{
    // GBK before GB18030: both read the same two-byte text, and a save in GBK never writes the four-byte
    // sequences that the tools of these authors' time can't read. "TIS-620" is this Qt's name of the
    // Windows page 874.
    static const QList<QByteArray> names = {"UTF-8",        "GBK",          "GB18030",      "Shift_JIS",
                                            "Big5",         "windows-949",  "windows-1252", "windows-1250",
                                            "windows-1251", "windows-1253", "windows-1254", "windows-1255",
                                            "windows-1256", "windows-1257", "windows-1258", "TIS-620"};
    return names;
}
