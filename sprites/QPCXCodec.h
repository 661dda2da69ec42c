#pragma once

#include <QByteArray>
#include <QImage>

class QIODevice;

// PCX, the image form of SFF v1 sprites: a 128-byte header, run-length rows plane by plane and, for
// 8-bit images, the marker byte 12 and 256 colours R, G, B at the end.
class QPCXCodec
{
public:
    struct Header
    {
        int width = 0;
        int height = 0;
        int planes = 0;
        int bytesPerLine = 0;
        int depth = 0; // bits per pixel per plane times planes, kept in eight bits
        QImage::Format format = QImage::Format_Invalid;
    };

    // Reads the header; false when it is not a version 5 PCX of a known depth.
    static bool readHeader(const QByteArray& data, Header& header);
    // Decodes the pixels into rows bytesPerLine apart, each pre-filled as the format needs.
    // Answers whether every row was complete, and sets tableAt to where the colour table starts
    // (or -1 when there is none).
    static bool decodePixels(const QByteArray& data, const Header& header, uchar* bits,
                             qsizetype bytesPerLine, qsizetype& tableAt);
};

QImage decodePCX(const QByteArray& data);
bool encodePCX(QImage image, QIODevice* device);
