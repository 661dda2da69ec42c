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
    pos = source.constData();
    end = pos + source.size();
    col = 0;
    lineNumber = 1;
    ended = false;
    tokenKind = tkEnd;
    startColumn = 0;
    tokenText.clear();
    commentSeen = false;
    commentText.clear();
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
    commentText = QString(from, qMin(length, maxText));
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
    while (pos < end && isDigit(*pos))
        append(take());
    if (pos < end && pos->unicode() == '.') {
        append(take());
        kind = tkReal;
        while (pos < end && isDigit(*pos))
            append(take());
    }
    return finish(kind);
}

int QTextScanner::next()
{
    commentSeen = false;
    commentText.clear();
    tokenText.clear();
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
        append(c);
        while (pos < end &&
               (pos->isLetter() || isDigit(*pos) || pos->unicode() == '.' || pos->unicode() == '_'))
            append(take());
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
            tokenText = QStringLiteral("-0.");
            while (pos < end && isDigit(*pos))
                append(take());
            return finish(tkReal);
        }
        append(c);
        return finish(tkMinus);
    case '.':
        if (isDigit(peek())) {
            // The digit is kept and read once more: ".5" is "0.55". Files in the wild were written
            // against this reading, so it stays.
            tokenText = QStringLiteral("0.");
            append(peek());
            while (pos < end && isDigit(*pos))
                append(take());
            return finish(tkReal);
        }
        append(c);
        return finish(tkOther);
    case '"':
        startColumn = col;
        while (pos < end && pos->unicode() != '"') {
            const QChar s = take();
            if (s.unicode() == '\n') {
                ++lineNumber;
                col = 0;
            }
            append(s);
        }
        if (pos >= end) {
            ended = true;
            return finish(tkEnd);
        }
        take();
        return finish(tkString);
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
