#include "QCrc64.h"
#include "QImageInfo.h"
#include "QLZ5Codec.h"
#include "QPCXCodec.h"
#include "QPNGCodec.h"
#include "QRLE8Codec.h"
#include "QStreamCacheFilter.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QRandomGenerator>

#include <benchmark/benchmark.h>

#include <cmath>

// Decoding speed decides how quickly sprites appear when they are browsed and how quickly a file with
// thousands of them loads (every block is hashed through its decoded bytes). The images are 320x240
// sprites: a shaded figure with an outline and some dithering on a clear background.
namespace {

constexpr int Width = 320;
constexpr int Height = 240;

// noise: one pixel in this many takes a random shade; 12 is a hand-drawn look, 3 a busy one.
QImage spriteImage(int colours, int noise = 12)
{
    QRandomGenerator rng(42);
    QImage image(Width, Height, QImage::Format_Indexed8);
    image.setColorCount(256);
    image.fill(0);
    for (int y = 0; y < Height; ++y) {
        uchar* row = image.scanLine(y);
        for (int x = 0; x < Width; ++x) {
            const double dx = (x - Width / 2.0) / (Width * 0.35);
            const double dy = (y - Height / 2.0) / (Height * 0.45);
            const double r = dx * dx + dy * dy;
            if (r >= 1) continue;
            if (r > 0.9) {
                row[x] = 1;
                continue;
            }
            int shade = 2 + int((1 - r) * (colours - 3)) % (colours - 2);
            if (rng.bounded(noise) == 0) shade = 2 + int(rng.bounded(colours - 2));
            if ((x / 40 + y / 30) % 3 == 0 && (x + y) % 2 == 0) shade = std::min(shade + 1, colours - 1);
            row[x] = uchar(shade);
        }
    }
    return image;
}

// This program never writes RLE5; a straightforward packer makes realistic blocks to read.
QByteArray packRLE5(const QImage& image)
{
    const QByteArray pixels = QImageInfo::unpadded(image);
    const auto* px = reinterpret_cast<const uchar*>(pixels.constData());
    const qsizetype total = pixels.size();
    const auto runAt = [&](qsizetype p, qsizetype limit) {
        qsizetype r = 1;
        while (r < limit && p + r < total && px[p + r] == px[p])
            ++r;
        return r;
    };
    QByteArray out;
    qsizetype p = 0;
    while (p < total) {
        const qsizetype run = runAt(p, 256);
        const uchar colour = px[p] & 0x1F;
        p += run;
        QByteArray packed;
        while (packed.size() < 31 && p < total) {
            const qsizetype r = runAt(p, 8);
            if (r == 8 && runAt(p, 9) > 8) break;
            packed.append(char(((r - 1) << 5) | (px[p] & 0x1F)));
            p += r;
        }
        out.append(char(run - 1));
        out.append(char(0x80 | packed.size()));
        out.append(char(colour));
        out.append(packed);
    }
    return out;
}

QByteArray pcxOf(const QImage& image)
{
    QByteArray out;
    QBuffer buffer(&out);
    buffer.open(QIODevice::WriteOnly);
    encodePCX(image, &buffer);
    return out;
}

void decodeBlock(benchmark::State& state, uint filter, const QImage& image, const QByteArray& block)
{
    QImageInfo info = QImageInfo::of(image);
    const QStreamCacheFilter* decoder = QStreamCacheFilter::at(filter);
    if (decoder->decode(block, &info) != QImageInfo::raw(image)) {
        state.SkipWithError("the block does not decode to its image");
        return;
    }
    for (auto _ : state)
        benchmark::DoNotOptimize(decoder->decode(block, &info));
    state.SetBytesProcessed(state.iterations() * info.rawSize());
    state.counters["block_bytes"] = double(block.size());
}

} // namespace

static void BM_DecodeLZ5(benchmark::State& state)
{
    const QImage image = spriteImage(32, int(state.range(0)));
    decodeBlock(state, QStreamCacheFilter::LZ5Filter, image, encodeLZ5(image));
}
BENCHMARK(BM_DecodeLZ5)->Arg(12)->Arg(3);

static void BM_DecodeRLE8(benchmark::State& state)
{
    const QImage image = spriteImage(256, int(state.range(0)));
    decodeBlock(state, QStreamCacheFilter::RLE8Filter, image, encodeRLE8(image));
}
BENCHMARK(BM_DecodeRLE8)->Arg(12)->Arg(3);

static void BM_DecodeRLE5(benchmark::State& state)
{
    const QImage image = spriteImage(32, int(state.range(0)));
    decodeBlock(state, QStreamCacheFilter::RLE5Filter, image, packRLE5(image));
}
BENCHMARK(BM_DecodeRLE5)->Arg(12)->Arg(3);

static void BM_DecodePCX(benchmark::State& state)
{
    const QImage image = spriteImage(256, int(state.range(0)));
    decodeBlock(state, QStreamCacheFilter::PCXFilter, image, pcxOf(image));
}
BENCHMARK(BM_DecodePCX)->Arg(12)->Arg(3);

static void BM_DecodePNG(benchmark::State& state)
{
    const QImage image = spriteImage(256, int(state.range(0)));
    decodeBlock(state, QStreamCacheFilter::PNGFilter, image, encodePNG(image));
}
BENCHMARK(BM_DecodePNG)->Arg(12)->Arg(3);

static void BM_EncodeLZ5(benchmark::State& state)
{
    const QImage image = spriteImage(32);
    for (auto _ : state)
        benchmark::DoNotOptimize(encodeLZ5(image));
    state.SetBytesProcessed(state.iterations() * Width * Height);
}
BENCHMARK(BM_EncodeLZ5)->Unit(benchmark::kMillisecond);

static void BM_EncodeRLE8(benchmark::State& state)
{
    const QImage image = spriteImage(256);
    for (auto _ : state)
        benchmark::DoNotOptimize(encodeRLE8(image));
    state.SetBytesProcessed(state.iterations() * Width * Height);
}
BENCHMARK(BM_EncodeRLE8)->Unit(benchmark::kMillisecond);

static void BM_EncodePCX(benchmark::State& state)
{
    const QImage image = spriteImage(256);
    for (auto _ : state)
        benchmark::DoNotOptimize(pcxOf(image));
    state.SetBytesProcessed(state.iterations() * Width * Height);
}
BENCHMARK(BM_EncodePCX)->Unit(benchmark::kMillisecond);

static void BM_EncodePNG(benchmark::State& state)
{
    const QImage image = spriteImage(256);
    for (auto _ : state)
        benchmark::DoNotOptimize(encodePNG(image));
    state.SetBytesProcessed(state.iterations() * Width * Height);
}
BENCHMARK(BM_EncodePNG)->Unit(benchmark::kMillisecond);

static void BM_Hash(benchmark::State& state)
{
    const QByteArray raw = QImageInfo::raw(spriteImage(256));
    for (auto _ : state)
        benchmark::DoNotOptimize(crc64(raw));
    state.SetBytesProcessed(state.iterations() * raw.size());
}
BENCHMARK(BM_Hash);

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
