#pragma once

#include <QDialog>

class QListView;
class QMugenModel;

// Chooses the game to test the projects in, among the configured executables.
class MugRunDlg : public QDialog
{
    Q_OBJECT
public:
    MugRunDlg(QMugenModel* model, int row, QWidget* parent = nullptr);

    int chosen() const;
    QListView* list() const { return m_list; }

private:
    QListView* m_list;
};
