#include "QLZ5Codec.h"

#include "QEncodeCounters.h"
#include "QImageInfo.h"
#include "QRawRaster.h"

#include <vector>

namespace {

// Copies length bytes from offset bytes behind o, byte by byte in effect: source and target may
// overlap, and then the copy repeats the last offset bytes. Needs offset >= 1 and room for length.
inline void copyBack(uchar* o, qsizetype offset, qsizetype length, qsizetype room)
{
    const uchar* from = o - offset;
    if (offset >= 16 && length <= 16 && room >= 16) {
        std::memcpy(o, from, 16);
    } else if (offset >= length) {
        std::memcpy(o, from, size_t(length));
    } else if (offset == 1) {
        std::memset(o, *from, size_t(length));
    } else {
        for (qsizetype i = 0; i < length; ++i)
            o[i] = from[i];
    }
}

struct Packet
{
    bool isCopy = false;
    bool isShort = false;
    quint16 value = 0;
    quint16 length = 0;
};

// Finds back-references for the encoder. Candidates are distances of 2 to 1024 whose first two bytes
// match; a chain per two-byte key holds them nearest first, so the search walks them in rising
// distance as the rules demand, without trying distances that cannot match.
class MatchFinder
{
public:
    MatchFinder(const uchar* pixels, qsizetype total)
        : px(pixels), total(total), head(65536, -1), prev(size_t(total), -1), runs(size_t(total))
    {
        // runs[p]: how many bytes from p on equal pixels[p], at most 258. A reference that stays
        // within this run has no change of value and never wins.
        for (qsizetype p = total - 1; p >= 0; --p)
            runs[size_t(p)] =
                (p + 1 < total && px[p + 1] == px[p]) ? std::min(runs[size_t(p + 1)] + 1, 258) : 1;
    }

    bool find(qsizetype p, Packet& match)
    {
        if (p + 1 >= total) return false;
        for (; inserted <= p - 2; ++inserted) {
            const int key = px[inserted] | (px[inserted + 1] << 8);
            prev[size_t(inserted)] = head[size_t(key)];
            head[size_t(key)] = inserted;
        }
        const qsizetype limit = std::min(p, qsizetype(1024));
        const qsizetype span = std::min(total - p, qsizetype(258));
        qsizetype best = 1;
        bool found = false;
        for (qsizetype q = head[size_t(px[p] | (px[p + 1] << 8))]; q >= 0 && p - q <= limit;
             q = prev[size_t(q)]) {
            const qsizetype d = p - q;
            // To win, the walk must pass both the best length and the run at p.
            const qsizetype need = std::max(best, qsizetype(runs[size_t(p)]));
            if (need >= span) break;
            if (px[p + need] != px[p + need - d]) continue;
            qsizetype same = 0;
            qsizetype changes = 0;
            bool longRun = false;
            qsizetype i = 0;
            for (; i < span && px[p + i] == px[p + i - d]; ++i) {
                if (i == 0 || px[p + i] == px[p + i - 1]) {
                    if (++same >= 8) longRun = true;
                } else {
                    ++changes;
                    same = 0;
                }
            }
            const qsizetype len = i;
            if (changes == 0 || len <= best) continue;
            const bool fits = len < 65 && d < 257;
            if (fits) {
                const bool behindDiffers = p + len >= total || px[p + len] != px[p + len - 1];
                if (changes > 1 || behindDiffers) {
                    best = len;
                    match = Packet{true, true, quint16(d), quint16(len)};
                    found = true;
                }
            } else if ((changes == 2 && longRun) || (len >= 4 && changes >= 3)) {
                best = len;
                match = Packet{true, false, quint16(d), quint16(len)};
                found = true;
            }
        }
        return found;
    }

private:
    const uchar* px;
    qsizetype total;
    std::vector<qsizetype> head;
    std::vector<qsizetype> prev;
    std::vector<int> runs;
    qsizetype inserted = 0;
};

std::vector<Packet> makePackets(const uchar* px, qsizetype total)
{
    std::vector<Packet> packets;
    MatchFinder finder(px, total);
    qsizetype p = 0;
    Packet match;
    while (p < total) {
        if (p >= 1 && finder.find(p, match)) {
            packets.push_back(match);
            p += match.length;
            continue;
        }
        const uchar value = px[p++];
        qsizetype length = 1;
        while (p < total && px[p] == value && length < 7) {
            ++p;
            ++length;
        }
        if (length == 7 && finder.find(p, match)) {
            packets.push_back(Packet{false, true, value, 7});
            packets.push_back(match);
            p += match.length;
            continue;
        }
        while (p < total && px[p] == value && length < 263) {
            ++p;
            ++length;
        }
        packets.push_back(Packet{false, length < 8, value, quint16(length)});
    }
    return packets;
}

} // namespace

qsizetype QLZ5Codec::decode(const uchar* src, qsizetype size, uchar* out, qsizetype total)
{
    State state;
    state.src = src;
    state.end = src + size;
    decode(state, out, total, total);
    return state.written;
}

