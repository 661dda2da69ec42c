#include "QCliContext.h"

QCliContext::QCliContext(const QStringList& arguments, QTextStream& out, QTextStream& err)
    : arguments(arguments), out(out), err(err)
{}

bool QCliContext::takeFlag(const QString& flag)
{
    return arguments.removeAll(flag) > 0;
}

bool QCliContext::takeOption(const QString& name, QString* value, bool* present)
{
    *present = false;
    for (int i = 0; i < arguments.size(); ++i) {
        const QString& argument = arguments.at(i);
        if (argument.startsWith(name + QLatin1Char('='))) {
            *value = argument.mid(name.size() + 1);
            *present = true;
            arguments.removeAt(i);
            return true;
        }
        if (argument == name) {
            if (i + 1 >= arguments.size()) return false;
            *value = arguments.at(i + 1);
            *present = true;
            arguments.remove(i, 2);
            return true;
        }
    }
    return true;
}

int QCliContext::fail(const QString& file, const QString& message)
{
    err << "tavrel-cli: " << file << ": " << message << Qt::endl;
    return CliFailed;
}

int QCliContext::usageError(const QString& message, const QString& usage)
{
    err << "tavrel-cli: " << message << Qt::endl << "usage: " << usage << Qt::endl;
    return CliUsage;
}
