#pragma once

#include <QByteArray>
#include <QList>
#include <QStringList>

class QTextCodec;

// Chooses the codec of a text file from its bytes. Content of this engine comes from every part of the
// world and says nothing of its code page, and what a file names (its state files) must be read as its
// author wrote it. A codec counts when reading the bytes with it and writing the text again gives the
// same bytes. A byte order mark decides first; bytes without high bytes keep the wanted codec; then
// UTF-8, whose rules random bytes hardly ever meet; then the East Asian pages, by how much of the text
// they read as common characters of their language, with the wanted codec and uchardet's guess counting
// in their favour (a page that reads most lines cleanly, but not all bytes back, counts less); then the
// Windows pages of one byte, the wanted one first, then uchardet's. uchardet alone goes wrong on short
// text with few high bytes, so its guess is only one voice. Whatever is chosen, the lines of the file
// keep their bytes until edited (QTextFileLines).
class QCharsetDetector
{
public:
    struct Choice
    {
        // Index into the encoding table (QTextEncoding).
        int codec = 0;
        // The bytes begin with the codec's byte order mark.
        bool bom = false;
        // The codec gives every byte back. When not, a multi-byte page that reads every byte cleanly, or
        // when none does, the codec that reads most lines exactly.
        bool exact = true;
    };

    // The codec for file bytes; wantedIndex is the configured one (0: the locale's).
    static Choice choose(const QByteArray& bytes, int wantedIndex);

    // The text of bytes in the codec when reading it and writing the text again gives the bytes back.
    static bool readsExactly(const QByteArray& bytes, QTextCodec* codec, QString* text = nullptr);
    // Whether the codec reads every byte into a character, with none left over or substituted, and
    // writes every character it read; it may write some in another code than they had.
    static bool readsCleanly(const QByteArray& bytes, QTextCodec* codec);
    // For a multi-byte East Asian codec: the share, 0 to 1, of the non-ASCII characters in bytes that
    // fall in the rows of its language's common characters and punctuation. 0 for other codecs.
    static double commonShare(const QByteArray& bytes, const QTextCodec* codec);
    // Every distinct exact reading of bytes, that of firstIndex first, then those of the detection
    // codecs in their order. File names in definitions are the author's bytes; these are the names they
    // may have on a disk.
    static QStringList readings(const QByteArray& bytes, int firstIndex);
};
