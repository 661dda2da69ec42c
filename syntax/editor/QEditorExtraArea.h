#pragma once

#include <QWidget>

class QTextEditor;

// The gutter of a code editor. It holds no state: the editor paints it and answers its mouse, since
// line numbers, fold markers and line selection all depend on the editor's layout.
class QEditorExtraArea : public QWidget
{
    Q_OBJECT
public:
    explicit QEditorExtraArea(QTextEditor* editor);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    QTextEditor* editor;
};
