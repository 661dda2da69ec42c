#include "QAnimationPlayer.h"

#include "QAnimation.h"
#include "QAnimationFrame.h"

namespace {
double towards(double from, double to, int t, int time)
{
    return from + (to - from) / time * t;
}
} // namespace

void QAnimationPlayer::start(QAnimation* value, int frame)
{
    action = value;
    current = frame;
    ticks = 0;
    started = false;
    shown = Look();
}

int QAnimationPlayer::nextFrame(const QAnimation* action, int index)
{
    const int count = action ? action->frameCount() : 0;
    if (count == 0) return -1;
    if (index + 1 < count) return index + 1;
    for (int i = 0; i < count; ++i)
        if (action->frameAt(uint(i))->checkInterFrame(QInterFrameElementType::LoopStart)) return i;
    return 0;
}

QAnimationPlayer::Look QAnimationPlayer::lookAt(const QAnimation* action, int index, int t)
{
    Look look;
    const QAnimationFrame* frame = action && index >= 0 ? action->frameAt(uint(index)) : nullptr;
    if (!frame) return look;
    look.frame = index;
    look.offset = QPoint(frame->offsetX, frame->offsetY);
    look.scaleX = frame->scaleX;
    look.scaleY = frame->scaleY;
    look.angle = frame->angle;
    look.source = frame->blendTarget.source;
    look.destination = frame->blendTarget.destination;
    // A mark stands on the frame it leads to; a frame that stays for good leads nowhere.
    const int T = frame->time;
    if (T <= 0) return look;
    const QAnimationFrame* next = action->frameAt(uint(nextFrame(action, index)));
    if (!next || next == frame) return look;
    if (next->checkInterFrame(QInterFrameElementType::InterpolateBlend)) {
        look.source = int(towards(frame->blendTarget.source, next->blendTarget.source, t, T));
        look.destination = int(towards(frame->blendTarget.destination, next->blendTarget.destination, t, T));
    }
    if (next->checkInterFrame(QInterFrameElementType::InterpolateScale)) {
        look.scaleX = towards(frame->scaleX, next->scaleX, t, T);
        look.scaleY = towards(frame->scaleY, next->scaleY, t, T);
    }
    if (next->checkInterFrame(QInterFrameElementType::InterpolateAngle))
        look.angle = towards(frame->angle, next->angle, t, T);
    if (next->checkInterFrame(QInterFrameElementType::InterpolateOffset))
        look.offset = QPoint(int(towards(frame->offsetX, next->offsetX, t, T)),
                             int(towards(frame->offsetY, next->offsetY, t, T)));
    return look;
}

bool QAnimationPlayer::tick()
{
    const int count = action ? action->frameCount() : 0;
    if (count == 0) {
        shown = Look();
        return false;
    }
    const int before = started ? shown.frame : -1;
    // The action may have lost frames since the last tick.
    if (current >= count) {
        current = 0;
        ticks = 0;
    }
    if (started) {
        ++ticks;
        const int time = action->frameAt(uint(current))->time;
        if (time >= 0 && ticks >= time) {
            current = nextFrame(action, current);
            ticks = 0;
        }
    }
    started = true;
    shown = lookAt(action, current, ticks);
    return shown.frame != before;
}
