#include "QTextFileLines.h"

#include "QTextEditorBlockData.h"
#include "QTextEncoding.h"

#include <QTextBlock>
#include <QTextCodec>
#include <QTextDocument>

namespace {

// Cuts a text or byte array at CR LF, LF and lone CR; the last piece has no end and may be empty.
template <typename Text, typename Piece>
void split(const Text& text, QList<Piece>& pieces, QList<QTextFileLines::LineEnd>& ends)
{
    const qsizetype size = text.size();
    qsizetype start = 0;
    for (qsizetype i = 0; i < size; ++i) {
        const char c = char(text.at(i) == '\r' ? '\r' : (text.at(i) == '\n' ? '\n' : 0));
        if (!c) continue;
        pieces.append(Piece(text.mid(start, i - start)));
        if (c == '\r' && i + 1 < size && text.at(i + 1) == '\n') {
            ends.append(QTextFileLines::CRLF);
            ++i;
        } else {
            ends.append(c == '\r' ? QTextFileLines::CR : QTextFileLines::LF);
        }
        start = i + 1;
    }
    pieces.append(Piece(text.mid(start)));
    ends.append(QTextFileLines::NoEnd);
}

} // namespace

bool QTextFileLines::isLineSafe(QTextCodec* codec)
{
    static const QByteArray probe("\r\n\t ;[]=,.-azAZ09");
    return codec && codec->fromUnicode(QString::fromLatin1(probe)) == probe;
}

QByteArray QTextFileLines::endBytes(LineEnd end)
{
    switch (end) {
    case LF:
        return QByteArrayLiteral("\n");
    case CRLF:
        return QByteArrayLiteral("\r\n");
    case CR:
        return QByteArrayLiteral("\r");
    default:
        return QByteArray();
    }
}

void QTextFileLines::clear()
{
    lines.clear();
    raw.clear();
    ends.clear();
    usual = CRLF;
    sourceCodec = -1;
    bom = false;
}

void QTextFileLines::read(const QByteArray& bytes, const QString& decoded, int codec, bool hadBom)
{
    clear();
    sourceCodec = codec;
    bom = hadBom;
    split(decoded, lines, ends);

    int counts[4] = {0, 0, 0, 0};
    for (LineEnd end : ends)
        ++counts[end];
    // A file without line ends gets the engine's own, CR LF; ties go the same way.
    if (counts[LF] > counts[CRLF] && counts[LF] >= counts[CR])
        usual = LF;
    else if (counts[CR] > counts[CRLF] && counts[CR] > counts[LF])
        usual = CR;

    QTextCodec* used = QTextEncoding::codec(codec);
    if (!isLineSafe(used)) return;
    QByteArray body = bytes;
    if (hadBom && body.startsWith("\xEF\xBB\xBF")) body.remove(0, 3);
    QList<QByteArray> pieces;
    QList<LineEnd> byteEnds;
    split(body, pieces, byteEnds);
    if (byteEnds != ends) return;
    // Lines are only taken from the bytes where each decodes alone to what the whole file gave.
    for (qsizetype i = 0; i < pieces.size(); ++i)
        if (used->toUnicode(pieces.at(i)) != lines.at(i)) return;
    raw = pieces;
}

QString QTextFileLines::text() const
{
    return lines.join(QLatin1Char('\n'));
}

void QTextFileLines::bind(QTextDocument* document) const
{
    int line = 0;
    for (QTextBlock block = document->firstBlock(); block.isValid(); block = block.next())
        QTextEditorBlockData::of(block)->sourceLine = line++;
}

QByteArray QTextFileLines::write(const QTextDocument* document, int codec, bool withBom) const
{
    QTextCodec* used = QTextEncoding::codec(codec);
    const bool byLine = isLineSafe(used);
    const bool ownBytes = byLine && codec == sourceCodec && !raw.isEmpty();
    QByteArray bytes = withBom ? QTextEncoding::encode(QString(), codec, true) : QByteArray();
    QString whole;

    const int count = lineCount();
    // The next line of the file that an unedited block is expected to be, for blocks that lost their tie
    // to their line (lines that Qt made again, as after an undo of a deletion).
    int expected = 0;
    for (QTextBlock block = document->firstBlock(); block.isValid(); block = block.next()) {
        const QString text = block.text();
        const auto* data = static_cast<const QTextEditorBlockData*>(block.userData());
        const int hint = data ? data->sourceLine : -1;
        int line = -1;
        if (hint >= 0 && hint < count && lines.at(hint) == text)
            line = hint;
        else if (expected < count && lines.at(expected) == text)
            line = expected;
        if (line >= 0) expected = line + 1;

        LineEnd end = NoEnd;
        if (block.next().isValid()) end = line >= 0 && ends.at(line) != NoEnd ? ends.at(line) : usual;
        if (byLine) {
            bytes += line >= 0 && ownBytes ? raw.at(line) : used->fromUnicode(text);
            bytes += endBytes(end);
        } else {
            whole += text;
            whole += QString::fromLatin1(endBytes(end));
        }
    }
    if (!byLine) return QTextEncoding::encode(whole, codec, withBom);
    return bytes;
}
