#include "sprimport.h"

#include "QGroupRangeBox.h"
#include "QSprites.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

sprimport::sprimport(const QList<Source>& sources, QWidget* parent)
    : QDialog(parent), sources(sources), projects(new QListWidget(this)),
      all(new QRadioButton(tr("All sprites"), this)),
      group(new QRadioButton(tr("The sprites of a group"), this)),
      groupRange(new QGroupRangeBox(tr("Group:"), this))
{
    setObjectName(QStringLiteral("sprimport"));
    setWindowTitle(tr("Import from a project"));
    projects->setObjectName(QStringLiteral("projects"));
    all->setObjectName(QStringLiteral("all"));
    group->setObjectName(QStringLiteral("group"));
    for (const Source& entry : sources) {
        const uint count = entry.second ? entry.second->count() : 0;
        projects->addItem(tr("%1 (%n sprite(s))", nullptr, int(count)).arg(entry.first));
    }
    all->setChecked(true);

    auto* column = new QVBoxLayout(this);
    column->addWidget(new QLabel(tr("Project:"), this));
    column->addWidget(projects, 1);
    column->addWidget(all);
    column->addWidget(group);
    column->addWidget(groupRange);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    column->addWidget(buttons);
    QPushButton* ok = buttons->button(QDialogButtonBox::Ok);
    const auto follow = [this, ok]() {
        groupRange->setEnabled(group->isChecked());
        ok->setEnabled(source() != nullptr);
    };
    connect(group, &QRadioButton::toggled, this, follow);
    connect(projects, &QListWidget::currentRowChanged, this, follow);
    connect(projects, &QListWidget::itemDoubleClicked, this, &QDialog::accept);
    if (!sources.isEmpty()) projects->setCurrentRow(0);
    follow();
    resize(340, 380);
}

QSprites* sprimport::source() const
{
    const int row = projects->currentRow();
    return row >= 0 && row < sources.size() ? sources.at(row).second : nullptr;
}

QList<uint> sprimport::rows() const
{
    const QSprites* chosen = source();
    if (!chosen) return {};
    return chosen->rangeRows(all->isChecked(), groupRange->group(), groupRange->allNumbers(),
                             groupRange->from(), groupRange->to());
}
