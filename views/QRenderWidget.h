#pragma once

#include <QWidget>

class QRenderer;

// The raster widget of a renderer: it draws through Qt's raster painter and forwards its input.
class QRenderWidget : public QWidget
{
    Q_OBJECT

public:
    QRenderWidget(QRenderer* renderer, QWidget* parent = nullptr);
    ~QRenderWidget() override;

    QRenderer* renderer() const { return render; }

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QRenderer* render;
};
