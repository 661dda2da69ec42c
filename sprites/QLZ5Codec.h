#pragma once

#include <QByteArray>
#include <QImage>

// LZ5, SFF v2 format 4: 32-colour runs and back-references of an indexed image, packed by a control
// byte per eight packets. Short copies come in groups of four where the fourth keeps no distance byte:
// its distance is spread over the top two bits of the four length bytes.
class QLZ5Codec
{
public:
    // Decodes into a stream of at most total bytes and answers how many were written. A packet that
    // refers to bytes before the start of the output ends the stream.
    static qsizetype decode(const uchar* src, qsizetype size, uchar* out, qsizetype total);

    // Where a decoding that stopped early stands, so that it can go on later.
    struct State
    {
        const uchar* src = nullptr;
        const uchar* end = nullptr;
        qsizetype written = 0;
        uint control = 0;
        int bitsLeft = 0;
        uint recycled = 0;
        int recycledCount = 0;
        // The stream ended, or a packet was invalid: nothing more comes.
        bool finished = false;
    };
    // Goes on decoding into out (total bytes in all) until at least until bytes are written or the
    // stream ends. A packet is never cut, so more than until may come; bytes past state.written may
    // hold scratch until the next call.
    static void decode(State& state, uchar* out, qsizetype until, qsizetype total);
    // Encodes a stream of pixels without row padding; only the low five bits of a colour survive.
    static QByteArray encode(const uchar* pixels, qsizetype total);
};

QImage decodeLZ5(int width, int height, const QByteArray& data);
QByteArray encodeLZ5(const QImage& image);
