#include "QSyntaxProcessor.h"

#include <QTextDocument>

QSyntaxProcessor::QSyntaxProcessor(QTextDocument* document, int syntaxType, QSyntaxProperties* properties)
    : QSyntaxHighlighter(document), m_syntaxType(syntaxType), m_properties(properties)
{}

QSyntaxProcessor::~QSyntaxProcessor() = default;

void QSyntaxProcessor::setMugenVersion(quint32 version)
{
    m_mugenVersion = version;
    refreshVersion();
}

int QSyntaxProcessor::errorCount() const
{
    const QTextDocument* doc = document();
    if (!doc) return 0;
    int count = 0;
    for (QTextBlock block = doc->firstBlock(); block.isValid(); block = block.next())
        if (const auto* data = static_cast<const QTextEditorBlockData*>(block.userData()))
            for (const QSyntaxMessage& message : data->messages)
                if (message.kind == SyntaxError) ++count;
    return count;
}

QColor QSyntaxProcessor::messageColor(int kind)
{
    switch (kind) {
    case SyntaxError:
        return QColor(Qt::red);
    case SyntaxWarning:
        return QColor(255, 127, 0);
    default:
        return QColor(255, 255, 0);
    }
}

void QSyntaxProcessor::highlightBlock(const QString&)
{
    blockData();
}

QTextEditorBlockData* QSyntaxProcessor::blockData()
{
    // The element side may have made the data already; replacing it would drop the line's element.
    if (auto* data = static_cast<QTextEditorBlockData*>(currentBlockUserData())) return data;
    auto* data = new QTextEditorBlockData;
    setCurrentBlockUserData(data);
    return data;
}

void QSyntaxProcessor::addMessage(QSyntaxMessageKind kind, int start, int end, const QString& text)
{
    if (kind == SyntaxError && !m_checking) return;
    m_messages.append(QSyntaxMessage{kind, start, end, text});
    underline(start, end, messageColor(kind));
}

void QSyntaxProcessor::underline(int start, int end, const QColor& color)
{
    // Run by run of equal formats, so that the colours already set stay.
    int at = start;
    while (at < end) {
        QTextCharFormat run = format(at);
        int stop = at + 1;
        while (stop < end && format(stop) == run)
            ++stop;
        run.setUnderlineStyle(QTextCharFormat::SpellCheckUnderline);
        run.setUnderlineColor(color);
        setFormat(at, stop - at, run);
        at = stop;
    }
}

void QSyntaxProcessor::addParenthesis(int type, int character, int position)
{
    m_parentheses.append(QSyntaxParenthesis{type, character, position});
}

void QSyntaxProcessor::storeFindings(QTextEditorBlockData* data)
{
    data->messages = std::move(m_messages);
    data->parentheses = std::move(m_parentheses);
    m_messages.clear();
    m_parentheses.clear();
}
