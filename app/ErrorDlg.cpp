#include "ErrorDlg.h"

#include <QDialogButtonBox>
#include <QListView>
#include <QVBoxLayout>

ErrorDlg::ErrorDlg(QWidget* parent) : ErrorDlg(nullptr, parent) {}

ErrorDlg::ErrorDlg(QMessageList* list, QWidget* parent)
    : QDialog(parent), listView(new QListView(this)),
      buttons(new QDialogButtonBox(QDialogButtonBox::Close, this))
{
    setWindowTitle(tr("Issues"));
    listView->setEditTriggers(QAbstractItemView::NoEditTriggers);
    listView->setSelectionMode(QAbstractItemView::SingleSelection);
    listView->setUniformItemSizes(true);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(listView);
    layout->addWidget(buttons);
    resize(560, 320);

    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(listView, &QAbstractItemView::doubleClicked, this, &ErrorDlg::rowActivated);
    setList(list);
}

void ErrorDlg::setList(QMessageList* list)
{
    messages = list;
    listView->setModel(list);
}

void ErrorDlg::rowActivated(const QModelIndex& index)
{
    if (!messages || !index.isValid() || index.row() >= messages->rowCount()) return;
    const QMessage message = messages->at(index.row());
    const auto file = static_cast<QProjectFileType>(message.file);
    emit navigate(file, file == pftStates ? message.subIndex : 0, message.index, message.subIndex);
}
