#pragma once

#include <QString>

class QAnimation;
class QGifWriter;
class QSprites;

// An action saved as an animated GIF, frame for frame, the way the engine shows it: each frame's
// sprite with its palette, placed by the sprite's axis and the frame's offset and flip on one canvas
// that holds them all, for the frame's time. Indexed sprites keep their exact colour numbers.
//
// Timing follows the engine's 60 ticks per second. A GIF counts hundredths, so each frame ends at its
// action time rounded to a hundredth: the rounding never adds up over a long action. A frame that
// rounds to no time at all is left out (viewers would show it for a tenth of a second), a frame
// without a sprite shows nothing for its time, and a frame of negative time stays for as long as a
// GIF can hold it and ends the file, since the engine never gets past it.
class QActionGif
{
public:
    // Fills gif with the frames of animation. paletteIndex picks a palette of sprites that every
    // indexed sprite is shown with, as the view's palette in use does; -1 keeps each sprite's own.
    // false, with the reason in error, when no frame shows a sprite or the canvas grows too large.
    static bool prepare(const QAnimation& animation, QSprites& sprites, QGifWriter* gif,
                        QString* error = nullptr, int paletteIndex = -1);
    // prepare(), then the file, replaced as a whole or not at all.
    static bool write(const QAnimation& animation, QSprites& sprites, const QString& path,
                      QString* error = nullptr, int paletteIndex = -1);
};
