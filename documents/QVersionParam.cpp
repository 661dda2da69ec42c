#include "QVersionParam.h"

#include "QTextElementPool.h"

#include <QRegularExpression>

QVariant QVersionParam::value() const
{
    return version;
}

void QVersionParam::parseValue(const QList<QTextToken*>& tokens)
{
    static const QRegularExpression pattern(QStringLiteral("^(\\d+)\\.(\\d+)$"));
    version = 0;
    int count = int(tokens.size());
    // A trailing comment that names the section below is not part of the value.
    if (count > 0 && tokens.at(count - 1)->kind == tkEndOfLine) --count;
    if (count != 3 || tokens.at(2)->kind != tkReal) return;
    const QRegularExpressionMatch match = pattern.match(tokens.at(2)->text);
    if (!match.hasMatch()) return;
    version = ((match.captured(1).toUInt() << 8) | match.captured(2).toUInt()) << 16;
}

void QVersionParam::clearValue()
{
    version = 0;
}

void QVersionParam::releaseToPool()
{
    QTextElementPool<QVersionParam>::release(this);
}
