// The program's one set of recognisers: every family in its place, so that each kind of line goes to
// the recogniser it belongs to and unknown sections take only what nothing else wants.

#include "QElementTextEditor.h"
#include "QTextElement.h"
#include "QTextElementReg.h"
#include "QTextElementRegistry.h"
#include "QTextElementType.h"

#include <QTest>
#include <QTextBlock>

namespace {

// The type of the element on a line of text read with every registered kind enabled, or 0.
int typeOfLine(const QString& text, int line)
{
    QElementTextEditor editor;
    for (const QTextElementReg* reg : QTextElementReg::registered())
        editor.setTypeEnabled(true, reg->type(), reg->subType());
    editor.setPlainText(text);
    const QTextElement* element = QElementTextEditor::elementAt(editor.document->findBlockByNumber(line));
    return element ? element->type() : 0;
}

} // namespace

class tst_TextElementRegistry : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { registerTextElements(); }
    void cleanupTestCase() { unregisterTextElements(); }

    void lineKinds_data();
    void lineKinds();
    void registeringAgain();
};

void tst_TextElementRegistry::lineKinds_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("line");
    QTest::addColumn<int>("type");
    QTest::newRow("definitions section") << "[Info]" << 0 << int(etSingletonGroup);
    QTest::newRow("definitions key") << "[Files]\nsprite = kfm.sff" << 1 << int(etGroupParam);
    QTest::newRow("action") << "[Begin Action 200]" << 0 << int(etAnimation);
    QTest::newRow("frame") << "[Begin Action 0]\n0,0, 0,0, 5" << 1 << int(etFrame);
    QTest::newRow("box set") << "[Begin Action 0]\nClsn2: 1" << 1 << int(etCollisionBoxes);
    QTest::newRow("commands section") << "[Command]\nname = \"a\"" << 0 << int(etCommand);
    QTest::newRow("commands key") << "[Command]\ncommand = ~D, F, x" << 1 << int(etGroupParam);
    QTest::newRow("name comment above a section") << "; Stand\n\n[Begin Action 0]" << 0 << int(etNameComment);
    QTest::newRow("section nobody knows") << "[Statedef 0]" << 0 << int(etUnknownGroup);
    QTest::newRow("known name, more words") << "[Info 2]" << 0 << int(etUnknownGroup);
}

void tst_TextElementRegistry::lineKinds()
{
    QFETCH(QString, text);
    QFETCH(int, line);
    QFETCH(int, type);
    QCOMPARE(typeOfLine(text, line), type);
}

// A window made twice registers twice; only one set may stand at a time, and taking it back leaves
// nothing behind, so that the next set starts in the same order.
void tst_TextElementRegistry::registeringAgain()
{
    const qsizetype count = QTextElementReg::registered().size();
    QVERIFY(count > 0);
    registerTextElements();
    QCOMPARE(QTextElementReg::registered().size(), count);

    unregisterTextElements();
    QVERIFY(QTextElementReg::registered().isEmpty());
    QCOMPARE(typeOfLine(QStringLiteral("[Command]"), 0), 0);
    unregisterTextElements();

    registerTextElements();
    QCOMPARE(QTextElementReg::registered().size(), count);
    QCOMPARE(typeOfLine(QStringLiteral("[Command]"), 0), int(etCommand));
    QCOMPARE(typeOfLine(QStringLiteral("[Begin Action 1]"), 0), int(etAnimation));
}

QTEST_GUILESS_MAIN(tst_TextElementRegistry)
#include "tst_TextElementRegistry.moc"
