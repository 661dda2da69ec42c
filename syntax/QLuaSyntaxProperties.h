#pragma once

#include "QSyntaxProperties.h"

#include <QStringList>

// The vocabulary of Lua scripts, read from syntax_lua.xml: the names the colourer marks as functions of the
// standard libraries and of the program, and as classes the program offers to scripts. Keywords are the
// lexer's own.
class QLuaSyntaxProperties : public QSyntaxProperties
{
public:
    bool load(const QString& path) override;

    QStringList functions;
    QStringList classes;
};
