#include "QEditorExtraArea.h"

#include "QTextEditor.h"

#include <QCoreApplication>

QEditorExtraArea::QEditorExtraArea(QTextEditor* editor) : QWidget(editor), editor(editor)
{
    // The editor paints every pixel of the band it is asked for.
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMouseTracking(true);
}

QSize QEditorExtraArea::sizeHint() const
{
    return QSize(editor->extraAreaWidth(), 0);
}

void QEditorExtraArea::paintEvent(QPaintEvent* event)
{
    editor->extraAreaPaintEvent(event);
}

void QEditorExtraArea::mousePressEvent(QMouseEvent* event)
{
    editor->extraAreaMouseEvent(event);
}

void QEditorExtraArea::mouseMoveEvent(QMouseEvent* event)
{
    editor->extraAreaMouseEvent(event);
}

void QEditorExtraArea::mouseReleaseEvent(QMouseEvent* event)
{
    editor->extraAreaMouseEvent(event);
}

void QEditorExtraArea::leaveEvent(QEvent* event)
{
    editor->extraAreaLeaveEvent(event);
}

void QEditorExtraArea::wheelEvent(QWheelEvent* event)
{
    // Scrolling over the gutter scrolls the text.
    QCoreApplication::sendEvent(editor->viewport(), event);
}
