// The text workspace and the base of the text editors on documents checked by the real M.U.G.E.N.
// checker: going to a line, stepping through the findings, commenting lines, searching and the status
// line, driven offscreen with the dialog seam recording every question.

#include "QDialogRecorder.h"
#include "QModelTables.h"
#include "QMugenModel.h"
#include "QQuickFind.h"
#include "QSyntaxTextEditor.h"
#include "QTextDocumentEditor.h"
#include "QTextEditor.h"
#include "QTextWorkspace.h"
#include "TestData.h"

#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>

#include <memory>

namespace {

class TextEditor : public QTextDocumentEditor
{
public:
    using QTextDocumentEditor::QTextDocumentEditor;
    QString title() const override { return QStringLiteral("Text"); }
    QProjectFileType fileType() const override { return pftStates; }
    int number() const override { return 4; }
    int scope() const override { return 5; }
};

struct Shown
{
    std::unique_ptr<QSyntaxTextEditor> text;
    std::unique_ptr<QTextWorkspace> workspace;
    std::unique_ptr<TextEditor> editor;

    QTextEditor* view() const { return workspace->editor(); }
    QString plain() const { return text->document->toPlainText(); }
    QPoint cursor() const
    {
        const QTextCursor at = view()->textCursor();
        return QPoint(at.positionInBlock(), at.blockNumber());
    }
    void moveTo(int line, int column, int toLine = -1, int toColumn = -1) const
    {
        QTextCursor cursor(text->document->findBlockByNumber(line));
        cursor.setPosition(cursor.block().position() + column);
        if (toLine >= 0)
            cursor.setPosition(text->document->findBlockByNumber(toLine).position() + toColumn,
                               QTextCursor::KeepAnchor);
        view()->setTextCursor(cursor);
    }
};

Shown show(const QString& content, bool readOnly = false)
{
    Shown shown;
    shown.text = std::make_unique<QSyntaxTextEditor>(pftStates, nullptr, readOnly, 0x1010000, false);
    shown.text->setPlainText(content);
    shown.workspace = std::make_unique<QTextWorkspace>();
    shown.workspace->resize(600, 400);
    shown.editor = std::make_unique<TextEditor>(shown.workspace.get());
    shown.editor->bind(shown.text.get());
    shown.editor->activate();
    shown.workspace->show();
    if (!QTest::qWaitForWindowExposed(shown.workspace.get())) qWarning("workspace not exposed");
    return shown;
}

const char* const checked = "[Statedef 200]\n"         // 0
                            "type = S\n"               // 1
                            "\n"                       // 2
                            "[State 200, 1]\n"         // 3
                            "type = NoSuchThing\n"     // 4
                            "trigger1 = 1\n"           // 5
                            "\n"                       // 6
                            "[State 200, 2]\n"         // 7
                            "type = VelSet\n"          // 8
                            "trigger1 = 1 + Nothing\n" // 9
                            "x = 1";                   // 10

} // namespace

class tst_TextWorkspace : public QObject
{
    Q_OBJECT

    std::unique_ptr<QModelTables> tables;

private slots:
    void initTestCase()
    {
        tables = std::make_unique<QModelTables>(TestData::binDir());
        QVERIFY2(QModelTables::checkers(), "syntax_mugen.xml beside the programs");
    }

    void goToLine_data()
    {
        QTest::addColumn<QString>("answer");
        QTest::addColumn<int>("reply");
        QTest::addColumn<bool>("asked");
        QTest::addColumn<int>("line");
        QTest::newRow("a line of the text") << "3" << int(QUserDialogs::No) << false << 2;
        QTest::newRow("the last line") << "5" << int(QUserDialogs::No) << false << 4;
        QTest::newRow("past the end, yes") << "9" << int(QUserDialogs::Yes) << true << 4;
        QTest::newRow("past the end, no") << "9" << int(QUserDialogs::No) << true << 1;
        QTest::newRow("cancelled") << "" << int(QUserDialogs::Yes) << false << 1;
    }

