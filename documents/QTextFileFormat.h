#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

class QTextDocument;

// How a text file was stored: its encoding, its byte order mark and its line ends, so that writing the
// same text gives the same bytes. The text handed to a document always has LF line ends.
class QTextFileFormat
{
public:
    // Index into the encoding table (QTextEncoding); 0 is the locale's codec.
    int codec = 0;
    bool bom = false;
    // The line end of most lines; every line gets it on writing unless the file mixed line ends and
    // the text is still the one loaded.
    QString lineEnd = QStringLiteral("\n");

    // Decodes file bytes as QTextFileLines::decode does and notes the format.
    QString decode(const QByteArray& bytes, int wantedCodec);
    // The bytes of a document's text in this format.
    QByteArray encode(const QTextDocument* document) const;
    // The bytes of a text with LF line ends in this format.
    QByteArray encode(const QString& text) const;

    // Reads a whole file; false when it can't be opened.
    static bool readFile(const QString& path, QByteArray* bytes);
    // Writes through a QSaveFile: on any failure the file on disk stays as it was.
    static bool writeFile(const QString& path, const QByteArray& bytes);

private:
    // With mixed line ends: each line's end, and the text as loaded.
    QStringList lineEnds;
    QString loadedText;
};
