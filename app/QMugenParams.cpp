#include "QMugenParams.h"

#include <QRegularExpression>

namespace {

const QRegularExpression& placeholder()
{
    static const QRegularExpression expression(QStringLiteral("%(\\d{1,2})"));
    return expression;
}

} // namespace

QList<int> QMugenParams::placeholders(const QString& params)
{
    QList<int> numbers;
    auto matches = placeholder().globalMatch(params);
    while (matches.hasNext()) {
        const int number = matches.next().captured(1).toInt();
        if (!numbers.contains(number)) numbers.append(number);
    }
    return numbers;
}

QString QMugenParams::replace(const QString& params, int number, const QString& target)
{
    QString result;
    qsizetype last = 0;
    auto matches = placeholder().globalMatch(params);
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        if (match.captured(1).toInt() != number) continue;
        result += params.mid(last, match.capturedStart() - last) + target;
        last = match.capturedEnd();
    }
    return result + params.mid(last);
}

QStringList QMugenParams::arguments(const QString& params)
{
    return params.split(QLatin1Char(' '), Qt::SkipEmptyParts);
}
