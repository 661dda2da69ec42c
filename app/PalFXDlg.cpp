#include "PalFXDlg.h"

#include "QSprite.h"
#include "QSprites.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPixmap>
#include <QSpinBox>
#include <QTimer>
#include <QVBoxLayout>

namespace {

// The engine runs at 60 ticks a second.
constexpr int TickMilliseconds = 1000 / 60;
constexpr int PreviewSize = 240;

QHBoxLayout* row(std::initializer_list<QSpinBox*> boxes)
{
    auto* layout = new QHBoxLayout;
    for (QSpinBox* box : boxes)
        layout->addWidget(box);
    return layout;
}

} // namespace

PalFXDlg::PalFXDlg(const QString& presetFolder, QSprites* sprites, QWidget* parent)
    : QDialog(parent), sprites(sprites), presetList(QPalFX::presets(presetFolder))
{
    setWindowTitle(tr("PalFX"));
    presets = new QComboBox(this);
    presets->setObjectName(QStringLiteral("presets"));
    presets->addItem(tr("(none)"));
    for (const QPalFX::Preset& preset : std::as_const(presetList))
        presets->addItem(preset.name);
    connect(presets, qOverload<int>(&QComboBox::activated), this, &PalFXDlg::presetChosen);

    for (int i = 0; i < 3; ++i) {
        add[i] = spin(-999, 999, 0, QStringLiteral("add%1").arg(i));
        mul[i] = spin(0, 9999, 256, QStringLiteral("mul%1").arg(i));
    }
    for (int i = 0; i < 3; ++i)
        sinadd[i] = spin(-999, 999, 0, QStringLiteral("sinadd%1").arg(i));
    sinadd[3] = spin(-999, 9999, 0, QStringLiteral("sinadd3"));
    invertall = new QCheckBox(this);
    invertall->setObjectName(QStringLiteral("invertall"));
    connect(invertall, &QCheckBox::toggled, this, &PalFXDlg::updatePreview);
    color = spin(0, 256, 256, QStringLiteral("color"));

    const QSprite* first = sprites && sprites->count() > 0 ? sprites->at(0) : nullptr;
    group = spin(0, 65535, first ? first->itemGroup() : 0, QStringLiteral("group"));
    number = spin(0, 65535, first ? first->itemIndex() : 0, QStringLiteral("number"));
    picture = new QLabel(this);
    picture->setObjectName(QStringLiteral("picture"));
    picture->setMinimumSize(PreviewSize, PreviewSize);
    picture->setAlignment(Qt::AlignCenter);

    auto* form = new QFormLayout;
    form->addRow(tr("Preset:"), presets);
    form->addRow(tr("Add:"), row({add[0], add[1], add[2]}));
    form->addRow(tr("Mul:"), row({mul[0], mul[1], mul[2]}));
    form->addRow(tr("SinAdd:"), row({sinadd[0], sinadd[1], sinadd[2], sinadd[3]}));
    form->addRow(tr("Invert all:"), invertall);
    form->addRow(tr("Color:"), color);
    form->addRow(tr("Sprite:"), row({group, number}));
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* columns = new QHBoxLayout;
    columns->addLayout(form);
    columns->addWidget(picture, 1);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(columns);
    layout->addWidget(buttons);

    ticker = new QTimer(this);
    ticker->setInterval(TickMilliseconds);
    connect(ticker, &QTimer::timeout, this, [this]() {
        ++tick;
        updatePreview();
    });
    ticker->start();
    updatePreview();
}

QSpinBox* PalFXDlg::spin(int minimum, int maximum, int value, const QString& name)
{
    auto* box = new QSpinBox(this);
    box->setObjectName(name);
    box->setRange(minimum, maximum);
    box->setValue(value);
    connect(box, qOverload<int>(&QSpinBox::valueChanged), this, &PalFXDlg::updatePreview);
    return box;
}

QPalFX PalFXDlg::values() const
{
    QPalFX values;
    for (int i = 0; i < 3; ++i) {
        values.add[size_t(i)] = add[i]->value();
        values.mul[size_t(i)] = mul[i]->value();
    }
    for (int i = 0; i < 4; ++i)
        values.sinadd[size_t(i)] = sinadd[i]->value();
    values.invertall = invertall->isChecked() ? 1 : 0;
    values.color = color->value();
    return values;
}

void PalFXDlg::setValues(const QPalFX& values)
{
    for (int i = 0; i < 3; ++i) {
        add[i]->setValue(values.add[size_t(i)]);
        mul[i]->setValue(values.mul[size_t(i)]);
    }
    for (int i = 0; i < 4; ++i)
        sinadd[i]->setValue(values.sinadd[size_t(i)]);
    invertall->setChecked(values.invertall != 0);
    color->setValue(values.color);
    updatePreview();
}

int PalFXDlg::presetCount() const
{
    return int(presetList.size());
}

void PalFXDlg::presetChosen(int index)
{
    if (index > 0 && index <= presetList.size()) setValues(presetList.at(index - 1).values);
}

void PalFXDlg::updatePreview()
{
    const int at = sprites ? sprites->find(0, group->value(), number->value()) : -1;
    // Decoding is the costly part, and the ticks come sixty times a second.
    if (at != sourceAt) {
        const QSprite* sprite = at >= 0 ? sprites->at(uint(at)) : nullptr;
        source = sprite ? sprite->image(QSpriteImagePalette::Default) : QImage();
        sourceAt = at;
    }
    shown = source.isNull() ? QImage() : values().apply(source, tick);
    if (shown.isNull()) {
        picture->setText(tr("No sprite"));
        return;
    }
    QPixmap pixmap = QPixmap::fromImage(shown);
    if (pixmap.width() > PreviewSize || pixmap.height() > PreviewSize)
        pixmap = pixmap.scaled(PreviewSize, PreviewSize, Qt::KeepAspectRatio);
    picture->setPixmap(pixmap);
}
