#include "QConsoleDialogs.h"

QConsoleDialogs::QConsoleDialogs(QTextStream& err) : err(err) {}

QUserDialogs::Button QConsoleDialogs::message(QMessageBox::Icon, QWidget*, const QString& title,
                                              const QString& text, Buttons, Button defaultButton)
{
    err << "tavrel-cli: " << title << ": " << QString(text).replace(QLatin1Char('\n'), QLatin1Char(' '))
        << Qt::endl;
    return defaultButton != QMessageBox::NoButton ? defaultButton : QMessageBox::Cancel;
}

QString QConsoleDialogs::openFileName(QWidget*, const QString&, const QString&, const QString&, QString*)
{
    return QString();
}

QStringList QConsoleDialogs::openFileNames(QWidget*, const QString&, const QString&, const QString&, QString*)
{
    return QStringList();
}

QString QConsoleDialogs::saveFileName(QWidget*, const QString&, const QString&, const QString&, QString*)
{
    return QString();
}

QString QConsoleDialogs::existingDirectory(QWidget*, const QString&, const QString&)
{
    return QString();
}

QString QConsoleDialogs::item(QWidget*, const QString&, const QString&, const QStringList& items, int current)
{
    return items.value(current);
}
