#include "QMugenSyntaxProcessor.h"

#include "QMugenSyntaxText.h"
#include "QSyntaxFormats.h"

// The lexer reads in place over the block and copies a token's text into a fixed buffer, so that no
// token costs an allocation: every keystroke runs it over the whole line.

using namespace QMugenSyntaxText;

void QMugenSyntaxProcessor::appendText(QChar c)
{
    if (m_bufferLength < 512) m_buffer[m_bufferLength++] = c;
}

void QMugenSyntaxProcessor::next()
{
    if (!m_token.is(MugenTkEnd)) m_lastEnd = m_token.end();
    const bool letterRun = m_letterRun;
    m_letterRun = true;
    m_bufferLength = 0;
    if (m_atEnd) {
        m_token = QMugenToken(MugenTkEnd, m_endColumn, 0);
        m_tokenPos = m_endColumn;
        return;
    }
    while (m_pos < m_length && isBlank(m_text[m_pos]))
        ++m_pos;
    const int start = m_pos;
    m_tokenPos = start;
    auto at = [this](int i) { return i < m_length ? m_text[i] : QChar(); };
    const QChar c = at(m_pos);
    auto finishEnd = [this](int column) {
        m_atEnd = true;
        m_endColumn = column;
        m_pos = m_length;
        m_token = QMugenToken(MugenTkEnd, column, 0);
    };
    if (c.isNull() || c == QLatin1Char('\n') || c == QLatin1Char('\r')) {
        finishEnd(start);
        return;
    }
    if (c == QLatin1Char(';')) {
        int stop = start;
        while (stop < m_length && m_text[stop] != QLatin1Char('\n'))
            ++stop;
        setSlot(start, stop - start, QSyntaxFormats::Comment);
        finishEnd(start);
        return;
    }
    auto number = [&](int from, bool isFloat) {
        int i = from;
        while (isDigit(at(i)))
            appendText(m_text[i++]);
        if (!isFloat && at(i) == QLatin1Char('.')) {
            isFloat = true;
            appendText(m_text[i++]);
            while (isDigit(at(i)))
                appendText(m_text[i++]);
        }
        m_pos = i;
        m_token = QMugenToken(isFloat ? MugenTkFloat : MugenTkInteger, start, i - start);
    };
    if (c.isLetter()) {
        int i = start;
        appendText(m_text[i++]);
        while (i < m_length && (letterRun ? isWordChar(m_text[i]) : m_text[i].isLetter()))
            appendText(m_text[i++]);
        m_pos = i;
        m_token = QMugenToken(MugenTkIdentifier, start, i - start);
        return;
    }
    if (isDigit(c)) {
        number(start, false);
        return;
    }
    if (c == QLatin1Char('.')) {
        appendText(QLatin1Char('0'));
        appendText(c);
        number(start + 1, true);
        return;
    }
    if (c == QLatin1Char('-') && !m_expressionMode) {
        const QChar d = at(start + 1);
        if (isDigit(d)) {
            appendText(c);
            number(start + 1, false);
            return;
        }
        if (d == QLatin1Char('.')) {
            appendText(c);
            appendText(QLatin1Char('0'));
            appendText(d);
            number(start + 2, true);
            return;
        }
    }
    if (c == QLatin1Char('"')) {
        int i = start + 1;
        while (true) {
            const QChar s = at(i);
            if (s.isNull() || s == QLatin1Char('\n') || s == QLatin1Char('\r')) {
                // An unterminated string ends the line without a word.
                m_bufferLength = 0;
                finishEnd(i);
                return;
            }
            if (s == QLatin1Char('"')) break;
            if (s == QLatin1Char('\\') && i + 1 < m_length) ++i;
            appendText(m_text[i++]);
        }
        m_pos = i + 1;
        m_token = QMugenToken(MugenTkString, start, m_pos - start);
        return;
    }

    int kind = MugenTkOther;
    int length = 1;
    const QChar d = at(start + 1);
    switch (c.unicode()) {
    case '+':
        kind = MugenTkPlus;
        break;
    case '-':
        kind = MugenTkMinus;
        break;
    case '/':
        kind = MugenTkSlash;
        break;
    case '%':
        kind = MugenTkPercent;
        break;
    case '*':
        kind = d == QLatin1Char('*') ? MugenTkStarStar : MugenTkStar;
        break;
    case '&':
        kind = d == QLatin1Char('&') ? MugenTkAmpAmp : MugenTkAmp;
        break;
    case '|':
        kind = d == QLatin1Char('|') ? MugenTkBarBar : MugenTkBar;
        break;
    case '^':
        kind = d == QLatin1Char('^') ? MugenTkCaretCaret : MugenTkCaret;
        break;
    case '=':
        kind = MugenTkEqual;
        break;
    case '<':
        kind = d == QLatin1Char('=') ? MugenTkLessEqual : MugenTkLess;
        break;
    case '>':
        kind = d == QLatin1Char('=') ? MugenTkGreaterEqual : MugenTkGreater;
        break;
    case '!':
        kind = d == QLatin1Char('=') ? MugenTkNotEqual : MugenTkNot;
        break;
    case ',':
        kind = MugenTkComma;
        break;
    case '(':
        kind = MugenTkParenOpen;
        addParenthesis(QSyntaxParenthesis::Opening, '(', start);
        break;
    case ')':
        kind = MugenTkParenClose;
        addParenthesis(QSyntaxParenthesis::Closing, ')', start);
        break;
    case '{':
        kind = MugenTkBraceOpen;
        break;
    case '}':
        kind = MugenTkBraceClose;
        break;
    case '[':
        kind = MugenTkBracketOpen;
        addParenthesis(QSyntaxParenthesis::Opening, '[', start);
        break;
    case ']':
        kind = MugenTkBracketClose;
        addParenthesis(QSyntaxParenthesis::Closing, ']', start);
        break;
    case ':':
        kind = MugenTkColon;
        break;
    case '~':
        kind = MugenTkTilde;
        break;
    case '$':
        kind = MugenTkDollar;
        break;
    default:
        break;
    }
    if (kind == MugenTkStarStar || kind == MugenTkAmpAmp || kind == MugenTkBarBar ||
        kind == MugenTkCaretCaret || kind == MugenTkLessEqual || kind == MugenTkGreaterEqual ||
        kind == MugenTkNotEqual)
        length = 2;
    for (int i = 0; i < length; ++i)
        appendText(m_text[start + i]);
    m_pos = start + length;
    m_token = QMugenToken(kind, start, length);
}

const QString& QMugenSyntaxProcessor::lowerTokenText()
{
    m_lower.resize(m_bufferLength);
    QChar* out = m_lower.data();
    for (int i = 0; i < m_bufferLength; ++i)
        out[i] = m_buffer[i].toLower();
    return m_lower;
}

bool QMugenSyntaxProcessor::tokenIs(const char* word) const
{
    return equalsWord(tokenText(), word);
}

void QMugenSyntaxProcessor::skipToEnd()
{
    while (!m_token.is(MugenTkEnd))
        next();
}
