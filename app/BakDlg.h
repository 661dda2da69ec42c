#pragma once

#include <QDialog>

class QListWidget;

// Chooses one of a project's backups, newest first.
class BakDlg : public QDialog
{
    Q_OBJECT
public:
    BakDlg(const QStringList& titles, QWidget* parent = nullptr);

    // The row of the chosen backup, -1 for none.
    int chosen() const;
    QListWidget* list() const { return m_list; }

private:
    QListWidget* m_list;
};
