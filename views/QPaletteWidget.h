#pragma once

#include "QRGBPal.h"

#include <QPoint>
#include <QRect>
#include <QWidget>

class QPainter;
class QRGBPalette;

// The grid of a palette's 256 colours, shared by every palette view of the program. The widget keeps
// its own short undo history of whole tables: the palette object it offers (palette()) always works on
// the current table of that history, so any change made through it can be taken back here before it
// reaches a model. Cells can be selected (one, with Control several, with Shift a run) and a colour can
// be dragged to another place, the colours in between shifting by one.
class QPaletteWidget : public QWidget
{
    Q_OBJECT

public:
    static constexpr int HistorySize = 12;
    static constexpr int CellCount = QRGBPal::TableSize;

    explicit QPaletteWidget(QWidget* parent = nullptr);
    ~QPaletteWidget() override;

    // The palette object over the current table; changes through it are recorded as undo steps.
    QRGBPalette* rgbPalette() const { return pal; }
    const QRGBPal* colors() const { return history[current]; }
    QRGBPal color(int index) const;
    // Loads a table without recording a step and starts a new history from it (null: all zero).
    void loadColors(const QRGBPal* table);

    // Undo history.
    void undo();
    void redo();
    bool canUndo() const { return !undoBlocked && current > 0; }
    bool canRedo() const { return !undoBlocked && current + 1 < steps; }
    // Forgets the steps, keeping the current table.
    void resetHistory();
    // Between these two calls changes are made on the current table without recording steps.
    void blockUndo() { undoBlocked = true; }
    void unblockUndo() { undoBlocked = false; }
    int currentStep() const { return current; }
    int stepCount() const { return steps; }

    // Selection.
    bool isSelected(int index) const;
    void setSelected(int index, bool on);
    void selectOnly(int index);
    void clearSelection();
    // 256 flags, usable as the mask of the palette operations.
    const uchar* selectionMask() const { return selection; }
    int selectedCount() const;
    // The first selected index, or -1.
    int firstSelected() const;
    void setMultiSelection(bool on) { multiSelection = on; }
    bool multiSelectionAllowed() const { return multiSelection; }
    void setSelectionEnabled(bool on) { selectionOn = on; }
    bool selectionEnabled() const { return selectionOn; }

    // Geometry.
    int colorCount() const { return count; }
    int cellSize() const { return cell; }
    void setCellSize(int size);
    int columnCount() const { return columns; }
    // The cell under a widget position, or -1 (also for cells past the colour count).
    int indexAt(QPoint position) const;
    // Where cell index stands, c - 2 pixels square.
    QRect cellRect(int index) const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;

    // Draws one colour cell of side c at (x, y) the way the grid does; other colour views use it too.
    static void paintCell(QPainter& painter, int x, int y, int c, const QRGBPal& colour, bool selected);

Q_SIGNALS:
    void changed();
    void selectionChanged();
    void colorClick(ushort index, Qt::MouseButton button);
    void colorDblClick(ushort index);
    void multiColorClick();
    void colorMoved(ushort from, ushort to);

public Q_SLOTS:
    void setColorCount(ushort value);
    // Before a change of the palette object: records a step. After it: repaints and tells.
    void internalPalChanging();
    void internalPalChanged();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    // The raw hit test: row * columns + column, -1 off the grid.
    int cellAt(QPoint position) const;
    bool isValid(int index) const { return index >= 0 && index < count; }
    void rebind();
    void moveColor(int from, int to);
    void release(int index, Qt::MouseButton button, Qt::KeyboardModifiers modifiers);

    uchar selection[CellCount] = {};
    QRGBPal history[HistorySize][CellCount];
    QRGBPalette* pal;
    quint8 current = 0;
    quint8 steps = 0;
    bool undoBlocked = false;
    bool multiSelection = true;
    bool selectionOn = true;
    bool dragging = false;
    QPoint grabOffset;
    QPoint dragPosition;
    qint16 pressed = -1;
    quint16 count = CellCount;
    quint8 cell = 12;
    quint8 columns = 16;
};
