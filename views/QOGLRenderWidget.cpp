#include "QOGLRenderWidget.h"

#include "QRenderer.h"

#include <QPainter>

QOGLRenderWidget::QOGLRenderWidget(QRenderer* renderer, QWidget* parent)
    : QOpenGLWidget(parent), render(renderer)
{
    QSurfaceFormat surface = format();
    surface.setSamples(0);
    setFormat(surface);
    setAutoFillBackground(false);
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    render->setWidget(this);
    render->widgetReady();
}

QOGLRenderWidget::~QOGLRenderWidget()
{
    if (render->widget() == this) render->setWidget(nullptr);
}

void QOGLRenderWidget::keyPressEvent(QKeyEvent* event)
{
    QOpenGLWidget::keyPressEvent(event);
    render->keyPress(event);
}

void QOGLRenderWidget::keyReleaseEvent(QKeyEvent* event)
{
    QOpenGLWidget::keyReleaseEvent(event);
    render->keyRelease(event);
}

void QOGLRenderWidget::mousePressEvent(QMouseEvent* event)
{
    QOpenGLWidget::mousePressEvent(event);
    render->mousePress(event);
}

void QOGLRenderWidget::mouseReleaseEvent(QMouseEvent* event)
{
    QOpenGLWidget::mouseReleaseEvent(event);
    render->mouseRelease(event);
}

void QOGLRenderWidget::mouseMoveEvent(QMouseEvent* event)
{
    QOpenGLWidget::mouseMoveEvent(event);
    render->mouseMove(event);
}

void QOGLRenderWidget::wheelEvent(QWheelEvent* event)
{
    QOpenGLWidget::wheelEvent(event);
    render->wheel(event);
}

void QOGLRenderWidget::resizeEvent(QResizeEvent* event)
{
    QOpenGLWidget::resizeEvent(event);
    render->resize();
}

void QOGLRenderWidget::paintEvent(QPaintEvent* event)
{
    // QOpenGLWidget's own paint event would call paintGL(); the painter here runs the same drawing as
    // the raster widget on the OpenGL paint engine instead.
    QPainter painter(this);
    render->paint(painter, event);
}
