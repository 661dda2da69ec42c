#pragma once

#include "QUserDialogs.h"

#include <QList>
#include <QQueue>

// A dialog seam for tests: records every box and file dialog with its exact texts and answers from
// scripted queues. An unscripted box answers its default button (or Cancel when it has none); an
// unscripted file dialog answers "cancelled". Installs itself for its lifetime.
class QDialogRecorder : public QUserDialogs
{
public:
    struct Call
    {
        QString kind; // "message", "open", "openMany", "save", "directory", "item"
        QUserDialogs::Icon icon = QUserDialogs::NoIcon;
        QString title;
        QString text; // the box text, or the file dialog's filter
        Buttons buttons;
        Button defaultButton = QUserDialogs::NoButton;
        QString dir;
    };

    QDialogRecorder();
    ~QDialogRecorder() override;

    QList<Call> calls;
    QQueue<Button> answers;
    QQueue<QStringList> fileAnswers;

    Button message(QUserDialogs::Icon icon, const QString& title, const QString& text, Buttons buttons,
                   Button defaultButton) override;
    QString openFileName(const QString& caption, const QString& dir, const QString& filter,
                         QString* selectedFilter) override;
    QStringList openFileNames(const QString& caption, const QString& dir, const QString& filter,
                              QString* selectedFilter) override;
    QString saveFileName(const QString& caption, const QString& dir, const QString& filter,
                         QString* selectedFilter) override;
    QString existingDirectory(const QString& caption, const QString& dir) override;
    // Recorded as kind "item" with the label as text; answered from fileAnswers like a file dialog.
    QString item(const QString& title, const QString& label, const QStringList& items, int current) override;

private:
    QStringList nextFiles(const QString& kind, const QString& caption, const QString& dir,
                          const QString& filter);
    QUserDialogs* previous;
};
