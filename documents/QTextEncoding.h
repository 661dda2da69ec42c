#pragma once

#include <QByteArray>
#include <QString>

class QTextCodec;

// The encoding table of text files: index 0 is "System" (the locale's codec), index n is entry n of
// codecList(). Decoding detects the charset first; a byte order mark is reported so that saving can
// write it again.
class QTextEncoding
{
public:
    // The index of a codec name, or 0 when the table does not hold it.
    static int codecIndex(const QByteArray& name);
    // The name at an index, or the translated "System" for 0 and for anything out of range.
    static QString codecName(int index);
    // The codec at an index; the locale's for 0 and for anything out of range.
    static QTextCodec* codec(int index);

    // Decodes file bytes: the detected charset if Qt knows it, else the wanted codec (when not 0), else
    // the locale's. outIndex receives the index of the codec used, hadBom whether the bytes began with
    // a byte order mark; the text never holds the mark.
    static QString decode(const QByteArray& bytes, int wantedIndex, int* outIndex = nullptr,
                          bool* hadBom = nullptr);
    // Encodes text with the codec at index; with bom, a Unicode codec writes its byte order mark first.
    static QByteArray encode(const QString& text, int index, bool bom = false);

    // The charset that uchardet names for the bytes, or an empty name.
    static QByteArray detect(const QByteArray& bytes);
};
