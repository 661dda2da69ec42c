// The M.U.G.E.N. checker on texts written for the purpose: seeded mistakes with their exact messages and
// columns, the grammar's corner cases, versions and deprecation, re-checking after an edit, and golden
// files of states, colours and messages.

#include "MugenSyntaxTestSupport.h"

#include "QSyntaxLibrary.h"
#include "QSyntaxProcessorFactory.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>
#include <QTextCursor>

using namespace MugenSyntaxTest;

namespace {

// Counts the blocks Qt hands to the checker.
class CountingProcessor : public QMugenSyntaxProcessor
{
public:
    using QMugenSyntaxProcessor::QMugenSyntaxProcessor;
    int calls = 0;

protected:
    void highlightBlock(const QString& text) override
    {
        ++calls;
        QMugenSyntaxProcessor::highlightBlock(text);
    }
};

const char* const testVocabulary = R"(<?xml version="1.0"?>
<syntax>
  <state_controller name="Exact" minver="1.0">
    <param name="count" type="intn"/>
    <param name="fresh" type="int" minver="1.1"/>
    <param name="stale" type="int" deprecated="1.0"/>
  </state_controller>
  <state_controller name="Old" deprecated="1.0"/>
  <state_controller name="Always" deprecated="someday"/>
  <state_controller name="Newer" minver="1.1.0.1"/>
  <trigger name="Fresh" minver="1.1"/>
  <trigger name="Stale" deprecated="1.0"/>
  <trigger name="Time"/>
</syntax>
)";

const QString statePrefix = QStringLiteral("[Statedef 200]\ntype = S\n\n[State 200, 1]\n");

} // namespace

class tst_MugenSyntax : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;
    QMugenSyntaxProperties m_testVocabulary;

    static QString goldenDir() { return QFileInfo(QFINDTESTDATA("golden/regenerate.sh")).absolutePath(); }

