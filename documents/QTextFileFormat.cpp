#include "QTextFileFormat.h"

#include "QTextEncoding.h"
#include "QTextFileLines.h"

#include <QTextBlock>
#include <QTextDocument>

namespace {

const QChar paragraphSeparator(0x2029);

// Splits text at CR LF, CR, LF and the paragraph separator (all of which a document takes as a line
// end) into text with LF ends and the list of the ends found.
QString normalise(const QString& text, QStringList* ends)
{
    QString out;
    out.reserve(text.size());
    const int size = int(text.size());
    for (int i = 0; i < size; ++i) {
        const QChar c = text.at(i);
        if (c == QLatin1Char('\r')) {
            const bool pair = i + 1 < size && text.at(i + 1) == QLatin1Char('\n');
            ends->append(pair ? QStringLiteral("\r\n") : QStringLiteral("\r"));
            if (pair) ++i;
            out += QLatin1Char('\n');
        } else if (c == QLatin1Char('\n') || c == paragraphSeparator) {
            ends->append(QString(c));
            out += QLatin1Char('\n');
        } else {
            out += c;
        }
    }
    return out;
}

} // namespace

QString QTextFileFormat::decode(const QByteArray& bytes, int wantedCodec)
{
    int index = 0;
    bool mark = false;
    const QString text = QTextFileLines::decode(bytes, wantedCodec, &index, &mark);
    codec = index;
    bom = mark;

    QStringList ends;
    const QString normalised = normalise(text, &ends);
    int lf = 0;
    int crlf = 0;
    int cr = 0;
    for (const QString& end : std::as_const(ends)) {
        if (end == QLatin1String("\n"))
            ++lf;
        else if (end == QLatin1String("\r\n"))
            ++crlf;
        else if (end == QLatin1String("\r"))
            ++cr;
    }
    if (crlf > lf && crlf >= cr)
        lineEnd = QStringLiteral("\r\n");
    else if (cr > lf && cr > crlf)
        lineEnd = QStringLiteral("\r");
    else
        lineEnd = QStringLiteral("\n");
    lineEnds.clear();
    loadedText.clear();
    if (ends.count(lineEnd) != ends.size()) {
        lineEnds = ends;
        loadedText = normalised;
    }
    return normalised;
}

QByteArray QTextFileFormat::encode(const QString& text) const
{
    if (!lineEnds.isEmpty() && text == loadedText) {
        QString out;
        out.reserve(text.size() + lineEnds.size());
        int line = 0;
        for (const QChar c : text) {
            if (c == QLatin1Char('\n'))
                out += lineEnds.value(line++, lineEnd);
            else
                out += c;
        }
        return QTextEncoding::encode(out, codec, bom);
    }
    if (lineEnd == QLatin1String("\n")) return QTextEncoding::encode(text, codec, bom);
    QString out = text;
    out.replace(QLatin1Char('\n'), lineEnd);
    return QTextEncoding::encode(out, codec, bom);
}

QByteArray QTextFileFormat::encode(const QTextDocument* document) const
{
    // The blocks' own texts, not toPlainText(), which turns non-breaking spaces into blanks.
    QString text;
    for (QTextBlock block = document->firstBlock(); block.isValid(); block = block.next()) {
        if (block != document->firstBlock()) text += QLatin1Char('\n');
        text += block.text();
    }
    return encode(text);
}

bool QTextFileFormat::readFile(const QString& path, QByteArray* bytes)
{
    return QTextFileLines::readFile(path, bytes);
}

bool QTextFileFormat::writeFile(const QString& path, const QByteArray& bytes)
{
    return QTextFileLines::writeFile(path, bytes);
}
