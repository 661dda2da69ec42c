#include "QElementDocumentLayout.h"
#include "QMugenSyntaxProcessor.h"
#include "QMugenSyntaxProperties.h"
#include "QSyntaxLibrary.h"
#include "QTextEncoding.h"

#include <QCoreApplication>
#include <QFile>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <benchmark/benchmark.h>

// The M.U.G.E.N. checker over whole files and over one edited line. The vocabulary is the one the build
// copies beside the programs; the real files come from TAVREL_TESTDATA.

namespace {

QString realFile(const char* relative)
{
    QFile file(qEnvironmentVariable("TAVREL_TESTDATA") + QStringLiteral("/elecbyte-mugen11/") +
               QLatin1String(relative));
    if (!file.open(QIODevice::ReadOnly)) return QString();
    return QTextEncoding::decode(file.readAll(), 0);
}

// The bundled sample character, made by the build beside the programs.
QString sampleFile(const char* name)
{
    QFile file(QCoreApplication::applicationDirPath() + QStringLiteral("/../../bin/samples/Roan/") +
               QLatin1String(name));
    if (!file.open(QIODevice::ReadOnly)) return QString();
    return QTextEncoding::decode(file.readAll(), 0);
}

// States with the usual mix of controllers, triggers, redirects and comments, about 20 lines each.
QString makeCns(int lines)
{
    QString text;
    int state = 0;
    while (text.count(QLatin1Char('\n')) < lines) {
        ++state;
        text +=
            QStringLiteral("; State %1\n[Statedef %1]\ntype = S\nmovetype = A\nphysics = S\nanim = %1\n"
                           "ctrl = 0\nvelset = 0,0\n\n[State %1, Hit]\ntype = HitDef\n"
                           "trigger1 = AnimElem = 3 && Time > 2 || var(%2) := 1\nattr = S, NA\n"
                           "damage = 20, 5\nhitsound = S5, 0\nsparkno = S2\n"
                           "fall.envshake.time = const(size.height) / 2\n\n[State %1, End]\n"
                           "type = ChangeState\ntrigger1 = AnimTime = 0 && helper(2), stateno != [10, 20)\n"
                           "value = 0\nctrl = 1\n\n")
                .arg(state)
                .arg(state % 60);
    }
    return text;
}

void checkText(benchmark::State& state, const QString& text)
{
    if (text.isEmpty()) {
        state.SkipWithError("TAVREL_TESTDATA names no folder with the engine's files");
        return;
    }
    QTextDocument document;
    document.setPlainText(text);
    QMugenSyntaxProcessor processor(&document, mugenSyntaxProperties(), true);
    for (auto _ : state)
        processor.rehighlight();
    state.SetItemsProcessed(state.iterations() * document.blockCount());
    state.counters["lines"] = document.blockCount();
    state.counters["errors"] = processor.errorCount();
}

} // namespace

// Checking common1.cns of the engine: items are lines.
static void BM_CheckCommon1(benchmark::State& state)
{
    checkText(state, realFile("data/common1.cns"));
}
BENCHMARK(BM_CheckCommon1)->Unit(benchmark::kMillisecond);

// Checking kfm.cns, the file the reference parser takes 50-70 ms for.
static void BM_CheckKfm(benchmark::State& state)
{
    checkText(state, realFile("chars/kfm/kfm.cns"));
}
BENCHMARK(BM_CheckKfm)->Unit(benchmark::kMillisecond);

// Checking the sample character's states and constants.
static void BM_CheckSampleCns(benchmark::State& state)
{
    checkText(state, sampleFile("Roan.cns"));
}
BENCHMARK(BM_CheckSampleCns)->Unit(benchmark::kMillisecond);

// Checking the largest system screen definition of the engine: screen keys, backgrounds and animations.
static void BM_CheckSystemDef(benchmark::State& state)
{
    checkText(state, realFile("data/mugen1/system.def"));
}
BENCHMARK(BM_CheckSystemDef)->Unit(benchmark::kMillisecond);

// kfm.cns from its text: the document, the processor and the first pass, as opening the file costs.
static void BM_LoadAndCheckKfm(benchmark::State& state)
{
    const QString text = realFile("chars/kfm/kfm.cns");
    if (text.isEmpty()) {
        state.SkipWithError("TAVREL_TESTDATA names no folder with the engine's files");
        return;
    }
    for (auto _ : state) {
        QTextDocument document;
        document.setPlainText(text);
        QMugenSyntaxProcessor processor(&document, mugenSyntaxProperties(), true);
        processor.rehighlight();
        benchmark::DoNotOptimize(processor.errorCount());
    }
}
BENCHMARK(BM_LoadAndCheckKfm)->Unit(benchmark::kMillisecond);

// A generated CNS of the given number of lines.
static void BM_CheckGeneratedCns(benchmark::State& state)
{
    checkText(state, makeCns(int(state.range(0))));
}
BENCHMARK(BM_CheckGeneratedCns)->Arg(20000)->Arg(100000)->Unit(benchmark::kMillisecond);

// Typing one character into a trigger line in the middle of a large file and taking it back: two
// re-checks per iteration, each of the one line whose state stays.
static void BM_RecheckEditedLine(benchmark::State& state)
{
    QTextDocument document;
    document.setPlainText(makeCns(int(state.range(0))));
    document.setDocumentLayout(new QElementDocumentLayout(&document));
    QMugenSyntaxProcessor processor(&document, mugenSyntaxProperties(), true);
    processor.rehighlight();
    QTextBlock line = document.findBlockByNumber(document.blockCount() / 2);
    while (!line.text().startsWith(QLatin1String("trigger1")))
        line = line.next();
    const int at = line.position() + int(line.text().size());
    for (auto _ : state) {
        QTextCursor cursor(&document);
        cursor.setPosition(at);
        cursor.insertText(QStringLiteral("1"));
        cursor.deletePreviousChar();
    }
    state.SetItemsProcessed(2 * state.iterations());
}
BENCHMARK(BM_RecheckEditedLine)->Arg(20000)->Unit(benchmark::kMicrosecond);

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    if (!mugenSyntaxProperties()->load(QCoreApplication::applicationDirPath() +
                                       QStringLiteral("/../../bin/syntax_mugen.xml"))) {
        fprintf(stderr, "syntax_mugen.xml not found beside the programs\n");
        return 1;
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
