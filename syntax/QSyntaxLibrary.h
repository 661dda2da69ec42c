#pragma once

#include <QString>

class QLuaSyntaxProperties;
class QMugenSyntaxProperties;

// The process-wide vocabularies and the processors of the languages this library knows. The program and
// the command line call loadSyntaxDefinitions() once with the data folder and installSyntaxProcessors()
// before the first text document is made.

// Loads syntax_mugen.xml and syntax_lua.xml from the data folder into the process-wide vocabularies,
// replacing what they held. False if either file is missing or not a vocabulary; that one is then empty.
bool loadSyntaxDefinitions(const QString& dataDir);

// Makes QSyntaxProcessorFactory create the M.U.G.E.N. checker for M.U.G.E.N. text and the Lua
// colourer for Lua.
void installSyntaxProcessors();

// The process-wide vocabularies; they exist, maybe empty, from the first call on.
QMugenSyntaxProperties* mugenSyntaxProperties();
QLuaSyntaxProperties* luaSyntaxProperties();
