#pragma once

#include <QByteArray>

#include <memory>

struct QImageInfo;

// Decodes the pixels of a PNG file a few rows at a time, straight into the raw form that Qt's reader
// gives for the image record: an 8-bit palette file as Format_Indexed8 (the indices), an 8-bit RGB file
// without a transparent colour as Format_RGB32, an 8-bit RGBA file as Format_ARGB32. Other files
// (interlaced, other depths, grey, a transparent colour, a size or form other than the record's) are
// refused by open(), and so is a file the decoder finds broken on the way: those are left to Qt.
class QPNGRowDecoder
{
public:
    QPNGRowDecoder();
    ~QPNGRowDecoder();
    QPNGRowDecoder(const QPNGRowDecoder&) = delete;
    QPNGRowDecoder& operator=(const QPNGRowDecoder&) = delete;

    // Reads the chunks before the pixels. data must outlive the decoder.
    bool open(const QByteArray& data, const QImageInfo& info);
    // Writes rows up to (not including) until into out, rowBytes apart; answers how many rows are done.
    // A row the file can't give makes failed() true and ends the decoding.
    int decode(uchar* out, qsizetype rowBytes, int until);
    bool failed() const { return broken; }

private:
    bool nextData();
    bool unfilter();

    struct Stream;
    std::unique_ptr<Stream> stream;
    const uchar* chunk = nullptr; // the next chunk to look at
    const uchar* end = nullptr;
    int width = 0;
    int height = 0;
    int channels = 0;
    int done = 0;
    bool broken = false;
    QByteArray current;  // the filter byte and the row as stored
    QByteArray previous; // the row before, unfiltered
};
