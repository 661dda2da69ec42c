#include "TestElements.h"

#include <QRandomGenerator>
#include <QSignalSpy>
#include <QTest>

#include <memory>

class tst_ElementTextEditor : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();
    void edits_data();
    void edits();
    void nameCommentFollowsHeader();
    void setName();
    void sectionSpan_data();
    void sectionSpan();
    void searchesAlongTheList_data();
    void searchesAlongTheList();
    void recogniserNotEnabled();
    void setLineWithoutReparse();
    void setLineWithReparse();
    void guardedInsertAndRemove();
    void insertLines_data();
    void insertLines();
    void removeSpan();
    void replaceSpan();
    void editGroupsSignals();
    void unconnectedDocumentAndRescan();
    void wholeText_data();
    void wholeText();
    void clearReportsEveryElement();
    void updateSlotMayWriteItsLine();
    void poolsReuseReleasedElements();
    void destructionReleasesElements();
    void randomEdits_data();
    void randomEdits();
};

void tst_ElementTextEditor::initTestCase()
{
    registerTestElements();
}

void tst_ElementTextEditor::cleanupTestCase()
{
    QTextElementReg::deleteAll();
    QTextElementPools::deleteAll();
}

void tst_ElementTextEditor::edits_data()
{
    QTest::addColumn<QString>("marked");
    QTest::addColumn<QString>("insert");
    QTest::addColumn<QString>("changes");
    QTest::addColumn<bool>("countChanged");
    QTest::addColumn<QString>("lines");
    // The name of the last element when it is a header.
    QTest::addColumn<QString>("name");

    auto row = [](const char* title, const char* marked, const char* insert, const char* changes,
                  bool countChanged, const char* lines, const char* name = "") {
        QTest::newRow(title) << QString::fromUtf8(marked) << QString::fromUtf8(insert)
                             << QString::fromUtf8(changes) << countChanged << QString::fromUtf8(lines)
                             << QString::fromUtf8(name);
    };
    row("typing inside a line that stays an item", "item 1|", "2", "~I12", false, "I12");
    row("line stops parsing", "[Section 1]\nitem 1|", "x", "-I1", true, "S1 -");
    row("line starts parsing", "[Section 1]\nitem|", " 4", "+I4", true, "S1 I4");
    row("trailing token refused at the line's end", "item 1|", " extra", "-I1", true, "-");
    row("line becomes another kind", "|item 1", "[Section 3]", "-I1 +S3", true, "S3");
    row("insert a line", "[Section 1]\nitem 1|\nitem 2", "\nitem 5", "~I1 +I5", true, "S1 I1 I5 I2");
    row("insert an empty line", "item 1|\nitem 2", "\n", "~I1", false, "I1 - I2");
    row("split a line", "[Section 1]|item 2", "\n", "~S1 +I2", true, "S1 I2");
    row("split a line at its start", "|item 1", "\n", "-I1 +I1", true, "- I1");
    row("join two item lines", "item 1|\n|item 2", "", "-I2 -I1", true, "-");
    row("join a header and an item", "[Section 1]|\n|item 2", "", "-I2 ~S1", true, "S1");
    row("join with an empty line", "item 1|\n|\nitem 2", "", "~I1 ~I2", false, "I1 I2");
    // Qt keeps the line data of the last line of a deleted range and of the first line of a join.
    row("delete across sections", "[Section 1]\nitem 1\n|item 2\n[Section 2]\nitem 3\n|item 4\n[Section 3]",
        "", "-I3 -S2 -I2 ~I4", true, "S1 I1 I4 S3");
    row("delete all", "|[Section 1]\nitem 1\nitem 2|", "", "-I1 -S1 -I2", true, "-");
    row("paste several lines", "item 1\n|", "[Section 7]\nitem 8\n\nitem 9", "+S7 +I8 +I9", true,
        "I1 S7 I8 - I9");
    row("replace a line by another", "item 1\n|item 2|\nitem 3", "item 5", "~I5 ~I3", false, "I1 I5 I3");
    row("comment only line gets no element", "item 1\n|", "; note", "", false, "I1 -");
    // A comment line is a name when a header follows it, over empty lines too.
    row("comment typed above a header", "item 0|\n[Section 1]", "\n; Ryu", "~I0 +N:Ryu", true, "I0 N:Ryu S1",
        "Ryu");
    // Qt keeps the line data with the first part of a split line: the header's element is on the
    // comment line now, and the header line is a new one.
    row("comment typed at the top", "|[Section 1]", "; Ken\n", "-S1 +N:Ken +S1", true, "N:Ken S1", "Ken");
    row("empty lines between comment and header", "|\n\n\n[Section 1]", "; Ryu", "+N:Ryu", true,
        "N:Ryu - - S1", "Ryu");
    row("comment above an item is no name", "|\nitem 1\n[Section 1]", "; Ryu", "", false, "- I1 S1");
    row("indented comment names too", "|\n[Section 1]", "   ;  Ryu  ", "+N:Ryu", true, "N:Ryu S1", "Ryu");
    row("comment behind a token is no name", "|\n[Section 1]", "item 1 ; Ryu", "", false, "- S1");
    row("header moved away", "; Ryu|\n[Section 1]|", "", "-S1 -N:Ryu", true, "-");
    row("name comment edited", "; Ryu|\n[Section 1]", " Ken", "~N:Ryu Ken", false, "N:Ryu Ken S1", "Ryu Ken");
}

