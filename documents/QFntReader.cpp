#include "QFntReader.h"

#include "QPCXCodec.h"
#include "QTextScanner.h"

#include <QIODevice>
#include <QRect>
#include <QtEndian>

#include <algorithm>
#include <cstring>

namespace {

constexpr char Magic[12] = "ElecbyteFnt";
// A PCX run is at most 63 pixels in two bytes: an image can't hold more pixels than this many per
// byte of its data, whatever its header claims.
constexpr qint64 MaxPixelsPerByte = 32;
// A map names a character by its code in this form, since "[" and ";" can't stand for themselves.
constexpr int MaxHexDigits = 8;

// Up to max integers of the scanner's line from its position on; a "-" before a number negates it.
QList<int> integers(QTextScanner& scanner, int max)
{
    QList<int> values;
    bool negative = false;
    for (int kind = scanner.next(); kind != tkEnd && kind != tkEndOfLine && values.size() < max;
         kind = scanner.next()) {
        if (kind == tkInteger) values.append(negative ? -scanner.toInt() : scanner.toInt());
        negative = kind == tkMinus;
    }
    return values;
}

// The value of a hex digit, or -1.
int hexDigit(QChar c)
{
    const ushort u = c.unicode();
    if (u >= '0' && u <= '9') return u - '0';
    if (u >= 'a' && u <= 'f') return u - 'a' + 10;
    if (u >= 'A' && u <= 'F') return u - 'A' + 10;
    return -1;
}

// A line that starts with "0x" and hex digits, followed by a blank, a comment or the end, names its
// character by code. Answers how many characters that took, or 0.
int hexCode(const QString& line, int* code)
{
    if (line.size() < 3 || line.at(0) != QLatin1Char('0') || (line.at(1).toLower() != QLatin1Char('x')))
        return 0;
    int end = 2;
    uint value = 0;
    while (end < line.size() && hexDigit(line.at(end)) >= 0) {
        if (end - 2 < MaxHexDigits) value = value * 16 + uint(hexDigit(line.at(end)));
        ++end;
    }
    if (end == 2) return 0;
    if (end < line.size() && !line.at(end).isSpace() && line.at(end) != QLatin1Char(';')) return 0;
    *code = end - 2 > MaxHexDigits ? 256 : int(std::min(value, 256u));
    return end;
}

void readMapLine(const QString& line, QFntFont& font, QTextScanner& scanner)
{
    int code = 0;
    int taken = hexCode(line, &code);
    if (taken == 0) {
        code = line.at(0).unicode();
        taken = 1;
    }
    if (code > 255) code = 0;
    scanner.setText(line.mid(taken));
    const QList<int> values = integers(scanner, 2);
    QFntGlyph glyph;
    glyph.code = code;
    glyph.order = font.mapLines++;
    glyph.x = values.value(0);
    glyph.width = values.value(1);
    if (!font.map.contains(code)) font.map.insert(code, glyph);
}

void readDefLine(QTextScanner& scanner, QFntFont& font)
{
    const QString key = scanner.text().toLower();
    if (scanner.next() != tkEqual) return;
    if (key == QLatin1String("type")) {
        font.fixed = scanner.next() == tkIdentifier &&
                     scanner.text().compare(QLatin1String("fixed"), Qt::CaseInsensitive) == 0;
        return;
    }
    const QList<int> values = integers(scanner, 2);
    if (key == QLatin1String("colors")) {
        // 0 colours would leave no palette to make; it is taken as the whole table as well.
        const int colors = values.value(0, QFntFont().colors);
        font.colors = colors > 0 && colors <= 256 ? colors : 256;
    } else if (key == QLatin1String("size")) {
        font.size = QSize(values.value(0, -1), values.value(1, -1));
    } else if (key == QLatin1String("spacing")) {
        font.spacing = QPoint(values.value(0), values.value(1));
    } else if (key == QLatin1String("offset")) {
        font.offset = QPoint(values.value(0), values.value(1));
    }
}

// The bytes of one part of the file, when the whole part lies within it.
bool readPart(QIODevice* device, qint64 total, quint32 offset, quint32 size, QByteArray& bytes)
{
    if (qint64(offset) > total || qint64(size) > total - qint64(offset)) return false;
    if (!device->seek(offset)) return false;
    bytes = device->read(size);
    return bytes.size() == qsizetype(size);
}

// Clips the span from start over length to 0..limit, in 64 bits so that no sum overflows.
bool clipSpan(qint64 start, qint64 length, int limit, int& from, int& count)
{
    const qint64 first = std::max<qint64>(start, 0);
    const qint64 last = std::min<qint64>(start + length, limit);
    if (length <= 0 || first >= last) return false;
    from = int(first);
    count = int(last - first);
    return true;
}

} // namespace

