#include "CLSNReg.h"

#include "QCollisionBox.h"
#include "QTextElementPool.h"
#include "QTextElementType.h"

int CLSNReg::type() const
{
    return etCollisionBox;
}

int CLSNReg::firstCharClass() const
{
    return charClass(6, 'C');
}

bool CLSNReg::match(int index, const QTextToken& token)
{
    switch (index) {
    case 0:
        return token.kind == tkIdentifier &&
               token.text.startsWith(QLatin1String("clsn"), Qt::CaseInsensitive);
    case 1:
        return token.kind == tkLeftBracket;
    case 2:
        return token.kind == tkInteger;
    case 3:
        return token.kind == tkRightBracket;
    case 4:
        return token.kind == tkEqual;
    case 5:
    case 7:
    case 9:
    case 11:
        return token.kind == tkInteger;
    case 6:
    case 8:
    case 10:
        return token.kind == tkComma;
    default:
        return token.kind == tkEndOfLine;
    }
}

QTextElement* CLSNReg::create()
{
    return QTextElementPool<QCollisionBox>::create();
}