void tst_ElementTextEditor::edits()
{
    QFETCH(QString, marked);
    QFETCH(QString, insert);
    QFETCH(QString, changes);
    QFETCH(bool, countChanged);
    QFETCH(QString, lines);
    QFETCH(QString, name);

    QString text;
    int from, to;
    unmark(marked, text, from, to);
    QElementTextEditor editor;
    enableTestElements(editor);
    editor.setPlainText(text);
    const QString before = describeLines(editor);
    QChangeRecorder recorder(editor);
    recorder.adoptElements();

    QTextCursor cursor(editor.document);
    cursor.setPosition(from);
    cursor.setPosition(to, QTextCursor::KeepAnchor);
    cursor.insertText(insert);

    QCOMPARE(recorder.changes.join(QLatin1Char(' ')), changes);
    QCOMPARE(recorder.updates, changes.isEmpty() ? QList<bool>() : QList<bool>{countChanged});
    QCOMPARE(describeLines(editor), lines);
    auto* header = qobject_cast<QGroupHeader*>(editor.lastElement());
    QCOMPARE(header ? header->name() : QString(), name);
    QCOMPARE(checkInvariants(editor), QString());
    QCOMPARE(recorder.checkLive(), QString());

    // The document's own undo and redo bring the elements of the text back with it.
    editor.document->undo();
    QCOMPARE(editor.document->toPlainText(), text);
    QCOMPARE(describeLines(editor), before);
    QCOMPARE(checkInvariants(editor), QString());
    editor.document->redo();
    QCOMPARE(describeLines(editor), lines);
    QCOMPARE(checkInvariants(editor), QString());
    QCOMPARE(recorder.checkLive(), QString());
}

void tst_ElementTextEditor::nameCommentFollowsHeader()
{
    QElementTextEditor editor;
    enableTestElements(editor);
    editor.setPlainText(QStringLiteral("; Ryu\n[Section 1]\nitem 1\n[Section 2]\nitem 2"));
    auto* first = static_cast<QTestSection*>(editor.firstElement->next);
    auto* comment = static_cast<QNameComment*>(editor.firstElement);
    QCOMPARE(first->name(), QStringLiteral("Ryu"));
    QCOMPARE(comment->owner, first);

    // Deleting the first header's line hands its comment to the next header.
    QTextCursor cursor(editor.document);
    cursor.setPosition(first->block.position());
    cursor.setPosition(first->block.next().next().position(), QTextCursor::KeepAnchor);
    cursor.removeSelectedText();
    QCOMPARE(describeLines(editor), QStringLiteral("N:Ryu S2 I2"));
    auto* second = static_cast<QTestSection*>(editor.firstElement->next);
    QCOMPARE(second->name(), QStringLiteral("Ryu"));
    QCOMPARE(comment->owner, second);

    // Deleting the comment line leaves the header without a name.
    cursor.setPosition(0);
    cursor.setPosition(comment->block.next().position(), QTextCursor::KeepAnchor);
    cursor.removeSelectedText();
    QCOMPARE(second->name(), QString());
    QVERIFY(!second->nameElement);
    QCOMPARE(checkInvariants(editor), QString());
}

void tst_ElementTextEditor::setName()
{
    QElementTextEditor editor;
    enableTestElements(editor);
    editor.setPlainText(QStringLiteral("item 0\n[Section 1]\nitem 1"));
    auto* header = static_cast<QTestSection*>(editor.firstElement->next);

    header->setName(QStringLiteral("Ryu"));
    QCOMPARE(editor.document->toPlainText(), QStringLiteral("item 0\n; Ryu\n[Section 1]\nitem 1"));
    QCOMPARE(header->name(), QStringLiteral("Ryu"));

    QSignalSpy updates(&editor, &QElementTextEditor::update);
    header->setName(QStringLiteral("Ken"));
    QCOMPARE(editor.document->toPlainText(), QStringLiteral("item 0\n; Ken\n[Section 1]\nitem 1"));
    QCOMPARE(updates.count(), 0);

    header->setName(QString());
    QCOMPARE(editor.document->toPlainText(), QStringLiteral("item 0\n[Section 1]\nitem 1"));
    QCOMPARE(describeLines(editor), QStringLiteral("I0 S1 I1"));
    QCOMPARE(checkInvariants(editor), QString());
}

