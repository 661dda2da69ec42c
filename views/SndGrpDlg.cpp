#include "SndGrpDlg.h"

#include "QGroupRangeBox.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QSpinBox>
#include <QVBoxLayout>

SndGrpDlg::SndGrpDlg(Mode mode, int group, QWidget* parent)
    : QDialog(parent), groupRange(new QGroupRangeBox(tr("Group:"), this))
{
    setObjectName(QStringLiteral("SndGrpDlg"));
    setWindowTitle(mode == Delete ? tr("Delete group") : tr("Renumber group"));
    auto* column = new QVBoxLayout(this);
    auto* label = new QLabel(mode == Delete ? tr("The sounds of the group below are deleted: all of them, or "
                                                 "only those whose sample numbers lie in the run.")
                                            : tr("The sounds of the group below move to another group: all "
                                                 "of them, or only those whose sample numbers lie in the "
                                                 "run."),
                             this);
    label->setWordWrap(true);
    column->addWidget(label);
    column->addWidget(groupRange);
    groupRange->setGroup(group);
    if (mode == Rename) {
        toGroup = new QSpinBox(this);
        toGroup->setObjectName(QStringLiteral("toGroup"));
        toGroup->setRange(0, 65535);
        toGroup->setValue(group);
        auto* form = new QFormLayout;
        form->addRow(tr("To the group:"), toGroup);
        column->addLayout(form);
    }
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    column->addWidget(buttons);
}
