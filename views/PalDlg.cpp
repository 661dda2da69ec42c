#include "PalDlg.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QRadioButton>
#include <QSpinBox>
#include <QVBoxLayout>

namespace {
// The rows of the image data choice, in the order of the combo box.
constexpr QSpriteShareMode shareModes[] = {QSpriteShareMode::NoShare, QSpriteShareMode::Share,
                                           QSpriteShareMode::AskToShare};
} // namespace

PalDlg::PalDlg(QSubItem palette, QWidget* parent)
    : QDialog(parent), reverse(new QCheckBox(tr("Reversed"), this)),
      exchange(new QRadioButton(tr("Exchange with the specified palette"), this)),
      force(new QRadioButton(tr("Force the specified palette (adapt the image)"), this)),
      own(new QRadioButton(tr("Image's palette, if not already added"), this)), pGrp(new QSpinBox(this)),
      pIdx(new QSpinBox(this)), share(new QComboBox(this))
{
    setObjectName(QStringLiteral("PalDlg"));
    setWindowTitle(tr("Palette"));
    reverse->setObjectName(QStringLiteral("reversed"));
    reverse->setToolTip(tr("The image's colour table is stored last colour first, as some tools write it."));
    exchange->setObjectName(QStringLiteral("exchange"));
    force->setObjectName(QStringLiteral("force"));
    own->setObjectName(QStringLiteral("own"));
    own->setChecked(true);
    pGrp->setObjectName(QStringLiteral("pGrp"));
    pIdx->setObjectName(QStringLiteral("pIdx"));
    for (QSpinBox* box : {pGrp, pIdx})
        box->setRange(0, 65535);
    pGrp->setValue(palette.group);
    pIdx->setValue(palette.index);
    share->setObjectName(QStringLiteral("share"));
    share->addItems({tr("A copy for this sprite alone"), tr("Shared; sprites sharing the old image follow"),
                     tr("Shared; ask which sprites follow")});

    auto* column = new QVBoxLayout(this);
    auto* label = new QLabel(tr("The new image's colours differ from the sprite's palette."), this);
    label->setWordWrap(true);
    column->addWidget(label);
    column->addWidget(reverse);
    column->addWidget(exchange);
    column->addWidget(force);
    auto* specified = new QHBoxLayout;
    specified->addSpacing(20);
    specified->addWidget(new QLabel(tr("Group:"), this));
    specified->addWidget(pGrp);
    specified->addWidget(new QLabel(tr("Index:"), this));
    specified->addWidget(pIdx);
    column->addLayout(specified);
    column->addWidget(own);
    auto* form = new QFormLayout;
    form->addRow(tr("Image data:"), share);
    column->addLayout(form);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    column->addWidget(buttons);

    const auto follow = [this]() {
        const bool specifiedPalette = !own->isChecked();
        pGrp->setEnabled(specifiedPalette);
        pIdx->setEnabled(specifiedPalette);
    };
    connect(own, &QRadioButton::toggled, this, follow);
    follow();
}

QSpritePaletteMode PalDlg::paletteMode() const
{
    if (exchange->isChecked()) return QSpritePaletteMode::SwapPalette;
    if (force->isChecked()) return QSpritePaletteMode::AdaptImage;
    return QSpritePaletteMode::OwnPalette;
}

QSpriteShareMode PalDlg::shareMode() const
{
    return shareModes[qBound(0, share->currentIndex(), 2)];
}

bool PalDlg::reversed() const
{
    return reverse->isChecked();
}

QSubItem PalDlg::palette() const
{
    return QSubItem{pGrp->value(), pIdx->value()};
}
