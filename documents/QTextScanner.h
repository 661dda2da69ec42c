#pragma once

#include "QTextToken.h"

#include <QString>
#include <QStringView>

// Cuts text into tokens. Made for one line of a document, but it reads several lines as well (the
// font and sprite definitions readers use it that way): a line feed gives an end-of-line token and
// comments ride along with the token that follows them.
class QTextScanner
{
public:
    static constexpr int maxText = 512;

    explicit QTextScanner(const QString& text = QString());

    void setText(const QString& text);
    // Reads the characters in place: they must stay as they are while the scanner reads them.
    void setText(QStringView text);

    // Reads the next token and returns its kind; tkEnd at the end of the text.
    int next();

    const QString& text() const { return tokenText; }
    int toInt() const { return tokenText.toInt(); }
    int kind() const { return tokenKind; }
    // Where the text of the last token began in its line.
    int tokenColumn() const { return startColumn; }
    // Characters consumed in the current line.
    int column() const { return col; }
    int line() const { return lineNumber; }
    bool atEnd() const { return ended; }

    // The comment met during the last next(), without its ';'.
    bool hasComment() const { return commentSeen; }
    const QString& comment() const { return commentText; }
    // Column of the ';' that began that comment.
    int commentColumn() const { return commentCol; }

    // The first comment of the current run of comment lines, skipping rulers such as ";------"; a
    // comment behind a token or an empty line clears it.
    const QString& runningComment() const { return running; }
    void clearRunningComment() { running.clear(); }

private:
    QChar peek(int ahead = 0) const;
    QChar take();
    void append(QChar c);
    // Appends the characters from from up to the current position, as far as the token text has room.
    void appendSince(const QChar* from);
    void takeDigits();
    void readComment();
    int readNumber();
    void endLine();
    int finish(int kind);

    QString source;
    const QChar* pos = nullptr;
    const QChar* end = nullptr;
    int col = 0;
    int lineNumber = 1;
    bool ended = false;
    int tokenKind = tkEnd;
    int startColumn = 0;
    QString tokenText;
    bool commentSeen = false;
    QString commentText;
    int commentCol = 0;
    QString running;
    bool tokenOnLine = false;
    bool lineHasContent = false;
};
