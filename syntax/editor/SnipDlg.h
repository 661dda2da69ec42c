#pragma once

#include "QSnippet.h"

#include <QDialog>

class QPlainTextEdit;
class QSnipFieldsModel;
class QSnippetManager;
class QTableView;

// Writes a code snippet: its code and its fields. Saving asks for the file, in the snippet folder
// by default, and has the manager read the folder again.
class SnipDlg : public QDialog
{
    Q_OBJECT
public:
    SnipDlg(QSnippetManager* manager, const QString& name, const QSnippet& snippet,
            QWidget* parent = nullptr);

    QSnippet snippet() const;
    QPlainTextEdit* codeEdit() const { return code; }
    QSnipFieldsModel* fieldsModel() const { return model; }
    QTableView* fieldsView() const { return view; }

public Q_SLOTS:
    // Each field dialog runs through QDialogRunner.
    void addField();
    void editField();
    void removeField();
    // Asks for the file and writes it; on success the dialog closes as accepted.
    bool save();
    bool saveForTranslation();

private:
    QSnippetManager* manager;
    QString name;
    QPlainTextEdit* code;
    QSnipFieldsModel* model;
    QTableView* view;
};
