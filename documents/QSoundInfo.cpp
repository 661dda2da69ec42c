#include "QSoundInfo.h"

namespace {

// Little-endian numbers over a byte array. Like a data stream, a read that runs past the end gives 0
// and so does every read after it.
class LittleEndian
{
public:
    explicit LittleEndian(const QByteArray& bytes) : bytes(bytes) {}

    void seek(qsizetype to) { pos = to; }
    void skip(qsizetype count) { pos += count; }

    quint32 read(int size)
    {
        if (failed || pos < 0 || pos + size > bytes.size()) {
            failed = true;
            return 0;
        }
        quint32 value = 0;
        for (int i = size - 1; i >= 0; --i)
            value = (value << 8) | quint8(bytes.at(pos + i));
        pos += size;
        return value;
    }

private:
    const QByteArray& bytes;
    qsizetype pos = 0;
    bool failed = false;
};

constexpr quint32 PcmFormat = 1;

} // namespace

QSoundInfo QSoundInfo::fromWav(const QByteArray& bytes)
{
    QSoundInfo info;
    LittleEndian in(bytes);
    // "RIFF", its size and "WAVE", then the first chunk's id and size.
    in.skip(12);
    in.skip(8);
    if (in.read(2) != PcmFormat) return info;
    const quint32 channels = in.read(2);
    const quint32 sampleRate = in.read(4);
    const quint32 byteRate = in.read(4);
    in.read(2); // block align
    const quint32 bits = in.read(2);
    info.channels = quint8(channels);
    info.sampleRate = sampleRate;
    info.bitsPerSample = quint8(bits);

    const qsizetype data = bytes.indexOf("data");
    if (data > 0) {
        LittleEndian chunk(bytes);
        chunk.seek(data);
        chunk.skip(4);
        const quint32 size = chunk.read(4);
        info.duration = byteRate == 0 ? 0.0f : float(size) / float(byteRate);
    }
    return info;
}
