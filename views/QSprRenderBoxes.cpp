// The collision boxes of the frame shown: the table the view draws and hit-tests, and the edits that
// reach the animation model (each one step of the text's undo).

#include "QSprRender.h"

#include "QAnimation.h"
#include "QAnimationFrame.h"
#include "QAnimations.h"
#include "QCollisionBox.h"
#include "QCollisionBoxes.h"
#include "QElementTextEditor.h"
#include "QSprGeometry.h"

#include <QApplication>
#include <QClipboard>

namespace {

// The set of a kind that shows on a frame: its own boxes, or else the defaults declared at the frame
// or at the nearest frame before it.
QCollisionBoxes* shownSet(QAnimation* action, QAnimationFrame* frame, QCollisionBoxType own,
                          QCollisionBoxType fallback)
{
    QCollisionBoxes* set = frame->hitBoxes(own);
    if (set && !set->boxes.isEmpty()) return set;
    if (!action) return nullptr;
    for (int i = int(action->frames.indexOf(frame)); i >= 0; --i)
        if (QCollisionBoxes* defaults = action->frames.at(i)->hitBoxes(fallback)) return defaults;
    return nullptr;
}

} // namespace

int QSprRender::typeOf(int index) const
{
    const Box& entry = boxTable[size_t(index)];
    if (entry.box && entry.box->parent) return int(entry.box->parent->clsnType) & 3;
    return drawingType;
}

bool QSprRender::boxSelected(int index) const
{
    return index >= 0 && index < boxes && boxTable[size_t(index)].selected;
}

void QSprRender::refreshBoxes()
{
    boxes = 0;
    selection = false;
    currentBox = 0;
    if (currentFrame) {
        const QCollisionBoxType kinds[2][2] = {
            {QCollisionBoxType::Collision, QCollisionBoxType::CollisionDefault},
            {QCollisionBoxType::Attack, QCollisionBoxType::AttackDefault}};
        for (const auto& kind : kinds) {
            QCollisionBoxes* set = shownSet(currentAction, currentFrame, kind[0], kind[1]);
            if (!set) continue;
            for (QCollisionBox* box : set->boxes) {
                // The table has room for what a frame can sensibly hold; more are not shown.
                if (boxes >= MaxBoxes) break;
                Box& entry = boxTable[size_t(boxes++)];
                entry.box = box;
                entry.selected = false;
            }
        }
    }
    refresh();
}

void QSprRender::refreshHandles()
{
    QList<QRect> selected;
    for (int i = 0; i < boxes; ++i)
        if (boxTable[size_t(i)].selected) selected << boxTable[size_t(i)].screen.normalized();
    selection = !selected.isEmpty();
    if (selection) handles = QSprGeometry::handles(selected);
}

void QSprRender::deselectBoxes()
{
    for (int i = 0; i < boxes; ++i)
        boxTable[size_t(i)].selected = false;
    selection = false;
    update();
}

QRect QSprRender::toModel(const QRect& screen) const
{
    return zoom.screenToModel(screen, axis);
}

QList<QCollisionBox*> QSprRender::selectedBoxes() const
{
    QList<QCollisionBox*> result;
    for (int i = 0; i < boxes; ++i)
        if (boxTable[size_t(i)].selected && boxTable[size_t(i)].box) result << boxTable[size_t(i)].box;
    return result;
}

void QSprRender::commitBoxes()
{
    updating = true;
    if (actionModel) actionModel->beginEdit();
    for (int i = 0; i < boxes; ++i) {
        Box& entry = boxTable[size_t(i)];
        if (entry.selected && entry.box) entry.box->setRect(toModel(entry.screen));
    }
    if (actionModel) actionModel->endEdit();
    updating = false;
    computeRects();
}

