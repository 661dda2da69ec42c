#include "RenGrp.h"

#include "QGroupRangeBox.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

RenGrp::RenGrp(int group, QWidget* parent)
    : QDialog(parent), groupRange(new QGroupRangeBox(tr("From group:"), this)), toGroup(new QSpinBox(this))
{
    setObjectName(QStringLiteral("RenGrp"));
    setWindowTitle(tr("Rename group"));
    toGroup->setObjectName(QStringLiteral("toGrp"));
    toGroup->setRange(0, 65535);
    auto* column = new QVBoxLayout(this);
    column->addWidget(groupRange);
    auto* form = new QFormLayout;
    form->addRow(tr("To group:"), toGroup);
    column->addLayout(form);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    column->addWidget(buttons);
    // A group renamed to itself is no change: Ok waits for another group.
    QPushButton* ok = buttons->button(QDialogButtonBox::Ok);
    const auto follow = [this, ok]() { ok->setEnabled(toGroup->value() != groupRange->group()); };
    connect(toGroup, &QSpinBox::valueChanged, this, follow);
    connect(groupRange->groupBox(), &QSpinBox::valueChanged, this, follow);
    groupRange->setGroup(group);
    toGroup->setValue(group);
    follow();
}
