#include "QConsoleDialogs.h"

QConsoleDialogs::QConsoleDialogs(QTextStream& err) : err(err) {}

QUserDialogs::Button QConsoleDialogs::message(QUserDialogs::Icon icon, const QString& title,
                                              const QString& text, Buttons buttons, Button defaultButton)
{
    err << "tavrel-cli: " << title << ": " << QString(text).replace(QLatin1Char('\n'), QLatin1Char(' '))
        << Qt::endl;
    return QSilentDialogs::message(icon, title, text, buttons, defaultButton);
}

QString QConsoleDialogs::item(const QString&, const QString&, const QStringList& items, int current)
{
    return items.value(current);
}
