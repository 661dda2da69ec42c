// Playback: a tick loop at the game's 60 ticks a second inside playChanged(true), serving events
// between ticks, until stop, a forced stop or the editor going away clears the flag.

#include "QAnimation.h"
#include "QAnimationFrame.h"
#include "QAnimations.h"
#include "QAnimationsEditor.h"
#include "QSprRender.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QPointer>
#include <QScopedValueRollback>
#include <QThread>

void QAnimationsEditor::playChanged(bool on)
{
    if (!on) {
        stopChanged();
        return;
    }
    if (playing || !currentAction() || currentAction()->frameCount() == 0 || textMode) {
        emit playChecked(playing);
        return;
    }
    emit flushFields();
    if (drawingType >= 0) clsnModeExit();
    playing = true;
    emit playChecked(true);
    player.start(currentAction(), qMax(0, framePosition()));
    QPointer<QAnimationsEditor> self(this);
    QElapsedTimer timer;
    timer.start();
    double budget = 0;
    double rateMs = 0;
    int rateTicks = 0;
    int rate = QAnimationPlayer::TicksPerSecond;
    emit rateText(tr("%1 FPS").arg(rate));
    while (self && playing) {
        // The action is read afresh each tick: it may have been edited, or be gone.
        QAnimation* action = currentAction();
        if (!action || action->frameCount() == 0) break;
        player.tick();
        showLook(player.look());
        QCoreApplication::processEvents(QEventLoop::AllEvents);
        if (!self) return;
        budget += QAnimationPlayer::TickMs;
        const double elapsed = timer.nsecsElapsed() / 1e6;
        if (budget > elapsed) QThread::usleep(ulong((budget - elapsed) * 1000));
        // Whole milliseconds would lose a fraction every tick, and the action would run a few percent
        // slow (14 ticks behind after ten seconds); the budget keeps the time to the microsecond.
        const double passed = timer.nsecsElapsed() / 1e6;
        timer.restart();
        budget -= passed;
        rateMs += passed;
        ++rateTicks;
        if (rateMs >= 1000) {
            rate = int(rateTicks * 1000 / rateMs);
            rateMs = 0;
            rateTicks = 0;
            emit rateText(tr("%1 FPS").arg(rate));
        }
    }
    if (!self) return;
    playing = false;
    player.stop();
    emit playChecked(false);
    emit rateText(QString());
    // The form shows the frame the playing stopped at.
    updateSel();
}

void QAnimationsEditor::showLook(const QAnimationPlayer::Look& look)
{
    QAnimation* action = currentAction();
    if (!action || look.frame < 0) return;
    const bool changed = action->currentFrameIndex != uint(look.frame);
    action->currentFrameIndex = uint(look.frame);
    QAnimationFrame* frame = action->frameAt(uint(look.frame));
    const bool bent = look.offset != QPoint(frame->offsetX, frame->offsetY) || look.scaleX != frame->scaleX ||
                      look.scaleY != frame->scaleY || look.angle != frame->angle ||
                      look.source != frame->blendTarget.source ||
                      look.destination != frame->blendTarget.destination;
    if (viewShown()) {
        if (view()->frame() != frame) view()->setFrame(look.frame);
        // Between two frames the marks bend the look; the view shows it without the text hearing of it.
        if (bent)
            view()->setFrameLook(look.offset, look.scaleX, look.scaleY, qRound(look.angle), look.source,
                                 look.destination);
        else
            view()->refresh();
    }
    if (!changed) return;
    const QScopedValueRollback<int> guard(block, block + 1);
    emit setFrameSelPos(look.frame);
    emit setFramePosText(QStringLiteral("%1 / %2 - %3 ticks")
                             .arg(look.frame + 1)
                             .arg(action->frameCount())
                             .arg(tickSum(action, look.frame)));
}

void QAnimationsEditor::stopChanged()
{
    playing = false;
}

void QAnimationsEditor::forceStop()
{
    playing = false;
}
