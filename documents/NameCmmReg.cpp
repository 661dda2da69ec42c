#include "NameCmmReg.h"

#include "QNameComment.h"
#include "QTextElementPool.h"
#include "QTextElementType.h"

int NameCmmReg::type() const
{
    return etNameComment;
}

int NameCmmReg::firstCharClass() const
{
    return charClass(1);
}

bool NameCmmReg::match(int index, const QTextToken& token)
{
    if (index == 0) return token.kind == tkEndOfLine && !token.text.isEmpty();
    return token.kind == tkEndOfLine && token.text.isEmpty();
}

QTextElement* NameCmmReg::create()
{
    return QTextElementPool<QNameComment>::create();
}