void tst_ElementTextEditor::sectionSpan_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("header");
    QTest::addColumn<int>("firstLine");
    QTest::addColumn<int>("lastLine");

    const QString two = QStringLiteral("; a\n;b\n[Section 1]\nitem 1\n\n; c\n[Section 2]\nitem 2");
    QTest::newRow("comments above, next section's comment below") << two << 2 << 0 << 4;
    QTest::newRow("last section runs to the block count") << two << 6 << 5 << 8;
    QTest::newRow("indented comment is not part of the span") << "  ; a\n[Section 1]" << 1 << 1 << 2;
    QTest::newRow("a ';' before any blank counts") << "abc;def\n[Section 1]" << 1 << 0 << 2;
    QTest::newRow("a blank before the ';' does not") << "ab c;d\n[Section 1]" << 1 << 1 << 2;
    QTest::newRow("empty line stops the comments") << "; a\n\n\n[Section 1]" << 3 << 3 << 4;
    QTest::newRow("next '[' line without element") << "[Section 1]\nitem 1\n\n; c\n[x" << 0 << 0 << 2;
    QTest::newRow("next '[' right below") << "[Section 1]\n[Section 2]" << 0 << 0 << 0;
}

void tst_ElementTextEditor::sectionSpan()
{
    QFETCH(QString, text);
    QFETCH(int, header);
    QFETCH(int, firstLine);
    QFETCH(int, lastLine);

    QElementTextEditor editor;
    enableTestElements(editor);
    editor.setTypeEnabled(false, etUnknownGroup, 0);
    editor.setPlainText(text);
    QTextElement* element = QElementTextEditor::elementAt(editor.document->findBlockByNumber(header));
    QVERIFY(element);
    QCOMPARE(element->firstLine(), firstLine);
    QCOMPARE(element->lastLine(), lastLine);
}

void tst_ElementTextEditor::searchesAlongTheList_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<bool>("forward");
    QTest::addColumn<int>("mask");
    QTest::addColumn<int>("stop");
    QTest::addColumn<int>("found");

    // Lines: 0 S1, 1 I1, 2 U, 3 I2, 4 S2, 5 I3.
    QTest::newRow("nearest section") << 5 << false << 128 << 0 << 4;
    QTest::newRow("nearest section over an unknown one") << 3 << false << 128 << 0 << 0;
    QTest::newRow("any bit of the stop ends it") << 3 << false << 128 << int(0x80000020u) << -1;
    QTest::newRow("item of the same section") << 0 << true << 256 << 2 << 1;
    QTest::newRow("no item above in the same section") << 5 << false << 256 << 2 << -1;
    QTest::newRow("stop needs all its bits") << 3 << false << 256 << (2 | 128) << 1;
    QTest::newRow("plain elements only") << 2 << true << 1 << 0 << 3;
    QTest::newRow("nothing below") << 5 << true << 128 << 0 << -1;
}

void tst_ElementTextEditor::searchesAlongTheList()
{
    QFETCH(int, from);
    QFETCH(bool, forward);
    QFETCH(int, mask);
    QFETCH(int, stop);
    QFETCH(int, found);

    QElementTextEditor editor;
    enableTestElements(editor);
    editor.setPlainText(QStringLiteral("[Section 1]\nitem 1\n[x]\nitem 2\n[Section 2]\nitem 3"));
    QTextElement* start = QElementTextEditor::elementAt(editor.document->findBlockByNumber(from));
    QTextElement* hit = forward ? start->nextOf(mask, stop) : start->previousOf(mask, stop);
    QCOMPARE(hit ? hit->block.blockNumber() : -1, found);
}

