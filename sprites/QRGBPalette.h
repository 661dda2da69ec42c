#pragma once

#include "QRGBPal.h"

#include <QColor>
#include <QObject>
#include <QString>

// The signal-bearing object over a table of 256 colours that it doesn't own. Every change emits
// changing() first and changed() last, so that views and undo can follow. A mask, where an operation
// takes one, is 256 bytes, or null for all colours: only colours with a non-zero mask byte change.
// With no table set, changes do nothing and queries answer 0 or black.
class QRGBPalette : public QObject
{
    Q_OBJECT

public:
    // Kinds of transform(), numbered for the menus of the palette editor.
    enum Transform
    {
        SwapRedBlue = 1,
        SwapGreenBlue,
        SwapRedGreen,
        SwapBlueGreen,
        SwapGreenRed,
        SwapBlueRed,
        Lighter,
        Darker,
        Monochrome,
        Fire,
        Sapphire,
        Stone,
        MuchLighter,
        MuchDarker
    };

    explicit QRGBPalette(QRGBPal* table = nullptr, QObject* parent = nullptr);

    QRGBPal* table() const { return colorTable; }
    void setTable(QRGBPal* table) { colorTable = table; }

    void setColors(const QRGBPal* source);
    void colors(QRGBPal* target) const;
    void setColor(uchar index, const QRGBPal& colour);
    void setColor(const uchar* mask, const QRGBPal& colour);
    void setColor(uchar index, const QColor& colour);
    void setColor(const uchar* mask, const QColor& colour);
    QRGBPal color(uchar index) const;
    QColor qcolor(uchar index) const;

    // The entry closest to a colour in red, green and blue; of equal distance, the one whose alpha is
    // closest above it (the difference is taken as a byte), then the earliest.
    uchar nearest(const QRGBPal& colour) const;
    // The last index whose colour differs from colour 255, searching from 254 down; 0 if none does.
    uchar lastUsed() const;

    // A linear ramp from a at one position to b at the other.
    void gradient(uchar from, QRGBPal a, uchar to, QRGBPal b);
    // The same over the masked positions in order: the first takes a and the last b.
    void gradient(const uchar* mask, QRGBPal a, QRGBPal b);
    // For each colour from 1 to 255 the nearest equal colour below it (down to 1) is overwritten with
    // the given colour at alpha 255; the higher of such a pair stays. Colour 0 takes no part.
    void replaceDuplicates(const QRGBPal& colour);
    // Reverses the masked colours; with keepAlpha the transparent entry keeps its alpha in place.
    void reverse(const uchar* mask, bool keepAlpha);
    // One of the fourteen colour effects of Transform; other kinds do nothing.
    void transform(int kind, const uchar* mask);
    // Turns the hue (wrapping at 360) and the HSL saturation (held to 0..255); alpha stays.
    void adjust(const uchar* mask, int hue, int saturation);
    // Adds to each channel, held to 0..255; alpha stays.
    void shift(const uchar* mask, int red, int green, int blue);

    // Reads a palette file (ACT, RIFF or Jasc PAL, ACO, ASE, Painter swatches, or the table of a PNG,
    // PCX or BMP image). False when the file can't be opened or an image isn't indexed; a file whose
    // content the reader refuses still answers true with a partly filled table, and problem (if given)
    // tells why. Colour 0 always ends at alpha 0.
    bool fromFile(const QString& path, QString* problem = nullptr);
    // Writes the table as an ACT file, whatever the suffix. The file is replaced only when the whole of
    // it could be written: a failed save leaves the previous file as it was.
    bool toFile(const QString& path) const;

    // File dialog filters for opening and for saving palettes.
    static QString openFilter();
    static QString saveFilter();

Q_SIGNALS:
    void changing();
    void changed();

private:
    template <typename Change>
    void changeMasked(const uchar* mask, Change change);

    QRGBPal* colorTable;
};
