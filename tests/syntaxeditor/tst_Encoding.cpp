// Choosing a text file's encoding from the status line: the file read again in the chosen codec or
// not, and what the next save writes, with every question recorded.

#include "EncDlg.h"
#include "QCodecList.h"
#include "QDialogRecorder.h"
#include "QModelTables.h"
#include "QSyntaxTextEditor.h"
#include "QTextEncoding.h"
#include "QTextWorkspace.h"
#include "TestData.h"

#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QTemporaryDir>
#include <QTest>
#include <QTextCodec>

namespace {

QByteArray readAll(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool writeAll(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

int index(const char* name)
{
    return QTextEncoding::codecIndex(QByteArray(name));
}

} // namespace

class tst_Encoding : public QObject
{
    Q_OBJECT

    QModelTables tables{TestData::binDir()};
    QTemporaryDir dir;

private slots:
    void initTestCase() { buildCodecList(); }

    // Two bytes that GBK and Shift-JIS both read, taken as GBK as a wrong guess would. No keeps the
    // text and changes only what a save writes; Yes reads the file again; without a file on disk
    // nothing is asked.
    void reloadOrOnlySave()
    {
        const QString path = dir.filePath(QStringLiteral("sjis.cns"));
        const QByteArray bytes = "; \x82\xa0\r\n[Statedef 0]\r\n";
        QVERIFY(writeAll(path, bytes));
        QDialogRecorder dialogs;
        QSyntaxTextEditor text(pftStates, nullptr, false, 0x1010000, false);
        QVERIFY(text.load(path));
        text.setCodec(index("GBK"));
        QVERIFY(text.reload(path));
        const QString guessed = text.text();

        QTextWorkspace workspace;
        workspace.setText(&text);
        auto* label = workspace.findChild<QLabel*>(QStringLiteral("encodingStatus"));
        QTest::mouseClick(label, Qt::LeftButton);
        auto* dialog = workspace.findChild<EncDlg*>();
        QVERIFY(dialog);
        QCOMPARE(dialog->windowTitle(), QStringLiteral("Encoding"));
        QCOMPARE(dialog->codePage()->count(), int(codecList().size()));
        QCOMPARE(dialog->codePage()->currentIndex(), index("GBK"));
        dialog->codePage()->setCurrentIndex(index("Shift_JIS"));
        dialogs.answers.enqueue(QUserDialogs::No);
        dialog->accept();
        QCOMPARE(dialogs.calls.size(), 1);
        QCOMPARE(dialogs.calls.at(0).title, QStringLiteral("Reload"));
        QCOMPARE(dialogs.calls.at(0).text,
                 QStringLiteral("Do you want to reload the file using the specified encoding?"));
        QCOMPARE(dialogs.calls.at(0).buttons, QUserDialogs::Buttons(QUserDialogs::Yes | QUserDialogs::No));
        QCOMPARE(text.text(), guessed);
        QCOMPARE(label->text(), QStringLiteral("Encoding: Shift_JIS"));

        dialogs.answers.enqueue(QUserDialogs::Yes);
        QVERIFY(EncDlg::apply(&text, index("Shift_JIS")));
        QCOMPARE(text.text(), QStringLiteral("; \u3042\n[Statedef 0]\n"));
        QCOMPARE(text.filePath(), path);
        QCOMPARE(readAll(path), bytes);
        // A typed character goes out in Shift-JIS, the untouched line keeps its bytes.
        QTextCursor cursor(text.document);
        cursor.movePosition(QTextCursor::EndOfBlock);
        cursor.insertText(QStringLiteral("\u3044"));
        QVERIFY(text.save());
        QCOMPARE(readAll(path), QByteArray("; \x82\xa0\x82\xa2\r\n[Statedef 0]\r\n"));

        // No on a file that read right: the next save writes every line in the new codec.
        QVERIFY(writeAll(path, "; caf\xc3\xa9\n"));
        QVERIFY(text.load(path));
        dialogs.answers.enqueue(QUserDialogs::No);
        QVERIFY(!EncDlg::apply(&text, index("windows-1252")));
        QCOMPARE(text.text(), QStringLiteral("; caf\u00e9\n"));
        QVERIFY(text.save());
        QCOMPARE(readAll(path), QByteArray("; caf\xe9\n"));
        QVERIFY(QFile::remove(path));
        EncDlg::apply(&text, index("UTF-8"));
        QCOMPARE(dialogs.calls.size(), 3);
        QCOMPARE(text.codec(), index("UTF-8"));
    }

    // A real GBK state file read in a Windows page comes back right when reloaded in GBK.
    void realGbkFileReloads()
    {
        TAVREL_REQUIRE_TESTDATA();
        const QStringList found = TestData::files({QStringLiteral("Chang.cns")});
        if (found.isEmpty()) QSKIP("Chang.cns (GBK) is not in the test data");
        const QString path = dir.filePath(QStringLiteral("Chang.cns"));
        QVERIFY(QFile::copy(found.first(), path));
        const QByteArray bytes = readAll(path);
        QDialogRecorder dialogs;
        dialogs.answers << QUserDialogs::Yes << QUserDialogs::Yes;
        QSyntaxTextEditor text(pftStates, nullptr, false, 0x1010000, false);
        QVERIFY(text.load(path));
        QVERIFY(EncDlg::apply(&text, index("windows-1252")));
        QVERIFY(!text.text().contains(QStringLiteral("\u5c0f\u7070\u5c18")));
        QVERIFY(EncDlg::apply(&text, index("GBK")));
        QVERIFY(text.text().contains(QStringLiteral("[State 106, 3];\u5c0f\u7070\u5c18")));
        QCOMPARE(text.text(), QTextCodec::codecForName("GBK")->toUnicode(bytes).remove(QLatin1Char('\r')));
        QVERIFY(text.save());
        QCOMPARE(readAll(path), bytes);
    }
};

QTEST_MAIN(tst_Encoding)
#include "tst_Encoding.moc"