void tst_ElementTextEditor::recogniserNotEnabled()
{
    QElementTextEditor editor;
    enableTestElements(editor, false);
    editor.setPlainText(QStringLiteral("[Section 1]\nitem 1"));
    QCOMPARE(describeLines(editor), QStringLiteral("U I1"));
    QCOMPARE(editor.firstElement->flags(), etUnknownGroup | etSection);
    QCOMPARE(editor.lastElement()->flags(), etFrame | etPlain);
    QCOMPARE(editor.firstElement->nextExact(etFrame | etPlain), editor.lastElement());
    QCOMPARE(editor.lastElement()->previousExact(etUnknownGroup | etSection), editor.firstElement);

    // A second model asking for the same kind keeps it on when the first lets go.
    editor.setTypeEnabled(true, etFrame, 0);
    editor.setTypeEnabled(false, etFrame, 0);
    QVERIFY(editor.isTypeEnabled(etFrame, 0));
    editor.setTypeEnabled(false, etFrame, 0);
    QVERIFY(!editor.isTypeEnabled(etFrame, 0));
    QTextCursor cursor(editor.document);
    cursor.movePosition(QTextCursor::End);
    cursor.insertText(QStringLiteral("0"));
    QCOMPARE(describeLines(editor), QStringLiteral("U -"));
}

void tst_ElementTextEditor::setLineWithoutReparse()
{
    QElementTextEditor editor;
    enableTestElements(editor);
    editor.setPlainText(QStringLiteral("[Section 1]\nitem 1\nitem 2"));
    auto* item = static_cast<QTestItem*>(editor.firstElement->next);
    QChangeRecorder recorder(editor);

    item->value = 7;
    item->setLine(QStringLiteral("item 7"));
    QCOMPARE(editor.document->toPlainText(), QStringLiteral("[Section 1]\nitem 7\nitem 2"));
    QCOMPARE(recorder.lists, 0);
    QVERIFY(recorder.updates.isEmpty());
    QCOMPARE(editor.ignore, 0);

    // Undo is the document's: it re-reads the line.
    editor.document->undo();
    QCOMPARE(describeLines(editor), QStringLiteral("S1 I1 I2"));
    QCOMPARE(recorder.changes.value(0), QStringLiteral("~I1"));
    QCOMPARE(recorder.updates, QList<bool>{false});
}

void tst_ElementTextEditor::setLineWithReparse()
{
    QElementTextEditor editor;
    enableTestElements(editor);
    editor.setPlainText(QStringLiteral("[Section 1]\nitem 1\nitem 2"));
    QChangeRecorder recorder(editor);
    recorder.adoptElements();

    editor.firstElement->next->setLine(QStringLiteral("item 9"), true);
    QCOMPARE(recorder.changes.join(QLatin1Char(' ')), QStringLiteral("~I9 ~I2"));
    editor.firstElement->next->setLine(QStringLiteral("[Section 4]"), true);
    QCOMPARE(describeLines(editor), QStringLiteral("S1 S4 I2"));
    QCOMPARE(checkInvariants(editor), QString());
    QCOMPARE(recorder.checkLive(), QString());
}

void tst_ElementTextEditor::guardedInsertAndRemove()
{
    QElementTextEditor editor(false);
    enableTestElements(editor);
    editor.setPlainText(QStringLiteral("[Section 1]\nitem 1\nitem 2"));
    QCOMPARE(describeLines(editor), QStringLiteral("S1 I1 I2"));
    QChangeRecorder recorder(editor);
    recorder.adoptElements();

    // Even a document that does not follow its text re-reads the guarded edits.
    QElementCursor cursor(&editor, QTextCursor(editor.document));
    cursor.setPosition(editor.firstElement->next->block.position());
    cursor.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
    cursor.insertText(QStringLiteral("item 3\nitem 4"));
    QCOMPARE(describeLines(editor), QStringLiteral("S1 I3 I4 I2"));

    cursor.setPosition(editor.firstElement->block.position() + 11);
    cursor.setPosition(editor.lastElement()->block.position(), QTextCursor::KeepAnchor);
    cursor.removeSelectedText();
    QCOMPARE(describeLines(editor), QStringLiteral("S1"));
    QCOMPARE(editor.document->toPlainText(), QStringLiteral("[Section 1]item 2"));
    QCOMPARE(checkInvariants(editor), QString());
    QCOMPARE(recorder.checkLive(), QString());
}

