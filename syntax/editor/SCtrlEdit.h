#pragma once

#include <QDialog>

class QPlainTextEdit;

// The text of one state controller template.
class SCtrlEdit : public QDialog
{
    Q_OBJECT
public:
    explicit SCtrlEdit(const QString& text, QWidget* parent = nullptr);

    QString text() const;
    QPlainTextEdit* editor() const { return edit; }

    // What a new template starts from.
    static QString newText();

private:
    QPlainTextEdit* edit;
};
