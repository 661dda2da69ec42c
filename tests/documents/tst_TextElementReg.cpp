#include "TestElements.h"

#include <QTest>

// A recogniser that accepts "<first character>..." lines of any tokens and logs what it was offered.
class QLoggingReg : public QTextElementReg
{
public:
    QLoggingReg(int type, int charClass, QStringList* log, const QString& name)
        : elementType(type), packed(charClass), log(log), name(name)
    {}
    int type() const override { return elementType; }
    int firstCharClass() const override { return packed; }
    bool match(int index, const QTextToken& token) override
    {
        if (log) *log << QStringLiteral("%1:%2").arg(name).arg(index);
        return index > 0 || token.kind != tkEndOfLine;
    }
    QTextElement* create() override { return QTextElementPool<QUnknownGroup>::create(); }

private:
    int elementType;
    int packed;
    QStringList* log;
    QString name;
};

class tst_TextElementReg : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void firstCharacter_data();
    void firstCharacter();
    void earliestRegisteredWins_data();
    void earliestRegisteredWins();
    void onlyEnabledAndPassingAreOffered();
    void offeredFromLastToFirst();
    void commentLineSeenOnlyAsNul();
};

void tst_TextElementReg::cleanup()
{
    QTextElementReg::deleteAll();
}

void tst_TextElementReg::firstCharacter_data()
{
    QTest::addColumn<int>("packed");
    QTest::addColumn<QChar>("character");
    QTest::addColumn<bool>("passes");

    const int any = QTextElementReg::charClass(1);
    const int number = QTextElementReg::charClass(2);
    const int bracket = QTextElementReg::charClass(3, '[');
    const int two = QTextElementReg::charClass(4, 'a', 'b');
    const int three = QTextElementReg::charClass(5, 'a', 'b', 'c');
    const int letter = QTextElementReg::charClass(6, 'C');
    const int twoLetters = QTextElementReg::charClass(7, 'L', 'I');
    const int threeLetters = QTextElementReg::charClass(8, 'X', 'Y', 'Z');

    QTest::newRow("1 anything") << any << QChar(u'%') << true;
    QTest::newRow("1 NUL") << any << QChar() << true;
    QTest::newRow("2 digit") << number << QChar(u'7') << true;
    QTest::newRow("2 minus") << number << QChar(u'-') << true;
    QTest::newRow("2 letter") << number << QChar(u'a') << false;
    QTest::newRow("2 dot") << number << QChar(u'.') << false;
    QTest::newRow("3 the character") << bracket << QChar(u'[') << true;
    QTest::newRow("3 another") << bracket << QChar(u']') << false;
    QTest::newRow("4 second") << two << QChar(u'b') << true;
    QTest::newRow("4 third") << two << QChar(u'c') << false;
    QTest::newRow("4 other case") << two << QChar(u'A') << false;
    QTest::newRow("5 third") << three << QChar(u'c') << true;
    QTest::newRow("5 fourth") << three << QChar(u'd') << false;
    QTest::newRow("6 capital") << letter << QChar(u'C') << true;
    QTest::newRow("6 small") << letter << QChar(u'c') << true;
    QTest::newRow("6 other") << letter << QChar(u'D') << false;
    QTest::newRow("7 second, small") << twoLetters << QChar(u'i') << true;
    QTest::newRow("7 first, capital") << twoLetters << QChar(u'L') << true;
    QTest::newRow("7 other") << twoLetters << QChar(u'x') << false;
    QTest::newRow("8 third, small") << threeLetters << QChar(u'z') << true;
    QTest::newRow("8 other") << threeLetters << QChar(u'w') << false;
    QTest::newRow("class 0 never") << QTextElementReg::charClass(0, 'a') << QChar(u'a') << false;
    QTest::newRow("class 9 never") << QTextElementReg::charClass(9, 'a') << QChar(u'a') << false;
    QTest::newRow("character beyond Latin-1") << letter << QChar(0x0143) << false;
}

void tst_TextElementReg::firstCharacter()
{
    QFETCH(int, packed);
    QFETCH(QChar, character);
    QFETCH(bool, passes);
    QCOMPARE(QTextElementReg::passes(packed, character), passes);
}

void tst_TextElementReg::earliestRegisteredWins_data()
{
    QTest::addColumn<bool>("sectionFirst");
    QTest::addColumn<QString>("lines");

    QTest::newRow("section before the fallback") << true << "S1 U";
    QTest::newRow("fallback before the section") << false << "U U";
}

void tst_TextElementReg::earliestRegisteredWins()
{
    QFETCH(bool, sectionFirst);
    QFETCH(QString, lines);

    if (sectionFirst) QTextElementReg::add(new QTestSectionReg);
    QTextElementReg::add(new UnknownGrpReg);
    if (!sectionFirst) QTextElementReg::add(new QTestSectionReg);
    QElementTextEditor editor;
    enableTestElements(editor);
    editor.setPlainText(QStringLiteral("[Section 1]\n[Other]"));
    QCOMPARE(describeLines(editor), lines);
}

void tst_TextElementReg::onlyEnabledAndPassingAreOffered()
{
    QStringList log;
    QTextElementReg::add(
        new QLoggingReg(etCommand, QTextElementReg::charClass(3, 'Z'), &log, QStringLiteral("z")));
    QTextElementReg::add(
        new QLoggingReg(etInterFrame, QTextElementReg::charClass(1), &log, QStringLiteral("off")));
    QElementTextEditor editor;
    editor.setTypeEnabled(true, etCommand, 0);
    editor.setPlainText(QStringLiteral("a b\nZ b"));
    QCOMPARE(log, (QStringList{QStringLiteral("z:0"), QStringLiteral("z:1"), QStringLiteral("z:2")}));
    QCOMPARE(describeLines(editor), QStringLiteral("- U"));
}

void tst_TextElementReg::offeredFromLastToFirst()
{
    QStringList log;
    QTextElementReg::add(
        new QLoggingReg(etCommand, QTextElementReg::charClass(1), &log, QStringLiteral("a")));
    QTextElementReg::add(
        new QLoggingReg(etCommand, QTextElementReg::charClass(1), &log, QStringLiteral("b")));
    QElementTextEditor editor;
    editor.setTypeEnabled(true, etCommand, 0);
    editor.setPlainText(QStringLiteral("x"));
    QCOMPARE(log, (QStringList{QStringLiteral("b:0"), QStringLiteral("a:0"), QStringLiteral("b:1"),
                               QStringLiteral("a:1")}));
}

void tst_TextElementReg::commentLineSeenOnlyAsNul()
{
    // A comment line above a header offers its comment as the only token, and only a recogniser of
    // class 1 sees it; the end-of-line token comes last and is refused by one that wants more.
    QStringList log;
    QTextElementReg::add(
        new QLoggingReg(etCommand, QTextElementReg::charClass(3, ';'), &log, QStringLiteral("semi")));
    QTextElementReg::add(
        new QLoggingReg(etCommand, QTextElementReg::charClass(1), &log, QStringLiteral("any")));
    QTextElementReg::add(new NameCmmReg);
    QElementTextEditor editor;
    editor.setTypeEnabled(true, etCommand, 0);
    editor.setTypeEnabled(true, etNameComment, 0);
    editor.setPlainText(QStringLiteral("; x\n; y\n\n[a]"));
    QCOMPARE(describeLines(editor), QStringLiteral("- N:y - U"));
    QVERIFY(!log.join(QLatin1Char(' ')).contains(QLatin1String("semi")));
}

QTEST_GUILESS_MAIN(tst_TextElementReg)
#include "tst_TextElementReg.moc"
