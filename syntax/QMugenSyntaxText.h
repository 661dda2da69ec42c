#pragma once

#include <QString>
#include <QStringView>

#include <initializer_list>

// The character and word tests that the files of QMugenSyntaxProcessor share; no other class includes
// this. They are inline so that a file which needs only some of them builds without unused warnings.
namespace QMugenSyntaxText {

inline bool isBlank(QChar c)
{
    return c == QLatin1Char(' ') || c == QLatin1Char('\t');
}

inline bool isDigit(QChar c)
{
    return c.unicode() >= '0' && c.unicode() <= '9';
}

inline bool isWordChar(QChar c)
{
    return c.isLetter() || isDigit(c) || c == QLatin1Char('.') || c == QLatin1Char('_');
}

inline bool equalsWord(QStringView text, const char* word)
{
    return text.compare(QLatin1String(word), Qt::CaseInsensitive) == 0;
}

inline bool isOneOf(QStringView text, std::initializer_list<const char*> words)
{
    for (const char* word : words)
        if (equalsWord(text, word)) return true;
    return false;
}

} // namespace QMugenSyntaxText
