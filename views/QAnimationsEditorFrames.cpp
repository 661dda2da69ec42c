// The frames of the current action: the form's fields, adding and deleting, the values given onward
// and the offsets moved by keys, by the view and by the align dialog.

#include "AnimAlign.h"
#include "QAnimation.h"
#include "QAnimationFrame.h"
#include "QAnimations.h"
#include "QAnimationsEditor.h"
#include "QAnimationsPanel.h"
#include "QDialogRunner.h"
#include "QSprRender.h"
#include "QUserDialogs.h"
#include "QViewSettings.h"

#include <QScopedValueRollback>
#include <QSpinBox>

bool QAnimationsEditor::frameWritable() const
{
    return block == 0 && currentFrame() != nullptr;
}

void QAnimationsEditor::frameGrpChanged(int value)
{
    if (!frameWritable() || currentFrame()->spriteGroup == value) return;
    {
        const QScopedValueRollback<int> guard(writing, writing + 1);
        currentFrame()->setSpriteGroup(value);
    }
    showFrame(framePosition());
}

void QAnimationsEditor::frameNumChanged(int value)
{
    if (!frameWritable() || currentFrame()->spriteIndex == value) return;
    {
        const QScopedValueRollback<int> guard(writing, writing + 1);
        currentFrame()->setSpriteIndex(value);
    }
    showFrame(framePosition());
}

void QAnimationsEditor::frameXChanged(int value)
{
    if (!frameWritable() || currentFrame()->offsetX == value) return;
    {
        const QScopedValueRollback<int> guard(writing, writing + 1);
        currentFrame()->setOffsetX(value);
    }
    showFrame(framePosition());
}

void QAnimationsEditor::frameYChanged(int value)
{
    if (!frameWritable() || currentFrame()->offsetY == value) return;
    {
        const QScopedValueRollback<int> guard(writing, writing + 1);
        currentFrame()->setOffsetY(value);
    }
    showFrame(framePosition());
}

void QAnimationsEditor::frameTimeChanged(int value)
{
    if (!frameWritable() || currentFrame()->time == value) return;
    {
        const QScopedValueRollback<int> guard(writing, writing + 1);
        currentFrame()->setTime(value);
    }
    showFrame(framePosition());
}

void QAnimationsEditor::frameFlipChanged(int index)
{
    if (!frameWritable() || index < 0 || currentFrame()->flip == index) return;
    {
        const QScopedValueRollback<int> guard(writing, writing + 1);
        currentFrame()->setFlip(index & 3);
    }
    showFrame(framePosition());
}

void QAnimationsEditor::setBlend(QAnimationFrame* frame, int index)
{
    QBlendTarget target = frame->blendTarget;
    QAnimationFrameBlend blend = QAnimationFrameBlend::Addition;
    switch (index) {
    case 0:
        blend = QAnimationFrameBlend::None;
        break;
    case 1:
        target = QBlendTarget();
        break;
    case 2:
        target.source = 256;
        target.destination = 128;
        break;
    case 3:
        blend = QAnimationFrameBlend::Subtraction;
        break;
    default: {
        // Factors of their own: the form's, unless those would read as "A" or "A1" again.
        target.source = ushort(panelWidget->srcBox()->value());
        target.destination = ushort(panelWidget->dstBox()->value());
        if (target.source == 256 && (target.destination == 256 || target.destination == 128))
            target.source = target.destination = 128;
        break;
    }
    }
    frame->setValues(frame->spriteGroup, frame->spriteIndex, frame->offsetX, frame->offsetY, frame->time,
                     frame->flip, blend, target, frame->scaleX, frame->scaleY, frame->angle);
}

void QAnimationsEditor::frameTransChanged(int index)
{
    if (!frameWritable() || index < 0 || transIndex(currentFrame()) == index) return;
    {
        const QScopedValueRollback<int> guard(writing, writing + 1);
        setBlend(currentFrame(), index);
    }
    showFrame(framePosition());
}

void QAnimationsEditor::frameSrcChanged(int value)
{
    QAnimationFrame* frame = currentFrame();
    if (!frameWritable() || transIndex(frame) != 4 || frame->blendTarget.source == value) return;
    {
        const QScopedValueRollback<int> guard(writing, writing + 1);
        QBlendTarget target = frame->blendTarget;
        target.source = ushort(value);
        frame->setBlendTarget(target);
    }
    showFrame(framePosition());
}

