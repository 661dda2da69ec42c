#pragma once

#include <QString>

// What the scanner read. The numbers are part of the file formats' recognisers, which compare token
// kinds by value.
enum QTextTokenKind : int
{
    tkEnd = 0,
    tkEndOfLine = 1,
    tkOther = 2,
    tkIdentifier = 3,
    tkInteger = 4,
    tkReal = 5,
    tkString = 6,
    tkPlus = 7,
    tkMinus = 8,
    tkSlash = 9,
    tkPercent = 10,
    tkStar = 11,
    tkPower = 12,
    tkAmpersand = 13,
    tkAnd = 14,
    tkPipe = 15,
    tkOr = 16,
    tkCaret = 17,
    tkXor = 18,
    tkEqual = 19,
    tkLess = 20,
    tkLessEqual = 21,
    tkGreater = 22,
    tkGreaterEqual = 23,
    tkNot = 24,
    tkNotEqual = 25,
    tkComma = 26,
    tkLeftParen = 27,
    tkRightParen = 28,
    tkLeftBrace = 29,
    tkRightBrace = 30,
    tkLeftBracket = 31,
    tkRightBracket = 32,
    tkColon = 33,
    tkTilde = 34,
    tkDollar = 35
};

// One token of a line as the recognisers and the elements' parse() see it. column is where the
// token's text begins in the line (for a quoted string: behind the opening quote).
struct QTextToken
{
    int kind = tkEnd;
    int column = 0;
    QString text;
};