private slots:
    void initTestCase()
    {
        installDistinctFormats();
        QVERIFY2(!shippedVocabulary()->stateControllers().isEmpty(), "the shipped vocabulary didn't load");
        QFile file(m_dir.filePath(QStringLiteral("vocabulary.xml")));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(testVocabulary);
        file.close();
        QVERIFY(m_testVocabulary.load(file.fileName()));
    }

    // One line of a text and every message it carries, as "column:kind:text".
    void lineMessages_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("line");
        QTest::addColumn<QStringList>("expected");

        const int controllerLine = 5;
        auto inState = [](const QString& controller, const QString& line) {
            return statePrefix + QStringLiteral("type = %1\ntrigger1 = 1\n%2\n").arg(controller, line);
        };
        // Seeded mistakes.
        QTest::newRow("unknown controller")
            << statePrefix + "type = ChangeStat\n"
            << 4
            << QStringList{"8:error:Unknown 'State' type", "8:error:Syntax error - code ends before line"};
        QTest::newRow("unknown parameter")
            << inState("ChangeState", "valu = 200") << controllerLine + 1
            << QStringList{"1:error:Unknown parameter 'valu' for the 'ChangeState' controller"};
        QTest::newRow("trigger with a bad constant")
            << statePrefix + "type = Null\ntrigger1 = const(size.heigth) > 1\n"
            << 5 << QStringList{"18:error:Unknown constant 'size.heigth'"};
        QTest::newRow("trigger with a bad value") << statePrefix + "type = Null\ntrigger1 = statetype = Q\n"
                                                  << 5 << QStringList{"24:error:Unknown value"};
        QTest::newRow("unknown trigger") << statePrefix + "type = Null\ntrigger1 = tme > 1\n"
                                         << 5 << QStringList{"12:error:Unknown trigger 'tme'"};
        QTest::newRow("unclosed parenthesis") << statePrefix + "type = Null\ntrigger1 = (time > 1\n"
                                              << 5 << QStringList{"21:error:Unexpected token ''"};
        QTest::newRow("extra parenthesis")
            << statePrefix + "type = Null\ntrigger1 = time > 1)\n"
            << 5 << QStringList{"20:error:Syntax error - code ends before line"};
        QTest::newRow("missing ] of a section")
            << QStringLiteral("[Data\nlife = 1000\n") << 0 << QStringList{"6:error:Invalid group"};
        QTest::newRow("missing ] of a StateDef")
            << QStringLiteral("[Statedef 200\n") << 0
            << QStringList{"14:error:Invalid group", "14:error:Wrong StateDef"};
        QTest::newRow("space after State") << statePrefix + "type = Null\n[State,1]\n"
                                           << 5 << QStringList{"9:error:Space required after State"};
        QTest::newRow("State glued to its number")
            << QStringLiteral("[State0]\n") << 0 << QStringList{"8:error:Invalid group"};
        QTest::newRow("controller newer than 1.0 at 1.1") << statePrefix + "type = Zoom\n"
                                                          << 4 << QStringList{};
        QTest::newRow("deprecated parameter")
            << inState("PlaySnd", "value = F5, 2\nvolume = -40") << controllerLine + 2
            << QStringList{"1:warning:Parameter deprecated in the M.U.G.E.N 1.0"};
        QTest::newRow("deprecated trigger")
            << statePrefix + "type = Null\ntrigger1 = timemod = 4, 3\n"
            << 5 << QStringList{"12:warning:Trigger deprecated in the M.U.G.E.N 1.0"};

        // Expressions.
        QTest::newRow("assignment and not")
            << inState("Null", "trigger2 = time = 1 & !var(1) && (var(1) := 2)") << controllerLine + 1
            << QStringList{};
        QTest::newRow("closed interval")
            << inState("Null", "trigger2 = anim = [1,5]") << controllerLine + 1 << QStringList{};
        QTest::newRow("half open interval")
            << inState("Null", "trigger2 = anim != (1,5]") << controllerLine + 1 << QStringList{};
        QTest::newRow("unclosed interval") << inState("Null", "trigger2 = anim = [1,5") << controllerLine + 1
                                           << QStringList{"23:error:Unexpected token ''"};
        QTest::newRow("redirects") << inState("Null", "trigger2 = helper(1),time > root,time + enemy,life")
                                   << controllerLine + 1 << QStringList{};
        QTest::newRow("redirect without comma")
            << inState("Null", "trigger2 = root time") << controllerLine + 1
            << QStringList{"17:error:Unexpected token 'time'", "21:error:Unexpected token ''",
                           "21:error:Unknown trigger ''"};
        QTest::newRow("tilde is no trigger")
            << inState("Null", "trigger2 = ~1") << controllerLine + 1
            << QStringList{"12:error:Unexpected token '~'", "12:error:Unknown trigger '~'",
                           "13:error:Syntax error - code ends before line"};
        QTest::newRow("operator at the end")
            << inState("ChangeState", "value = 1 +") << controllerLine + 1
            << QStringList{"12:error:Unexpected token ''", "12:error:Unknown trigger ''"};
        QTest::newRow("hit attributes joined")
            << inState("Null", "trigger2 = hitdefattr = SC, NA, SA && time") << controllerLine + 1
            << QStringList{};
        QTest::newRow("animelem with comparison")
            << inState("Null", "trigger2 = animelem = 2, >= 0") << controllerLine + 1 << QStringList{};
        QTest::newRow("projectile hit with number")
            << inState("Null", "trigger2 = projhit1200 = 1, < 5") << controllerLine + 1 << QStringList{};
        QTest::newRow("command string")
            << inState("Null", "trigger2 = command != \"holdfwd\"") << controllerLine + 1 << QStringList{};

        // Parameter values.
        QTest::newRow("sound group glued")
            << inState("HitDef", "hitsound = S1,2") << controllerLine + 1 << QStringList{};
        QTest::newRow("no sound") << inState("HitDef", "hitsound = -1") << controllerLine + 1
                                  << QStringList{};
        QTest::newRow("sound of the common file")
            << inState("PlaySnd", "value = F5, 2") << controllerLine + 1 << QStringList{};
        QTest::newRow("sound with a wrong prefix")
            << inState("PlaySnd", "value = S1,2") << controllerLine + 1
            << QStringList{"9:notice:This parameter requires 2 value(s)"};
        QTest::newRow("value list with pattern")
            << inState("HitDef", "attr = S, NA") << controllerLine + 1 << QStringList{};
        QTest::newRow("value list wrong") << inState("HitDef", "attr = S, QQ") << controllerLine + 1
                                          << QStringList{"8:error:Unknown parameter value 's,qq'"};
        QTest::newRow("expression list short")
            << inState("Explod", "pos = 10") << controllerLine + 1 << QStringList{};
        QTest::newRow("three expressions short")
            << inState("EnvColor", "value = 255, 255") << controllerLine + 1
            << QStringList{"9:notice:This parameter requires 3 value(s)"};
        QTest::newRow("idexp parameter")
            << inState("VarSet", "var(3) = 1") << controllerLine + 1 << QStringList{};
        QTest::newRow("idexp parameter with bad index")
            << inState("VarSet", "var(tme) = 1") << controllerLine + 1
            << QStringList{"1:error:Unknown parameter 'var' for the 'VarSet' controller",
                           "5:error:Unknown trigger 'tme'"};
        QTest::newRow("null takes anything")
            << inState("Null", "whatever = ]]") << controllerLine + 1 << QStringList{};
        QTest::newRow("unterminated string")
            << QStringLiteral("[Info]\nname = \"kfm\n") << 1 << QStringList{"12:error:Unexpected token ''"};

        // Sections and the other grammars.
        QTest::newRow("trailing text of a header")
            << QStringLiteral("[Data] x  y\n") << 0
            << QStringList{"8:error:Syntax error - code ends before line"};
        QTest::newRow("remap") << QStringLiteral("[Remap]\nx = y\n") << 1 << QStringList{};
        QTest::newRow("remap unknown name")
            << QStringLiteral("[Remap]\nq = y\n") << 1
            << QStringList{"1:error:Unknown 'Remap' parameter", "1:error:Unexpected token 'q'"};
        QTest::newRow("frame with empty flip")
            << QStringLiteral("[Begin Action 0]\n0,0, 0,0, 5, , A\n") << 1 << QStringList{};
        QTest::newRow("frame with scale and angle")
            << QStringLiteral("[Begin Action 0]\n0,0, 0,0, 5, H, AS128D128, 1.5, .5, -45\n") << 1
            << QStringList{};
        QTest::newRow("frame with bad flip") << QStringLiteral("[Begin Action 0]\n0,0, 0,0, 5, X\n") << 1
                                             << QStringList{"14:error:Unknown flip type"};
        QTest::newRow("collision box")
            << QStringLiteral("[Begin Action 0]\nClsn2[0] = -10, 0, 10, -79\n") << 1 << QStringList{};
        QTest::newRow("bad interpolation") << QStringLiteral("[Begin Action 0]\nInterpolate Size\n") << 1
                                           << QStringList{"13:error:Unknown interpolation"};
        QTest::newRow("command keys")
            << QStringLiteral("[Command]\ncommand = ~30$B, /$F, >~D, a+b\n") << 1 << QStringList{};
        QTest::newRow("command key repeated")
            << QStringLiteral("[Command]\ncommand = ~F, //x, y\n") << 1
            << QStringList{"15:error:Unknown command key", "18:error:Syntax error - code ends before line"};
        QTest::newRow("command key after $") << QStringLiteral("[Command]\ncommand = $x\n") << 1
                                             << QStringList{"11:error:Unknown command key"};
        QTest::newRow("statedef value") << QStringLiteral("[Statedef 0]\ntype = Q\n") << 1
                                        << QStringList{"8:error:Unknown 'StateDef type' value 'Q'"};
        QTest::newRow("type line in data")
            << QStringLiteral("[Data]\ntype = S\n") << 1
            << QStringList{"8:error:Unknown 'State' type", "8:error:Syntax error - code ends before line"};
        QTest::newRow("language prefix")
            << QStringLiteral("[en.Quotes]\nvictory1 = \"Yes\"\n") << 1 << QStringList{};
        QTest::newRow("info version")
            << QStringLiteral("[Info]\nmugenversion = 04,14,2001\n") << 1 << QStringList{};
        QTest::newRow("group requires two") << QStringLiteral("[Size]\ndraw.offset = 1\n") << 1
                                            << QStringList{"15:notice:This parameter requires 2 value(s)"};

        // Sections of screens, select definitions and backgrounds, named by the vocabulary.
        QTest::newRow("screen component")
            << QStringLiteral("[Select Info]\np2.teammenu.item.active2.font = 3,1,-1\n") << 1
            << QStringList{};
        QTest::newRow("screen family in any case")
            << QStringLiteral("[simul  LIFEBAR]\np4.Front.Scale = 1,.5\n") << 1 << QStringList{};
        QTest::newRow("screen key of another screen")
            << QStringLiteral("[Title Info]\np1.face.spr = 9000,0\n") << 1
            << QStringList{"1:error:Unknown parameter 'p1.face.spr' for the 'Title Info' controller"};
        QTest::newRow("element the component doesn't take")
            << QStringLiteral("[Powerbar]\nlevel1.anim = 5\n") << 1
            << QStringList{"1:error:Unknown parameter 'level1.anim' for the 'Powerbar' controller"};
        QTest::newRow("player beyond the screen's")
            << QStringLiteral("[Lifebar]\np3.pos = 1,2\n") << 1
            << QStringList{"1:error:Unknown parameter 'p3.pos' for the 'Lifebar' controller"};
        QTest::newRow("screen value kind") << QStringLiteral("[Round]\nround3.snd = 0\n") << 1
                                           << QStringList{"14:notice:This parameter requires 2 value(s)"};
        QTest::newRow("screen value pattern") << QStringLiteral("[Victory Screen]\nwinquote.textwrap = x\n")
                                              << 1 << QStringList{"21:error:Unknown parameter value 'x'"};
        QTest::newRow("unknown screen")
            << QStringLiteral("[Title Infos]\n") << 0 << QStringList{"13:error:Invalid group"};
        QTest::newRow("free text section")
            << QStringLiteral("[Characters]\nkfm, stages/kfm.def, order=1\n") << 1 << QStringList{};
        QTest::newRow("language prefix of a text section")
            << QStringLiteral("[ja.Infobox Text]\n* (1.1) [x] = y\n") << 1 << QStringList{};
        QTest::newRow("screen background")
            << QStringLiteral("[SelectBG 0.A]\ntype = normal\nmask = 1\n") << 2 << QStringList{};
        QTest::newRow("screen background with a blank")
            << QStringLiteral("[Title BG 0]\ntype = parallax\n") << 1 << QStringList{};
        QTest::newRow("storyboard background controller")
            << QStringLiteral("[BG0Ctrl Stop scrolling]\ntype = VelSet\ny = 0\n") << 2 << QStringList{};
        QTest::newRow("background key above its type")
            << QStringLiteral("[BG0 Credits]\nid = 1\ntype = normal\n") << 1 << QStringList{};
        QTest::newRow("unknown background key above its type")
            << QStringLiteral("[BG Wall]\nidd = 1\n") << 1
            << QStringList{"1:error:Syntax error - code ends before line"};
    }

    void lineMessages()
    {
        QFETCH(QString, text);
        QFETCH(int, line);
        QFETCH(QStringList, expected);
        const Checked checked = check(text);
        expected.sort();
        QCOMPARE(describe(checked.messages(line)), expected);
    }

    // minver and deprecated: "1.0" is valid from 0x1000000 on, a deprecation that isn't a version
    // counts in every project, and intn without max takes one value.
    void versions_data()
    {
        QTest::addColumn<QString>("lines");
        QTest::addColumn<uint>("version");
        QTest::addColumn<QStringList>("expected");

        const QString invalid =
            QStringLiteral("8:error:Controller invalid for the M.U.G.E.N. version of the current project");
        QTest::newRow("minver 1.0 at 1.0") << "type = Exact" << 0x1000000u << QStringList{};
        QTest::newRow("minver 1.0 at 0.9") << "type = Exact" << 0x0090000u << QStringList{invalid};
        QTest::newRow("minver 1.1.0.1 at 1.1") << "type = Newer" << 0x1010000u << QStringList{invalid};
        QTest::newRow("minver 1.1.0.1 at 1.1.0.1") << "type = Newer" << 0x1010001u << QStringList{};
        QTest::newRow("deprecated at its version")
            << "type = Old" << 0x1000000u
            << QStringList{"8:warning:State controller deprecated in the M.U.G.E.N 1.0"};
        QTest::newRow("deprecated before its version") << "type = Old" << 0x0090000u << QStringList{};
        QTest::newRow("deprecated by no version")
            << "type = Always" << 0x0010000u
            << QStringList{"8:warning:State controller deprecated in the M.U.G.E.N someday"};
        QTest::newRow("intn without max takes one")
            << "type = Exact\ncount = 1, 2" << 0x1010000u
            << QStringList{"10:error:Syntax error - code ends before line"};
        QTest::newRow("parameter too new")
            << "type = Exact\nfresh = 1" << 0x1000000u
            << QStringList{"1:error:Parameter invalid for the M.U.G.E.N. version of the current project",
                           "7:error:Syntax error - code ends before line"};
        QTest::newRow("parameter deprecated")
            << "type = Exact\nstale = 1" << 0x1010000u
            << QStringList{"1:warning:Parameter deprecated in the M.U.G.E.N 1.0"};
        QTest::newRow("trigger too new")
            << "type = Exact\ntrigger1 = fresh" << 0x1000000u
            << QStringList{"12:error:Trigger invalid for the M.U.G.E.N. version of the current project"};
        QTest::newRow("trigger deprecated")
            << "type = Exact\ntrigger1 = stale && time" << 0x1000000u
            << QStringList{"12:warning:Trigger deprecated in the M.U.G.E.N 1.0"};
    }

    void versions()
    {
        QFETCH(QString, lines);
        QFETCH(uint, version);
        QFETCH(QStringList, expected);
        const Checked checked = check(QStringLiteral("[State 0, 1]\n") + lines, version, &m_testVocabulary);
        const int last = checked.document->blockCount() - 1;
        expected.sort();
        QCOMPARE(describe(checked.messages(last)), expected);
    }

    // Changing the version checks the whole text again; with checking off only errors vanish.
    void versionChangeAndChecking()
    {
        Checked checked = check(QStringLiteral("[State 0, 1]\ntype = Old\n[State 0, 2]\ntype = Newer\n"),
                                0x1000000, &m_testVocabulary);
        QCOMPARE(checked.processor->errorCount(), 1);
        QCOMPARE(checked.messages(1).size(), 1);
        checked.processor->setMugenVersion(0x1010001);
        QCOMPARE(checked.processor->errorCount(), 0);

        const Checked quiet = check(QStringLiteral("[State 0, 1]\ntype = Old\n[State 0, 2]\ntype = Newer\n"),
                                    0x1000000, &m_testVocabulary, false);
        QCOMPARE(quiet.processor->errorCount(), 0);
        QCOMPARE(describe(quiet.messages(1)),
                 QStringList{"8:warning:State controller deprecated in the M.U.G.E.N 1.0"});
        QVERIFY(quiet.messages(3).isEmpty());
    }

    void underlines()
    {
        const Checked checked = check(statePrefix + "type = Null\ntrigger1 = tme\n");
        const QList<QTextLayout::FormatRange> ranges = checked.block(5).layout()->formats();
        bool underlined = false;
        for (const QTextLayout::FormatRange& range : ranges) {
            if (range.start != 11) continue;
            QCOMPARE(range.length, 3);
            QCOMPARE(range.format.underlineStyle(), QTextCharFormat::SpellCheckUnderline);
            QCOMPARE(range.format.underlineColor(), QColor(Qt::red));
            underlined = true;
        }
        QVERIFY(underlined);
    }

    void parenthesesAndFolding()
    {
        const Checked checked =
            check(statePrefix +
                  "type = Null\ntrigger1 = (var(1) = [1,2]) ; (not this)\n\n[Statedef 201]\ntype = S\n");
        const QList<QSyntaxParenthesis> brackets = checked.data(5)->parentheses;
        QCOMPARE(brackets.size(), 6);
        QCOMPARE(brackets.at(0).character, int('('));
        QCOMPARE(brackets.at(0).position, 11);
        QCOMPARE(brackets.at(3).character, int('['));
        QCOMPARE(brackets.at(5).type, int(QSyntaxParenthesis::Closing));

        // Levels: StateDef 0, its lines 1, the State 1, its lines 2, back to 0 at the next StateDef.
        QList<int> levels;
        for (int line = 0; line < checked.document->blockCount(); ++line)
            levels << checked.data(line)->foldLevel;
        QCOMPARE(levels, (QList<int>{0, 1, 1, 1, 2, 2, 0, 0, 1, 1}));
        QVERIFY(checked.data(0)->header);
        QVERIFY(checked.data(6)->preSection);
        QVERIFY(!checked.data(5)->preSection);
    }

    // Typing re-checks the edited line, and goes on only while the state after a line changes.
    void incremental()
    {
        QTextDocument document;
        QString text = statePrefix + "type = VelSet\ntrigger1 = time > 1\nx = 1\n\n";
        for (int i = 2; i < 50; ++i)
            text += QStringLiteral("[State 200, %1]\ntype = VelSet\ntrigger1 = 1\nx = %1\n\n").arg(i);
        document.setPlainText(text);
        document.setDocumentLayout(new QElementDocumentLayout(&document));
        CountingProcessor processor(&document, shippedVocabulary());
        // The first pass is Qt's own, queued when the processor was set on the document.
        QCoreApplication::processEvents();
        QCOMPARE(processor.calls, document.blockCount());

        auto cursorAt = [&document](int line, int column) {
            QTextCursor cursor(document.findBlockByNumber(line));
            cursor.setPosition(cursor.position() + column);
            return cursor;
        };
        auto messagesOf = [&document](int line) {
            return describe(QTextEditorBlockData::of(document.findBlockByNumber(line))->messages);
        };
        processor.calls = 0;
        cursorAt(6, 5).insertText(QStringLiteral("0 + tme"));
        QCOMPARE(processor.calls, 1);
        QCOMPARE(messagesOf(6), QStringList{"10:error:Unknown trigger 'tme'"});

        // An unknown controller changes the state of the type line and of the lines below it, up to the
        // next header, which ends the run since its own state stays.
        processor.calls = 0;
        QTextCursor cursor = cursorAt(4, 10);
        cursor.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
        cursor.removeSelectedText();
        QCOMPARE(processor.calls, 5);
        QCOMPARE(document.findBlockByNumber(6).userState(), int(MugenStateInvalidType));
        QCOMPARE(messagesOf(6), QStringList{"1:error:Syntax error - code ends before line"});

        processor.calls = 0;
        cursorAt(4, 10).insertText(QStringLiteral("Add"));
        QCOMPARE(processor.calls, 5);
        QCOMPARE(messagesOf(6), QStringList{"10:error:Unknown trigger 'tme'"});

        processor.calls = 0;
        cursorAt(5, 19).insertText(QStringLiteral("0"));
        QCOMPARE(processor.calls, 1);
    }

    void factory()
    {
        installSyntaxProcessors();
        QTextDocument document;
        std::unique_ptr<QSyntaxProcessor> mugen(
            QSyntaxProcessorFactory::create(SyntaxMugen, &document, 0x1000000));
        QVERIFY(qobject_cast<QMugenSyntaxProcessor*>(mugen.get()));
        QCOMPARE(mugen->mugenVersion(), 0x1000000u);
        QVERIFY(mugen->isChecking());
        mugen.reset();
        std::unique_ptr<QSyntaxProcessor> none(
            QSyntaxProcessorFactory::create(SyntaxNone, &document, 0x1000000));
        QVERIFY(!qobject_cast<QMugenSyntaxProcessor*>(none.get()));
        QCOMPARE(none->syntaxType(), int(SyntaxNone));
    }

    // Each golden input is checked and written out block by block: state, fold level, colour spans and
    // messages. TAVREL_REGENERATE_GOLDEN=1 (see golden/regenerate.sh) rewrites the expected files.
    void golden_data()
    {
        QTest::addColumn<QString>("input");
        const QDir dir(goldenDir());
        const QStringList inputs =
            dir.entryList({"*.cns", "*.cmd", "*.air", "*.def"}, QDir::Files, QDir::Name);
        QVERIFY(!inputs.isEmpty());
        for (const QString& input : inputs)
            QTest::newRow(qPrintable(input)) << dir.filePath(input);
    }

    void golden()
    {
        QFETCH(QString, input);
        QFile file(input);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const Checked checked = check(QString::fromUtf8(file.readAll()));
        const QString actual = goldenText(checked);
        const QString expectedPath = input + QStringLiteral(".expected");
        if (qEnvironmentVariableIntValue("TAVREL_REGENERATE_GOLDEN")) {
            QFile out(expectedPath);
            QVERIFY(out.open(QIODevice::WriteOnly | QIODevice::Truncate));
            out.write(actual.toUtf8());
            return;
        }
        QFile expectedFile(expectedPath);
        QVERIFY2(expectedFile.open(QIODevice::ReadOnly), qPrintable(expectedPath));
        const QStringList expected = QString::fromUtf8(expectedFile.readAll()).split(QLatin1Char('\n'));
        const QStringList lines = actual.split(QLatin1Char('\n'));
        for (int i = 0; i < qMin(expected.size(), lines.size()); ++i)
            QCOMPARE(lines.at(i), expected.at(i));
        QCOMPARE(lines.size(), expected.size());
    }

