#pragma once

// Runs the M.U.G.E.N. checker over a text on a bare QTextDocument and reads back what it left on the
// blocks: messages, states and the colour slot of every span.

#include "QElementDocumentLayout.h"
#include "QMugenSyntaxProcessor.h"
#include "QMugenSyntaxProperties.h"
#include "QSyntaxFormats.h"
#include "TestData.h"

#include <QStringList>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextLayout>

#include <memory>

namespace MugenSyntaxTest {

// The shipped vocabulary, loaded once.
inline QMugenSyntaxProperties* shippedVocabulary()
{
    static QMugenSyntaxProperties* vocabulary = [] {
        auto* loaded = new QMugenSyntaxProperties;
        loaded->load(TestData::binDir() + QStringLiteral("/syntax_mugen.xml"));
        return loaded;
    }();
    return vocabulary;
}

// A colour per slot, so that a span's slot can be told from its format.
inline void installDistinctFormats()
{
    if (!syntaxFormats) syntaxFormats = new QSyntaxFormats;
    for (int slot = 0; slot <= QSyntaxFormats::Value; ++slot)
        (*syntaxFormats)[slot].setForeground(QColor(10 + slot, 20 + slot, 30 + slot));
}

inline int slotOf(const QTextCharFormat& format)
{
    if (!format.hasProperty(QTextFormat::ForegroundBrush)) return -1;
    const QColor color = format.foreground().color();
    for (int slot = 0; slot <= QSyntaxFormats::Value; ++slot)
        if (color == (*syntaxFormats)[slot].foreground().color()) return slot;
    return -1;
}

struct Checked
{
    std::unique_ptr<QTextDocument> document;
    std::unique_ptr<QMugenSyntaxProcessor> processor;

    QTextBlock block(int line) const { return document->findBlockByNumber(line); }
    const QTextEditorBlockData* data(int line) const
    {
        return static_cast<const QTextEditorBlockData*>(block(line).userData());
    }
    QList<QSyntaxMessage> messages(int line) const
    {
        const QTextEditorBlockData* blockData = data(line);
        return blockData ? blockData->messages : QList<QSyntaxMessage>();
    }
};

inline Checked check(const QString& text, quint32 version = QSyntaxProcessor::DefaultMugenVersion,
                     QMugenSyntaxProperties* vocabulary = nullptr, bool checking = true)
{
    Checked checked;
    checked.document = std::make_unique<QTextDocument>();
    checked.document->setPlainText(text);
    checked.processor = std::make_unique<QMugenSyntaxProcessor>(
        checked.document.get(), vocabulary ? vocabulary : shippedVocabulary(), checking);
    if (version != checked.processor->mugenVersion())
        checked.processor->setMugenVersion(version);
    else
        checked.processor->rehighlight();
    return checked;
}

inline QString kindName(int kind)
{
    return kind == SyntaxError     ? QStringLiteral("error")
           : kind == SyntaxWarning ? QStringLiteral("warning")
                                   : QStringLiteral("notice");
}

// "column:kind:text" with a 1-based column, the form the tables of expected messages use.
inline QStringList describe(const QList<QSyntaxMessage>& messages)
{
    QStringList result;
    for (const QSyntaxMessage& message : messages)
        result << QStringLiteral("%1:%2:%3").arg(message.start + 1).arg(kindName(message.kind), message.text);
    result.sort();
    return result;
}

} // namespace MugenSyntaxTest
