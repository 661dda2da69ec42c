#include "QProjectImportDlg.h"

#include "QGroupRangeBox.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

QProjectImportDlg::QProjectImportDlg(const QStringList& entries, const QString& allText,
                                     const QString& groupText, QWidget* parent)
    : QDialog(parent), projects(new QListWidget(this)), all(new QRadioButton(allText, this)),
      group(new QRadioButton(groupText, this)), groupRange(new QGroupRangeBox(tr("Group:"), this))
{
    setWindowTitle(tr("Import from a project"));
    projects->setObjectName(QStringLiteral("projects"));
    all->setObjectName(QStringLiteral("all"));
    group->setObjectName(QStringLiteral("group"));
    projects->addItems(entries);
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
        ok->setEnabled(chosen() >= 0);
    };
    connect(group, &QRadioButton::toggled, this, follow);
    connect(projects, &QListWidget::currentRowChanged, this, follow);
    connect(projects, &QListWidget::itemDoubleClicked, this, &QDialog::accept);
    if (!entries.isEmpty()) projects->setCurrentRow(0);
    follow();
    resize(340, 380);
}

int QProjectImportDlg::chosen() const
{
    const int row = projects->currentRow();
    return row >= 0 && row < projects->count() ? row : -1;
}

bool QProjectImportDlg::wholeFile() const
{
    return all->isChecked();
}
