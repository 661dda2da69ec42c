// Mouse, wheel and keys of the sprite view: what lies under the pointer, dragging the view, the
// sprite's axis or the frame's offset, the crosses, the guide lines and the boxes.

#include "QSprRender.h"

#include "QAnimationFrame.h"
#include "QAnimations.h"
#include "QCollisionBox.h"
#include "QElementTextEditor.h"
#include "QSprGeometry.h"
#include "QSprite.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>
#include <QWidget>

#include <cmath>

namespace {

Qt::CursorShape cursorOf(int target)
{
    switch (target) {
    case QSprRender::TargetView:
        return Qt::OpenHandCursor;
    case QSprRender::TargetHorizontalGuide:
    case QSprRender::TargetHandleTopMiddle:
    case QSprRender::TargetHandleBottomMiddle:
        return Qt::SizeVerCursor;
    case QSprRender::TargetVerticalGuide:
    case QSprRender::TargetHandleRightMiddle:
    case QSprRender::TargetHandleLeftMiddle:
        return Qt::SizeHorCursor;
    case QSprRender::TargetHandleTopLeft:
    case QSprRender::TargetHandleBottomRight:
        return Qt::SizeFDiagCursor;
    case QSprRender::TargetHandleTopRight:
    case QSprRender::TargetHandleBottomLeft:
        return Qt::SizeBDiagCursor;
    default:
        return Qt::SizeAllCursor;
    }
}

bool isLeftHandle(int target)
{
    return target == QSprRender::TargetHandleTopLeft || target == QSprRender::TargetHandleLeftMiddle ||
           target == QSprRender::TargetHandleBottomLeft;
}

bool isTopHandle(int target)
{
    return target == QSprRender::TargetHandleTopLeft || target == QSprRender::TargetHandleTopMiddle ||
           target == QSprRender::TargetHandleTopRight;
}

} // namespace

int QSprRender::guideTest(QPoint position, int k) const
{
    const double z = zoom.factor();
    // A guide's band starts one pixel before the line and is as wide as the line and a pixel each side.
    const int x = int(guide.x() * z + axis.x() + (k >> 1)) - 1;
    if (position.x() >= x && position.x() < x + k + 2) return TargetVerticalGuide;
    const int y = int(guide.y() * z + axis.y() + (k >> 1)) - 1;
    if (position.y() >= y && position.y() < y + k + 2) return TargetHorizontalGuide;
    return -1;
}

int QSprRender::boxTest(QPoint position)
{
    if (mode != AnimationMode || boxes == 0) return -1;
    if (selection)
        for (int i = 0; i < 8; ++i)
            if (QRect(handles[size_t(i)] - QPoint(4, 4), QSize(8, 8)).contains(position))
                return TargetHandleTopLeft + i;
    // Stacked boxes take turns: each test that finds the current box under the pointer with another one
    // moves on to that other one, so hovering reaches every box of a pile.
    bool currentHit = false;
    for (int i = 0; i < boxes; ++i) {
        if (!showBox[typeOf(i)] || !boxTable[size_t(i)].screen.normalized().contains(position)) continue;
        if (i != currentBox) {
            currentBox = quint8(i);
            return TargetBox;
        }
        currentHit = true;
    }
    return currentHit ? TargetBox : -1;
}

int QSprRender::hitTest(QPoint position)
{
    if (locked) return TargetView;
    // The ruler strips only pan, also when the rulers are hidden.
    if (position.x() < 30 || position.y() < 30) return TargetView;
    const int k = QSprGeometry::wholeZoom(zoom.factor());
    if (!spriteOverGuides && showGuideLines) {
        const int found = guideTest(position, k);
        if (found >= 0) return found;
    }
    if (drawing && mode == AnimationMode) return TargetView;
    if (clsnOverAxis) {
        const int found = boxTest(position);
        if (found >= 0) return found;
    }
    if (showExtra && extraCrossScreen.contains(position)) return TargetExtraCross;
    if (showAnimCross && mode == AnimationMode && animationCrossScreen.contains(position))
        return TargetAnimCross;
    if (showSprCross && spriteCrossScreen.contains(position)) return TargetView;
    if (!clsnOverAxis) {
        const int found = boxTest(position);
        if (found >= 0) return found;
    }
    if (!hidden && spriteScreen.contains(position)) return TargetSprite;
    if (spriteOverGuides && showGuideLines) {
        const int found = guideTest(position, k);
        if (found >= 0) return found;
    }
    return TargetView;
}

void QSprRender::setCursorFor(int value)
{
    QWidget* view = widget();
    if (!view) return;
    Qt::CursorShape shape = cursorOf(value);
    if (value == TargetView) {
        if (drawing && mode == AnimationMode)
            shape = Qt::CrossCursor;
        else if (pressed)
            shape = Qt::ClosedHandCursor;
    } else if (value == TargetSprite && capture) {
        shape = Qt::CrossCursor;
    }
    view->setCursor(shape);
}

