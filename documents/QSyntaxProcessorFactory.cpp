#include "QSyntaxProcessorFactory.h"

#include "QNullSyntaxProcessor.h"

namespace {
QSyntaxProcessorFactory::Creator installed = nullptr;
}

void QSyntaxProcessorFactory::install(Creator creator)
{
    installed = creator;
}

QSyntaxProcessor* QSyntaxProcessorFactory::create(int syntaxType, QTextDocument* document,
                                                  quint32 mugenVersion)
{
    if (installed) {
        if (QSyntaxProcessor* processor = installed(syntaxType, document, mugenVersion)) return processor;
    }
    QSyntaxProcessor* processor = nullptr;
    switch (syntaxType) {
    case SyntaxMugen:
        // The language is told apart already; the text stays uncoloured until a checker is installed.
        processor = new QNullSyntaxProcessor(document, SyntaxMugen);
        processor->setChecking(true);
        processor->setMugenVersion(mugenVersion);
        return processor;
    case SyntaxLua:
        return new QNullSyntaxProcessor(document, SyntaxLua);
    default:
        return new QNullSyntaxProcessor(document, SyntaxNone);
    }
}
