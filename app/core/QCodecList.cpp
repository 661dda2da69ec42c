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
