#pragma once

#include "QMessageList.h"
#include "QProjectTypes.h"

#include <QDialog>
#include <QPointer>

class QDialogButtonBox;
class QListView;
class QModelIndex;

// The issues of a project in one list. A double click on a row asks to go to the place of the issue;
// the main window passes the request on to QInterface::navigateTo.
class ErrorDlg : public QDialog
{
    Q_OBJECT

public:
    explicit ErrorDlg(QWidget* parent = nullptr);
    explicit ErrorDlg(QMessageList* list, QWidget* parent = nullptr);

    void setList(QMessageList* list);
    QMessageList* list() const { return messages; }
    QListView* view() const { return listView; }

signals:
    // fileIndex is the position of a state file in its project, 0 for the other kinds.
    void navigate(QProjectFileType file, int fileIndex, int index, int subIndex);

private slots:
    void rowActivated(const QModelIndex& index);

private:
    QPointer<QMessageList> messages;
    QListView* listView;
    QDialogButtonBox* buttons;
};
