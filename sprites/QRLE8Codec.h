#pragma once

#include <QByteArray>
#include <QImage>

// RLE8, the run-length form of SFF v2 format 2. A byte b with (b & 0xC0) == 0x40 starts a run of
// b & 0x3F copies of the next byte; any other byte stands for itself. Runs cross row ends.
class QRLE8Codec
{
public:
    // Decodes into a stream of at most total bytes and answers how many were written. Never reads or
    // writes outside the two buffers.
    static qsizetype decode(const uchar* src, qsizetype size, uchar* out, qsizetype total);
    // Goes on from src (moved on) and written until at least until of total bytes are written or the
    // stream ends; answers the new count. A run is never cut, so more than until may come; bytes past
    // the count may hold scratch until the next call.
    static qsizetype decode(const uchar*& src, const uchar* end, uchar* out, qsizetype written,
                            qsizetype until, qsizetype total);
    // Encodes a stream of bytes without row padding.
    static QByteArray encode(const uchar* pixels, qsizetype total);
};

QImage decodeRLE8(int width, int height, QImage::Format format, const QByteArray& data);
QByteArray encodeRLE8(const QImage& image);
