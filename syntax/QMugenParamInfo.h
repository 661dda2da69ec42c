#pragma once

#include <QRegularExpression>
#include <QString>

// What a parameter value, or the arguments of a trigger, look like. Parameter kinds are 0 to 24, trigger
// kinds 10, 11, 13, 24 and 25 to 32; 33 means the value isn't looked at (and a trigger reads no arguments).
enum QMugenParamType
{
    MugenInt = 0,
    MugenInt2 = 1,
    MugenInt3 = 2,
    MugenIntN = 3,
    MugenIntFloat3 = 4,
    MugenIntFloat3Opt = 5,
    MugenFloat = 6,
    MugenFloat2 = 7,
    MugenFloat2Opt = 8,
    MugenFloat3 = 9,
    MugenExp = 10,
    MugenExp2 = 11,
    MugenExp2Value = 12,
    MugenExp3 = 13,
    MugenExp4 = 14,
    MugenExpN = 15,
    MugenExp2Opt = 16,
    MugenExp3Nil = 17,
    MugenString = 18,
    MugenStrExp = 19,
    MugenStrExp2 = 20,
    MugenStrExp2Nil = 21,
    MugenExpStr = 22,
    MugenExpStrExp2 = 23,
    MugenValue = 24,
    MugenNilExp = 25,
    MugenExpOpt = 26,
    MugenOpInt = 27,
    MugenOpInt2 = 28,
    MugenOp2Int2 = 29,
    MugenOpStr = 30,
    MugenValueEq = 31,
    MugenConst = 32,
    MugenUnchecked = 33
};

// How the name of a parameter or trigger is matched against its key.
enum QMugenParamFormat
{
    // The name equals the key, in any case.
    MugenFormatPlain = 0,
    // The name equals the key and is followed by a bracketed expression: var(3).
    MugenFormatIdExp = 1,
    // The whole name matches the record's pattern, in any case: projhit1200.
    MugenFormatRegExp = 2
};

// One parameter or trigger of the vocabulary.
struct QMugenParamInfo
{
    int type = MugenUnchecked;
    int format = MugenFormatPlain;
    unsigned minver = 0;
    unsigned deprecatedVersion = 0;
    // The deprecation version as written in the file; empty when never deprecated.
    QString deprecated;
    // The text of max for intn, the value pattern, or the name pattern of a regexp format.
    QString pattern;

    // How many values may follow the first one of an intn value.
    int maxValues() const { return pattern.toInt(); }

    // A version text a.b, a.b.c or a.b.c.d as one word that orders versions by plain integer comparison:
    // a shifted left 24, b 16, c 8, missing parts 0. Text that isn't such a version, whole, gives 0.
    static unsigned parseVersion(const QString& text)
    {
        static const QRegularExpression versionPattern(QRegularExpression::anchoredPattern(
            QStringLiteral("(\\d+)\\.(\\d+)(?:\\.(\\d+))?(?:\\.(\\d+))?")));
        const QRegularExpressionMatch match = versionPattern.match(text);
        if (!match.hasMatch()) return 0;
        unsigned version = 0;
        for (int part = 1; part <= 4; ++part)
            version += match.captured(part).toUInt() << (32 - 8 * part);
        return version;
    }
};
