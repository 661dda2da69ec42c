#pragma once

#include "QUserDialogs.h"

#include <QTextStream>

// The dialog seam of the command-line tool: nobody is there to answer, so a box is printed to standard
// error as "tavrel-cli: TITLE: TEXT" and answered with its default button, and a file dialog is
// answered as cancelled. Subcommands pass their file names explicitly instead.
class QConsoleDialogs : public QUserDialogs
{
public:
    explicit QConsoleDialogs(QTextStream& err);

    Button message(QMessageBox::Icon icon, QWidget* parent, const QString& title, const QString& text,
                   Buttons buttons, Button defaultButton) override;
    QString openFileName(QWidget*, const QString&, const QString&, const QString&, QString*) override;
    QStringList openFileNames(QWidget*, const QString&, const QString&, const QString&, QString*) override;
    QString saveFileName(QWidget*, const QString&, const QString&, const QString&, QString*) override;
    QString existingDirectory(QWidget*, const QString&, const QString&) override;
    // The current item, as a person who only presses Enter would choose.
    QString item(QWidget*, const QString&, const QString&, const QStringList& items, int current) override;

private:
    QTextStream& err;
};
