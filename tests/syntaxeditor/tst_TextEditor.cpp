// The code editor on documents coloured by the real M.U.G.E.N. checker, so that fold levels and bracket
// lists are the ones a user gets; driven offscreen by keys and mouse.

#include "QModelTables.h"
#include "QSyntaxTextEditor.h"
#include "QTextEditor.h"
#include "TestData.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

namespace {

// Fold levels as the checker gives them: line 1 opens 2..12, line 5 opens 6..8, line 10 opens 11..12.
const char* const states = "; comment\n"                                     // 0
                           "[Statedef 200]\n"                                // 1
                           "type = S\n"                                      // 2
                           "ctrl = 0\n"                                      // 3
                           "\n"                                              // 4
                           "[State 200, 1]\n"                                // 5
                           "type = ChangeState\n"                            // 6
                           "trigger1 = (Time > 1) && (AnimTime = 0) ; (x]\n" // 7
                           "value = 0\n"                                     // 8
                           "\n"                                              // 9
                           "[State 200, 2]\n"                                // 10
                           "type = VelSet\n"                                 // 11
                           "trigger1 = 1\n"                                  // 12
                           "\n"                                              // 13
                           "[Statedef 201]\n"                                // 14
                           "type = S";                                       // 15

struct Shown
{
    std::unique_ptr<QSyntaxTextEditor> text;
    std::unique_ptr<QTextEditor> editor;

    QTextBlock block(int line) const { return text->document->findBlockByNumber(line); }
    void moveTo(int line, int column)
    {
        QTextCursor cursor(block(line));
        cursor.setPosition(block(line).position() + column);
        editor->setTextCursor(cursor);
    }
    // The marks of the bracket search: (position, "match" | "mismatch" | "range").
    QStringList bracketMarks() const
    {
        QStringList marks;
        for (const QTextEdit::ExtraSelection& mark : editor->extraSelections()) {
            const QBrush background = mark.format.background();
            const QString kind = background == editor->matchFormat().background() ? QStringLiteral("match")
                                 : background == editor->mismatchFormat().background()
                                     ? QStringLiteral("mismatch")
                                 : background == editor->rangeFormat().background() ? QStringLiteral("range")
                                                                                    : QString();
            if (!kind.isEmpty()) marks << QStringLiteral("%1:%2").arg(kind).arg(mark.cursor.selectionStart());
        }
        return marks;
    }
    QPoint gutterPoint(int line, bool foldColumn) const
    {
        const QRect rect = editor->lineRect(line);
        const int x = foldColumn ? editor->foldMarkerLeft() + 3 : 2;
        return QPoint(x, rect.center().y());
    }
};

} // namespace

class tst_TextEditor : public QObject
{
    Q_OBJECT

    std::unique_ptr<QModelTables> tables;

    static Shown show(const QString& text)
    {
        Shown shown;
        shown.text = std::make_unique<QSyntaxTextEditor>(pftStates, nullptr, false, 0x1010000, false);
        shown.text->setPlainText(text);
        shown.editor = std::make_unique<QTextEditor>();
        shown.editor->resize(500, 300);
        shown.editor->setDocument(shown.text->document);
        shown.editor->show();
        if (!QTest::qWaitForWindowExposed(shown.editor.get())) qWarning("editor not exposed");
        return shown;
    }

    static QList<int> hiddenLines(const Shown& shown)
    {
        QList<int> hidden;
        for (QTextBlock block = shown.text->document->begin(); block.isValid(); block = block.next())
            if (!block.isVisible()) hidden << block.blockNumber();
        return hidden;
    }

    static QList<int> range(int first, int last)
    {
        QList<int> lines;
        for (int line = first; line <= last; ++line)
            lines << line;
        return lines;
    }

private slots:
    void initTestCase()
    {
        tables = std::make_unique<QModelTables>(TestData::binDir());
        QVERIFY2(QModelTables::checkers(), "syntax_mugen.xml beside the programs");
    }

    void fold_data()
    {
        QTest::addColumn<QList<int>>("folds");
        QTest::addColumn<QList<int>>("hidden");
        QTest::addColumn<QList<int>>("hiddenAfterUnfoldingFirst");

        QTest::newRow("a state") << QList<int>{5} << range(6, 8) << QList<int>{};
        QTest::newRow("a statedef hides its states") << QList<int>{1} << range(2, 12) << QList<int>{};
        QTest::newRow("inner fold survives the outer one") << QList<int>{5, 1} << range(2, 12) << range(6, 8);
        QTest::newRow("a line that opens no scope") << QList<int>{2} << QList<int>{} << QList<int>{};
        QTest::newRow("last line") << QList<int>{15} << QList<int>{} << QList<int>{};
    }

