#pragma once

#include "QGifFrame.h"

#include <QByteArray>
#include <QList>
#include <QRgb>
#include <QString>

// A GIF89a encoder that writes the indices of the frames as they are: nothing is quantized or
// reordered, so a sprite keeps its exact colour numbers in the file. Every frame is disposed to the
// background before the next one and shows index 0 as transparent.
class QGifWriter
{
public:
    QList<QGifFrame> frames;
    // The global colour table; empty when every frame brings its own.
    QList<QRgb> palette;
    // The canvas.
    ushort width = 0;
    ushort height = 0;
    // How often a viewer plays the animation over again; 0 for ever.
    ushort loopCount = 0;

    // Whether the frames can be written: each one indexed, inside the canvas and with a colour table.
    // error receives the reason when they can't.
    bool isValid(QString* error = nullptr) const;
    // The whole file; empty when the frames aren't valid.
    QByteArray data();
    // Writes the file in one go, so that a failure leaves no half-written file behind.
    bool save(const QString& path, QString* error = nullptr);

private:
    void writeFrame(QByteArray& out, const QGifFrame& frame);
    void compress(QByteArray& out, const QImage& image, int minimumCodeSize);
    void resetCodes();
    void output(int code);
    void flushBlock();

    // The exponent of the global table's size, 0 without one.
    int globalBits = 0;

    // LZW state of the frame being compressed.
    QByteArray* stream = nullptr;
    int bits = 0;
    int maxCode = 0;
    int initBits = 0;
    int accumulator = 0;
    int accumulatedBits = 0;
    short prefix = 0;
    bool first = true;
    ushort clearCode = 0;
    ushort endCode = 0;
    ushort freeCode = 0;
    static constexpr int HashSize = 5003;
    ushort codes[HashSize] = {};
    uint keys[HashSize] = {};
    // A data sub-block: the length byte, then up to 255 bytes.
    uchar block[256] = {};
    int blockLength = 0;
};
