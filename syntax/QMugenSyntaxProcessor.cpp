#include "QMugenSyntaxProcessor.h"

#include "QMugenSyntaxProperties.h"
#include "QMugenSyntaxText.h"
#include "QSyntaxFormats.h"

#include <QTextBlock>
#include <QTextDocument>

using namespace QMugenSyntaxText;

namespace {

// The colours when the program made no table of its own (the command line and tests).
const QSyntaxFormats& formats()
{
    if (syntaxFormats) return *syntaxFormats;
    static const QSyntaxFormats fallback;
    return fallback;
}

// The first character of a block that is not blank, or a null character.
QChar firstNonBlank(const QString& text)
{
    for (QChar c : text)
        if (!isBlank(c) && c != QLatin1Char('\r') && c != QLatin1Char('\n')) return c;
    return QChar();
}

} // namespace

QMugenSyntaxProcessor::QMugenSyntaxProcessor(QTextDocument* document, QMugenSyntaxProperties* properties,
                                             bool checking)
    : QSyntaxProcessor(document, SyntaxMugen, properties), m_vocabulary(properties)
{
    setChecking(checking);
    m_lower.reserve(64);
}

QMugenSyntaxProcessor::~QMugenSyntaxProcessor() = default;

void QMugenSyntaxProcessor::refreshVersion()
{
    rehighlight();
}

// ---------------------------------------------------------------------------------------------------------
// The block

void QMugenSyntaxProcessor::highlightBlock(const QString& text)
{
    QSyntaxProcessor::highlightBlock(text);
    QTextEditorBlockData* data = blockData();
    setCurrentBlockState(0);
    m_state = 0;
    m_text = text.constData();
    m_length = int(text.size());
    m_pos = 0;
    m_endColumn = 0;
    m_lastEnd = 0;
    m_atEnd = false;
    m_expressionMode = false;
    m_letterRun = true;
    m_token = QMugenToken();
    m_bufferLength = 0;
    m_nesting = 0;
    m_tooDeep = false;

    const int previous = previousBlockState();
    bool isHeader = false;
    if (m_length > 0) {
        next();
        if (m_token.is(MugenTkBracketOpen)) {
            isHeader = true;
            sectionHeader(previous);
        } else if (m_token.is(MugenTkIdentifier) && equalsWord(tokenText(), "type") &&
                   previous != MugenStateStateDef) {
            typeLine(previous);
        } else if (!m_token.is(MugenTkEnd)) {
            sectionLine(previous);
        }
        if (!m_token.is(MugenTkEnd)) {
            // Blanks between the left-over tokens don't count, so the underline may stop short of the end.
            const int start = m_token.start();
            int length = 0;
            while (!m_token.is(MugenTkEnd)) {
                length += m_token.length();
                next();
            }
            error(start, start + length, tr("Syntax error - code ends before line"));
        }
        if (m_tooDeep) {
            m_tooDeep = false;
            error(m_tooDeepStart, m_tooDeepEnd, tr("Expression nested too deeply"));
        }
    }
    underlineMessages();
    storeFindings(data);
    if (m_state == 0) m_state = previous;
    setCurrentBlockState(m_state);
    computeFoldLevel(data, text, isHeader);
    m_text = nullptr;
}

// ---------------------------------------------------------------------------------------------------------
// Reporting. Underlines are drawn when the block is done, so that messages dropped on the way leave none.

void QMugenSyntaxProcessor::error(int start, int end, const QString& text)
{
    if (!isChecking() || m_tooDeep) return;
    m_messages.append(QSyntaxMessage{SyntaxError, start, end, text});
}

void QMugenSyntaxProcessor::errorAtToken(const QString& text)
{
    error(m_token.start(), m_token.end(), text);
}

void QMugenSyntaxProcessor::warning(int start, int end, const QString& text)
{
    if (m_tooDeep) return;
    m_messages.append(QSyntaxMessage{SyntaxWarning, start, end, text});
}

void QMugenSyntaxProcessor::notice(int start, int end, const QString& text)
{
    if (m_tooDeep) return;
    m_messages.append(QSyntaxMessage{SyntaxNotice, start, end, text});
}

bool QMugenSyntaxProcessor::expect(int kind, int slot)
{
    if (m_token.is(kind)) {
        if (slot >= 0) setSlot(m_token.start(), m_token.length(), slot);
        next();
        return true;
    }
    errorAtToken(tr("Unexpected token '%1'").arg(tokenText()));
    if (!m_token.is(MugenTkEnd)) next();
    return false;
}

void QMugenSyntaxProcessor::setSlot(int start, int length, int slot)
{
    if (length > 0) setFormat(start, length, formats()[slot]);
}

void QMugenSyntaxProcessor::underlineMessages()
{
    for (const QSyntaxMessage& message : std::as_const(m_messages))
        underline(message.start, qMin(message.end, m_length), messageColor(message.kind));
}

// ---------------------------------------------------------------------------------------------------------
// Folding

void QMugenSyntaxProcessor::computeFoldLevel(QTextEditorBlockData* data, const QString& text, bool isHeader)
{
    const QTextBlock block = currentBlock();
    // A blank, comment or header line from which the next header follows over blank and comment lines.
    bool preSection = false;
    bool nextIsState = false;
    const QChar first = firstNonBlank(text);
    if (first.isNull() || first == QLatin1Char('[') || first == QLatin1Char(';')) {
        const QTextBlock start = first == QLatin1Char('[') ? block : block.next();
        const int from = start.isValid() ? start.blockNumber() : document()->blockCount();
        const int revision = document()->revision();
        if (revision != m_look.revision || from < m_look.from || from > m_look.to) {
            m_look = LookAhead{revision, from, document()->blockCount(), false, false};
            for (QTextBlock look = start; look.isValid(); look = look.next()) {
                const QString lookText = look == block ? text : look.text();
                const QChar c = firstNonBlank(lookText);
                if (c.isNull() || c == QLatin1Char(';')) continue;
                m_look.to = look.blockNumber();
                if (c == QLatin1Char('[')) {
                    m_look.preSection = true;
                    int i = int(lookText.indexOf(QLatin1Char('['))) + 1;
                    const int wordStart = i;
                    while (i < lookText.size() && lookText.at(i).isLetter())
                        ++i;
                    m_look.nextIsState =
                        equalsWord(QStringView(lookText).mid(wordStart, i - wordStart), "state");
                }
                break;
            }
        }
        preSection = m_look.preSection;
        nextIsState = m_look.nextIsState;
    }
    data->reserved = 0;
    data->header = isHeader;
    data->preSection = preSection;

    const QTextBlock previousBlock = block.previous();
    const auto* previous = previousBlock.isValid()
                               ? static_cast<const QTextEditorBlockData*>(previousBlock.userData())
                               : nullptr;
    if (!previousBlock.isValid()) {
        data->foldLevel = 0;
        return;
    }
    const int level = previous ? previous->foldLevel : 0;
    const bool previousPre = previous && previous->preSection;
    if (isHeader && !previousPre) {
        data->foldLevel = level - 1;
    } else if (previous && previous->header) {
        data->foldLevel = level + 1;
    } else if (!preSection || previousPre) {
        data->foldLevel = level;
    } else {
        const bool inState =
            m_state == MugenStateState || (m_state >= MugenStateController && m_state < MugenStateBGType);
        if (!inState && nextIsState)
            data->foldLevel = level;
        else if (inState && !nextIsState)
            data->foldLevel = level - 2;
        else
            data->foldLevel = level - 1;
    }
}
