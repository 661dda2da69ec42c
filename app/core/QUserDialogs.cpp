#include "QUserDialogs.h"

#include "QSilentDialogs.h"

namespace {
QUserDialogs* installed = nullptr;
}

QUserDialogs::~QUserDialogs() = default;

QUserDialogs* QUserDialogs::instance()
{
    if (installed) return installed;
    static QSilentDialogs fallback;
    return &fallback;
}

void QUserDialogs::install(QUserDialogs* dialogs)
{
    installed = dialogs;
}

QUserDialogs::Button QUserDialogs::question(const QString& title, const QString& text, Buttons buttons,
                                            Button defaultButton)
{
    return instance()->message(Question, title, text, buttons, defaultButton);
}

QUserDialogs::Button QUserDialogs::information(const QString& title, const QString& text, Buttons buttons,
                                               Button defaultButton)
{
    return instance()->message(Information, title, text, buttons, defaultButton);
}

QUserDialogs::Button QUserDialogs::warning(const QString& title, const QString& text, Buttons buttons,
                                           Button defaultButton)
{
    return instance()->message(Warning, title, text, buttons, defaultButton);
}

QUserDialogs::Button QUserDialogs::critical(const QString& title, const QString& text, Buttons buttons,
                                            Button defaultButton)
{
    return instance()->message(Critical, title, text, buttons, defaultButton);
}

QString QUserDialogs::getOpenFileName(const QString& caption, const QString& dir, const QString& filter,
                                      QString* selectedFilter)
{
    return instance()->openFileName(caption, dir, filter, selectedFilter);
}

QStringList QUserDialogs::getOpenFileNames(const QString& caption, const QString& dir, const QString& filter,
                                           QString* selectedFilter)
{
    return instance()->openFileNames(caption, dir, filter, selectedFilter);
}

QString QUserDialogs::getSaveFileName(const QString& caption, const QString& dir, const QString& filter,
                                      QString* selectedFilter)
{
    return instance()->saveFileName(caption, dir, filter, selectedFilter);
}

QString QUserDialogs::getExistingDirectory(const QString& caption, const QString& dir)
{
    return instance()->existingDirectory(caption, dir);
}

QString QUserDialogs::getItem(const QString& title, const QString& label, const QStringList& items,
                              int current)
{
    return instance()->item(title, label, items, current);
}
