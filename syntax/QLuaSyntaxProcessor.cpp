#include "QLuaSyntaxProcessor.h"

#include "QLuaSyntaxProperties.h"
#include "QSyntaxFormats.h"

namespace {

// The colours when the program made no table of its own (the command line and tests).
const QSyntaxFormats& formats()
{
    if (syntaxFormats) return *syntaxFormats;
    static const QSyntaxFormats fallback;
    return fallback;
}

// Lua 5.1's reserved words in alphabetical order: the token kinds from FirstReserved on.
const char* const reservedWords[] = {"and", "break",    "do",     "else", "elseif", "end",   "false",
                                     "for", "function", "if",     "in",   "local",  "nil",   "not",
                                     "or",  "repeat",   "return", "then", "true",   "until", "while"};

bool isDigit(QChar c)
{
    return c.unicode() >= '0' && c.unicode() <= '9';
}

bool isHexDigit(QChar c)
{
    const ushort u = c.unicode();
    return isDigit(c) || (u >= 'a' && u <= 'f') || (u >= 'A' && u <= 'F');
}

bool isNameStart(QChar c)
{
    return c.isLetter() || c.unicode() == '_';
}

} // namespace

QLuaSyntaxProcessor::QLuaSyntaxProcessor(QTextDocument* document, QLuaSyntaxProperties* properties)
    : QSyntaxProcessor(document, SyntaxLua, properties), m_vocabulary(properties)
{}

void QLuaSyntaxProcessor::refreshVersion() {}

void QLuaSyntaxProcessor::highlightBlock(const QString& text)
{
    QTextEditorBlockData* data = blockData();
    setCurrentBlockState(0);
    const int previous = previousBlockState();
    if (previous > 0) m_level = previous & LevelMask;
    m_text = text.constData();
    m_length = int(text.size());
    m_pos = 0;
    m_endState = 0;
    for (int kind = next(); kind != End; kind = next())
        colour(kind);
    storeFindings(data);
    setCurrentBlockState(m_endState);
}

// The level of a long bracket that opens at `at` ("[", some "=", "["), or -1.
int QLuaSyntaxProcessor::longBracketLevel(int at) const
{
    if (at >= m_length || m_text[at].unicode() != '[') return -1;
    int level = 0;
    int pos = at + 1;
    while (pos < m_length && m_text[pos].unicode() == '=') {
        ++level;
        ++pos;
    }
    return pos < m_length && m_text[pos].unicode() == '[' ? level : -1;
}

// Looks for "]", `level` times "=", "]" from the position on; at the end of the line the span stays open.
bool QLuaSyntaxProcessor::closeLongBracket(int level)
{
    while (m_pos < m_length) {
        if (m_text[m_pos].unicode() == ']') {
            int pos = m_pos + 1;
            int count = 0;
            while (pos < m_length && m_text[pos].unicode() == '=') {
                ++count;
                ++pos;
            }
            if (count == level && pos < m_length && m_text[pos].unicode() == ']') {
                m_pos = pos + 1;
                return true;
            }
            m_pos = pos;
            continue;
        }
        ++m_pos;
    }
    return false;
}

void QLuaSyntaxProcessor::skipName()
{
    while (m_pos < m_length && (isNameStart(m_text[m_pos]) || isDigit(m_text[m_pos])))
        ++m_pos;
}

void QLuaSyntaxProcessor::readNumber()
{
    if (m_text[m_pos].unicode() == '0' && m_pos + 1 < m_length &&
        (m_text[m_pos + 1].unicode() == 'x' || m_text[m_pos + 1].unicode() == 'X')) {
        m_pos += 2;
        while (m_pos < m_length && isHexDigit(m_text[m_pos]))
            ++m_pos;
        return;
    }
    while (m_pos < m_length && isDigit(m_text[m_pos]))
        ++m_pos;
    if (m_pos < m_length && m_text[m_pos].unicode() == '.') {
        ++m_pos;
        while (m_pos < m_length && isDigit(m_text[m_pos]))
            ++m_pos;
    }
    if (m_pos < m_length && (m_text[m_pos].unicode() == 'e' || m_text[m_pos].unicode() == 'E')) {
        int pos = m_pos + 1;
        if (pos < m_length && (m_text[pos].unicode() == '+' || m_text[pos].unicode() == '-')) ++pos;
        if (pos < m_length && isDigit(m_text[pos])) {
            m_pos = pos;
            while (m_pos < m_length && isDigit(m_text[m_pos]))
                ++m_pos;
        }
    }
}

