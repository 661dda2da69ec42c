#include "SnipInsertDlg.h"

#include "QSnipField.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QVBoxLayout>

SnipInsertDlg::SnipInsertDlg(const QString& name, const QList<QSnippetField>& list, QWidget* parent)
    : QDialog(parent)
{
    setWindowTitle(name);
    auto* layout = new QVBoxLayout(this);
    auto* grid = new QGridLayout;
    layout->addLayout(grid);
    int rows[QSnippet::MaxColumn + 1] = {};
    for (const QSnippetField& description : list) {
        QSnipField* field = QSnipField::create(description);
        fields.emplace_back(field);
        const int column = field->column();
        QWidget* input = field->createWidget(this);
        input->setObjectName(description.name);
        auto* label = new QLabel(field->title() + QLatin1Char(':'), this);
        label->setBuddy(input);
        grid->addWidget(label, rows[column], column * 2);
        grid->addWidget(input, rows[column], column * 2 + 1);
        ++rows[column];
    }
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(buttons);
}

SnipInsertDlg::~SnipInsertDlg() = default;

QWidget* SnipInsertDlg::fieldWidget(int index) const
{
    return index >= 0 && index < fieldCount() ? fields[size_t(index)]->widget() : nullptr;
}

QList<QPair<QString, QString>> SnipInsertDlg::values() const
{
    QList<QPair<QString, QString>> result;
    for (const auto& field : fields)
        result.append({field->name(), field->value()});
    return result;
}
