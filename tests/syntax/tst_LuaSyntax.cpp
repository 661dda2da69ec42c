// The Lua colourer: colour slots of each span, brackets, the block state of open long brackets, the
// factory's choice of processor and the empty outline.

#include "MugenSyntaxTestSupport.h"

#include "QLuaSyntaxProcessor.h"
#include "QLuaSyntaxProperties.h"
#include "QSyntaxLibrary.h"
#include "QSyntaxProcessorFactory.h"

#include <QSignalSpy>
#include <QTest>

using namespace MugenSyntaxTest;

namespace {

struct Coloured
{
    std::unique_ptr<QTextDocument> document;
    std::unique_ptr<QLuaSyntaxProcessor> processor;
};

Coloured colour(const QString& text)
{
    static QLuaSyntaxProperties vocabulary;
    vocabulary.functions = QStringList{"print", "ipairs"};
    vocabulary.classes = QStringList{"QSprite", "Animation"};
    Coloured coloured;
    coloured.document = std::make_unique<QTextDocument>();
    coloured.document->setPlainText(text);
    coloured.processor = std::make_unique<QLuaSyntaxProcessor>(coloured.document.get(), &vocabulary);
    coloured.processor->rehighlight();
    return coloured;
}

// The coloured spans of a line as "slot:text", in text order.
QStringList spans(const QTextBlock& block)
{
    QStringList out;
    for (const QTextLayout::FormatRange& range : block.layout()->formats()) {
        const int slot = slotOf(range.format);
        if (slot >= 0)
            out << QStringLiteral("%1:%2").arg(slot).arg(block.text().mid(range.start, range.length));
    }
    return out;
}

} // namespace