    void goToLine()
    {
        QFETCH(QString, answer);
        QFETCH(int, reply);
        QFETCH(bool, asked);
        QFETCH(int, line);
        QDialogRecorder dialogs;
        Shown shown = show(QStringLiteral("a\nb\nc\nd\ne"));
        shown.moveTo(1, 1);
        dialogs.fileAnswers.enqueue(answer.isEmpty() ? QStringList() : QStringList{answer});
        dialogs.answers.enqueue(QUserDialogs::Button(reply));
        shown.workspace->goToLine();
        QCOMPARE(dialogs.calls.size(), asked ? 2 : 1);
        QCOMPARE(dialogs.calls.at(0).kind, QStringLiteral("item"));
        QCOMPARE(dialogs.calls.at(0).title, QStringLiteral("Go to line"));
        if (asked) {
            QCOMPARE(dialogs.calls.at(1).title, QStringLiteral("Go to line"));
            QCOMPARE(dialogs.calls.at(1).text,
                     QStringLiteral("Invalid line! Do you want go to the last line?"));
            QCOMPARE(dialogs.calls.at(1).buttons,
                     QUserDialogs::Buttons(QUserDialogs::Yes | QUserDialogs::No));
        }
        QCOMPARE(shown.cursor().y(), line);
        if (line != 1) QCOMPARE(shown.cursor().x(), 0);
    }

    // Positions are (column, line); the checker's findings of the text above decide where each step ends.
    void stepsThroughErrors_data()
    {
        QTest::addColumn<QPoint>("from");
        QTest::addColumn<bool>("forward");
        QTest::addColumn<QPoint>("to");
        QTest::newRow("next from the top") << QPoint(0, 0) << true << QPoint(7, 4);
        QTest::newRow("next from the first error") << QPoint(7, 4) << true << QPoint(15, 9);
        QTest::newRow("next inside its own line") << QPoint(0, 9) << true << QPoint(15, 9);
        QTest::newRow("no wrap at the end") << QPoint(15, 9) << true << QPoint(15, 9);
        QTest::newRow("previous from the end") << QPoint(5, 10) << false << QPoint(15, 9);
        QTest::newRow("previous from the second error") << QPoint(15, 9) << false << QPoint(7, 4);
        QTest::newRow("no wrap at the start") << QPoint(7, 4) << false << QPoint(7, 4);
    }

    void stepsThroughErrors()
    {
        QFETCH(QPoint, from);
        QFETCH(bool, forward);
        QFETCH(QPoint, to);
        Shown shown = show(QLatin1String(checked));
        shown.moveTo(from.y(), from.x());
        if (forward)
            shown.workspace->nextError();
        else
            shown.workspace->prevError();
        QCOMPARE(shown.cursor(), to);
        QVERIFY(!shown.view()->textCursor().hasSelection());
    }

    // Warnings are stepped through by the same walk; they are put on the lines here because the shipped
    // vocabulary has no deprecated word that stays stable.
    void stepsThroughDeprecations()
    {
        Shown shown = show(QStringLiteral("; a\n; bb\n; ccc\n; dddd"));
        for (const QPoint& at : {QPoint(1, 1), QPoint(2, 3)}) {
            QSyntaxMessage message;
            message.kind = SyntaxWarning;
            message.start = at.x();
            message.end = at.x() + 1;
            QTextEditorBlockData::of(shown.text->document->findBlockByNumber(at.y()))->messages << message;
        }
        shown.workspace->nextDepr();
        QCOMPARE(shown.cursor(), QPoint(1, 1));
        shown.workspace->nextDepr();
        QCOMPARE(shown.cursor(), QPoint(2, 3));
        shown.workspace->nextDepr();
        QCOMPARE(shown.cursor(), QPoint(2, 3));
        shown.workspace->prevDepr();
        QCOMPARE(shown.cursor(), QPoint(1, 1));
        // Errors are not warnings.
        shown.workspace->nextError();
        QCOMPARE(shown.cursor(), QPoint(1, 1));
    }

