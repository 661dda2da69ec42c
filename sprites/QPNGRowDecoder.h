#pragma once

#include "QImageInfo.h"
#include "QPNGChunks.h"

#include <QByteArray>

#include <memory>

// Decodes the pixels of a PNG file a few rows at a time, straight into the raw form that Qt's reader
// gives for the image record, so that comparing two blocks can stop at the first row that differs.
// It takes the files that QPNGDecoder takes, except interlaced ones; open() refuses the others, and a
// file found broken on the way makes failed() true: both are left to the whole decoders.
class QPNGRowDecoder
{
public:
    QPNGRowDecoder();
    ~QPNGRowDecoder();
    QPNGRowDecoder(const QPNGRowDecoder&) = delete;
    QPNGRowDecoder& operator=(const QPNGRowDecoder&) = delete;

    // Walks the chunks of the file; false for one this decoder does not take. data must outlive the
    // decoder.
    bool open(const QByteArray& data, const QImageInfo& info);
    // Writes rows up to (not including) until into out, rowBytes apart; answers how many rows are done.
    // A row the file can't give makes failed() true and ends the decoding. out has room for every row:
    // a request far enough down has the whole image decoded at once.
    int decode(uchar* out, qsizetype rowBytes, int until);
    bool failed() const { return broken; }

private:
    bool inflateRow();
    bool nextData();
    bool takeByte(uchar* byte);

    struct Stream;
    std::unique_ptr<Stream> stream;
    QPNGChunks chunks;
    const QByteArray* source = nullptr;
    QImageInfo record;
    int nextSpan = 0; // the next IDAT chunk to give the inflater
    int width = 0;
    int height = 0;
    int channels = 0;
    int done = 0;
    bool broken = false;
    QByteArray current;  // the filter byte and the row as stored, then unfiltered
    QByteArray previous; // the row before, unfiltered, with its filter byte
};
