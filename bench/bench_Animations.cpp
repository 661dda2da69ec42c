#include "NameCmmReg.h"
#include "QAirDocument.h"
#include "QAnimation.h"
#include "QAnimationElements.h"
#include "QAnimationFrame.h"
#include "QAnimations.h"
#include "QElementTextEditor.h"
#include "QModelTables.h"
#include "QTextElementPool.h"
#include "QTextElementReg.h"
#include "QTextElementType.h"
#include "UnknownGrpReg.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QStringList>
#include <QTextCursor>
#include <QTextDocument>
#include <benchmark/benchmark.h>

// An AIR text of the given number of lines in the shape of a character's file: named actions with
// default collision boxes, per-frame attack boxes now and then, marks and tails.
static QString makeAir(int lines)
{
    QStringList text;
    for (int action = 0; text.size() < lines; ++action) {
        text << QStringLiteral("; Action %1").arg(action) << QStringLiteral("[Begin Action %1]").arg(action)
             << QStringLiteral("Clsn2Default: 2") << QStringLiteral(" Clsn2[0] = -13,  0, 16,-79")
             << QStringLiteral(" Clsn2[1] =   5,-79, -7,-93");
        for (int frame = 0; frame < 10 && text.size() < lines; ++frame) {
            if (frame == 4) {
                text << QStringLiteral("Clsn1: 1") << QStringLiteral("  Clsn1[0] = 10,-70, 60,-50");
            }
            if (frame == 7) text << QStringLiteral("LoopStart");
            text << QStringLiteral("%1,%2, 0,0, 5%3").arg(action).arg(frame).arg(frame == 5 ? ", H" : "");
        }
        text << QString();
    }
    return text.mid(0, lines).join(QLatin1Char('\n'));
}

struct QBenchAir
{
    QBenchAir()
    {
        editor.setTypeEnabled(true, etUnknownGroup, 0);
        model.setEditor(&editor);
    }
    QElementTextEditor editor;
    QAnimations model;
};

// The end of a plain frame line in the middle of the document.
static int middleFrameEnd(const QElementTextEditor& editor)
{
    QTextBlock block = editor.document->findBlockByNumber(editor.document->blockCount() / 2);
    while (!block.text().endsWith(QLatin1String(", 0,0, 5")))
        block = block.next();
    return block.position() + block.length() - 1;
}

// A digit typed into the time column of a frame line and taken back: two keystrokes, each re-reading
// the line, re-parsing the frame and telling the model.
static void BM_AirKeystroke(benchmark::State& state)
{
    QBenchAir air;
    air.model.fromText(makeAir(int(state.range(0))));
    int changed = 0;
    QObject::connect(&air.model, &QAnimations::changed, [&changed] { ++changed; });
    QTextCursor cursor(air.editor.document);
    const int position = middleFrameEnd(air.editor);
    for (auto _ : state) {
        cursor.setPosition(position);
        cursor.insertText(QStringLiteral("0"));
        cursor.deletePreviousChar();
    }
    if (changed != 2 * int(state.iterations())) state.SkipWithError("the model did not hear every keystroke");
    state.SetItemsProcessed(2 * state.iterations());
}
BENCHMARK(BM_AirKeystroke)->Arg(1000)->Arg(5000)->Arg(20000);

// Enter inside a frame line with boxes above it and Backspace: the frame goes and comes back, and the
// model settles the frame's sets and the section's frame list each time.
static void BM_AirSplitAndJoin(benchmark::State& state)
{
    QBenchAir air;
    air.model.fromText(makeAir(int(state.range(0))));
    QTextCursor cursor(air.editor.document);
    const int position = middleFrameEnd(air.editor) - 3;
    for (auto _ : state) {
        cursor.setPosition(position);
        cursor.insertText(QStringLiteral("\n"));
        cursor.deletePreviousChar();
    }
    state.SetItemsProcessed(2 * state.iterations());
}
BENCHMARK(BM_AirSplitAndJoin)->Arg(1000)->Arg(5000)->Arg(20000);

static QString largestAir()
{
    const QString root = qEnvironmentVariable("TAVREL_TESTDATA");
    QString largest;
    qint64 size = -1;
    if (root.isEmpty()) return largest;
    QDirIterator it(root, {QStringLiteral("*.air")}, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString path = it.next();
        if (QFileInfo(path).size() > size) {
            size = QFileInfo(path).size();
            largest = path;
        }
    }
    return largest;
}

