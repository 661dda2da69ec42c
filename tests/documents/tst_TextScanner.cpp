#include "QTextScanner.h"

#include <QStringList>
#include <QTest>

// Every token of a text as "kind:text@column", blank separated.
static QString scanAll(const QString& text)
{
    QTextScanner scanner(text);
    QStringList tokens;
    for (int kind = scanner.next(); kind != tkEnd; kind = scanner.next())
        tokens << QStringLiteral("%1:%2@%3").arg(kind).arg(scanner.text()).arg(scanner.tokenColumn());
    return tokens.join(QLatin1Char(' '));
}

class tst_TextScanner : public QObject
{
    Q_OBJECT

private slots:
    void tokens_data();
    void tokens();
    void operators_data();
    void operators();
    void comments_data();
    void comments();
    void lineEnds();
    void runningComment_data();
    void runningComment();
    void longTokensAreCut();
    void toInt();
};

void tst_TextScanner::tokens_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("tokens");

    auto row = [](const char* name, const char* text, const char* tokens) {
        QTest::newRow(name) << QString::fromUtf8(text) << QString::fromUtf8(tokens);
    };
    row("identifier with dots, digits and underscores", "Clsn2Default kfm.sff a_1",
        "3:Clsn2Default@0 3:kfm.sff@13 3:a_1@21");
    row("identifier of non-ASCII letters", "größe", "3:größe@0");
    row("underscore starts no identifier", "_a", "2:_@0 3:a@1");
    row("integer then identifier", "10a", "4:10@0 3:a@2");
    row("real without fraction", "12.", "5:12.@0");
    row("second dot ends a real", "1.2.3", "5:1.2@0 5:0.33@3");
    row("leading dot doubles its first digit", ".5", "5:0.55@0");
    row("leading dot with two digits", ".25", "5:0.225@0");
    row("frame scale column", "0, .5", "4:0@0 26:,@1 5:0.55@3");
    row("dot alone", ".", "2:.@0");
    row("dot before a letter", ".a", "2:.@0 3:a@1");
    row("negative integer", "-5", "4:-5@0");
    row("negative real", "-5.25", "5:-5.25@0");
    row("minus and dot", "-.5", "5:-0.5@0");
    row("minus and dot alone", "-.", "5:-0.@0");
    row("minus before a letter", "-a", "8:-@0 3:a@1");
    row("minus apart from its number", "- 5", "8:-@0 4:5@2");
    row("frame line", "-1,0, 0,0, 10", "4:-1@0 26:,@2 4:0@3 26:,@4 4:0@6 26:,@7 4:0@8 26:,@9 4:10@11");
    row("quoted string leaves its quotes out", "name = \"Kung Fu\"", "3:name@0 19:=@5 6:Kung Fu@8");
    row("empty string", "\"\"", "6:@1");
    row("string keeps a semicolon", "\"a;b\" c", "6:a;b@1 3:c@6");
    row("unterminated string ends the text", "a \"open", "3:a@0");
    row("blanks, tabs and carriage returns are skipped", "\t a \r", "3:a@2");
    row("other characters", "@ # \\", "2:@@0 2:#@2 2:\\@4");
    row("header", "[Begin Action 200]", "31:[@0 3:Begin@1 3:Action@7 4:200@14 32:]@17");
    row("comment ends the line's tokens", "a ; b c", "3:a@0");
    row("empty text", "", "");
}

void tst_TextScanner::tokens()
{
    QFETCH(QString, text);
    QFETCH(QString, tokens);
    QCOMPARE(scanAll(text), tokens);
}

void tst_TextScanner::operators_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("kind");

    const char* singles[] = {"+", "-",  "/", "%",  "*", "**", "&", "&&", "|", "||", "^", "^^", "=", "<", "<=",
                             ">", ">=", "!", "!=", ",", "(",  ")", "{",  "}", "[",  "]", ":",  "~", "$"};
    int kind = tkPlus;
    for (const char* text : singles)
        QTest::newRow(text) << QString::fromLatin1(text) << kind++;
}

void tst_TextScanner::operators()
{
    QFETCH(QString, text);
    QFETCH(int, kind);
    QTextScanner scanner(text);
    QCOMPARE(scanner.next(), kind);
    QCOMPARE(scanner.text(), text);
    QCOMPARE(scanner.next(), int(tkEnd));
}

