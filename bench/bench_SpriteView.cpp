#include "QAirDocument.h"
#include "QAnimSpriteWorkspace.h"
#include "QRenderWidgets.h"
#include "QSprRender.h"
#include "QSprite.h"
#include "QSprites.h"
#include "QSpritesEditor.h"
#include "QTextElementRegistry.h"

#include <QApplication>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QPaintEvent>
#include <QPainter>
#include <QWidget>

#include <benchmark/benchmark.h>

#include <memory>

// The sprite view must keep up with the hand: one paint of a busy 1280x720 view (zoom 2, onion skin,
// guide lines, boxes) well inside a frame, and holding "next sprite" through the largest character of
// the test data must paint every sprite with no step over 16 ms, decoding each image once.
namespace {

QString testFile(const char* relative)
{
    const QString root = qEnvironmentVariable("TAVREL_TESTDATA");
    return root.isEmpty() ? QString() : root + QLatin1Char('/') + QLatin1String(relative);
}

void paintInto(QSprRender& render, QImage& target)
{
    QPainter painter(&target);
    QPaintEvent event(target.rect());
    render.paint(painter, &event);
}

void BM_PaintBusyView(benchmark::State& state)
{
    registerTextElements();
    QSprites sprites;
    if (!sprites.fromFile(testFile("elecbyte-mugen11/chars/kfm/kfm.sff"))) {
        state.SkipWithError("TAVREL_TESTDATA with elecbyte-mugen11 is needed");
        return;
    }
    QAirDocument air(QStringLiteral("[Begin Action 0]\nClsn2Default: 2\n  Clsn2[0] = -20,-80, 20, 0\n"
                                    "  Clsn2[1] = -10,-100, 10,-80\nClsn1: 1\n  Clsn1[0] = 10,-70, 60,-50\n"
                                    "0,0, 0,0, 5\n"));
    QWidget host;
    host.resize(1280, 720);
    QSprRender render;
    std::unique_ptr<QWidget> widget(QRenderWidgets::make(&render, &host, false));
    widget->resize(1280, 720);
    render.resize();
    render.setRenderMode(QSprRender::AnimationMode);
    render.setSprites(&sprites);
    render.setAnimations(&air.model);
    render.setZoomMode(QViewZoom::LargeRange);
    render.setZoomIndex(3); // 2X
    render.setMainAxis(QPoint(640, 600));
    render.setOnion(true, QSprRender::OnionMonochrome, 50);
    render.setOnionSprite(1);
    render.showGuides(true);
    render.setGuides(QPoint(10, -60));
    render.setAction(0);
    QImage target(1280, 720, QImage::Format_ARGB32_Premultiplied);
    for (auto _ : state) {
        paintInto(render, target);
        benchmark::DoNotOptimize(target.constBits());
    }
    state.counters["boxes"] = render.boxCount();
}
BENCHMARK(BM_PaintBusyView)->Unit(benchmark::kMillisecond);

// The editor's own "next sprite" (panel fields, view, palette) and a paint of the 1280x720 view, for
// every sprite of the largest character in turn, twice: the second pass finds its images decoded.
void BM_HoldNextSprite(benchmark::State& state)
{
    QSprites sprites;
    if (!sprites.fromFile(testFile("kof-h-cjk/chars/Chang/Chang.sff"))) {
        state.SkipWithError("TAVREL_TESTDATA with kof-h-cjk is needed");
        return;
    }
    QWidget host;
    host.resize(1280, 720);
    QAnimSpriteWorkspace workspace(&host);
    QSpritesEditor editor(&workspace);
    QMap<QString, QString> variables;
    editor.bind(&sprites, &variables);
    editor.activate();
    workspace.renderWidget()->resize(1280, 720);
    workspace.view()->resize();
    QImage target(1280, 720, QImage::Format_ARGB32_Premultiplied);
    double longest = 0;
    double longestAt = -1;
    double total = 0;
    qint64 steps = 0;
    for (auto _ : state) {
        workspace.view()->decodedImages().clear();
        for (int pass = 0; pass < 2; ++pass) {
            editor.definePos(0);
            for (uint i = 0; i < sprites.count(); ++i) {
                // Between two repeats of a held key the event loop runs; what it does there is not
                // part of the step a user waits for.
                QCoreApplication::processEvents();
                QElapsedTimer timer;
                timer.start();
                editor.nextSpr();
                paintInto(*workspace.view(), target);
                const double taken = timer.nsecsElapsed() / 1e6;
                if (taken > longest) {
                    longest = taken;
                    longestAt = double(pass * 10000 + int(i));
                }
                total += taken;
                ++steps;
            }
        }
    }
    const QDecodedImageCache& cache = workspace.view()->decodedImages();
    state.counters["sprites"] = sprites.count();
    state.counters["longest_ms"] = longest;
    // The pass times 10000 plus the position of the slowest step.
    state.counters["longest_at"] = longestAt;
    state.counters["mean_ms"] = total / double(qMax<qint64>(1, steps));
    state.counters["hit_rate"] =
        double(cache.hits()) / double(qMax<quint64>(1, cache.hits() + cache.misses()));
    state.counters["peak_MB"] = cache.peakBytes() / (1024.0 * 1024.0);
    editor.bind(nullptr, nullptr);
}
BENCHMARK(BM_HoldNextSprite)->Unit(benchmark::kMillisecond)->Iterations(1);

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
