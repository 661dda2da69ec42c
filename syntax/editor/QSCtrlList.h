#pragma once

#include <QWidget>

class QListView;
class QPlainTextEdit;
class QSCtrlManager;

// The side list of state controller templates with the text of the chosen one below it.
class QSCtrlList : public QWidget
{
    Q_OBJECT
public:
    QSCtrlList(QSCtrlManager* manager, QWidget* parent = nullptr);

    QListView* list() const { return view; }
    QString preview() const;
    // The name of the chosen template, or empty.
    QString currentName() const;
    void showPreview(const QString& text);

private:
    QSCtrlManager* manager;
    QListView* view;
    QPlainTextEdit* previewArea;
};
