#include "QMugenSyntaxHierarchy.h"

#include <benchmark/benchmark.h>

// Rebuilding the outline of a large state file, as the editor does one second after each edit. After the
// first build every node comes from the free lists: the "allocated nodes" counter must stay 0.

namespace {

// StateDefs with a variable writer, an inline assignment and a plain controller, about 20 lines each.
QString makeCns(int lines)
{
    QString text;
    int state = 0;
    while (text.count(QLatin1Char('\n')) < lines) {
        ++state;
        text +=
            QStringLiteral("; State %1\n[Statedef %1]\ntype = S\nmovetype = A\nphysics = S\nanim = %1\n"
                           "ctrl = 0\n\n[State %1, Set]\ntype = VarSet\ntrigger1 = Time = 0\nvar(%2) = 1\n\n"
                           "[State %1, Hit]\ntype = HitDef\ntrigger1 = AnimElem = 3 || var(%2) := 1\n"
                           "damage = 20, 5\n\n[State %1, End]\ntype = ChangeState\n"
                           "trigger1 = AnimTime = 0\nvalue = 0\n\n")
                .arg(state)
                .arg(state % 60);
    }
    return text;
}

void BM_HierarchyRebuild(benchmark::State& state)
{
    const QString text = makeCns(int(state.range(0)));
    QMugenSyntaxHierarchy hierarchy;
    hierarchy.update(text);
    const int items = QHierarchyItem::created;
    const int usages = QVarUsageItem::created;
    for (auto _ : state)
        hierarchy.update(text);
    state.counters["lines"] = double(text.count(QLatin1Char('\n')));
    state.counters["sections"] = double(hierarchy.rowCount());
    state.counters["allocated nodes"] =
        double(QHierarchyItem::created - items + QVarUsageItem::created - usages);
    state.SetItemsProcessed(state.iterations() * text.count(QLatin1Char('\n')));
}

} // namespace

BENCHMARK(BM_HierarchyRebuild)->Arg(20000)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
