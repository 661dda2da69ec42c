#pragma once

#include "QTextElementReg.h"

// Recognises an action header "[Begin Action n]"; anything behind the "]" is ignored.
class AnimReg : public QTextElementReg
{
public:
    int type() const override;
    int firstCharClass() const override;
    bool match(int index, const QTextToken& token) override;
    QTextElement* create() override;
};
