#include "AlignDlg.h"

#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QSpinBox>
#include <QToolButton>
#include <QVBoxLayout>

const char* const AlignDlg::commands[9] = {
    "spr_align_topleft",    "spr_align_topcenter",    "spr_align_topright",
    "spr_align_centerleft", "spr_align_centercenter", "spr_align_centerright",
    "spr_align_bottomleft", "spr_align_bottomcenter", "spr_align_bottomright"};

AlignDlg::AlignDlg(QWidget* parent) : QDialog(parent, Qt::Tool), x(new QSpinBox(this)), y(new QSpinBox(this))
{
    setObjectName(QStringLiteral("AlignDlg"));
    setWindowTitle(tr("Align"));
    // Arrows point from the centre to the point of the sprite that goes on the crossing.
    static const char16_t arrows[9] = {u'\u2196', u'\u2191', u'\u2197', u'\u2190', u'\u25CF',
                                       u'\u2192', u'\u2199', u'\u2193', u'\u2198'};
    const QString tips[9] = {tr("Top left corner"),
                             tr("Middle of the top"),
                             tr("Top right corner"),
                             tr("Middle of the left"),
                             tr("Centre"),
                             tr("Middle of the right"),
                             tr("Bottom left corner"),
                             tr("Middle of the bottom"),
                             tr("Bottom right corner")};
    auto* column = new QVBoxLayout(this);
    auto* grid = new QGridLayout;
    grid->setSpacing(2);
    for (int which = 0; which < 9; ++which) {
        auto* button = new QToolButton(this);
        button->setObjectName(QLatin1String(commands[which]));
        button->setText(QString(QChar(arrows[which])));
        button->setToolTip(tips[which]);
        button->setMinimumSize(32, 32);
        button->setAutoRaise(true);
        connect(button, &QToolButton::clicked, this, [this, which]() { emit alignRequested(which); });
        grid->addWidget(button, which / 3, which % 3);
        buttons[which] = button;
    }
    column->addLayout(grid);

    auto* crossing = new QGroupBox(tr("Guide lines"), this);
    auto* form = new QFormLayout(crossing);
    x->setObjectName(QStringLiteral("x"));
    y->setObjectName(QStringLiteral("y"));
    for (QSpinBox* box : {x, y}) {
        box->setRange(-30000, 30000);
        connect(box, &QSpinBox::valueChanged, this, [this]() {
            if (!guard) emit guidesChanged(QPoint(x->value(), y->value()));
        });
    }
    form->addRow(tr("Vertical:"), x);
    form->addRow(tr("Horizontal:"), y);
    column->addWidget(crossing);
}

void AlignDlg::setGuides(QPoint crossing)
{
    guard = true;
    x->setValue(crossing.x());
    y->setValue(crossing.y());
    guard = false;
}

void AlignDlg::setAlignEnabled(bool on)
{
    for (QToolButton* button : buttons)
        button->setEnabled(on);
}