void tst_ElementTextEditor::insertLines_data()
{
    QTest::addColumn<int>("line");
    QTest::addColumn<bool>("after");
    QTest::addColumn<bool>("ownBlock");
    QTest::addColumn<QString>("text");

    QTest::newRow("after a section's span")
        << 1 << true << false << "; A\n[Section 1]\nitem 1\nitem 9\n; B\n[Section 2]\nitem 2";
    QTest::newRow("after a header's own line")
        << 1 << true << true << "; A\n[Section 1]\nitem 9\nitem 1\n; B\n[Section 2]\nitem 2";
    QTest::newRow("after the last section")
        << 4 << true << false << "; A\n[Section 1]\nitem 1\n; B\n[Section 2]\nitem 2\nitem 9";
    QTest::newRow("after the last line")
        << 5 << true << true << "; A\n[Section 1]\nitem 1\n; B\n[Section 2]\nitem 2\nitem 9";
    QTest::newRow("before a section's span")
        << 4 << false << false << "; A\n[Section 1]\nitem 1\nitem 9\n; B\n[Section 2]\nitem 2";
    QTest::newRow("before a header's own line")
        << 4 << false << true << "; A\n[Section 1]\nitem 1\n; B\nitem 9\n[Section 2]\nitem 2";
    QTest::newRow("before the first line")
        << 1 << false << false << "\nitem 9\n; A\n[Section 1]\nitem 1\n; B\n[Section 2]\nitem 2";
    QTest::newRow("without element: append")
        << -1 << true << false << "; A\n[Section 1]\nitem 1\n; B\n[Section 2]\nitem 2\nitem 9";
    QTest::newRow("without element: at the top")
        << -1 << false << false << "\nitem 9\n; A\n[Section 1]\nitem 1\n; B\n[Section 2]\nitem 2";
}

void tst_ElementTextEditor::insertLines()
{
    QFETCH(int, line);
    QFETCH(bool, after);
    QFETCH(bool, ownBlock);
    QFETCH(QString, text);

    QElementTextEditor editor;
    enableTestElements(editor);
    editor.setPlainText(QStringLiteral("; A\n[Section 1]\nitem 1\n; B\n[Section 2]\nitem 2"));
    QTextElement* element =
        line < 0 ? nullptr : QElementTextEditor::elementAt(editor.document->findBlockByNumber(line));
    QVERIFY(line < 0 || element);
    QChangeRecorder recorder(editor);
    if (after)
        editor.insertLineAfter(element, QStringLiteral("item 9"), ownBlock);
    else
        editor.insertLineBefore(element, QStringLiteral("item 9"), ownBlock);
    QCOMPARE(editor.document->toPlainText(), text);
    QVERIFY(recorder.changes.contains(QStringLiteral("+I9")));
    QCOMPARE(recorder.updates, QList<bool>{true});
    QCOMPARE(checkInvariants(editor), QString());
}

void tst_ElementTextEditor::removeSpan()
{
    QElementTextEditor editor;
    enableTestElements(editor);
    editor.setPlainText(QStringLiteral("; A\n[Section 1]\nitem 1\n\n; B\n[Section 2]\nitem 2"));
    QChangeRecorder recorder(editor);
    recorder.adoptElements();

    editor.firstElement->next->remove();
    QCOMPARE(editor.document->toPlainText(), QStringLiteral("; B\n[Section 2]\nitem 2"));
    QCOMPARE(describeLines(editor), QStringLiteral("N:B S2 I2"));
    QCOMPARE(recorder.lists, 1);
    QCOMPARE(recorder.updates, QList<bool>{true});

    // The last line: its text goes, the line stays.
    editor.lastElement()->remove();
    QCOMPARE(editor.document->toPlainText(), QStringLiteral("; B\n[Section 2]\n"));
    QCOMPARE(describeLines(editor), QStringLiteral("N:B S2 -"));

    editor.lastElement()->remove();
    QCOMPARE(editor.document->toPlainText(), QString());
    QVERIFY(!editor.firstElement);
    QCOMPARE(checkInvariants(editor), QString());
    QCOMPARE(recorder.checkLive(), QString());
}

void tst_ElementTextEditor::replaceSpan()
{
    QElementTextEditor editor;
    enableTestElements(editor);
    editor.setPlainText(QStringLiteral("[Section 1]\nitem 1\n[Section 2]\nitem 2"));
    editor.firstElement->replaceSpan(QStringLiteral("  [Section 5]\nitem 5\n  "));
    QCOMPARE(editor.document->toPlainText(), QStringLiteral("[Section 5]\nitem 5\n\n[Section 2]\nitem 2"));
    QCOMPARE(describeLines(editor), QStringLiteral("S5 I5 - S2 I2"));
    QCOMPARE(checkInvariants(editor), QString());
}

