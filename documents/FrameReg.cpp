#include "FrameReg.h"

#include "QAnimationFrame.h"
#include "QTextElementPool.h"
#include "QTextElementType.h"

int FrameReg::type() const
{
    return etFrame;
}

int FrameReg::firstCharClass() const
{
    return charClass(2);
}

bool FrameReg::match(int index, const QTextToken& token)
{
    if (index >= 9) return true;
    return index % 2 ? token.kind == tkComma : token.kind == tkInteger;
}

QTextElement* FrameReg::create()
{
    return QTextElementPool<QAnimationFrame>::create();
}
