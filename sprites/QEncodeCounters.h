#pragma once

#include <QtGlobal>

// How often each image encoder has run in this process. Saving a sprite file in the form in which its
// blocks are stored must cost no encoding at all, and these counters let that be checked.
struct QEncodeCounters
{
    static quint64 rle8;
    static quint64 lz5;
    static quint64 pcx;
    static quint64 png;

    static quint64 total() { return rle8 + lz5 + pcx + png; }
    static void reset() { rle8 = lz5 = pcx = png = 0; }
};
