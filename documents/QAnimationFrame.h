#pragma once

#include "QAnimationTypes.h"
#include "QTextElement.h"

#include <QList>
#include <QRect>

class QAnimation;
class QCollisionBox;
class QCollisionBoxes;
class QInterFrameElement;

// One frame line "group,image, x,y, time[, flip[, blend[, scaleX[, scaleY[, angle]]]]]". Its marks and
// box sets stand on the lines above it.
class QAnimationFrame : public QTextElement
{
    Q_OBJECT
public:
    int spriteGroup = 0;
    int spriteIndex = 0;
    int offsetX = 0;
    int offsetY = 0;
    // Ticks; a negative time keeps the frame for good.
    int time = 0;
    // QAnimationFrameFlip bits.
    int flip = 0;
    QAnimationFrameBlend blend = QAnimationFrameBlend::None;
    QBlendTarget blendTarget;
    double scaleX = 1;
    double scaleY = 1;
    double angle = 0;
    QAnimation* parent = nullptr;
    // Indexed by QCollisionBoxType; each null or the set in that slot.
    QCollisionBoxes* boxes[4] = {nullptr, nullptr, nullptr, nullptr};
    // At most one of each type, in line order.
    QList<QInterFrameElement*> interFrames;

    int type() const override;
    // The highest of the marks and box lines right above the frame.
    int firstLine() const override;
    void release() override;
    void parse(const QList<QTextToken*>& tokens) override;

    // The line as the model writes it from the current values.
    QString text() const;
    // The line of a frame added through the model.
    static QString newFrameText();

    // Store the whole tuple, or one field of it, and rewrite the line when anything differs.
    void setValues(int group, int index, int x, int y, int ticks, int flipBits,
                   QAnimationFrameBlend blendMode, QBlendTarget target, double scaleXValue,
                   double scaleYValue, double angleValue);
    void setSpriteGroup(int value) { setField(&QAnimationFrame::spriteGroup, value); }
    void setSpriteIndex(int value) { setField(&QAnimationFrame::spriteIndex, value); }
    void setOffsetX(int value) { setField(&QAnimationFrame::offsetX, value); }
    void setOffsetY(int value) { setField(&QAnimationFrame::offsetY, value); }
    void setTime(int value) { setField(&QAnimationFrame::time, value); }
    void setFlip(int value) { setField(&QAnimationFrame::flip, value); }
    void setBlend(QAnimationFrameBlend value) { setField(&QAnimationFrame::blend, value); }
    void setBlendTarget(QBlendTarget value) { setField(&QAnimationFrame::blendTarget, value); }
    void setScaleX(double value) { setField(&QAnimationFrame::scaleX, value); }
    void setScaleY(double value) { setField(&QAnimationFrame::scaleY, value); }
    void setAngle(double value) { setField(&QAnimationFrame::angle, value); }

    QInterFrameElement* interFrame(QInterFrameElementType markType) const;
    bool checkInterFrame(QInterFrameElementType markType) const { return interFrame(markType) != nullptr; }
    // On: a mark line above the frame's span; off: its line removed. No change does nothing.
    void setInterFrame(QInterFrameElementType markType, bool on);

    QCollisionBoxes* hitBoxes(QCollisionBoxType boxType) const { return boxes[int(boxType)]; }
    // Adds a box to the set of the slot, making the set first when the slot is empty; sets stand in
    // the order default sets, "Clsn1", "Clsn2", then the frame line.
    QCollisionBox* insertBox(QCollisionBoxType boxType, const QRect& rect);

    // The declarations and box lines above the frame, trimmed.
    QString clsnText() const;
    // Reads declarations with their box lines, as clsnText() gives them, and adds every box.
    void importClsnText(const QString& text);

private:
    template <class T>
    void setField(T QAnimationFrame::*field, T value);
    // Writes the line from the stored values and tells the model.
    void write();
};
