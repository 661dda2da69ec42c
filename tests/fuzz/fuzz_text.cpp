// The documents bound to text on arbitrary text: the line scanner alone, then the animation, definitions
// and commands models reading it and following an edit typed into it. The first byte chooses which.
// Nothing may crash, hang or allocate beyond what the text justifies.

#include "FuzzText.h"
#include "QAirDocument.h"
#include "QAnimation.h"
#include "QCommand.h"
#include "QCommands.h"
#include "QDefinitions.h"
#include "QSilentDialogs.h"
#include "QTextElementRegistry.h"
#include "QTextScanner.h"

#include <QCoreApplication>

namespace {

void scan(const QString& text)
{
    QTextScanner scanner(text);
    // Every token but the last takes at least one character.
    qsizetype tokens = 0;
    while (scanner.next() != tkEnd) {
        if (++tokens > text.size() + 1) __builtin_trap();
        if (scanner.text().size() > QTextScanner::maxText) __builtin_trap();
        scanner.hasComment();
        scanner.runningComment();
    }
}

void animations(const FuzzText::Input& input)
{
    QAirDocument document(input.text);
    FuzzText::type(document.editor.document, input);
    const QAnimations& model = document.model;
    for (int i = 0; i < model.count(); ++i) {
        const QAnimation* animation = model.at(uint(i));
        for (int j = 0; j < animation->frameCount(); ++j)
            if (!animation->frameAt(uint(j))) __builtin_trap();
    }
    document.text();
}

void definitions(const FuzzText::Input& input)
{
    QDefinitions definitions;
    definitions.setPlainText(input.text);
    FuzzText::type(definitions.document, input);
    definitions.files();
    definitions.displayName();
    definitions.findValue(QStringLiteral("Files"), QStringLiteral("sprite"));
}

void commands(const FuzzText::Input& input)
{
    QCommands commands;
    commands.setPlainText(input.text);
    FuzzText::type(commands.document, input);
    for (int i = 0; i < commands.count(); ++i)
        commands.at(uint(i))->command();
    commands.summary();
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    static QCoreApplication application(*argc, *argv);
    static QSilentDialogs dialogs;
    QUserDialogs::install(&dialogs);
    registerTextElements();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const FuzzText::Input input = FuzzText::split(data, size);
    switch (input.selector % 4) {
    case 0:
        scan(input.text);
        break;
    case 1:
        animations(input);
        break;
    case 2:
        definitions(input);
        break;
    default:
        commands(input);
        break;
    }
    return 0;
}
