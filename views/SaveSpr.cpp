#include "SaveSpr.h"

#include "QDialogRunner.h"
#include "QGroupRangeBox.h"

#include <QDialogButtonBox>
#include <QRadioButton>
#include <QVBoxLayout>

SaveSpr::SaveSpr(const QString& title, const SaveItem& initial, QWidget* parent)
    : QDialog(parent), current(new QRadioButton(tr("The current sprite"), this)),
      all(new QRadioButton(tr("All sprites"), this)),
      group(new QRadioButton(tr("The sprites of a group"), this)),
      groupRange(new QGroupRangeBox(tr("Group:"), this))
{
    setObjectName(QStringLiteral("SaveSpr"));
    setWindowTitle(title);
    current->setObjectName(QStringLiteral("current"));
    all->setObjectName(QStringLiteral("all"));
    group->setObjectName(QStringLiteral("group"));
    auto* column = new QVBoxLayout(this);
    column->addWidget(current);
    column->addWidget(all);
    column->addWidget(group);
    column->addWidget(groupRange);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    column->addWidget(buttons);
    connect(group, &QRadioButton::toggled, groupRange, &QWidget::setEnabled);

    (initial.kind == SaveItem::All     ? all
     : initial.kind == SaveItem::Group ? group
                                       : current)
        ->setChecked(true);
    groupRange->setEnabled(initial.kind == SaveItem::Group);
    groupRange->setGroup(initial.group);
    groupRange->setNumbers(initial.allNumbers, initial.from, initial.to);
}

SaveItem SaveSpr::value() const
{
    SaveItem item;
    item.kind = all->isChecked() ? SaveItem::All : group->isChecked() ? SaveItem::Group : SaveItem::Current;
    item.group = groupRange->group();
    item.allNumbers = groupRange->allNumbers();
    item.from = groupRange->from();
    item.to = groupRange->to();
    return item;
}

bool SaveSpr::ask(const QString& title, SaveItem& item, QWidget* parent)
{
    SaveSpr dialog(title, item, parent);
    if (QDialogRunner::run(&dialog) != QDialog::Accepted) return false;
    item = dialog.value();
    return true;
}
