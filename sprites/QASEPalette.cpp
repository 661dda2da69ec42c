#include "QASEPalette.h"

#include <QColor>
#include <QIODevice>
#include <QtEndian>

#include <array>
#include <cmath>
#include <cstring>

namespace {

// Big-endian fields from a device; every read that runs past the end sets ok to false.
class BigEndianReader
{
public:
    explicit BigEndianReader(QIODevice* device) : device(device) {}

    bool ok = true;

    quint16 u16() { return qFromBigEndian<quint16>(take<2>().data()); }
    quint32 u32() { return qFromBigEndian<quint32>(take<4>().data()); }
    float f32()
    {
        const quint32 bits = u32();
        float value;
        std::memcpy(&value, &bits, sizeof value);
        return value;
    }
    QByteArray bytes(int count)
    {
        const QByteArray result = device->read(count);
        if (result.size() != count) ok = false;
        return result;
    }
    void skip(qint64 count)
    {
        if (count > 0 && device->skip(count) != count) ok = false;
    }

private:
    template <int N>
    std::array<uchar, N> take()
    {
        std::array<uchar, N> result{};
        if (device->read(reinterpret_cast<char*>(result.data()), N) != N) ok = false;
        return result;
    }

    QIODevice* device;
};

// A float channel of 0.0 to 1.0 as a byte; anything outside, NaN included, is held to the range.
int channel(float value)
{
    const double scaled = double(value) * 255.0;
    if (!(scaled > 0.0)) return 0;
    if (scaled >= 255.0) return 255;
    return int(std::lround(scaled));
}

} // namespace

bool QASEPalette::read(QIODevice* device, QRGBPal* target)
{
    BigEndianReader in(device);
    if (in.bytes(4) != "ASEF") return fail(QStringLiteral("not an ASE palette: no \"ASEF\" signature"));
    const quint16 major = in.u16();
    const quint16 minor = in.u16();
    if (!in.ok || major != 1 || minor != 0) return fail(QStringLiteral("not an ASE palette of version 1.0"));
    quint32 blocks = in.u32();
    int entry = 0;
    while (in.ok && blocks > 0 && entry < QRGBPal::TableSize) {
        --blocks;
        const quint16 type = in.u16();
        const quint32 length = in.u32();
        if (!in.ok) break;
        if (type == 0x0001) {
            in.skip(2 * qint64(in.u16()));
            const QByteArray model = in.bytes(4);
            if (!in.ok) break;
            bool taken = true;
            QRGBPal colour;
            if (model == "RGB ") {
                const int r = channel(in.f32()), g = channel(in.f32()), b = channel(in.f32());
                colour = QRGBPal(uchar(r), uchar(g), uchar(b));
            } else if (model == "CMYK") {
                const int c = channel(in.f32()), m = channel(in.f32()), y = channel(in.f32());
                const int k = channel(in.f32());
                colour = QRGBPal::fromColor(QColor::fromCmyk(c, m, y, k).toRgb());
            } else if (model == "Gray") {
                const int grey = channel(in.f32());
                colour = QRGBPal(uchar(grey), uchar(grey), uchar(grey));
            } else {
                in.skip(12);
                taken = false;
            }
            in.skip(2);
            if (!in.ok) break;
            if (taken) target[entry++] = colour;
        } else if (type == 0xC001 || type == 0xC002) {
            // A group start holds its name; a group end usually holds nothing at all.
            if (length >= 2) in.skip(2 * qint64(in.u16()));
        } else {
            in.skip(length);
        }
    }
    if (!in.ok) return fail(QStringLiteral("a block of the swatches is truncated"));
    return succeed();
}
