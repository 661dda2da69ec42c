#include "UnknownGrpReg.h"

#include "QTextElementPool.h"
#include "QTextElementType.h"
#include "QUnknownGroup.h"

int UnknownGrpReg::type() const
{
    return etUnknownGroup;
}

int UnknownGrpReg::firstCharClass() const
{
    return charClass(3, '[');
}

bool UnknownGrpReg::match(int index, const QTextToken& token)
{
    return index > 0 || token.kind == tkLeftBracket;
}

QTextElement* UnknownGrpReg::create()
{
    return QTextElementPool<QUnknownGroup>::create();
}
