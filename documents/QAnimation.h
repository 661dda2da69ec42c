#pragma once

#include "QGroupHeader.h"

#include <QList>

class QAnimationFrame;

// An action: the header line "[Begin Action n]" and, through the model, the frames of its section.
class QAnimation : public QGroupHeader
{
    Q_OBJECT
public:
    // The action number.
    int number = 0;
    // The frames of the section, in line order; kept by QAnimations.
    QList<QAnimationFrame*> frames;
    uint currentFrameIndex = 0;

    int type() const override;
    void release() override;
    void parse(const QList<QTextToken*>& tokens) override;

    // The header line for an action number.
    static QString headerText(int number);

    void setNumber(int value);
    // As QGroupHeader::setName, and the model's row shows the new name.
    void setName(const QString& text);

    int frameCount() const { return int(frames.size()); }
    QAnimationFrame* frameAt(uint index) const;
    // A new frame "-1,0, 0,0, 10" below the last frame, or right below the header without frames.
    QAnimationFrame* frameAdd();
    // A new frame above the span of the frame at index (its marks and boxes stay with it).
    QAnimationFrame* frameInsert(uint index);
};
