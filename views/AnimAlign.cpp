#include "AnimAlign.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QSpinBox>
#include <QVBoxLayout>

AnimAlign::AnimAlign(QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("AnimAlign"));
    setWindowTitle(tr("Align frames"));
    auto* layout = new QVBoxLayout(this);
    auto* form = new QFormLayout;
    rangeBox = new QComboBox(this);
    rangeBox->setObjectName(QStringLiteral("align_range"));
    rangeBox->addItems(
        {tr("Current frame"), tr("Current frame and those after it"), tr("Whole action"), tr("All actions")});
    rangeBox->setCurrentIndex(FramesOnward);
    modeBox = new QComboBox(this);
    modeBox->setObjectName(QStringLiteral("align_mode"));
    modeBox->addItems({tr("Move by"), tr("Set to")});
    xBox = new QSpinBox(this);
    xBox->setObjectName(QStringLiteral("align_x"));
    xBox->setRange(-99999, 99999);
    yBox = new QSpinBox(this);
    yBox->setObjectName(QStringLiteral("align_y"));
    yBox->setRange(-99999, 99999);
    form->addRow(tr("Frames:"), rangeBox);
    form->addRow(tr("Offset:"), modeBox);
    form->addRow(tr("X:"), xBox);
    form->addRow(tr("Y:"), yBox);
    layout->addLayout(form);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    layout->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

AnimAlign::Range AnimAlign::range() const
{
    return Range(rangeBox->currentIndex());
}

void AnimAlign::setRange(Range value)
{
    rangeBox->setCurrentIndex(value);
}

AnimAlign::Mode AnimAlign::mode() const
{
    return Mode(modeBox->currentIndex());
}

void AnimAlign::setMode(Mode value)
{
    modeBox->setCurrentIndex(value);
}

QPoint AnimAlign::offset() const
{
    return QPoint(xBox->value(), yBox->value());
}

void AnimAlign::setOffset(QPoint value)
{
    xBox->setValue(value.x());
    yBox->setValue(value.y());
}
