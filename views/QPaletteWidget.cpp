#include "QPaletteWidget.h"

#include "QRGBPalette.h"

#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>
#include <cstring>

QPaletteWidget::QPaletteWidget(QWidget* parent) : QWidget(parent), pal(new QRGBPalette(history[0], this))
{
    setMouseTracking(true);
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    connect(pal, &QRGBPalette::changing, this, &QPaletteWidget::internalPalChanging);
    connect(pal, &QRGBPalette::changed, this, &QPaletteWidget::internalPalChanged);
}

QPaletteWidget::~QPaletteWidget() = default;

QRGBPal QPaletteWidget::color(int index) const
{
    return index >= 0 && index < CellCount ? history[current][index] : QRGBPal();
}

void QPaletteWidget::rebind()
{
    pal->setTable(history[current]);
}

void QPaletteWidget::loadColors(const QRGBPal* table)
{
    if (table)
        std::memcpy(static_cast<void*>(history[current]), table, QRGBPal::TableBytes);
    else
        std::memset(static_cast<void*>(history[current]), 0, QRGBPal::TableBytes);
    resetHistory();
    update();
}

void QPaletteWidget::internalPalChanging()
{
    if (undoBlocked) return;
    // A widget whose history was never reset has no step to go back to yet: the first change only
    // opens the history.
    if (steps == 0) {
        steps = 1;
        return;
    }
    // A new step cuts off whatever could have been redone.
    steps = quint8(current + 1);
    if (steps == HistorySize) {
        std::memmove(static_cast<void*>(history[0]), history[1], sizeof history[0] * (HistorySize - 1));
        --steps;
        --current;
    }
    ++steps;
    ++current;
    std::memcpy(static_cast<void*>(history[current]), history[current - 1], sizeof history[0]);
    rebind();
}

void QPaletteWidget::internalPalChanged()
{
    update();
    emit changed();
}

void QPaletteWidget::undo()
{
    if (undoBlocked || current == 0) return;
    --current;
    rebind();
    update();
    emit changed();
}

void QPaletteWidget::redo()
{
    if (undoBlocked || current + 1 >= steps) return;
    ++current;
    rebind();
    update();
    emit changed();
}

void QPaletteWidget::resetHistory()
{
    if (undoBlocked) return;
    if (current != 0) std::memcpy(static_cast<void*>(history[0]), history[current], sizeof history[0]);
    current = 0;
    steps = 1;
    rebind();
}

bool QPaletteWidget::isSelected(int index) const
{
    return index >= 0 && index < CellCount && selection[index];
}

void QPaletteWidget::setSelected(int index, bool on)
{
    if (index < 0 || index >= CellCount || bool(selection[index]) == on) return;
    selection[index] = on ? 1 : 0;
    update();
}

void QPaletteWidget::selectOnly(int index)
{
    std::fill(std::begin(selection), std::end(selection), uchar(0));
    if (index >= 0 && index < CellCount) selection[index] = 1;
    update();
}

void QPaletteWidget::clearSelection()
{
    selectOnly(-1);
}

int QPaletteWidget::selectedCount() const
{
    return int(
        std::count_if(std::begin(selection), std::end(selection), [](uchar flag) { return flag != 0; }));
}

int QPaletteWidget::firstSelected() const
{
    const auto* found =
        std::find_if(std::begin(selection), std::end(selection), [](uchar flag) { return flag; });
    return found == std::end(selection) ? -1 : int(found - std::begin(selection));
}

void QPaletteWidget::setColorCount(ushort value)
{
    count = quint16(std::min<int>(value, CellCount));
    std::fill(std::begin(selection), std::end(selection), uchar(0));
    if (pressed >= count) {
        pressed = -1;
        dragging = false;
    }
    updateGeometry();
    update();
}

void QPaletteWidget::setCellSize(int size)
{
    cell = quint8(std::clamp(size, 6, 64));
    columns = quint8(std::clamp(width() / cell, 1, CellCount));
    updateGeometry();
    update();
}

int QPaletteWidget::cellAt(QPoint position) const
{
    if (position.x() < 0 || position.y() < 0) return -1;
    const int column = position.x() / cell;
    const int row = position.y() / cell;
    if (column >= columns) return -1;
    const int index = row * columns + column;
    return index < CellCount ? index : -1;
}

int QPaletteWidget::indexAt(QPoint position) const
{
    const int index = cellAt(position);
    return isValid(index) ? index : -1;
}

QRect QPaletteWidget::cellRect(int index) const
{
    return QRect((index % columns) * cell, (index / columns) * cell, cell - 2, cell - 2);
}

QSize QPaletteWidget::sizeHint() const
{
    return QSize(16 * cell, heightForWidth(16 * cell));
}

QSize QPaletteWidget::minimumSizeHint() const
{
    return QSize(8 * cell, 8 * cell);
}

int QPaletteWidget::heightForWidth(int width) const
{
    const int perRow = std::max(1, width / cell);
    return std::max(1, (count + perRow - 1) / perRow) * cell;
}

void QPaletteWidget::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    columns = quint8(std::clamp(width() / cell, 1, CellCount));
}

