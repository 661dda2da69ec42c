#pragma once

#include "QUserDialogs.h"

// The dialog seam where nobody is there to answer (the default of every program until it installs
// another, the command-line tool, the sample generator, fuzzing): every box takes its default button
// and is kept, every file dialog and choice is cancelled. Derived seams print the boxes or choose
// differently.
class QSilentDialogs : public QUserDialogs
{
public:
    Button message(Icon icon, const QString& title, const QString& text, Buttons buttons,
                   Button defaultButton) override;
    QString openFileName(const QString&, const QString&, const QString&, QString*) override;
    QStringList openFileNames(const QString&, const QString&, const QString&, QString*) override;
    QString saveFileName(const QString&, const QString&, const QString&, QString*) override;
    QString existingDirectory(const QString&, const QString&) override;
    QString item(const QString&, const QString&, const QStringList&, int) override;

    // How many boxes were shown, and the last ones as "TITLE: TEXT" (at most a hundred are kept, so a
    // long unattended run does not grow without end).
    int boxes() const { return shown; }
    const QStringList& messages() const { return kept; }

private:
    int shown = 0;
    QStringList kept;
};
