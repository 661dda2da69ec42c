#include "MainWindow.h"
#include "QInterface.h"
#include "QMugenModel.h"
#include "QSingleInstance.h"
#include "QTextEditor.h"
#include "QTextEditors.h"
#include "QTextWorkspace.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

// What a user waits for when opening a large character in the window: from the open command until the
// code editor has painted the definitions, with the window already up. Every file is read, the sprite
// file indexed, the text files checked and coloured, the editors switched to the new project.

namespace {

class PaintWatch : public QObject
{
public:
    bool painted = false;
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Paint) painted = true;
        return false;
    }
};

void BM_OpenUntilPainted(benchmark::State& state)
{
    const QByteArray root = qgetenv("TAVREL_TESTDATA");
    const QString def = QString::fromLocal8Bit(root) + QStringLiteral("/kof-h-cjk/chars/Chang/Chang.def");
    if (root.isEmpty() || !QFile::exists(def)) {
        state.SkipWithError("TAVREL_TESTDATA with kof-h-cjk is needed");
        return;
    }
    MainWindow window;
    window.resize(1280, 800);
    window.show();
    QApplication::processEvents();
    QInterface* iface = window.interface();
    QWidget* viewport = window.texts()->workspace()->editor()->viewport();
    PaintWatch watch;
    viewport->installEventFilter(&watch);
    for (auto _ : state) {
        watch.painted = false;
        QElapsedTimer timer;
        timer.start();
        iface->openProject(def);
        while (!watch.painted && timer.elapsed() < 10000)
            QApplication::processEvents();
        state.SetIterationTime(timer.nsecsElapsed() / 1e9);
        state.PauseTiming();
        iface->fileCloseAll();
        QApplication::processEvents();
        state.ResumeTiming();
    }
}

} // namespace

BENCHMARK(BM_OpenUntilPainted)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QTemporaryDir config;
    qputenv("TAVREL_CONFIG_DIR", config.path().toLocal8Bit());
    QApplication app(argc, argv);
    isFirstInstance = false;
    mugenModel = new QMugenModel;
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    delete mugenModel;
    return 0;
}