void tst_ElementTextEditor::editGroupsSignals()
{
    QElementTextEditor editor;
    enableTestElements(editor);
    editor.setPlainText(QStringLiteral("[Section 1]\nitem 1"));
    editor.document->setUndoRedoEnabled(true);
    QChangeRecorder recorder(editor);

    editor.beginEdit();
    editor.insertLineAfter(editor.lastElement(), QStringLiteral("item 2"));
    editor.insertLineAfter(editor.lastElement(), QStringLiteral("item 3"));
    QCOMPARE(recorder.lists, 2);
    QVERIFY(recorder.updates.isEmpty());
    editor.endEdit();
    QCOMPARE(recorder.updates, QList<bool>{true});
    QCOMPARE(recorder.lists, 2);
    QCOMPARE(editor.editDepth, 0);

    // One undo step for the whole edit.
    editor.document->undo();
    QCOMPARE(editor.document->toPlainText(), QStringLiteral("[Section 1]\nitem 1"));
    QCOMPARE(describeLines(editor), QStringLiteral("S1 I1"));

    recorder.clear();
    editor.beginEdit();
    editor.lastElement()->setLine(QStringLiteral("item 4"), true);
    editor.endEdit();
    QCOMPARE(recorder.updates, QList<bool>{false});

    // A nested edit that only changes lines keeps the count change that the outer one owes.
    recorder.clear();
    editor.beginEdit();
    editor.appendLine(QStringLiteral("item 2"));
    editor.beginEdit();
    editor.lastElement()->setLine(QStringLiteral("item 3"), true);
    editor.endEdit();
    QVERIFY(recorder.updates.isEmpty());
    editor.endEdit();
    QCOMPARE(recorder.updates, QList<bool>{true});
}

void tst_ElementTextEditor::unconnectedDocumentAndRescan()
{
    QElementTextEditor editor(false);
    editor.document->setPlainText(QStringLiteral("[Section 1]\nitem 1\n\nitem 2"));
    QVERIFY(!editor.firstElement);

    enableTestElements(editor);
    QChangeRecorder recorder(editor);
    editor.rescan();
    QCOMPARE(describeLines(editor), QStringLiteral("S1 I1 - I2"));
    QCOMPARE(recorder.changes.join(QLatin1Char(' ')), QStringLiteral("+S1 +I1 +I2"));
    QCOMPARE(recorder.updates, QList<bool>{true});

    // Typing goes unheard; a rescan leaves lines that still fit alone and does not re-read them.
    QTextCursor cursor(editor.document);
    cursor.movePosition(QTextCursor::End);
    cursor.insertText(QStringLiteral("x"));
    cursor.setPosition(editor.firstElement->next->block.position() + 6);
    cursor.insertText(QStringLiteral("5"));
    recorder.clear();
    editor.rescan();
    QCOMPARE(recorder.changes.join(QLatin1Char(' ')), QStringLiteral("-I2"));
    QCOMPARE(describeLines(editor), QStringLiteral("S1 I1 - -"));
    QCOMPARE(recorder.updates, QList<bool>{true});

    recorder.clear();
    editor.rescan();
    QCOMPARE(recorder.lists, 0);
    QCOMPARE(recorder.updates, QList<bool>{false});

    // Inside an edit it owes a count change whatever it found.
    recorder.clear();
    editor.beginEdit();
    editor.rescan();
    editor.endEdit();
    QCOMPARE(recorder.updates, QList<bool>{true});
    QCOMPARE(checkInvariants(editor), QString());
}

void tst_ElementTextEditor::wholeText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("lines");

    // Line ends other than a line feed are cut by the document, not by the text.
    QTest::newRow("line feeds") << "; B\n[Section 1]\nitem 1\n\nitem 2"
                                << "N:B S1 I1 - I2";
    QTest::newRow("CR LF") << "; B\r\n[Section 1]\r\nitem 1\r\n\r\nitem 2"
                           << "N:B S1 I1 - I2";
    QTest::newRow("lone CR") << "item 1\ritem 2\r"
                             << "I1 I2 -";
    QTest::newRow("paragraph separator") << QStringLiteral("item 1\u2029item 22") << "I1 I22";
    QTest::newRow("nothing") << ""
                             << "-";
}

void tst_ElementTextEditor::wholeText()
{
    QFETCH(QString, text);
    QFETCH(QString, lines);

    QElementTextEditor editor;
    enableTestElements(editor);
    editor.setPlainText(QStringLiteral("; A\n[Section 9]\nitem 9"));
    QChangeRecorder recorder(editor);
    recorder.adoptElements();
    QList<bool> reloading;
    QStringList linked;
    connect(&editor, &QElementTextEditor::update, this,
            [&](QElementTextEditor*, QList<QTextElementChange>& list) {
                reloading << editor.isReloading();
                for (const QTextElementChange& change : list)
                    if (change.type == ElementRemoved && (change.element->previous || change.element->next))
                        linked << describe(change.element);
            });

    editor.setPlainText(text);
    QCOMPARE(describeLines(editor), lines);
    // The old elements go in one list with the new ones, bottom up, already out of the element list.
    QCOMPARE(recorder.changes.mid(0, 3), QStringList({"-I9", "-S9", "-N:A"}));
    QCOMPARE(recorder.lists, 1);
    QCOMPARE(recorder.updates, QList<bool>{true});
    QCOMPARE(reloading, QList<bool>{true});
    QVERIFY(!editor.isReloading());
    QCOMPARE(linked, QStringList());
    QCOMPARE(checkInvariants(editor), QString());
    QCOMPARE(recorder.checkLive(), QString());

    // The same text typed into an empty document reads the same.
    QElementTextEditor typed;
    enableTestElements(typed);
    QTextCursor(typed.document).insertText(text);
    QCOMPARE(describeLines(typed), lines);
}

