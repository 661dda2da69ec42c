#pragma once

#include "QTextElementReg.h"

// Recognises a frame line: five integers apart by commas, then anything.
class FrameReg : public QTextElementReg
{
public:
    int type() const override;
    int firstCharClass() const override;
    bool match(int index, const QTextToken& token) override;
    QTextElement* create() override;
};
