#pragma once

#include "QUserDialogs.h"

// The dialog seam while the sample is made: no one is there to answer, and a model that wants to tell
// something means that the sample went wrong. Each box is printed to standard error and counted.
class QSampleDialogs : public QUserDialogs
{
public:
    Button message(QMessageBox::Icon icon, QWidget* parent, const QString& title, const QString& text,
                   Buttons buttons, Button defaultButton) override;
    QString openFileName(QWidget*, const QString&, const QString&, const QString&, QString*) override
    {
        return QString();
    }
    QStringList openFileNames(QWidget*, const QString&, const QString&, const QString&, QString*) override
    {
        return QStringList();
    }
    QString saveFileName(QWidget*, const QString&, const QString&, const QString&, QString*) override
    {
        return QString();
    }
    QString existingDirectory(QWidget*, const QString&, const QString&) override { return QString(); }
    QString item(QWidget*, const QString&, const QString&, const QStringList&, int) override
    {
        return QString();
    }

    int boxes() const { return shown; }

private:
    int shown = 0;
};
