#include "FindDlgMlt.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

FindDlgMlt::FindDlgMlt(QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("FindDlgMlt"));
    setWindowTitle(tr("Find and replace"));
    setModal(false);
    auto* layout = new QVBoxLayout(this);
    auto* fields = new QFormLayout;
    m_findTxt = new QLineEdit(this);
    m_findTxt->setObjectName(QStringLiteral("findTxt"));
    m_replaceTxt = new QLineEdit(this);
    m_replaceTxt->setObjectName(QStringLiteral("replaceTxt"));
    fields->addRow(tr("Find:"), m_findTxt);
    fields->addRow(tr("Replace with:"), m_replaceTxt);
    layout->addLayout(fields);

    auto* switches = new QGridLayout;
    const auto addCheck = [this, switches](QQuickFindOption option, const QString& text, const char* name) {
        auto* box = new QCheckBox(text, this);
        box->setObjectName(QLatin1String(name));
        const int at = int(checks.size());
        switches->addWidget(box, at / 2, at % 2);
        checks.insert(option, box);
    };
    addCheck(QQuickFindOption::RegularExpression, tr("Regular expression"), "regexp");
    addCheck(QQuickFindOption::CaseSensitive, tr("Case sensitive"), "caseSensitive");
    addCheck(QQuickFindOption::Backward, tr("Backward"), "backward");
    addCheck(QQuickFindOption::Circular, tr("Circular"), "circular");
    layout->addLayout(switches);
    allFiles = new QCheckBox(tr("All files"), this);
    allFiles->setObjectName(QStringLiteral("allFiles"));
    allFiles->setToolTip(tr("Go on through the other text files of the project"));
    layout->addWidget(allFiles);

    auto* buttons = new QDialogButtonBox(this);
    QPushButton* findButton = buttons->addButton(tr("Find"), QDialogButtonBox::ActionRole);
    findButton->setDefault(true);
    QPushButton* replaceButton = buttons->addButton(tr("Replace"), QDialogButtonBox::ActionRole);
    QPushButton* allButton = buttons->addButton(tr("Replace All"), QDialogButtonBox::ActionRole);
    buttons->addButton(QDialogButtonBox::Close);
    connect(findButton, &QPushButton::clicked, this, &FindDlgMlt::doFind);
    connect(replaceButton, &QPushButton::clicked, this, &FindDlgMlt::doReplace);
    connect(allButton, &QPushButton::clicked, this, &FindDlgMlt::doReplaceAll);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(buttons);
}

QQuickFindOptions FindDlgMlt::options() const
{
    return checkedOptions(checks);
}

void FindDlgMlt::setOption(QQuickFindOption option, bool on)
{
    if (QCheckBox* box = checks.value(option)) box->setChecked(on);
}

bool FindDlgMlt::inAllFiles() const
{
    return allFiles->isChecked();
}

void FindDlgMlt::setInAllFiles(bool on)
{
    allFiles->setChecked(on);
}

void FindDlgMlt::doFind()
{
    const QString text = m_findTxt->text();
    if (text.isEmpty()) return;
    if (inAllFiles())
        emit findInFiles(text, options());
    else
        emit find(text, options());
}

void FindDlgMlt::doReplace()
{
    askReplace(false);
}

void FindDlgMlt::doReplaceAll()
{
    askReplace(true);
}

void FindDlgMlt::askReplace(bool all)
{
    const QString source = m_findTxt->text();
    if (source.isEmpty()) return;
    if (inAllFiles())
        emit replaceInFiles(source, m_replaceTxt->text(), options(), all);
    else
        emit replace(source, m_replaceTxt->text(), options(), all);
}
