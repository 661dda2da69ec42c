// Text nobody would write by hand, as a broken tool or an attacker may: nesting far beyond any real
// trigger, lines of megabytes, NUL characters and bytes that aren't UTF-8. The checker must give its
// findings at the right line and carry on, in the editor as in "tavrel-cli lint".

#include "CliRunner.h"
#include "MugenSyntaxTestSupport.h"
#include "QCommand.h"
#include "QCommands.h"
#include "QDefinitions.h"
#include "QMugenController.h"
#include "QTextElementRegistry.h"
#include "QXmlParser.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <QTextCursor>

using namespace MugenSyntaxTest;

namespace {

const QString statePrefix =
    QStringLiteral("[Statedef 200]\ntype = S\n\n[State 200, 1]\ntype = VarSet\ntrigger1 = 1\n");
// The line of the state text that a row's line takes, counted from 0.
const int rowLine = 6;

QString repeated(const char* piece, int count)
{
    return QString::fromLatin1(piece).repeated(count);
}

QString nested(const char* open, const char* inner, const char* close, int count)
{
    return repeated(open, count) + QLatin1String(inner) + repeated(close, count);
}

// Messages whose text begins so; a token's text is cut after 1023 characters.
QList<QSyntaxMessage> beginningWith(const QList<QSyntaxMessage>& messages, const QString& text)
{
    QList<QSyntaxMessage> result;
    for (const QSyntaxMessage& message : messages)
        if (message.text.startsWith(text)) result << message;
    return result;
}

} // namespace

class tst_HostileText : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;

