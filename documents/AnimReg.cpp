#include "AnimReg.h"

#include "QAnimation.h"
#include "QTextElementPool.h"
#include "QTextElementType.h"

namespace {

bool isWord(const QTextToken& token, const char* word)
{
    return token.kind == tkIdentifier && token.text.compare(QLatin1String(word), Qt::CaseInsensitive) == 0;
}

} // namespace

int AnimReg::type() const
{
    return etAnimation;
}

int AnimReg::firstCharClass() const
{
    return charClass(3, '[');
}

bool AnimReg::match(int index, const QTextToken& token)
{
    switch (index) {
    case 0:
        return token.kind == tkLeftBracket;
    case 1:
        return isWord(token, "begin");
    case 2:
        return isWord(token, "action");
    case 3:
        return token.kind == tkInteger;
    case 4:
        return token.kind == tkRightBracket;
    default:
        return true;
    }
}

QTextElement* AnimReg::create()
{
    return QTextElementPool<QAnimation>::create();
}
