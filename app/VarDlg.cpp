#include "VarDlg.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>

VarDlg::VarDlg(QWidget* parent) : QDialog(parent)
{
    setWindowTitle(tr("Variable log"));
    format = new QComboBox(this);
    format->setObjectName(QStringLiteral("format"));
    format->addItems({tr("StateDef number"), tr("StateDef name"), tr("StateDef number and name")});
    onlyUsed = new QCheckBox(tr("Only used variables"), this);
    onlyUsed->setObjectName(QStringLiteral("onlyUsed"));
    onePerLine = new QCheckBox(tr("One per line"), this);
    onePerLine->setObjectName(QStringLiteral("onePerLine"));
    floats = new QCheckBox(tr("Float"), this);
    floats->setObjectName(QStringLiteral("floats"));
    floats->setChecked(true);
    integers = new QCheckBox(tr("Integer"), this);
    integers->setObjectName(QStringLiteral("integers"));
    integers->setChecked(true);

    auto* form = new QFormLayout;
    form->addRow(tr("Format:"), format);
    auto* kinds = new QHBoxLayout;
    kinds->addWidget(integers);
    kinds->addWidget(floats);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(onlyUsed);
    layout->addWidget(onePerLine);
    layout->addLayout(kinds);
    layout->addWidget(buttons);
}

QVarLog::Options VarDlg::options() const
{
    QVarLog::Options options;
    options.format = QVarLog::Format(format->currentIndex());
    options.onlyUsed = onlyUsed->isChecked();
    options.onePerLine = onePerLine->isChecked();
    options.floats = floats->isChecked();
    options.integers = integers->isChecked();
    return options;
}
