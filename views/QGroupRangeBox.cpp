#include "QGroupRangeBox.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QSpinBox>

namespace {
QSpinBox* numberSpin(const char* name, QWidget* parent)
{
    auto* box = new QSpinBox(parent);
    box->setObjectName(QLatin1String(name));
    box->setRange(0, 65535);
    return box;
}
} // namespace

QGroupRangeBox::QGroupRangeBox(const QString& groupLabel, QWidget* parent)
    : QWidget(parent), groupSpin(numberSpin("grp", this)), range(new QCheckBox(tr("Only the numbers"), this)),
      fromSpin(numberSpin("from", this)), toSpin(numberSpin("to", this))
{
    range->setObjectName(QStringLiteral("range"));
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    auto* label = new QLabel(groupLabel, this);
    label->setBuddy(groupSpin);
    grid->addWidget(label, 0, 0);
    grid->addWidget(groupSpin, 0, 1, 1, 3);
    grid->addWidget(range, 1, 0);
    grid->addWidget(fromSpin, 1, 1);
    grid->addWidget(new QLabel(tr("to"), this), 1, 2);
    grid->addWidget(toSpin, 1, 3);
    toSpin->setValue(65535);
    fromSpin->setEnabled(false);
    toSpin->setEnabled(false);
    connect(range, &QCheckBox::toggled, fromSpin, &QWidget::setEnabled);
    connect(range, &QCheckBox::toggled, toSpin, &QWidget::setEnabled);
    // The two bounds never cross: moving one past the other takes the other along.
    connect(fromSpin, &QSpinBox::valueChanged, this, [this](int value) {
        if (toSpin->value() < value) toSpin->setValue(value);
    });
    connect(toSpin, &QSpinBox::valueChanged, this, [this](int value) {
        if (fromSpin->value() > value) fromSpin->setValue(value);
    });
}

int QGroupRangeBox::group() const
{
    return groupSpin->value();
}

void QGroupRangeBox::setGroup(int value)
{
    groupSpin->setValue(value);
}

bool QGroupRangeBox::allNumbers() const
{
    return !range->isChecked();
}

void QGroupRangeBox::setNumbers(bool all, int from, int to)
{
    range->setChecked(!all);
    toSpin->setValue(to);
    fromSpin->setValue(from);
}

int QGroupRangeBox::from() const
{
    return fromSpin->value();
}

int QGroupRangeBox::to() const
{
    return toSpin->value();
}
