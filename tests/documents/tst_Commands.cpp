// QCommands: command sections, their steps, the list for the organizer, and the operations that
// rewrite the text of a command file.

#include "ParamTestSupport.h"
#include "QCommandsOrg.h"
#include "QDialogRecorder.h"
#include "QTextEncoding.h"
#include "TestData.h"
#include "TestElements.h"

#include <QRandomGenerator>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTextCodec>

#include <functional>

using CommandsEdit = std::function<void(QCommands&)>;
Q_DECLARE_METATYPE(CommandsEdit)

class tst_Commands : public QObject
{
    Q_OBJECT

    QTemporaryDir dir;

    static QStringList names(const QCommands& commands)
    {
        QStringList list;
        for (const QCommand* command : commands.commands)
            list << command->name();
        return list;
    }

    // "a,b" from the steps of one line: keys, modifiers and time of each step.
    static QString describeSteps(const QList<QCommandStep>& steps)
    {
        QStringList list;
        for (const QCommandStep& step : steps)
            list << QStringLiteral("%1/%2/%3").arg(step.keys).arg(step.modifiers).arg(step.time);
        return list.join(QLatin1Char(' '));
    }

private Q_SLOTS:
    void initTestCase() { registerTextElements(); }
    void cleanupTestCase() { unregisterTextElements(); }

    void steps_data();
    void steps();
    void sections_data();
    void sections();
    void operations_data();
    void operations();
    void organizerFollowsTyping();
    void settersWriteTheirLine();
    void realFiles_data();
    void realFiles();
    void randomEdits_data();
    void randomEdits();
};

void tst_Commands::steps_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("steps");
    QTest::addColumn<QString>("written");
    // The value of a "command =" line.
    auto row = [](const char* name, const char* value, const char* steps, const char* written) {
        QTest::newRow(name) << value << steps << written;
    };
    row("release and diagonal", "~D, DF, F, x", "2/2/0 10/0/0 8/0/0 128/0/0", "~D, DF, F, x");
    row("hold and button", "/F+a", "24/1/0 ", "/F+a");
    row("release time and any direction", "~20$B, $F, x+y", "4/6/20 8/4/0 384/0/0", "~$B, $F, x+y");
    row("time written after hold only", "~30a", "16/2/30", "~a");
    row("hold with time", "~30/a", "16/3/30", "/30~a");
    row("nothing between", ">~F, >a+b+c", "8/10/0 112/8/0", "~>F, >a+b+c");
    row("all diagonals", "UB, UF, DB, DF", "5/0/0 9/0/0 6/0/0 10/0/0", "UB, UF, DB, DF");
    row("words are case-sensitive", "f, X, s, start", "0/0/0 0/0/0 1024/0/0 0/0/0", ", , s, ");
    row("empty", "", "0/0/0", "");
    row("trailing comma", "a,", "16/0/0 0/0/0", "a, ");
    row("comment", "a ; b, c", "16/0/0", "a");
}

void tst_Commands::steps()
{
    QFETCH(QString, line);
    QFETCH(QString, steps);
    QCommands commands;
    commands.setPlainText(QStringLiteral("[Command]\nname = \"n\"\ncommand = ") + line);
    QCOMPARE(commands.count(), 1);
    const QCommandParam* param = commands.at(0)->commandParam();
    QVERIFY(param);
    QCOMPARE(describeSteps(param->steps).trimmed(), steps.trimmed());
    QTEST(commands.at(0)->command(), "written");
    QCOMPARE(commands.at(0)->length(), int(param->steps.size()));
    QCOMPARE(describeSteps(QCommandParam::parseSteps(QLatin1Char(' ') + line)), describeSteps(param->steps));
}

void tst_Commands::sections_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<QString>("summary");

    QTest::newRow("plain") << "[Command]\nname = \"a\"\ncommand = x\n[Command]\nname = \"b\""
                           << QStringList{"a", "b"} << "2, Unique commands: 2";
    QTest::newRow("no name line") << "[Command]\ncommand = x" << QStringList{""} << "1, Unique commands: 1";
    QTest::newRow("same name twice") << "[command]\nname = \"x\"\n[COMMAND] ;c\nname = \"x\""
                                     << QStringList{"x", "x"} << "2, Unique commands: 1";
    QTest::newRow("defaults between")
        << "[Command]\nname = \"a\"\n[Defaults]\nname = \"z\"\ncommand.time = 15" << QStringList{"a"}
        << "1, Unique commands: 1";
    QTest::newRow("states after") << "[Command]\nname = \"a\"\n[Statedef -1]\n[State -1, x]\nname = \"q\"\n"
                                     "trigger1 = command = \"a\""
                                  << QStringList{"a"} << "1, Unique commands: 1";
    QTest::newRow("not a command") << "[Command 2]\nname = \"a\"\n[Commands]" << QStringList()
                                   << "0, Unique commands: 0";
    QTest::newRow("first name counts")
        << "[Command]\nname = \"a\"\nname = \"b\"" << QStringList{"a"} << "1, Unique commands: 1";
}