void QAnimationsEditor::frameDstChanged(int value)
{
    QAnimationFrame* frame = currentFrame();
    if (!frameWritable() || transIndex(frame) != 4 || frame->blendTarget.destination == value) return;
    {
        const QScopedValueRollback<int> guard(writing, writing + 1);
        QBlendTarget target = frame->blendTarget;
        target.destination = ushort(value);
        frame->setBlendTarget(target);
    }
    showFrame(framePosition());
}

void QAnimationsEditor::frameScaleXChanged(double value)
{
    if (!frameWritable() || qFuzzyCompare(currentFrame()->scaleX, value)) return;
    {
        const QScopedValueRollback<int> guard(writing, writing + 1);
        currentFrame()->setScaleX(value);
    }
    showFrame(framePosition());
}

void QAnimationsEditor::frameScaleYChanged(double value)
{
    if (!frameWritable() || qFuzzyCompare(currentFrame()->scaleY, value)) return;
    {
        const QScopedValueRollback<int> guard(writing, writing + 1);
        currentFrame()->setScaleY(value);
    }
    showFrame(framePosition());
}

void QAnimationsEditor::frameAngleChanged(double value)
{
    if (!frameWritable() || currentFrame()->angle == value) return;
    {
        const QScopedValueRollback<int> guard(writing, writing + 1);
        currentFrame()->setAngle(value);
    }
    showFrame(framePosition());
}

namespace {
void mark(QAnimationFrame* frame, QInterFrameElementType type, bool on, int& writing)
{
    const QScopedValueRollback<int> guard(writing, writing + 1);
    frame->setInterFrame(type, on);
}
} // namespace

void QAnimationsEditor::frameLoopChanged(bool on)
{
    if (!frameWritable()) return;
    mark(currentFrame(), QInterFrameElementType::LoopStart, on, writing);
    showFrame(framePosition());
}

void QAnimationsEditor::frameIBlendChanged(bool on)
{
    if (!frameWritable()) return;
    mark(currentFrame(), QInterFrameElementType::InterpolateBlend, on, writing);
    showFrame(framePosition());
}

void QAnimationsEditor::frameIOffsetChanged(bool on)
{
    if (!frameWritable()) return;
    mark(currentFrame(), QInterFrameElementType::InterpolateOffset, on, writing);
    showFrame(framePosition());
}

void QAnimationsEditor::frameIScaleChanged(bool on)
{
    if (!frameWritable()) return;
    mark(currentFrame(), QInterFrameElementType::InterpolateScale, on, writing);
    showFrame(framePosition());
}

void QAnimationsEditor::frameIAngleChanged(bool on)
{
    if (!frameWritable()) return;
    mark(currentFrame(), QInterFrameElementType::InterpolateAngle, on, writing);
    showFrame(framePosition());
}

void QAnimationsEditor::frameAdd()
{
    QAnimation* action = currentAction();
    if (!action) return;
    forceStop();
    emit flushFields();
    const int at = action->frameCount() == 0 ? 0 : framePosition() + 1;
    {
        const QScopedValueRollback<int> guard(writing, writing + 1);
        action->frameInsert(uint(at));
    }
    showFrame(at);
}

void QAnimationsEditor::frameDel()
{
    QAnimationFrame* frame = currentFrame();
    if (!frame) return;
    forceStop();
    if (QViewSettings::value("confirm_delete", true).toBool() &&
        QUserDialogs::question(tr("Delete frame"), tr("Do you really want to delete the frame?")) !=
            QUserDialogs::Yes)
        return;
    emit flushFields();
    const int at = framePosition();
    {
        const QScopedValueRollback<int> guard(writing, writing + 1);
        frame->remove(true);
    }
    showFrame(qMax(0, at - (at >= currentAction()->frameCount() ? 1 : 0)));
}

