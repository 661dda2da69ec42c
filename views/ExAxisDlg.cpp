#include "ExAxisDlg.h"

#include <QCloseEvent>
#include <QFormLayout>
#include <QSpinBox>

ExAxisDlg::ExAxisDlg(QWidget* parent) : QDialog(parent), x(new QSpinBox(this)), y(new QSpinBox(this))
{
    setWindowTitle(tr("Extra cross"));
    setObjectName(QStringLiteral("ExAxisDlg"));
    auto* form = new QFormLayout(this);
    for (QSpinBox* box : {x, y}) {
        box->setRange(-30000, 30000);
        connect(box, &QSpinBox::valueChanged, this, &ExAxisDlg::valueChanged);
    }
    x->setObjectName(QStringLiteral("x"));
    y->setObjectName(QStringLiteral("y"));
    form->addRow(tr("X:"), x);
    form->addRow(tr("Y:"), y);
}

QPoint ExAxisDlg::value() const
{
    return QPoint(x->value(), y->value());
}

void ExAxisDlg::setValue(QPoint position)
{
    guard = true;
    x->setValue(position.x());
    y->setValue(position.y());
    guard = false;
}

void ExAxisDlg::valueChanged(int)
{
    if (!guard) emit axisChanged(value());
}

void ExAxisDlg::closeEvent(QCloseEvent* event)
{
    QDialog::closeEvent(event);
    emit axisClose();
}
