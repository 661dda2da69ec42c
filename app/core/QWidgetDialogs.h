#pragma once

#include "QUserDialogs.h"

// The real dialogs: QMessageBox and QFileDialog, modal on their parent.
class QWidgetDialogs : public QUserDialogs
{
public:
    Button message(QMessageBox::Icon icon, QWidget* parent, const QString& title, const QString& text,
                   Buttons buttons, Button defaultButton) override;
    QString openFileName(QWidget* parent, const QString& caption, const QString& dir, const QString& filter,
                         QString* selectedFilter) override;
    QStringList openFileNames(QWidget* parent, const QString& caption, const QString& dir,
                              const QString& filter, QString* selectedFilter) override;
    QString saveFileName(QWidget* parent, const QString& caption, const QString& dir, const QString& filter,
                         QString* selectedFilter) override;
    QString item(QWidget* parent, const QString& title, const QString& label, const QStringList& items,
                 int current) override;
    QString existingDirectory(QWidget* parent, const QString& caption, const QString& dir) override;
};
