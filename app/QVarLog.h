#pragma once

#include <QList>
#include <QString>

class QSyntaxHierarchy;

// The log of variable use: for each integer and float variable, the StateDefs of the given texts that
// write it, as comment lines ready to be pasted into a state file. It reads the variables trees of the
// texts' outlines as they stand, so the caller brings pending outlines up to date first.
class QVarLog
{
public:
    enum Format
    {
        StateDefNumber = 0,
        StateDefName = 1,
        StateDefNumberAndName = 2
    };

    struct Options
    {
        Format format = StateDefNumber;
        bool onlyUsed = false;
        bool onePerLine = false;
        bool floats = true;
        bool integers = true;
    };

    // Outlines of other languages than M.U.G.E.N. text (and nulls) are passed over.
    static QString text(const QList<QSyntaxHierarchy*>& hierarchies, const Options& options);
    // What a StateDef label becomes in the log: the part that format picks, or the whole label when the
    // label doesn't have that form.
    static QString entry(const QString& label, Format format);
};
