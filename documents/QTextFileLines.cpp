#include "QTextFileLines.h"

#include "QTextEditorBlockData.h"
#include "QTextEncoding.h"

#include <QFile>
#include <QSaveFile>
#include <QTextBlock>
#include <QTextCodec>
#include <QTextDocument>

namespace {

// How the bytes of a codec are cut at line ends: in code units of this many bytes, the value of a unit
// read in this byte order. Zero for codecs whose bytes can't be cut: the whole file is then one piece.
struct Units
{
    int size = 1;
    bool bigEndian = false;
};

// The codec that reads and writes single lines: a Unicode codec of either byte order takes the order
// of the file's mark, so that no line gains a mark of its own.
QTextCodec* lineCodec(QTextCodec* codec, const QByteArray& head)
{
    const bool little = head.startsWith("\xFF\xFE");
    switch (codec->mibEnum()) {
    case 1015:
        return QTextCodec::codecForMib(little ? 1014 : 1013);
    case 1017:
        return QTextCodec::codecForMib(little ? 1019 : 1018);
    default:
        return codec;
    }
}

Units unitsOf(QTextCodec* codec)
{
    switch (codec->mibEnum()) {
    case 1013:
        return {2, true};
    case 1014:
        return {2, false};
    case 1018:
        return {4, true};
    case 1019:
        return {4, false};
    default:
        return {QTextFileLines::isLineSafe(codec) ? 1 : 0, false};
    }
}

uint unitAt(const QByteArray& bytes, qsizetype at, Units units)
{
    uint value = 0;
    for (int i = 0; i < units.size; ++i) {
        const uint byte = uchar(bytes.at(at + (units.bigEndian ? i : units.size - 1 - i)));
        value = value << 8 | byte;
    }
    return value;
}

// Cuts bytes at CR LF, LF and lone CR: each piece without its end, and the bytes of the end. The last
// piece has no end and may be empty.
void cutBytes(const QByteArray& bytes, Units units, QList<QByteArray>& pieces, QList<QByteArray>& ends)
{
    if (units.size == 0) {
        pieces << bytes;
        ends << QByteArray();
        return;
    }
    const qsizetype size = bytes.size() - bytes.size() % units.size;
    qsizetype start = 0;
    for (qsizetype i = 0; i < size; i += units.size) {
        const uint c = unitAt(bytes, i, units);
        if (c != '\r' && c != '\n') continue;
        qsizetype next = i + units.size;
        if (c == '\r' && next < size && unitAt(bytes, next, units) == '\n') next += units.size;
        pieces << bytes.mid(start, i - start);
        ends << bytes.mid(i, next - i);
        start = next;
        i = next - units.size;
    }
    pieces << bytes.mid(start);
    ends << QByteArray();
}

// What a document takes as the end of a block besides CR and LF.
bool endsBlock(QChar c)
{
    return c == QChar::ParagraphSeparator || c.unicode() == 0xFDD0 || c.unicode() == 0xFDD1;
}

// Cuts decoded text where a document would start a new block; ends receives each end's characters.
void cutText(const QString& text, QStringList& pieces, QStringList& ends)
{
    qsizetype start = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (c != QLatin1Char('\r') && c != QLatin1Char('\n') && !endsBlock(c)) continue;
        qsizetype next = i + 1;
        if (c == QLatin1Char('\r') && next < text.size() && text.at(next) == QLatin1Char('\n')) ++next;
        pieces << text.mid(start, i - start);
        ends << text.mid(i, next - i);
        start = next;
        i = next - 1;
    }
    pieces << text.mid(start);
    ends << QString();
}

QTextFileLines::LineEnd endKind(const QString& end)
{
    if (end == QLatin1String("\r\n")) return QTextFileLines::CRLF;
    if (end == QLatin1String("\n")) return QTextFileLines::LF;
    if (end == QLatin1String("\r")) return QTextFileLines::CR;
    if (end == QString(QChar::ParagraphSeparator)) return QTextFileLines::ParagraphSeparator;
    return QTextFileLines::NoEnd;
}

