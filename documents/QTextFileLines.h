#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

class QTextCodec;
class QTextDocument;

// A text file as it was read, line by line: the text, the bytes and the line end of each line.
// QTextDocument keeps neither, so writing walks the document's blocks and gives every line that is
// still as it was read its own bytes and line end again. A file opened and saved without an edit comes
// back byte for byte; an edited or new line takes the line end that most lines of the file have.
class QTextFileLines
{
public:
    enum LineEnd : quint8
    {
        NoEnd,
        LF,
        CRLF,
        CR,
        // U+2029, which a document also takes as the end of a line; only Unicode text holds it.
        ParagraphSeparator
    };

    // Takes in a file: its bytes, their decoded text (without a byte order mark), the index of the codec
    // that decoded them and whether they began with a byte order mark.
    void read(const QByteArray& bytes, const QString& decoded, int codec, bool bom);
    // Forgets the file; new text then ends its lines with CR LF.
    void clear();

    // The text for the document: the lines joined by LF.
    QString text() const;
    // Ties each block of a document that was just given text() to its line.
    void bind(QTextDocument* document) const;
    // The file bytes of the document in the codec at index, with a byte order mark when asked for and
    // the codec has one.
    QByteArray write(const QTextDocument* document, int codec, bool bom) const;

    int lineCount() const { return int(lines.size()); }
    // The line end of edited and new lines.
    LineEnd lineEnd() const { return usual; }
    bool hadBom() const { return bom; }

    // Decodes file bytes: the detected charset, else the wanted codec, else the locale's. When the
    // detected charset would not give the same bytes back but the wanted codec does, the wanted one is
    // taken. codec receives the index of the codec used, bom whether the bytes began with a mark.
    static QString decode(const QByteArray& bytes, int wantedCodec, int* codec, bool* bom);
    // Reads a whole file; false when it can't be opened or read.
    static bool readFile(const QString& path, QByteArray* bytes);
    // Writes through a QSaveFile: on any failure the file on disk stays as it was.
    static bool writeFile(const QString& path, const QByteArray& bytes);

    // The characters of a line end.
    static QString endText(LineEnd end);
    // Whether lines can be cut out of the codec's bytes and encoded one by one: line ends and ASCII are
    // single bytes that never occur inside a character.
    static bool isLineSafe(QTextCodec* codec);

private:
    QStringList lines;
    // The bytes of each line without its end; empty when the bytes could not be cut into the lines.
    QList<QByteArray> raw;
    QList<LineEnd> ends;
    LineEnd usual = CRLF;
    int sourceCodec = -1;
    bool bom = false;
};
