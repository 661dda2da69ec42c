#pragma once

#include <QtGlobal>

// The kinds of token the M.U.G.E.N. lexer gives. End stands for the end of the line or a comment.
enum QMugenTokenKind : int
{
    MugenTkEnd = 0,
    MugenTkOther = 1,
    MugenTkIdentifier = 2,
    MugenTkInteger = 3,
    MugenTkFloat = 4,
    MugenTkString = 5,
    MugenTkPlus = 6,
    MugenTkMinus = 7,
    MugenTkSlash = 8,
    MugenTkPercent = 9,
    MugenTkStar = 10,
    MugenTkStarStar = 11,
    MugenTkAmp = 12,
    MugenTkAmpAmp = 13,
    MugenTkBar = 14,
    MugenTkBarBar = 15,
    MugenTkCaret = 16,
    MugenTkCaretCaret = 17,
    MugenTkEqual = 18,
    MugenTkLess = 19,
    MugenTkLessEqual = 20,
    MugenTkGreater = 21,
    MugenTkGreaterEqual = 22,
    MugenTkNot = 23,
    MugenTkNotEqual = 24,
    MugenTkComma = 25,
    MugenTkParenOpen = 26,
    MugenTkParenClose = 27,
    MugenTkBraceOpen = 28,
    MugenTkBraceClose = 29,
    MugenTkBracketOpen = 30,
    MugenTkBracketClose = 31,
    MugenTkColon = 32,
    MugenTkTilde = 33,
    MugenTkDollar = 34
};

// One token packed in a word: kind in bits 0 to 5, start column in bits 6 to 21, length in bits 22 to 31.
// The length of a string token counts both quotes. Columns and lengths beyond the fields are cut.
struct QMugenToken
{
    quint32 word = 0;

    QMugenToken() = default;
    QMugenToken(int kind, int start, int length)
        : word(quint32(kind & 0x3f) | (quint32(qMin(start, 0xffff)) << 6) |
               (quint32(qMin(length, 0x3ff)) << 22))
    {}

    int kind() const { return int(word & 0x3f); }
    int start() const { return int((word >> 6) & 0xffff); }
    int length() const { return int(word >> 22); }
    int end() const { return start() + length(); }
    bool is(int tokenKind) const { return kind() == tokenKind; }
};
