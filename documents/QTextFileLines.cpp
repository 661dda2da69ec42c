#include "QTextFileLines.h"

#include "QTextEditorBlockData.h"
#include "QTextEncoding.h"

#include <QFile>
#include <QSaveFile>
#include <QTextBlock>
#include <QTextCodec>
#include <QTextDocument>

namespace {

bool isParagraphSeparator(char)
{
    return false;
}

bool isParagraphSeparator(QChar c)
{
    return c.unicode() == 0x2029;
}

// Cuts a text or byte array at CR LF, LF, lone CR and, in text, the paragraph separator; the last
// piece has no end and may be empty.
template <typename Text, typename Piece>
void split(const Text& text, QList<Piece>& pieces, QList<QTextFileLines::LineEnd>& ends)
{
    const qsizetype size = text.size();
    qsizetype start = 0;
    for (qsizetype i = 0; i < size; ++i) {
        const bool separator = isParagraphSeparator(text.at(i));
        const char c = char(text.at(i) == '\r' ? '\r' : (text.at(i) == '\n' ? '\n' : 0));
        if (!c && !separator) continue;
        pieces.append(Piece(text.mid(start, i - start)));
        if (separator) {
            ends.append(QTextFileLines::ParagraphSeparator);
        } else if (c == '\r' && i + 1 < size && text.at(i + 1) == '\n') {
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

QString QTextFileLines::decode(const QByteArray& bytes, int wantedCodec, int* codec, bool* bom)
{
    QString text = QTextEncoding::decode(bytes, wantedCodec, codec, bom);
    if (wantedCodec <= 0 || *codec == wantedCodec || QTextEncoding::encode(text, *codec, *bom) == bytes)
        return text;
    // Detection guesses; the codec the file was asked to be read in wins when only it is exact.
    QString wanted = QTextEncoding::codec(wantedCodec)->toUnicode(bytes);
    const bool wantedMark = wanted.startsWith(QChar(0xFEFF));
    if (wantedMark) wanted.remove(0, 1);
    if (QTextEncoding::encode(wanted, wantedCodec, wantedMark) != bytes) return text;
    *codec = wantedCodec;
    *bom = wantedMark;
    return wanted;
}

bool QTextFileLines::readFile(const QString& path, QByteArray* bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return false;
    *bytes = file.readAll();
    return file.error() == QFileDevice::NoError;
}

bool QTextFileLines::writeFile(const QString& path, const QByteArray& bytes)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) return false;
    if (file.write(bytes) != bytes.size()) {
        file.cancelWriting();
        return false;
    }
    return file.commit();
}

bool QTextFileLines::isLineSafe(QTextCodec* codec)
{
    static const QByteArray probe("\r\n\t ;[]=,.-azAZ09");
    return codec && codec->fromUnicode(QString::fromLatin1(probe)) == probe;
}

QString QTextFileLines::endText(LineEnd end)
{
    switch (end) {
    case LF:
        return QStringLiteral("\n");
    case CRLF:
        return QStringLiteral("\r\n");
    case CR:
        return QStringLiteral("\r");
    case ParagraphSeparator:
        return QString(QChar(0x2029));
    default:
        return QString();
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

    int counts[ParagraphSeparator + 1] = {};
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
    QByteArray endBytes[ParagraphSeparator + 1];
    if (byLine)
        for (int end = NoEnd; end <= ParagraphSeparator; ++end)
            endBytes[end] = used->fromUnicode(endText(LineEnd(end)));

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
            bytes += endBytes[end];
        } else {
            whole += text;
            whole += endText(end);
        }
    }
    if (!byLine) return QTextEncoding::encode(whole, codec, withBom);
    return bytes;
}