bool holdsExactly(QTextCodec* codec, const QString& text)
{
    return QTextEncoding::toUnicode(codec, codec->fromUnicode(text)) == text;
}

} // namespace

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
        return QString(QChar::ParagraphSeparator);
    default:
        return QString();
    }
}

void QTextFileLines::clear()
{
    lines.clear();
    ends.clear();
    pieceOf.clear();
    pieces.clear();
    head.clear();
    usual = CRLF;
    sourceCodec = -1;
}

void QTextFileLines::read(const QByteArray& bytes, int codec, bool bom)
{
    clear();
    sourceCodec = codec;
    QTextCodec* fileCodec = QTextEncoding::codec(codec);
    const QByteArray mark = QTextEncoding::byteOrderMark(fileCodec);
    // A file in plain UTF-16 or UTF-32 has the byte order of its mark.
    if (bom && (fileCodec->mibEnum() == 1015 || fileCodec->mibEnum() == 1017)) {
        if (QTextCodec* marked = QTextEncoding::markedCodec(bytes))
            head = QTextEncoding::byteOrderMark(marked);
    } else if (bom && !mark.isEmpty() && bytes.startsWith(mark)) {
        head = mark;
    }
    QTextCodec* used = lineCodec(fileCodec, head);

    QList<QByteArray> byteLines;
    QList<QByteArray> byteEnds;
    cutBytes(bytes.mid(head.size()), unitsOf(used), byteLines, byteEnds);
    int counts[ParagraphSeparator + 1] = {};
    for (qsizetype p = 0; p < byteLines.size(); ++p) {
        const QString text = QTextEncoding::toUnicode(used, byteLines.at(p));
        QStringList parts;
        QStringList partEnds;
        cutText(text, parts, partEnds);
        Piece piece{byteLines.at(p), byteEnds.at(p), int(lines.size()), int(parts.size()), false};
        piece.lossy = used->fromUnicode(text) != piece.bytes;
        // The piece's own end, as text, for when its last line is written encoded.
        partEnds.last() = QTextEncoding::toUnicode(used, piece.end);
        for (const QString& end : std::as_const(partEnds))
            ++counts[endKind(end)];
        lines << parts;
        ends << partEnds;
        for (qsizetype i = 0; i < parts.size(); ++i)
            pieceOf << int(pieces.size());
        pieces << piece;
    }
    // A file without line ends gets the engine's own, CR LF; ties go the same way.
    if (counts[LF] > counts[CRLF] && counts[LF] >= counts[CR])
        usual = LF;
    else if (counts[CR] > counts[CRLF] && counts[CR] > counts[LF])
        usual = CR;
}

QString QTextFileLines::text() const
{
    return lines.join(QLatin1Char('\n'));
}

void QTextFileLines::bind(QTextDocument* document)
{
    const bool aligned = document->blockCount() == lines.size();
    int line = 0;
    for (QTextBlock block = document->firstBlock(); block.isValid(); block = block.next()) {
        if (aligned) lines[line] = block.text();
        QTextEditorBlockData::of(block)->sourceLine = line++;
    }
}

QByteArray QTextFileLines::lineBytes(const QTextBlock& block, int codec) const
{
    const auto* data = static_cast<const QTextEditorBlockData*>(block.userData());
    const int line = data ? data->sourceLine : -1;
    if (codec == sourceCodec && line >= 0 && line < lineCount() && lines.at(line) == block.text()) {
        const Piece& piece = pieces.at(pieceOf.at(line));
        if (piece.lineCount == 1) return piece.bytes;
    }
    return lineCodec(QTextEncoding::codec(codec), head)->fromUnicode(block.text());
}

