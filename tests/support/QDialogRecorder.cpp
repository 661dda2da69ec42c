#include "QDialogRecorder.h"

QDialogRecorder::QDialogRecorder() : previous(QUserDialogs::instance())
{
    QUserDialogs::install(this);
}

QDialogRecorder::~QDialogRecorder()
{
    QUserDialogs::install(previous);
}

QUserDialogs::Button QDialogRecorder::message(QUserDialogs::Icon icon, const QString& title,
                                              const QString& text, Buttons buttons, Button defaultButton)
{
    Call call;
    call.kind = QStringLiteral("message");
    call.icon = icon;
    call.title = title;
    call.text = text;
    call.buttons = buttons;
    call.defaultButton = defaultButton;
    calls << call;
    if (!answers.isEmpty()) return answers.dequeue();
    return defaultButton != QUserDialogs::NoButton ? defaultButton : QUserDialogs::Cancel;
}

QStringList QDialogRecorder::nextFiles(const QString& kind, const QString& caption, const QString& dir,
                                       const QString& filter)
{
    Call call;
    call.kind = kind;
    call.title = caption;
    call.text = filter;
    call.dir = dir;
    calls << call;
    return fileAnswers.isEmpty() ? QStringList() : fileAnswers.dequeue();
}

QString QDialogRecorder::openFileName(const QString& caption, const QString& dir, const QString& filter,
                                      QString*)
{
    return nextFiles(QStringLiteral("open"), caption, dir, filter).value(0);
}

QStringList QDialogRecorder::openFileNames(const QString& caption, const QString& dir, const QString& filter,
                                           QString*)
{
    return nextFiles(QStringLiteral("openMany"), caption, dir, filter);
}

QString QDialogRecorder::saveFileName(const QString& caption, const QString& dir, const QString& filter,
                                      QString*)
{
    return nextFiles(QStringLiteral("save"), caption, dir, filter).value(0);
}

QString QDialogRecorder::existingDirectory(const QString& caption, const QString& dir)
{
    return nextFiles(QStringLiteral("directory"), caption, dir, QString()).value(0);
}

QString QDialogRecorder::item(const QString& title, const QString& label, const QStringList&, int)
{
    return nextFiles(QStringLiteral("item"), title, QString(), label).value(0);
}