QRect QFntFont::cell(const QFntGlyph& glyph) const
{
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    if (!fixed) {
        if (!clipSpan(glyph.x, glyph.width, image.width(), x, width)) return QRect();
        return QRect(x, 0, width, image.height());
    }
    if (size.width() <= 0 || size.height() <= 0) return QRect();
    // A last column cut short by the image's edge still counts as a column.
    const qint64 columns = std::max<qint64>(1, (qint64(image.width()) + size.width() - 1) / size.width());
    if (!clipSpan(qint64(glyph.order % columns) * size.width(), size.width(), image.width(), x, width) ||
        !clipSpan(qint64(glyph.order / columns) * size.height(), size.height(), image.height(), y, height))
        return QRect();
    return QRect(x, y, width, height);
}

void QFntReader::readText(const QString& text, QFntFont& font)
{
    bool inMap = false;
    QTextScanner scanner;
    const QStringList lines = text.split(QLatin1Char('\n'));
    for (QString line : lines) {
        if (line.endsWith(QLatin1Char('\r'))) line.chop(1);
        scanner.setText(line);
        const int first = scanner.next();
        if (first == tkLeftBracket) {
            inMap = scanner.next() == tkIdentifier &&
                    scanner.text().compare(QLatin1String("map"), Qt::CaseInsensitive) == 0;
            continue;
        }
        // In the map the first character of a line is the character mapped, whatever it is: a blank
        // maps the space, ";" the semicolon.
        if (inMap) {
            if (!line.isEmpty()) readMapLine(line, font, scanner);
        } else if (first == tkIdentifier) {
            readDefLine(scanner, font);
        }
    }
}

bool QFntReader::read(QIODevice* device, QFntFont& font)
{
    if (!device || !device->isReadable() || device->isSequential() || !device->seek(0)) return false;
    const qint64 total = device->size();
    const QByteArray header = device->read(HeaderSize);
    if (header.size() < HeaderSize || std::memcmp(header.constData(), Magic, sizeof(Magic)) != 0)
        return false;
    const uchar* fields = reinterpret_cast<const uchar*>(header.constData());
    const quint32 imageOffset = qFromLittleEndian<quint32>(fields + 16);
    const quint32 imageSize = qFromLittleEndian<quint32>(fields + 20);
    const quint32 textOffset = qFromLittleEndian<quint32>(fields + 24);
    const quint32 textSize = qFromLittleEndian<quint32>(fields + 28);

    QByteArray pcx;
    QByteArray text;
    if (!readPart(device, total, imageOffset, imageSize, pcx) ||
        !readPart(device, total, textOffset, textSize, text))
        return false;
    QPCXCodec::Header pcxHeader;
    if (!QPCXCodec::readHeader(pcx, pcxHeader) || pcxHeader.format != QImage::Format_Indexed8 ||
        qint64(pcxHeader.width) * pcxHeader.height > qint64(pcx.size()) * MaxPixelsPerByte)
        return false;
    QImage image = decodePCX(pcx);
    if (image.isNull() || image.format() != QImage::Format_Indexed8) return false;

    font = QFntFont();
    font.image = image;
    readText(QString::fromLatin1(text), font);
    return true;
}
