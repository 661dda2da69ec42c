#include "QPalettesPanel.h"

#include "QPaletteWidget.h"
#include "QPalettesEditor.h"

#include <QAction>
#include <QFormLayout>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QSlider>
#include <QSpinBox>
#include <QToolButton>
#include <QVBoxLayout>

QPalettesPanel::QPalettesPanel(QPalettesEditor* editor, QWidget* parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("pal_panel"));
    auto* layout = new QVBoxLayout(this);

    selection = new QSlider(Qt::Horizontal, this);
    selection->setObjectName(QStringLiteral("pal_sel"));
    selection->setRange(0, 0);
    position = new QLabel(QStringLiteral("0 / 0"), this);
    position->setObjectName(QStringLiteral("pal_pos_text"));
    auto* row = new QHBoxLayout;
    row->addWidget(selection, 1);
    row->addWidget(position);
    layout->addLayout(row);

    // Two buttons a row keeps the panel as narrow as the side it stands in.
    navigation = new QWidget(this);
    auto* navigationGrid = new QGridLayout(navigation);
    navigationGrid->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(navigation);

    auto* form = new QFormLayout;
    group = spin("pal_grp");
    number = spin("pal_num");
    form->addRow(tr("Group:"), group);
    form->addRow(tr("Number:"), number);
    layout->addLayout(form);

    grid = new QPaletteWidget(this);
    grid->setObjectName(QStringLiteral("pal_colors"));
    layout->addWidget(grid);

    commands = new QWidget(this);
    auto* commandGrid = new QGridLayout(commands);
    commandGrid->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(commands);
    layout->addStretch(1);

    // The editor tells the panel what to show ...
    connect(editor, &QPalettesEditor::enabled, this, &QWidget::setEnabled);
    connect(editor, &QPalettesEditor::setMaximum, this,
            [this](int count) { selection->setRange(0, qMax(0, count - 1)); });
    connect(editor, &QPalettesEditor::setSelPos, selection, &QSlider::setValue);
    connect(editor, &QPalettesEditor::setPosText, position, &QLabel::setText);
    connect(editor, &QPalettesEditor::setGroup, group, &QSpinBox::setValue);
    connect(editor, &QPalettesEditor::setNumber, number, &QSpinBox::setValue);
    connect(editor, &QPalettesEditor::setColorCount, grid, &QPaletteWidget::setColorCount);
    // ... and the panel tells the editor what the user changed.
    connect(selection, &QSlider::valueChanged, editor, &QPalettesEditor::selPosChanged);
    connect(group, &QSpinBox::valueChanged, editor, &QPalettesEditor::grpChanged);
    connect(number, &QSpinBox::valueChanged, editor, &QPalettesEditor::numChanged);
    connect(grid, &QPaletteWidget::changed, editor, &QPalettesEditor::changed);
    connect(grid, &QPaletteWidget::colorDblClick, editor, &QPalettesEditor::colorDblClicked);
    connect(grid, &QPaletteWidget::colorMoved, editor, &QPalettesEditor::colorMoved);
    setEnabled(false);
}

QSpinBox* QPalettesPanel::spin(const char* name)
{
    auto* box = new QSpinBox(this);
    box->setObjectName(QLatin1String(name));
    box->setRange(0, 65535);
    // A value reaches the model when typing ends, so a number typed digit by digit is one undo step.
    box->setKeyboardTracking(false);
    return box;
}

QToolButton* QPalettesPanel::addButton(QWidget* holder, QAction* action)
{
    auto* button = new QToolButton(holder);
    button->setDefaultAction(action);
    button->setAutoRaise(true);
    button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    button->setObjectName(action->objectName().isEmpty() ? action->text() : action->objectName());
    return button;
}

QToolButton* QPalettesPanel::addNavigation(QAction* action)
{
    auto* navigationGrid = static_cast<QGridLayout*>(navigation->layout());
    QToolButton* button = addButton(navigation, action);
    const int count = navigationGrid->count();
    navigationGrid->addWidget(button, count / 2, count % 2);
    return button;
}

QToolButton* QPalettesPanel::addCommand(QAction* action)
{
    auto* commandGrid = static_cast<QGridLayout*>(commands->layout());
    QToolButton* button = addButton(commands, action);
    const int count = commandGrid->count();
    commandGrid->addWidget(button, count / 2, count % 2);
    return button;
}
