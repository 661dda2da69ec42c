#include "SingletonGroupReg.h"

#include "QSingletonParamGroup.h"
#include "QTextElementPool.h"
#include "QTextElementType.h"

SingletonGroupReg::SingletonGroupReg(const QString& first, const QString& second, int subType)
    : first(first), second(second), section(subType)
{}

int SingletonGroupReg::type() const
{
    return etSingletonGroup;
}

int SingletonGroupReg::subType() const
{
    return section;
}

int SingletonGroupReg::firstCharClass() const
{
    return charClass(3, '[');
}

namespace {

bool isWord(const QTextToken& token, const QString& word)
{
    return token.kind == tkIdentifier && token.text.compare(word, Qt::CaseInsensitive) == 0;
}

} // namespace

bool SingletonGroupReg::match(int index, const QTextToken& token)
{
    switch (index) {
    case 0:
        return token.kind == tkLeftBracket;
    case 1:
        return isWord(token, first);
    case 2:
        return second.isEmpty() ? token.kind == tkRightBracket : isWord(token, second);
    case 3:
        return second.isEmpty() || token.kind == tkRightBracket;
    default:
        return true;
    }
}

QTextElement* SingletonGroupReg::create()
{
    QSingletonParamGroup* group = QTextElementPool<QSingletonParamGroup>::create();
    group->section = section;
    return group;
}
