#include "QAnimationsEditor.h"

#include "QAnimSpriteWorkspace.h"
#include "QAnimation.h"
#include "QAnimationFrame.h"
#include "QAnimations.h"
#include "QAnimationsPanel.h"
#include "QInterFrameElement.h"
#include "QSprRender.h"
#include "QSprites.h"
#include "QTextEditor.h"
#include "QTextWorkspace.h"
#include "QViewSettings.h"

#include <QApplication>
#include <QFileInfo>
#include <QScopedValueRollback>

QAnimationsEditor::QAnimationsEditor(QAnimSpriteWorkspace* sprites, QTextWorkspace* text, QObject* parent)
    : QTextDocumentEditor(text, parent), spritesPage(sprites), render(sprites->view()),
      panelWidget(new QAnimationsPanel(this))
{
    restoredAction = QViewSettings::value("air_sel", -1).toInt();
    restoredFrame = QViewSettings::value("air_frame_sel", 0).toInt();
    connect(view(), &QSprRender::axisChanged, this, &QAnimationsEditor::axisChanged);
    connect(view(), &QSprRender::extraAxisChanged, this, &QAnimationsEditor::extraAxisChanged);
    connect(view(), &QSprRender::clsnModeExit, this, &QAnimationsEditor::clsnModeExit);
    connect(view(), &QSprRender::cursorChanged, this, &QAnimationsEditor::cursorChanged);
}

QAnimationsEditor::~QAnimationsEditor()
{
    forceStop();
    formActive = false;
    bind(nullptr, nullptr, nullptr);
    delete panelWidget;
}

QWidget* QAnimationsEditor::dialogParent()
{
    return QApplication::activeWindow();
}

QWidget* QAnimationsEditor::panel() const
{
    return textMode ? QTextDocumentEditor::panel() : panelWidget;
}

bool QAnimationsEditor::isModified() const
{
    return model && model->isModified();
}

void QAnimationsEditor::bind(QAnimations* animations, QSprites* sprites,
                             QMap<QString, QString>* projectVariables)
{
    // A project switch ends playing first: the loop must not outlive the models it reads.
    forceStop();
    if (model) disconnect(model, nullptr, this, nullptr);
    model = animations;
    spriteModel = sprites;
    variables = projectVariables;
    QTextDocumentEditor::bind(model ? model->textFile() : nullptr);
    if (model) {
        connect(model, &QAnimations::changed, this, &QAnimationsEditor::updated);
        connect(model, &QAnimations::updated, this, &QAnimationsEditor::updated);
        connect(model, &QAnimations::changed, this, &QAnimationsEditor::modified);
        connect(model, &QAnimations::modelReset, this, &QAnimationsEditor::updated);
    }
    emit enabled(model != nullptr);
    emit enableNew(model != nullptr);
    if (viewShown() && spritesPage) {
        spritesPage->bind(model, spriteModel);
        view()->setRenderMode(QSprRender::AnimationMode);
        view()->setContentsHidden(!model);
    }
    updateSel();
}

void QAnimationsEditor::activate()
{
    if (textMode) {
        formActive = false;
        QTextDocumentEditor::activate();
        return;
    }
    formActive = true;
    if (!viewShown() || !spritesPage) return;
    render->setRenderMode(QSprRender::AnimationMode);
    spritesPage->bind(model, spriteModel);
    render->setContentsHidden(!model);
    // The place kept from the last session goes to the first file shown that has it.
    if (model && restoredAction >= 0 && restoredAction < model->count()) {
        model->currentIndex = restoredAction;
        QAnimation* action = model->at(uint(restoredAction));
        if (restoredFrame >= 0 && restoredFrame < action->frameCount())
            action->currentFrameIndex = uint(restoredFrame);
        restoredAction = -1;
    }
    updateSel();
}

void QAnimationsEditor::deactivate()
{
    forceStop();
    emit flushFields();
    if (drawingType >= 0) clsnModeExit();
    // The sprites editor shares the view and keeps its own ghost.
    if (viewShown() && onion) {
        view()->setOnion(false, 1, 100);
        view()->setOnionSprite(-1);
    }
    if (model) {
        QViewSettings::setValue("air_sel", actionPosition());
        QViewSettings::setValue("air_frame_sel", framePosition());
    }
    // The text page may still be wired after text mode was left: the mode flips before the switch.
    if (isActive()) QTextDocumentEditor::deactivate();
    formActive = false;
}

void QAnimationsEditor::navigate(int, int index, int)
{
    if (textMode) {
        textWorkspace()->goToBlock(index);
        return;
    }
    definePos(index, 0);
}

QAnimation* QAnimationsEditor::currentAction() const
{
    return model && model->currentIndex >= 0 ? model->at(uint(model->currentIndex)) : nullptr;
}

QAnimationFrame* QAnimationsEditor::currentFrame() const
{
    QAnimation* action = currentAction();
    return action ? action->frameAt(action->currentFrameIndex) : nullptr;
}

int QAnimationsEditor::actionPosition() const
{
    return currentAction() ? model->currentIndex : -1;
}

