#pragma once

#include "QUserDialogs.h"

// The dialog seam where nobody is there to answer (the command-line tool, the sample generator,
// fuzzing): every box takes its default button and is counted, every file dialog and choice is
// cancelled. Derived seams print the boxes or choose differently.
class QSilentDialogs : public QUserDialogs
{
public:
    Button message(QMessageBox::Icon icon, QWidget* parent, const QString& title, const QString& text,
                   Buttons buttons, Button defaultButton) override;
    QString openFileName(QWidget*, const QString&, const QString&, const QString&, QString*) override;
    QStringList openFileNames(QWidget*, const QString&, const QString&, const QString&, QString*) override;
    QString saveFileName(QWidget*, const QString&, const QString&, const QString&, QString*) override;
    QString existingDirectory(QWidget*, const QString&, const QString&) override;
    QString item(QWidget*, const QString&, const QString&, const QStringList&, int) override;

    // How many boxes were shown.
    int boxes() const { return shown; }

private:
    int shown = 0;
};
