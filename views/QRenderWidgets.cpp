#include "QRenderWidgets.h"

#include "QOGLRenderWidget.h"
#include "QRenderWidget.h"

#include <QGuiApplication>
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QtDebug>

bool QRenderWidgets::openGLAvailable()
{
    static const bool available = [] {
        // The offscreen and minimal platforms have no OpenGL of their own; asking them would only fail
        // later, inside the widget.
        const QString platform = QGuiApplication::platformName();
        if (platform == QLatin1String("offscreen") || platform == QLatin1String("minimal")) return false;
        QOpenGLContext context;
        if (!context.create()) return false;
        QOffscreenSurface surface;
        surface.setFormat(context.format());
        surface.create();
        return surface.isValid() && context.makeCurrent(&surface);
    }();
    return available;
}

QWidget* QRenderWidgets::make(QRenderer* renderer, QWidget* parent, bool useOpenGL)
{
    if (useOpenGL) {
        if (openGLAvailable()) return new QOGLRenderWidget(renderer, parent);
        static bool told = false;
        if (!told) {
            told = true;
            qWarning("OpenGL is not available; the sprite views draw without it.");
        }
    }
    return new QRenderWidget(renderer, parent);
}
