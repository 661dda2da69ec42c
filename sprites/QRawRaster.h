#pragma once

#include <QtGlobal>

#include <algorithm>
#include <cstring>
#include <memory>

// The target of a pixel decoder: height rows of rowBytes meaningful bytes, bytesPerLine apart. It is
// either the bits of a QImage or a QByteArray in raw form.
struct QRawRaster
{
    uchar* bits = nullptr;
    qsizetype rowBytes = 0;
    qsizetype height = 0;
    qsizetype bytesPerLine = 0;

    qsizetype total() const { return rowBytes * height; }

    // Runs a decoder that writes a stream of total() bytes without row padding and returns how many
    // it wrote. It writes straight into the rows when they have no padding, else into a scratch buffer
    // copied row by row. Whatever the decoder did not reach, and all padding, ends up zero, so that
    // equal images always have equal raw bytes.
    template <typename Decode>
    qsizetype decodeStream(Decode decode) const
    {
        const qsizetype count = total();
        if (count <= 0) return 0;
        if (rowBytes == bytesPerLine) {
            const qsizetype written = decode(bits, count);
            std::memset(bits + written, 0, size_t(count - written));
            return written;
        }
        std::unique_ptr<uchar[]> scratch(new uchar[size_t(count)]);
        const qsizetype written = decode(scratch.get(), count);
        std::memset(scratch.get() + written, 0, size_t(count - written));
        for (qsizetype y = 0; y < height; ++y) {
            uchar* row = bits + y * bytesPerLine;
            std::memcpy(row, scratch.get() + y * rowBytes, size_t(rowBytes));
            std::memset(row + rowBytes, 0, size_t(bytesPerLine - rowBytes));
        }
        return written;
    }
};