void tst_ElementTextEditor::clearReportsEveryElement()
{
    QElementTextEditor editor;
    enableTestElements(editor);
    editor.setPlainText(QStringLiteral("[Section 1]\nitem 1\nitem 2"));
    QChangeRecorder recorder(editor);
    recorder.adoptElements();
    editor.document->clear();
    QCOMPARE(recorder.changes.join(QLatin1Char(' ')), QStringLiteral("-I2 -I1 -S1"));
    QVERIFY(!editor.firstElement);
    QCOMPARE(recorder.checkLive(), QString());
}

void tst_ElementTextEditor::updateSlotMayWriteItsLine()
{
    // A model that renumbers items as they come, writing muted inside an edit: no loop, and the
    // written values stand.
    QElementTextEditor editor;
    enableTestElements(editor);
    int heard = 0;
    connect(&editor, &QElementTextEditor::update, this,
            [&](QElementTextEditor*, QList<QTextElementChange>& changes) {
                ++heard;
                editor.beginEdit();
                for (const QTextElementChange& change : changes)
                    if (change.type == ElementAdded && change.element->type() == etFrame) {
                        auto* item = static_cast<QTestItem*>(change.element);
                        item->value = item->block.blockNumber();
                        item->setLine(QStringLiteral("item %1").arg(item->value));
                    }
                editor.endEdit();
            });
    editor.setPlainText(QStringLiteral("[Section 1]\nitem 0\nitem 0"));
    QCOMPARE(heard, 1);
    QCOMPARE(editor.document->toPlainText(), QStringLiteral("[Section 1]\nitem 1\nitem 2"));
    QCOMPARE(describeLines(editor), QStringLiteral("S1 I1 I2"));
}

void tst_ElementTextEditor::poolsReuseReleasedElements()
{
    QTextElementPool<QTestItem>::clearFree();
    const int made = QTextElementPool<QTestItem>::instanceCount();
    QElementTextEditor editor;
    enableTestElements(editor);
    editor.setPlainText(QStringLiteral("item 1\nitem 2"));
    QTextElement* first = editor.firstElement;
    QTextElement* second = editor.lastElement();
    QCOMPARE(QTextElementPool<QTestItem>::instanceCount(), made + 2);

    QTextCursor cursor(editor.document);
    cursor.select(QTextCursor::Document);
    cursor.insertText(QStringLiteral("x"));
    QVERIFY(QTextElementPool<QTestItem>::isFree(static_cast<QTestItem*>(first)));
    QVERIFY(!first->editor && !first->next && !first->previous && first->valid);

    // Free elements come back in the order they were released, before anything new is made.
    cursor.insertText(QStringLiteral("\nitem 3\nitem 4\nitem 5"));
    QCOMPARE(describeLines(editor), QStringLiteral("- I3 I4 I5"));
    QCOMPARE(QTextElementPool<QTestItem>::instanceCount(), made + 3);
    QCOMPARE(QTextElementPool<QTestItem>::freeCount(), 0);
    QTextElement* third = editor.firstElement;
    QVERIFY((third == first && third->next == second) || (third == second && third->next == first));
    QCOMPARE(checkInvariants(editor), QString());
}

void tst_ElementTextEditor::destructionReleasesElements()
{
    QTextElementPool<QTestItem>::clearFree();
    QTextElementPool<QTestSection>::clearFree();
    {
        QElementTextEditor editor;
        enableTestElements(editor);
        editor.setPlainText(QStringLiteral("[Section 1]\nitem 1\nitem 2"));
    }
    QCOMPARE(QTextElementPool<QTestItem>::freeCount(), 2);
    QCOMPARE(QTextElementPool<QTestSection>::freeCount(), 1);
}

void tst_ElementTextEditor::randomEdits_data()
{
    QTest::addColumn<quint32>("seed");
    for (quint32 seed : {1u, 7u, 42u, 2024u})
        QTest::newRow(qPrintable(QStringLiteral("seed %1").arg(seed))) << seed;
}

