#include "QAnimationsPanel.h"

#include "QAnimationsEditor.h"
#include "QPositionRow.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QSlider>
#include <QSpinBox>
#include <QToolButton>
#include <QVBoxLayout>

QAnimationsPanel::QAnimationsPanel(QAnimationsEditor* editor, QWidget* parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("air_panel"));
    auto* layout = new QVBoxLayout(this);

    const QPositionRow top = QPositionRow::make(this, "air");
    selection = top.slider;
    position = top.label;
    layout->addLayout(top.layout);

    auto* head = new QFormLayout;
    number = spin("air_number", -1, 2147483647);
    name = new QLineEdit(this);
    name->setObjectName(QStringLiteral("air_name"));
    head->addRow(tr("Number:"), number);
    head->addRow(tr("Name:"), name);
    layout->addLayout(head);

    frameArea = new QWidget(this);
    auto* frameLayout = new QVBoxLayout(frameArea);
    frameLayout->setContentsMargins(0, 0, 0, 0);
    frameSelection = new QSlider(Qt::Horizontal, frameArea);
    frameSelection->setObjectName(QStringLiteral("air_frame_sel"));
    framePosition = new QLabel(QStringLiteral("0 / 0"), frameArea);
    framePosition->setObjectName(QStringLiteral("air_frame_pos_text"));
    auto* frameRow = new QHBoxLayout;
    frameRow->addWidget(frameSelection, 1);
    frameRow->addWidget(framePosition);
    frameLayout->addLayout(frameRow);

    auto* form = new QFormLayout;
    // Groups and images are read as signed 16-bit numbers; -1 is the engine's "no sprite".
    group = spin("air_frame_grp", -32768, 32767);
    image = spin("air_frame_num", -32768, 32767);
    x = spin("air_frame_x", -99999, 99999);
    y = spin("air_frame_y", -99999, 99999);
    time = spin("air_frame_time", -99999, 99999);
    flip = new QComboBox(frameArea);
    flip->setObjectName(QStringLiteral("air_frame_flip"));
    flip->addItems({tr("None"), tr("Vertical"), tr("Horizontal"), tr("Both")});
    trans = new QComboBox(frameArea);
    trans->setObjectName(QStringLiteral("air_frame_trans"));
    trans->addItems({tr("None"), QStringLiteral("A"), QStringLiteral("A1"), QStringLiteral("S"),
                     QStringLiteral("AS..D..")});
    src = spin("air_frame_src", 0, 999);
    dst = spin("air_frame_dst", 0, 999);
    loop = check("air_frame_loop", tr("Loop start"));
    scaleX = real("air_frame_scalex", -1000, 1000, 4);
    scaleY = real("air_frame_scaley", -1000, 1000, 4);
    angle = real("air_frame_angle", -3600, 3600, 2);
    form->addRow(tr("Group:"), group);
    form->addRow(tr("Image:"), image);
    form->addRow(tr("X:"), x);
    form->addRow(tr("Y:"), y);
    form->addRow(tr("Time:"), time);
    form->addRow(tr("Flip:"), flip);
    form->addRow(tr("Transparency:"), trans);
    auto* blendRow = new QHBoxLayout;
    blendRow->addWidget(src);
    blendRow->addWidget(dst);
    form->addRow(tr("Source, destination:"), blendRow);
    form->addRow(tr("Scale X:"), scaleX);
    form->addRow(tr("Scale Y:"), scaleY);
    form->addRow(tr("Angle:"), angle);
    frameLayout->addLayout(form);
    frameLayout->addWidget(loop);
    auto* marks = new QGridLayout;
    iBlend = check("air_frame_iblend", tr("Interpolate blend"));
    iOffset = check("air_frame_ioffset", tr("Interpolate offset"));
    iScale = check("air_frame_iscale", tr("Interpolate scale"));
    iAngle = check("air_frame_iangle", tr("Interpolate angle"));
    marks->addWidget(iBlend, 0, 0);
    marks->addWidget(iOffset, 0, 1);
    marks->addWidget(iScale, 1, 0);
    marks->addWidget(iAngle, 1, 1);
    frameLayout->addLayout(marks);
    layout->addWidget(frameArea);
    onion = check("air_onion_skin", tr("Show the previous frame"));
    layout->addWidget(onion);

    commands = new QWidget(this);
    auto* grid = new QGridLayout(commands);
    grid->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(commands);
    layout->addStretch(1);

    // The editor tells the panel what to show ...
    using E = QAnimationsEditor;
    connect(editor, &E::enabled, this, &QWidget::setEnabled);
    connect(editor, &E::enabled2, number, &QWidget::setEnabled);
    connect(editor, &E::enabled2, name, &QWidget::setEnabled);
    connect(editor, &E::enabled2, frameSelection, &QWidget::setEnabled);
    connect(editor, &E::frameEnabled, frameArea, [this](bool on) {
        for (QWidget* field :
             std::initializer_list<QWidget*>{group, image, x, y, time, flip, trans, loop, scaleX, scaleY,
                                             angle, iBlend, iOffset, iScale, iAngle})
            field->setEnabled(on);
    });
    connect(editor, &E::transEnabled, src, &QWidget::setEnabled);
    connect(editor, &E::transEnabled, dst, &QWidget::setEnabled);
    connect(editor, &E::setMaximum, selection,
            [this](int count) { selection->setRange(0, qMax(0, count - 1)); });
    connect(editor, &E::setFrameMaximum, frameSelection,
            [this](int count) { frameSelection->setRange(0, qMax(0, count - 1)); });
    connect(editor, &E::setSelPos, selection, &QSlider::setValue);
    connect(editor, &E::setPosText, position, &QLabel::setText);
    connect(editor, &E::setNumber, number, &QSpinBox::setValue);
    connect(editor, &E::setName, name, &QLineEdit::setText);
    connect(editor, &E::setFrameSelPos, frameSelection, &QSlider::setValue);
    connect(editor, &E::setFramePosText, framePosition, &QLabel::setText);
    connect(editor, &E::setFrameGrp, group, &QSpinBox::setValue);
    connect(editor, &E::setFrameNum, image, &QSpinBox::setValue);
    connect(editor, &E::setFrameX, x, &QSpinBox::setValue);
    connect(editor, &E::setFrameY, y, &QSpinBox::setValue);
    connect(editor, &E::setFrameTime, time, &QSpinBox::setValue);
    connect(editor, &E::setFrameFlip, flip, &QComboBox::setCurrentIndex);
    connect(editor, &E::setFrameTrans, trans, &QComboBox::setCurrentIndex);
    connect(editor, &E::setFrameSrc, src, &QSpinBox::setValue);
    connect(editor, &E::setFrameDst, dst, &QSpinBox::setValue);
    connect(editor, &E::setFrameLoop, loop, &QCheckBox::setChecked);
    connect(editor, &E::setFrameScaleX, scaleX, &QDoubleSpinBox::setValue);
    connect(editor, &E::setFrameScaleY, scaleY, &QDoubleSpinBox::setValue);
    connect(editor, &E::setFrameAngle, angle, &QDoubleSpinBox::setValue);
    connect(editor, &E::setFrameIBlend, iBlend, &QCheckBox::setChecked);
    connect(editor, &E::setFrameIOffset, iOffset, &QCheckBox::setChecked);
    connect(editor, &E::setFrameIScale, iScale, &QCheckBox::setChecked);
    connect(editor, &E::setFrameIAngle, iAngle, &QCheckBox::setChecked);
    connect(editor, &E::flushFields, this, &QAnimationsPanel::flush);
    // ... and the panel tells the editor what the user changed.
    connect(selection, &QSlider::valueChanged, editor, &E::selPosChanged);
    connect(number, &QSpinBox::valueChanged, editor, &E::numChanged);
    connect(name, &QLineEdit::editingFinished, editor,
            [this, editor]() { editor->nameChanged(name->text()); });
    connect(frameSelection, &QSlider::valueChanged, editor, &E::frameSelPosChanged);
    connect(group, &QSpinBox::valueChanged, editor, &E::frameGrpChanged);
    connect(image, &QSpinBox::valueChanged, editor, &E::frameNumChanged);
    connect(x, &QSpinBox::valueChanged, editor, &E::frameXChanged);
    connect(y, &QSpinBox::valueChanged, editor, &E::frameYChanged);
    connect(time, &QSpinBox::valueChanged, editor, &E::frameTimeChanged);
    connect(flip, &QComboBox::currentIndexChanged, editor, &E::frameFlipChanged);
    connect(trans, &QComboBox::currentIndexChanged, editor, &E::frameTransChanged);
    connect(src, &QSpinBox::valueChanged, editor, &E::frameSrcChanged);
    connect(dst, &QSpinBox::valueChanged, editor, &E::frameDstChanged);
    connect(loop, &QCheckBox::toggled, editor, &E::frameLoopChanged);
    connect(scaleX, &QDoubleSpinBox::valueChanged, editor, &E::frameScaleXChanged);
    connect(scaleY, &QDoubleSpinBox::valueChanged, editor, &E::frameScaleYChanged);
    connect(angle, &QDoubleSpinBox::valueChanged, editor, &E::frameAngleChanged);
    connect(iBlend, &QCheckBox::toggled, editor, &E::frameIBlendChanged);
    connect(iOffset, &QCheckBox::toggled, editor, &E::frameIOffsetChanged);
    connect(iScale, &QCheckBox::toggled, editor, &E::frameIScaleChanged);
    connect(iAngle, &QCheckBox::toggled, editor, &E::frameIAngleChanged);
    connect(onion, &QCheckBox::toggled, editor, &E::onionChanged);
    connect(editor, &E::setOnion, onion, &QCheckBox::setChecked);
    setEnabled(false);
}

