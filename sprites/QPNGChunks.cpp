#include "QPNGChunks.h"

#include <QtEndian>

#include <cstring>

#include <libdeflate.h>

namespace {

constexpr uchar Signature[8] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
// libpng's default limit for both sides of an image.
constexpr quint32 MaxSide = 1000000;

inline quint32 be32(const uchar* p)
{
    return qFromBigEndian<quint32>(p);
}

inline bool isType(const uchar* type, const char* name)
{
    return std::memcmp(type, name, 4) == 0;
}

bool validName(const uchar* type)
{
    for (int i = 0; i < 4; ++i) {
        const uchar c = type[i] | 0x20;
        if (c < 'a' || c > 'z') return false;
    }
    return true;
}

// The pairs of colour type and bit depth that PNG defines.
bool validDepth(uchar colourType, uchar depth)
{
    switch (colourType) {
    case QPNGChunks::Grey:
        return depth == 1 || depth == 2 || depth == 4 || depth == 8 || depth == 16;
    case QPNGChunks::Palette:
        return depth == 1 || depth == 2 || depth == 4 || depth == 8;
    case QPNGChunks::RGB:
    case QPNGChunks::GreyAlpha:
    case QPNGChunks::RGBA:
        return depth == 8 || depth == 16;
    default:
        return false;
    }
}

} // namespace

bool QPNGChunks::read(const QByteArray& data)
{
    *this = QPNGChunks();
    const auto* p = reinterpret_cast<const uchar*>(data.constData());
    const uchar* const end = p + data.size();
    if (data.size() < 8 || std::memcmp(p, Signature, 8) != 0) return false;
    p += 8;
    enum Stage
    {
        Header,
        BeforePixels,
        InPixels,
        AfterPixels
    } stage = Header;
    while (end - p >= 8) {
        const quint32 length = be32(p);
        const uchar* type = p + 4;
        const uchar* body = p + 8;
        if (length > 0x7FFFFFFFu || !validName(type) || qsizetype(length) > end - body) return false;
        const bool last = isType(type, "IEND");
        const bool hasCrc = end - body - qsizetype(length) >= 4;
        if (!hasCrc && !last) return false;
        const bool critical = !(type[0] & 0x20);
        const bool transparencyChunk = isType(type, "tRNS");
        // A critical chunk with a wrong CRC stops libpng; an ancillary one is dropped with a warning,
        // which matters only for tRNS.
        if (hasCrc && (critical || transparencyChunk) &&
            libdeflate_crc32(0, type, size_t(length) + 4) != be32(body + length))
            return false;
        if (stage == Header) {
            if (!isType(type, "IHDR") || length != 13) return false;
            width = be32(body);
            height = be32(body + 4);
            bitDepth = body[8];
            colourType = body[9];
            if (width == 0 || height == 0 || width > MaxSide || height > MaxSide ||
                !validDepth(colourType, bitDepth) || body[10] != 0 || body[11] != 0 || body[12] > 1)
                return false;
            interlaced = body[12] == 1;
            stage = BeforePixels;
        } else if (isType(type, "IDAT")) {
            if (stage == BeforePixels) {
                if (colourType == Palette && paletteSize == 0) return false;
                stage = InPixels;
            } else if (stage != InPixels) {
                return false;
            }
            pixels.append({body, qsizetype(length)});
            streamSize += length;
        } else {
            if (stage == InPixels) stage = AfterPixels;
            if (last) return stage == AfterPixels && length == 0;
            if (isType(type, "PLTE")) {
                // Qt reads a palette only for palette files; the suggested palette of a true-colour
                // file is left to it.
                if (stage != BeforePixels || colourType != Palette || paletteSize != 0 || length == 0 ||
                    length % 3 != 0 || length / 3 > (1u << bitDepth))
                    return false;
                paletteSize = int(length / 3);
            } else if (transparencyChunk) {
                if (stage == BeforePixels) {
                    if (colourType == Palette && paletteSize == 0) return false;
                    transparency = true;
                }
            } else if (critical) {
                return false;
            }
        }
        p = body + length + 4;
    }
    return false;
}

QImage::Format QPNGChunks::qtFormat() const
{
    if (bitDepth != 8) return QImage::Format_Invalid;
    switch (colourType) {
    case Palette:
        return QImage::Format_Indexed8;
    case RGB:
        return transparency ? QImage::Format_Invalid : QImage::Format_RGB32;
    case RGBA:
        return QImage::Format_ARGB32;
    default:
        return QImage::Format_Invalid;
    }
}

int QPNGChunks::channels() const
{
    switch (colourType) {
    case RGB:
        return 3;
    case GreyAlpha:
        return 2;
    case RGBA:
        return 4;
    default:
        return 1;
    }
}

const uchar* QPNGChunks::stream(QByteArray& room) const
{
    if (pixels.size() == 1) return pixels.first().data;
    if (room.size() < streamSize) room = QByteArray(streamSize, Qt::Uninitialized);
    auto* out = reinterpret_cast<uchar*>(room.data());
    for (const Span& span : pixels) {
        std::memcpy(out, span.data, size_t(span.size));
        out += span.size;
    }
    return reinterpret_cast<const uchar*>(room.constData());
}
