#include "QMessages.h"
#include "QModelTables.h"
#include "QOutlineView.h"
#include "QSyntaxTextEditor.h"
#include "QTextEditor.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QTextBlock>
#include <benchmark/benchmark.h>

// One typed character in a 20,000-line state file shown in the code editor, coloured and folded by the
// M.U.G.E.N. checker: the key event, the checker's pass over the edited line, the editor's own work
// (cursor signals, bracket timer, gutter band) and the repaint, taken together as the user waits for
// them.

namespace {

QString makeCns(int lines)
{
    QString text;
    int state = 0;
    while (text.count(QLatin1Char('\n')) < lines) {
        ++state;
        text += QStringLiteral("; State %1\n[Statedef %1]\ntype = S\nmovetype = A\nphysics = S\nanim = %1\n"
                               "ctrl = 0\nvelset = 0,0\n\n[State %1, Hit]\ntype = HitDef\n"
                               "trigger1 = AnimElem = 3 && Time > 2 || var(%2) := 1\nattr = S, NA\n"
                               "damage = 20, 5\nhitsound = S5, 0\nsparkno = S2\n\n[State %1, End]\n"
                               "type = ChangeState\ntrigger1 = AnimTime = 0\nvalue = 0\nctrl = 1\n\n")
                    .arg(state)
                    .arg(state % 60);
    }
    return text;
}

void press(QWidget* target, Qt::Key key, const QString& text)
{
    QKeyEvent down(QEvent::KeyPress, key, Qt::NoModifier, text);
    QApplication::sendEvent(target, &down);
    QKeyEvent up(QEvent::KeyRelease, key, Qt::NoModifier, text);
    QApplication::sendEvent(target, &up);
}

void typeCharacter(benchmark::State& state, int line)
{
    QSyntaxTextEditor text(pftStates, nullptr, false, 0x1010000, false);
    text.setPlainText(makeCns(20000));
    QTextEditor editor;
    editor.resize(800, 600);
    editor.setDocument(text.document);
    editor.show();
    // Fold every other state, so that the layout works with hidden lines as a user's would.
    for (QTextBlock block = text.document->begin(); block.isValid(); block = block.next())
        if (block.text().startsWith(QLatin1String("[State ")) && block.blockNumber() % 2)
            editor.foldBlock(block.blockNumber());
    QTextCursor cursor(text.document->findBlockByNumber(line));
    cursor.movePosition(QTextCursor::EndOfBlock);
    editor.setTextCursor(cursor);
    QApplication::processEvents();

    // A character typed and taken back: the text stays the same from one iteration to the next.
    for (auto _ : state) {
        press(&editor, Qt::Key_A, QStringLiteral("a"));
        QApplication::processEvents();
        press(&editor, Qt::Key_Backspace, QString());
        QApplication::processEvents();
    }
    state.SetItemsProcessed(state.iterations() * 2);
    state.counters["s_per_char"] = benchmark::Counter(
        state.iterations() * 2.0, benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

void BM_TypeNearTop(benchmark::State& state)
{
    typeCharacter(state, 12);
}

void BM_TypeInTheMiddle(benchmark::State& state)
{
    typeCharacter(state, 10011);
}

// The rebuild one second after the last edit: the outline of the whole file, shown in its tree, and the
// issue list. It runs on the main thread between key events, so its longest stretch without a return
// to the event loop is what typing can wait for. Each iteration changes a line, so the work is real.
void BM_IdleRebuild(benchmark::State& state)
{
    QSyntaxTextEditor text(pftStates, nullptr, false, 0x1010000, true);
    text.setPlainText(makeCns(20000));
    QTextEditor editor;
    editor.resize(800, 600);
    editor.setDocument(text.document);
    editor.show();
    QOutlineView outline;
    outline.resize(250, 600);
    outline.setHierarchy(text.hierarchy());
    outline.show();
    text.updateHierarchy();
    QApplication::processEvents();
    double longest = 0;
    for (auto _ : state) {
        state.PauseTiming();
        QTextCursor cursor(text.document->findBlockByNumber(12));
        cursor.insertText(QStringLiteral(" "));
        QApplication::processEvents();
        state.ResumeTiming();
        // Each event loop turn is timed alone: the longest is the stretch typing waits for.
        QElapsedTimer turn;
        turn.start();
        text.updateHierarchy();
        longest = std::max(longest, turn.nsecsElapsed() / 1e6);
        // What the rebuild posted (the tree's layout, the issue list's views) runs in the next turns.
        for (int i = 0; i < 5; ++i) {
            turn.restart();
            QApplication::processEvents();
            longest = std::max(longest, turn.nsecsElapsed() / 1e6);
        }
    }
    state.counters["longest_ms"] = longest;
    state.counters["issues"] = double(text.messages()->count(0) + text.messages()->count(1));
}

} // namespace

BENCHMARK(BM_IdleRebuild)->Unit(benchmark::kMillisecond)->Iterations(20);
BENCHMARK(BM_TypeNearTop)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_TypeInTheMiddle)->Unit(benchmark::kMicrosecond);

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QModelTables tables(QCoreApplication::applicationDirPath() + QStringLiteral("/../../bin"));
    if (!QModelTables::checkers()) return 1;
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
