#include "RemapDlg.h"

#include "QRemapModel.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

RemapDlg::RemapDlg(QRemapModel* model, QWidget* parent)
    : QDialog(parent), model(model), tableView(new QTableView(this)),
      pushButton(new QPushButton(tr("Add"), this)), pushButton_2(new QPushButton(tr("Delete"), this)),
      pushButton_3(new QPushButton(tr("Clear"), this))
{
    setObjectName(QStringLiteral("RemapDlg"));
    setWindowTitle(tr("Remap"));
    tableView->setObjectName(QStringLiteral("tableView"));
    pushButton->setObjectName(QStringLiteral("pushButton"));
    pushButton_2->setObjectName(QStringLiteral("pushButton_2"));
    pushButton_3->setObjectName(QStringLiteral("pushButton_3"));
    tableView->setModel(model);
    tableView->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    tableView->verticalHeader()->hide();

    auto* layout = new QVBoxLayout(this);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(pushButton);
    buttons->addWidget(pushButton_2);
    buttons->addWidget(pushButton_3);
    buttons->addStretch(1);
    layout->addLayout(buttons);
    layout->addWidget(tableView, 1);
    auto* close = new QDialogButtonBox(QDialogButtonBox::Close, this);
    connect(close, &QDialogButtonBox::rejected, this, &QDialog::accept);
    layout->addWidget(close);
    resize(420, 300);

    connect(pushButton, &QPushButton::clicked, this, &RemapDlg::on_pushButton_clicked);
    connect(pushButton_2, &QPushButton::clicked, this, &RemapDlg::on_pushButton_2_clicked);
    connect(pushButton_3, &QPushButton::clicked, this, &RemapDlg::on_pushButton_3_clicked);
}

void RemapDlg::on_pushButton_clicked()
{
    model->addRow();
    emit updateView();
}

void RemapDlg::on_pushButton_2_clicked()
{
    // The row numbers are read once, as the selection names them: a row selected in two cells is named
    // twice, and the second removal takes whichever row has moved up into its place.
    QList<int> rows;
    for (const QModelIndex& index : tableView->selectionModel()->selectedIndexes())
        rows << index.row();
    for (int row : std::as_const(rows))
        if (row < model->rowCount()) model->removeRow(row);
    emit updateView();
}

void RemapDlg::on_pushButton_3_clicked()
{
    model->removeAll();
    emit updateView();
}