int QAnimationsEditor::framePosition() const
{
    return currentFrame() ? int(currentAction()->currentFrameIndex) : -1;
}

int QAnimationsEditor::tickSum(const QAnimation* action, int frame)
{
    int sum = 0;
    for (int i = 0; action && i <= frame && i < action->frameCount(); ++i) {
        const int time = action->frameAt(uint(i))->time;
        if (time < 0) return time;
        sum += time;
    }
    return sum;
}

int QAnimationsEditor::transIndex(const QAnimationFrame* frame)
{
    if (!frame || frame->blend == QAnimationFrameBlend::None) return 0;
    if (frame->blend == QAnimationFrameBlend::Subtraction) return 3;
    if (frame->blendTarget.source == 256 && frame->blendTarget.destination == 256) return 1;
    if (frame->blendTarget.source == 256 && frame->blendTarget.destination == 128) return 2;
    return 4;
}

void QAnimationsEditor::updated()
{
    // The view's own writes and the editor's own ones are shown already; a refresh would also drop the
    // view's box selection in the middle of its work.
    if (writing > 0 || (render && render->isUpdating()) || playing) return;
    updateSel();
}

void QAnimationsEditor::modified()
{
    emit titleChanged();
}

void QAnimationsEditor::updateSel()
{
    if (!model) {
        showAction(-1, 0);
        return;
    }
    int position = model->currentIndex;
    if (position >= model->count()) position = model->count() - 1;
    if (position < 0 && model->count() > 0) position = 0;
    QAnimation* action = position >= 0 ? model->at(uint(position)) : nullptr;
    showAction(position, action ? int(action->currentFrameIndex) : 0);
}

void QAnimationsEditor::definePos(int action, int frame)
{
    if (block > 0) return;
    emit flushFields();
    if (playing) forceStop();
    showAction(action, frame);
}

void QAnimationsEditor::selPosChanged(int position)
{
    if (block > 0) return;
    QAnimation* action = model ? model->at(uint(qMax(0, position))) : nullptr;
    definePos(position, action ? int(action->currentFrameIndex) : 0);
}

void QAnimationsEditor::frameSelPosChanged(int position)
{
    if (block > 0 || !currentAction()) return;
    emit flushFields();
    showFrame(position);
}

void QAnimationsEditor::prevAnim()
{
    if (model && model->currentIndex > 0) definePos(model->currentIndex - 1, 0);
}

void QAnimationsEditor::nextAnim()
{
    if (model && model->currentIndex + 1 < model->count()) definePos(model->currentIndex + 1, 0);
}

void QAnimationsEditor::prevFrame()
{
    QAnimation* action = currentAction();
    if (!action || action->frameCount() == 0) return;
    emit flushFields();
    // Stepping wraps, as the action itself does when it plays.
    const int at = int(action->currentFrameIndex);
    showFrame(at > 0 ? at - 1 : action->frameCount() - 1);
}

void QAnimationsEditor::nextFrame()
{
    QAnimation* action = currentAction();
    if (!action || action->frameCount() == 0) return;
    emit flushFields();
    const int at = int(action->currentFrameIndex);
    showFrame(at + 1 < action->frameCount() ? at + 1 : 0);
}

void QAnimationsEditor::showAction(int position, int frame)
{
    QAnimation* action = model && position >= 0 ? model->at(uint(position)) : nullptr;
    if (model) model->currentIndex = action ? position : 0;
    if (viewShown()) {
        view()->setContentsHidden(!model);
        view()->setAction(action ? position : -1);
    }
    {
        const QScopedValueRollback<int> guard(block, block + 1);
        const int count = model ? model->count() : 0;
        emit enabled(model != nullptr);
        emit enabled2(action != nullptr);
        emit setMaximum(count);
        emit setSelPos(action ? position : 0);
        emit setPosText(action ? QStringLiteral("%1 / %2").arg(position + 1).arg(count)
                               : QStringLiteral("0 / 0"));
        emit setNumber(action ? action->number : 0);
        emit setName(action ? action->name() : QString());
    }
    showFrame(frame);
}

void QAnimationsEditor::showFrame(int index)
{
    QAnimation* action = currentAction();
    if (action && action->frameCount() > 0) index = qBound(0, index, action->frameCount() - 1);
    QAnimationFrame* frame = action && index >= 0 ? action->frameAt(uint(index)) : nullptr;
    if (action) action->currentFrameIndex = frame ? uint(index) : 0;
    if (viewShown()) view()->setFrame(frame ? index : -1);
    showOnion();
    const QScopedValueRollback<int> guard(block, block + 1);
    emit frameEnabled(frame != nullptr);
    emit setFrameMaximum(action ? action->frameCount() : 0);
    if (!frame) {
        resetFrameFields();
        return;
    }
    emit setFrameSelPos(index);
    emit setFramePosText(QStringLiteral("%1 / %2 - %3 ticks")
                             .arg(index + 1)
                             .arg(action->frameCount())
                             .arg(tickSum(action, index)));
    emit setFrameGrp(frame->spriteGroup);
    emit setFrameNum(frame->spriteIndex);
    emit setFrameX(frame->offsetX);
    emit setFrameY(frame->offsetY);
    emit setFrameTime(frame->time);
    emit setFrameFlip(frame->flip & 3);
    const int trans = transIndex(frame);
    emit setFrameTrans(trans);
    emit transEnabled(trans == 4);
    emit setFrameSrc(frame->blendTarget.source);
    emit setFrameDst(frame->blendTarget.destination);
    emit setFrameLoop(frame->checkInterFrame(QInterFrameElementType::LoopStart));
    emit setFrameScaleX(frame->scaleX);
    emit setFrameScaleY(frame->scaleY);
    emit setFrameAngle(frame->angle);
    emit setFrameIBlend(frame->checkInterFrame(QInterFrameElementType::InterpolateBlend));
    emit setFrameIOffset(frame->checkInterFrame(QInterFrameElementType::InterpolateOffset));
    emit setFrameIScale(frame->checkInterFrame(QInterFrameElementType::InterpolateScale));
    emit setFrameIAngle(frame->checkInterFrame(QInterFrameElementType::InterpolateAngle));
}

