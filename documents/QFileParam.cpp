#include "QFileParam.h"

#include "QTextElementPool.h"

QVariant QFileParam::value() const
{
    return path;
}

void QFileParam::setValue(const QString& value)
{
    path = value;
    setLine(name + QStringLiteral(" = ") + value);
}

void QFileParam::parseValue(const QList<QTextToken*>& tokens)
{
    path.clear();
    int last = int(tokens.size()) - 1;
    if (last >= 0 && tokens.at(last)->kind == tkEndOfLine) --last;
    if (last < 2) return;
    const int from = tokens.at(2)->column;
    const QTextToken* end = tokens.at(last);
    path = block.text().mid(from, end->column + end->text.size() - from);
}

void QFileParam::clearValue()
{
    path.clear();
}

void QFileParam::releaseToPool()
{
    QTextElementPool<QFileParam>::release(this);
}