class tst_LuaSyntax : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { installDistinctFormats(); }

    void colours_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("line");
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("keywords") << "local function f() return nil end" << 0
                                  << QStringList{"3:local", "3:function", "3:return", "3:nil", "3:end"};
        QTest::newRow("keyword case") << "Local END iff" << 0 << QStringList{};
        QTest::newRow("vocabulary") << "print(QSprite, Print, ipairs_, Animation)" << 0
                                    << QStringList{"6:print", "5:QSprite", "5:Animation"};
        QTest::newRow("numbers") << "x = 3 + 0.5e-3 + .25 + 0xFF + 1E5" << 0
                                 << QStringList{"1:3", "1:0.5e-3", "1:.25", "1:0xFF", "1:1E5"};
        QTest::newRow("strings") << "a = \"x\\\"y\" .. 'q' .. \"open" << 0
                                 << QStringList{"2:\"x\\\"y\"", "2:'q'", "2:\"open"};
        QTest::newRow("comment") << "x = 1 -- note print" << 0 << QStringList{"1:1", "0:-- note print"};
        QTest::newRow("long comment on one line")
            << "--[==[ ]] ]==] print(1)" << 0 << QStringList{"0:--[==[ ]] ]==]", "6:print", "1:1"};
        QTest::newRow("long string on one line")
            << "s = [[a]] .. [=[b]]c]=] and 2" << 0 << QStringList{"2:[[a]]", "2:[=[b]]c]=]", "3:and", "1:2"};
        QTest::newRow("long string, first line")
            << "s = [[ first\nprint 'x' 1\nlast]] end" << 0 << QStringList{"2:[[ first"};
        QTest::newRow("long string, later lines as code")
            << "s = [[ first\nprint 'x' 1\nlast]] end" << 1 << QStringList{"6:print", "2:'x'", "1:1"};
        QTest::newRow("long comment, later lines as code")
            << "--[[ a\nwhile true do\n]]" << 1 << QStringList{"3:while", "3:true", "3:do"};
        QTest::newRow("brackets are no long strings") << "t[ [=x ]" << 0 << QStringList{};
    }

    void colours()
    {
        QFETCH(QString, text);
        QFETCH(int, line);
        QFETCH(QStringList, expected);
        const Coloured coloured = colour(text);
        QCOMPARE(spans(coloured.document->findBlockByNumber(line)), expected);
    }

    void blockStates_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QList<int>>("states");
        QTest::newRow("closed spans") << "a = [[x]]\n--[[y]]\nb = 1" << QList<int>{0, 0, 0};
        QTest::newRow("long string") << "a = [==[x\ny\n]==]"
                                     << QList<int>{QLuaSyntaxProcessor::LongStringState | 3, 0, 0};
        QTest::newRow("long comment")
            << "--[[x\ny" << QList<int>{QLuaSyntaxProcessor::LongCommentState | 1, 0};
        QTest::newRow("reopened on a later line")
            << "a = [[x\n[=["
            << QList<int>{QLuaSyntaxProcessor::LongStringState | 1, QLuaSyntaxProcessor::LongStringState | 2};
    }

    void blockStates()
    {
        QFETCH(QString, text);
        QFETCH(QList<int>, states);
        const Coloured coloured = colour(text);
        QList<int> actual;
        for (QTextBlock block = coloured.document->firstBlock(); block.isValid(); block = block.next())
            actual << block.userState();
        QCOMPARE(actual, states);
    }

    void brackets()
    {
        const Coloured coloured = colour(QStringLiteral("f(t[1], \"(\", [[ ] ]]) -- )\n]"));
        const auto* data =
            static_cast<const QTextEditorBlockData*>(coloured.document->firstBlock().userData());
        QStringList found;
        for (const QSyntaxParenthesis& p : data->parentheses)
            found << QStringLiteral("%1%2@%3").arg(p.type).arg(QChar(p.character)).arg(p.position);
        QCOMPARE(found, (QStringList{"0(@1", "0[@3", "1]@5", "1)@20"}));
        const auto* next =
            static_cast<const QTextEditorBlockData*>(coloured.document->lastBlock().userData());
        QCOMPARE(next->parentheses.size(), 1);
        QVERIFY(data->messages.isEmpty());
        QCOMPARE(coloured.processor->errorCount(), 0);
        QCOMPARE(data->foldLevel, 0);
    }

    void factory()
    {
        installSyntaxProcessors();
        QTextDocument document;
        std::unique_ptr<QSyntaxProcessor> processor(QSyntaxProcessorFactory::create(SyntaxLua, &document, 0));
        QVERIFY(dynamic_cast<QLuaSyntaxProcessor*>(processor.get()));
        QCOMPARE(processor->syntaxType(), int(SyntaxLua));
        QCOMPARE(processor->properties(), luaSyntaxProperties());
    }

    void shippedVocabulary()
    {
        QLuaSyntaxProperties vocabulary;
        QVERIFY(vocabulary.load(TestData::binDir() + QStringLiteral("/syntax_lua.xml")));
        QVERIFY(vocabulary.functions.contains(QStringLiteral("ipairs")));
        QVERIFY(!vocabulary.classes.isEmpty());
    }

    void hierarchy()
    {
        const Coloured coloured = colour(QString());
        QSyntaxHierarchy* hierarchy = coloured.processor->hierarchy();
        QSignalSpy updated(hierarchy, &QSyntaxHierarchy::updated);
        hierarchy->update(QStringLiteral("function a()\nend\nlocal function b() end\n[Info]\nname = 1\n"));
        QCOMPARE(updated.count(), 1);
        QCOMPARE(hierarchy->rowCount(), 0);
        QVERIFY(!hierarchy->index(0, 0).isValid());
        QVERIFY(!hierarchy->indexForLine(0).isValid());
        QVERIFY(!hierarchy->sectionExists(QStringLiteral("Info")));
        QCOMPARE(hierarchy->findValue(QStringLiteral("Info"), QStringLiteral("name")), QString());
    }
};

QTEST_MAIN(tst_LuaSyntax)
#include "tst_LuaSyntax.moc"
