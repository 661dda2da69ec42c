#pragma once

#include "QTextElementReg.h"

// Recognises a box line "Clsn2[i] = x1, y1, x2, y2", with nothing behind it.
class CLSNReg : public QTextElementReg
{
public:
    int type() const override;
    int firstCharClass() const override;
    bool match(int index, const QTextToken& token) override;
    QTextElement* create() override;
};
