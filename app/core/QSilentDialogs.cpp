#include "QSilentDialogs.h"

QUserDialogs::Button QSilentDialogs::message(Icon, const QString& title, const QString& text, Buttons,
                                             Button defaultButton)
{
    ++shown;
    if (kept.size() == 100) kept.removeFirst();
    kept << title + QStringLiteral(": ") + text;
    return defaultButton != NoButton ? defaultButton : Cancel;
}

QString QSilentDialogs::openFileName(const QString&, const QString&, const QString&, QString*)
{
    return QString();
}

QStringList QSilentDialogs::openFileNames(const QString&, const QString&, const QString&, QString*)
{
    return QStringList();
}

QString QSilentDialogs::saveFileName(const QString&, const QString&, const QString&, QString*)
{
    return QString();
}

QString QSilentDialogs::existingDirectory(const QString&, const QString&)
{
    return QString();
}

QString QSilentDialogs::item(const QString&, const QString&, const QStringList&, int)
{
    return QString();
}
