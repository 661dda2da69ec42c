#pragma once

#include "QTextElementReg.h"

// Recognises the comment line before a section header (a line whose only token is its comment).
class NameCmmReg : public QTextElementReg
{
public:
    int type() const override;
    int firstCharClass() const override;
    bool match(int index, const QTextToken& token) override;
    QTextElement* create() override;
};
