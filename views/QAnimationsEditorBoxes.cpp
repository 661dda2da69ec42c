// The collision boxes of the current frame: drawing new ones in the view, deleting, switching their
// kind, and copying them to other frames.

#include "QAnimation.h"
#include "QAnimationFrame.h"
#include "QAnimations.h"
#include "QAnimationsEditor.h"
#include "QCollisionBox.h"
#include "QCollisionBoxes.h"
#include "QSprRender.h"
#include "QSprite.h"
#include "QSprites.h"
#include "QUserDialogs.h"

#include <QScopedValueRollback>

namespace {
// The frame's own boxes by set type.
QList<QPair<int, QRect>> boxesOf(const QAnimationFrame* frame)
{
    QList<QPair<int, QRect>> list;
    for (int type = 0; type < 4; ++type)
        if (const QCollisionBoxes* set = frame->boxes[type])
            for (const QCollisionBox* box : set->boxes)
                list << qMakePair(type, box->rect());
    return list;
}
} // namespace

void QAnimationsEditor::drawBoxes(int type, bool on)
{
    if (on && !currentFrame()) on = false;
    if (on) forceStop();
    // Only one kind is drawn at a time; the other command unchecks.
    if (drawingType >= 0 && drawingType != type) emit clsnDrawing(drawingType, false);
    drawingType = on ? type : (drawingType == type ? -1 : drawingType);
    if (view()) view()->setBoxDrawing(drawingType >= 0, qMax(0, drawingType));
    emit clsnDrawing(type, on);
}

void QAnimationsEditor::clsnAdd1Changed(bool on)
{
    drawBoxes(int(QCollisionBoxType::Attack), on);
}

void QAnimationsEditor::clsnAdd2Changed(bool on)
{
    drawBoxes(int(QCollisionBoxType::Collision), on);
}

void QAnimationsEditor::clsnModeExit()
{
    const int type = drawingType;
    drawingType = -1;
    if (view()) view()->setBoxDrawing(false, 0);
    if (type >= 0) emit clsnDrawing(type, false);
}

void QAnimationsEditor::clsnDel()
{
    if (!currentFrame() || !view()) return;
    view()->deleteBoxes();
}

void QAnimationsEditor::removeSets(QAnimationFrame* frame)
{
    for (QCollisionBoxes*& set : frame->boxes)
        if (set) set->remove(true);
}

void QAnimationsEditor::clsnDelAll()
{
    QAnimationFrame* frame = currentFrame();
    if (!frame) return;
    {
        const QScopedValueRollback<int> guard(writing, writing + 1);
        model->beginEdit();
        removeSets(frame);
        model->endEdit();
    }
    showFrame(framePosition());
}

void QAnimationsEditor::clsnDelAllAnim()
{
    QAnimation* action = currentAction();
    if (!action) return;
    {
        const QScopedValueRollback<int> guard(writing, writing + 1);
        model->beginEdit();
        for (QAnimationFrame* frame : action->frames)
            removeSets(frame);
        model->endEdit();
    }
    showFrame(framePosition());
}

namespace {
// Puts the frame's boxes back with each type changed by toggle.
void retype(QAnimationFrame* frame, int toggle, QAnimations* model)
{
    const QList<QPair<int, QRect>> boxes = boxesOf(frame);
    if (boxes.isEmpty()) return;
    model->beginEdit();
    for (QCollisionBoxes*& set : frame->boxes)
        if (set) set->remove(true);
    for (const auto& box : boxes)
        frame->insertBox(QCollisionBoxType(box.first ^ toggle), box.second);
    model->endEdit();
}

bool anySelected(const QSprRender* view)
{
    if (!view) return false;
    for (int i = 0; i < view->boxCount(); ++i)
        if (view->boxSelected(i)) return true;
    return false;
}
} // namespace

void QAnimationsEditor::clsnSwType()
{
    QAnimationFrame* frame = currentFrame();
    if (!frame) return;
    // The selected boxes, or else every box of the frame.
    if (anySelected(view())) {
        view()->flipBoxes(false);
        return;
    }
    {
        const QScopedValueRollback<int> guard(writing, writing + 1);
        retype(frame, 1, model);
    }
    showFrame(framePosition());
}

void QAnimationsEditor::clsnSwDef()
{
    QAnimationFrame* frame = currentFrame();
    if (!frame) return;
    if (anySelected(view())) {
        view()->flipBoxes(true);
        return;
    }
    {
        const QScopedValueRollback<int> guard(writing, writing + 1);
        retype(frame, 2, model);
    }
    showFrame(framePosition());
}

void QAnimationsEditor::clsnPrev()
{
    QAnimation* action = currentAction();
    QAnimationFrame* frame = currentFrame();
    if (!frame || framePosition() == 0) return;
    const QAnimationFrame* previous = action->frameAt(uint(framePosition() - 1));
    const QList<QPair<int, QRect>> boxes = boxesOf(previous);
    {
        const QScopedValueRollback<int> guard(writing, writing + 1);
        model->beginEdit();
        removeSets(frame);
        for (const auto& box : boxes)
            frame->insertBox(QCollisionBoxType(box.first), box.second);
        model->endEdit();
    }
    showFrame(framePosition());
}

void QAnimationsEditor::clsnAllInst()
{
    QAnimationFrame* frame = currentFrame();
    if (!frame || !spriteModel) return;
    if (QUserDialogs::question(tr("Confirmation"),
                               tr("Do you really want to replicate the CLSNs of the current frame in all "
                                  "instances of it? All existing CLSNs in these frames will be replaced."),
                               QUserDialogs::Yes | QUserDialogs::No, QUserDialogs::No) != QUserDialogs::Yes)
        return;
    const auto spriteOf = [this](const QAnimationFrame* each) -> QSprite* {
        const int found = spriteModel->find(0, each->spriteGroup, each->spriteIndex);
        return found >= 0 ? spriteModel->at(uint(found)) : nullptr;
    };
    const QSprite* own = spriteOf(frame);
    if (!own || !own->hasImage()) return;
    // Boxes stay on the same pixels: each is moved by the difference of (offset less sprite axis).
    const QPoint origin = QPoint(frame->offsetX, frame->offsetY) - QPoint(own->offsetX(), own->offsetY());
    QList<QPair<QAnimationFrame*, QPoint>> instances;
    for (QAnimation* action : model->animations)
        for (QAnimationFrame* each : action->frames) {
            if (each == frame) continue;
            const QSprite* sprite = spriteOf(each);
            if (!sprite || !sprite->hasImage() || sprite->imageRecord() != own->imageRecord()) continue;
            const QPoint at =
                QPoint(each->offsetX, each->offsetY) - QPoint(sprite->offsetX(), sprite->offsetY());
            instances << qMakePair(each, at - origin);
        }
    const QList<QPair<int, QRect>> boxes = boxesOf(frame);
    {
        const QScopedValueRollback<int> guard(writing, writing + 1);
        model->beginEdit();
        for (const auto& instance : instances) {
            removeSets(instance.first);
            for (const auto& box : boxes)
                instance.first->insertBox(QCollisionBoxType(box.first),
                                          box.second.translated(instance.second));
        }
        model->endEdit();
    }
    showFrame(framePosition());
}
