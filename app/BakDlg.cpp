#include "BakDlg.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

BakDlg::BakDlg(const QStringList& titles, QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("BakDlg"));
    setWindowTitle(tr("Load backup"));
    auto* column = new QVBoxLayout(this);
    column->addWidget(new QLabel(tr("Choose a backup to be loaded:"), this));
    m_list = new QListWidget(this);
    m_list->addItems(titles);
    m_list->setCurrentRow(titles.isEmpty() ? -1 : 0);
    column->addWidget(m_list, 1);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    column->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_list, &QListWidget::itemDoubleClicked, this, &QDialog::accept);
    const auto enable = [this, buttons]() {
        buttons->button(QDialogButtonBox::Ok)->setEnabled(m_list->currentRow() >= 0);
    };
    connect(m_list, &QListWidget::currentRowChanged, this, enable);
    enable();
    resize(360, 300);
}

int BakDlg::chosen() const
{
    return m_list->currentRow();
}
