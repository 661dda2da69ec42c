#pragma once

#include "QTextElementReg.h"

// Recognises the declaration of a box set: "Clsn1: n", "Clsn2: n", "Clsn1Default: n", "Clsn2Default: n".
class CLSNDeclReg : public QTextElementReg
{
public:
    int type() const override;
    int firstCharClass() const override;
    bool match(int index, const QTextToken& token) override;
    QTextElement* create() override;
};
