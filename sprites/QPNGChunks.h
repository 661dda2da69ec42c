#pragma once

#include <QByteArray>
#include <QImage>
#include <QVarLengthArray>

// The chunks of a PNG file, walked with the rules by which Qt's reader (libpng) accepts or refuses a
// file: the signature, IHDR first, every critical chunk whole and with its right CRC, PLTE before the
// pixels, the pixels in one run of IDAT chunks, IEND at the end (its CRC may be missing, which Qt
// forgives). A file that breaks none of them is "plain": its pixels are exactly what Qt would read,
// so our own decoders may read them; any other file is left to Qt, which then decides.
class QPNGChunks
{
public:
    enum ColourType : uchar
    {
        Grey = 0,
        RGB = 2,
        Palette = 3,
        GreyAlpha = 4,
        RGBA = 6
    };

    struct Span
    {
        const uchar* data;
        qsizetype size;
    };

    // Walks the chunks of data, which must outlive this object. False unless the file is plain.
    bool read(const QByteArray& data);

    // The form in which Qt reads the file when it is one our decoders know: an 8-bit palette file as
    // Format_Indexed8, an 8-bit RGB file without a transparent colour as Format_RGB32, an 8-bit RGBA
    // file as Format_ARGB32; Format_Invalid for any other.
    QImage::Format qtFormat() const;
    // Bytes per pixel of the stored rows, for the 8-bit forms of qtFormat().
    int channels() const;

    // The zlib stream of the pixels, streamSize bytes: in the file itself when it is in one IDAT chunk,
    // else joined in room, which grows as needed.
    const uchar* stream(QByteArray& room) const;

    quint32 width = 0;
    quint32 height = 0;
    uchar bitDepth = 0;
    uchar colourType = 0;
    bool interlaced = false;
    int paletteSize = 0;       // entries of PLTE, 0 without one
    bool transparency = false; // a tRNS chunk before the pixels
    QVarLengthArray<Span, 4> pixels;
    qsizetype streamSize = 0;
};