void tst_TextScanner::comments_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("tokens");
    QTest::addColumn<bool>("hasComment");
    QTest::addColumn<QString>("comment");
    QTest::addColumn<int>("column");

    auto row = [](const char* name, const char* text, int tokens, bool has, const char* comment, int column) {
        QTest::newRow(name) << text << tokens << has << comment << column;
    };
    row("comment line", "; Kung Fu Man", 0, true, " Kung Fu Man", 0);
    row("indented comment line", "   ;x", 0, true, "x", 3);
    row("comment behind tokens", "a = 1 ;note", 3, true, "note", 6);
    row("semicolons inside a comment", "a ;x;y", 1, true, "x;y", 2);
    row("carriage return is not kept", "a ;x\r", 1, true, "x", 2);
    row("empty comment", "a;", 1, true, "", 1);
    row("no comment", "a = 1", 3, false, "", 0);
    row("semicolon in a string is no comment", "\"a;b\"", 1, false, "", 0);
}

void tst_TextScanner::comments()
{
    QFETCH(QString, text);
    QFETCH(int, tokens);
    QFETCH(bool, hasComment);
    QFETCH(QString, comment);
    QFETCH(int, column);

    QTextScanner scanner(text);
    int count = 0;
    while (scanner.next() != tkEnd) {
        QVERIFY(!scanner.hasComment());
        ++count;
    }
    QCOMPARE(count, tokens);
    QCOMPARE(scanner.hasComment(), hasComment);
    QCOMPARE(scanner.comment(), comment);
    if (hasComment) QCOMPARE(scanner.commentColumn(), column);
    scanner.next();
    QVERIFY(!scanner.hasComment());
}

void tst_TextScanner::lineEnds()
{
    QTextScanner scanner(QStringLiteral("a ; one\n\n  ; two\n  b\n"));
    QCOMPARE(scanner.next(), int(tkIdentifier));
    QCOMPARE(scanner.line(), 1);
    // The comment behind "a", the empty line and the comment line all belong to one line end.
    QCOMPARE(scanner.next(), int(tkEndOfLine));
    QVERIFY(scanner.hasComment());
    QCOMPARE(scanner.comment(), QStringLiteral(" two"));
    QCOMPARE(scanner.text(), QString());
    QCOMPARE(scanner.next(), int(tkIdentifier));
    QCOMPARE(scanner.text(), QStringLiteral("b"));
    QCOMPARE(scanner.line(), 4);
    QCOMPARE(scanner.tokenColumn(), 2);
    QVERIFY(!scanner.hasComment());
    QCOMPARE(scanner.next(), int(tkEnd));
    QVERIFY(scanner.atEnd());
    QCOMPARE(scanner.next(), int(tkEnd));
}

void tst_TextScanner::runningComment_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("running");

    auto row = [](const char* name, const char* text, const char* running) {
        QTest::newRow(name) << text << running;
    };
    row("first of a run of comment lines", "; Ryu\n; Ken\n0,0\n", " Ryu");
    row("rulers are skipped", ";--------\n; Ryu\n;========\n0,0", " Ryu");
    row("five equal characters are no ruler", "; -----\n0", " -----");
    row("empty line clears", "; Ryu\n\n; Ken\n0", " Ken");
    row("comment behind a token clears", "; Ryu\n0 ; note\n1", "");
    row("no comment", "0,0\n1,1", "");
}

void tst_TextScanner::runningComment()
{
    QFETCH(QString, text);
    QFETCH(QString, running);
    QTextScanner scanner(text);
    while (scanner.next() != tkEnd) {}
    QCOMPARE(scanner.runningComment(), running);
}

void tst_TextScanner::longTokensAreCut()
{
    const QString word(600, QLatin1Char('a'));
    QTextScanner scanner(word + QStringLiteral(" b ;") + QString(600, QLatin1Char('c')));
    QCOMPARE(scanner.next(), int(tkIdentifier));
    QCOMPARE(scanner.text().size(), QTextScanner::maxText);
    QCOMPARE(scanner.next(), int(tkIdentifier));
    QCOMPARE(scanner.text(), QStringLiteral("b"));
    QCOMPARE(scanner.tokenColumn(), 601);
    QCOMPARE(scanner.next(), int(tkEnd));
    QCOMPARE(scanner.comment().size(), QTextScanner::maxText);
}

void tst_TextScanner::toInt()
{
    QTextScanner scanner(QStringLiteral("-12 x"));
    scanner.next();
    QCOMPARE(scanner.toInt(), -12);
    scanner.next();
    QCOMPARE(scanner.toInt(), 0);
}

QTEST_GUILESS_MAIN(tst_TextScanner)
#include "tst_TextScanner.moc"