private slots:
    void initTestCase() { registerTextElements(); }
    void cleanupTestCase() { unregisterTextElements(); }

    // Every construct of the expression grammar that nests, far too deep: one finding where the nesting
    // went beyond the bound, and the lines after it are checked as usual.
    void deepNesting_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<int>("column");

        // The bound is met at the 257th level; the columns are those of the token that met it.
        QTest::newRow("50,000 parentheses") << "trigger2 = " + nested("(", "1", ")", 50000) << 11 + 256;
        QTest::newRow("1,000,000 parentheses") << "trigger2 = " + nested("(", "1", ")", 1000000) << 11 + 256;
        QTest::newRow("unclosed parentheses") << "trigger2 = " + repeated("(", 100000) << 11 + 256;
        QTest::newRow("negations") << "trigger2 = " + repeated("!", 100000) + "1" << 11 + 256;
        QTest::newRow("signs and negations") << "trigger2 = " + repeated("-!", 50000) + "1" << 11 + 256;
        QTest::newRow("intervals") << "trigger2 = " + nested("(1,", "1", "]", 50000) << 12 + 3 * 255;
        QTest::newRow("trigger arguments") << "trigger2 = " + nested("var(", "1", ")", 50000) << 11 + 4 * 256;
        QTest::newRow("redirections") << "trigger2 = " + repeated("root,", 50000) + "time" << 11 + 5 * 256;
        QTest::newRow("redirections with an argument")
            << "trigger2 = " + nested("helper(", "1", "),time", 50000) << 11 + 7 * 256;
        QTest::newRow("parameter value") << "v = " + nested("(", "1", ")", 50000) << 4 + 256;
        QTest::newRow("bracketed parameter name")
            << "var(" + nested("(", "1", ")", 50000) + ") = 1" << 4 + 256;
        QTest::newRow("deep and long") << "trigger2 = " + repeated("1+(", 50000) << 14 + 3 * 255;
    }

    void deepNesting()
    {
        QFETCH(QString, line);
        QFETCH(int, column);
        const Checked checked = check(statePrefix + line + QStringLiteral("\nvalue = tme\n"));
        const QList<QSyntaxMessage> messages = checked.messages(rowLine);
        QCOMPARE(messages.size(), 1);
        QCOMPARE(messages.first().kind, int(SyntaxError));
        QCOMPARE(messages.first().text, QStringLiteral("Expression nested too deeply"));
        QCOMPARE(messages.first().start, column);
        QCOMPARE(describe(checked.messages(rowLine + 1)), QStringList{"9:error:Unknown trigger 'tme'"});
        QCOMPARE(describe(checked.messages(rowLine - 1)), QStringList());
    }

    // Nesting that real files have stays silent, right up to the bound.
    void nestingWithinBound_data()
    {
        QTest::addColumn<QString>("line");
        QTest::newRow("parentheses") << "trigger2 = " + nested("(", "1", ")", 255);
        QTest::newRow("trigger arguments") << "trigger2 = " + nested("abs(", "time", ")", 255);
        QTest::newRow("long flat sum") << "trigger2 = " + repeated("1+", 200000) + "1";
    }

    void nestingWithinBound()
    {
        QFETCH(QString, line);
        const Checked checked = check(statePrefix + line + QLatin1Char('\n'));
        QCOMPARE(describe(checked.messages(rowLine)), QStringList());
    }

    // Lines no editor shows in one piece, and characters that aren't text: findings where they belong,
    // none of them a crash.
    void oddLines_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("finding");

        QTest::newRow("identifier of two million letters")
            << "trigger2 = " + repeated("a", 2000000) << "Unknown trigger '" + repeated("a", 1000);
        QTest::newRow("comment of two million characters") << "; " + repeated("x(", 1000000) << QString();
        QTest::newRow("string of two million characters")
            << "trigger2 = command = \"" + repeated("x", 2000000) + "\"" << QString();
        QTest::newRow("unterminated string of two million characters")
            << "trigger2 = command = \"" + repeated("x", 2000000) << QStringLiteral("Unexpected token ''");
        QTest::newRow("tokens far beyond column 65535")
            << "trigger2 = " + repeated("1 + ", 100000) + "tme" << QStringLiteral("Unknown trigger 'tme'");
        QTest::newRow("NUL ends the line")
            << QStringLiteral("trigger2 = time") + QChar(0) + "tme" << QString();
        QTest::newRow("NUL alone") << QString(QChar(0)) << QString();
        QTest::newRow("lone surrogates") << QStringLiteral("trigger2 = ") + QChar(0xd800) + QChar(0xdfff)
                                         << QStringLiteral("Unexpected token '%1'").arg(QChar(0xd800));
        QTest::newRow("replacement characters")
            << QStringLiteral("trigger2 = \uFFFD\uFFFD") << QStringLiteral("Unexpected token '\uFFFD'");
    }

    void oddLines()
    {
        QFETCH(QString, line);
        QFETCH(QString, finding);
        const Checked checked = check(statePrefix + line + QStringLiteral("\nvalue = tme\n"));
        const QList<QSyntaxMessage> messages = checked.messages(rowLine);
        if (finding.isEmpty())
            QCOMPARE(describe(messages), QStringList());
        else
            QVERIFY(!beginningWith(messages, finding).isEmpty());
        for (const QSyntaxMessage& message : messages) {
            QVERIFY(message.start >= 0);
            QVERIFY(message.start <= message.end);
        }
        QCOMPARE(describe(checked.messages(rowLine + 1)), QStringList{"9:error:Unknown trigger 'tme'"});
    }

    // A long run of comment or blank lines before a header: each of its lines folds by the header it leads
    // to, as a short run does, and an edit inside the run is seen by the lines above it.
    void longRuns_data()
    {
        QTest::addColumn<QString>("line");
        QTest::newRow("comments") << QStringLiteral("; commented out");
        QTest::newRow("blank lines") << QString();
    }

    void longRuns()
    {
        QFETCH(QString, line);
        const int count = 50000;
        const QString run = (line + QLatin1Char('\n')).repeated(count);
        const QString text =
            QStringLiteral("[Statedef 0]\ntype = S\n") + run + QStringLiteral("[State 0, 1]\ntype = Null\n");
        const Checked checked = check(text);
        const Checked shortRun = check(QStringLiteral("[Statedef 0]\ntype = S\n") + line + QLatin1Char('\n') +
                                       line + QStringLiteral("\n[State 0, 1]\ntype = Null\n"));
        for (int block : {2, count / 2, count + 1}) {
            QVERIFY(checked.data(block)->preSection);
            QCOMPARE(checked.data(block)->foldLevel, shortRun.data(qMin(block, 3))->foldLevel);
        }
        QCOMPARE(checked.data(count + 2)->foldLevel, shortRun.data(4)->foldLevel);

        // The highlighter follows edits once its first pass has run from the event loop, and a document
        // reports edits only with a layout.
        checked.document->setDocumentLayout(new QElementDocumentLayout(checked.document.get()));
        QCoreApplication::processEvents();
        QTextCursor cursor(checked.block(count / 2));
        cursor.insertText(QStringLiteral("; new\nx = 1\n"));
        QVERIFY(!checked.data(count / 2)->preSection);
        QVERIFY(!checked.data(count / 2 + 1)->preSection);
        QVERIFY(checked.data(count / 2 + 2)->preSection);
    }

    // Brace groups of a vocabulary that would spell billions of keys, or nest without end: the group that
    // goes too far stays text, and a reasonable group beside it still spells its keys.
    void braceGroups_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("keys");
        QTest::addColumn<QString>("key");

        QTest::newRow("reasonable") << "p{1,2}.{bg0,mid}" << 4 << "p2.mid";
        QTest::newRow("two billion numbers") << "p{1,2}.r{0..2000000000}" << 2 << "p1.r{0..2000000000}";
        QTest::newRow("numbers beyond 64 bits") << "r{1..99999999999999999999}" << 0 << "";
        QTest::newRow("forty pairs") << "x" + repeated("{a,b}", 40) << 4096
                                     << "x" + repeated("b", 12) + repeated("{a,b}", 28);
        QTest::newRow("a hundred thousand groups")
            << repeated("{a}", 100000) + "{1,2}" << 2 << repeated("{a}", 100000) + "1";
    }

    void braceGroups()
    {
        QFETCH(QString, name);
        QFETCH(int, keys);
        QFETCH(QString, key);
        const QString path = m_dir.filePath(QStringLiteral("vocabulary.xml"));
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write("<syntax><screen name=\"Round\"><param name=\"" + name.toUtf8() +
                   "\" type=\"int\"/></screen></syntax>");
        file.close();
        QMugenSyntaxProperties vocabulary;
        QVERIFY(vocabulary.load(path));
        QCOMPARE(vocabulary.screens().size(), 1);
        const QMap<QString, QMugenParamInfo>& params = vocabulary.screens().first()->params;
        QCOMPARE(params.size(), keys);
        if (!key.isEmpty()) QVERIFY(params.contains(key));
    }

    // The text of an element whose children nest far deeper than any data file: read whole, and the walk
    // goes on behind it.
    void deepXmlText()
    {
        const int depth = 300000;
        QByteArray bytes = "<shortcuts><text>a" + QByteArray("<b>").repeated(depth) + "c" +
                           QByteArray("</b>").repeated(depth) +
                           "d</text><shortcut keys=\"Ctrl+N\"/></shortcuts>";
        QBuffer buffer(&bytes);
        QXmlParser xml(&buffer);
        QVERIFY(xml.findRoot(QStringLiteral("shortcuts")));
        QVERIFY(xml.nextElement());
        QCOMPARE(xml.text(), QStringLiteral("acd"));
        QVERIFY(xml.nextElement());
        QCOMPARE(xml.attribute(QStringLiteral("keys")), QStringLiteral("Ctrl+N"));
        QCOMPARE(xml.depth(), 2);
        QVERIFY(!xml.hasError());
    }

    // A definitions section of fifty thousand keys binds each key to its section in one pass over them.
    void longSection()
    {
        QDefinitions definitions;
        definitions.setPlainText(QStringLiteral("[Info]\nname = \"x\"\n[Files]\n") +
                                 repeated("sprite = a.sff\n", 50000) + QStringLiteral("anim = a.air\n"));
        QCOMPARE(definitions.files().sprite, QStringLiteral("a.sff"));
        QCOMPARE(definitions.files().animation, QStringLiteral("a.air"));
    }

    // Ten thousand commands load in line order, and one typed in among them takes its place.
    void manyCommands()
    {
        QString text;
        for (int i = 0; i < 10000; ++i)
            text += QStringLiteral("[Command]\nname = \"c%1\"\ncommand = x\n").arg(i);
        QCommands commands;
        commands.setPlainText(text);
        QCOMPARE(commands.count(), 10000);
        QCOMPARE(commands.at(0)->name(), QStringLiteral("c0"));
        QCOMPARE(commands.at(9999)->name(), QStringLiteral("c9999"));
        QTextCursor cursor(commands.document->findBlockByNumber(3 * 5000));
        cursor.insertText(QStringLiteral("[Command]\nname = \"typed\"\n"));
        QCOMPARE(commands.count(), 10001);
        QCOMPARE(commands.at(5000)->name(), QStringLiteral("typed"));
        QCOMPARE(commands.at(5001)->name(), QStringLiteral("c5000"));
    }

    // The command line reads the bytes itself: a file that once overflowed its stack, NULs and bytes that
    // aren't UTF-8 all end in a list of findings.
    void lint_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("finding");

        const QByteArray prefix = statePrefix.toUtf8();
        QTest::newRow("50,000 parentheses")
            << prefix + "trigger2 = " + QByteArray(50000, '(') + "1" + QByteArray(50000, ')') + "\n"
            << QStringLiteral(":7:268: error: Expression nested too deeply");
        QTest::newRow("NUL bytes") << prefix + QByteArray("trigger2 = \0\0tme\nvalue = tme\n", 30)
                                   << QStringLiteral(":8:9: error: Unknown trigger 'tme'");
        QTest::newRow("invalid UTF-8") << prefix + "trigger2 = \xff\xfe\xc3(\x80\x80\nvalue = tme\n"
                                       << QStringLiteral(":8:9: error: Unknown trigger 'tme'");
    }

    void lint()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, finding);
        const QString path = m_dir.filePath(QStringLiteral("hostile.cns"));
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(bytes);
        file.close();
        const CliRunner::Result result = CliRunner::run({QStringLiteral("lint"), path});
        QCOMPARE(result.exitCode, 1);
        QVERIFY2(result.out.contains(path + finding), qPrintable(result.out.left(2000)));
    }
};

QTEST_GUILESS_MAIN(tst_HostileText)
#include "tst_HostileText.moc"
