#include "QPanelWidget.h"

#include <QLabel>
#include <QVBoxLayout>

QPanelWidget::QPanelWidget(QWidget* parent) : QFrame(parent)
{
    setFrameShape(QFrame::StyledPanel);
    column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    titleLabel = new QLabel(this);
    titleLabel->setContentsMargins(4, 2, 4, 2);
    QFont bold = titleLabel->font();
    bold.setBold(true);
    titleLabel->setFont(bold);
    column->addWidget(titleLabel);
}

QString QPanelWidget::title() const
{
    return titleLabel->text();
}

void QPanelWidget::setTitle(const QString& title)
{
    titleLabel->setText(title);
}

void QPanelWidget::setContent(QWidget* content)
{
    if (content == m_content) {
        if (content) content->show();
        return;
    }
    if (m_content) {
        column->removeWidget(m_content);
        m_content->hide();
        // The owner keeps it; it must not be drawn here while another content is shown.
        m_content->setParent(nullptr);
    }
    m_content = content;
    if (!content) return;
    content->setParent(this);
    column->addWidget(content, 1);
    content->show();
}
