#include "QSpritesPanel.h"

#include "QPositionRow.h"
#include "QSpritesEditor.h"

#include <QAction>
#include <QCheckBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QSlider>
#include <QSpinBox>
#include <QToolButton>
#include <QVBoxLayout>

QSpritesPanel::QSpritesPanel(QSpritesEditor* editor, QWidget* parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("spr_panel"));
    auto* layout = new QVBoxLayout(this);

    const QPositionRow top = QPositionRow::make(this, "spr");
    selection = top.slider;
    position = top.label;
    layout->addLayout(top.layout);

    auto* form = new QFormLayout;
    group = spin("spr_grp", 0, 65535);
    number = spin("spr_num", 0, 65535);
    x = spin("spr_xaxis", -32768, 32767);
    y = spin("spr_yaxis", -32768, 32767);
    form->addRow(tr("Group:"), group);
    form->addRow(tr("Number:"), number);
    form->addRow(tr("X axis:"), x);
    form->addRow(tr("Y axis:"), y);
    layout->addLayout(form);

    const auto check = [this](const char* name, const QString& text) {
        auto* box = new QCheckBox(text, this);
        box->setObjectName(QLatin1String(name));
        return box;
    };
    decLoad = check("spr_dec_load", tr("Decompress on load"));
    transparent = check("spr_trans_color", tr("Show transparent color"));
    switchPal = check("spr_switch_pal", tr("Switch to the sprite's palette"));
    for (QCheckBox* box : {decLoad, transparent, switchPal})
        layout->addWidget(box);
    info = new QLabel(tr("No image"), this);
    info->setObjectName(QStringLiteral("spr_info"));
    info->setWordWrap(true);
    layout->addWidget(info);

    onion = check("spr_onion_skin", tr("Onion skin"));
    onionSelection = new QSlider(Qt::Horizontal, this);
    onionSelection->setObjectName(QStringLiteral("spr_onion_sel"));
    onionText = new QLabel(this);
    onionText->setObjectName(QStringLiteral("spr_onion_text"));
    auto* onionRow = new QHBoxLayout;
    onionRow->addWidget(onion);
    onionRow->addWidget(onionSelection, 1);
    onionRow->addWidget(onionText);
    layout->addLayout(onionRow);

    commands = new QWidget(this);
    auto* grid = new QGridLayout(commands);
    grid->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(commands);
    layout->addStretch(1);

    // The editor tells the panel what to show ...
    connect(editor, &QSpritesEditor::enabled, this, &QWidget::setEnabled);
    connect(editor, &QSpritesEditor::setMaximum, this, [this](int count) {
        selection->setRange(0, qMax(0, count - 1));
        onionSelection->setRange(0, qMax(0, count - 1));
    });
    connect(editor, &QSpritesEditor::setSelPos, selection, &QSlider::setValue);
    connect(editor, &QSpritesEditor::setPosText, position, &QLabel::setText);
    connect(editor, &QSpritesEditor::setGroup, group, &QSpinBox::setValue);
    connect(editor, &QSpritesEditor::setNumber, number, &QSpinBox::setValue);
    connect(editor, &QSpritesEditor::setX, x, &QSpinBox::setValue);
    connect(editor, &QSpritesEditor::setY, y, &QSpinBox::setValue);
    connect(editor, &QSpritesEditor::setDecLoad, decLoad, &QCheckBox::setChecked);
    connect(editor, &QSpritesEditor::setSwitchPal, switchPal, &QCheckBox::setChecked);
    connect(editor, &QSpritesEditor::setTrans, transparent, &QCheckBox::setChecked);
    connect(editor, &QSpritesEditor::setInfoText, info, &QLabel::setText);
    connect(editor, &QSpritesEditor::setOnionSkin, onion, &QCheckBox::setChecked);
    connect(editor, &QSpritesEditor::setOnionSelPos, onionSelection, &QSlider::setValue);
    connect(editor, &QSpritesEditor::setOnionText, onionText, &QLabel::setText);
    connect(editor, &QSpritesEditor::flushFields, this, &QSpritesPanel::flush);
    // ... and the panel tells the editor what the user changed.
    connect(selection, &QSlider::valueChanged, editor, &QSpritesEditor::selPosChanged);
    connect(group, &QSpinBox::valueChanged, editor, &QSpritesEditor::grpChanged);
    connect(number, &QSpinBox::valueChanged, editor, &QSpritesEditor::numChanged);
    connect(x, &QSpinBox::valueChanged, editor, &QSpritesEditor::xChanged);
    connect(y, &QSpinBox::valueChanged, editor, &QSpritesEditor::yChanged);
    connect(decLoad, &QCheckBox::toggled, editor, &QSpritesEditor::decLoadChanged);
    connect(transparent, &QCheckBox::toggled, editor, &QSpritesEditor::transChanged);
    connect(switchPal, &QCheckBox::toggled, editor, &QSpritesEditor::switchPalChanged);
    connect(onion, &QCheckBox::toggled, editor, &QSpritesEditor::onionSkinChanged);
    connect(onionSelection, &QSlider::valueChanged, editor, &QSpritesEditor::onionSelPosChanged);
    setEnabled(false);
}

QSpinBox* QSpritesPanel::spin(const char* name, int minimum, int maximum)
{
    auto* box = new QSpinBox(this);
    box->setObjectName(QLatin1String(name));
    box->setRange(minimum, maximum);
    // A value reaches the model when typing ends, so a number typed digit by digit is one undo step.
    box->setKeyboardTracking(false);
    return box;
}

void QSpritesPanel::flush()
{
    for (QSpinBox* box : {group, number, x, y})
        if (box->hasFocus()) box->interpretText();
}

QToolButton* QSpritesPanel::addCommand(QAction* action)
{
    auto* grid = static_cast<QGridLayout*>(commands->layout());
    auto* button = new QToolButton(commands);
    button->setDefaultAction(action);
    button->setObjectName(action->objectName().isEmpty() ? action->text() : action->objectName());
    const int count = grid->count();
    grid->addWidget(button, count / 4, count % 4);
    return button;
}
