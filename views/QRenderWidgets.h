#pragma once

class QRenderer;
class QWidget;

// Makes the widget of a renderer as the "use_opengl" setting asks. Where no OpenGL context can be made
// (no driver, a virtual display, the offscreen platform) the raster widget serves, and the first such
// fall-back is reported once in the log, so the view always shows.
namespace QRenderWidgets {
QWidget* make(QRenderer* renderer, QWidget* parent, bool useOpenGL);
// Whether this process can make an OpenGL context; probed once.
bool openGLAvailable();
} // namespace QRenderWidgets
