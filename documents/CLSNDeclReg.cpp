#include "CLSNDeclReg.h"

#include "QCollisionBoxes.h"
#include "QTextElementPool.h"
#include "QTextElementType.h"

int CLSNDeclReg::type() const
{
    return etCollisionBoxes;
}

int CLSNDeclReg::firstCharClass() const
{
    return charClass(6, 'C');
}

bool CLSNDeclReg::match(int index, const QTextToken& token)
{
    switch (index) {
    case 0: {
        if (token.kind != tkIdentifier) return false;
        const QString word = token.text.toLower();
        return word == QLatin1String("clsn1") || word == QLatin1String("clsn2") ||
               word == QLatin1String("clsn1default") || word == QLatin1String("clsn2default");
    }
    case 1:
        return token.kind == tkColon;
    case 2:
        return token.kind == tkInteger;
    default:
        // The line's end, and a comment that names a section below.
        return token.kind == tkEndOfLine;
    }
}

QTextElement* CLSNDeclReg::create()
{
    return QTextElementPool<QCollisionBoxes>::create();
}