    void fold()
    {
        QFETCH(QList<int>, folds);
        QFETCH(QList<int>, hidden);
        QFETCH(QList<int>, hiddenAfterUnfoldingFirst);
        Shown shown = show(QString::fromLatin1(states));
        const int lines = shown.text->document->lineCount();
        for (int line : folds)
            shown.editor->foldBlock(line);
        QCOMPARE(hiddenLines(shown), hidden);
        // The document counts only the lines left to show, so the scroll range shrinks with them.
        QCOMPARE(shown.text->document->lineCount(), lines - int(hidden.size()));
        QCOMPARE(shown.editor->isFolded(folds.last()), !hidden.isEmpty());

        shown.editor->unfoldBlock(folds.last());
        QCOMPARE(hiddenLines(shown), hiddenAfterUnfoldingFirst);
        QVERIFY(!shown.editor->isFolded(folds.last()));
    }

    void foldMovesCursorOutOfHiddenLines()
    {
        Shown shown = show(QString::fromLatin1(states));
        shown.moveTo(7, 5);
        shown.editor->foldBlock(5);
        const QTextCursor cursor = shown.editor->textCursor();
        QVERIFY(cursor.block().isVisible());
        QCOMPARE(cursor.blockNumber(), 5);
        // Moving down goes past the folded lines.
        QTest::keyClick(shown.editor.get(), Qt::Key_Down);
        QCOMPARE(shown.editor->textCursor().blockNumber(), 9);
    }

    void clickOnFoldedBoxUnfolds()
    {
        Shown shown = show(QString::fromLatin1(states));
        shown.editor->foldBlock(5);
        const QRect box = shown.editor->foldedBoxRect(5);
        QVERIFY(!box.isEmpty());
        QVERIFY(shown.editor->foldedBoxRect(1).isEmpty());
        // A click beside the box is an ordinary click.
        QTest::mouseClick(shown.editor->viewport(), Qt::LeftButton, {}, box.topLeft() - QPoint(4, -2));
        QVERIFY(shown.editor->isFolded(5));
        QTest::mouseClick(shown.editor->viewport(), Qt::LeftButton, {}, box.center());
        QVERIFY(!shown.editor->isFolded(5));
        QVERIFY(hiddenLines(shown).isEmpty());
    }

    void gutterClickTogglesFold()
    {
        Shown shown = show(QString::fromLatin1(states));
        QWidget* gutter = shown.editor->extraArea();
        QTest::mouseClick(gutter, Qt::LeftButton, {}, shown.gutterPoint(10, true));
        QCOMPARE(hiddenLines(shown), range(11, 12));
        QTest::mouseClick(gutter, Qt::LeftButton, {}, shown.gutterPoint(10, true));
        QVERIFY(hiddenLines(shown).isEmpty());
        // A line that opens nothing has no marker to click.
        QTest::mouseClick(gutter, Qt::LeftButton, {}, shown.gutterPoint(11, true));
        QVERIFY(hiddenLines(shown).isEmpty());
    }

    void editsThatBreakAFoldOpenIt_data()
    {
        QTest::addColumn<int>("column");
        QTest::addColumn<QString>("keys");

        // A new line behind the header belongs to the folded scope but is in plain view.
        QTest::newRow("new line behind the header") << 14 << QStringLiteral("\n");
        // Without its "[" the line is no header and opens no scope.
        QTest::newRow("header taken apart") << 0 << QStringLiteral("\x7f");
    }

    void editsThatBreakAFoldOpenIt()
    {
        QFETCH(int, column);
        QFETCH(QString, keys);
        Shown shown = show(QString::fromLatin1(states));
        shown.editor->foldBlock(5);
        shown.moveTo(5, column);
        for (QChar key : keys) {
            if (key == QLatin1Char('\n'))
                QTest::keyClick(shown.editor.get(), Qt::Key_Return);
            else
                QTest::keyClick(shown.editor.get(), Qt::Key_Delete);
        }
        QVERIFY(hiddenLines(shown).isEmpty());
    }

