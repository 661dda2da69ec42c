#include "OrderDlg.h"

#include "QDialogRunner.h"
#include "QOrderModel.h"
#include "QSprites.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

OrderDlg::OrderDlg(const QSprites* sprites, const QList<uint>& rows, QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("OrderDlg"));
    setWindowTitle(tr("Sprite order"));
    auto* column = new QVBoxLayout(this);
    auto* label =
        new QLabel(tr("A sprite file of version 1.01 gives the character palette only to the sprites "
                      "that follow sprite 0,0 or 9000,0 or another such sprite. These sprites use it "
                      "and stand elsewhere; reordered, they keep their palette in the game:"),
                   this);
    label->setWordWrap(true);
    column->addWidget(label);
    view = new QTableView(this);
    view->setModel(new QOrderModel(sprites, rows, view));
    view->verticalHeader()->hide();
    view->horizontalHeader()->setStretchLastSection(true);
    view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    column->addWidget(view, 1);
    auto* buttons = new QDialogButtonBox(this);
    buttons->addButton(tr("Reorder"), QDialogButtonBox::AcceptRole);
    buttons->addButton(QDialogButtonBox::Cancel);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    column->addWidget(buttons);
    resize(420, 360);
}

void OrderDlg::answer(QSprites* sprites, const QList<uint>& rows, QWidget* parent)
{
    OrderDlg dialog(sprites, rows, parent);
    if (QDialogRunner::run(&dialog) == QDialog::Accepted) sprites->autoOrganize();
}
