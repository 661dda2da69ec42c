#include "NameCmmReg.h"
#include "QElementTextEditor.h"
#include "QGroupHeader.h"
#include "QTextElementPool.h"
#include "QTextElementReg.h"
#include "QTextElementType.h"
#include "UnknownGrpReg.h"

#include <QCoreApplication>
#include <QStringList>
#include <QTextCursor>
#include <benchmark/benchmark.h>

// A frame-like line "a, b, c, d, e" and an action-like header "[Begin Action n]": the shapes of an AIR
// file, with its comments and empty lines, without the animation model on top.
class QBenchFrame : public QTextElement
{
public:
    int values[5] = {};
    int type() const override { return etFrame; }
    void release() override { QTextElementPool<QBenchFrame>::release(this); }
    void parse(const QList<QTextToken*>& tokens) override
    {
        for (int i = 0; i < 5; ++i)
            values[i] = tokens.at(i * 2)->text.toInt();
    }
};

class QBenchFrameReg : public QTextElementReg
{
public:
    int type() const override { return etFrame; }
    int firstCharClass() const override { return charClass(2); }
    bool match(int index, const QTextToken& token) override
    {
        if (index < 9) return index % 2 ? token.kind == tkComma : token.kind == tkInteger;
        return true;
    }
    QTextElement* create() override { return QTextElementPool<QBenchFrame>::create(); }
};

class QBenchAction : public QGroupHeader
{
public:
    int number = 0;
    int type() const override { return etAnimation; }
    void release() override
    {
        QGroupHeader::release();
        QTextElementPool<QBenchAction>::release(this);
    }
    void parse(const QList<QTextToken*>& tokens) override { number = tokens.at(3)->text.toInt(); }
};

class QBenchActionReg : public QTextElementReg
{
public:
    int type() const override { return etAnimation; }
    int firstCharClass() const override { return charClass(3, '['); }
    bool match(int index, const QTextToken& token) override
    {
        switch (index) {
        case 0:
            return token.kind == tkLeftBracket;
        case 1:
            return token.kind == tkIdentifier &&
                   token.text.compare(QLatin1String("begin"), Qt::CaseInsensitive) == 0;
        case 2:
            return token.kind == tkIdentifier &&
                   token.text.compare(QLatin1String("action"), Qt::CaseInsensitive) == 0;
        case 3:
            return token.kind == tkInteger;
        case 4:
            return token.kind == tkRightBracket;
        default:
            return true;
        }
    }
    QTextElement* create() override { return QTextElementPool<QBenchAction>::create(); }
};

static QString makeDocument(int lines)
{
    QStringList text;
    for (int action = 0; text.size() < lines; ++action) {
        text << QStringLiteral("; Action %1").arg(action) << QStringLiteral("[Begin Action %1]").arg(action);
        for (int frame = 0; frame < 12 && text.size() < lines; ++frame)
            text << QStringLiteral("%1,%2, 0,0, 5").arg(action).arg(frame);
        text << QString();
    }
    return text.mid(0, lines).join(QLatin1Char('\n'));
}

static void enable(QElementTextEditor& editor)
{
    editor.setTypeEnabled(true, etAnimation, 0);
    editor.setTypeEnabled(true, etFrame, 0);
    editor.setTypeEnabled(true, etNameComment, 0);
    editor.setTypeEnabled(true, etUnknownGroup, 0);
}

// The end of a frame line in the middle of the document.
static int middleFrameEnd(const QElementTextEditor& editor)
{
    QTextBlock block = editor.document->findBlockByNumber(editor.document->blockCount() / 2);
    while (!block.text().endsWith(QLatin1String(", 5")))
        block = block.next();
    return block.position() + block.length() - 1;
}

// One character typed at the end of a frame line and taken back with a backspace: two keystrokes of a
// user, each re-reading its line and telling the listeners.
static void keystrokes(benchmark::State& state, bool connected)
{
    QElementTextEditor editor(connected);
    enable(editor);
    editor.setPlainText(makeDocument(int(state.range(0))));
    int heard = 0;
    QObject::connect(&editor, &QElementTextEditor::update,
                     [&heard](QElementTextEditor*, QList<QTextElementChange>&) { ++heard; });
    QTextCursor cursor(editor.document);
    const int position = middleFrameEnd(editor);
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
    enable(editor);
    editor.setPlainText(makeDocument(int(state.range(0))));
    const int position = middleFrameEnd(editor);
    for (auto _ : state)
        editor.contentsChanged(position, 0, 1);
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_ContentsChangedOneLine)->Arg(1000)->Arg(5000)->Arg(20000);

// Enter in the middle of a frame line and a backspace joining it again: the line loses and regains
// its element, and the join makes the document look for the element of the merged-away line.
static void BM_SplitAndJoin(benchmark::State& state)
{
    QElementTextEditor editor;
    enable(editor);
    editor.setPlainText(makeDocument(int(state.range(0))));
    QTextCursor cursor(editor.document);
    const int position = middleFrameEnd(editor) - 3;
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
    enable(editor);
    for (auto _ : state)
        editor.setPlainText(text);
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_SetPlainText)->Arg(1000)->Arg(20000);

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    QTextElementReg::add(new QBenchActionReg);
    QTextElementReg::add(new QBenchFrameReg);
    QTextElementReg::add(new NameCmmReg);
    QTextElementReg::add(new UnknownGrpReg);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    QTextElementReg::deleteAll();
    QTextElementPools::deleteAll();
    return 0;
}
