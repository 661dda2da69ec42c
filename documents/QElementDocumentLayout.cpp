#include "QElementDocumentLayout.h"

QElementDocumentLayout::QElementDocumentLayout(QTextDocument* document)
    : QAbstractTextDocumentLayout(document)
{}

void QElementDocumentLayout::draw(QPainter*, const PaintContext&) {}

int QElementDocumentLayout::hitTest(const QPointF&, Qt::HitTestAccuracy) const
{
    return -1;
}

int QElementDocumentLayout::pageCount() const
{
    return 1;
}

QSizeF QElementDocumentLayout::documentSize() const
{
    return QSizeF();
}

QRectF QElementDocumentLayout::frameBoundingRect(QTextFrame*) const
{
    return QRectF();
}

QRectF QElementDocumentLayout::blockBoundingRect(const QTextBlock&) const
{
    return QRectF();
}

void QElementDocumentLayout::documentChanged(int, int, int) {}
