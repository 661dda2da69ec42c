#include "InterFrameReg.h"

#include "QInterFrameElement.h"
#include "QTextElementPool.h"
#include "QTextElementType.h"

int InterFrameReg::type() const
{
    return etInterFrame;
}

int InterFrameReg::firstCharClass() const
{
    return charClass(7, 'L', 'I');
}

bool InterFrameReg::match(int index, const QTextToken& token)
{
    if (index == 0) {
        if (token.kind != tkIdentifier) return false;
        loopStart = token.text.compare(QLatin1String("loopstart"), Qt::CaseInsensitive) == 0;
        return loopStart || token.text.compare(QLatin1String("interpolate"), Qt::CaseInsensitive) == 0;
    }
    if (loopStart || index >= 2) return token.kind == tkEndOfLine;
    if (token.kind != tkIdentifier) return false;
    const QString what = token.text.toLower();
    return what == QLatin1String("blend") || what == QLatin1String("angle") ||
           what == QLatin1String("scale") || what == QLatin1String("offset");
}

QTextElement* InterFrameReg::create()
{
    return QTextElementPool<QInterFrameElement>::create();
}
