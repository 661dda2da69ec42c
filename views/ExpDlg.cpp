#include "ExpDlg.h"

#include "QGroupRangeBox.h"
#include "QSprite.h"
#include "QSprites.h"

#include <QDialogButtonBox>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QSet>
#include <QVBoxLayout>

#include <algorithm>

ExpDlg::ExpDlg(const QSprites& sprites, int current, QWidget* parent)
    : QDialog(parent), all(new QRadioButton(tr("All sprites"), this)),
      allGroups(new QRadioButton(tr("Whole groups:"), this)),
      group(new QRadioButton(tr("The numbers of a group:"), this)), groups(new QListWidget(this)),
      groupRange(new QGroupRangeBox(tr("Group:"), this))
{
    setObjectName(QStringLiteral("ExpDlg"));
    setWindowTitle(tr("Export sprites"));
    all->setObjectName(QStringLiteral("all"));
    allGroups->setObjectName(QStringLiteral("allgrp"));
    group->setObjectName(QStringLiteral("grp"));
    groups->setObjectName(QStringLiteral("groups"));
    all->setChecked(true);

    QList<int> numbers;
    for (const QSprite* sprite : sprites.spriteItems())
        numbers.append(sprite->itemGroup());
    std::sort(numbers.begin(), numbers.end());
    numbers.erase(std::unique(numbers.begin(), numbers.end()), numbers.end());
    for (int number : std::as_const(numbers)) {
        auto* item = new QListWidgetItem(QString::number(number), groups);
        item->setData(Qt::UserRole, number);
        item->setCheckState(number == current ? Qt::Checked : Qt::Unchecked);
    }
    groupRange->setGroup(current);

    auto* column = new QVBoxLayout(this);
    column->addWidget(all);
    column->addWidget(allGroups);
    column->addWidget(groups, 1);
    column->addWidget(group);
    column->addWidget(groupRange);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    column->addWidget(buttons);

    // Whole groups with none checked would export nothing: Ok waits for a group.
    QPushButton* ok = buttons->button(QDialogButtonBox::Ok);
    const auto follow = [this, ok]() {
        groups->setEnabled(allGroups->isChecked());
        groupRange->setEnabled(group->isChecked());
        ok->setEnabled(!allGroups->isChecked() || !selection().groups.isEmpty());
    };
    connect(allGroups, &QRadioButton::toggled, this, follow);
    connect(group, &QRadioButton::toggled, this, follow);
    connect(groups, &QListWidget::itemChanged, this, follow);
    follow();
    resize(320, 420);
}

QSpriteSelection ExpDlg::selection() const
{
    if (allGroups->isChecked()) {
        QList<int> checked;
        for (int row = 0; row < groups->count(); ++row)
            if (groups->item(row)->checkState() == Qt::Checked)
                checked.append(groups->item(row)->data(Qt::UserRole).toInt());
        return QSpriteSelection::ofGroups(checked);
    }
    if (group->isChecked()) {
        if (groupRange->allNumbers()) return QSpriteSelection::ofGroups({groupRange->group()});
        return QSpriteSelection::run(groupRange->group(), groupRange->from(), groupRange->to());
    }
    return QSpriteSelection::all();
}