void tst_Commands::sections()
{
    QFETCH(QString, text);
    QCommands commands;
    commands.setPlainText(text);
    QTEST(names(commands), "names");
    QTEST(commands.summary(), "summary");
    QCOMPARE(commands.organizer->rowCount(), commands.count());
    QCOMPARE(checkParamBinding(commands), QString());
}

void tst_Commands::operations_data()
{
    QTest::addColumn<CommandsEdit>("edit");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");

    const QString a = QStringLiteral("[Command]\nname = \"a\"");
    const QString three = QStringLiteral(
        "; one\n[Command]\nname = \"c\"\n\n[Command]\nname = \"a\"\n\n[Command]\nname = \"b\"\n");
    const QString c = QStringLiteral("; one\n[Command]\nname = \"c\"\n\n");
    const QString a2 = QStringLiteral("[Command]\nname = \"a\"\n\n");
    const QString b = QStringLiteral("[Command]\nname = \"b\"\n");
    auto row = [](const char* name, const QString& text, const QString& expected, CommandsEdit edit) {
        QTest::newRow(name) << edit << text << expected;
    };
    // Moves and the organizer rewrite the text in one edit.
    auto once = [](std::function<void(QCommands&)> edit) {
        return [edit](QCommands& commands) {
            QSignalSpy updated(&commands, &QElementTextEditor::updated);
            edit(commands);
            QCOMPARE(updated.count(), 1);
        };
    };
    row("add", a, a + "\n[Command]\n", [](QCommands& m) { QVERIFY(m.add() == m.commands.last()); });
    row("add to empty", "", "[Command]\n", [](QCommands& m) { QVERIFY(m.add() == m.commands.last()); });
    row("insert", three, c + "[Command]\n" + a2 + b, [](QCommands& m) { QVERIFY(m.insert(1)); });
    row("insert first", three, "[Command]\n" + three, [](QCommands& m) { QVERIFY(m.insert(0)); });
    row("insert beyond", three, three + "[Command]\n", [](QCommands& m) { QVERIFY(m.insert(9)); });
    row("remove", three, c + b, [](QCommands& m) { m.remove(1); });
    row("remove first with its comment", three, a2 + b, [](QCommands& m) { m.remove(0); });
    row("move down", three, a2 + c + b, once([](QCommands& m) { m.move(0, 1); }));
    row("move to end", three, a2 + b + c, once([](QCommands& m) { m.move(0, 2); }));
    row("move up", three, b + c + a2, once([](QCommands& m) { m.move(2, 0); }));
    row("duplicate", three, c + a2 + a2 + b, [](QCommands& m) { QVERIFY(m.duplicate(1)); });
    row("duplicate last", a, a + "\n" + a, [](QCommands& m) { QVERIFY(m.duplicate(0)); });
    row("organize", three, a2 + b + c, once([](QCommands& m) { m.autoOrganize(); }));
    row("set name", three, c + "[Command]\nname = \"Z\"\n\n" + b,
        [](QCommands& m) { m.at(1)->setName("Z"); });
    row("add name", "[Command]\ncommand = x", "[Command]\nname = \"Z\"\ncommand = x",
        [](QCommands& m) { m.at(0)->setName("Z"); });
    row("set command", a + "\ncommand = x ;old\ntime = 5", a + "\ncommand = ~D,F\ntime = 5",
        [](QCommands& m) { m.at(0)->setCommand("~D,F"); });
    row("add command", a + "\n[Command]", a + "\ncommand = x\n[Command]",
        [](QCommands& m) { m.at(0)->setCommand("x"); });
}

void tst_Commands::operations()
{
    QFETCH(CommandsEdit, edit);
    QFETCH(QString, text);
    QCommands commands;
    commands.setPlainText(text);
    edit(commands);
    QTEST(commands.text(), "expected");
    QCOMPARE(checkInvariants(commands), QString());
    QCOMPARE(checkParamBinding(commands), QString());
    QCommands fresh;
    fresh.setPlainText(commands.text());
    QCOMPARE(names(commands), names(fresh));
    QCOMPARE(describeModel(commands), describeModel(fresh));
}

