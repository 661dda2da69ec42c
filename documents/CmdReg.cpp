#include "CmdReg.h"

#include "QCommand.h"
#include "QTextElementPool.h"
#include "QTextElementType.h"

int CmdReg::type() const
{
    return etCommand;
}

int CmdReg::firstCharClass() const
{
    return charClass(3, '[');
}

bool CmdReg::match(int index, const QTextToken& token)
{
    switch (index) {
    case 0:
        return token.kind == tkLeftBracket;
    case 1:
        return token.kind == tkIdentifier &&
               token.text.compare(QLatin1String("command"), Qt::CaseInsensitive) == 0;
    case 2:
        return token.kind == tkRightBracket;
    default:
        return true;
    }
}

QTextElement* CmdReg::create()
{
    return QTextElementPool<QCommand>::create();
}