    void brackets_data()
    {
        QTest::addColumn<int>("line");
        QTest::addColumn<int>("column");
        QTest::addColumn<QStringList>("marks");

        const int line7 = 1 + QString::fromLatin1(states).indexOf(QLatin1String("\ntrigger1 = (Time"));
        auto at = [line7](const char* kind, int column) {
            return QStringLiteral("%1:%2").arg(kind).arg(line7 + column);
        };
        QTest::newRow("opening, forward")
            << 7 << 11 << QStringList{at("range", 12), at("match", 11), at("match", 20)};
        QTest::newRow("closing, backward")
            << 7 << 39 << QStringList{at("range", 26), at("match", 25), at("match", 38)};
        QTest::newRow("between two pairs: both")
            << 7 << 21 << QStringList{at("range", 12), at("match", 11), at("match", 20)};
        QTest::newRow("no bracket") << 7 << 3 << QStringList{};
        QTest::newRow("in a comment") << 7 << 43 << QStringList{};
        QTest::newRow("closing in a comment") << 7 << 45 << QStringList{};
    }

    void brackets()
    {
        QFETCH(int, line);
        QFETCH(int, column);
        QFETCH(QStringList, marks);
        Shown shown = show(QString::fromLatin1(states));
        shown.moveTo(line, column);
        shown.editor->parenthesesMatchingTimeOut();
        QStringList found = shown.bracketMarks();
        QCOMPARE(found, marks);
    }

    void bracketMismatch_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("column");
        QTest::addColumn<QStringList>("marks");

