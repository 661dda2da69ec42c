// The document side of the syntax framework: language detection, loading and saving in the file's own
// encoding and line ends, the outline timer, close questions and the issues of a text file.

#include "QDialogRecorder.h"
#include "QMessageList.h"
#include "QNullSyntaxProcessor.h"
#include "QProjectContext.h"
#include "QSyntaxHierarchy.h"
#include "QSyntaxTextEditor.h"
#include "QTextEncoding.h"
#include "TestData.h"

#include <QElapsedTimer>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTextCodec>

Q_DECLARE_METATYPE(QUserDialogs::Button)

namespace {

// Texts long enough for the charset detector to be sure of their encoding.
const char* const japanese = "; こんにちは、世界。これは日本語のテキストです。\n[Begin Action 0]\n"
                             "; 漢字とひらがなとカタカナを含みます。文字コードの判定をテストします。\n";
const char* const chinese = "; 这是一个中文文本，用于测试字符集检测。\n[Begin Action 0]\n"
                            "; 我们需要足够长的文本才能正确识别编码。简体中文使用国标编码。\n";
const char* const french = "; Les élèves étaient très contents de l'été. Où est la bibliothèque?\n"
                           "[Begin Action 0]\n; Ça coûte cher, naïveté à côté — “déjà vu”, 5 €.\n";

QByteArray encoded(const char* utf8, const QByteArray& codec, const QByteArray& lineEnd)
{
    QString text = QString::fromUtf8(utf8);
    text.replace(QLatin1Char('\n'), QString::fromLatin1(lineEnd));
    return QTextCodec::codecForName(codec)->fromUnicode(text);
}

class TestProject : public QProjectContext
{
public:
    QMessageList list;
    QProjectType projectType() const override { return Character; }
    quint32 mugenVersion() const override { return 0x1010000; }
    QMessageList* messageList() const override { return const_cast<QMessageList*>(&list); }
};

} // namespace

class tst_SyntaxTextEditor : public QObject
{
    Q_OBJECT

    QTemporaryDir dir;

    QString write(const QString& name, const QByteArray& bytes)
    {
        const QString path = dir.filePath(name);
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)) return QString();
        file.write(bytes);
        return path;
    }

    static QByteArray read(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<unreadable>");
    }

    static QTextCursor lineCursor(QSyntaxTextEditor& editor, int line)
    {
        return QTextCursor(editor.document->findBlockByNumber(line));
    }

