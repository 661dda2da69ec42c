// Code snippets and state controller templates: the snippet file form, filling placeholders, the
// dialogs driven through the dialog runner, the side list, the findings box, and the shipped data.

#include "QCodecList.h"
#include "QDialogRecorder.h"
#include "QDialogRunner.h"
#include "QIssuesCombo.h"
#include "QModelTables.h"
#include "QMugenModel.h"
#include "QSCtrlList.h"
#include "QSCtrlManager.h"
#include "QSnipFieldsModel.h"
#include "QSnippetManager.h"
#include "QSyntaxTextEditor.h"
#include "QTextBar.h"
#include "QTextEditor.h"
#include "QTextEncoding.h"
#include "QTextTools.h"
#include "QTextWorkspace.h"
#include "SCtrlEdit.h"
#include "SnipDlg.h"
#include "SnipFieldDlg.h"
#include "SnipInsertDlg.h"
#include "TestData.h"

#include <QComboBox>
#include <QDoubleSpinBox>
#include <QGridLayout>
#include <QLineEdit>
#include <QListView>
#include <QMap>
#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QSpinBox>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

namespace {

using Values = QList<QPair<QString, QString>>;

QByteArray readBytes(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void writeBytes(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

// Installs a runner for the program's dialogs for its lifetime and counts the dialogs it ran.
struct Runner
{
    int runs = 0;
    explicit Runner(std::function<int(QDialog*)> answer)
    {
        QDialogRunner::install([this, answer](QDialog* dialog) {
            ++runs;
            return answer(dialog);
        });
    }
    ~Runner() { QDialogRunner::install({}); }
};

// A workspace with an editable document and template folders of its own.
struct Page
{
    QTemporaryDir dir;
    QSyntaxTextEditor text{pftStates, nullptr, false, 0x1010000, false};
    QTextWorkspace workspace;

    explicit Page(const QString& content)
    {
        text.setPlainText(content);
        workspace.setText(&text);
        tools()->snippets()->setDirectory(dir.path());
        tools()->sctrls()->setDirectory(dir.path());
        workspace.resize(800, 400);
        workspace.show();
        if (!QTest::qWaitForWindowExposed(&workspace)) qWarning("workspace not exposed");
    }
    QTextTools* tools() const { return workspace.tools(); }
    QString plain() const { return text.document->toPlainText(); }
    void cursorAt(int position) const
    {
        QTextCursor cursor(text.document);
        cursor.setPosition(position);
        workspace.editor()->setTextCursor(cursor);
    }
};

} // namespace

class tst_Snippets : public QObject
{
    Q_OBJECT

    std::unique_ptr<QModelTables> tables;

private slots:
    void initTestCase()
    {
        tables = std::make_unique<QModelTables>(TestData::binDir());
        QVERIFY2(QModelTables::checkers(), "syntax_mugen.xml beside the programs");
    }

    void snippetFileForm()
    {
        QSnippet snippet;
        QSnippetField kind{QStringLiteral("kind"),
                           QStringLiteral("Kind \"of\" <it>"),
                           QStringLiteral("items"),
                           0,
                           {QStringLiteral("S"), QStringLiteral("C")},
                           {QStringLiteral("Stand"), QStringLiteral("Crouch")}};
        QSnippetField number{QStringLiteral("n"), QStringLiteral("Number"), QStringLiteral("int"), 3, {}, {}};
        snippet.fields = {kind, number};
        snippet.code = QStringLiteral("[Statedef @n]\ntype = @kind\n; a < b && c\n");
        const QByteArray expected = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n"
                                    "<snippet>\r\n"
                                    "\r\n"
                                    "\t<field name=\"kind\" title=\"Kind &quot;of&quot; &lt;it&gt;\" "
                                    "type=\"items\" value=\"S,C\" value_title=\"Stand,Crouch\"/>\r\n"
                                    "\t<field name=\"n\" title=\"Number\" type=\"int\" column=\"3\"/>\r\n"
                                    "\r\n"
                                    "\t<code>[Statedef @n]\r\ntype = @kind\r\n; a &lt; b &amp;&amp; c\r\n"
                                    "</code>\r\n"
                                    "</snippet>\r\n";
        QCOMPARE(snippet.toXml(), expected);

        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("s.xml"));
        QVERIFY(snippet.write(path));
        QSnippet back;
        QVERIFY(back.read(path));
        QCOMPARE(back.code, snippet.code);
        QVERIFY(back.fields == snippet.fields);

        // Far columns are taken as the last one; a wrong root or a missing file leave the snippet as it is.
        QVERIFY(back.readXml(
            "<snippet><field name=\"a\" type=\"string\" column=\"15\"/><code>x</code></snippet>"));
        QCOMPARE(back.fields.at(0).column, 10);
        QVERIFY(!back.readXml("<snip><code>y</code></snip>"));
        QVERIFY(!back.read(dir.filePath(QStringLiteral("none.xml"))));
        QCOMPARE(back.code, QStringLiteral("x"));
    }

    void fill_data()
    {
        QTest::addColumn<QString>("code");
        QTest::addColumn<Values>("values");
        QTest::addColumn<QString>("expected");
        const Values shortFirst{{QStringLiteral("a"), QStringLiteral("X")},
                                {QStringLiteral("ab"), QStringLiteral("Y")}};
        const Values longFirst{{QStringLiteral("ab"), QStringLiteral("Y")},
                               {QStringLiteral("a"), QStringLiteral("X")}};
        QTest::newRow("short name first takes the long one's start") << "@ab @a" << shortFirst << "Xb X";
        QTest::newRow("long name first") << "@ab @a" << longFirst << "Y X";
        QTest::newRow("no word boundary") << "x@ay@a@a" << shortFirst << "xXyXX";
        QTest::newRow("case sensitive") << "@A @a" << shortFirst << "@A X";
        QTest::newRow("empty value") << "v = @a;" << Values{{QStringLiteral("a"), QString()}} << "v = ;";
    }

    void fill()
    {
        QFETCH(QString, code);
        QFETCH(Values, values);
        QFETCH(QString, expected);
        QCOMPARE(QSnippet::fill(code, values), expected);
    }

    void insertsSnippets()
    {
        QDialogRecorder dialogs;
        Page page(QStringLiteral("ab"));
        writeBytes(page.dir.filePath(QStringLiteral("plain.xml")),
                   "<snippet><code>[State 0]\r\ntype = Null</code></snippet>");
        writeBytes(page.dir.filePath(QStringLiteral("wrong.xml")), "<other><code>no</code></other>");
        writeBytes(page.dir.filePath(QStringLiteral("fields.xml")),
                   "<snippet><field name=\"s\" title=\"S\" type=\"string\"/>"
                   "<field name=\"n\" title=\"N\" type=\"int\"/>"
                   "<field name=\"f\" title=\"F\" type=\"float\" column=\"1\"/>"
                   "<field name=\"k\" title=\"K\" type=\"items\" value=\"x,y\" value_title=\"Ex,Why\" "
                   "column=\"15\"/>"
                   "<code>@s=@n;@f;@k</code></snippet>");
        page.tools()->snippets()->scan();
        QCOMPARE(page.tools()->snippets()->names(),
                 QStringList({QStringLiteral("fields"), QStringLiteral("plain"), QStringLiteral("wrong")}));

        bool accept = true;
        Runner runner([&accept](QDialog* dialog) {
            auto* insert = qobject_cast<SnipInsertDlg*>(dialog);
            if (!insert || insert->fieldCount() != 4) return int(QDialog::Rejected);
            auto* grid = dialog->findChild<QGridLayout*>();
            int row = -1, column = -1, rowSpan = 0, columnSpan = 0;
            grid->getItemPosition(grid->indexOf(insert->fieldWidget(3)), &row, &column, &rowSpan,
                                  &columnSpan);
            if (row != 0 || column != 21) return int(QDialog::Rejected);
            QTest::keyClicks(insert->fieldWidget(0), QStringLiteral("var(1)"));
            qobject_cast<QSpinBox*>(insert->fieldWidget(1))->setValue(-70000);
            qobject_cast<QDoubleSpinBox*>(insert->fieldWidget(2))->setValue(0.5);
            qobject_cast<QComboBox*>(insert->fieldWidget(3))->setCurrentIndex(1);
            return int(accept ? QDialog::Accepted : QDialog::Rejected);
        });

        page.cursorAt(1);
        QVERIFY(page.tools()->insertSnippet(QStringLiteral("fields")));
        QCOMPARE(runner.runs, 1);
        QCOMPARE(page.plain(), QStringLiteral("avar(1)=-70000;0.5;yb"));
        page.workspace.editor()->undo();
        QCOMPARE(page.plain(), QStringLiteral("ab"));

        accept = false;
        QVERIFY(!page.tools()->insertSnippet(QStringLiteral("fields")));
        QCOMPARE(page.plain(), QStringLiteral("ab"));

        // Without fields no dialog; a broken file is passed over without a word.
        page.cursorAt(2);
        page.tools()->snipActivated(1);
        QCOMPARE(runner.runs, 2);
        QCOMPARE(page.plain(), QStringLiteral("ab[State 0]\ntype = Null"));
        page.workspace.editor()->undo();
        QCOMPARE(page.plain(), QStringLiteral("ab"));
        QVERIFY(!page.tools()->insertSnippet(QStringLiteral("wrong")));
        QCOMPARE(page.plain(), QStringLiteral("ab"));
        QVERIFY(dialogs.calls.isEmpty());
    }

    void writesNewSnippet()
    {
        QDialogRecorder dialogs;
        Page page(QStringLiteral("a\nb"));
        page.workspace.editor()->selectAll();
        Runner runner([&page, &dialogs](QDialog* dialog) {
            if (auto* field = qobject_cast<SnipFieldDlg*>(dialog)) {
                field->nameEdit()->setText(QStringLiteral("k"));
                field->titleEdit()->setText(QStringLiteral("Kind"));
                field->typeBox()->setCurrentIndex(3);
                field->valuesEdit()->setText(QStringLiteral("S,C"));
                field->valueTitlesEdit()->setText(QStringLiteral("Stand,Crouch"));
                return int(QDialog::Accepted);
            }
            auto* snip = qobject_cast<SnipDlg*>(dialog);
            if (!snip || snip->codeEdit()->toPlainText() != QStringLiteral("a\nb"))
                return int(QDialog::Rejected);
            snip->addField();
            dialogs.fileAnswers.enqueue({page.dir.filePath(QStringLiteral("new.ts"))});
            snip->saveForTranslation();
            dialogs.fileAnswers.enqueue({page.dir.filePath(QStringLiteral("new.xml"))});
            return snip->save() ? int(QDialog::Accepted) : int(QDialog::Rejected);
        });
        page.tools()->snipNew();
        QCOMPARE(runner.runs, 2);
        QCOMPARE(dialogs.calls.size(), 2);
        QCOMPARE(dialogs.calls.at(0).title, QStringLiteral("Save for translation"));
        QCOMPARE(dialogs.calls.at(0).text, QStringLiteral("Qt translation sources (*.ts)"));
        const QString ts = QString::fromUtf8(readBytes(page.dir.filePath(QStringLiteral("new.ts"))));
        QVERIFY(ts.contains(QStringLiteral("<name>QSnippetManager</name>")));
        QCOMPARE(ts.count(QStringLiteral("<comment>snippet</comment>")), 3);
        QVERIFY(ts.contains(QStringLiteral("<source>Crouch</source>")));
        QCOMPARE(dialogs.calls.at(1).kind, QStringLiteral("save"));
        QCOMPARE(dialogs.calls.at(1).title, QStringLiteral("Save code snippet"));
        QCOMPARE(dialogs.calls.at(1).text, QStringLiteral("Extensible Markup Language (*.xml)"));
        QCOMPARE(readBytes(page.dir.filePath(QStringLiteral("new.xml"))),
                 QByteArray("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n<snippet>\r\n\r\n"
                            "\t<field name=\"k\" title=\"Kind\" type=\"items\" value=\"S,C\" "
                            "value_title=\"Stand,Crouch\"/>\r\n\r\n\t<code>a\r\nb</code>\r\n</snippet>\r\n"));
        QCOMPARE(page.tools()->snippets()->names(), QStringList{QStringLiteral("new")});
    }

    void stateControllerTemplates()
    {
        QDialogRecorder dialogs;
        QMugenModel config;
        mugenModel = &config;
        buildCodecList();
        config[QStringLiteral("default_codepage")] = QTextEncoding::codecIndex("windows-1252");
        Page page(QStringLiteral("x"));
        QString initial;
        Runner runner([&initial](QDialog* dialog) {
            auto* edit = qobject_cast<SCtrlEdit*>(dialog);
            if (!edit || dialog->windowTitle() != QStringLiteral("State controller"))
                return int(QDialog::Rejected);
            initial = edit->text();
            edit->editor()->setPlainText(initial + QStringLiteral("Null\nvalue = \u00e9"));
            return int(QDialog::Accepted);
        });
        dialogs.fileAnswers.enqueue({page.dir.filePath(QStringLiteral("mine"))});
        page.tools()->sCtrlNew();
        QCOMPARE(initial, QStringLiteral("[State ]\ntype = "));
        QCOMPARE(dialogs.calls.at(0).text, QStringLiteral("State controller (*.sctrl)"));
        const QString path = page.dir.filePath(QStringLiteral("mine.sctrl"));
        QCOMPARE(readBytes(path), QByteArray("[State ]\ntype = Null\nvalue = \xe9"));
        QCOMPARE(page.tools()->sctrls()->names(), QStringList{QStringLiteral("mine")});

        QListView* list = page.tools()->sctrlList()->list();
        list->setCurrentIndex(list->model()->index(0, 0));
        QCOMPARE(page.tools()->sctrlList()->preview(),
                 QStringLiteral("[State ]\ntype = Null\nvalue = \u00e9"));
        page.tools()->sCtrlEdit();
        QCOMPARE(initial, QStringLiteral("[State ]\ntype = Null\nvalue = \u00e9"));
        QVERIFY(readBytes(path).endsWith("Null\nvalue = \xe9"));

        list->setCurrentIndex(list->model()->index(0, 0));
        dialogs.answers.enqueue(QUserDialogs::No);
        page.tools()->sCtrlDel();
        QVERIFY(QFile::exists(path));
        const QDialogRecorder::Call question = dialogs.calls.last();
        QCOMPARE(question.title, QStringLiteral("Delete"));
        QCOMPARE(question.text, QStringLiteral("Do you really want to delete the state controller?"));
        dialogs.answers.enqueue(QUserDialogs::Yes);
        page.tools()->sCtrlDel();
        QVERIFY(!QFile::exists(path));
        QVERIFY(page.tools()->sctrls()->names().isEmpty());

        // Without the confirmation setting no question is asked.
        config[QStringLiteral("confirm_delete")] = false;
        writeBytes(path, "t");
        page.tools()->sctrls()->scan();
        list->setCurrentIndex(list->model()->index(0, 0));
        const qsizetype asked = dialogs.calls.size();
        page.tools()->sCtrlDel();
        QVERIFY(!QFile::exists(path));
        QCOMPARE(dialogs.calls.size(), asked);
        mugenModel = nullptr;
    }

    void doubleClickInsertsTemplate()
    {
        Page page(QStringLiteral("ab"));
        writeBytes(page.dir.filePath(QStringLiteral("Turn.sctrl")), "[State -1, Turn]\ntype = Turn\n");
        page.tools()->sctrls()->scan();
        page.cursorAt(1);
        QListView* list = page.tools()->sctrlList()->list();
        const QPoint at = list->visualRect(list->model()->index(0, 0)).center();
        // The view takes a double click only on the item that the first click pressed.
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, at);
        QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, at);
        QCOMPARE(page.plain(), QStringLiteral("a[State -1, Turn]\ntype = Turn\nb"));
        QCOMPARE(page.tools()->sctrlList()->preview(), QStringLiteral("[State -1, Turn]\ntype = Turn\n"));
        page.workspace.editor()->undo();
        QCOMPARE(page.plain(), QStringLiteral("ab"));
    }

    void issuesBoxGoesToTheIssue()
    {
        Page page(
            QStringLiteral("[Statedef 200]\ntype = S\n\n[State 200, 1]\ntype = NoSuchThing\ntrigger1 = 1\n"
                           "\n[State 200, 2]\ntype = VelSet\ntrigger1 = 1 + Nothing\nx = 1"));
        QIssuesCombo* issues = page.tools()->textBar()->issuesBox();
        QVERIFY(issues->count() >= 2);
        for (int i = 0; i < issues->count(); ++i) {
            const QPoint target = issues->target(i);
            QVERIFY(issues->itemText(i).startsWith(QStringLiteral("Line %1: ").arg(target.y() + 1)));
            page.cursorAt(0);
            page.tools()->errorActivated(i);
            const QTextCursor cursor = page.workspace.editor()->textCursor();
            QCOMPARE(QPoint(cursor.positionInBlock(), cursor.blockNumber()), target);
        }
        QCOMPARE(issues->target(0), QPoint(7, 4));
        // The box follows the rebuild of the file's issues.
        const int before = issues->count();
        QTextCursor fix(page.text.document->findBlockByNumber(4));
        fix.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
        fix.insertText(QStringLiteral("type = Null"));
        page.text.updateHierarchy();
        QVERIFY(issues->count() > 0 && issues->count() < before);
        for (int i = 0; i < issues->count(); ++i)
            QVERIFY(issues->target(i).y() != 4);
        page.workspace.setText(nullptr);
        QCOMPARE(issues->count(), 0);
    }

    void shippedData()
    {
        const QDir bin(TestData::binDir());
        QSnippetManager snippets(bin.filePath(QStringLiteral("snippets")));
        QVERIFY(snippets.names().size() >= 5);
        for (const QString& name : snippets.names()) {
            QSnippet snippet;
            QVERIFY2(snippets.read(name, &snippet), qPrintable(name));
            QCOMPARE(snippet.toXml(), readBytes(snippets.path(name)));
            for (const QSnippetField& field : std::as_const(snippet.fields)) {
                QVERIFY2(snippet.code.contains(QLatin1Char('@') + field.name), qPrintable(name + field.name));
                QCOMPARE(field.values.size(), field.valueTitles.size());
            }
        }
        const QString vocabulary =
            QString::fromUtf8(readBytes(bin.filePath(QStringLiteral("syntax_mugen.xml"))));
        QSCtrlManager sctrls(bin.filePath(QStringLiteral("sctrls")));
        // Templates are listed by file name, which need not be the controller's: the type line says it.
        QMap<QString, QString> byType;
        const QRegularExpression typeLine(QStringLiteral("^type = (\\S+)$"),
                                          QRegularExpression::MultilineOption);
        for (const QString& name : sctrls.names()) {
            const QString text = sctrls.read(name);
            byType.insert(typeLine.match(text).captured(1), text);
        }
        const QRegularExpression controller(QStringLiteral("<state_controller name=\"([^\"]+)\""));
        int count = 0;
        for (const QRegularExpressionMatch& match : controller.globalMatch(vocabulary)) {
            const QString name = match.captured(1);
            QVERIFY2(byType.value(name).startsWith(
                         QStringLiteral("[State -1, %1]\ntype = %1\ntrigger1 = \n").arg(name)),
                     qPrintable(name));
            ++count;
        }
        QVERIFY(count > 80);
        QCOMPARE(sctrls.names().size(), count);
    }
};

QTEST_MAIN(tst_Snippets)
#include "tst_Snippets.moc"
