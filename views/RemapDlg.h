#pragma once

#include <QDialog>

class QPushButton;
class QRemapModel;
class QTableView;

// Edits a sprite file's palette substitutions: each row shows sprites of a source palette with a
// destination palette instead. The table is the model's, borrowed; edits in its cells reach the model
// directly, the buttons add, delete and clear rows.
class RemapDlg : public QDialog
{
    Q_OBJECT

public:
    explicit RemapDlg(QRemapModel* model, QWidget* parent = nullptr);

    QTableView* table() const { return tableView; }
    QPushButton* addButton() const { return pushButton; }
    QPushButton* deleteButton() const { return pushButton_2; }
    QPushButton* clearButton() const { return pushButton_3; }

Q_SIGNALS:
    // The rows changed: a view showing remapped sprites draws again.
    void updateView();

public Q_SLOTS:
    // Add, Delete and Clear.
    void on_pushButton_clicked();
    void on_pushButton_2_clicked();
    void on_pushButton_3_clicked();

private:
    QRemapModel* model;
    QTableView* tableView;
    QPushButton* pushButton;
    QPushButton* pushButton_2;
    QPushButton* pushButton_3;
};
