#include "QIntNParam.h"

#include "QTextElementPool.h"

#include <QPoint>

QVariant QIntNParam::value() const
{
    if (count == 1) return numbers[0];
    if (count == 2) return QPoint(numbers[0], numbers[1]);
    QVariantList list;
    for (int i = 0; i < count; ++i)
        list << numbers[i];
    return list;
}

void QIntNParam::parseValue(const QList<QTextToken*>& tokens)
{
    count = 0;
    for (int i = 2; i < int(tokens.size()) && count < maxCount; i += 2) {
        // A comment that names the section below is the last token; it is no number.
        if (tokens.at(i)->kind == tkEndOfLine) break;
        numbers[count++] = tokens.at(i)->text.toInt();
    }
}

void QIntNParam::clearValue()
{
    count = 0;
    std::fill(std::begin(numbers), std::end(numbers), 0);
}

void QIntNParam::releaseToPool()
{
    QTextElementPool<QIntNParam>::release(this);
}
