#pragma once

#include <QtGlobal>

class QSyntaxProcessor;
class QTextDocument;

// Makes the processor of a language on a document: the one place that binds languages to processors.
// The checkers of M.U.G.E.N. text and Lua live in the syntax library above the documents; it installs
// its creator at start-up. Until one is installed, every language runs on the null processor.
class QSyntaxProcessorFactory
{
public:
    using Creator = QSyntaxProcessor* (*)(int syntaxType, QTextDocument* document, quint32 mugenVersion);

    // M.U.G.E.N. text with checking on and the given version, Lua, or for any other type no language.
    static QSyntaxProcessor* create(int syntaxType, QTextDocument* document, quint32 mugenVersion);
    // Installs the creator of the real processors; it may answer nullptr for a type it doesn't serve.
    static void install(Creator creator);
};
