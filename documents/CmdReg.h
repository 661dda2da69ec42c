#pragma once

#include "QTextElementReg.h"

// Recognises "[Command]", ignoring case; anything may follow the closing bracket.
class CmdReg : public QTextElementReg
{
public:
    int type() const override;
    int firstCharClass() const override;
    bool match(int index, const QTextToken& token) override;
    QTextElement* create() override;
};
