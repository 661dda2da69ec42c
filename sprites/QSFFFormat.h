#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

// Constants of the M.U.G.E.N. sprite file and what a reader remembers of how a file stored its items.
namespace QSFF {

// The version word as the file stores it (bytes: low minor, minor, middle, major).
constexpr quint32 Version101 = 0x01000100;
constexpr quint32 Version200 = 0x02000000;
constexpr quint32 Version201 = 0x02000100;

constexpr int MagicSize = 12;
constexpr int HeaderSize = 512;
constexpr int V1SpriteHeaderSize = 32;
constexpr int V1TableBytes = 768;
constexpr int PaletteNodeSize = 16;
constexpr int SpriteNodeSize = 28;
constexpr int V1CommentOffset = 36;
constexpr int V2CommentOffset = 76;
constexpr int HeaderTextSize = 76;

// Sprite formats of version 2 files; PcxFormat stands for the PCX block of a version 1.01 sprite.
enum Format : quint8
{
    RawFormat = 0,
    NoDataFormat = 1,
    RLE8Format = 2,
    RLE5Format = 3,
    LZ5Format = 4,
    PNG8Format = 10,
    PNG24Format = 11,
    PNG32Format = 12,
    PcxFormat = 255
};

// "ElecbyteSpr" and a zero byte.
QByteArray magic();
// The text every written file carries in its header: 76 bytes, zero padded.
QByteArray headerText();
// "1.01", "2.00", "2.01", or the four bytes from high to low for another value.
QString versionText(quint32 version);
// The version that versionText() writes as text: 1.01, 2.00 or 2.01; 0 for any other text.
quint32 parseVersion(const QString& text);
// "raw", "none", "rle8", "rle5", "lz5", "png8", "png24", "png32", "pcx", or the number.
QString formatName(int format);
// The QImage format of a colour depth: 5 and 8 indexed, 24 RGB32, 32 ARGB32, else invalid.
int imageFormatOfDepth(int depth);

} // namespace QSFF

// How one sprite was stored in the file last read.
struct QSFFStoredSprite
{
    quint8 format = QSFF::NoDataFormat;
    quint8 depth = 0;
    // The palette number the file gave (version 2), or -1.
    qint32 palette = -1;
    // The sprite whose image the file said to use, or -1 for a sprite with data of its own.
    qint32 link = -1;
    quint16 flags = 0;
    // Version 1.01: the sprite took the palette of the sprite before it.
    bool samePalette = false;
    quint32 length = 0;
};

// How one palette was stored in the file last read (version 2).
struct QSFFStoredPalette
{
    qint32 link = -1;
    quint32 length = 0;
};

// What the reader remembers of the file: for tools that show how a file is made. It describes the
// file as it was read, not the model after later changes.
struct QSFFLayout
{
    quint32 version = 0;
    QList<QSFFStoredSprite> sprites;
    QList<QSFFStoredPalette> palettes;
};
