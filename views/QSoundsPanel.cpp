#include "QSoundsPanel.h"

#include "QPositionRow.h"
#include "QSoundsEditor.h"

#include <QAction>
#include <QFormLayout>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QSlider>
#include <QSpinBox>
#include <QToolButton>
#include <QVBoxLayout>

QSoundsPanel::QSoundsPanel(QSoundsEditor* editor, QWidget* parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("snd_panel"));
    auto* layout = new QVBoxLayout(this);

    const QPositionRow top = QPositionRow::make(this, "snd");
    selection = top.slider;
    position = top.label;
    layout->addLayout(top.layout);

    auto* form = new QFormLayout;
    group = spin("snd_grp");
    number = spin("snd_num");
    form->addRow(tr("Group:"), group);
    form->addRow(tr("Sample:"), number);
    layout->addLayout(form);

    info = new QLabel(QSoundsEditor::infoText(nullptr), this);
    info->setObjectName(QStringLiteral("snd_info"));
    info->setTextInteractionFlags(Qt::TextSelectableByMouse);
    layout->addWidget(info);

    commands = new QWidget(this);
    auto* grid = new QGridLayout(commands);
    grid->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(commands);
    layout->addStretch(1);

    // The editor tells the panel what to show ...
    connect(editor, &QSoundsEditor::enabled, this, &QWidget::setEnabled);
    connect(editor, &QSoundsEditor::setMaximum, this,
            [this](int count) { selection->setRange(0, qMax(0, count - 1)); });
    connect(editor, &QSoundsEditor::setSelPos, selection, &QSlider::setValue);
    connect(editor, &QSoundsEditor::setPosText, position, &QLabel::setText);
    connect(editor, &QSoundsEditor::setGroup, group, &QSpinBox::setValue);
    connect(editor, &QSoundsEditor::setNumber, number, &QSpinBox::setValue);
    connect(editor, &QSoundsEditor::setInfoText, info, &QLabel::setText);
    connect(editor, &QSoundsEditor::flushFields, this, &QSoundsPanel::flush);
    // ... and the panel tells the editor what the user changed.
    connect(selection, &QSlider::valueChanged, editor, &QSoundsEditor::selPosChanged);
    connect(group, &QSpinBox::valueChanged, editor, &QSoundsEditor::grpChanged);
    connect(number, &QSpinBox::valueChanged, editor, &QSoundsEditor::numChanged);
    setEnabled(false);
}

QSpinBox* QSoundsPanel::spin(const char* name)
{
    auto* box = new QSpinBox(this);
    box->setObjectName(QLatin1String(name));
    box->setRange(0, 2147483647);
    // A value reaches the model when typing ends, so a number typed digit by digit is one undo step.
    box->setKeyboardTracking(false);
    return box;
}

void QSoundsPanel::flush()
{
    for (QSpinBox* box : {group, number})
        if (box->hasFocus()) box->interpretText();
}

QToolButton* QSoundsPanel::addCommand(QAction* action)
{
    auto* grid = static_cast<QGridLayout*>(commands->layout());
    auto* button = new QToolButton(commands);
    button->setDefaultAction(action);
    button->setObjectName(action->objectName().isEmpty() ? action->text() : action->objectName());
    const int count = grid->count();
    grid->addWidget(button, count / 4, count % 4);
    return button;
}