void tst_Commands::organizerFollowsTyping()
{
    QCommands commands;
    commands.setPlainText("[Command]\nname = \"a\"\n");
    QSignalSpy inserted(commands.organizer, &QAbstractItemModel::rowsInserted);
    QSignalSpy removed(commands.organizer, &QAbstractItemModel::rowsRemoved);
    QSignalSpy changed(commands.organizer, &QAbstractItemModel::dataChanged);
    QTextCursor cursor(commands.document);
    cursor.insertText(QStringLiteral("[Command]\nname = \"z\"\n"));
    // The first line keeps its element, so the row that comes is the second one.
    QCOMPARE(inserted.count(), 1);
    QCOMPARE(inserted.at(0).at(1).toInt(), 1);
    QCOMPARE(names(commands), (QStringList{"z", "a"}));
    changed.clear();
    QCOMPARE(commands.organizer->data(commands.organizer->index(0)).toString(), QStringLiteral("z"));
    cursor.setPosition(commands.document->findBlockByNumber(1).position() + 9);
    cursor.insertText(QStringLiteral("y"));
    QCOMPARE(names(commands), (QStringList{"zy", "a"}));
    QCOMPARE(changed.count(), 1);
    QCOMPARE(changed.at(0).at(0).value<QModelIndex>().row(), 0);
    // A broken name line leaves the command nameless, and its row says so.
    cursor.setPosition(commands.document->findBlockByNumber(1).position());
    cursor.deleteChar();
    QCOMPARE(names(commands), (QStringList{"", "a"}));
    QCOMPARE(changed.count(), 2);
    cursor.setPosition(0);
    cursor.deleteChar();
    QCOMPARE(removed.count(), 1);
    QCOMPARE(names(commands), (QStringList{"a"}));
    QCOMPARE(commands.organizer->headerData(0, Qt::Horizontal).toString(), QStringLiteral("Name"));
    QCOMPARE(commands.organizer->headerData(1, Qt::Horizontal).toString(), QStringLiteral("Command"));
}

void tst_Commands::settersWriteTheirLine()
{
    QCommands commands;
    commands.setPlainText("[Command]\nname = \"a\" ;c\ncommand = x\n");
    int updates = 0;
    connect(&commands, &QElementTextEditor::update, this, [&updates] { ++updates; });
    commands.at(0)->setName(QStringLiteral("b"));
    commands.at(0)->setCommand(QStringLiteral("~D, F"), false);
    QCOMPARE(updates, 0);
    QCOMPARE(commands.text(), QStringLiteral("[Command]\nname = \"b\"\ncommand = ~D, F\n"));
    QCOMPARE(commands.at(0)->name(), QStringLiteral("b"));
    QCOMPARE(commands.at(0)->length(), 2);
    QCOMPARE(commands.at(0)->command(true), QStringLiteral("~D, F"));
    QDialogRecorder dialogs;
    QVERIFY(commands.canDiscard()); // no file name yet
    QVERIFY(dialogs.calls.isEmpty());
}

void tst_Commands::realFiles_data()
{
    QTest::addColumn<QString>("path");
    for (const QString& path : TestData::files({QStringLiteral("*.cmd")}))
        QTest::newRow(qPrintable(QDir(TestData::root()).relativeFilePath(path))) << path;
}

