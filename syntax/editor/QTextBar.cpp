#include "QTextBar.h"

#include "QIssuesCombo.h"
#include "QSnippetManager.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QStringListModel>

QTextBar::QTextBar(QSnippetManager* snippets, QWidget* parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("textBar"));
    // The bar must not decide how narrow the window may be; a narrow window cuts its end off.
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(4, 2, 4, 2);
    auto* label = new QLabel(tr("Code snippets"), this);
    snippetCombo = new QComboBox(this);
    snippetCombo->setObjectName(QStringLiteral("snippetBox"));
    snippetCombo->setModel(snippets->model());
    snippetCombo->setMinimumContentsLength(20);
    snippetCombo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    snippetCombo->setCurrentIndex(-1);
    label->setBuddy(snippetCombo);
    issues = new QIssuesCombo(this);
    layout->addWidget(label);
    layout->addWidget(snippetCombo);
    layout->addSpacing(16);
    layout->addWidget(new QLabel(tr("Issues"), this));
    layout->addWidget(issues, 1);
}
