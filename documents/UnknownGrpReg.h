#pragma once

#include "QTextElementReg.h"

// Recognises any line that begins with '['; registered last, so it takes only what nothing else did.
class UnknownGrpReg : public QTextElementReg
{
public:
    int type() const override;
    int firstCharClass() const override;
    bool match(int index, const QTextToken& token) override;
    QTextElement* create() override;
};