void QSprRender::captureColor(QPoint position, bool anywhere)
{
    if (spriteImage.format() != QImage::Format_Indexed8 || spriteScreen.isEmpty()) return;
    const double z = zoom.factor();
    const QPoint pixel(int((position.x() - spriteScreen.left()) / z),
                       int((position.y() - spriteScreen.top()) / z));
    if (!spriteImage.rect().contains(pixel)) return;
    if (anywhere || spriteScreen.contains(position)) emit colorCaptured(uchar(spriteImage.pixelIndex(pixel)));
}

void QSprRender::mousePress(QMouseEvent* event)
{
    const QPoint position = event->position().toPoint();
    if (event->button() != Qt::LeftButton) {
        if (!pressed) setCursorFor(hitTest(position));
        return;
    }
    if (QWidget* view = widget()) view->setFocus();
    pressed = true;
    moved = false;
    last = position;
    if (drawing && mode == AnimationMode) {
        if (boxes >= MaxBoxes || !currentFrame) {
            pressed = false;
            return;
        }
        target = TargetHandleBottomRight;
        deselectBoxes();
        const int k = QSprGeometry::wholeZoom(zoom.factor());
        const QPoint snapped(position.x() - position.x() % k, position.y() - position.y() % k);
        anchor[0] = snapped;
        anchor[1] = snapped + QPoint(1, 1);
        Box& entry = boxTable[size_t(boxes)];
        entry.box = nullptr;
        entry.screen = entry.saved = QRect(snapped, snapped);
        entry.selected = true;
        currentBox = boxes;
        ++boxes;
        selection = true;
        refreshHandles();
        setCursorFor(target);
        return;
    }
    target = event->modifiers() & Qt::ControlModifier ? int(TargetView) : hitTest(position);
    if (target == TargetBox) {
        Box& current = boxTable[size_t(currentBox)];
        if (!(event->modifiers() & Qt::ShiftModifier) && !current.selected)
            for (int i = 0; i < boxes; ++i)
                boxTable[size_t(i)].selected = false;
        current.selected = true;
        selection = true;
        refreshHandles();
    } else if (target >= TargetHandleTopLeft) {
        for (int i = 0; i < boxes; ++i)
            if (boxTable[size_t(i)].selected) boxTable[size_t(i)].saved = boxTable[size_t(i)].screen;
        anchor[0] = handles[0];
        anchor[1] = handles[7];
    } else {
        deselectBoxes();
        if (target == TargetSprite && capture) captureColor(position, false);
        if (target == TargetSprite)
            savedAxis = currentFrame ? QPoint(currentFrame->offsetX, currentFrame->offsetY)
                                     : QPoint(currentSprite ? currentSprite->offsetX() : 0,
                                              currentSprite ? currentSprite->offsetY() : 0);
        else if (target == TargetAnimCross && currentFrame)
            savedAxis = QPoint(currentFrame->offsetX, currentFrame->offsetY);
    }
    setCursorFor(target);
    update();
}

void QSprRender::mouseMove(QMouseEvent* event)
{
    const QPoint position = event->position().toPoint();
    const int hover = pressed ? target : hitTest(position);
    if (event->modifiers() == Qt::ControlModifier) {
        if (QWidget* view = widget()) view->setCursor(Qt::OpenHandCursor);
    } else {
        setCursorFor(hover);
    }
    emit cursorChanged(position - axis);
    if (!pressed) return;
    if (capture && target == TargetSprite) {
        captureColor(position, true);
        return;
    }
    const double z = zoom.factor();
    int dx = 0, dy = 0;
    if (z > 1 && target != TargetView) {
        if (target != TargetHandleTopMiddle && target != TargetHandleBottomMiddle &&
            target != TargetHorizontalGuide)
            dx = int((position.x() - last.x()) / z);
        if (target != TargetHandleRightMiddle && target != TargetHandleLeftMiddle &&
            target != TargetVerticalGuide)
            dy = int((position.y() - last.y()) / z);
        // Below the handles the pointer's remainder carries over to the next move; a resize always
        // measures from where the button went down.
        if (target < TargetHandleTopLeft) last += QPoint(int(dx * z), int(dy * z));
    } else {
        dx = position.x() - last.x();
        dy = position.y() - last.y();
        if (target < TargetHandleTopLeft) last = position;
        if (z < 1 && target != TargetView) {
            dx = int(std::lround(dx / z));
            dy = int(std::lround(dy / z));
        }
    }
    if (dx == 0 && dy == 0) return;
    moved = true;
    const QPoint delta(dx, dy);
    switch (target) {
    case TargetView:
        axis += delta;
        computeRects();
        break;
    case TargetSprite:
    case TargetAnimCross:
        // Without a frame the drag moves the sprite's axis, which runs against the picture; a frame's
        // offset runs with it.
        if (target == TargetSprite && !currentFrame)
            savedAxis -= delta;
        else
            savedAxis += delta;
        axisInUse -= delta;
        spriteScreen = QSprGeometry::sprite(spriteImage.size(), axisInUse, z, axis);
        if (currentFrame)
            animationCrossScreen = QSprGeometry::crossAt(savedAxis, animationCross.size(), z, axis);
        emit axisChanged(savedAxis);
        break;
    case TargetExtraCross:
        extraAxis += delta;
        extraCrossScreen = QSprGeometry::crossAt(extraAxis, extraCrossImage.size(), z, axis);
        emit extraAxisChanged();
        break;
    case TargetHorizontalGuide:
        guide.ry() += dy;
        break;
    case TargetVerticalGuide:
        guide.rx() += dx;
        break;
    case TargetBox:
        for (int i = 0; i < boxes; ++i)
            if (boxTable[size_t(i)].selected) boxTable[size_t(i)].screen.translate(int(dx * z), int(dy * z));
        refreshHandles();
        break;
    default:
        resizeBoxes(QPoint(int(std::lround(dx * z)), int(std::lround(dy * z))));
        break;
    }
    repaintNow();
}

