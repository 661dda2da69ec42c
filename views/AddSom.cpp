#include "AddSom.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QSpinBox>
#include <QVBoxLayout>

AddSom::AddSom(const Values& initial, int files, QWidget* parent)
    : QDialog(parent), group(new QSpinBox(this)), number(new QSpinBox(this)),
      nextFree(new QCheckBox(tr("Move on to the next free number when one is in use"), this))
{
    setObjectName(QStringLiteral("AddSom"));
    setWindowTitle(tr("Add sounds"));
    group->setObjectName(QStringLiteral("group"));
    number->setObjectName(QStringLiteral("number"));
    nextFree->setObjectName(QStringLiteral("nextFree"));
    // The engine reads both as 32-bit numbers, but nothing sensible lies past a signed spin box.
    group->setRange(0, 2147483647);
    number->setRange(0, 2147483647);
    group->setValue(initial.group);
    number->setValue(initial.number);
    nextFree->setChecked(initial.nextFree);

    auto* column = new QVBoxLayout(this);
    auto* label = new QLabel(tr("%n WAV file(s) become sounds of one group, numbered in turn from the "
                                "first number.",
                                nullptr, files),
                             this);
    label->setWordWrap(true);
    column->addWidget(label);
    auto* form = new QFormLayout;
    form->addRow(tr("Group:"), group);
    form->addRow(tr("First number:"), number);
    column->addLayout(form);
    column->addWidget(nextFree);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    column->addWidget(buttons);
}

AddSom::Values AddSom::values() const
{
    return Values{group->value(), number->value(), nextFree->isChecked()};
}
