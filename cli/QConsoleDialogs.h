#pragma once

#include "QSilentDialogs.h"

#include <QTextStream>

// The dialog seam of the command-line tool: nobody is there to answer, so a box is printed to standard
// error as "tavrel-cli: TITLE: TEXT" and answered with its default button, a file dialog is answered
// as cancelled and a choice takes its current item. Subcommands pass their file names explicitly
// instead.
class QConsoleDialogs : public QSilentDialogs
{
public:
    explicit QConsoleDialogs(QTextStream& err);

    Button message(QUserDialogs::Icon icon, const QString& title, const QString& text, Buttons buttons,
                   Button defaultButton) override;
    QString item(const QString&, const QString&, const QStringList& items, int current) override;

private:
    QTextStream& err;
};
