#include "QVarLog.h"

#include "QHierarchyItem.h"
#include "QMugenSyntaxHierarchy.h"
#include "QVarUsageItem.h"

#include <QRegularExpression>

namespace {

constexpr int IntegerRow = 0;
constexpr int FloatRow = 1;
constexpr int IntegerCount = 60;
constexpr int FloatCount = 40;
// Numbers get two digits' room, so that the ":=" of every line stands in one column.
constexpr int NumberWidth = 2;

const QRegularExpression& patternOf(QVarLog::Format format)
{
    static const QRegularExpression number(QStringLiteral("^\\s*(\\-?\\d+)\\s"));
    static const QRegularExpression name(QStringLiteral("^\\s*\\-?\\d+\\s*\\-\\s*(.*)$"));
    static const QRegularExpression whole(QStringLiteral("^(.*)$"));
    switch (format) {
    case QVarLog::StateDefName:
        return name;
    case QVarLog::StateDefNumberAndName:
        return whole;
    case QVarLog::StateDefNumber:
        break;
    }
    return number;
}

// The users of each variable of one row, over all texts.
QList<QStringList> usersOf(const QList<QSyntaxHierarchy*>& hierarchies, int row, int count,
                           QVarLog::Format format)
{
    QList<QStringList> users(count);
    for (QSyntaxHierarchy* hierarchy : hierarchies) {
        const auto* mugen = qobject_cast<const QMugenSyntaxHierarchy*>(hierarchy);
        if (!mugen || mugen->variables().children.size() <= row) continue;
        const QVarUsageItem* top = mugen->variables().children.at(row);
        for (const QVarUsageItem* variable : top->children) {
            if (variable->index < 0 || variable->index >= count) continue;
            for (const QVarUsageItem* leaf : variable->children)
                users[variable->index] << QVarLog::entry(leaf->state ? leaf->state->name : QString(), format);
        }
    }
    return users;
}

QString section(const QList<QSyntaxHierarchy*>& hierarchies, const QVarLog::Options& options, bool integers)
{
    const int count = integers ? IntegerCount : FloatCount;
    const QList<QStringList> users =
        usersOf(hierarchies, integers ? IntegerRow : FloatRow, count, options.format);
    const QString join = options.onePerLine ? QStringLiteral("\n;          ") : QStringLiteral(", ");
    QString text =
        integers ? QStringLiteral(";---------------------- Integer variable list ----------------------\n\n")
                 : QStringLiteral(";---------------------- Float variable list ----------------------\n\n");
    const QString line =
        integers ? QStringLiteral(";%1var(%2):= %3\n") : QStringLiteral(";%1fvar(%2):= %3\n");
    for (int number = 0; number < count; ++number) {
        if (options.onlyUsed && users.at(number).isEmpty()) continue;
        const QString digits = QString::number(number);
        const QString pad(qMax(0, NumberWidth - int(digits.size())), QLatin1Char(' '));
        text += line.arg(pad, digits, users.at(number).join(join));
    }
    return text;
}

} // namespace

QString QVarLog::entry(const QString& label, Format format)
{
    const QRegularExpressionMatch match = patternOf(format).match(label);
    return match.hasMatch() ? match.captured(1) : label;
}

QString QVarLog::text(const QList<QSyntaxHierarchy*>& hierarchies, const Options& options)
{
    QString text;
    if (options.integers) text += section(hierarchies, options, true);
    if (options.floats) text += section(hierarchies, options, false);
    return text;
}
