#include "QActionGif.h"
#include "QAirDocument.h"
#include "QAnimation.h"
#include "QAnimations.h"
#include "QGifWriter.h"
#include "QSprites.h"
#include "QTextElementRegistry.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

#include <memory>

// A character's super move (action 3000: 32 frames, flips and 1-tick frames among them), from its
// sprite file and AIR text in the test data.
struct QBenchAction
{
    explicit QBenchAction(const QString& character)
    {
        const QString root = qEnvironmentVariable("TAVREL_TESTDATA");
        if (root.isEmpty()) return;
        const QString base = root + QStringLiteral("/elecbyte-mugen11/chars/%1/%1").arg(character);
        QFile air(base + QStringLiteral(".air"));
        if (!sprites.fromFile(base + QStringLiteral(".sff")) || !air.open(QIODevice::ReadOnly)) return;
        document = std::make_unique<QAirDocument>(QString::fromLatin1(air.readAll()));
        const int found = document->model.findByNumber(0, 3000);
        if (found >= 0) action = document->model.at(uint(found));
    }
    QSprites sprites{nullptr, 0, false};
    std::unique_ptr<QAirDocument> document;
    QAnimation* action = nullptr;
};

static const char* const characters[] = {"kfm", "kfm720"};

// What the user waits for after choosing the file: frames from the sprites (each decoded), the
// encoding, and the file written through a save file.
static void BM_ActionToFile(benchmark::State& state)
{
    QBenchAction bench(QString::fromLatin1(characters[state.range(0)]));
    if (!bench.action) return state.SkipWithError("TAVREL_TESTDATA is not set or lacks the character");
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("action.gif"));
    for (auto _ : state)
        if (!QActionGif::write(*bench.action, bench.sprites, path)) state.SkipWithError("not written");
    state.counters["frames"] = double(bench.action->frameCount());
    state.counters["bytes"] = double(QFileInfo(path).size());
    state.SetLabel(characters[state.range(0)]);
}
BENCHMARK(BM_ActionToFile)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

// The encoder alone, on frames already prepared.
static void BM_EncodeOnly(benchmark::State& state)
{
    QBenchAction bench(QString::fromLatin1(characters[state.range(0)]));
    if (!bench.action) return state.SkipWithError("TAVREL_TESTDATA is not set or lacks the character");
    QGifWriter gif;
    if (!QActionGif::prepare(*bench.action, bench.sprites, &gif)) return state.SkipWithError("no frames");
    qint64 pixels = 0;
    for (const QGifFrame& frame : gif.frames)
        pixels += qint64(frame.image.width()) * frame.image.height();
    for (auto _ : state)
        benchmark::DoNotOptimize(gif.data());
    state.counters["pixels"] = double(pixels);
    state.SetItemsProcessed(state.iterations() * pixels);
    state.SetLabel(characters[state.range(0)]);
}
BENCHMARK(BM_EncodeOnly)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    registerTextElements();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    unregisterTextElements();
    return 0;
}