void QAnimationsEditor::resetFrameFields()
{
    emit setFrameSelPos(0);
    emit setFramePosText(QStringLiteral("0 / 0"));
    emit setFrameGrp(0);
    emit setFrameNum(0);
    emit setFrameX(0);
    emit setFrameY(0);
    emit setFrameTime(0);
    emit setFrameFlip(0);
    emit setFrameTrans(0);
    emit transEnabled(false);
    emit setFrameSrc(256);
    emit setFrameDst(256);
    emit setFrameLoop(false);
    emit setFrameScaleX(1);
    emit setFrameScaleY(1);
    emit setFrameAngle(0);
    emit setFrameIBlend(false);
    emit setFrameIOffset(false);
    emit setFrameIScale(false);
    emit setFrameIAngle(false);
}

void QAnimationsEditor::refreshView()
{
    if (!viewShown()) return;
    QAnimation* action = currentAction();
    view()->setFrame(action && currentFrame() ? int(action->currentFrameIndex) : -1);
}

void QAnimationsEditor::txtModeChanged(bool on)
{
    if (on == textMode) return;
    forceStop();
    emit flushFields();
    if (!on) updateFromText();
    textMode = on;
    if (!on && !model.isNull()) updateSel();
    emit workspaceChanged();
}

void QAnimationsEditor::updateFromText()
{
    if (!model || !textWorkspace()->editor()) return;
    if (textWorkspace()->text() != model->textFile()) return;
    const int line = textWorkspace()->editor()->textCursor().blockNumber();
    int action = -1;
    for (int i = 0; i < model->count(); ++i)
        if (model->at(uint(i))->block.blockNumber() <= line) action = i;
    if (action < 0) return;
    QAnimation* found = model->at(uint(action));
    int frame = 0;
    for (int i = 0; i < found->frameCount(); ++i)
        if (found->frameAt(uint(i))->firstLine() <= line) frame = i;
    model->currentIndex = action;
    found->currentFrameIndex = uint(frame);
}

void QAnimationsEditor::cursorChanged(QPoint position)
{
    Q_UNUSED(position);
    if (spritesPage) emit statusText(spritesPage->statusText());
}

void QAnimationsEditor::orgChanged()
{
    updateSel();
}

void QAnimationsEditor::orgObject(QObject* object)
{
    // The organizer picked an action of this model.
    if (!model) return;
    const int at = model->animations.indexOf(qobject_cast<QAnimation*>(object));
    if (at >= 0) definePos(at, 0);
}

void QAnimationsEditor::animChanged()
{
    updateSel();
}

QString QAnimationsEditor::startFolder(const char* key) const
{
    if (!variables) return QString();
    const QString own = variables->value(QLatin1String(key));
    return own.isEmpty() ? variables->value(QStringLiteral("proj_path")) : own;
}

void QAnimationsEditor::rememberFolder(const char* key, const QString& file)
{
    if (variables && !file.isEmpty()) (*variables)[QLatin1String(key)] = QFileInfo(file).absolutePath();
}

void QAnimationsEditor::onionChanged(bool on)
{
    if (block > 0) return;
    onion = on;
    showOnion();
}

int QAnimationsEditor::onionFrame(const QAnimation* action, int frame)
{
    if (!action || frame < 0 || frame >= action->frameCount() || action->frameCount() < 2) return -1;
    return frame > 0 ? frame - 1 : action->frameCount() - 1;
}

void QAnimationsEditor::showOnion()
{
    if (!viewShown()) return;
    QAnimation* action = currentAction();
    const int ghost = onionFrame(action, framePosition());
    const QAnimationFrame* previous = ghost >= 0 ? action->frameAt(uint(ghost)) : nullptr;
    const int sprite = onion && previous && spriteModel
                           ? spriteModel->find(0, previous->spriteGroup, previous->spriteIndex)
                           : -1;
    view()->setOnion(onion && sprite >= 0, QViewSettings::value("onion_effect", 1).toInt(),
                     QViewSettings::value("onion_opacity", 100).toInt());
    view()->setOnionSprite(sprite);
}
