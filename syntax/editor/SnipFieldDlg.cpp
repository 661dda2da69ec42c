#include "SnipFieldDlg.h"

#include "QSnipFieldsModel.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QVBoxLayout>

SnipFieldDlg::SnipFieldDlg(QWidget* parent) : QDialog(parent)
{
    setWindowTitle(tr("Field"));
    auto* layout = new QVBoxLayout(this);
    auto* form = new QFormLayout;
    layout->addLayout(form);
    name = new QLineEdit(this);
    title = new QLineEdit(this);
    type = new QComboBox(this);
    type->addItems(QSnipFieldsModel::typeTitles());
    values = new QLineEdit(this);
    valueTitles = new QLineEdit(this);
    form->addRow(tr("Name:"), name);
    form->addRow(tr("Title:"), title);
    form->addRow(tr("Type:"), type);
    form->addRow(tr("Values:"), values);
    form->addRow(tr("Values (title):"), valueTitles);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(buttons);
    connect(type, &QComboBox::currentIndexChanged, this, &SnipFieldDlg::typeChanged);
    typeChanged();
}

void SnipFieldDlg::typeChanged()
{
    const bool items = type->currentIndex() == 3;
    values->setEnabled(items);
    valueTitles->setEnabled(items);
}

QSnippetField SnipFieldDlg::field() const
{
    QSnippetField field;
    field.name = name->text().trimmed();
    field.title = title->text();
    field.type = QSnipFieldsModel::types().value(type->currentIndex());
    field.column = column;
    if (field.type == QLatin1String("items")) {
        const auto split = [](const QLineEdit* line) {
            return line->text().isEmpty() ? QStringList() : line->text().split(QLatin1Char(','));
        };
        field.values = split(values);
        field.valueTitles = split(valueTitles);
    }
    return field;
}

void SnipFieldDlg::setField(const QSnippetField& field)
{
    name->setText(field.name);
    title->setText(field.title);
    type->setCurrentIndex(qMax(0, int(QSnipFieldsModel::types().indexOf(field.type))));
    values->setText(field.values.join(QLatin1Char(',')));
    valueTitles->setText(field.valueTitles.join(QLatin1Char(',')));
    column = field.column;
}
