#pragma once

#include "QAnimationTypes.h"
#include "QTextElement.h"

class QAnimationFrame;

// A mark line above a frame: "LoopStart" or one of the "Interpolate ..." lines.
class QInterFrameElement : public QTextElement
{
    Q_OBJECT
public:
    // The frame that it marks, or null.
    QAnimationFrame* frame = nullptr;
    QInterFrameElementType markType = QInterFrameElementType::LoopStart;

    int type() const override;
    void release() override;
    void parse(const QList<QTextToken*>& tokens) override;

    // "LoopStart", "Interpolate Blend", "Interpolate Offset", "Interpolate Scale", "Interpolate Angle".
    static QString textOf(QInterFrameElementType markType);
};