private slots:
    void detectLanguage_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("language");

        QTest::newRow("comment first") << "; KFM\n[Statedef 0]" << int(SyntaxMugen);
        QTest::newRow("section first") << "[Data]\nlife = 1000" << int(SyntaxMugen);
        QTest::newRow("blank lines and spaces first") << "\n  \n\t ;x" << int(SyntaxMugen);
        QTest::newRow("text before the first section") << "x = 1\n[Data]" << int(SyntaxNone);
        QTest::newRow("semicolon later in the line") << "a; b" << int(SyntaxNone);
        QTest::newRow("empty") << "" << int(SyntaxNone);
        QTest::newRow("lua function") << "local x = 1\nfunction f() end" << int(SyntaxLua);
        QTest::newRow("function as the very first word") << "function f() end" << int(SyntaxNone);
        QTest::newRow("function after a space") << " function f() end" << int(SyntaxLua);
        QTest::newRow("function inside a word") << "myfunction()\nfunctional" << int(SyntaxNone);
        QTest::newRow("function before an underscore") << "x = function_name" << int(SyntaxNone);
        QTest::newRow("section wins over function") << "[Lua]\nfunction f() end" << int(SyntaxMugen);
    }

    void detectLanguage()
    {
        QFETCH(QString, text);
        QFETCH(int, language);

        QCOMPARE(QSyntaxTextEditor::detectLanguage(text), language);
        QSyntaxTextEditor editor(pftStates);
        QVERIFY(editor.load(write(QStringLiteral("detect.txt"), text.toUtf8())));
        QCOMPARE(editor.language(), language);
        QCOMPARE(editor.processor()->syntaxType(), language);
    }

    void languageSwitchReplacesProcessor()
    {
        QSyntaxTextEditor editor(pftStates, nullptr, false, 0x1000000);
        QCOMPARE(editor.language(), int(SyntaxMugen));
        QCOMPARE(editor.processor()->mugenVersion(), 0x1000000u);
        QVERIFY(editor.processor()->isChecking());
        editor.setMugenVersion(0x1010000);
        QCOMPARE(editor.processor()->mugenVersion(), 0x1010000u);

        QSyntaxProcessor* first = editor.processor();
        editor.setLanguage(SyntaxMugen);
        QCOMPARE(editor.processor(), first);

        QSignalSpy updated(&editor, &QSyntaxTextEditor::hierarchyUpdated);
        editor.setLanguage(SyntaxLua);
        QCOMPARE(editor.language(), int(SyntaxLua));
        editor.setLanguage(7);
        QCOMPARE(editor.language(), int(SyntaxNone));
        // The new processor's outline is wired to the editor's signal.
        editor.updateHierarchy();
        QCOMPARE(updated.count(), 1);
    }

    void nullProcessorAndHierarchy()
    {
        QSyntaxTextEditor editor(pftStates);
        editor.setLanguage(SyntaxNone);
        QVERIFY(editor.load(write(QStringLiteral("null.txt"), "x = 1\n\ny = (2)\n")));
        for (QTextBlock block = editor.document->firstBlock(); block.isValid(); block = block.next()) {
            const auto* data = static_cast<QTextEditorBlockData*>(block.userData());
            QVERIFY(data);
            QCOMPARE(block.userState(), 0);
            QVERIFY(data->messages.isEmpty());
            QVERIFY(data->parentheses.isEmpty());
        }

        // Findings of an earlier processor go when the language changes.
        auto* data = static_cast<QTextEditorBlockData*>(editor.document->firstBlock().userData());
        data->messages.append(QSyntaxMessage{SyntaxError, 0, 1, QStringLiteral("Old")});
        QCOMPARE(editor.errorCount(), 1);
        editor.setLanguage(SyntaxLua);
        QCOMPARE(editor.errorCount(), 0);

        QSyntaxHierarchy* outline = editor.hierarchy();
        QVERIFY(outline);
        QSignalSpy updated(outline, &QSyntaxHierarchy::updated);
        outline->update(editor.text());
        QCOMPARE(updated.count(), 1);
        QCOMPARE(outline->rowCount(), 0);
        // An empty outline answers invalid indexes without harm.
        QVERIFY(!outline->index(0, 0).isValid());
        QVERIFY(!outline->parent(QModelIndex()).isValid());
        QVERIFY(!outline->data(QModelIndex()).isValid());
        QCOMPARE(outline->lineForIndex(QModelIndex()), 0);
        QVERIFY(!outline->indexForLine(2).isValid());
    }

    void roundTrip_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("text");

        QTest::newRow("LF") << QByteArray("[Data]\nlife = 1000\n") << "[Data]\nlife = 1000\n";
        QTest::newRow("CRLF") << QByteArray("[Data]\r\nlife = 1000\r\n") << "[Data]\nlife = 1000\n";
        QTest::newRow("CR") << QByteArray("[Data]\rlife = 1000\r") << "[Data]\nlife = 1000\n";
        QTest::newRow("mixed") << QByteArray("[A]\r\nx = 1\ny = 2\r\n\rz\n") << "[A]\nx = 1\ny = 2\n\nz\n";
        QTest::newRow("no final line end") << QByteArray("[A]\r\nx = 1") << "[A]\nx = 1";
        QTest::newRow("trailing spaces and tabs")
            << QByteArray("[A]  \r\nx = 1 \t\r\n  \r\n\t") << "[A]  \nx = 1 \t\n  \n\t";
        QTest::newRow("empty file") << QByteArray() << "";
        QTest::newRow("only line ends") << QByteArray("\r\n\r\n\n\r") << "\n\n\n\n";
        QTest::newRow("UTF-8 with BOM")
            << QByteArray("\xEF\xBB\xBF") + encoded(japanese, "UTF-8", "\r\n") << QString::fromUtf8(japanese);
        QTest::newRow("UTF-8 without BOM") << encoded(french, "UTF-8", "\n") << QString::fromUtf8(french);
        QTest::newRow("UTF-8 no-break space") << encoded(french, "UTF-8", "\r\n") + "x\xC2\xA0=\xC2\xA0"
                                                                                    "1"
                                              << QString::fromUtf8(french) + QStringLiteral("x\u00A0=\u00A0"
                                                                                            "1");
        QTest::newRow("CP-1252") << encoded(french, "windows-1252", "\r\n") << QString::fromUtf8(french);
        QTest::newRow("GBK") << encoded(chinese, "GBK", "\r\n") << QString::fromUtf8(chinese);
        QTest::newRow("Shift-JIS") << encoded(japanese, "Shift_JIS", "\n") << QString::fromUtf8(japanese);
        // Windows' Shift-JIS has characters twice (NEC and IBM rows); Qt writes each back in one way only.
        QTest::newRow("Shift-JIS with characters of two codes")
            << encoded(japanese, "Shift_JIS", "\r\n") + "; \x87\x90 \xED\x40\r\n"
            << QString::fromUtf8(japanese) + QStringLiteral("; \u2252 \u7E8A\n");
        // A document ends a line at U+2029 as well; the file gets the character back, not a line end.
        QTest::newRow("UTF-8 paragraph separator") << encoded(french, "UTF-8", "\r\n") + "a\xE2\x80\xA9"
                                                                                         "b\r\nc\n"
                                                   << QString::fromUtf8(french) + QStringLiteral("a\nb\nc\n");
        QTest::newRow("UTF-16LE with BOM")
            << QByteArray("\xFF\xFE") + encoded(chinese, "UTF-16LE", "\r\n") << QString::fromUtf8(chinese);
    }

    void roundTrip()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, text);

        const QString path = write(QStringLiteral("in.cns"), bytes);
        QSyntaxTextEditor editor(pftStates);
        QVERIFY(editor.load(path));
        QCOMPARE(editor.text(), text);
        QVERIFY(!editor.isModified());
        QCOMPARE(editor.filePath(), path);

        const QString out = dir.filePath(QStringLiteral("out.cns"));
        QVERIFY(editor.save(out));
        QCOMPARE(read(out), bytes);
        QCOMPARE(editor.filePath(), out);
        QCOMPARE(editor.fileTitle(), QStringLiteral("out.cns"));
        // Saved once more in place, it still is the same file.
        QVERIFY(editor.save());
        QCOMPARE(read(out), bytes);
    }

    void realFilesComeBackByteForByte()
    {
        TAVREL_REQUIRE_TESTDATA();
        QStringList patterns;
        for (const char* suffix : {"cns", "st", "air", "cmd", "def"})
            patterns << QStringLiteral("*.") + QLatin1String(suffix)
                     << QStringLiteral("*.") + QString::fromLatin1(suffix).toUpper();
        const QStringList files = TestData::files(patterns);
        QVERIFY(!files.isEmpty());
        QStringList differing;
        const QString out = dir.filePath(QStringLiteral("real.out"));
        for (const QString& path : files) {
            QSyntaxTextEditor editor(pftStates);
            if (!editor.load(path) || !editor.save(out, false, true) || read(out) != read(path))
                differing << path;
        }
        QVERIFY2(differing.isEmpty(), qPrintable(differing.join(QLatin1Char('\n'))));
    }

    void wantedCodec_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QByteArray>("wanted");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("codec");

        // Too short to be detected: the detector guesses UTF-8 or Hebrew, which would not give the bytes
        // back.
        QTest::newRow("misdetected EUC-KR") << encoded("[Info]\nname = \"名字\"\n", "EUC-KR", "\n")
                                            << QByteArray("EUC-KR") << "[Info]\nname = \"名字\"\n"
                                            << "EUC-KR";
        QTest::newRow("misdetected EUC-KR, no wish")
            << encoded("[Info]\nname = \"表示\"\n", "EUC-KR", "\n") << QByteArray() << QString() << QString();
        // A detection that gives the bytes back stands, whatever was wished for.
        QTest::newRow("detected CP-1252 over a wish")
            << encoded(french, "windows-1252", "\n") << QByteArray("Shift_JIS") << QString::fromUtf8(french)
            << "windows-1252";
    }

    void wantedCodec()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QByteArray, wanted);
        QFETCH(QString, text);
        QFETCH(QString, codec);

        const QString path = write(QStringLiteral("wanted.def"), bytes);
        QSyntaxTextEditor editor(pftDefinitions);
        QVERIFY(editor.fromFile(path, uint(wanted.isEmpty() ? 0 : QTextEncoding::codecIndex(wanted))));
        if (!text.isEmpty()) QCOMPARE(editor.text(), text);
        if (!codec.isEmpty()) QCOMPARE(editor.codecName(), codec);
        const QString out = dir.filePath(QStringLiteral("wanted.out"));
        QVERIFY(editor.toFile(out, true));
        QCOMPARE(read(out), bytes);
        QCOMPARE(editor.filePath(), path);
    }

    void editsKeepLineEnds_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("edit");
        QTest::addColumn<int>("line");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QByteArray>("expected");

        QTest::newRow("CRLF file, edited line")
            << QByteArray("a\r\nb\r\nc\r\n") << "replace" << 1 << "bX" << QByteArray("a\r\nbX\r\nc\r\n");
        QTest::newRow("LF file, new line")
            << QByteArray("a\nb\n") << "insertAfter" << 0 << "new" << QByteArray("a\nnew\nb\n");
        QTest::newRow("CR file, new line")
            << QByteArray("a\rb\r") << "insertAfter" << 0 << "new" << QByteArray("a\rnew\rb\r");
        QTest::newRow("mixed file, edited line takes the usual end")
            << QByteArray("a\r\nb\nc\nd\r\ne\n") << "replace" << 3 << "D" << QByteArray("a\r\nb\nc\nD\ne\n");
        QTest::newRow("mixed file, line typed in above a line")
            << QByteArray("a\r\nb\nc\nd\n") << "insertBefore" << 0 << "new"
            << QByteArray("new\na\r\nb\nc\nd\n");
        QTest::newRow("removed line")
            << QByteArray("a\nb\r\nc\n") << "remove" << 1 << "" << QByteArray("a\nc\n");
        QTest::newRow("joined lines take the usual end")
            << QByteArray("a\r\nb\nc\n") << "join" << 0 << "" << QByteArray("ab\nc\n");
        QTest::newRow("line appended to a file without final line end")
            << QByteArray("a\r\nb") << "append" << 0 << "c" << QByteArray("a\r\nb\r\nc");
        QTest::newRow("last line edited, still no final line end")
            << QByteArray("a\nb") << "replace" << 1 << "c" << QByteArray("a\nc");
        QTest::newRow("trailing spaces of other lines stay")
            << QByteArray("a  \r\nb\t\r\nc \r\n") << "replace" << 1 << "B"
            << QByteArray("a  \r\nB\r\nc \r\n");
        QTest::newRow("undone removal gives every byte back")
            << QByteArray("a\nb\r\nc\nd") << "undo" << 1 << "" << QByteArray("a\nb\r\nc\nd");
        const QByteArray cp1252 = encoded(french, "windows-1252", "\r\n");
        QTest::newRow("CP-1252 file, other lines keep their bytes")
            << cp1252 << "replace" << 1 << "[Begin Action 1]"
            << QByteArray(cp1252).replace("[Begin Action 0]", "[Begin Action 1]");
        const QByteArray separated = encoded(french, "UTF-8", "\n") + "a\xE2\x80\xA9"
                                                                      "b\r\nc\n";
        QTest::newRow("paragraph separator, line below it edited")
            << separated << "replace" << 5 << "C" << QByteArray(separated).replace("c\n", "C\n");
        const QByteArray sjis = encoded(japanese, "Shift_JIS", "\n") + "; \x87\x90 \xED\x40\n";
        QTest::newRow("Shift-JIS file, other lines keep their bytes")
            << sjis << "replace" << 1 << "[Begin Action 1]"
            << QByteArray(sjis).replace("[Begin Action 0]", "[Begin Action 1]");
    }

    void editsKeepLineEnds()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, edit);
        QFETCH(int, line);
        QFETCH(QString, text);
        QFETCH(QByteArray, expected);

        QSyntaxTextEditor editor(pftStates);
        QVERIFY(editor.load(write(QStringLiteral("edit.cns"), bytes)));
        QTextCursor cursor = lineCursor(editor, line);
        if (edit == QLatin1String("replace")) {
            cursor.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
            cursor.insertText(text);
        } else if (edit == QLatin1String("insertAfter")) {
            cursor.movePosition(QTextCursor::EndOfBlock);
            cursor.insertText(QLatin1Char('\n') + text);
        } else if (edit == QLatin1String("insertBefore")) {
            cursor.insertText(text + QLatin1Char('\n'));
        } else if (edit == QLatin1String("remove") || edit == QLatin1String("undo")) {
            cursor.movePosition(QTextCursor::NextBlock, QTextCursor::KeepAnchor);
            cursor.removeSelectedText();
            if (edit == QLatin1String("undo")) editor.document->undo();
        } else if (edit == QLatin1String("join")) {
            cursor.movePosition(QTextCursor::EndOfBlock);
            cursor.deleteChar();
        } else if (edit == QLatin1String("append")) {
            cursor.movePosition(QTextCursor::End);
            cursor.insertText(QLatin1Char('\n') + text);
        }
        const QString out = dir.filePath(QStringLiteral("edited.cns"));
        QVERIFY(editor.save(out));
        QCOMPARE(read(out), expected);
    }

    void newDocumentWritesCrLf()
    {
        QSyntaxTextEditor editor(pftStates);
        QCOMPARE(editor.codecName(), QStringLiteral("UTF-8"));
        QCOMPARE(editor.lineEnd(), QTextFileLines::CRLF);
        QTextCursor(editor.document).insertText(QString::fromUtf8("[Data]\nname = \"Kung Fu Man\" ; é\n"));
        QVERIFY(editor.isModified());
        QVERIFY(!editor.save());
        const QString out = dir.filePath(QStringLiteral("new.cns"));
        QVERIFY(editor.save(out));
        QCOMPARE(read(out), QByteArray("[Data]\r\nname = \"Kung Fu Man\" ; \xC3\xA9\r\n"));
        QVERIFY(!editor.isModified());
        QCOMPARE(editor.fileTitle(), QStringLiteral("new.cns"));
    }

    void forcedUtf8AndCopies()
    {
        const QByteArray bytes = encoded(french, "windows-1252", "\r\n");
        const QString path = write(QStringLiteral("latin.cns"), bytes);
        QSyntaxTextEditor editor(pftStates);
        QVERIFY(editor.load(path));
        QTextCursor(editor.document).insertText(QStringLiteral(";x\n"));

        const QString copy = dir.filePath(QStringLiteral("copy.cns"));
        QVERIFY(editor.save(copy, true, true));
        QCOMPARE(read(copy), encoded(";x\n", "UTF-8", "\r\n") + encoded(french, "UTF-8", "\r\n"));
        // A copy leaves the document as it was: modified, with its own file and encoding.
        QVERIFY(editor.isModified());
        QCOMPARE(editor.filePath(), path);
        QCOMPARE(read(path), bytes);
        QVERIFY(editor.save());
        QCOMPARE(read(path), encoded(";x\n", "windows-1252", "\r\n") + bytes);
    }

    void failedLoadChangesNothing()
    {
        QSyntaxTextEditor editor(pftStates);
        const QString path = write(QStringLiteral("kept.cns"), "[A]\n");
        QVERIFY(editor.load(path));
        QVERIFY(!editor.load(dir.filePath(QStringLiteral("missing.cns"))));
        QVERIFY(!editor.load(dir.path()));
        QCOMPARE(editor.text(), QStringLiteral("[A]\n"));
        QCOMPARE(editor.filePath(), path);
    }

    void failedSaveKeepsOldFile()
    {
        // A name of the longest length a file may have leaves no room for the temporary name beside it, so
        // writing fails even for a user whom permissions don't stop.
        const QString path = write(QString(255, QLatin1Char('s')), "[Old]\r\n");
        QVERIFY(!path.isEmpty());
        QSyntaxTextEditor editor(pftStates);
        QVERIFY(editor.load(path));
        QTextCursor(editor.document).insertText(QStringLiteral("; new\n"));
        QVERIFY(!editor.save(path));
        QCOMPARE(read(path), QByteArray("[Old]\r\n"));
        QVERIFY(editor.isModified());
        QVERIFY(!editor.save());
        QCOMPARE(read(path), QByteArray("[Old]\r\n"));

        QVERIFY(!editor.save(dir.filePath(QStringLiteral("no/such/folder/x.cns"))));
        QCOMPARE(editor.filePath(), path);
        QVERIFY(editor.isModified());
    }

    void reload()
    {
        const QString path = write(QStringLiteral("reload.cns"), "[A]\r\nx = 1\r\n");
        QSyntaxTextEditor editor(pftStates);
        QVERIFY(editor.load(path));
        QTextCursor(editor.document).insertText(QStringLiteral("; typed\n"));
        QSignalSpy updated(&editor, &QSyntaxTextEditor::hierarchyUpdated);
        QSignalSpy renamed(&editor, &QSyntaxTextEditor::pathChanged);

        write(QStringLiteral("reload.cns"), "[B]\ny = 2\n");
        QVERIFY(editor.reload(path));
        QCOMPARE(editor.text(), QStringLiteral("[B]\ny = 2\n"));
        QVERIFY(!editor.isModified());
        QVERIFY(!editor.isHierarchyPending());
        QCOMPARE(updated.count(), 1);

        // Reloading from elsewhere keeps the document's own name and path.
        const QString other = write(QStringLiteral("other.st"), "function x");
        QVERIFY(editor.reload(other));
        QCOMPARE(editor.text(), QStringLiteral("function x"));
        QCOMPARE(editor.language(), int(SyntaxNone));
        QCOMPARE(editor.filePath(), path);
        QCOMPARE(editor.fileTitle(), QStringLiteral("reload.cns"));
        QCOMPARE(renamed.count(), 0);

        QVERIFY(!editor.reload(dir.filePath(QStringLiteral("gone.cns"))));
        QCOMPARE(editor.text(), QStringLiteral("function x"));
        QVERIFY(editor.save());
        QCOMPARE(read(path), QByteArray("function x"));
    }

    void clear()
    {
        const QString path = write(QStringLiteral("clear.cns"), encoded(french, "windows-1252", "\n"));
        QSyntaxTextEditor editor(pftStates);
        QVERIFY(editor.load(path));
        QVERIFY(editor.codecName() != QLatin1String("UTF-8"));
        QTextCursor(editor.document).insertText(QStringLiteral("x"));
        QSignalSpy updated(&editor, &QSyntaxTextEditor::hierarchyUpdated);
        QSignalSpy renamed(&editor, &QSyntaxTextEditor::pathChanged);

        editor.clear();
        QVERIFY(editor.isEmpty());
        QCOMPARE(editor.text(), QString());
        QVERIFY(!editor.isModified());
        QCOMPARE(editor.filePath(), QString());
        QCOMPARE(editor.fileTitle(), QString());
        QCOMPARE(editor.codecName(), QStringLiteral("UTF-8"));
        QCOMPARE(updated.count(), 1);
        QCOMPARE(renamed.count(), 1);
        QCOMPARE(renamed.at(0).at(0).toString(), path);
        QVERIFY(!editor.isHierarchyPending());
        QVERIFY(!editor.save());

        // What is typed next is a new file: UTF-8 and CR LF, whatever the cleared file had.
        QTextCursor(editor.document).insertText(QString::fromUtf8("a\né"));
        const QString out = dir.filePath(QStringLiteral("cleared.cns"));
        QVERIFY(editor.save(out));
        QCOMPARE(read(out), QByteArray("a\r\n\xC3\xA9"));
    }

    void canClose_data()
    {
        QTest::addColumn<bool>("modified");
        QTest::addColumn<bool>("named");
        QTest::addColumn<QUserDialogs::Button>("answer");
        QTest::addColumn<bool>("asked");
        QTest::addColumn<bool>("closes");

        QTest::newRow("unmodified") << false << true << QUserDialogs::No << false << true;
        QTest::newRow("modified without a name") << true << false << QUserDialogs::No << false << true;
        QTest::newRow("modified, Yes") << true << true << QUserDialogs::Yes << true << true;
        QTest::newRow("modified, No") << true << true << QUserDialogs::No << true << false;
        QTest::newRow("modified, Cancel") << true << true << QUserDialogs::Cancel << true << false;
    }

    void canClose()
    {
        QFETCH(bool, modified);
        QFETCH(bool, named);
        QFETCH(QUserDialogs::Button, answer);
        QFETCH(bool, asked);
        QFETCH(bool, closes);

        QSyntaxTextEditor editor(pftStates);
        if (named) QVERIFY(editor.load(write(QStringLiteral("kfm.cns"), "[Statedef 0]\r\n")));
        if (modified) QTextCursor(editor.document).insertText(QStringLiteral(";"));

        for (int round = 0; round < 2; ++round) {
            QDialogRecorder recorder;
            recorder.answers.enqueue(answer);
            // canDiscard is the project's name for the same question.
            QCOMPARE(round == 0 ? editor.canClose() : editor.canDiscard(), closes);
            QCOMPARE(recorder.calls.size(), asked ? 1 : 0);
            if (!asked) continue;
            const QDialogRecorder::Call& call = recorder.calls.first();
            QCOMPARE(call.icon, QUserDialogs::Question);
            QCOMPARE(call.title, QStringLiteral("Discard changes"));
            QCOMPARE(call.text, QStringLiteral("Do you really want to discard the changes made in kfm.cns?"));
            QCOMPARE(call.buttons, QDialogRecorder::Buttons(QUserDialogs::Yes | QUserDialogs::No));
            QCOMPARE(call.defaultButton, QUserDialogs::No);
        }
    }

    void hierarchyAfterLastEdit()
    {
        QSyntaxTextEditor editor(pftStates);
        QCOMPARE(editor.hierarchyDelay(), 1000);
        editor.setHierarchyDelay(300);
        QVERIFY(editor.load(write(QStringLiteral("timer.cns"), "[A]\n")));
        QVERIFY(!editor.isHierarchyPending());
        QSignalSpy updated(&editor, &QSyntaxTextEditor::hierarchyUpdated);

        QElapsedTimer clock;
        qint64 lastEdit = 0;
        qint64 firedAt = -1;
        connect(&editor, &QSyntaxTextEditor::hierarchyUpdated, this, [&] { firedAt = clock.elapsed(); });
        clock.start();
        for (int i = 0; i < 4; ++i) {
            QTextCursor(editor.document).insertText(QStringLiteral("x"));
            lastEdit = clock.elapsed();
            QVERIFY(editor.isHierarchyPending());
            QTest::qWait(100);
            QCOMPARE(updated.count(), 0);
        }
        QTRY_COMPARE_WITH_TIMEOUT(updated.count(), 1, 2000);
        QVERIFY2(firedAt - lastEdit >= 290, qPrintable(QString::number(firedAt - lastEdit)));
        QTest::qWait(500);
        QCOMPARE(updated.count(), 1);
    }

    void issues_data()
    {
        QTest::addColumn<int>("fileType");
        QTest::addColumn<QStringList>("rows");

        QTest::newRow("state file") << int(pftStates)
                                    << QStringList{"ST 3(2): Deprecated", "ST 3(4): Unknown",
                                                   "ST 3(4): Hint"};
        QTest::newRow("animations") << int(pftAnimations)
                                    << QStringList{"AIR(2): Deprecated", "AIR(4): Unknown", "AIR(4): Hint"};
    }

    void issues()
    {
        QFETCH(int, fileType);
        QFETCH(QStringList, rows);

        TestProject project;
        QSyntaxTextEditor editor(QProjectFileType(fileType), &project);
        editor.setFileIndex(3);
        QVERIFY(editor.load(write(QStringLiteral("issues.cns"), "[A]\nx = 1\n\ny = 2\n")));
        QCOMPARE(editor.messages()->size(), 0);

        auto findings = [&](int line) -> QList<QSyntaxMessage>& {
            return QTextEditorBlockData::of(editor.document->findBlockByNumber(line))->messages;
        };
        findings(3) << QSyntaxMessage{SyntaxError, 0, 1, QStringLiteral("Unknown")}
                    << QSyntaxMessage{SyntaxNotice, 4, 5, QStringLiteral("Hint")};
        findings(1) << QSyntaxMessage{SyntaxWarning, 2, 3, QStringLiteral("Deprecated")};
        QSignalSpy refreshed(&project.list, &QMessageList::updated);
        editor.check();

        QCOMPARE(refreshed.count(), 1);
        QCOMPARE(editor.errorCount(), 1);
        const QMessages* issues = editor.messages();
        QCOMPARE(issues->size(), 3);
        QCOMPARE(issues->count(0), 1);
        QCOMPARE(issues->count(1), 2);
        QCOMPARE(issues->at(0).severity, 1);
        QCOMPARE(issues->at(1).severity, 0);
        QCOMPARE(issues->at(2).severity, 1);
        QCOMPARE(issues->at(1).subIndex, fileType == pftStates ? 3 : 0);
        QCOMPARE(issues->at(2).subIndex, fileType == pftStates ? 3 : 4);
        QStringList shown;
        for (int row = 0; row < project.list.rowCount(); ++row)
            shown << project.list.rowText(row);
        QCOMPARE(shown, rows);
    }
};

QTEST_GUILESS_MAIN(tst_SyntaxTextEditor)
#include "tst_SyntaxTextEditor.moc"
