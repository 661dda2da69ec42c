#include "SnipDlg.h"

#include "QDialogRunner.h"
#include "QSnipFieldsModel.h"
#include "QSnippetManager.h"
#include "QUserDialogs.h"
#include "SnipFieldDlg.h"

#include <QDialogButtonBox>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

SnipDlg::SnipDlg(QSnippetManager* manager, const QString& name, const QSnippet& snippet, QWidget* parent)
    : QDialog(parent), manager(manager), name(name)
{
    setWindowTitle(tr("Code snippet"));
    resize(640, 480);
    auto* layout = new QVBoxLayout(this);
    code = new QPlainTextEdit(this);
    code->setObjectName(QStringLiteral("snippetCode"));
    code->setLineWrapMode(QPlainTextEdit::NoWrap);
    code->setPlainText(snippet.code);
    layout->addWidget(code, 2);

    model = new QSnipFieldsModel(this);
    model->setFields(snippet.fields);
    view = new QTableView(this);
    view->setModel(model);
    view->setSelectionBehavior(QAbstractItemView::SelectRows);
    view->setSelectionMode(QAbstractItemView::SingleSelection);
    view->horizontalHeader()->setStretchLastSection(true);
    connect(view, &QTableView::doubleClicked, this, &SnipDlg::editField);
    auto* fieldRow = new QHBoxLayout;
    fieldRow->addWidget(view, 1);
    auto* fieldButtons = new QVBoxLayout;
    const auto addButton = [this, fieldButtons](const QString& text, void (SnipDlg::*slot)()) {
        auto* button = new QPushButton(text, this);
        connect(button, &QPushButton::clicked, this, slot);
        fieldButtons->addWidget(button);
    };
    addButton(tr("Add field"), &SnipDlg::addField);
    addButton(tr("Edit field"), &SnipDlg::editField);
    addButton(tr("Remove field"), &SnipDlg::removeField);
    fieldButtons->addStretch(1);
    fieldRow->addLayout(fieldButtons);
    layout->addLayout(fieldRow, 1);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Save | QDialogButtonBox::Cancel, this);
    QPushButton* translation = buttons->addButton(tr("Save for translation"), QDialogButtonBox::ActionRole);
    connect(translation, &QPushButton::clicked, this, &SnipDlg::saveForTranslation);
    connect(buttons, &QDialogButtonBox::accepted, this, &SnipDlg::save);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(buttons);
}

QSnippet SnipDlg::snippet() const
{
    QSnippet snippet;
    snippet.fields = model->fields();
    snippet.code = code->toPlainText();
    return snippet;
}

void SnipDlg::addField()
{
    SnipFieldDlg dialog(this);
    if (QDialogRunner::run(&dialog) == QDialog::Accepted) model->append(dialog.field());
}

void SnipDlg::editField()
{
    const int row = view->currentIndex().row();
    if (row < 0) return;
    SnipFieldDlg dialog(this);
    dialog.setField(model->field(row));
    if (QDialogRunner::run(&dialog) == QDialog::Accepted) model->replace(row, dialog.field());
}

void SnipDlg::removeField()
{
    model->remove(view->currentIndex().row());
}

bool SnipDlg::save()
{
    const QString suggested = manager->path(name.isEmpty() ? tr("snippet") : name);
    const QString path = QUserDialogs::getSaveFileName(tr("Save code snippet"), suggested,
                                                       tr("Extensible Markup Language (*.xml)"));
    if (path.isEmpty()) return false;
    if (!snippet().write(path)) {
        QUserDialogs::critical(tr("Save code snippet"), tr("The file could not be written."));
        return false;
    }
    name = QFileInfo(path).completeBaseName();
    manager->scan();
    accept();
    return true;
}

bool SnipDlg::saveForTranslation()
{
    const QString base = name.isEmpty() ? tr("snippet") : name;
    const QString path = QUserDialogs::getSaveFileName(
        tr("Save for translation"), base + QLatin1String(".ts"), tr("Qt translation sources (*.ts)"));
    if (path.isEmpty()) return false;
    if (QSnippetManager::writeTranslationSource(base, snippet(), path)) return true;
    QUserDialogs::critical(tr("Save for translation"), tr("The file could not be written."));
    return false;
}
