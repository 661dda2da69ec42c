#pragma once

#include <QByteArray>

struct QImageInfo;

// Decodes a whole PNG block of a sprite file into the raw form of its image record, with one inflate
// (libdeflate) and one pass that unfilters the rows and lays out the pixels. It takes the plain files
// (QPNGChunks) that Qt reads in the record's form: 8-bit palette files as Format_Indexed8, 8-bit RGB
// without a transparent colour as Format_RGB32, 8-bit RGBA as Format_ARGB32, interlaced or not. The
// pixels are those that Qt's reader gives for the same file, so that nothing depends on which of the
// two decoded a block; everything else is left to Qt.
class QPNGDecoder
{
public:
    enum Result
    {
        Decoded,
        Undecodable, // Qt couldn't make the record's image of it either
        LeftToQt     // a file that this decoder doesn't take, or one whose fate Qt decides
    };

    // raw receives bytesPerLine * height bytes, the row padding cleared, when the answer is Decoded.
    static Result decode(const QByteArray& data, const QImageInfo& info, QByteArray* raw);
    // The same into rows of info.rowBytes() bytes, pitch apart, that out has room for; the bytes between
    // the rows are left alone. Anything but Decoded may leave some rows written.
    static Result decode(const QByteArray& data, const QImageInfo& info, uchar* out, qsizetype pitch);

    // Lays out count stored pixels of channels bytes (1, 3 or 4) in Qt's form into the row dst: every
    // step-th pixel from x0 on.
    static void layOut(const uchar* src, uchar* dst, int count, int channels, int x0 = 0, int step = 1);
};
