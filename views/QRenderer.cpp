#include "QRenderer.h"

#include <QWidget>

void QRenderer::repaintNow()
{
    if (view) view->repaint();
}

void QRenderer::update()
{
    if (view) view->update();
}