static QByteArray readAll(const QString& path)
{
    QFile file(path);
    file.open(QIODevice::ReadOnly);
    return file.readAll();
}

// The floors that loading is measured against, each on the largest AIR of the test data: (a) reading
// its bytes, (b) that plus decoding and cutting the text into lines, (c) the text document alone
// taking the decoded text. The document is the file's one source of truth, so (c) is what any design
// of the element layer pays at least.
static void BM_AirReadBytes(benchmark::State& state)
{
    const QString path = largestAir();
    if (path.isEmpty()) {
        state.SkipWithError("TAVREL_TESTDATA names no folder with AIR files");
        return;
    }
    qint64 bytes = 0;
    for (auto _ : state) {
        const QByteArray data = readAll(path);
        bytes += data.size();
        benchmark::DoNotOptimize(data.constData());
    }
    state.SetBytesProcessed(bytes);
}
BENCHMARK(BM_AirReadBytes)->Unit(benchmark::kMicrosecond);

static void BM_AirDecodeLines(benchmark::State& state)
{
    const QString path = largestAir();
    if (path.isEmpty()) {
        state.SkipWithError("TAVREL_TESTDATA names no folder with AIR files");
        return;
    }
    for (auto _ : state) {
        const QStringList lines = QString::fromUtf8(readAll(path)).split(QLatin1Char('\n'));
        benchmark::DoNotOptimize(lines.constData());
    }
    state.SetBytesProcessed(state.iterations() * QFileInfo(path).size());
}
BENCHMARK(BM_AirDecodeLines)->Unit(benchmark::kMicrosecond);

static void BM_AirDocumentOnly(benchmark::State& state)
{
    const QString path = largestAir();
    if (path.isEmpty()) {
        state.SkipWithError("TAVREL_TESTDATA names no folder with AIR files");
        return;
    }
    const QString text = QString::fromUtf8(readAll(path));
    QTextDocument document;
    for (auto _ : state)
        document.setPlainText(text);
    state.SetBytesProcessed(state.iterations() * QFileInfo(path).size());
}
BENCHMARK(BM_AirDocumentOnly)->Unit(benchmark::kMicrosecond);

// (d) Loading the same file as a project does: reading, decoding, the document, and every element
// bound to the model.
static void BM_AirLoadLargest(benchmark::State& state)
{
    const QString path = largestAir();
    if (path.isEmpty()) {
        state.SkipWithError("TAVREL_TESTDATA names no folder with AIR files");
        return;
    }
    QAirDocument air;
    for (auto _ : state)
        air.model.fromFile(path);
    state.SetBytesProcessed(state.iterations() * QFileInfo(path).size());
    state.counters["actions"] = air.model.count();
}
BENCHMARK(BM_AirLoadLargest)->Unit(benchmark::kMicrosecond);

// The part of (d) that is the element layer's: the decoded text into the document with the model bound.
static void BM_AirLoadLargestText(benchmark::State& state)
{
    const QString path = largestAir();
    if (path.isEmpty()) {
        state.SkipWithError("TAVREL_TESTDATA names no folder with AIR files");
        return;
    }
    const QString text = QString::fromUtf8(readAll(path));
    QBenchAir air;
    for (auto _ : state)
        air.model.fromText(text);
    state.SetBytesProcessed(state.iterations() * QFileInfo(path).size());
}
BENCHMARK(BM_AirLoadLargestText)->Unit(benchmark::kMicrosecond);

// Loading generated text of 20,000 lines.
static void BM_AirLoadText(benchmark::State& state)
{
    const QString text = makeAir(int(state.range(0)));
    QBenchAir air;
    for (auto _ : state)
        air.model.fromText(text);
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_AirLoadText)->Arg(20000)->Unit(benchmark::kMillisecond);

// Its floor: the text document alone taking the same text.
static void BM_AirDocumentOnlyText(benchmark::State& state)
{
    const QString text = makeAir(int(state.range(0)));
    QTextDocument document;
    for (auto _ : state)
        document.setPlainText(text);
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_AirDocumentOnlyText)->Arg(20000)->Unit(benchmark::kMillisecond);

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    QModelTables tables;
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
