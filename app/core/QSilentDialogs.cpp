#include "QSilentDialogs.h"

QUserDialogs::Button QSilentDialogs::message(QMessageBox::Icon, QWidget*, const QString&, const QString&,
                                             Buttons, Button defaultButton)
{
    ++shown;
    return defaultButton != QMessageBox::NoButton ? defaultButton : QMessageBox::Cancel;
}

QString QSilentDialogs::openFileName(QWidget*, const QString&, const QString&, const QString&, QString*)
{
    return QString();
}

QStringList QSilentDialogs::openFileNames(QWidget*, const QString&, const QString&, const QString&, QString*)
{
    return QStringList();
}

QString QSilentDialogs::saveFileName(QWidget*, const QString&, const QString&, const QString&, QString*)
{
    return QString();
}

QString QSilentDialogs::existingDirectory(QWidget*, const QString&, const QString&)
{
    return QString();
}

QString QSilentDialogs::item(QWidget*, const QString&, const QString&, const QStringList&, int)
{
    return QString();
}
