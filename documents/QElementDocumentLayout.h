#pragma once

#include <QAbstractTextDocumentLayout>

// The layout of an element document that no view shows: it lays nothing out. QTextDocument reports
// edits through contentsChange only while it has a layout, and the models must hear every edit; the
// code editor replaces it by its own when it shows the document.
class QElementDocumentLayout : public QAbstractTextDocumentLayout
{
    Q_OBJECT
public:
    explicit QElementDocumentLayout(QTextDocument* document);

    void draw(QPainter* painter, const PaintContext& context) override;
    int hitTest(const QPointF& point, Qt::HitTestAccuracy accuracy) const override;
    int pageCount() const override;
    QSizeF documentSize() const override;
    QRectF frameBoundingRect(QTextFrame* frame) const override;
    QRectF blockBoundingRect(const QTextBlock& block) const override;

protected:
    void documentChanged(int position, int charsRemoved, int charsAdded) override;
};
