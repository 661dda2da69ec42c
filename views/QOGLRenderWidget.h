#pragma once

#include <QOpenGLWidget>

class QRenderer;

// The OpenGL widget of a renderer: the same QPainter calls run on Qt's OpenGL paint engine. Nothing in
// the program calls OpenGL itself.
class QOGLRenderWidget : public QOpenGLWidget
{
    Q_OBJECT

public:
    QOGLRenderWidget(QRenderer* renderer, QWidget* parent = nullptr);
    ~QOGLRenderWidget() override;

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
