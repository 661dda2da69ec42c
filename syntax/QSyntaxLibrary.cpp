#include "QSyntaxLibrary.h"

#include "QLuaSyntaxProcessor.h"
#include "QLuaSyntaxProperties.h"
#include "QMugenSyntaxProcessor.h"
#include "QMugenSyntaxProperties.h"
#include "QSyntaxProcessorFactory.h"

namespace {

QSyntaxProcessor* createProcessor(int syntaxType, QTextDocument* document, quint32 mugenVersion)
{
    if (syntaxType == SyntaxLua) return new QLuaSyntaxProcessor(document, luaSyntaxProperties());
    if (syntaxType != SyntaxMugen) return nullptr;
    auto* processor = new QMugenSyntaxProcessor(document, mugenSyntaxProperties(), true);
    if (mugenVersion != processor->mugenVersion()) processor->setMugenVersion(mugenVersion);
    return processor;
}

} // namespace

QMugenSyntaxProperties* mugenSyntaxProperties()
{
    static QMugenSyntaxProperties properties;
    return &properties;
}

QLuaSyntaxProperties* luaSyntaxProperties()
{
    static QLuaSyntaxProperties properties;
    return &properties;
}

bool loadSyntaxDefinitions(const QString& dataDir)
{
    const bool mugen = mugenSyntaxProperties()->load(dataDir + QStringLiteral("/syntax_mugen.xml"));
    const bool lua = luaSyntaxProperties()->load(dataDir + QStringLiteral("/syntax_lua.xml"));
    return mugen && lua;
}

void installSyntaxProcessors()
{
    QSyntaxProcessorFactory::install(&createProcessor);
}
