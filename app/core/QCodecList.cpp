#include "QCodecList.h"

#include <QTextCodec>

QList<QByteArray>& codecList()
{
    static QList<QByteArray> list;
    return list;
}

void buildCodecList()
{
    QList<QByteArray>& list = codecList();
    list = QTextCodec::availableCodecs();
    list.append(QByteArrayLiteral("System"));
}
