#include "QModelTables.h"
#include "QProject.h"

#include <QDirIterator>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>

#include <benchmark/benchmark.h>

// Opening a whole character end to end, with the time of each of its files: the project reports
// progress after every file, so the time between two reports is the time of one file.
namespace {

// The character of the test data whose sprite file is the largest.
QString largestCharacter()
{
    const QString root = qEnvironmentVariable("TAVREL_TESTDATA");
    QString best;
    qint64 size = -1;
    if (root.isEmpty()) return best;
    QDirIterator it(root, {QStringLiteral("*.sff")}, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QFileInfo sff(it.next());
        const QString def =
            sff.absolutePath() + QLatin1Char('/') + sff.completeBaseName() + QStringLiteral(".def");
        if (sff.absolutePath().contains(QLatin1String("/chars/")) && QFileInfo::exists(def) &&
            sff.size() > size) {
            size = sff.size();
            best = def;
        }
    }
    return best;
}

// The file kind that a progress position closes: positions 1 to 12 are palettes, 13 the sprites, then
// animations, sounds, commands and the state files.
int stepOf(uint position)
{
    if (position == 0) return 0;
    if (position <= 12) return 1;
    return position <= 16 ? int(position) - 11 : 6;
}

const char* const stepNames[] = {"definitions_ms", "palettes_ms", "sprites_ms", "animations_ms",
                                 "sounds_ms",      "commands_ms", "states_ms"};

void BM_OpenCharacter(benchmark::State& state)
{
    const QString path = largestCharacter();
    if (path.isEmpty()) {
        state.SkipWithError("TAVREL_TESTDATA is not set");
        return;
    }
    double totals[7] = {};
    for (auto _ : state) {
        QProject project(0, false);
        QElapsedTimer clock;
        qint64 last = 0;
        QObject::connect(&project, &QProject::progress, [&](uint pos, uint, bool&) {
            const qint64 now = clock.nsecsElapsed();
            totals[stepOf(pos)] += double(now - last) / 1e6;
            last = now;
        });
        clock.start();
        if (!project.fromFile(path, 0)) state.SkipWithError("the character can't be opened");
        benchmark::DoNotOptimize(project.sprites());
    }
    for (int i = 0; i < 7; ++i)
        state.counters[stepNames[i]] = totals[i] / double(state.iterations());
    state.SetLabel(QFileInfo(path).fileName().toStdString());
}
BENCHMARK(BM_OpenCharacter)->Unit(benchmark::kMillisecond);

// Reading the bytes of every file of the character folder: the floor of any open.
void BM_ReadCharacterBytes(benchmark::State& state)
{
    const QString path = largestCharacter();
    if (path.isEmpty()) {
        state.SkipWithError("TAVREL_TESTDATA is not set");
        return;
    }
    QStringList files;
    QDirIterator it(QFileInfo(path).absolutePath(), QDir::Files);
    while (it.hasNext())
        files << it.next();
    for (auto _ : state)
        for (const QString& file : std::as_const(files)) {
            QFile in(file);
            if (in.open(QIODevice::ReadOnly)) benchmark::DoNotOptimize(in.readAll());
        }
}
BENCHMARK(BM_ReadCharacterBytes)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    // Text documents lay out with the fonts of a GUI application.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    QModelTables tables;
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