int QLuaSyntaxProcessor::next()
{
    while (m_pos < m_length && m_text[m_pos].isSpace())
        ++m_pos;
    m_start = m_pos;
    if (m_pos >= m_length) return End;
    const QChar c = m_text[m_pos];
    const ushort u = c.unicode();

    if (isNameStart(c)) {
        skipName();
        const QStringView word(m_text + m_start, m_pos - m_start);
        for (int i = 0; i <= LastReserved - FirstReserved; ++i)
            if (word == QLatin1String(reservedWords[i])) return FirstReserved + i;
        return Name;
    }
    if (isDigit(c) || (u == '.' && m_pos + 1 < m_length && isDigit(m_text[m_pos + 1]))) {
        readNumber();
        return Number;
    }
    switch (u) {
    case '-':
        if (m_pos + 1 < m_length && m_text[m_pos + 1].unicode() == '-') {
            m_pos += 2;
            const int level = longBracketLevel(m_pos);
            int kind = Comment;
            if (level >= 0) {
                kind = LongComment;
                m_pos += level + 2;
                if (!closeLongBracket(level)) m_endState = LongCommentState | (level + 1);
            } else {
                m_pos = m_length;
            }
            setFormat(m_start, m_pos - m_start, formats()[QSyntaxFormats::Comment]);
            return kind;
        }
        break;
    case '"':
    case '\'':
        ++m_pos;
        while (m_pos < m_length) {
            const ushort s = m_text[m_pos].unicode();
            if (s == '\\') {
                m_pos += 2;
                continue;
            }
            ++m_pos;
            if (s == u) return String;
        }
        m_pos = m_length;
        return UnfinishedString;
    case '[': {
        const int level = longBracketLevel(m_pos);
        if (level >= 0) {
            m_pos += level + 2;
            if (!closeLongBracket(level)) m_endState = LongStringState | (level + 1);
            return LongString;
        }
        addParenthesis(QSyntaxParenthesis::Opening, u, m_pos);
        ++m_pos;
        return BracketOpen;
    }
    case '(':
        addParenthesis(QSyntaxParenthesis::Opening, u, m_pos);
        ++m_pos;
        return BracketOpen;
    case ')':
    case ']':
        addParenthesis(QSyntaxParenthesis::Closing, u, m_pos);
        ++m_pos;
        return BracketClose;
    case '<':
    case '>':
    case '=':
    case '~':
        if (m_pos + 1 < m_length && m_text[m_pos + 1].unicode() == '=') {
            m_pos += 2;
            return u == '<' ? LessEqual : u == '>' ? GreaterEqual : u == '=' ? EqualEqual : NotEqual;
        }
        break;
    case '.':
        if (m_pos + 1 < m_length && m_text[m_pos + 1].unicode() == '.') {
            const bool three = m_pos + 2 < m_length && m_text[m_pos + 2].unicode() == '.';
            m_pos += three ? 3 : 2;
            return three ? Dots : Concat;
        }
        break;
    default:
        break;
    }
    ++m_pos;
    return Operator;
}

void QLuaSyntaxProcessor::colour(int kind)
{
    int slot = -1;
    if (kind == Number) {
        slot = QSyntaxFormats::Number;
    } else if (kind == String || kind == LongString || kind == UnfinishedString) {
        slot = QSyntaxFormats::String;
    } else if (kind >= FirstReserved && kind <= LastReserved) {
        slot = QSyntaxFormats::Keyword;
    } else if (kind == Name && m_vocabulary) {
        const QStringView name(m_text + m_start, m_pos - m_start);
        if (m_vocabulary->functions.contains(name))
            slot = QSyntaxFormats::Trigger;
        else if (m_vocabulary->classes.contains(name))
            slot = QSyntaxFormats::Controller;
    }
    if (slot >= 0) setFormat(m_start, m_pos - m_start, formats()[slot]);
}
