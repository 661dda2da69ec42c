// The XML data files beside the program on arbitrary bytes: the configuration, the M.U.G.E.N. and Lua
// vocabularies (a vocabulary then checks a small state text), the completer's words, a snippet, and the
// walk the shortcuts file is read with. The first byte chooses. Nothing may crash, hang or allocate
// beyond what the bytes justify.

#include "QCompletionModels.h"
#include "QLuaSyntaxProperties.h"
#include "QMugenModel.h"
#include "QMugenSyntaxProcessor.h"
#include "QMugenSyntaxProperties.h"
#include "QSnippet.h"
#include "QXmlParser.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QFile>
#include <QKeySequence>
#include <QTemporaryDir>
#include <QTextDocument>

namespace {

QString fileWith(const QByteArray& bytes)
{
    static QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("data.xml"));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)) __builtin_trap();
    file.write(bytes);
    return path;
}

void vocabulary(const QByteArray& bytes)
{
    QMugenSyntaxProperties properties;
    properties.load(fileWith(bytes));
    QTextDocument document(QStringLiteral(
        "[Statedef 0]\ntype = S\n[State 0, 1]\ntype = ChangeState\ntrigger1 = time = 1 && var(2)\n"
        "value = ifelse(anim = [1, 2], 1, 2)\n[Begin Action 0]\n0,0, 0,0, 5, H, AS20D200\n"));
    QMugenSyntaxProcessor processor(&document, &properties, true);
    processor.rehighlight();
}

// What the shortcuts reader does, with the keys read as the action manager reads them; and the parts of
// the walk the other readers use.
void walk(const QByteArray& bytes)
{
    QBuffer buffer;
    buffer.setData(bytes);
    QXmlParser xml(&buffer);
    if (!xml.findRoot(QStringLiteral("shortcuts"))) return;
    while (xml.nextElement()) {
        if (xml.depth() < 1) __builtin_trap();
        QKeySequence::fromString(xml.attribute(QStringLiteral("keys")), QKeySequence::PortableText);
        if (xml.name() == QLatin1String("text")) {
            xml.text();
        } else if (xml.name() == QLatin1String("group")) {
            const int parent = xml.depth();
            while (xml.nextElement(parent))
                xml.attributes();
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    static QCoreApplication application(*argc, *argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size < 1) return 0;
    const QByteArray bytes(reinterpret_cast<const char*>(data + 1), qsizetype(size - 1));
    switch (data[0] % 6) {
    case 0: {
        QMugenModel model;
        model.load(fileWith(bytes));
        break;
    }
    case 1:
        vocabulary(bytes);
        break;
    case 2: {
        QLuaSyntaxProperties properties;
        properties.load(fileWith(bytes));
        break;
    }
    case 3: {
        QObject owner;
        QCompletionModels models(&owner);
        if (models.load(fileWith(bytes))) models.modelFor(QStringLiteral("trigger1 = "));
        break;
    }
    case 4: {
        QSnippet snippet;
        if (snippet.readXml(bytes)) snippet.toXml();
        break;
    }
    default:
        walk(bytes);
        break;
    }
    return 0;
}