void tst_Commands::realFiles()
{
    TAVREL_REQUIRE_TESTDATA();
    QFETCH(QString, path);
    const QByteArray bytes = readBytes(path);
    QCommands commands;
    QVERIFY(commands.fromFile(path, 0));
    QCOMPARE(checkInvariants(commands), QString());
    QCOMPARE(checkParamBinding(commands), QString());

    // Counted from the raw text: "[Command]" headers, and in each command section the first quoted name
    // and the number of commas of the first command line.
    const QStringList lines =
        QTextEncoding::codec(commands.codec())->toUnicode(bytes).split(QLatin1Char('\n'));
    static const QRegularExpression header(QStringLiteral("^\\s*\\[\\s*command\\s*\\]"),
                                           QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression nameLine(QStringLiteral("^\\s*name\\s*=\\s*\"([^\"]*)\""),
                                             QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression commandLine(QStringLiteral("^\\s*command\\s*=([^;]*)"),
                                                QRegularExpression::CaseInsensitiveOption);
    QStringList expectedNames;
    QList<int> expectedLengths;
    bool inCommand = false;
    bool named = false;
    bool measured = false;
    for (const QString& line : lines) {
        if (line.trimmed().startsWith(QLatin1Char('['))) {
            inCommand = header.match(line).hasMatch();
            if (inCommand) {
                expectedNames << QString();
                expectedLengths << 0;
            }
            named = measured = false;
            continue;
        }
        if (!inCommand) continue;
        if (const QRegularExpressionMatch match = nameLine.match(line); match.hasMatch() && !named) {
            expectedNames.last() = match.captured(1);
            named = true;
        }
        if (const QRegularExpressionMatch match = commandLine.match(line); match.hasMatch() && !measured) {
            expectedLengths.last() = int(match.captured(1).count(QLatin1Char(','))) + 1;
            measured = true;
        }
    }
    QVERIFY(!expectedNames.isEmpty());
    QCOMPARE(commands.count(), int(expectedNames.size()));
    QCOMPARE(names(commands), expectedNames);
    QList<int> lengths;
    for (const QCommand* command : commands.commands)
        lengths << command->length();
    QCOMPARE(lengths, expectedLengths);
    QCOMPARE(commands.organizer->rowCount(), commands.count());

    const QString copy = dir.filePath(QStringLiteral("copy.cmd"));
    QVERIFY(commands.toFile(copy, true));
    QCOMPARE(readBytes(copy), bytes);
    QVERIFY(!commands.isModified());
}

void tst_Commands::randomEdits_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<quint32>("seed");
    for (const char* file :
         {"elecbyte-mugen11/chars/kfm/kfm.cmd", "ikemen-go-2019/chars/Catwalk/Command.cmd"})
        for (quint32 seed : {5u, 1234u})
            QTest::newRow(qPrintable(QStringLiteral("%1 %2").arg(QLatin1String(file)).arg(seed)))
                << QString::fromLatin1(file) << seed;
}

void tst_Commands::randomEdits()
{
    TAVREL_REQUIRE_TESTDATA();
    QFETCH(QString, path);
    QFETCH(quint32, seed);
    QRandomGenerator random(seed);
    const QStringList pieces = {"[Command]\n", "[",  "]",    "Command", "name", " = ", "\"",        "command",
                                "~D, F",       "\n", "\n\n", "; c",     "x+y",  ",",   "[Defaults]"};
    QCommands commands;
    QVERIFY(commands.fromFile(TestData::root() + QLatin1Char('/') + path, 0));
    commands.document->setUndoRedoEnabled(true);
    QCommands fresh;

    for (int step = 0; step < 250; ++step) {
        const int length = commands.document->characterCount() - 1;
        QTextCursor cursor(commands.document);
        cursor.setPosition(int(random.bounded(length + 1)));
        const int count = commands.count();
        switch (random.bounded(10)) {
        case 0:
        case 1:
            cursor.insertText(pieces.at(int(random.bounded(int(pieces.size())))));
            break;
        case 2:
            cursor.setPosition(qMin(length, cursor.position() + int(random.bounded(80)) + 1),
                               QTextCursor::KeepAnchor);
            cursor.removeSelectedText();
            break;
        case 3:
            commands.document->undo();
            break;
        case 4:
            if (count > 0) commands.move(int(random.bounded(count)), uint(random.bounded(count)));
            break;
        case 5:
            if (count > 0) commands.duplicate(uint(random.bounded(count)));
            break;
        case 6:
            commands.insert(uint(random.bounded(count + 2)));
            break;
        case 7:
            if (count > 0) commands.remove(uint(random.bounded(count)));
            break;
        case 8:
            if (count > 0) commands.at(uint(random.bounded(count)))->setName(QStringLiteral("n%1").arg(step));
            break;
        default:
            if (count > 0)
                commands.at(uint(random.bounded(count)))->setCommand(QStringLiteral("~D, DF, F, x"));
            break;
        }
        const QString where = QStringLiteral("step %1").arg(step);
        QVERIFY2(checkInvariants(commands).isEmpty(), qPrintable(where + ": " + checkInvariants(commands)));
        QVERIFY2(checkParamBinding(commands).isEmpty(),
                 qPrintable(where + ": " + checkParamBinding(commands)));
        QList<QCommand*> listed;
        for (QTextElement* element = commands.firstElement; element; element = element->next)
            if (element->type() == etCommand) listed << static_cast<QCommand*>(element);
        QVERIFY2(listed == commands.commands, qPrintable(where + ": the list of commands is out of step"));
        QCOMPARE(commands.organizer->rowCount(), commands.count());
        fresh.setPlainText(commands.text());
        QCOMPARE(describeModel(commands), describeModel(fresh));
    }
}

QTEST_GUILESS_MAIN(tst_Commands)
#include "tst_Commands.moc"
