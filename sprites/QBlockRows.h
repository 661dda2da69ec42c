#pragma once

#include "QImageInfo.h"
#include "QLZ5Codec.h"

#include <QByteArray>

#include <memory>

class QPNGRowDecoder;

// The pixels of one stored block, decoded only as far as someone has asked: comparing blocks row by
// row can stop at the first row that differs, which for sprites of the same size comes early. RLE8,
// LZ5 and the common PNG files are decoded progressively; other forms are decoded whole at the first
// request. Rows hold the bytes of the raw form without padding, and what a short stream doesn't
// reach is zero, as in the raw form.
class QBlockRows
{
public:
    // block must outlive this object.
    QBlockRows(const QByteArray& block, uint filter, const QImageInfo& info);
    ~QBlockRows();
    QBlockRows(QBlockRows&&) noexcept;
    QBlockRows& operator=(QBlockRows&&) noexcept;

    // Decodes up to row until (not included); answers the rows ready, which is fewer only when the
    // block can't be decoded at all (then 0).
    int advance(int until);
    const uchar* row(int y) const { return bytes + y * stride; }
    qsizetype rowBytes() const { return info.rowBytes(); }
    int height() const { return info.height; }
    // The block can't be decoded into its image: it equals no other block.
    bool isUndecodable() const { return undecodable; }
    // Frees what the decoding holds.
    void release();

private:
    void decodeWhole();
    void finishStream(qsizetype written);

    enum Kind
    {
        Whole,
        RLE8,
        LZ5,
        PNG
    };
    const QByteArray* block;
    uint filter;
    QImageInfo info;
    Kind kind = Whole;
    QByteArray buffer;
    const uchar* bytes = nullptr;
    qsizetype stride = 0;
    int ready = 0;
    bool undecodable = false;
    const uchar* source = nullptr;
    qsizetype written = 0;
    QLZ5Codec::State lz5;
    std::unique_ptr<QPNGRowDecoder> png;
};
