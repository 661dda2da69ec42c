#include "AddAnim.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

#include <climits>

AddAnim::AddAnim(QWidget* parent, bool askTime) : QDialog(parent)
{
    setObjectName(QStringLiteral("AddAnim"));
    setWindowTitle(tr("New action"));
    auto* layout = new QVBoxLayout(this);
    auto* form = new QFormLayout;
    numberField = new QSpinBox(this);
    numberField->setObjectName(QStringLiteral("add_anim_number"));
    numberField->setRange(-1, INT_MAX);
    nameField = new QLineEdit(this);
    nameField->setObjectName(QStringLiteral("add_anim_name"));
    timeField = new QSpinBox(this);
    timeField->setObjectName(QStringLiteral("add_anim_time"));
    // -1 keeps a frame for good.
    timeField->setRange(-1, 99999);
    timeField->setValue(10);
    form->addRow(tr("Action number:"), numberField);
    form->addRow(tr("Name:"), nameField);
    form->addRow(tr("Frame time:"), timeField);
    if (!askTime) {
        timeField->hide();
        form->labelForField(timeField)->hide();
    }
    layout->addLayout(form);
    warning = new QLabel(this);
    warning->setObjectName(QStringLiteral("add_anim_warning"));
    warning->hide();
    layout->addWidget(warning);
    buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    layout->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(numberField, &QSpinBox::valueChanged, this, &AddAnim::check);
    numberField->selectAll();
}

void AddAnim::setUsedNumbers(const QSet<int>& numbers)
{
    used = numbers;
    int free = 0;
    while (used.contains(free))
        ++free;
    numberField->setValue(free);
    check();
}

void AddAnim::check()
{
    const bool taken = used.contains(numberField->value());
    warning->setText(taken ? tr("Action %1 already exists.").arg(numberField->value()) : QString());
    warning->setVisible(taken);
    buttons->button(QDialogButtonBox::Ok)->setEnabled(!taken);
}

int AddAnim::number() const
{
    return numberField->value();
}

void AddAnim::setNumber(int value)
{
    numberField->setValue(value);
}

QString AddAnim::name() const
{
    return nameField->text().trimmed();
}

void AddAnim::setName(const QString& value)
{
    nameField->setText(value);
}

int AddAnim::frameTime() const
{
    return timeField->value();
}

void AddAnim::setFrameTime(int ticks)
{
    timeField->setValue(ticks);
}

void AddAnim::accept()
{
    if (used.contains(numberField->value())) return;
    QDialog::accept();
}
