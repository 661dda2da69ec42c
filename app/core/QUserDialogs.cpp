#include "QUserDialogs.h"

#include "QWidgetDialogs.h"

namespace {
QUserDialogs* installed = nullptr;
}

QUserDialogs::~QUserDialogs() = default;

QUserDialogs* QUserDialogs::instance()
{
    if (installed) return installed;
    static QWidgetDialogs fallback;
    return &fallback;
}

void QUserDialogs::install(QUserDialogs* dialogs)
{
    installed = dialogs;
}

QUserDialogs::Button QUserDialogs::question(QWidget* parent, const QString& title, const QString& text,
                                            Buttons buttons, Button defaultButton)
{
    return instance()->message(QMessageBox::Question, parent, title, text, buttons, defaultButton);
}

QUserDialogs::Button QUserDialogs::information(QWidget* parent, const QString& title, const QString& text,
                                               Buttons buttons, Button defaultButton)
{
    return instance()->message(QMessageBox::Information, parent, title, text, buttons, defaultButton);
}

QUserDialogs::Button QUserDialogs::warning(QWidget* parent, const QString& title, const QString& text,
                                           Buttons buttons, Button defaultButton)
{
    return instance()->message(QMessageBox::Warning, parent, title, text, buttons, defaultButton);
}

QUserDialogs::Button QUserDialogs::critical(QWidget* parent, const QString& title, const QString& text,
                                            Buttons buttons, Button defaultButton)
{
    return instance()->message(QMessageBox::Critical, parent, title, text, buttons, defaultButton);
}

QString QUserDialogs::getOpenFileName(QWidget* parent, const QString& caption, const QString& dir,
                                      const QString& filter, QString* selectedFilter)
{
    return instance()->openFileName(parent, caption, dir, filter, selectedFilter);
}

QStringList QUserDialogs::getOpenFileNames(QWidget* parent, const QString& caption, const QString& dir,
                                           const QString& filter, QString* selectedFilter)
{
    return instance()->openFileNames(parent, caption, dir, filter, selectedFilter);
}

QString QUserDialogs::getSaveFileName(QWidget* parent, const QString& caption, const QString& dir,
                                      const QString& filter, QString* selectedFilter)
{
    return instance()->saveFileName(parent, caption, dir, filter, selectedFilter);
}

QString QUserDialogs::getExistingDirectory(QWidget* parent, const QString& caption, const QString& dir)
{
    return instance()->existingDirectory(parent, caption, dir);
}

QString QUserDialogs::getItem(QWidget* parent, const QString& title, const QString& label,
                              const QStringList& items, int current)
{
    return instance()->item(parent, title, label, items, current);
}
