#pragma once

#include <QtGlobal>

// Whole-buffer zlib inflating through libdeflate, several times quicker than zlib's streaming
// inflate for the small blocks of sprite files. One decompressor per thread is kept for the life of
// the thread, so that a file of thousands of sprites doesn't allocate one per sprite.
class QInflater
{
public:
    enum Result
    {
        Inflated, // exactly the output's size, the stream's end and its checksum seen
        Short,    // the stream ended early
        TooLong,  // the stream holds more than the output's size
        Broken    // a bad header, a bad code, a wrong checksum or input that ends early
    };

    // Inflates the zlib stream in[0..inSize) into out[0..outSize). consumed, when given, receives the
    // input bytes that the stream took, checksum included; the rest is trailing data.
    static Result zlib(const uchar* in, qsizetype inSize, uchar* out, qsizetype outSize,
                       qsizetype* consumed = nullptr);
};