void tst_ElementTextEditor::randomEdits()
{
    QFETCH(quint32, seed);
    QRandomGenerator random(seed);
    const QStringList pieces = {QStringLiteral("i"),  QStringLiteral("item "),    QStringLiteral("1"),
                                QStringLiteral("23"), QStringLiteral(" "),        QStringLiteral("["),
                                QStringLiteral("]"),  QStringLiteral("Section "), QStringLiteral("; c"),
                                QStringLiteral("\n"), QStringLiteral("\n\n"),     QStringLiteral("x")};
    const QStringList lines = {QStringLiteral("item %1"), QStringLiteral("[Section %1]"),
                               QStringLiteral("; n%1"),   QString(),
                               QStringLiteral("junk %1"), QStringLiteral("[Other %1]")};

    auto line = [&lines, &random](int number) {
        const QString text = lines.at(int(random.bounded(int(lines.size()))));
        return text.contains(QLatin1String("%1")) ? text.arg(number) : text;
    };

    QElementTextEditor editor;
    enableTestElements(editor);
    QChangeRecorder recorder(editor);
    editor.setPlainText(QStringLiteral("; Ryu\n[Section 1]\nitem 1\nitem 2\n\n[Section 2]\nitem 3"));
    editor.document->setUndoRedoEnabled(true);
    QElementTextEditor fresh;
    enableTestElements(fresh);

    for (int step = 0; step < 1000; ++step) {
        const int length = editor.document->characterCount() - 1;
        QTextCursor cursor(editor.document);
        cursor.setPosition(int(random.bounded(length + 1)));
        QString action;
        switch (random.bounded(9)) {
        case 0:
        case 1:
            action = QStringLiteral("type");
            cursor.insertText(pieces.at(int(random.bounded(int(pieces.size())))));
            break;
        case 2:
            action = QStringLiteral("delete");
            cursor.setPosition(qMin(length, cursor.position() + int(random.bounded(40)) + 1),
                               QTextCursor::KeepAnchor);
            cursor.removeSelectedText();
            break;
        case 3: {
            action = QStringLiteral("paste");
            QStringList paste;
            for (int n = int(random.bounded(5)); n >= 0; --n)
                paste << line(int(random.bounded(100)));
            cursor.setPosition(qMin(length, cursor.position() + int(random.bounded(10))),
                               QTextCursor::KeepAnchor);
            cursor.insertText(paste.join(QLatin1Char('\n')));
            break;
        }
        case 4:
            action = QStringLiteral("undo");
            editor.document->undo();
            break;
        case 5:
            action = QStringLiteral("redo");
            editor.document->redo();
            break;
        default: {
            // Model-side edits on a random element.
            int count = 0;
            for (QTextElement* element = editor.firstElement; element; element = element->next)
                ++count;
            if (count == 0) break;
            QTextElement* element = editor.firstElement;
            for (int n = int(random.bounded(count)); n > 0; --n)
                element = element->next;
            switch (random.bounded(4)) {
            case 0:
                action = QStringLiteral("remove");
                element->remove();
                break;
            case 1:
                action = QStringLiteral("insert after");
                editor.insertLineAfter(element, line(step), random.bounded(2) == 0);
                break;
            case 2:
                action = QStringLiteral("insert before");
                editor.insertLineBefore(element, line(step), random.bounded(2) == 0);
                break;
            default:
                if (element->type() == etFrame) {
                    action = QStringLiteral("set line");
                    static_cast<QTestItem*>(element)->value = step;
                    element->setLine(QStringLiteral("item %1").arg(step));
                } else {
                    action = QStringLiteral("reparse line");
                    element->setLine(QStringLiteral("item %1").arg(step), true);
                }
                break;
            }
        }
        }
        const QString where = QStringLiteral("step %1 (%2)").arg(step).arg(action);
        QCOMPARE(checkInvariants(editor), QString());
        QCOMPARE(recorder.checkLive(), QString());
        // The lines say what a fresh reading of the text says, lines with comments aside: a comment
        // counts as a token when a section header follows, which an edit below need not have touched.
        fresh.setPlainText(editor.document->toPlainText());
        if (describeLines(editor, false) != describeLines(fresh, false))
            QFAIL(qPrintable(where + QStringLiteral(": ") + describeLines(editor, false) +
                             QStringLiteral(" vs ") + describeLines(fresh, false)));
    }
}

QTEST_GUILESS_MAIN(tst_ElementTextEditor)
#include "tst_ElementTextEditor.moc"
