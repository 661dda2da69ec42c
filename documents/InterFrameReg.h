#pragma once

#include "QTextElementReg.h"

// Recognises "LoopStart" and "Interpolate Blend", "Interpolate Offset", "Interpolate Scale",
// "Interpolate Angle". Which of the two words began the line is kept between the calls of one line.
class InterFrameReg : public QTextElementReg
{
public:
    int type() const override;
    int firstCharClass() const override;
    bool match(int index, const QTextToken& token) override;
    QTextElement* create() override;

private:
    bool loopStart = false;
};
