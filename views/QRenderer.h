#pragma once

#include <QObject>

class QKeyEvent;
class QMouseEvent;
class QPaintEvent;
class QPainter;
class QWheelEvent;
class QWidget;

// The drawing and input logic of a view, apart from the widget that shows it. A thin widget (raster or
// OpenGL) borrows the renderer, gives it an open painter and forwards its input, so one code path draws
// through either paint engine. The renderer's owner (a workspace or a dialog) keeps it alive across a
// rebuild of the widget.
class QRenderer : public QObject
{
    Q_OBJECT

public:
    explicit QRenderer(QObject* parent = nullptr) : QObject(parent) {}

    QWidget* widget() const { return view; }
    // Set by the widget's constructor, and cleared by its destructor so that a renderer never paints
    // into a widget that is gone.
    void setWidget(QWidget* value) { view = value; }

    virtual void keyPress(QKeyEvent*) {}
    virtual void keyRelease(QKeyEvent*) {}
    virtual void mousePress(QMouseEvent*) {}
    virtual void mouseRelease(QMouseEvent*) {}
    virtual void mouseMove(QMouseEvent*) {}
    virtual void wheel(QWheelEvent*) {}
    virtual void resize() {}
    virtual void paint(QPainter& painter, QPaintEvent* event) = 0;
    // Called once by the widget's constructor, when the renderer has its widget.
    virtual void widgetReady() {}
    virtual void widgetHook() {}

    // Repaints now where a drag must follow the mouse; a renderer without a widget does nothing.
    void repaintNow();
    void update();

private:
    QWidget* view = nullptr;
};
