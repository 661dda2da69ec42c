#include "QQuickFind.h"

#include "QMugenModel.h"

#include <QGridLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QStyle>
#include <QToolButton>

QQuickFind::QQuickFind(QWidget* parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("quickFind"));
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(2, 2, 2, 2);
    findText = new QLineEdit(this);
    findText->setObjectName(QStringLiteral("findText"));
    replaceText = new QLineEdit(this);
    replaceText->setObjectName(QStringLiteral("replaceText"));
    grid->addWidget(findText, 0, 0);
    grid->addWidget(replaceText, 1, 0);

    auto* row = new QHBoxLayout;
    switches.insert(QQuickFindOption::RegularExpression,
                    addSwitch(QStringLiteral(".*"), tr("Regular expression"), "quicksearch_regexp"));
    switches.insert(QQuickFindOption::CaseSensitive,
                    addSwitch(QStringLiteral("Aa"), tr("Case sensitive"), "quicksearch_case"));
    switches.insert(QQuickFindOption::Backward,
                    addSwitch(QStringLiteral("<"), tr("Backward"), "quicksearch_back"));
    switches.insert(QQuickFindOption::Circular,
                    addSwitch(QStringLiteral("@"), tr("Circular"), "quicksearch_circular"));
    for (QToolButton* button : std::as_const(switches))
        row->addWidget(button);
    auto* find = new QPushButton(tr("Find"), this);
    row->addWidget(find);
    grid->addLayout(row, 0, 1);
    auto* buttons = new QHBoxLayout;
    auto* replace = new QPushButton(tr("Replace"), this);
    auto* replaceAll = new QPushButton(tr("Replace All"), this);
    buttons->addWidget(replace);
    buttons->addWidget(replaceAll);
    grid->addLayout(buttons, 1, 1);
    auto* close = new QToolButton(this);
    close->setObjectName(QStringLiteral("quickFindClose"));
    close->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton));
    close->setToolTip(tr("Close"));
    close->setAutoRaise(true);
    connect(close, &QToolButton::clicked, this, [this]() {
        hide();
        emit closed();
    });
    grid->addWidget(close, 0, 2, Qt::AlignTop);

    const auto findNow = [this]() { emit doFind(findText->text(), options()); };
    connect(findText, &QLineEdit::returnPressed, this, findNow);
    connect(find, &QPushButton::clicked, this, findNow);
    connect(replaceText, &QLineEdit::returnPressed, this,
            [this]() { emit doReplace(findText->text(), replaceText->text(), options(), false); });
    connect(replace, &QPushButton::clicked, this,
            [this]() { emit doReplace(findText->text(), replaceText->text(), options(), false); });
    connect(replaceAll, &QPushButton::clicked, this,
            [this]() { emit doReplace(findText->text(), replaceText->text(), options(), true); });
}

QToolButton* QQuickFind::addSwitch(const QString& text, const QString& tip, const char* key)
{
    auto* button = new QToolButton(this);
    button->setObjectName(QLatin1String(key));
    button->setText(text);
    button->setToolTip(tip);
    button->setCheckable(true);
    button->setAutoRaise(true);
    button->setChecked(flagSetting(key, false));
    connect(button, &QToolButton::toggled, this, [key](bool on) {
        if (mugenModel) (*mugenModel)[QLatin1String(key)] = on;
    });
    return button;
}

QQuickFindOptions QQuickFind::options() const
{
    return checkedOptions(switches);
}

void QQuickFind::setOption(QQuickFindOption option, bool on)
{
    if (QToolButton* button = switches.value(option)) button->setChecked(on);
}

void QQuickFind::keyPressEvent(QKeyEvent* event)
{
    // Escape leaves the search as in any editor; the text keeps the focus.
    if (event->key() == Qt::Key_Escape) {
        hide();
        emit closed();
        return;
    }
    QWidget::keyPressEvent(event);
}

void QQuickFind::open(const QString& text)
{
    if (!text.isEmpty()) findText->setText(text);
    show();
    findText->setFocus();
    findText->selectAll();
}