void QPaletteWidget::paintCell(QPainter& painter, int x, int y, int c, const QRGBPal& colour, bool selected)
{
    const QColor fill(colour.r, colour.g, colour.b, colour.a);
    if (colour.a < 255) {
        // Translucent colours stand over a checkerboard, as image programs show them.
        const int half = c / 2 - 1;
        painter.fillRect(x, y, half, half, Qt::white);
        painter.fillRect(x + half, y, half, half, Qt::gray);
        painter.fillRect(x, y + half, half, half, Qt::gray);
        painter.fillRect(x + half, y + half, half, half, Qt::white);
    }
    if (selected) {
        painter.fillRect(x, y, c - 2, c - 2, fill);
        // The outline is the colour turned half way round each channel, so it shows on any colour.
        painter.setPen(QColor(uchar(colour.r + 128), uchar(colour.g + 128), uchar(colour.b + 128)));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(x + 2, y + 2, c - 7, c - 7);
        return;
    }
    const int far = c - 3;
    painter.setPen(QColor(128, 128, 128));
    painter.drawLine(x, y, x + far, y);
    painter.drawLine(x, y, x, y + far);
    painter.setPen(Qt::white);
    painter.drawLine(x, y + far, x + far, y + far);
    painter.drawLine(x + far, y, x + far, y + far);
    painter.fillRect(x + 1, y + 1, c - 4, c - 4, fill);
}

void QPaletteWidget::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const QRGBPal* table = colors();
    const bool dragInside = dragging && pressed >= 0 && rect().contains(dragPosition);
    for (int i = 0; i < count; ++i) {
        if (dragInside && i == pressed) continue;
        const QRect box = cellRect(i);
        paintCell(painter, box.x(), box.y(), cell, table[i], selection[i]);
    }
    if (dragInside) {
        const QPoint at = dragPosition - grabOffset;
        paintCell(painter, at.x(), at.y(), cell, table[pressed], selection[pressed]);
    }
}

void QPaletteWidget::mousePressEvent(QMouseEvent* event)
{
    dragging = false;
    pressed = -1;
    if (event->button() == Qt::LeftButton) {
        const QPoint at = event->position().toPoint();
        pressed = qint16(indexAt(at));
        if (pressed >= 0) grabOffset = at - cellRect(pressed).topLeft();
    }
}

void QPaletteWidget::mouseMoveEvent(QMouseEvent* event)
{
    const QPoint at = event->position().toPoint();
    if (pressed >= 0 && (event->buttons() & Qt::LeftButton) && cellAt(at) != pressed) dragging = true;
    if (dragging) {
        dragPosition = at;
        repaint();
        return;
    }
    const int index = indexAt(at);
    if (index < 0) {
        setToolTip(QString());
        QToolTip::hideText();
        return;
    }
    const QRGBPal& colour = colors()[index];
    const QString text =
        QStringLiteral("%1, %2, %3, %4").arg(colour.r).arg(colour.g).arg(colour.b).arg(colour.a);
    setToolTip(text);
    QToolTip::showText(event->globalPosition().toPoint(), text, this, cellRect(index));
}

void QPaletteWidget::mouseReleaseEvent(QMouseEvent* event)
{
    const int index = indexAt(event->position().toPoint());
    if (index >= 0) release(index, event->button(), event->modifiers());
    dragging = false;
    pressed = -1;
    update();
}

void QPaletteWidget::release(int index, Qt::MouseButton button, Qt::KeyboardModifiers modifiers)
{
    if (dragging) {
        if (pressed >= 0 && pressed != index) moveColor(pressed, index);
    } else if (selectionOn && button == Qt::LeftButton) {
        if (multiSelection && (modifiers & Qt::ShiftModifier)) {
            int last = CellCount - 1;
            while (last >= 0 && !selection[last])
                --last;
            if (last < 0) {
                selectOnly(index);
                emit selectionChanged();
            } else {
                std::fill(selection + std::min(last, index), selection + std::max(last, index) + 1, uchar(1));
                update();
                emit selectionChanged();
                emit multiColorClick();
            }
        } else if (multiSelection && (modifiers & Qt::ControlModifier)) {
            selection[index] = 1;
            emit selectionChanged();
        } else {
            selectOnly(index);
            emit selectionChanged();
        }
    } else if (selectionOn && button == Qt::RightButton) {
        selection[index] = 0;
        emit selectionChanged();
    }
    emit colorClick(ushort(index), button);
}

void QPaletteWidget::moveColor(int from, int to)
{
    internalPalChanging();
    QRGBPal* table = pal->table();
    const QRGBPal moved = table[from];
    if (from < to)
        std::memmove(static_cast<void*>(table + from), table + from + 1, sizeof(QRGBPal) * size_t(to - from));
    else
        std::memmove(static_cast<void*>(table + to + 1), table + to, sizeof(QRGBPal) * size_t(from - to));
    table[to] = moved;
    internalPalChanged();
    emit colorMoved(ushort(from), ushort(to));
}

void QPaletteWidget::mouseDoubleClickEvent(QMouseEvent* event)
{
    const int index = indexAt(event->position().toPoint());
    if (index >= 0) emit colorDblClick(ushort(index));
}