void QLZ5Codec::decode(State& state, uchar* out, qsizetype until, qsizetype total)
{
    const uchar* s = state.src;
    const uchar* const end = state.end;
    uchar* o = out + state.written;
    uchar* const stop = out + std::min(until, total);
    uchar* const oend = out + total;
    uint control = state.control;
    int bitsLeft = state.bitsLeft;
    uint recycled = state.recycled;
    int recycledCount = state.recycledCount;
    bool finished = true;
    while (o < oend) {
        if (o >= stop) {
            finished = false;
            break;
        }
        if (bitsLeft == 0) {
            if (s == end) break;
            control = *s++;
            bitsLeft = 8;
        }
        if (s == end) break;
        const uchar b = *s++;
        const bool isCopy = control & 1;
        control >>= 1;
        --bitsLeft;
        const qsizetype room = oend - o;
        if (!isCopy) {
            const uchar colour = b & 0x1F;
            qsizetype run = b >> 5;
            if (run != 0 && room >= 8) {
                // A short run: eight fixed bytes, the surplus is overwritten or cleared later.
                std::memset(o, colour, 8);
                o += run;
                continue;
            }
            if (run == 0) {
                if (s == end) break;
                run = qsizetype(*s++) + 8;
            }
            run = std::min(run, room);
            std::memset(o, colour, size_t(run));
            o += run;
            continue;
        }
        const uint high = b >> 6;
        qsizetype length = b & 0x3F;
        qsizetype offset;
        if (length != 0) {
            ++length;
            if (recycledCount == 3) {
                offset = qsizetype(high | recycled) + 1;
                recycled = 0;
                recycledCount = 0;
            } else {
                recycled |= high << ((3 - recycledCount) * 2);
                ++recycledCount;
                if (s == end) break;
                offset = qsizetype(*s++) + 1;
            }
        } else {
            if (end - s < 2) break;
            offset = qsizetype((high << 8) | s[0]) + 1;
            length = qsizetype(s[1]) + 3;
            s += 2;
        }
        if (offset > o - out) break;
        length = std::min(length, room);
        copyBack(o, offset, length, room);
        o += length;
    }
    state.src = s;
    state.written = o - out;
    state.control = control;
    state.bitsLeft = bitsLeft;
    state.recycled = recycled;
    state.recycledCount = recycledCount;
    state.finished = finished;
}

QByteArray QLZ5Codec::encode(const uchar* pixels, qsizetype total)
{
    std::vector<Packet> packets = makePackets(pixels, total);
    const size_t count = packets.size();
    QByteArray result(qsizetype(count * 3 + count / 8 + 1), Qt::Uninitialized);
    uchar* const start = reinterpret_cast<uchar*>(result.data());
    uchar* o = start;
    int inControl = 0;
    int shortCopies = 0;
    for (size_t i = 0; i < count; ++i) {
        if (inControl == 0) {
            uchar control = 0;
            for (size_t j = 0; j < 8 && i + j < count; ++j)
                if (packets[i + j].isCopy) control |= uchar(1u << j);
            *o++ = control;
        }
        Packet& packet = packets[i];
        if (!packet.isCopy) {
            if (packet.isShort) {
                *o++ = uchar((packet.value & 0x1F) | (packet.length << 5));
            } else {
                *o++ = uchar(packet.value & 0x1F);
                *o++ = uchar(packet.length - 8);
            }
        } else if (!packet.isShort) {
            const uint d = packet.value - 1u;
            *o++ = uchar((d >> 8) << 6);
            *o++ = uchar(d & 0xFF);
            *o++ = uchar(packet.length - 3);
        } else {
            if (++shortCopies == 1) {
                // Open a group of four: the fourth's distance goes into the top bits of the four
                // length bytes and its own distance byte is left out.
                packet.length -= 1;
                packet.value -= 1;
                size_t group[3];
                int found = 0;
                for (size_t j = i + 1; j < count && found < 3; ++j) {
                    Packet& next = packets[j];
                    if (next.isCopy && next.isShort) {
                        next.length -= 1;
                        next.value -= 1;
                        group[found++] = j;
                    }
                }
                if (found == 3) {
                    const uint d = packets[group[2]].value;
                    packet.length |= d & 0xC0;
                    packets[group[0]].length |= (d & 0x30) << 2;
                    packets[group[1]].length |= (d & 0x0C) << 4;
                    packets[group[2]].length |= (d & 0x03) << 6;
                }
            }
            *o++ = uchar(packet.length);
            if (shortCopies < 4)
                *o++ = uchar(packet.value);
            else
                shortCopies = 0;
        }
        inControl = (inControl + 1) % 8;
    }
    result.truncate(o - start);
    return result;
}

QImage decodeLZ5(int width, int height, const QByteArray& data)
{
    QImage image(width, height, QImage::Format_Indexed8);
    if (image.isNull()) return QImage();
    const QRawRaster raster{image.bits(), width, height, image.bytesPerLine()};
    const uchar* src = reinterpret_cast<const uchar*>(data.constData());
    raster.decodeStream(
        [&](uchar* out, qsizetype total) { return QLZ5Codec::decode(src, data.size(), out, total); });
    return image;
}

QByteArray encodeLZ5(const QImage& image)
{
    ++QEncodeCounters::lz5;
    if (image.isNull() || image.depth() != 8) return QByteArray();
    const QByteArray packed = QImageInfo::unpadded(image);
    return QLZ5Codec::encode(reinterpret_cast<const uchar*>(packed.constData()), packed.size());
}
