#include "QWidgetDialogs.h"

#include <QFileDialog>
#include <QInputDialog>

QUserDialogs::Button QWidgetDialogs::message(QMessageBox::Icon icon, QWidget* parent, const QString& title,
                                             const QString& text, Buttons buttons, Button defaultButton)
{
    QMessageBox box(icon, title, text, buttons, parent);
    box.setDefaultButton(defaultButton);
    if (box.exec() == -1) return QMessageBox::Cancel;
    return box.standardButton(box.clickedButton());
}

QString QWidgetDialogs::openFileName(QWidget* parent, const QString& caption, const QString& dir,
                                     const QString& filter, QString* selectedFilter)
{
    return QFileDialog::getOpenFileName(parent, caption, dir, filter, selectedFilter);
}

QStringList QWidgetDialogs::openFileNames(QWidget* parent, const QString& caption, const QString& dir,
                                          const QString& filter, QString* selectedFilter)
{
    return QFileDialog::getOpenFileNames(parent, caption, dir, filter, selectedFilter);
}

QString QWidgetDialogs::saveFileName(QWidget* parent, const QString& caption, const QString& dir,
                                     const QString& filter, QString* selectedFilter)
{
    return QFileDialog::getSaveFileName(parent, caption, dir, filter, selectedFilter);
}

QString QWidgetDialogs::existingDirectory(QWidget* parent, const QString& caption, const QString& dir)
{
    return QFileDialog::getExistingDirectory(parent, caption, dir);
}

QString QWidgetDialogs::item(QWidget* parent, const QString& title, const QString& label,
                             const QStringList& items, int current)
{
    bool ok = false;
    const QString chosen = QInputDialog::getItem(parent, title, label, items, current, false, &ok);
    return ok ? chosen : QString();
}