QSpinBox* QAnimationsPanel::spin(const char* objectName, int minimum, int maximum)
{
    auto* box = new QSpinBox(this);
    box->setObjectName(QLatin1String(objectName));
    box->setRange(minimum, maximum);
    // A value reaches the model when typing ends, so a number typed digit by digit is one undo step.
    box->setKeyboardTracking(false);
    return box;
}

QDoubleSpinBox* QAnimationsPanel::real(const char* objectName, double minimum, double maximum, int decimals)
{
    auto* box = new QDoubleSpinBox(this);
    box->setObjectName(QLatin1String(objectName));
    box->setRange(minimum, maximum);
    box->setDecimals(decimals);
    box->setSingleStep(decimals > 2 ? 0.1 : 1);
    box->setKeyboardTracking(false);
    return box;
}

QCheckBox* QAnimationsPanel::check(const char* objectName, const QString& text)
{
    auto* box = new QCheckBox(text, this);
    box->setObjectName(QLatin1String(objectName));
    return box;
}

void QAnimationsPanel::flush()
{
    for (QSpinBox* box : {number, group, image, x, y, time, src, dst})
        if (box->hasFocus()) box->interpretText();
    for (QDoubleSpinBox* box : {scaleX, scaleY, angle})
        if (box->hasFocus()) box->interpretText();
    if (name->hasFocus()) emit name->editingFinished();
}

QToolButton* QAnimationsPanel::addCommand(QAction* action)
{
    auto* grid = static_cast<QGridLayout*>(commands->layout());
    auto* button = new QToolButton(commands);
    button->setDefaultAction(action);
    button->setObjectName(action->objectName().isEmpty() ? action->text() : action->objectName());
    const int count = grid->count();
    grid->addWidget(button, count / 4, count % 4);
    return button;
}