void QSprRender::commitDrawnBox()
{
    if (boxes == 0) return;
    Box& entry = boxTable[size_t(boxes - 1)];
    const QRect screen = entry.screen;
    // A box of a single screen column is dropped; so is one whose top equals its own right edge, a
    // comparison that has always stood this way and that content relies on.
    if (!moved || !currentFrame || screen.left() == screen.right() || screen.top() == screen.right()) {
        --boxes;
        refreshHandles();
        update();
        return;
    }
    updating = true;
    if (actionModel) actionModel->beginEdit();
    entry.box = currentFrame->insertBox(QCollisionBoxType(drawingType), toModel(screen));
    if (actionModel) actionModel->endEdit();
    updating = false;
    if (!entry.box) --boxes;
    computeRects();
}

void QSprRender::copyBoxes()
{
    // By kind, defaults first: the text reads back as the frame's box lines.
    QStringList lines[4];
    for (int i = 0; i < boxes; ++i) {
        const Box& entry = boxTable[size_t(i)];
        if (!entry.selected || !entry.box) continue;
        const int type = typeOf(i);
        const QRect rect = entry.box->rect();
        lines[type] << QStringLiteral("  Clsn%1[%2] = %3, %4, %5, %6\n")
                           .arg((type & 1) + 1)
                           .arg(lines[type].size())
                           .arg(rect.left())
                           .arg(rect.top())
                           .arg(rect.right())
                           .arg(rect.bottom());
    }
    QString text;
    for (int type : {2, 3, 0, 1}) {
        if (lines[type].isEmpty()) continue;
        text += QStringLiteral("Clsn%1%2: %3\n")
                    .arg((type & 1) + 1)
                    .arg(type & 2 ? QStringLiteral("Default") : QString())
                    .arg(lines[type].size());
        text += lines[type].join(QString());
    }
    if (!text.isEmpty()) QApplication::clipboard()->setText(text);
}

void QSprRender::pasteBoxes()
{
    if (!currentFrame) return;
    const QString text = QApplication::clipboard()->text();
    if (!text.contains(QLatin1String("clsn"), Qt::CaseInsensitive) ||
        text.contains(QLatin1String("begin"), Qt::CaseInsensitive))
        return;
    updating = true;
    if (actionModel) actionModel->beginEdit();
    currentFrame->importClsnText(text);
    if (actionModel) actionModel->endEdit();
    updating = false;
    refreshBoxes();
}

void QSprRender::deleteBoxes()
{
    if (!selection || !currentFrame) return;
    updating = true;
    if (actionModel) actionModel->beginEdit();
    for (int i = boxes - 1; i >= 0; --i) {
        Box& entry = boxTable[size_t(i)];
        if (entry.selected && entry.box) entry.box->remove();
    }
    if (actionModel) actionModel->endEdit();
    updating = false;
    refreshBoxes();
}

void QSprRender::flipBoxes(bool defaultBit)
{
    if (!selection || !currentFrame) return;
    updating = true;
    if (actionModel) actionModel->beginEdit();
    for (int i = boxes - 1; i >= 0; --i) {
        Box& entry = boxTable[size_t(i)];
        if (!entry.selected || !entry.box) continue;
        const int type = typeOf(i) ^ (defaultBit ? 2 : 1);
        const QRect rect = entry.box->rect();
        entry.box->remove();
        entry.box = nullptr;
        currentFrame->insertBox(QCollisionBoxType(type), rect);
    }
    if (actionModel) actionModel->endEdit();
    updating = false;
    refreshBoxes();
}

void QSprRender::moveBoxes(QPoint delta)
{
    if (!selection || delta.isNull()) return;
    updating = true;
    if (actionModel) actionModel->beginEdit();
    for (int i = 0; i < boxes; ++i) {
        Box& entry = boxTable[size_t(i)];
        if (entry.selected && entry.box) entry.box->setRect(entry.box->rect().translated(delta));
    }
    if (actionModel) actionModel->endEdit();
    updating = false;
    computeRects();
    update();
}
