#include "QImageInfo.h"
#include "QPNGCodec.h"
#include "QSFFInfo.h"
#include "QSprite.h"
#include "QSprites.h"
#include "QStreamCacheFilter.h"

#include <QCoreApplication>
#include <QFile>
#include <QtEndian>

#include <benchmark/benchmark.h>

#include <libdeflate.h>

#include <algorithm>
#include <cstring>
#include <vector>

// PNG sprites must decode at 400 MB/s of output or more on one core. Measured on the PNG blocks of
// three files of the test data: a character with 8-bit sprites and a few large true-colour ones, a
// fight screen of true-colour sprites, and a 720p character of 8-bit sprites. Qt's reader on the
// same blocks, and the inflating alone, are measured beside it as references.
namespace {

const char* const Files[] = {"kof-h-cjk/chars/Chang/Chang.sff", "ikemen-screenpack/data/fight.sff",
                             "ikemen-screenpack/chars/kfm720/kfm720.sff"};

struct Block
{
    QByteArray png;
    QImageInfo info;
};

QString pathOf(int which)
{
    const QString root = qEnvironmentVariable("TAVREL_TESTDATA");
    return root.isEmpty() ? QString() : root + QLatin1Char('/') + QLatin1String(Files[which]);
}

// The PNG blocks of an SFF v2 file, read straight from its sprite nodes.
std::vector<Block> pngBlocks(const QString& path)
{
    std::vector<Block> blocks;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return blocks;
    const QByteArray bytes = file.readAll();
    const auto* d = reinterpret_cast<const uchar*>(bytes.constData());
    const auto u32 = [&](qsizetype at) { return qFromLittleEndian<quint32>(d + at); };
    const auto u16 = [&](qsizetype at) { return qFromLittleEndian<quint16>(d + at); };
    if (bytes.size() < 512 || d[15] != 2) return blocks;
    const quint32 nodes = u32(36);
    const quint32 count = u32(40);
    const quint32 ldata = u32(52);
    const quint32 tdata = u32(60);
    for (quint32 i = 0; i < count; ++i) {
        const qsizetype node = nodes + qsizetype(i) * 28;
        if (node + 28 > bytes.size()) break;
        const uchar format = d[node + 14];
        const quint32 length = u32(node + 20);
        if (format < 10 || format > 12 || length <= 4) continue;
        const qsizetype at = qsizetype(u32(node + 16)) + ((u16(node + 26) & 1) ? tdata : ldata);
        if (at + length > bytes.size()) continue;
        Block block;
        block.png = bytes.mid(at + 4, length - 4);
        block.info.width = u16(node + 4);
        block.info.height = u16(node + 6);
        const uchar depth = d[node + 15];
        block.info.format = depth == 32   ? QImage::Format_ARGB32
                            : depth == 24 ? QImage::Format_RGB32
                                          : QImage::Format_Indexed8;
        blocks.push_back(block);
    }
    return blocks;
}

void label(benchmark::State& state, const std::vector<Block>& blocks, int which)
{
    int64_t raw = 0;
    for (const Block& block : blocks)
        raw += block.info.rawSize();
    state.SetBytesProcessed(int64_t(state.iterations()) * raw);
    state.SetLabel(QStringLiteral("%1, %2 PNG sprites, %3 MB of pixels")
                       .arg(QString::fromLatin1(Files[which]).section(QLatin1Char('/'), -1))
                       .arg(blocks.size())
                       .arg(double(raw) / 1e6, 0, 'f', 1)
                       .toStdString());
}

// The cache filter: what every sprite shown or compared costs.
void BM_PngDecode(benchmark::State& state)
{
    const int which = int(state.range(0));
    const std::vector<Block> blocks = pngBlocks(pathOf(which));
    if (blocks.empty()) return state.SkipWithError("TAVREL_TESTDATA is not set or the file has no PNG");
    const QStreamCacheFilter* filter = QStreamCacheFilter::at(QStreamCacheFilter::PNGFilter);
    for (auto _ : state)
        for (const Block& block : blocks) {
            const QByteArray raw = filter->decode(block.png, &block.info);
            if (raw.size() != block.info.rawSize()) state.SkipWithError("a sprite did not decode");
            benchmark::DoNotOptimize(raw.constData());
        }
    label(state, blocks, which);
}

// Qt's PNG reader brought to the same raw form: the decoder before this one.
void BM_PngDecodeQt(benchmark::State& state)
{
    const int which = int(state.range(0));
    const std::vector<Block> blocks = pngBlocks(pathOf(which));
    if (blocks.empty()) return state.SkipWithError("TAVREL_TESTDATA is not set or the file has no PNG");
    for (auto _ : state)
        for (const Block& block : blocks) {
            QImage image = decodePNG(block.png);
            if (image.format() != block.info.imageFormat())
                image = image.convertToFormat(block.info.imageFormat());
            benchmark::DoNotOptimize(QImageInfo::raw(image).constData());
        }
    label(state, blocks, which);
}

// The floor: inflating the pixel data of each file (one IDAT chunk taken as the whole stream), with no
// chunk walk, unfiltering or laying out.
void BM_PngInflateOnly(benchmark::State& state)
{
    const int which = int(state.range(0));
    const std::vector<Block> blocks = pngBlocks(pathOf(which));
    if (blocks.empty()) return state.SkipWithError("TAVREL_TESTDATA is not set or the file has no PNG");
    struct Stream
    {
        QByteArray zlib;
        size_t size;
    };
    std::vector<Stream> streams;
    for (const Block& block : blocks) {
        const auto* p = reinterpret_cast<const uchar*>(block.png.constData());
        QByteArray zlib;
        for (qsizetype at = 8; at + 12 <= block.png.size();) {
            const quint32 length = qFromBigEndian<quint32>(p + at);
            if (std::memcmp(p + at + 4, "IDAT", 4) == 0) zlib += block.png.mid(at + 8, length);
            at += 12 + qsizetype(length);
        }
        const int channels = block.info.format == QImage::Format_Indexed8 ? 1
                             : block.info.format == QImage::Format_RGB32  ? 3
                                                                          : 4;
        streams.push_back({zlib, size_t(block.info.width * channels + 1) * block.info.height});
    }
    libdeflate_decompressor* inflater = libdeflate_alloc_decompressor();
    size_t largest = 0;
    for (const Stream& stream : streams)
        largest = std::max(largest, stream.size);
    std::vector<uchar> out(largest);
    for (auto _ : state)
        for (const Stream& stream : streams) {
            size_t written = 0;
            libdeflate_zlib_decompress(inflater, stream.zlib.constData(), size_t(stream.zlib.size()),
                                       out.data(), out.size(), &written);
            benchmark::DoNotOptimize(out.data());
        }
    libdeflate_free_decompressor(inflater);
    label(state, blocks, which);
}

// Opening the file, with the sharing pass that compares sprites of the same size row by row, and then
// every sprite's pixels as `tavrel-cli sff decode` takes them.
void BM_OpenAndDecodeAll(benchmark::State& state)
{
    const int which = int(state.range(0));
    const QString path = pathOf(which);
    if (path.isEmpty()) return state.SkipWithError("TAVREL_TESTDATA is not set");
    const int64_t open = state.range(1);
    for (auto _ : state) {
        QSprites sprites(nullptr, 0, false);
        if (!sprites.fromFile(path)) return state.SkipWithError("the file doesn't open");
        if (!open)
            for (uint i = 0; i < sprites.count(); ++i)
                benchmark::DoNotOptimize(QSFFInfo::pixels(*sprites.at(i)).constData());
    }
    state.SetLabel(QString::fromLatin1(Files[which]).section(QLatin1Char('/'), -1).toStdString() +
                   (open ? ", open only" : ", open and decode all"));
}

} // namespace

BENCHMARK(BM_PngDecode)->DenseRange(0, 2)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PngDecodeQt)->DenseRange(0, 2)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PngInflateOnly)->DenseRange(0, 2)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_OpenAndDecodeAll)->ArgsProduct({{0, 1, 2}, {1, 0}})->Unit(benchmark::kMillisecond);

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
