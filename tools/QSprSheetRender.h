#pragma once

#include "QRenderer.h"

#include <QImage>
#include <QList>
#include <QPoint>
#include <QRect>

// The view of the sprite sheet importer: the sheet at one of ten zoom steps, panned by dragging, with
// a blue outline around each drawing found on it. A rectangle's handles show only while one is
// selected; nothing selects one yet, so in use they stay hidden and a drag over a rectangle changes
// nothing.
class QSprSheetRender : public QRenderer
{
    Q_OBJECT

public:
    // What a press at a point would drag: the view, a whole rectangle, or one of the eight handles of
    // the selected rectangle in the order top left, top middle, top right, right middle, left middle,
    // bottom left, bottom middle, bottom right.
    enum Target
    {
        Pan = 0,
        Rectangle = 1,
        FirstHandle = 2,
        LastHandle = 9
    };

    static constexpr int ZoomCount = 10;
    static constexpr int DefaultZoom = 2;

    explicit QSprSheetRender(QObject* parent = nullptr);

    const QList<QRect>& rectangles() const { return rects; }
    void setRectangles(const QList<QRect>& value);
    const QImage& image() const { return sheet; }
    // A new sheet: the rectangles of the old one go and the view starts at its top left corner.
    void setImage(const QImage& value);
    // Replaces the rectangles by the drawings found on the sheet; a null sheet keeps them.
    void detect();

    static double zoomAt(int index);
    int zoomIndex() const { return zoomStep; }
    double zoom() const { return zoomAt(zoomStep); }
    // Zooms about a point of the widget, which keeps showing the same point of the sheet.
    void setZoomIndex(int index, const QPoint& anchor);
    // The buttons zoom about the middle of the view.
    void zoomIn();
    void zoomOut();

    bool creationMode() const { return creating; }
    void setCreationMode(bool on);
    int selected() const { return selection; }
    void setSelected(int index);
    int hovered() const { return hover; }
    QPoint origin() const { return imageOrigin; }
    void setOrigin(const QPoint& value);
    int dragTarget() const { return target; }
    bool isPressed() const { return pressed; }

    // Where a rectangle of the sheet shows on the widget.
    QRect screenRect(const QRect& rect) const;
    // What a press at pos would drag; also remembers the rectangle under it as the hovered one.
    int hitTest(const QPoint& pos);

    void keyPress(QKeyEvent* event) override;
    void mousePress(QMouseEvent* event) override;
    void mouseRelease(QMouseEvent* event) override;
    void mouseMove(QMouseEvent* event) override;
    void wheel(QWheelEvent* event) override;
    void paint(QPainter& painter, QPaintEvent* event) override;

Q_SIGNALS:
    // The selection tool was left from the view (Escape); the dialog unchecks its button.
    void creationModeExit();
    void zoomChanged(int index);

private:
    // The eight handle points of the selected rectangle, in sheet pixels.
    QList<QPoint> handlePoints() const;
    QPoint toScreen(const QPoint& point) const;
    void updateCursor(int over);

    QList<QRect> rects;
    QImage sheet;
    quint8 zoomStep = DefaultZoom;
    bool creating = false;
    qint32 selection = -1;
    qint32 hover = -1;
    QPoint imageOrigin;
    QPoint handles[8];
    bool pressed = false;
    bool moved = false;
    QPoint lastPoint;
    qint32 target = Pan;
};
