#include "AddPal.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QRadioButton>
#include <QSpinBox>
#include <QVBoxLayout>

AddPal::AddPal(QWidget* parent)
    : QDialog(parent), groupField(new QSpinBox(this)), indexField(new QSpinBox(this)),
      reverse(new QCheckBox(tr("Reversed"), this)), ones(new QRadioButton(tr("1,2,3,5,..."), this)),
      tens(new QRadioButton(tr("10,20,30,..."), this))
{
    setObjectName(QStringLiteral("AddPal"));
    setWindowTitle(tr("Add palettes"));
    groupField->setObjectName(QStringLiteral("group"));
    indexField->setObjectName(QStringLiteral("index"));
    reverse->setObjectName(QStringLiteral("reversed"));
    ones->setObjectName(QStringLiteral("step1"));
    tens->setObjectName(QStringLiteral("step10"));
    for (QSpinBox* box : {groupField, indexField})
        box->setRange(0, 65535);
    ones->setChecked(true);

    auto* layout = new QVBoxLayout(this);
    auto* form = new QFormLayout;
    form->addRow(tr("Group:"), groupField);
    form->addRow(tr("Index:"), indexField);
    layout->addLayout(form);
    auto* steps = new QGroupBox(tr("Step"), this);
    auto* column = new QVBoxLayout(steps);
    column->addWidget(ones);
    column->addWidget(tens);
    layout->addWidget(steps);
    layout->addWidget(reverse);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(buttons);
}

int AddPal::group() const
{
    return groupField->value();
}

int AddPal::index() const
{
    return indexField->value();
}

int AddPal::step() const
{
    return tens->isChecked() ? 10 : 1;
}

bool AddPal::reversed() const
{
    return reverse->isChecked();
}

void AddPal::setGroup(int value)
{
    groupField->setValue(value);
}

void AddPal::setIndex(int value)
{
    indexField->setValue(value);
}
