#pragma once

#include "QSnippet.h"

#include <QDialog>

class QComboBox;
class QLineEdit;

// One field of a snippet: its placeholder name, label, kind and, for a list, the values and titles.
class SnipFieldDlg : public QDialog
{
    Q_OBJECT
public:
    explicit SnipFieldDlg(QWidget* parent = nullptr);

    QSnippetField field() const;
    void setField(const QSnippetField& field);

    QLineEdit* nameEdit() const { return name; }
    QLineEdit* titleEdit() const { return title; }
    QComboBox* typeBox() const { return type; }
    QLineEdit* valuesEdit() const { return values; }
    QLineEdit* valueTitlesEdit() const { return valueTitles; }

private:
    void typeChanged();

    QLineEdit* name;
    QLineEdit* title;
    QComboBox* type;
    QLineEdit* values;
    QLineEdit* valueTitles;
    int column = 0;
};
