#include "animimport.h"

#include "QAnimation.h"
#include "QAnimations.h"
#include "QElementTextEditor.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

animimport::animimport(const QAnimations* source, QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("animimport"));
    setWindowTitle(tr("Import actions"));
    auto* layout = new QVBoxLayout(this);
    actions = new QListWidget(this);
    actions->setObjectName(QStringLiteral("import_actions"));
    for (int i = 0; source && i < source->count(); ++i) {
        const QAnimation* action = source->at(uint(i));
        const QString text = action->name().isEmpty()
                                 ? QString::number(action->number)
                                 : QStringLiteral("%1 - %2").arg(action->number).arg(action->name());
        auto* item = new QListWidgetItem(text, actions);
        item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
        item->setCheckState(Qt::Unchecked);
    }
    layout->addWidget(actions);
    auto* row = new QHBoxLayout;
    auto* all = new QPushButton(tr("Check all"), this);
    all->setObjectName(QStringLiteral("import_all"));
    auto* none = new QPushButton(tr("Check none"), this);
    none->setObjectName(QStringLiteral("import_none"));
    row->addWidget(all);
    row->addWidget(none);
    row->addStretch(1);
    layout->addLayout(row);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    layout->addWidget(buttons);
    connect(all, &QPushButton::clicked, this, [this]() { setAllChecked(true); });
    connect(none, &QPushButton::clicked, this, [this]() { setAllChecked(false); });
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

QList<int> animimport::rows() const
{
    QList<int> checked;
    for (int i = 0; i < actions->count(); ++i)
        if (actions->item(i)->checkState() == Qt::Checked) checked << i;
    return checked;
}

void animimport::setAllChecked(bool on)
{
    for (int i = 0; i < actions->count(); ++i)
        actions->item(i)->setCheckState(on ? Qt::Checked : Qt::Unchecked);
}