        QTest::newRow("closing without partner")
            << "[State 0]\nvalue = 1 + 2)" << 14 << QStringList{"mismatch:23"};
        QTest::newRow("opening without partner")
            << "[State 0]\nvalue = (1 + 2" << 8 << QStringList{"mismatch:18"};
        QTest::newRow("wrong kind") << "[State 0]\nvalue = (1 + 2]" << 8 << QStringList{"mismatch:18"};
        QTest::newRow("partner on a later line")
            << "[State 0]\nvalue = (1 +\n2)" << 8 << QStringList{"range:19", "match:18", "match:24"};
        QTest::newRow("partner hidden by a comment") << "[State 0]\nvalue = (1 ; )\n"
                                                     << 8 << QStringList{"mismatch:18"};
    }

    void bracketMismatch()
    {
        QFETCH(QString, text);
        QFETCH(int, column);
        QFETCH(QStringList, marks);
        Shown shown = show(text);
        shown.moveTo(1, column);
        QTRY_COMPARE(shown.bracketMarks(), marks);
    }

    void bracketHelpers()
    {
        Shown shown = show(QString::fromLatin1(states));
        const int lineStart = shown.block(7).position();
        shown.moveTo(7, 11);
        QVERIFY(shown.editor->selectToMatchingBracket());
        QCOMPARE(shown.editor->textCursor().selectedText(), QStringLiteral("(Time > 1)"));
        shown.moveTo(7, 39);
        QVERIFY(shown.editor->jumpToMatchingBracket());
        QCOMPARE(shown.editor->textCursor().position(), lineStart + 25);
        shown.moveTo(7, 43);
        QVERIFY(!shown.editor->jumpToMatchingBracket());
    }

    void readOnlyShowsNoBracketMarks()
    {
        Shown shown = show(QString::fromLatin1(states));
        shown.editor->setReadOnly(true);
        shown.moveTo(7, 11);
        shown.editor->parenthesesMatchingTimeOut();
        QVERIFY(shown.bracketMarks().isEmpty());
    }

    void gutterWidensWithTheDigits()
    {
        Shown shown = show(QString(98, QLatin1Char('\n')));
        QCOMPARE(shown.text->document->blockCount(), 99);
        const int narrow = shown.editor->extraArea()->width();
        QCOMPARE(shown.editor->extraAreaWidth(), narrow);
        QTextCursor end(shown.text->document);
        end.movePosition(QTextCursor::End);
        shown.editor->setTextCursor(end);
        QTest::keyClick(shown.editor.get(), Qt::Key_Return);
        const int digit = QFontMetrics(shown.editor->font()).horizontalAdvance(QLatin1Char('9'));
        QCOMPARE(shown.editor->extraArea()->width(), narrow + digit);
        // The text moves right with the gutter.
        QCOMPARE(shown.editor->viewport()->x(), shown.editor->extraArea()->geometry().right() + 1);
        QTest::keyClick(shown.editor.get(), Qt::Key_Backspace);
        QCOMPARE(shown.editor->extraArea()->width(), narrow);
    }

    void gutterDragSelectsWholeLines_data()
    {
        QTest::addColumn<int>("from");
        QTest::addColumn<int>("to");
        QTest::addColumn<QString>("selected");

        QTest::newRow("down") << 2 << 3 << QStringLiteral("type = S\u2029ctrl = 0\u2029");
        QTest::newRow("up") << 3 << 2 << QStringLiteral("type = S\u2029ctrl = 0\u2029");
        QTest::newRow("one line") << 6 << 6 << QStringLiteral("type = ChangeState\u2029");
        QTest::newRow("last line has no line end") << 15 << 15 << QStringLiteral("type = S");
    }

    void gutterDragSelectsWholeLines()
    {
        QFETCH(int, from);
        QFETCH(int, to);
        QFETCH(QString, selected);
        Shown shown = show(QString::fromLatin1(states));
        QWidget* gutter = shown.editor->extraArea();
        QTest::mousePress(gutter, Qt::LeftButton, {}, shown.gutterPoint(from, false));
        QMouseEvent move(QEvent::MouseMove, shown.gutterPoint(to, false),
                         gutter->mapToGlobal(shown.gutterPoint(to, false)), Qt::NoButton, Qt::LeftButton,
                         Qt::NoModifier);
        QCoreApplication::sendEvent(gutter, &move);
        QTest::mouseRelease(gutter, Qt::LeftButton, {}, shown.gutterPoint(to, false));
        QCOMPARE(shown.editor->textCursor().selectedText(), selected);
    }

    void gutterDragPastTheBottomScrolls()
    {
        QString text;
        for (int line = 0; line < 200; ++line)
            text += QStringLiteral("value = %1\n").arg(line);
        Shown shown = show(text);
        QWidget* gutter = shown.editor->extraArea();
        QTest::mousePress(gutter, Qt::LeftButton, {}, QPoint(2, 5));
        const QPoint below(2, gutter->height() + 40);
        QMouseEvent move(QEvent::MouseMove, below, gutter->mapToGlobal(below), Qt::NoButton, Qt::LeftButton,
                         Qt::NoModifier);
        QCoreApplication::sendEvent(gutter, &move);
        QTRY_VERIFY(shown.editor->verticalScrollBar()->value() > 5);
        QTest::mouseRelease(gutter, Qt::LeftButton, {}, below);
        const int stopped = shown.editor->verticalScrollBar()->value();
        QTest::qWait(150);
        QCOMPARE(shown.editor->verticalScrollBar()->value(), stopped);
        // Every line from the first to the last one in view is selected, whole.
        const QTextCursor cursor = shown.editor->textCursor();
        QCOMPARE(cursor.selectionStart(), 0);
        QVERIFY(shown.text->document->findBlock(cursor.selectionEnd()).blockNumber() > 5);
        QCOMPARE(shown.text->document->findBlock(cursor.selectionEnd()).position(), cursor.selectionEnd());
    }

    void cursorSignals()
    {
        Shown shown = show(QString::fromLatin1(states));
        shown.moveTo(2, 0);
        QSignalSpy position(shown.editor.get(), &QTextEditor::cursorChanged);
        QSignalSpy line(shown.editor.get(), &QTextEditor::currentLineChanged);
        QTest::keyClick(shown.editor.get(), Qt::Key_Right);
        QCOMPARE(position.last().first().toPoint(), QPoint(2, 3));
        QCOMPARE(line.count(), 0);
        QTest::keyClick(shown.editor.get(), Qt::Key_Down);
        QCOMPARE(position.last().first().toPoint(), QPoint(2, 4));
        QCOMPARE(line.count(), 1);
        QCOMPARE(line.last().first().toInt(), 3);
    }

    void scopeHighlightFollowsTheFoldColumn()
    {
        Shown shown = show(QString::fromLatin1(states));
        QWidget* gutter = shown.editor->extraArea();
        QTest::mouseMove(gutter, shown.gutterPoint(7, true));
        QTRY_COMPARE(shown.editor->highlightedBlock(), 7);
        // Over the numbers there is no scope to show.
        QTest::mouseMove(gutter, shown.gutterPoint(7, false));
        QTRY_COMPARE(shown.editor->highlightedBlock(), -1);
        QTest::mouseMove(gutter, shown.gutterPoint(11, true));
        QTRY_COMPARE(shown.editor->highlightedBlock(), 11);
        QTest::keyClick(shown.editor.get(), Qt::Key_Right);
        QCOMPARE(shown.editor->highlightedBlock(), -1);
    }

    void setCompletionFile_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<bool>("read");

        QTest::newRow("absent") << QByteArray() << false;
        QTest::newRow("other root") << QByteArray("<completer><model prefix=\"\"/></completer>") << false;
        QTest::newRow("not xml") << QByteArray("completion") << false;
        QTest::newRow("broken") << QByteArray(
                                       "<completion><model prefix=\"\"><word value=\"a\"></completion>")
                                << false;
        QTest::newRow("empty") << QByteArray("<completion/>") << true;
        QTest::newRow("words")
            << QByteArray("<completion><model prefix=\"\"><word value=\"Abs\"/></model></completion>")
            << true;
    }

    void setCompletionFile()
    {
        QFETCH(QByteArray, content);
        QFETCH(bool, read);
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("completer.xml"));
        if (!content.isNull()) {
            QFile file(path);
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write(content);
        }
        QTextEditor editor;
        QCOMPARE(editor.setCompletionFile(path), read);
    }

    void completion_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<bool>("popup");
        QTest::addColumn<QString>("first");

        QTest::newRow("controller after type") << "type = Chang" << true << "ChangeAnim";
        QTest::newRow("controllers at once after type") << "type = " << true << "AfterImage";
        QTest::newRow("trigger word") << "trigger1 = AnimE" << true << "AnimElem";
        QTest::newRow("dot hides") << "trigger1 = AnimE." << false << QString();
        QTest::newRow("no word begun") << "trigger1 = " << false << QString();
        QTest::newRow("movetype is not type") << "movetype = Chang" << false << QString();
        QTest::newRow("nothing starts so") << "trigger1 = Qqq" << false << QString();
    }

    void completion()
    {
        QFETCH(QString, typed);
        QFETCH(bool, popup);
        QFETCH(QString, first);
        Shown shown = show(QStringLiteral("[State 0, 1]\n"));
        QVERIFY(shown.editor->setCompletionFile(TestData::binDir() + QStringLiteral("/completer.xml")));
        QTextCursor end(shown.text->document);
        end.movePosition(QTextCursor::End);
        shown.editor->setTextCursor(end);
        QTest::keyClicks(shown.editor.get(), typed);
        QCompleter* completer = shown.editor->completer();
        QCOMPARE(completer->popup()->isVisible(), popup);
        if (popup) QCOMPARE(completer->popup()->currentIndex().data().toString(), first);
    }

    void completionInserts()
    {
        Shown shown = show(QStringLiteral("[State 0, 1]\n"));
        QVERIFY(shown.editor->setCompletionFile(TestData::binDir() + QStringLiteral("/completer.xml")));
        QTextCursor end(shown.text->document);
        end.movePosition(QTextCursor::End);
        shown.editor->setTextCursor(end);
        QTest::keyClicks(shown.editor.get(), QStringLiteral("type = ChangeS"));
        QAbstractItemView* popup = shown.editor->completer()->popup();
        QVERIFY(popup->isVisible());
        QTest::keyClick(popup, Qt::Key_Return);
        QCOMPARE(shown.block(1).text(), QStringLiteral("type = ChangeState"));
    }

    void readOnlyCannotComplete()
    {
        Shown shown = show(QStringLiteral("[State 0, 1]\ntype = Chang"));
        QVERIFY(shown.editor->setCompletionFile(TestData::binDir() + QStringLiteral("/completer.xml")));
        shown.editor->setReadOnly(true);
        QTextCursor end(shown.text->document);
        end.movePosition(QTextCursor::End);
        shown.editor->setTextCursor(end);
        QTest::keyClicks(shown.editor.get(), QStringLiteral("e"));
        QVERIFY(!shown.editor->completer()->popup()->isVisible());
        shown.editor->insertCompletion(QStringLiteral("ChangeState"));
        QCOMPARE(shown.block(1).text(), QStringLiteral("type = Chang"));
    }
};

QTEST_MAIN(tst_TextEditor)
#include "tst_TextEditor.moc"
