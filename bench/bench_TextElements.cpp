// The small element language of the tests: "[Section n]" headers, "item n" lines, name comments and
// empty lines, without a model on top.
#include "../tests/documents/TestElements.h"

#include <QCoreApplication>
#include <QStringList>
#include <QTextCursor>
#include <benchmark/benchmark.h>

static QString makeDocument(int lines)
{
    QStringList text;
    for (int section = 0; text.size() < lines; ++section) {
        text << QStringLiteral("; Section %1").arg(section) << QStringLiteral("[Section %1]").arg(section);
        for (int item = 0; item < 12 && text.size() < lines; ++item)
            text << QStringLiteral("item %1").arg(section * 100 + item);
        text << QString();
    }
    return text.mid(0, lines).join(QLatin1Char('\n'));
}

// The end of an item line in the middle of the document.
static int middleItemEnd(const QElementTextEditor& editor)
{
    QTextBlock block = editor.document->findBlockByNumber(editor.document->blockCount() / 2);
    while (!block.text().startsWith(QLatin1String("item")))
        block = block.next();
    return block.position() + block.length() - 1;
}

// One character typed at the end of an item line and taken back with a backspace: two keystrokes of a
// user, each re-reading its line and telling the listeners.
static void keystrokes(benchmark::State& state, bool connected)
{
    QElementTextEditor editor(connected);
    enableTestElements(editor);
    editor.setPlainText(makeDocument(int(state.range(0))));
    int heard = 0;
    QObject::connect(&editor, &QElementTextEditor::update,
                     [&heard](QElementTextEditor*, QList<QTextElementChange>&) { ++heard; });
    QTextCursor cursor(editor.document);
    const int position = middleItemEnd(editor);
    for (auto _ : state) {
        cursor.setPosition(position);
        cursor.insertText(QStringLiteral("0"));
        cursor.deletePreviousChar();
    }
    if (connected && heard != 2 * int(state.iterations()))
        state.SkipWithError("the document did not report every keystroke");
    state.SetItemsProcessed(2 * state.iterations());
}

static void BM_Keystroke(benchmark::State& state)
{
    keystrokes(state, true);
}
BENCHMARK(BM_Keystroke)->Arg(1000)->Arg(5000)->Arg(20000);

// The same keystrokes with nobody listening: what QTextDocument costs by itself.
static void BM_KeystrokeTextOnly(benchmark::State& state)
{
    keystrokes(state, false);
}
BENCHMARK(BM_KeystrokeTextOnly)->Arg(1000)->Arg(5000)->Arg(20000);

// The re-read of one line alone, without a text change: scan, recognise, parse, report.
static void BM_ContentsChangedOneLine(benchmark::State& state)
{
    QElementTextEditor editor(false);
    enableTestElements(editor);
    editor.setPlainText(makeDocument(int(state.range(0))));
    const int position = middleItemEnd(editor);
    for (auto _ : state)
        editor.contentsChanged(position, 0, 1);
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_ContentsChangedOneLine)->Arg(1000)->Arg(5000)->Arg(20000);

// Enter in the middle of an item line and a backspace joining it again: the line loses and regains
// its element, and the join makes the document look for the element of the merged-away line.
static void BM_SplitAndJoin(benchmark::State& state)
{
    QElementTextEditor editor;
    enableTestElements(editor);
    editor.setPlainText(makeDocument(int(state.range(0))));
    QTextCursor cursor(editor.document);
    const int position = middleItemEnd(editor) - 3;
    for (auto _ : state) {
        cursor.setPosition(position);
        cursor.insertText(QStringLiteral("\n"));
        cursor.deletePreviousChar();
    }
    state.SetItemsProcessed(2 * state.iterations());
}
BENCHMARK(BM_SplitAndJoin)->Arg(1000)->Arg(5000)->Arg(20000);

// Loading: the whole text read in one pass.
static void BM_SetPlainText(benchmark::State& state)
{
    const QString text = makeDocument(int(state.range(0)));
    QElementTextEditor editor;
    enableTestElements(editor);
    for (auto _ : state)
        editor.setPlainText(text);
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_SetPlainText)->Arg(1000)->Arg(20000);

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    registerTestElements();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    QTextElementReg::deleteAll();
    QTextElementPools::deleteAll();
    return 0;
}
