#include "QMugenModel.h"

#include <QCoreApplication>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

// Start-up reads the configuration before anything is shown; this keeps the cost of a full file with
// every default and fifty executables in view.
static void BM_ConfigLoad(benchmark::State& state)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("config.xml"));
    QMugenModel source;
    for (int n = 0; n < 50; ++n)
        source.addEntry(QStringLiteral("M.U.G.E.N. %1").arg(n),
                        QStringLiteral("/games/mugen%1/mugen.exe").arg(n), QStringLiteral("-p1 %1"),
                        QString());
    source.save(path);
    QMugenModel model;
    for (auto _ : state)
        benchmark::DoNotOptimize(model.load(path));
}
BENCHMARK(BM_ConfigLoad);

static void BM_ConfigSave(benchmark::State& state)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("config.xml"));
    QMugenModel model;
    for (auto _ : state)
        benchmark::DoNotOptimize(model.save(path));
}
BENCHMARK(BM_ConfigSave);

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
