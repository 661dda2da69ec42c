// Saving text files loses nothing: every real text file comes back byte for byte through the model that
// reads it, whatever code page is configured; an edited line is written in the file's own encoding while
// the other lines keep their bytes; what the encoding can't hold is told before anything is written.

#include "FileBytes.h"
#include "QAirDocument.h"
#include "QCommands.h"
#include "QDefinitions.h"
#include "QDialogRecorder.h"
#include "QTextElementRegistry.h"
#include "QTextEncoding.h"
#include "TestData.h"

#include <QTemporaryDir>
#include <QTest>
#include <QTextBlock>
#include <QTextCodec>
#include <QTextCursor>

#include <memory>

namespace {

// Text files are those without a zero byte, as the command line's resave tells them.
bool isText(const QByteArray& bytes)
{
    return !bytes.contains('\0');
}

const QByteArray utf8Mark("\xEF\xBB\xBF");

// The lines of a file's bytes, after its byte order mark.
QList<QByteArray> lines(const QByteArray& bytes)
{
    return (bytes.startsWith(utf8Mark) ? bytes.mid(utf8Mark.size()) : bytes).split('\n');
}

// The index of the first line with bytes above ASCII.
int firstHighLine(const QByteArray& bytes)
{
    const QList<QByteArray> all = lines(bytes);
    for (int i = 0; i < all.size(); ++i)
        if (std::any_of(all.at(i).cbegin(), all.at(i).cend(), [](char c) { return uchar(c) >= 0x80; }))
            return i;
    return -1;
}

// The bytes with one line's text (up to its CR or LF) replaced.
QByteArray withLine(const QByteArray& bytes, int line, const QByteArray& text)
{
    QList<QByteArray> all = lines(bytes);
    const bool cr = all.at(line).endsWith('\r');
    all[line] = text + (cr ? QByteArray("\r") : QByteArray());
    return (bytes.startsWith(utf8Mark) ? utf8Mark : QByteArray()) + all.join('\n');
}

void replaceLine(QSyntaxTextEditor& editor, int line, const QString& text)
{
    QTextCursor cursor(editor.document->findBlockByNumber(line));
    cursor.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
    cursor.insertText(text);
}

} // namespace

class tst_TextFileLines : public QObject
{
    Q_OBJECT

    QTemporaryDir dir;
    int identical = 0;

    QString copyOf(const QString& relative)
    {
        const QString target = dir.filePath(QFileInfo(relative).fileName());
        QFile::remove(target);
        return QFile::copy(QDir(TestData::root()).filePath(relative), target) ? target : QString();
    }

private slots:
    void initTestCase() { registerTextElements(); }

    void cleanupTestCase()
    {
        if (identical > 0) qInfo("%d real text files saved back byte for byte", identical);
        unregisterTextElements();
    }

    // Each file goes through the model that the editor and "tavrel-cli resave" read it into, once for
    // each configured code page that a user might have: the locale's, the Western and the Thai page of
    // Windows, and the two East Asian pages of the test content.
    void realFilesComeBack_data()
    {
        QTest::addColumn<QString>("path");
        const QString root = TestData::root();
        for (const QString& path : TestData::files({QStringLiteral("*")}))
            if (isText(readBytes(path))) QTest::newRow(qPrintable(QDir(root).relativeFilePath(path))) << path;
    }

    void realFilesComeBack()
    {
        TAVREL_REQUIRE_TESTDATA();
        QFETCH(QString, path);
        const QByteArray bytes = readBytes(path);
        const QString suffix = QFileInfo(path).suffix().toLower();
        const QString out = dir.filePath(QStringLiteral("real.out"));
        for (const char* wanted : {"", "windows-1252", "TIS-620", "GBK", "Shift_JIS"}) {
            const uint codepage = uint(QTextEncoding::codecIndex(wanted));
            QDialogRecorder dialogs;
            bool written = false;
            if (suffix == QLatin1String("def")) {
                QDefinitions definitions;
                written = definitions.fromFile(path, codepage) && definitions.toFile(out, true);
            } else if (suffix == QLatin1String("cmd")) {
                QCommands commands;
                written = commands.fromFile(path, codepage) && commands.toFile(out, true);
            } else if (suffix == QLatin1String("air")) {
                QAirDocument air;
                written = air.editor.fromFile(path, codepage) && air.editor.toFile(out, true);
            } else {
                QSyntaxTextEditor text(pftStates);
                written = text.fromFile(path, codepage) && text.toFile(out, true);
            }
            QVERIFY2(written, wanted);
            QVERIFY2(readBytes(out) == bytes, wanted);
            QVERIFY(dialogs.calls.isEmpty());
        }
        ++identical;
    }

    // The first line with non-ASCII text of a real file is replaced by text of the file's own script.
    void editedLineInTheFilesEncoding_data()
    {
        QTest::addColumn<QString>("relative");
        QTest::addColumn<QByteArray>("codec");
        QTest::addColumn<QString>("text");

        QTest::newRow("GBK definitions")
            << "kof-h-cjk/chars/kula/kula.def" << QByteArray("GBK") << QString::fromUtf8("; 库拉·冰之舞");
        QTest::newRow("GBK states") << "kof-h-cjk/chars/kula/新·冻结处刑.cns" << QByteArray("GBK")
                                    << QString::fromUtf8("; 冻结处刑（改）");
        QTest::newRow("Shift-JIS states") << "ikemen-aru/chars/Crescent/Crescent.cns"
                                          << QByteArray("Shift_JIS") << QString::fromUtf8("; 氷の舞・ｶﾀｶﾅ");
        QTest::newRow("UTF-8 states") << "elecbyte-mugen11/chars/kfm/kfm.cns" << QByteArray("UTF-8")
                                      << QString::fromUtf8("; Kung Fu Man — 功夫男 😀");
    }

