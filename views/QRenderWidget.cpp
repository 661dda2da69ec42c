#include "QRenderWidget.h"

#include "QRenderer.h"

#include <QPainter>

QRenderWidget::QRenderWidget(QRenderer* renderer, QWidget* parent) : QWidget(parent), render(renderer)
{
    setAutoFillBackground(false);
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    render->setWidget(this);
    render->widgetReady();
}

QRenderWidget::~QRenderWidget()
{
    if (render->widget() == this) render->setWidget(nullptr);
}

void QRenderWidget::keyPressEvent(QKeyEvent* event)
{
    QWidget::keyPressEvent(event);
    render->keyPress(event);
}

void QRenderWidget::keyReleaseEvent(QKeyEvent* event)
{
    QWidget::keyReleaseEvent(event);
    render->keyRelease(event);
}

void QRenderWidget::mousePressEvent(QMouseEvent* event)
{
    QWidget::mousePressEvent(event);
    render->mousePress(event);
}

void QRenderWidget::mouseReleaseEvent(QMouseEvent* event)
{
    QWidget::mouseReleaseEvent(event);
    render->mouseRelease(event);
}

void QRenderWidget::mouseMoveEvent(QMouseEvent* event)
{
    QWidget::mouseMoveEvent(event);
    render->mouseMove(event);
}

void QRenderWidget::wheelEvent(QWheelEvent* event)
{
    QWidget::wheelEvent(event);
    render->wheel(event);
}

void QRenderWidget::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    render->resize();
}

void QRenderWidget::paintEvent(QPaintEvent* event)
{
    QPainter painter(this);
    render->paint(painter, event);
}
