#include "QAirDocument.h"
#include "QAnimSpriteWorkspace.h"
#include "QAnimation.h"
#include "QAnimationFrame.h"
#include "QAnimationsEditor.h"
#include "QCollisionBox.h"
#include "QCollisionBoxes.h"
#include "QElementTextEditor.h"
#include "QRenderWidgets.h"
#include "QSprRender.h"
#include "QSprites.h"
#include "QTextElementRegistry.h"
#include "QTextWorkspace.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QMouseEvent>
#include <QTimer>
#include <QWidget>

#include <benchmark/benchmark.h>

#include <cmath>

// Playing an action must hold the engine's 60 ticks a second: over ten seconds, each frame is shown
// within one tick of its time. A collision box dragged in the view must follow the hand: each mouse move
// repaints at once, and the release rewrites the box's one line.
namespace {

QString testFile(const char* relative)
{
    const QString root = qEnvironmentVariable("TAVREL_TESTDATA");
    return root.isEmpty() ? QString() : root + QLatin1Char('/') + QLatin1String(relative);
}

QString readText(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromLatin1(file.readAll()) : QString();
}

// Notes the moment each new frame reaches the screen.
class FrameWatch : public QObject
{
public:
    FrameWatch(QSprRender* view, QElapsedTimer* clock) : view(view), clock(clock) {}
    QList<QPair<qint64, const QAnimationFrame*>> shown;

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Paint && (shown.isEmpty() || shown.last().second != view->frame()))
            shown.append({clock->nsecsElapsed(), view->frame()});
        return false;
    }

private:
    QSprRender* view;
    QElapsedTimer* clock;
};

// Ten seconds of kfm's walking action (frames of 4 to 8 ticks, looping): the time each frame was shown
// against the time its ticks give, in ticks.
void BM_PlaybackHoldsTheTicks(benchmark::State& state)
{
    registerTextElements();
    QSprites sprites;
    const QString air = readText(testFile("elecbyte-mugen11/chars/kfm/kfm.air"));
    if (!sprites.fromFile(testFile("elecbyte-mugen11/chars/kfm/kfm.sff")) || air.isEmpty()) {
        state.SkipWithError("TAVREL_TESTDATA with elecbyte-mugen11 is needed");
        return;
    }
    QAirDocument document(air);
    QWidget host;
    host.resize(640, 480);
    QAnimSpriteWorkspace workspace(&host);
    QTextWorkspace text(&host);
    QAnimationsEditor editor(&workspace, &text);
    QMap<QString, QString> variables;
    editor.bind(&document.model, &sprites, &variables);
    editor.activate();
    // The page fills the window as it does in the main window, and the window is on the screen.
    workspace.page()->resize(host.size());
    host.show();
    QApplication::processEvents();
    const int walk = document.model.findByNumber(0, 20);
    editor.definePos(walk < 0 ? 0 : walk, 0);
    double worst = 0;
    double spread = 0;
    qint64 changes = 0;
    for (auto _ : state) {
        QElapsedTimer clock;
        FrameWatch watch(workspace.view(), &clock);
        workspace.renderWidget()->installEventFilter(&watch);
        QTimer::singleShot(10000, &editor, &QAnimationsEditor::forceStop);
        clock.start();
        editor.playChanged(true);
        workspace.renderWidget()->removeEventFilter(&watch);
        // Walk the ticks the frames should take and compare each change with the moment it was seen.
        qint64 dueTicks = 0;
        double sum = 0, sumSquares = 0;
        for (int i = 1; i < watch.shown.size(); ++i) {
            const QAnimationFrame* before = watch.shown.at(i - 1).second;
            dueTicks += before ? qMax(1, before->time) : 1;
            const double seenTicks = (watch.shown.at(i).first - watch.shown.first().first) / 1e9 * 60.0;
            const double off = seenTicks - double(dueTicks);
            worst = qMax(worst, std::abs(off));
            sum += off;
            sumSquares += off * off;
            ++changes;
        }
        const double n = qMax<double>(1, double(watch.shown.size() - 1));
        spread = std::sqrt(qMax(0.0, sumSquares / n - (sum / n) * (sum / n)));
    }
    state.counters["frame_changes"] = double(changes);
    state.counters["worst_off_ticks"] = worst;
    state.counters["spread_ticks"] = spread;
    editor.bind(nullptr, nullptr, nullptr);
}
BENCHMARK(BM_PlaybackHoldsTheTicks)->Unit(benchmark::kMillisecond)->Iterations(1);

// A box of a frame dragged by its middle, one mouse move per iteration, and the release that writes
// its line.
void BM_DragABox(benchmark::State& state)
{
    registerTextElements();
    QAirDocument document(
        QStringLiteral("[Begin Action 0]\nClsn2: 1\n  Clsn2[0] = -20,-80, 20, 0\n0,0, 0,0, 5\n"));
    QWidget host;
    host.resize(1280, 720);
    QSprRender view;
    QWidget* widget = QRenderWidgets::make(&view, &host, false);
    widget->resize(1280, 720);
    view.resize();
    view.setRenderMode(QSprRender::AnimationMode);
    view.setAnimations(&document.model);
    view.setMainAxis(QPoint(640, 600));
    view.setZoomIndex(4); // 3X
    view.setAction(0);
    host.show();
    // Until the window is on the screen a repaint draws nothing.
    QApplication::processEvents();
    const QPoint grip = view.boxRect(0).center();
    QMouseEvent press(QEvent::MouseButtonPress, grip, widget->mapToGlobal(grip), Qt::LeftButton,
                      Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(widget, &press);
    int step = 0;
    for (auto _ : state) {
        const QPoint at = grip + QPoint((step % 40) * 3, (step % 7) * 3);
        QMouseEvent move(QEvent::MouseMove, at, widget->mapToGlobal(at), Qt::NoButton, Qt::LeftButton,
                         Qt::NoModifier);
        QApplication::sendEvent(widget, &move);
        ++step;
    }
    QElapsedTimer release;
    release.start();
    const QPoint end = grip + QPoint(9, 3);
    QMouseEvent up(QEvent::MouseButtonRelease, end, widget->mapToGlobal(end), Qt::LeftButton, Qt::NoButton,
                   Qt::NoModifier);
    QApplication::sendEvent(widget, &up);
    state.counters["release_ms"] = release.nsecsElapsed() / 1e6;
    delete widget;
}
BENCHMARK(BM_DragABox)->Unit(benchmark::kMillisecond);

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
