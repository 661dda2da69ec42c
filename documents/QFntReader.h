#pragma once

#include <QImage>
#include <QList>
#include <QMap>
#include <QPoint>
#include <QSize>
#include <QString>

class QIODevice;

// One line of the "[Map]" section of an old font: the character's code, its place in map order, and
// for a variable font the x position and width of its cell in the image.
struct QFntGlyph
{
    int code = 0;
    int order = 0;
    int x = 0;
    int width = 0;
};

// What an old single-file font holds: the "[Def]" values, the map by character, and the 8-bit image
// whose columns are the glyphs.
struct QFntFont
{
    bool fixed = false;
    int colors = 256;
    QSize size{-1, -1};
    QPoint spacing;
    QPoint offset;
    // By character code; when a character is mapped twice, its first line counts.
    QMap<int, QFntGlyph> map;
    // Lines of the map in their order, repeats included: a fixed font's cells follow it.
    int mapLines = 0;
    QImage image;

    // The part of the image that a glyph takes, cut to the image: for a variable font its column of
    // the image's height; for a fixed font the cell of the font's size at its place in map order,
    // cells running left to right, a cell cut by the image's edge included, and then on to the next
    // row of cells.
    QRect cell(const QFntGlyph& glyph) const;
};

// Reads the old font file ("ElecbyteFnt"): a 64-byte header, an 8-bit PCX image and a text with the
// sections "[Def]" and "[Map]", each found through the header's offsets and sizes.
//
// Nothing is trusted: offsets and sizes are checked against the device's size before anything is read
// or allocated, and the image is decoded only when its header's pixel count could come from its bytes.
class QFntReader
{
public:
    static constexpr int HeaderSize = 64;

    // Reads a whole font. False for a wrong magic, a part that lies beyond the end of the data, or an
    // image that isn't an 8-bit PCX.
    static bool read(QIODevice* device, QFntFont& font);
    // Reads the text part into font's values and map.
    static void readText(const QString& text, QFntFont& font);
};
