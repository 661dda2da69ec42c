#pragma once

// Animation documents for tests: a description of the model that two models can be compared by, and
// the checks that hold between any two edits.

#include "QAirDocument.h"
#include "QAnimation.h"
#include "QAnimationFrame.h"
#include "QAnimations.h"
#include "QCollisionBox.h"
#include "QCollisionBoxes.h"
#include "QElementTextEditor.h"
#include "QInterFrameElement.h"
#include "QTextElementRegistry.h"
#include "QTextElementType.h"
#include "TestElements.h"

#include <QRegularExpression>
#include <QSet>
#include <QStringList>

// Whether a frame line pins its blend target. An "A" word that is neither "A", "A" plus one
// character nor "AS..D.." leaves the target as the line had it before, which no fresh reading knows.
inline bool blendTargetKnown(const QString& line)
{
    static const QRegularExpression word(QStringLiteral("\\b[aA][A-Za-z0-9_.]*"));
    static const QRegularExpression pattern(QStringLiteral("^as\\d{1,3}d\\d{1,3}$"),
                                            QRegularExpression::CaseInsensitiveOption);
    for (auto it = word.globalMatch(line); it.hasNext();) {
        const QString found = it.next().captured();
        if (found.size() > 2 && !pattern.match(found).hasMatch()) return false;
    }
    return true;
}

inline QString describeBoxes(const QCollisionBoxes* set)
{
    static const char* const names[] = {"C1", "C2", "C1D", "C2D"};
    QStringList boxes;
    for (const QCollisionBox* box : set->boxes)
        boxes << QStringLiteral("%1,%2,%3,%4").arg(box->x1).arg(box->y1).arg(box->x2).arg(box->y2);
    return QStringLiteral("%1(%2)").arg(QLatin1String(names[int(set->clsnType)]),
                                        boxes.join(QLatin1Char(' ')));
}

// "g,i x,y t" and the tail values that differ from their defaults, then marks and sets.
inline QString describeFrame(const QAnimationFrame* frame)
{
    QString text = QStringLiteral("%1,%2 %3,%4 %5")
                       .arg(frame->spriteGroup)
                       .arg(frame->spriteIndex)
                       .arg(frame->offsetX)
                       .arg(frame->offsetY)
                       .arg(frame->time);
    if (frame->flip) text += QStringLiteral(" f%1").arg(frame->flip);
    if (frame->blend == QAnimationFrameBlend::Subtraction) text += QStringLiteral(" S");
    if (frame->blend == QAnimationFrameBlend::Addition) {
        text += QStringLiteral(" A");
        if (blendTargetKnown(frame->lineText()))
            text +=
                QStringLiteral("%1/%2").arg(frame->blendTarget.source).arg(frame->blendTarget.destination);
    }
    if (frame->scaleX != 1 || frame->scaleY != 1)
        text += QStringLiteral(" s%1x%2").arg(frame->scaleX).arg(frame->scaleY);
    if (frame->angle != 0) text += QStringLiteral(" r%1").arg(frame->angle);
    for (const QInterFrameElement* mark : frame->interFrames)
        text += QStringLiteral(" M%1").arg(int(mark->markType));
    for (const QCollisionBoxes* set : frame->boxes)
        if (set) text += QLatin1Char(' ') + describeBoxes(set);
    return text;
}

// One line per action: "number [name]: frame; frame; ...".
inline QString describeModel(const QAnimations& model, bool names = true)
{
    QStringList lines;
    for (const QAnimation* animation : model.animations) {
        QStringList frames;
        for (const QAnimationFrame* frame : animation->frames)
            frames << describeFrame(frame);
        QString head = QString::number(animation->number);
        if (names && !animation->name().isEmpty()) head += QStringLiteral(" [%1]").arg(animation->name());
        lines << head + QStringLiteral(": ") + frames.join(QStringLiteral("; "));
    }
    return lines.join(QLatin1Char('\n'));
}

// The model's links against themselves and against the document: every element that the model
// reaches stands on a line of this document, in line order; an empty answer when all is well.
inline QString checkModel(const QAnimations& model)
{
    const QElementTextEditor* editor = model.editor();
    if (!editor) return model.animations.isEmpty() ? QString() : QStringLiteral("actions without a document");
    QSet<const QTextElement*> listed;
    for (const QTextElement* element = editor->firstElement; element; element = element->next)
        listed.insert(element);
    auto live = [&](const QTextElement* element) {
        return element && listed.contains(element) && element->valid && element->editor == editor &&
               QElementTextEditor::elementAt(element->block) == element;
    };
    int lastLine = -1;
    int animationCount = 0;
    for (const QTextElement* element = editor->firstElement; element; element = element->next)
        if (element->type() == etAnimation) ++animationCount;
    if (animationCount != model.animations.size())
        return QStringLiteral("%1 action lines, %2 actions").arg(animationCount).arg(model.animations.size());
    for (const QAnimation* animation : model.animations) {
        if (!live(animation))
            return QStringLiteral("action %1 is not in the document").arg(animation->number);
        if (animation->block.blockNumber() <= lastLine) return QStringLiteral("actions out of line order");
        lastLine = animation->block.blockNumber();
        int frameLine = lastLine;
        for (const QAnimationFrame* frame : animation->frames) {
            if (!live(frame)) return QStringLiteral("a frame of action %1 is gone").arg(animation->number);
            if (frame->parent != animation) return QStringLiteral("frame with a wrong parent");
            if (frame->block.blockNumber() <= frameLine) return QStringLiteral("frames out of line order");
            frameLine = frame->block.blockNumber();
            for (int slot = 0; slot < 4; ++slot) {
                const QCollisionBoxes* set = frame->boxes[slot];
                if (!set) continue;
                if (!live(set)) return QStringLiteral("a set of a frame is gone");
                if (set->frame != frame || int(set->clsnType) != slot)
                    return QStringLiteral("set in the wrong slot or with a wrong frame");
                for (const QCollisionBox* box : set->boxes) {
                    if (!live(box)) return QStringLiteral("a box of a set is gone");
                    if (box->parent != set) return QStringLiteral("box with a wrong parent");
                }
            }
            for (const QInterFrameElement* mark : frame->interFrames) {
                if (!live(mark)) return QStringLiteral("a mark of a frame is gone");
                if (mark->frame != frame) return QStringLiteral("mark with a wrong frame");
            }
        }
    }
    return QString();
}

// The model against a fresh reading of the document's text, names aside; an empty answer when they
// agree, else the first action row that differs.
inline QString compareWithFresh(const QAirDocument& document)
{
    QAirDocument fresh(document.text());
    const QStringList mine = describeModel(document.model, false).split(QLatin1Char('\n'));
    const QStringList theirs = describeModel(fresh.model, false).split(QLatin1Char('\n'));
    for (int i = 0; i < qMax(mine.size(), theirs.size()); ++i)
        if (mine.value(i) != theirs.value(i))
            return QStringLiteral("action row %1: model '%2', fresh reading '%3'")
                .arg(i)
                .arg(mine.value(i), theirs.value(i));
    return QString();
}
