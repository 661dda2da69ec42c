#include "TabImport.h"

#include "QGroupRangeBox.h"
#include "QSound.h"
#include "QSounds.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

TabImport::TabImport(const QList<Source>& sources, QWidget* parent)
    : QDialog(parent), sources(sources), projects(new QListWidget(this)),
      all(new QRadioButton(tr("All sounds"), this)),
      group(new QRadioButton(tr("The sounds of a group"), this)),
      groupRange(new QGroupRangeBox(tr("Group:"), this))
{
    setObjectName(QStringLiteral("TabImport"));
    setWindowTitle(tr("Import from a project"));
    projects->setObjectName(QStringLiteral("projects"));
    all->setObjectName(QStringLiteral("all"));
    group->setObjectName(QStringLiteral("group"));
    for (const Source& entry : sources) {
        const uint count = entry.second ? entry.second->count() : 0;
        projects->addItem(tr("%1 (%n sound(s))", nullptr, int(count)).arg(entry.first));
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

QSounds* TabImport::source() const
{
    const int row = projects->currentRow();
    return row >= 0 && row < sources.size() ? sources.at(row).second : nullptr;
}

QList<uint> TabImport::rows() const
{
    const QSounds* chosen = source();
    if (!chosen) return {};
    QList<uint> result;
    const bool whole = all->isChecked();
    const uint wanted = uint(groupRange->group());
    const bool allNumbers = groupRange->allNumbers();
    const uint from = uint(qMax(0, groupRange->from()));
    const uint to = uint(qMax(0, groupRange->to()));
    for (uint i = 0; i < chosen->count(); ++i) {
        const QSound* sound = chosen->at(i);
        if (whole ||
            (sound->group == wanted && (allNumbers || (sound->sample >= from && sound->sample <= to))))
            result << i;
    }
    return result;
}