void QAnimationsEditor::copyOnward(const std::function<void(QAnimationFrame*, QAnimationFrame*)>& copy)
{
    QAnimation* action = currentAction();
    QAnimationFrame* frame = currentFrame();
    // Frames before the current one keep their values: the commands give a value onward, whatever
    // "all" in their names says.
    if (!frame || action->frameCount() <= 1) return;
    forceStop();
    emit flushFields();
    {
        const QScopedValueRollback<int> guard(writing, writing + 1);
        model->beginEdit();
        for (int i = framePosition() + 1; i < action->frameCount(); ++i)
            copy(frame, action->frameAt(uint(i)));
        model->endEdit();
    }
    showFrame(framePosition());
}

void QAnimationsEditor::frameAllTime()
{
    copyOnward([](QAnimationFrame* from, QAnimationFrame* to) { to->setTime(from->time); });
}

void QAnimationsEditor::frameAllFlip()
{
    copyOnward([](QAnimationFrame* from, QAnimationFrame* to) { to->setFlip(from->flip); });
}

void QAnimationsEditor::frameAllTrans()
{
    copyOnward([](QAnimationFrame* from, QAnimationFrame* to) {
        to->setValues(to->spriteGroup, to->spriteIndex, to->offsetX, to->offsetY, to->time, to->flip,
                      from->blend, from->blendTarget, to->scaleX, to->scaleY, to->angle);
    });
}

void QAnimationsEditor::frameAlign()
{
    QAnimation* action = currentAction();
    if (!action || action->frameCount() == 0) return;
    forceStop();
    emit flushFields();
    AnimAlign dialog(dialogParent());
    if (QDialogRunner::run(&dialog) != QDialog::Accepted) return;
    QList<QAnimationFrame*> frames;
    switch (dialog.range()) {
    case AnimAlign::CurrentFrame:
        frames << currentFrame();
        break;
    case AnimAlign::FramesOnward:
        for (int i = framePosition(); i < action->frameCount(); ++i)
            frames << action->frameAt(uint(i));
        break;
    case AnimAlign::WholeAction:
        frames = action->frames;
        break;
    case AnimAlign::AllActions:
        for (QAnimation* each : model->animations)
            frames << each->frames;
        break;
    }
    const QPoint value = dialog.offset();
    {
        const QScopedValueRollback<int> guard(writing, writing + 1);
        model->beginEdit();
        for (QAnimationFrame* frame : frames) {
            const QPoint to =
                dialog.mode() == AnimAlign::MoveBy ? QPoint(frame->offsetX, frame->offsetY) + value : value;
            frame->setValues(frame->spriteGroup, frame->spriteIndex, to.x(), to.y(), frame->time, frame->flip,
                             frame->blend, frame->blendTarget, frame->scaleX, frame->scaleY, frame->angle);
        }
        model->endEdit();
    }
    showFrame(framePosition());
}

void QAnimationsEditor::moveOffset(int dx, int dy)
{
    QAnimationFrame* frame = currentFrame();
    if (!frame) return;
    {
        const QScopedValueRollback<int> guard(writing, writing + 1);
        frame->setValues(frame->spriteGroup, frame->spriteIndex, frame->offsetX + dx, frame->offsetY + dy,
                         frame->time, frame->flip, frame->blend, frame->blendTarget, frame->scaleX,
                         frame->scaleY, frame->angle);
    }
    showFrame(framePosition());
}

void QAnimationsEditor::axisLeft()
{
    moveOffset(-1, 0);
}

void QAnimationsEditor::axisUp()
{
    moveOffset(0, -1);
}

void QAnimationsEditor::axisRight()
{
    moveOffset(1, 0);
}

void QAnimationsEditor::axisDown()
{
    moveOffset(0, 1);
}

void QAnimationsEditor::axisChanged(QPoint axis)
{
    // While the frame is dragged the fields follow; the view writes the model when the drag ends.
    const QScopedValueRollback<int> guard(block, block + 1);
    emit setFrameX(axis.x());
    emit setFrameY(axis.y());
}

void QAnimationsEditor::extraAxisChanged()
{
    // The extra cross is measured from the main axis; the status line tells where it stands.
    if (!view()) return;
    const QPoint cross = view()->extraCross();
    emit statusText(tr("Extra cross: %1, %2").arg(cross.x()).arg(cross.y()));
}

void QAnimationsEditor::extraAxisMoved(QPoint position)
{
    if (!view()) return;
    view()->setExtraCross(position);
    view()->refresh();
}
