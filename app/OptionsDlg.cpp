#include "OptionsDlg.h"

#include "QActionManager.h"
#include "QCodecList.h"
#include "QKeySequenceDelegate.h"
#include "QMugenModel.h"
#include "QMugenPage.h"
#include "QTextEncoding.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFontComboBox>
#include <QFormLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QSpinBox>
#include <QTabWidget>
#include <QTableView>
#include <QVBoxLayout>

OptionsDlg::OptionsDlg(QActionManager* manager, QWidget* parent) : QDialog(parent), actions(manager)
{
    setObjectName(QStringLiteral("OptionsDlg"));
    setWindowTitle(tr("Options"));
    auto* layout = new QVBoxLayout(this);
    m_pages = new QTabWidget(this);
    m_pages->setObjectName(QStringLiteral("pages"));
    m_pages->addTab(makeKeysPage(), tr("Keys"));
    m_pages->addTab(makeCodePage(), tr("Code editor"));
    if (mugenModel) m_pages->addTab(new QMugenPage(mugenModel, m_pages), tr("M.U.G.E.N."));
    layout->addWidget(m_pages);

    auto* buttons =
        new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Apply | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &OptionsDlg::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(buttons->button(QDialogButtonBox::Apply), &QPushButton::clicked, this, &OptionsDlg::apply);
    layout->addWidget(buttons);
    load();
}

QWidget* OptionsDlg::makeKeysPage()
{
    auto* page = new QWidget(this);
    auto* layout = new QVBoxLayout(page);
    keysView = new QTableView(page);
    keysView->setObjectName(QStringLiteral("keysTable"));
    keysView->setModel(actions);
    keysView->setItemDelegateForColumn(1, new QKeySequenceDelegate(keysView));
    keysView->setSelectionBehavior(QAbstractItemView::SelectRows);
    keysView->setSelectionMode(QAbstractItemView::SingleSelection);
    keysView->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                              QAbstractItemView::SelectedClicked);
    keysView->verticalHeader()->hide();
    keysView->horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
    layout->addWidget(keysView);
    auto* clear = new QPushButton(tr("Clear key"), page);
    clear->setObjectName(QStringLiteral("clearKey"));
    connect(clear, &QPushButton::clicked, this, &OptionsDlg::clearKey);
    layout->addWidget(clear, 0, Qt::AlignLeft);
    return page;
}

QCheckBox* OptionsDlg::addCheck(const QString& key, const QString& text, QWidget* parent)
{
    auto* box = new QCheckBox(text, parent);
    box->setObjectName(key);
    checks.insert(key, box);
    return box;
}

QWidget* OptionsDlg::makeCodePage()
{
    auto* page = new QWidget(this);
    auto* form = new QFormLayout(page);
    form->addRow(addCheck(QStringLiteral("code_line_numbers"), tr("Show line numbers"), page));
    form->addRow(addCheck(QStringLiteral("code_folding_markers"), tr("Show folding markers"), page));
    form->addRow(addCheck(QStringLiteral("code_highlight_line"), tr("Highlight the current line"), page));
    form->addRow(addCheck(QStringLiteral("code_highlight_blocks"), tr("Highlight the current block"), page));
    form->addRow(
        addCheck(QStringLiteral("code_paren_matching"), tr("Highlight between matching brackets"), page));
    m_fontName = new QFontComboBox(page);
    m_fontName->setObjectName(QStringLiteral("font_name"));
    m_fontName->setFontFilters(QFontComboBox::MonospacedFonts);
    form->addRow(tr("Font:"), m_fontName);
    m_fontSize = new QSpinBox(page);
    m_fontSize->setObjectName(QStringLiteral("font_size"));
    m_fontSize->setRange(4, 72);
    form->addRow(tr("Font size:"), m_fontSize);
    m_codePage = new QComboBox(page);
    m_codePage->setObjectName(QStringLiteral("default_codepage"));
    const int count = qMax(1, int(codecList().size()));
    for (int index = 0; index < count; ++index)
        m_codePage->addItem(QTextEncoding::codecName(index));
    form->addRow(tr("Default code page:"), m_codePage);
    form->addRow(addCheck(QStringLiteral("confirm_close"), tr("Confirm closing the program"), page));
    form->addRow(addCheck(QStringLiteral("confirm_delete"), tr("Confirm deleting"), page));
    return page;
}

void OptionsDlg::load()
{
    if (!mugenModel) return;
    QMugenModel& config = *mugenModel;
    for (auto it = checks.cbegin(); it != checks.cend(); ++it)
        it.value()->setChecked(config[it.key()].toBool());
    // A family the system lacks is kept as written, not replaced by the first font of the list.
    const QString family = config[QStringLiteral("font_name")].toString();
    m_fontName->setEditText(family);
    m_fontName->setCurrentFont(QFont(family));
    m_fontName->setEditText(family);
    m_fontSize->setValue(config[QStringLiteral("font_size")].toInt());
    const int codePage = config[QStringLiteral("default_codepage")].toInt();
    m_codePage->setCurrentIndex(codePage >= 0 && codePage < m_codePage->count() ? codePage : 0);
}

void OptionsDlg::store()
{
    if (!mugenModel) return;
    QMugenModel& config = *mugenModel;
    for (auto it = checks.cbegin(); it != checks.cend(); ++it)
        config[it.key()] = it.value()->isChecked();
    const QString family = m_fontName->currentText().trimmed();
    if (!family.isEmpty()) config[QStringLiteral("font_name")] = family;
    config[QStringLiteral("font_size")] = m_fontSize->value();
    config[QStringLiteral("default_codepage")] = qMax(0, m_codePage->currentIndex());
}

void OptionsDlg::apply()
{
    store();
    emit applied();
}

void OptionsDlg::accept()
{
    apply();
    QDialog::accept();
}

void OptionsDlg::clearKey()
{
    const QModelIndex current = keysView->currentIndex();
    if (!current.isValid()) return;
    actions->setData(actions->index(current.row(), 1), QVariant::fromValue(QKeySequence()), Qt::EditRole);
}