QByteArray QTextFileLines::encodeLine(QTextCodec* codec, const QString& text, int number, int line,
                                      QList<Unwritable>* unwritable) const
{
    const QByteArray encoded = codec->fromUnicode(text);
    const bool lossy = line >= 0 && line < pieceOf.size() && pieces.at(pieceOf.at(line)).lossy;
    if (!lossy && !text.contains(QChar::ReplacementCharacter) &&
        QTextEncoding::toUnicode(codec, encoded) == text)
        return encoded;

    // Character by character: what the codec can't hold becomes "?", and so does U+FFFD, which stands
    // for bytes that could not be read and so can't be written again.
    QString bad;
    QString kept;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const qsizetype length = text.at(i).isHighSurrogate() && i + 1 < text.size() ? 2 : 1;
        const QString character = text.mid(i, length);
        i += length - 1;
        if (character.at(0) == QChar::ReplacementCharacter || !holdsExactly(codec, character)) {
            if (!bad.contains(character)) bad += character;
            kept += QLatin1Char('?');
        } else {
            kept += character;
        }
    }
    // A line whose bytes lost something in reading without a trace in its text: the user could not see
    // what is lost.
    if (bad.isEmpty() && lossy && !lines.at(line).contains(QChar::ReplacementCharacter))
        bad = QChar(QChar::ReplacementCharacter);
    if (bad.isEmpty()) return encoded;
    if (unwritable) unwritable->append({number, bad});
    return codec->fromUnicode(kept);
}

QByteArray QTextFileLines::write(const QTextDocument* document, int codec, bool withBom,
                                 QList<Unwritable>* unwritable) const
{
    QTextCodec* fileCodec = QTextEncoding::codec(codec);
    const bool own = codec == sourceCodec;
    QByteArray bytes;
    if (withBom) bytes = own && !head.isEmpty() ? head : QTextEncoding::byteOrderMark(fileCodec);
    QTextCodec* used = lineCodec(fileCodec, bytes);

    // Which line of the file each block still is: the line it was read as when its text is unchanged,
    // else the next line of the file after the last one found, for blocks that lost their tie to their
    // line (lines that Qt made again, as after an undo of a deletion).
    const int count = lineCount();
    QStringList texts;
    QList<int> found;
    QList<int> origins;
    int expected = 0;
    for (QTextBlock block = document->firstBlock(); block.isValid(); block = block.next()) {
        const QString text = block.text();
        const auto* data = static_cast<const QTextEditorBlockData*>(block.userData());
        const int hint = data && data->sourceLine < count ? data->sourceLine : -1;
        int line = -1;
        if (hint >= 0 && lines.at(hint) == text)
            line = hint;
        else if (expected < count && lines.at(expected) == text)
            line = expected;
        if (line >= 0) expected = line + 1;
        texts << text;
        found << line;
        origins << (line >= 0 ? line : hint);
    }

    const QByteArray usualEnd = used->fromUnicode(endText(usual));
    const int blocks = int(texts.size());
    for (int i = 0; i < blocks;) {
        const int line = found.at(i);
        if (own && line >= 0) {
            // A piece that came apart into several lines goes back as it was read only when all of them
            // are there, in order and unchanged.
            const Piece& piece = pieces.at(pieceOf.at(line));
            bool whole = line == piece.firstLine && i + piece.lineCount <= blocks;
            for (int k = 1; whole && k < piece.lineCount; ++k)
                whole = found.at(i + k) == line + k;
            if (whole) {
                bytes += piece.bytes;
                i += piece.lineCount;
                if (i < blocks) bytes += piece.end.isEmpty() ? usualEnd : piece.end;
                continue;
            }
        }
        bytes += encodeLine(used, texts.at(i), i + 1, origins.at(i), unwritable);
        ++i;
        if (i == blocks) break;
        if (line < 0) {
            bytes += usualEnd;
            continue;
        }
        const Piece& piece = pieces.at(pieceOf.at(line));
        if (own && line == piece.firstLine + piece.lineCount - 1 && !piece.end.isEmpty())
            bytes += piece.end;
        else
            bytes += ends.at(line).isEmpty() ? usualEnd : used->fromUnicode(ends.at(line));
    }
    return bytes;
}
