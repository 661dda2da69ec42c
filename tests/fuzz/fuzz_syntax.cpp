// The colourers on arbitrary text: the M.U.G.E.N. checker with the shipped vocabulary, in either
// version and with checking on or off, with the outline built from the same text; and the Lua colourer.
// An edit is typed afterwards, so that the states run down the blocks again. The first byte chooses.
// Nothing may crash, hang or allocate beyond what the text justifies.

#include "FuzzText.h"
#include "QElementDocumentLayout.h"
#include "QLuaSyntaxProcessor.h"
#include "QMugenParamInfo.h"
#include "QMugenSyntaxProcessor.h"
#include "QSyntaxLibrary.h"

#include <QCoreApplication>
#include <QTextBlock>

#include <cstdio>

namespace {

// A new highlighter ignores every edit until the event loop has run its first full pass; the pass is
// over an empty document here, and the text then arrives as edits, as typing and pasting bring it.
void settle()
{
    QCoreApplication::processEvents();
}

// Without a layout a document tells nobody of its edits.
void layOut(QTextDocument& document)
{
    document.setDocumentLayout(new QElementDocumentLayout(&document));
}

void checkFindings(QTextDocument& document)
{
    for (QTextBlock block = document.firstBlock(); block.isValid(); block = block.next()) {
        const auto* data = static_cast<const QTextEditorBlockData*>(block.userData());
        if (!data) continue;
        const int length = block.length();
        for (const QSyntaxMessage& message : data->messages) {
            if (message.start >= 0 && message.end >= message.start && message.start <= length) continue;
            fprintf(stderr, "Line %d of length %d: \"%s\" from %d to %d\n", block.blockNumber() + 1, length,
                    qPrintable(message.text), message.start, message.end);
            __builtin_trap();
        }
    }
}

void mugen(const FuzzText::Input& input)
{
    QTextDocument document;
    layOut(document);
    const bool checking = input.selector & 4;
    QMugenSyntaxProcessor processor(&document, mugenSyntaxProperties(), checking);
    processor.setMugenVersion(
        QMugenParamInfo::parseVersion(input.selector & 8 ? QStringLiteral("1.0") : QStringLiteral("1.1")));
    settle();
    document.setPlainText(input.text);
    FuzzText::type(&document, input);
    checkFindings(document);
    QSyntaxHierarchy* hierarchy = processor.hierarchy();
    hierarchy->update(document.toPlainText());
    hierarchy->indexForLine(document.blockCount() / 2);
    hierarchy->sectionExists(QStringLiteral("Data"));
    hierarchy->findValue(QStringLiteral("Data"), QStringLiteral("life"));
    hierarchy->setMode(1);
    hierarchy->rowCount();
}

void lua(const FuzzText::Input& input)
{
    QTextDocument document;
    layOut(document);
    QLuaSyntaxProcessor processor(&document, luaSyntaxProperties());
    settle();
    document.setPlainText(input.text);
    FuzzText::type(&document, input);
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    static QCoreApplication application(*argc, *argv);
    if (!loadSyntaxDefinitions(QStringLiteral(TAVREL_FUZZ_DATA_DIR))) __builtin_trap();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const FuzzText::Input input = FuzzText::split(data, size);
    if (input.selector % 4 == 3)
        lua(input);
    else
        mugen(input);
    return 0;
}