    void editedLineInTheFilesEncoding()
    {
        TAVREL_REQUIRE_TESTDATA();
        QFETCH(QString, relative);
        QFETCH(QByteArray, codec);
        QFETCH(QString, text);

        const QString path = copyOf(relative);
        QVERIFY(!path.isEmpty());
        const QByteArray bytes = readBytes(path);
        const int line = firstHighLine(bytes);
        QVERIFY(line >= 0);
        QDialogRecorder dialogs;
        QSyntaxTextEditor editor(pftStates);
        QVERIFY(editor.fromFile(path, 0));
        QCOMPARE(QTextEncoding::codec(editor.codec())->name(), QTextCodec::codecForName(codec)->name());
        replaceLine(editor, line, text);
        QVERIFY(editor.save());
        QVERIFY(dialogs.calls.isEmpty());
        QCOMPARE(readBytes(path), withLine(bytes, line, QTextCodec::codecForName(codec)->fromUnicode(text)));
    }

    // A character the encoding can't hold is told, with the file and the line, before anything is
    // written: refused, the file stays as it was; accepted, it is written as "?" and nothing else changes.
    void unwritableCharacters_data()
    {
        QTest::addColumn<QString>("relative");
        QTest::addColumn<int>("line");
        QTest::addColumn<QString>("added");  // typed at the end of the line
        QTest::addColumn<QString>("unheld"); // the characters that become "?"
        QTest::addColumn<QString>("told");   // part of the message

        QTest::newRow("hangul in GBK")
            << "kof-h-cjk/chars/kula/kula.def" << 1 << QString::fromUtf8(" ; 冰 한")
            << QString::fromUtf8("한") << QString::fromUtf8("line 2: 한 (U+D55C)");
        QTest::newRow("emoji in Shift-JIS")
            << "ikemen-aru/chars/Crescent/Crescent.cns" << 0 << QString::fromUtf8(" ; 氷😀")
            << QString::fromUtf8("😀") << QString::fromUtf8("line 1: 😀 (U+1F600)");
        QTest::newRow("Chinese in CP-1252")
            << "ikemen-go-2019/chars/DuckHunt/States.st" << 2 << QString::fromUtf8(" ; é 冰 冰")
            << QString::fromUtf8("冰") << QString::fromUtf8("line 3: 冰 (U+51B0)");
        // A line of this file is Chinese among Japanese ones: read as Shift-JIS, some of its bytes are
        // unreadable, and the edited line can't give them back.
        QTest::newRow("unreadable bytes in an edited line")
            << "kof-h-cjk/chars/kula/kula.cns" << 841 << QStringLiteral(" ; x")
            << QString(QChar::ReplacementCharacter) << "line 842: bytes that could not be read";
    }

    void unwritableCharacters()
    {
        TAVREL_REQUIRE_TESTDATA();
        QFETCH(QString, relative);
        QFETCH(int, line);
        QFETCH(QString, added);
        QFETCH(QString, unheld);
        QFETCH(QString, told);

        const QString path = copyOf(relative);
        QVERIFY(!path.isEmpty());
        const QByteArray bytes = readBytes(path);
        QDialogRecorder dialogs;
        QSyntaxTextEditor editor(pftStates);
        QVERIFY(editor.fromFile(path, 0));
        QString edited = editor.document->findBlockByNumber(line).text() + added;
        replaceLine(editor, line, edited);

        dialogs.answers.enqueue(QUserDialogs::Cancel);
        QVERIFY(!editor.save());
        QCOMPARE(readBytes(path), bytes);
        QVERIFY(editor.isModified());
        QCOMPARE(dialogs.calls.size(), 1);
        const QDialogRecorder::Call& call = dialogs.calls.first();
        QCOMPARE(call.title, QStringLiteral("Characters the encoding can't hold"));
        QVERIFY2(call.text.startsWith(QFileInfo(path).fileName() + QStringLiteral(" is saved in ")),
                 qPrintable(call.text));
        QVERIFY2(call.text.contains(told), qPrintable(call.text));
        QCOMPARE(call.buttons, QUserDialogs::Buttons(QUserDialogs::Save | QUserDialogs::Cancel));
        QCOMPARE(call.defaultButton, QUserDialogs::Cancel);

        dialogs.answers.enqueue(QUserDialogs::Save);
        QVERIFY(editor.save());
        QVERIFY(!editor.isModified());
        for (const uint code : unheld.toUcs4()) {
            const char32_t character = code;
            edited.replace(QString::fromUcs4(&character, 1), QStringLiteral("?"));
        }
        QCOMPARE(readBytes(path),
                 withLine(bytes, line, QTextEncoding::codec(editor.codec())->fromUnicode(edited)));
    }
};

QTEST_GUILESS_MAIN(tst_TextFileLines)
#include "tst_TextFileLines.moc"
