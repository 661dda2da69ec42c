#pragma once

#include <QtGlobal>

// Undoes the per-row filters of PNG (None, Sub, Up, Average, Paeth). Rows of 4-byte pixels, the
// true-colour sprites, go a pixel at a time through SSE2 (SSE4.1 for Paeth where the processor has
// it), since each pixel depends on the one before; other sizes go byte by byte.
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

    // Keeps to the instructions that every processor of the target has, so that the tests cover those
    // paths on any machine.
    static void setBaselineOnly(bool only);
};
