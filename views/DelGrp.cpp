#include "DelGrp.h"

#include "QGroupRangeBox.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QVBoxLayout>

DelGrp::DelGrp(int group, QWidget* parent)
    : QDialog(parent), groupRange(new QGroupRangeBox(tr("Group:"), this))
{
    setObjectName(QStringLiteral("DelGrp"));
    setWindowTitle(tr("Delete group"));
    auto* column = new QVBoxLayout(this);
    auto* label = new QLabel(tr("The sprites of the group below are deleted: all of them, or only those "
                                "whose numbers lie in the run."),
                             this);
    label->setWordWrap(true);
    column->addWidget(label);
    column->addWidget(groupRange);
    groupRange->setGroup(group);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    column->addWidget(buttons);
}
