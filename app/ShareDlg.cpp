#include "ShareDlg.h"

#include "QDialogRunner.h"
#include "QSprite.h"
#include "QSprites.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

ShareDlg::ShareDlg(const QSprites* sprites, const QList<uint>& list, QWidget* parent)
    : QDialog(parent), rows(list)
{
    setObjectName(QStringLiteral("ShareDlg"));
    setWindowTitle(tr("Shared image"));
    auto* column = new QVBoxLayout(this);
    auto* label = new QLabel(tr("The image of this sprite is shared by the sprites below. Check those that "
                                "take the new image too:"),
                             this);
    label->setWordWrap(true);
    column->addWidget(label);
    view = new QTableWidget(int(rows.size()), 3, this);
    view->setHorizontalHeaderLabels({tr("Index"), tr("Group"), tr("Number")});
    view->verticalHeader()->hide();
    view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    for (int row = 0; row < rows.size(); ++row) {
        const QSprite* sprite = rows.at(row) < sprites->count() ? sprites->at(rows.at(row)) : nullptr;
        auto* position = new QTableWidgetItem(QString::number(rows.at(row)));
        // Sharing is what the sprites had: every one starts checked.
        position->setCheckState(Qt::Checked);
        view->setItem(row, 0, position);
        view->setItem(row, 1,
                      new QTableWidgetItem(sprite ? QString::number(sprite->itemGroup()) : QString()));
        view->setItem(row, 2,
                      new QTableWidgetItem(sprite ? QString::number(sprite->itemIndex()) : QString()));
    }
    column->addWidget(view, 1);
    auto* buttons = new QDialogButtonBox(this);
    QPushButton* share = buttons->addButton(tr("Share with selected"), QDialogButtonBox::AcceptRole);
    share->setObjectName(QStringLiteral("share"));
    QPushButton* noShare = buttons->addButton(tr("No sharing"), QDialogButtonBox::RejectRole);
    noShare->setObjectName(QStringLiteral("noShare"));
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    column->addWidget(buttons);
    resize(400, 320);
}

QList<uint> ShareDlg::chosen() const
{
    QList<uint> taken;
    if (result() != QDialog::Accepted) return taken;
    for (int row = 0; row < rows.size(); ++row)
        if (view->item(row, 0)->checkState() == Qt::Checked) taken.append(rows.at(row));
    return taken;
}

void ShareDlg::answer(const QSprites* sprites, QList<uint>& rows, QWidget* parent)
{
    ShareDlg dialog(sprites, rows, parent);
    dialog.setResult(QDialogRunner::run(&dialog));
    rows = dialog.chosen();
}
