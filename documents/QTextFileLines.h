#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

class QTextBlock;
class QTextCodec;
class QTextDocument;

// A text file as it was read, line by line: the text, the bytes and the line end of each line.
// QTextDocument keeps neither, so writing walks the document's blocks and gives every line that is
// still as it was read its own bytes and line end again, whatever the codec makes of those bytes. A
// file opened and saved without an edit comes back byte for byte; only edited and new lines are
// encoded, and they take the line end that most lines of the file have.
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

    // Characters of one line that the encoding can't hold, or that stand for bytes the file's codec
    // could not read (U+FFFD). Line counts from 1.
    struct Unwritable
    {
        int line = 0;
        QString characters;
    };

    // Takes in a file's bytes in the codec at index; bom: they begin with the codec's byte order mark.
    // The bytes are cut into lines first and each line is decoded alone, so that every line has its
    // bytes whatever the codec makes of them.
    void read(const QByteArray& bytes, int codec, bool bom);
    // Forgets the file; new text then ends its lines with CR LF.
    void clear();

    // The text for the document: the lines joined by LF.
    QString text() const;
    // Ties each block of a document that was just given text() to its line, and takes each block's text
    // as the line's, so that what the document made of a line still counts as unedited.
    void bind(QTextDocument* document);
    // The file bytes of the document in the codec at index, with a byte order mark when asked for and
    // the codec has one. Unedited lines keep their bytes when the codec is the file's. A character of an
    // encoded line that the codec can't hold is written as "?" and reported in unwritable.
    QByteArray write(const QTextDocument* document, int codec, bool bom,
                     QList<Unwritable>* unwritable = nullptr) const;

    // The bytes of a block's line without its end: as read while the line is unchanged and the codec
    // is the file's, else the text encoded in the codec.
    QByteArray lineBytes(const QTextBlock& block, int codec) const;

    int lineCount() const { return int(lines.size()); }
    // The line end of edited and new lines.
    LineEnd lineEnd() const { return usual; }
    bool hadBom() const { return !head.isEmpty(); }

    // Reads a whole file; false when it can't be opened or read.
    static bool readFile(const QString& path, QByteArray* bytes);
    // Writes through a QSaveFile: on any failure the file on disk stays as it was.
    static bool writeFile(const QString& path, const QByteArray& bytes);

    // The characters of a line end.
    static QString endText(LineEnd end);
    // Whether lines can be cut out of the codec's bytes at their CR and LF bytes: line ends and ASCII
    // are single bytes that never occur inside a character.
    static bool isLineSafe(QTextCodec* codec);

private:
    // The bytes between two line ends of the file, with the end that follows them. Decoded, a piece is
    // one line, or several when the text holds characters that a document also takes as line ends.
    struct Piece
    {
        QByteArray bytes;
        QByteArray end;
        int firstLine = 0;
        int lineCount = 1;
        // The piece does not come back from its text: editing one of its lines loses bytes.
        bool lossy = false;
    };

    QByteArray encodeLine(QTextCodec* codec, const QString& text, int number, int line,
                          QList<Unwritable>* unwritable) const;

    QStringList lines;
    // The end of each line as text, for lines that are written encoded.
    QStringList ends;
    QList<int> pieceOf;
    QList<Piece> pieces;
    // The byte order mark as read.
    QByteArray head;
    LineEnd usual = CRLF;
    int sourceCodec = -1;
};
