#pragma once

#include <QtGlobal>

// Undoes the per-row filters of PNG (None, Sub, Up, Average, Paeth). The loops are specialised by
// bytes per pixel: 4 bytes go through one 32-bit word at a time and Paeth through SSE2 where the
// target has it, since the filtered rows of true-colour sprites are mostly Up and Paeth.
class QPNGUnfilter
{
public:
    enum Type : uchar
    {
        None = 0,
        Sub = 1,
        Up = 2,
        Average = 3,
        Paeth = 4
    };

    // Unfilters size bytes of row in place; prior is the row above, already unfiltered, or null for
    // the first row of an image or pass. False for a filter type that PNG doesn't define.
    static bool row(uchar type, uchar* row, const uchar* prior, qsizetype size, int bytesPerPixel);
};