    // Selections as (line, column) to (line, column); -1 for no selection.
    void comment_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QPoint>("from");
        QTest::addColumn<QPoint>("to");
        QTest::addColumn<bool>("readOnly");
        QTest::addColumn<QString>("expected");
        QTest::addColumn<QPoint>("cursor");
        const QString plain = QStringLiteral("a\nb\nc");
        QTest::newRow("current line")
            << plain << QPoint(1, 1) << QPoint(-1, -1) << false << QStringLiteral("a\n;b\nc") << QPoint(0, 1);
        QTest::newRow("cursor at the line start")
            << plain << QPoint(0, 1) << QPoint(-1, -1) << false << plain << QPoint(0, 1);
        QTest::newRow("selected lines")
            << plain << QPoint(1, 0) << QPoint(1, 1) << false << QStringLiteral(";a\n;b\nc") << QPoint(0, 1);
        QTest::newRow("selection ends at a line start")
            << plain << QPoint(0, 0) << QPoint(0, 2) << false << QStringLiteral(";a\n;b\nc") << QPoint(0, 1);
        QTest::newRow("first line commented uncomments")
            << QStringLiteral(";a\nb\n;c") << QPoint(0, 0) << QPoint(1, 2) << false
            << QStringLiteral("a\nb\nc") << QPoint(0, 2);
        QTest::newRow("first line plain comments all")
            << QStringLiteral("a\n;b") << QPoint(0, 0) << QPoint(2, 1) << false << QStringLiteral(";a\n;;b")
            << QPoint(0, 1);
        QTest::newRow("read-only") << plain << QPoint(1, 1) << QPoint(-1, -1) << true << plain
                                   << QPoint(1, 1);
    }

    void comment()
    {
        QFETCH(QString, text);
        QFETCH(QPoint, from);
        QFETCH(QPoint, to);
        QFETCH(bool, readOnly);
        QFETCH(QString, expected);
        QFETCH(QPoint, cursor);
        Shown shown = show(text, readOnly);
        shown.moveTo(from.y(), from.x(), to.y(), to.x());
        shown.workspace->comment();
        QCOMPARE(shown.plain(), expected);
        QCOMPARE(shown.cursor(), QPoint(cursor.x(), cursor.y()));
        QVERIFY(!shown.view()->textCursor().hasSelection());
        if (expected != text) {
            // One step of undo takes the whole toggle back.
            shown.editor->undo();
            QCOMPARE(shown.plain(), text);
        }
    }

    void findTellsWhenNothingIsFound()
    {
        QDialogRecorder dialogs;
        Shown shown = show(QStringLiteral("alpha beta\nAlpha"));
        QVERIFY(shown.editor->find(QStringLiteral("alpha"), {}));
        QCOMPARE(shown.view()->textCursor().selectedText(), QStringLiteral("alpha"));
        QVERIFY(shown.editor->find(QStringLiteral("alpha"), {}));
        QCOMPARE(shown.cursor(), QPoint(5, 1));
        QVERIFY(dialogs.calls.isEmpty());
        QVERIFY(!shown.editor->find(QStringLiteral("alpha"), {}));
        QVERIFY(shown.editor->find(QStringLiteral("alpha"), {{QQuickFindOption::Circular, true}}));
        QCOMPARE(shown.cursor(), QPoint(5, 0));
        QVERIFY(!shown.editor->find(QStringLiteral("ALPHA"), {{QQuickFindOption::CaseSensitive, true}}));
        QCOMPARE(dialogs.calls.size(), 2);
        for (const QDialogRecorder::Call& call : std::as_const(dialogs.calls)) {
            QCOMPARE(call.title, QStringLiteral("Find"));
            QCOMPARE(call.text, QStringLiteral("No text found!"));
        }
    }

    // The bar's switches come back as the user left them; Escape closes the bar and the text has the
    // keys again.
    void searchBarRemembersAndCloses()
    {
        QMugenModel config;
        mugenModel = &config;
        config[QStringLiteral("quicksearch_case")] = true;
        {
            Shown shown = show(QStringLiteral("text"));
            QQuickFind* bar = shown.workspace->findBar();
            QVERIFY(bar->options().value(QQuickFindOption::CaseSensitive));
            QVERIFY(!bar->options().value(QQuickFindOption::Circular));
            bar->findChild<QToolButton*>(QStringLiteral("quicksearch_circular"))->click();
            QCOMPARE(config[QStringLiteral("quicksearch_circular")].toBool(), true);
            shown.workspace->showFind();
            QVERIFY(bar->isVisible() && bar->findLine()->hasFocus());
            QTest::keyClick(bar->findLine(), Qt::Key_Escape);
            QVERIFY(!bar->isVisible());
            QVERIFY(shown.view()->hasFocus());
        }
        mugenModel = nullptr;
    }

    void replaceAllIsOneUndoStep_data()
    {
        QTest::addColumn<QString>("source");
        QTest::addColumn<QString>("dest");
        QTest::addColumn<bool>("regexp");
        QTest::addColumn<int>("count");
        QTest::addColumn<QString>("expected");
        QTest::newRow("plain") << "a"
                               << "xy" << false << 3 << "xyb xy\nxyA";
        QTest::newRow("grows into itself") << "a"
                                           << "aa" << false << 3 << "aab aa\naaA";
        QTest::newRow("expression") << "a+"
                                    << "-" << true << 3 << "-b -\n-A";
        QTest::newRow("nothing") << "q"
                                 << "x" << false << 0 << "ab a\naA";
    }

    void replaceAllIsOneUndoStep()
    {
        QFETCH(QString, source);
        QFETCH(QString, dest);
        QFETCH(bool, regexp);
        QFETCH(int, count);
        QFETCH(QString, expected);
        QDialogRecorder dialogs;
        const QString text = QStringLiteral("ab a\naA");
        Shown shown = show(text);
        shown.moveTo(1, 1);
        QQuickFindOptions options{{QQuickFindOption::CaseSensitive, true},
                                  {QQuickFindOption::RegularExpression, regexp}};
        QCOMPARE(shown.editor->replace(source, dest, options, true), count);
        QCOMPARE(shown.plain(), expected);
        QCOMPARE(dialogs.calls.size(), count == 0 ? 1 : 0);
        shown.editor->undo();
        QCOMPARE(shown.plain(), text);
    }

    void replaceOneTakesTheSelectedHit()
    {
        QDialogRecorder dialogs;
        Shown shown = show(QStringLiteral("one two one"));
        QVERIFY(shown.editor->find(QStringLiteral("one"), {}));
        QCOMPARE(shown.editor->replace(QStringLiteral("one"), QStringLiteral("1"), {}, false), 1);
        QCOMPARE(shown.plain(), QStringLiteral("1 two one"));
        // The next hit is selected for the next replace.
        QCOMPARE(shown.view()->textCursor().selectedText(), QStringLiteral("one"));
        QVERIFY(dialogs.calls.isEmpty());
    }

    void statusLine()
    {
        Shown shown = show(QLatin1String(checked));
        shown.moveTo(4, 3);
        auto label = [&shown](const char* name) {
            auto* found = shown.workspace->findChild<QLabel*>(QLatin1String(name));
            return found ? found->text() : QStringLiteral("<none>");
        };
        QCOMPARE(label("positionStatus"), QStringLiteral("Line: 5, Column: 4, Line count: 11"));
        QCOMPARE(label("errorStatus"),
                 QStringLiteral("Syntax error count: %1").arg(shown.text->errorCount()));
        QVERIFY(shown.text->errorCount() > 0);
        QCOMPARE(label("encodingStatus"), QStringLiteral("Encoding: %1").arg(shown.text->codecName()));
        QTest::keyClick(shown.view(), Qt::Key_Return);
        QCOMPARE(label("positionStatus"), QStringLiteral("Line: 6, Column: 1, Line count: 12"));
        shown.workspace->setText(nullptr);
        QCOMPARE(label("errorStatus"), QStringLiteral("Syntax error count: 0"));
        QVERIFY(shown.view()->isReadOnly());

        // A command file counts its distinct commands once its outline is built.
        QSyntaxTextEditor commands(pftCommands, nullptr, false, 0x1010000, true);
        commands.setPlainText(
            QStringLiteral("[Command]\nname = \"a\"\ncommand = x\n\n[Command]\nname = \"a\"\n"
                           "command = y\n\n[Command]\nname = \"b\"\ncommand = z\n"));
        shown.workspace->setText(&commands);
        commands.updateHierarchy();
        QCOMPARE(label("errorStatus"), QStringLiteral("Syntax error count: 0, Unique commands: 2"));
        shown.workspace->setText(nullptr);
    }

    // Showing a file gives its document the editor's layout, which must not cost the lines their tie to
    // the file: saved after an edit, only the edited line differs.
    void shownFileSavesUntouchedLinesAsRead()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("a.cns"));
        const QByteArray bytes = "[Statedef 0]\r\ntype = S\r\nctrl = 0 \n\r\n";
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        file.close();
        QSyntaxTextEditor text(pftStates);
        QVERIFY(text.fromFile(path, 0));
        QTextWorkspace workspace;
        workspace.setText(&text);
        workspace.show();
        QVERIFY(QTest::qWaitForWindowExposed(&workspace));
        QTextCursor cursor(text.document->findBlockByNumber(1));
        cursor.movePosition(QTextCursor::EndOfBlock);
        workspace.editor()->setTextCursor(cursor);
        QTest::keyClicks(workspace.editor(), QStringLiteral("A"));
        QVERIFY(text.toFile(path));
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), QByteArray("[Statedef 0]\r\ntype = SA\r\nctrl = 0 \n\r\n"));
    }
};

QTEST_MAIN(tst_TextWorkspace)
#include "tst_TextWorkspace.moc"
