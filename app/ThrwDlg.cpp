#include "ThrwDlg.h"

#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QSpinBox>
#include <QVBoxLayout>

ThrwDlg::ThrwDlg(QWidget* parent) : QDialog(parent)
{
    setWindowTitle(tr("Throw"));
    const QThrowWriter defaults;
    // State and animation numbers below 0 belong to the engine's special states.
    stateDef = integer(0, 2147483636, defaults.stateDef, "StateDef");
    p1AnimStart = integer(0, 2147483647, defaults.p1AnimStart, "P1AnimStart");
    p1Anim = integer(0, 2147483647, defaults.p1Anim, "P1Anim");
    p2Anim = integer(0, 2147483647, defaults.p2Anim, "P2Anim");
    xVelocity = real(defaults.xVelocity, "XVelocity");
    yVelocity = real(defaults.yVelocity, "YVelocity");
    bindCount = integer(1, 9999, defaults.bindCount, "BindCount");
    sprPriority = integer(-5, 4, defaults.sprPriority, "SprPriority");

    auto* form = new QFormLayout;
    form->addRow(tr("StateDef"), stateDef);
    form->addRow(tr("P1AnimStart"), p1AnimStart);
    form->addRow(tr("P1Anim"), p1Anim);
    form->addRow(tr("P2Anim"), p2Anim);
    form->addRow(tr("XVelocity"), xVelocity);
    form->addRow(tr("YVelocity"), yVelocity);
    form->addRow(tr("BindCount"), bindCount);
    form->addRow(tr("SprPriority"), sprPriority);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(buttons);
}

QSpinBox* ThrwDlg::integer(int minimum, int maximum, int value, const char* name)
{
    auto* box = new QSpinBox(this);
    box->setObjectName(QLatin1String(name));
    box->setRange(minimum, maximum);
    box->setValue(value);
    return box;
}

QDoubleSpinBox* ThrwDlg::real(double value, const char* name)
{
    auto* box = new QDoubleSpinBox(this);
    box->setObjectName(QLatin1String(name));
    box->setRange(-99, 99);
    box->setDecimals(2);
    box->setValue(value);
    return box;
}

QThrowWriter ThrwDlg::values() const
{
    QThrowWriter values;
    values.stateDef = stateDef->value();
    values.p1AnimStart = p1AnimStart->value();
    values.p1Anim = p1Anim->value();
    values.p2Anim = p2Anim->value();
    values.xVelocity = xVelocity->value();
    values.yVelocity = yVelocity->value();
    values.bindCount = bindCount->value();
    values.sprPriority = sprPriority->value();
    return values;
}
