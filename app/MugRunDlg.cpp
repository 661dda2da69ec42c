#include "MugRunDlg.h"

#include "QMugenModel.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QListView>
#include <QVBoxLayout>

MugRunDlg::MugRunDlg(QMugenModel* model, int row, QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("MugRunDlg"));
    setWindowTitle(tr("Run in M.U.G.E.N."));
    auto* column = new QVBoxLayout(this);
    column->addWidget(new QLabel(tr("Choose the target:"), this));
    m_list = new QListView(this);
    m_list->setModel(model);
    m_list->setCurrentIndex(model->index(qBound(0, row, qMax(0, model->rowCount() - 1)), 0));
    column->addWidget(m_list, 1);
    auto* note =
        new QLabel(tr("M.U.G.E.N. will fail if you try to test a char created with a new format in an "
                      "older version (default format is 1.1)."),
                   this);
    note->setWordWrap(true);
    column->addWidget(note);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    column->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_list, &QListView::doubleClicked, this, &QDialog::accept);
}

int MugRunDlg::chosen() const
{
    return m_list->currentIndex().row();
}
