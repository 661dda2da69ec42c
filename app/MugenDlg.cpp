#include "MugenDlg.h"

#include "QUserDialogs.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileInfo>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QToolButton>

QList<QPair<const char*, const char*>> MugenDlg::presetTable()
{
    return {{QT_TR_NOOP("Current char vs current char"), "%0 %0"},
            {QT_TR_NOOP("Current char vs current char AI"), "%0 %0 -p2.ai 1"},
            {QT_TR_NOOP("Current char vs KFM"), "%0 kfm"},
            {QT_TR_NOOP("Current char vs KFM AI"), "%0 kfm -p2.ai 1"},
            {QT_TR_NOOP("KFM vs KFM on current Stage"), "kfm kfm -s %0"},
            {QT_TR_NOOP("Current motif"), "-r %0"},
            {QT_TR_NOOP("KFM vs KFM on current motif"), "kfm kfm -r %0"},
            {QT_TR_NOOP("Custom"), nullptr}};
}

MugenDlg::MugenDlg(const QMugenEntry& entry, QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("MugenDlg"));
    setWindowTitle(tr("M.U.G.E.N."));
    auto* form = new QFormLayout(this);
    name = new QLineEdit(entry.name, this);
    exe = new QLineEdit(entry.exe, this);
    icon = new QLineEdit(entry.icon, this);
    params = new QLineEdit(entry.params, this);
    presetBox = new QComboBox(this);
    const auto table = presetTable();
    int matching = int(table.size()) - 1;
    for (int row = 0; row < table.size(); ++row) {
        presetBox->addItem(tr(table.at(row).first));
        if (table.at(row).second && entry.params == QLatin1String(table.at(row).second) &&
            !entry.params.isEmpty())
            matching = row;
    }
    presetBox->setCurrentIndex(matching);
    connect(presetBox, qOverload<int>(&QComboBox::activated), this, &MugenDlg::presetChosen);
    const auto withBrowse = [this](QLineEdit* field, void (MugenDlg::*browse)()) {
        auto* row = new QHBoxLayout;
        row->addWidget(field, 1);
        auto* button = new QToolButton(this);
        button->setText(QStringLiteral("..."));
        connect(button, &QToolButton::clicked, this, browse);
        row->addWidget(button);
        return row;
    };
    form->addRow(tr("Name:"), name);
    form->addRow(tr("Executable:"), withBrowse(exe, &MugenDlg::browseExe));
    form->addRow(tr("Icon:"), withBrowse(icon, &MugenDlg::browseIcon));
    form->addRow(tr("Preset:"), presetBox);
    form->addRow(tr("Parameters:"), params);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    form->addRow(buttons);
    resize(480, sizeHint().height());
}

QMugenEntry MugenDlg::entry() const
{
    return {name->text(), exe->text(), params->text(), icon->text()};
}

void MugenDlg::presetChosen(int row)
{
    const char* line = presetTable().value(row).second;
    if (line) params->setText(QLatin1String(line));
}

void MugenDlg::browseExe()
{
    // The engine is a Windows program; on other systems it runs through a launcher of any name.
    const QString path = QUserDialogs::getOpenFileName(tr("M.U.G.E.N. executable"), exe->text(),
                                                       tr("M.U.G.E.N. executable (*.exe);;All files (*)"));
    if (!path.isEmpty()) exe->setText(path);
}

void MugenDlg::browseIcon()
{
    const QString path = QUserDialogs::getOpenFileName(tr("M.U.G.E.N. icon"), icon->text(),
                                                       tr("Portable Network Graphic (*.png)"));
    if (!path.isEmpty()) icon->setText(path);
}
