#include "AddSpr.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QSpinBox>
#include <QVBoxLayout>

namespace {
QSpinBox* spin(QWidget* parent, const char* name, int minimum, int maximum, int value)
{
    auto* box = new QSpinBox(parent);
    box->setObjectName(QLatin1String(name));
    box->setRange(minimum, maximum);
    box->setValue(value);
    return box;
}

QCheckBox* check(QWidget* parent, const char* name, const QString& text, bool on)
{
    auto* box = new QCheckBox(text, parent);
    box->setObjectName(QLatin1String(name));
    box->setChecked(on);
    return box;
}

// The rows of the palette choice, in the order of the combo box.
constexpr QSpritePaletteMode paletteModes[] = {QSpritePaletteMode::Ignore, QSpritePaletteMode::SwapPalette,
                                               QSpritePaletteMode::AdaptImage};
} // namespace

AddSpr::AddSpr(const Values& initial, int files, QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("AddSpr"));
    setWindowTitle(tr("Add sprites"));
    auto* column = new QVBoxLayout(this);
    auto* count =
        new QLabel(tr("%n image file(s) become sprites after the current one.", nullptr, files), this);
    count->setWordWrap(true);
    column->addWidget(count);

    auto* numbers = new QGroupBox(tr("Numbers"), this);
    auto* numberForm = new QFormLayout(numbers);
    group = spin(numbers, "grp", 0, 65535, initial.group);
    number = spin(numbers, "num", 0, 65535, initial.number);
    step = spin(numbers, "step", 0, 1000, initial.step);
    step->setSpecialValueText(tr("By tens"));
    step->setToolTip(tr("How far a number in use moves on to find a free one. The files are numbered one "
                        "after another, or by tens with \"By tens\"."));
    numberForm->addRow(tr("Group:"), group);
    numberForm->addRow(tr("First number:"), number);
    numberForm->addRow(tr("Step:"), step);
    column->addWidget(numbers);

    auto* axis = new QGroupBox(tr("Axis"), this);
    auto* axisForm = new QFormLayout(axis);
    x = spin(axis, "x", -32768, 32767, initial.x);
    y = spin(axis, "y", -32768, 32767, initial.y);
    bottomCenter =
        check(axis, "bottomCenter", tr("At the middle of each image's bottom"), initial.bottomCenter);
    axisForm->addRow(tr("X:"), x);
    axisForm->addRow(tr("Y:"), y);
    axisForm->addRow(bottomCenter);
    connect(bottomCenter, &QCheckBox::toggled, x, &QWidget::setDisabled);
    connect(bottomCenter, &QCheckBox::toggled, y, &QWidget::setDisabled);
    x->setDisabled(initial.bottomCenter);
    y->setDisabled(initial.bottomCenter);
    column->addWidget(axis);

    auto* options = new QGroupBox(tr("Options"), this);
    auto* optionForm = new QFormLayout(options);
    crop = check(options, "crop", tr("Crop the images to their content"), initial.crop);
    share = check(options, "share", tr("Store identical images once"), initial.share);
    palette = new QComboBox(options);
    palette->setObjectName(QStringLiteral("palette"));
    palette->addItems({tr("The image's palette, if not already added"),
                       tr("The palette below, pixels unchanged"),
                       tr("The palette below, the image adapted to it")});
    for (int row = 0; row < 3; ++row)
        if (paletteModes[row] == initial.paletteMode) palette->setCurrentIndex(row);
    pGrp = spin(options, "pGrp", 0, 65535, initial.palette.group);
    pIdx = spin(options, "pIdx", 0, 65535, initial.palette.index);
    auto* paletteRow = new QHBoxLayout;
    paletteRow->addWidget(new QLabel(tr("Group:"), options));
    paletteRow->addWidget(pGrp);
    paletteRow->addWidget(new QLabel(tr("Index:"), options));
    paletteRow->addWidget(pIdx);
    optionForm->addRow(crop);
    optionForm->addRow(share);
    optionForm->addRow(tr("Palette:"), palette);
    optionForm->addRow(QString(), paletteRow);
    const auto pickPalette = [this](int row) {
        pGrp->setEnabled(row > 0);
        pIdx->setEnabled(row > 0);
    };
    connect(palette, &QComboBox::currentIndexChanged, this, pickPalette);
    pickPalette(palette->currentIndex());
    column->addWidget(options);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    column->addWidget(buttons);
}

AddSpr::Values AddSpr::values() const
{
    Values result;
    result.group = group->value();
    result.number = number->value();
    result.x = x->value();
    result.y = y->value();
    result.step = step->value();
    result.bottomCenter = bottomCenter->isChecked();
    result.crop = crop->isChecked();
    result.share = share->isChecked();
    result.paletteMode = paletteModes[qBound(0, palette->currentIndex(), 2)];
    result.palette = QSubItem{pGrp->value(), pIdx->value()};
    return result;
}
