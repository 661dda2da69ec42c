#include "QTextScanner.h"

namespace {

bool isDigit(QChar c)
{
    return c.unicode() >= '0' && c.unicode() <= '9';
}

bool isBlank(QChar c)
{
    return c.unicode() == ' ' || c.unicode() == '\t' || c.unicode() == '\r';
}

bool isRuler(const QString& comment)
{
    int run = 1;
    for (int i = 1; i < comment.size(); ++i) {
        run = comment.at(i) == comment.at(i - 1) ? run + 1 : 1;
        if (run > 5) return true;
    }
    return false;
}

} // namespace

QTextScanner::QTextScanner(const QString& text)
{
    setText(text);
}

void QTextScanner::setText(const QString& text)
{
    source = text;
    setText(QStringView(source));
}

void QTextScanner::setText(QStringView text)
{
    pos = text.data();
    end = pos + text.size();
    col = 0;
    lineNumber = 1;
    ended = false;
    tokenKind = tkEnd;
    startColumn = 0;
    tokenText.resize(0);
    commentSeen = false;
    commentText.resize(0);
    running.clear();
    tokenOnLine = false;
    lineHasContent = false;
}

QChar QTextScanner::peek(int ahead) const
{
    return pos + ahead < end ? pos[ahead] : QChar();
}

QChar QTextScanner::take()
{
    ++col;
    return *pos++;
}

void QTextScanner::append(QChar c)
{
    if (tokenText.size() < maxText) tokenText.append(c);
}

void QTextScanner::appendSince(const QChar* from)
{
    const qsizetype room = qMax<qsizetype>(0, maxText - tokenText.size());
    tokenText.append(from, qMin<qsizetype>(pos - from, room));
}

void QTextScanner::takeDigits()
{
    while (pos < end && isDigit(*pos))
        take();
}

int QTextScanner::finish(int kind)
{
    tokenKind = kind;
    if (kind > tkEndOfLine) {
        tokenOnLine = true;
        lineHasContent = true;
    }
    return kind;
}

void QTextScanner::readComment()
{
    commentCol = col - 1;
    const QChar* from = pos;
    while (pos < end && pos->unicode() != '\n')
        take();
    int length = int(pos - from);
    if (length > 0 && from[length - 1].unicode() == '\r') --length;
    commentText.resize(0);
    commentText.append(from, qMin(length, maxText));
    commentSeen = true;
    if (tokenOnLine)
        running.clear();
    else if (running.isEmpty() && !isRuler(commentText))
        running = commentText;
    lineHasContent = true;
}

void QTextScanner::endLine()
{
    if (!lineHasContent) running.clear();
    ++lineNumber;
    col = 0;
    tokenOnLine = false;
    lineHasContent = false;
}

int QTextScanner::readNumber()
{
    int kind = tkInteger;
    const QChar* from = pos;
    takeDigits();
    if (pos < end && pos->unicode() == '.') {
        take();
        kind = tkReal;
        takeDigits();
    }
    appendSince(from);
    return finish(kind);
}

int QTextScanner::next()
{
    // The buffers keep their room from token to token.
    commentSeen = false;
    commentText.resize(0);
    tokenText.resize(0);
    for (;;) {
        if (pos >= end) {
            ended = true;
            startColumn = col;
            return finish(tkEnd);
        }
        const QChar c = *pos;
        if (isBlank(c)) {
            take();
            continue;
        }
        if (c.unicode() == ';') {
            take();
            readComment();
            continue;
        }
        if (c.unicode() == '\n') {
            // The line-end state: every further line feed, blank and comment line belongs to this one
            // end-of-line token.
            while (pos < end) {
                const QChar n = *pos;
                if (n.unicode() == '\n') {
                    take();
                    endLine();
                } else if (isBlank(n)) {
                    take();
                } else if (n.unicode() == ';') {
                    take();
                    readComment();
                } else {
                    break;
                }
            }
            startColumn = col;
            if (pos >= end) {
                ended = true;
                return finish(tkEnd);
            }
            return finish(tkEndOfLine);
        }
        break;
    }

    startColumn = col;
    const QChar c = take();
    const ushort u = c.unicode();
    if (isDigit(c)) {
        append(c);
        return readNumber();
    }
    if (c.isLetter()) {
        const QChar* from = pos - 1;
        while (pos < end &&
               (pos->isLetter() || isDigit(*pos) || pos->unicode() == '.' || pos->unicode() == '_'))
            take();
        appendSince(from);
        return finish(tkIdentifier);
    }
    switch (u) {
    case '-':
        if (isDigit(peek())) {
            append(c);
            return readNumber();
        }
        if (peek().unicode() == '.') {
            take();
            tokenText.append(QLatin1String("-0."));
            const QChar* from = pos;
            takeDigits();
            appendSince(from);
            return finish(tkReal);
        }
        append(c);
        return finish(tkMinus);
    case '.':
        if (isDigit(peek())) {
            // The digit is kept and read once more: ".5" is "0.55". Files in the wild were written
            // against this reading, so it stays.
            tokenText.append(QLatin1String("0."));
            append(peek());
            const QChar* from = pos;
            takeDigits();
            appendSince(from);
            return finish(tkReal);
        }
        append(c);
        return finish(tkOther);
    case '"': {
        startColumn = col;
        const QChar* from = pos;
        while (pos < end && pos->unicode() != '"') {
            if (take().unicode() == '\n') {
                ++lineNumber;
                col = 0;
            }
        }
        appendSince(from);
        if (pos >= end) {
            ended = true;
            return finish(tkEnd);
        }
        take();
        return finish(tkString);
    }
    case '<':
    case '>':
    case '!':
        append(c);
        if (peek().unicode() == '=') {
            append(take());
            return finish(u == '<' ? tkLessEqual : u == '>' ? tkGreaterEqual : tkNotEqual);
        }
        return finish(u == '<' ? tkLess : u == '>' ? tkGreater : tkNot);
    case '*':
    case '&':
    case '|':
    case '^': {
        append(c);
        const int single = u == '*' ? tkStar : u == '&' ? tkAmpersand : u == '|' ? tkPipe : tkCaret;
        if (peek() == c) {
            append(take());
            return finish(single + 1);
        }
        return finish(single);
    }
    default:
        break;
    }
    append(c);
    switch (u) {
    case '+':
        return finish(tkPlus);
    case '/':
        return finish(tkSlash);
    case '%':
        return finish(tkPercent);
    case '=':
        return finish(tkEqual);
    case ',':
        return finish(tkComma);
    case '(':
        return finish(tkLeftParen);
    case ')':
        return finish(tkRightParen);
    case '{':
        return finish(tkLeftBrace);
    case '}':
        return finish(tkRightBrace);
    case '[':
        return finish(tkLeftBracket);
    case ']':
        return finish(tkRightBracket);
    case ':':
        return finish(tkColon);
    case '~':
        return finish(tkTilde);
    case '$':
        return finish(tkDollar);
    default:
        return finish(tkOther);
    }
}
