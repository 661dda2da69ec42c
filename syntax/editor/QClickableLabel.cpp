#include "QClickableLabel.h"

#include <QMouseEvent>

QClickableLabel::QClickableLabel(QWidget* parent) : QLabel(parent)
{
    // Nothing else tells that the text is a button.
    setCursor(Qt::PointingHandCursor);
}

void QClickableLabel::mouseReleaseEvent(QMouseEvent* event)
{
    QLabel::mouseReleaseEvent(event);
    if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint())) emit clicked();
}