void QSprRender::mouseRelease(QMouseEvent* event)
{
    if (target == TargetView) setCursorFor(TargetView);
    const bool wasPressed = pressed;
    pressed = false;
    if (event->button() == Qt::RightButton) {
        if (drawing) {
            drawing = false;
            emit clsnModeExit();
        }
        setCursorFor(TargetView);
        return;
    }
    if (event->button() != Qt::LeftButton || !wasPressed) return;
    if (drawing && mode == AnimationMode) {
        commitDrawnBox();
    } else if ((target == TargetSprite || target == TargetAnimCross) && moved) {
        if (currentFrame) {
            // Both coordinates in one step of the text's undo.
            updating = true;
            if (actionModel) actionModel->beginEdit();
            currentFrame->setOffsetX(savedAxis.x());
            currentFrame->setOffsetY(savedAxis.y());
            if (actionModel) actionModel->endEdit();
            updating = false;
        } else if (target == TargetSprite && mode == SpriteMode && currentSprite) {
            currentSprite->setInfo(currentSprite->palette(), currentSprite->itemGroup(),
                                   currentSprite->itemIndex(), savedAxis.x(), savedAxis.y(),
                                   currentSprite->flags());
        }
        computeRects();
    } else if (target >= TargetBox && moved) {
        commitBoxes();
    }
    moved = false;
    update();
}

void QSprRender::wheel(QWheelEvent* event)
{
    // Whole notches only; the wheel stops short of the two largest factors on purpose.
    const int delta = event->angleDelta().y();
    if (delta / 120 == 0) return;
    zoomTo(zoom.wheel(delta, axis, viewCentre(), QViewZoom::Centre(zoomCentre)));
}

void QSprRender::keyPress(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Control) {
        if (QWidget* view = widget()) view->setCursor(Qt::OpenHandCursor);
        return;
    }
    if (event->modifiers() != Qt::NoModifier && event->modifiers() != Qt::KeypadModifier) return;
    switch (event->key()) {
    case Qt::Key_Delete:
        deleteBoxes();
        break;
    case Qt::Key_Left:
        moveBoxes(QPoint(-1, 0));
        break;
    case Qt::Key_Right:
        moveBoxes(QPoint(1, 0));
        break;
    case Qt::Key_Up:
        moveBoxes(QPoint(0, -1));
        break;
    case Qt::Key_Down:
        moveBoxes(QPoint(0, 1));
        break;
    default:
        break;
    }
}

void QSprRender::keyRelease(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Control) setCursorFor(pressed ? target : TargetView);
}

void QSprRender::resizeBoxes(QPoint delta)
{
    int dx = delta.x(), dy = delta.y();
    if (target == TargetHandleTopMiddle || target == TargetHandleBottomMiddle) dx = 0;
    if (isLeftHandle(target)) dx = -dx;
    if (target == TargetHandleRightMiddle || target == TargetHandleLeftMiddle) dy = 0;
    if (isTopHandle(target)) dy = -dy;
    const int x1 = anchor[0].x(), y1 = anchor[0].y();
    const double width = anchor[1].x() - x1, height = anchor[1].y() - y1;
    const double sx = width != 0 ? (dx + width) / width : 1.0;
    const double sy = height != 0 ? (dy + height) / height : 1.0;
    for (int i = 0; i < boxes; ++i) {
        Box& entry = boxTable[size_t(i)];
        if (!entry.selected) continue;
        int left = int((entry.saved.left() - x1) * sx + x1);
        int top = int((entry.saved.top() - y1) * sy + y1);
        if (isLeftHandle(target)) left -= dx;
        if (isTopHandle(target)) top -= dy;
        const int savedWidth = entry.saved.right() - entry.saved.left() + 1;
        const int savedHeight = entry.saved.bottom() - entry.saved.top() + 1;
        const int right = int(savedWidth * sx) + left - 1;
        const int bottom = int(savedHeight * sy) + top - 1;
        entry.screen = QRect(QPoint(left, top), QPoint(right, bottom));
    }
    if (!drawing) refreshHandles();
}
