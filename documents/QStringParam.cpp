#include "QStringParam.h"

#include "QTextElementPool.h"

QVariant QStringParam::value() const
{
    return text;
}

void QStringParam::setValue(const QString& value)
{
    text = value;
    setLine(name + QStringLiteral(" = ") + QStringLiteral("\"%1\"").arg(value));
}

void QStringParam::parseValue(const QList<QTextToken*>& tokens)
{
    text = tokens.at(2)->text;
}

void QStringParam::clearValue()
{
    text.clear();
}

void QStringParam::releaseToPool()
{
    QTextElementPool<QStringParam>::release(this);
}
