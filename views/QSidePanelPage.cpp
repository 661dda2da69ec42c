#include "QSidePanelPage.h"

QSidePanelPage::QSidePanelPage(int preferredWidth, QWidget* parent) : QWidget(parent), width(preferredWidth)
{}

QSize QSidePanelPage::sizeHint() const
{
    return QSize(width, QWidget::sizeHint().height());
}
