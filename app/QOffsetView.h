#pragma once

#include <QImage>
#include <QPoint>
#include <QWidget>

// A sprite drawn on its axis, the axis marked by a cross, and a point the user clicks or drags whose
// offset from the axis is read in the sprite's pixels.
class QOffsetView : public QWidget
{
    Q_OBJECT
public:
    explicit QOffsetView(QWidget* parent = nullptr);

    // axis is where the axis stands in the image.
    void setSprite(const QImage& image, const QPoint& axis);
    QPoint offset() const { return m_offset; }
    void setOffset(const QPoint& offset);
    // The widget position of an offset and the reverse, for the current size.
    QPoint toWidget(const QPoint& offset) const;
    QPoint toOffset(const QPoint& position) const;

    static constexpr int Zoom = 2;

Q_SIGNALS:
    void offsetChanged(const QPoint& offset);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

private:
    QPoint axisPosition() const;

    QImage image;
    QPoint axis;
    QPoint m_offset;
};
