#pragma once

#include <QByteArray>
#include <QString>

class QTextCodec;

// The encoding table of text files: index 0 is "System" (the locale's codec), index n is entry n of
// codecList(). Decoding chooses the codec by what reads the bytes exactly (QCharsetDetector); a byte
// order mark is reported so that saving can write it again.
class QTextEncoding
{
public:
    // The index of a codec name, or 0 when the table does not hold it.
    static int codecIndex(const QByteArray& name);
    // The index of a codec, by its name; 0 for null and for a codec the table does not hold.
    static int indexOf(const QTextCodec* codec);
    // The name at an index, or the translated "System" for 0 and for anything out of range.
    static QString codecName(int index);
    // The codec at an index; the locale's for 0 and for anything out of range.
    static QTextCodec* codec(int index);

    // Decodes file bytes in the codec that QCharsetDetector chooses. outIndex receives the index of the
    // codec used, hadBom whether the bytes began with a byte order mark; the text never holds the mark.
    static QString decode(const QByteArray& bytes, int wantedIndex, int* outIndex = nullptr,
                          bool* hadBom = nullptr);
    // Encodes text with the codec at index; with bom, a Unicode codec writes its byte order mark first.
    static QByteArray encode(const QString& text, int index, bool bom = false);

    // The bytes as the codec reads them, without treating a leading mark as anything but text and
    // without keeping state between calls.
    static QString toUnicode(QTextCodec* codec, const char* bytes, qsizetype size);
    static QString toUnicode(QTextCodec* codec, const QByteArray& bytes);
    // The byte order mark of a Unicode codec; empty for the others.
    static QByteArray byteOrderMark(const QTextCodec* codec);
    // The codec of a byte order mark at the start of bytes, or null; length receives the mark's size.
    static QTextCodec* markedCodec(const QByteArray& bytes, int* length = nullptr);

    // The charset that uchardet names for the bytes, or an empty name.
    static QByteArray detect(const QByteArray& bytes);
};
