#pragma once

#include <QDialog>

class QPlainTextEdit;

// Edits the text of one action, header, frames, marks and boxes, as a whole; what is accepted
// replaces the action's lines in one step.
class AnimEditTxt : public QDialog
{
    Q_OBJECT

public:
    explicit AnimEditTxt(QWidget* parent = nullptr);

    QString text() const;
    void setText(const QString& text);
    QPlainTextEdit* editor() const { return edit; }

private:
    QPlainTextEdit* edit;
};
