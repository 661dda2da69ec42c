#pragma once

#include <QByteArray>
#include <QImage>

// RLE5, SFF v2 format 3, which no writer produces. A packet is a run byte, a length byte, the colour
// byte of the run if bit 7 of the length byte is set (else colour 0), then len & 0x1F bytes that each
// hold a colour in bits 0-4 and a count less one in bits 5-7.
class QRLE5Codec
{
public:
    // Decodes into a stream of at most total bytes and answers how many were written.
    static qsizetype decode(const uchar* src, qsizetype size, uchar* out, qsizetype total);
};

QImage decodeRLE5(int width, int height, const QByteArray& data);