private:
    static QString goldenText(const Checked& checked)
    {
        static const char slotNames[] = "0123456789";
        QString out;
        for (QTextBlock block = checked.document->firstBlock(); block.isValid(); block = block.next()) {
            const auto* data = static_cast<const QTextEditorBlockData*>(block.userData());
            out += QStringLiteral("%1 state=%2 fold=%3%4%5 | %6\n")
                       .arg(block.blockNumber() + 1)
                       .arg(block.userState())
                       .arg(data->foldLevel)
                       .arg(data->header ? QStringLiteral(" header") : QString())
                       .arg(data->preSection ? QStringLiteral(" pre") : QString())
                       .arg(block.text());
            QStringList spans;
            for (const QTextLayout::FormatRange& range : block.layout()->formats()) {
                const int slot = slotOf(range.format);
                QString span = QStringLiteral("%1+%2:").arg(range.start).arg(range.length);
                span += slot < 0 ? QLatin1Char('-') : QLatin1Char(slotNames[slot]);
                if (range.format.underlineStyle() == QTextCharFormat::SpellCheckUnderline) {
                    const QColor color = range.format.underlineColor();
                    span += color == QColor(Qt::red)       ? QStringLiteral("/e")
                            : color == QColor(255, 127, 0) ? QStringLiteral("/w")
                                                           : QStringLiteral("/n");
                }
                spans << span;
            }
            if (!spans.isEmpty())
                out += QStringLiteral("    spans ") + spans.join(QLatin1Char(' ')) + QLatin1Char('\n');
            for (const QSyntaxMessage& message : data->messages)
                out += QStringLiteral("    %1 %2-%3 %4\n")
                           .arg(kindName(message.kind))
                           .arg(message.start)
                           .arg(message.end)
                           .arg(message.text);
        }
        return out;
    }
};

QTEST_GUILESS_MAIN(tst_MugenSyntax)
#include "tst_MugenSyntax.moc"
