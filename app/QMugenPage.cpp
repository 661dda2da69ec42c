#include "QMugenPage.h"

#include "MugenDlg.h"
#include "QMugenModel.h"

#include <QHBoxLayout>
#include <QListView>
#include <QPushButton>
#include <QVBoxLayout>

QMugenPage::QMugenPage(QMugenModel* model, QWidget* parent) : QWidget(parent), model(model)
{
    auto* row = new QHBoxLayout(this);
    view = new QListView(this);
    view->setObjectName(QStringLiteral("mugenList"));
    view->setModel(model);
    connect(view, &QListView::doubleClicked, this, &QMugenPage::edit);
    row->addWidget(view, 1);
    auto* buttons = new QVBoxLayout;
    const auto button = [this, buttons](const char* name, const QString& text, void (QMugenPage::*slot)()) {
        auto* pushed = new QPushButton(text, this);
        pushed->setObjectName(QLatin1String(name));
        connect(pushed, &QPushButton::clicked, this, slot);
        buttons->addWidget(pushed);
    };
    button("mugenAdd", tr("Add..."), &QMugenPage::add);
    button("mugenEdit", tr("Edit..."), &QMugenPage::edit);
    button("mugenRemove", tr("Remove"), &QMugenPage::remove);
    button("mugenUp", tr("Up"), &QMugenPage::moveUp);
    button("mugenDown", tr("Down"), &QMugenPage::moveDown);
    buttons->addStretch(1);
    row->addLayout(buttons);
}

int QMugenPage::selectedRow() const
{
    return view->currentIndex().row();
}

void QMugenPage::select(int row)
{
    view->setCurrentIndex(model->index(row, 0));
}

void QMugenPage::add()
{
    if (model->rowCount() >= QMugenModel::MaxEntries) return;
    MugenDlg dialog(QMugenEntry(), this);
    if (dialog.exec() != QDialog::Accepted) return;
    const QMugenEntry entry = dialog.entry();
    select(model->addEntry(entry.name, entry.exe, entry.params, entry.icon));
}

void QMugenPage::edit()
{
    QMugenEntry* entry = model->entry(selectedRow());
    if (!entry) return;
    MugenDlg dialog(*entry, this);
    if (dialog.exec() != QDialog::Accepted) return;
    *entry = dialog.entry();
    emit model->dataChanged(model->index(selectedRow(), 0), model->index(selectedRow(), 0));
}

void QMugenPage::remove()
{
    const int row = selectedRow();
    if (model->remove(row)) select(qMin(row, model->rowCount() - 1));
}

void QMugenPage::moveUp()
{
    const int row = selectedRow();
    if (row > 0 && model->move(row, row - 1)) select(row - 1);
}

void QMugenPage::moveDown()
{
    const int row = selectedRow();
    if (row >= 0 && row + 1 < model->rowCount() && model->move(row, row + 1)) select(row + 1);
}
