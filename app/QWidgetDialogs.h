#pragma once

#include "QUserDialogs.h"

// The real dialogs: QMessageBox and QFileDialog, modal on the window that is active when they are
// asked for, so that a model which knows no window still puts its box over the right one.
class QWidgetDialogs : public QUserDialogs
{
public:
    Button message(Icon icon, const QString& title, const QString& text, Buttons buttons,
                   Button defaultButton) override;
    QString openFileName(const QString& caption, const QString& dir, const QString& filter,
                         QString* selectedFilter) override;
    QStringList openFileNames(const QString& caption, const QString& dir, const QString& filter,
                              QString* selectedFilter) override;
    QString saveFileName(const QString& caption, const QString& dir, const QString& filter,
                         QString* selectedFilter) override;
    QString item(const QString& title, const QString& label, const QStringList& items, int current) override;
    QString existingDirectory(const QString& caption, const QString& dir) override;
};
