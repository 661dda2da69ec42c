// Choosing a text file's encoding: the file read again in the chosen codec or not, what the next save
// writes, and the way there from the status line, with every question recorded.

#include "EncDlg.h"
#include "QCodecList.h"
#include "QDialogRecorder.h"
#include "QModelTables.h"
#include "QSyntaxTextEditor.h"
#include "QTextEditor.h"
#include "QTextEncoding.h"
#include "QTextWorkspace.h"
#include "TestData.h"

#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QTemporaryDir>
#include <QTest>
#include <QTextCodec>

#include <memory>

namespace {

const QString reloadQuestion = QStringLiteral("Do you want to reload the file using the specified encoding?");

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

std::unique_ptr<QSyntaxTextEditor> loaded(const QString& path)
{
    auto text = std::make_unique<QSyntaxTextEditor>(pftStates, nullptr, false, 0x1010000, false);
    if (!text->load(path)) qWarning("could not load %s", qPrintable(path));
    return text;
}

int index(const char* name)
{
    return QTextEncoding::codecIndex(QByteArray(name));
}

} // namespace

class tst_Encoding : public QObject
{
    Q_OBJECT

    std::unique_ptr<QModelTables> tables;
    QTemporaryDir dir;

private slots:
    void initTestCase()
    {
        tables = std::make_unique<QModelTables>(TestData::binDir());
        buildCodecList();
        QVERIFY(index("Shift_JIS") > 0 && index("GBK") > 0 && index("windows-1252") > 0);
    }

    // Two bytes that GBK and Shift-JIS both read, taken as GBK as a wrong guess would. Yes reads the
    // file again; No keeps the text and only changes what a save writes.
    void reloadOrOnlySave()
    {
        const QString path = dir.filePath(QStringLiteral("sjis.cns"));
        const QByteArray bytes = "; \x82\xa0\r\n[Statedef 0]\r\n";
        QVERIFY(writeAll(path, bytes));
        QDialogRecorder dialogs;
        auto text = loaded(path);
        text->setCodec(index("GBK"));
        QVERIFY(text->reload(path));
        const QString guessed = text->text();

        dialogs.answers.enqueue(QUserDialogs::No);
        QVERIFY(!EncDlg::apply(text.get(), index("Shift_JIS")));
        QCOMPARE(dialogs.calls.size(), 1);
        QCOMPARE(dialogs.calls.at(0).title, QStringLiteral("Reload"));
        QCOMPARE(dialogs.calls.at(0).text, reloadQuestion);
        QCOMPARE(dialogs.calls.at(0).buttons, QUserDialogs::Buttons(QUserDialogs::Yes | QUserDialogs::No));
        QCOMPARE(text->text(), guessed);
        QCOMPARE(text->codec(), index("Shift_JIS"));
        QCOMPARE(readAll(path), bytes);

        dialogs.answers.enqueue(QUserDialogs::Yes);
        QVERIFY(EncDlg::apply(text.get(), index("Shift_JIS")));
        QCOMPARE(text->text(), QStringLiteral("; \u3042\n[Statedef 0]\n"));
        QCOMPARE(text->filePath(), path);
        QCOMPARE(readAll(path), bytes);
        // The reloaded file is what is on disk: saved untouched it comes back byte for byte, and a typed
        // character goes out in Shift-JIS.
        QVERIFY(text->save());
        QCOMPARE(readAll(path), bytes);
        QTextCursor cursor(text->document);
        cursor.movePosition(QTextCursor::EndOfBlock);
        cursor.insertText(QStringLiteral("\u3044"));
        QVERIFY(text->save());
        QCOMPARE(readAll(path), QByteArray("; \x82\xa0\x82\xa2\r\n[Statedef 0]\r\n"));
        QCOMPARE(dialogs.calls.size(), 2);
    }

    // No on a file that read right: the text stays and the next save writes every line in the new codec.
    // A text without a file on disk is not asked about.
    void noChangesOnlyTheSavedCodec()
    {
        const QString path = dir.filePath(QStringLiteral("utf8.cns"));
        QVERIFY(writeAll(path, "; caf\xc3\xa9\n[Statedef 0]\n"));
        QDialogRecorder dialogs;
        auto text = loaded(path);
        QCOMPARE(text->codec(), index("UTF-8"));
        dialogs.answers.enqueue(QUserDialogs::No);
        EncDlg::apply(text.get(), index("windows-1252"));
        QCOMPARE(text->text(), QStringLiteral("; caf\u00e9\n[Statedef 0]\n"));
        QVERIFY(text->save());
        QCOMPARE(readAll(path), QByteArray("; caf\xe9\n[Statedef 0]\n"));

        QVERIFY(QFile::remove(path));
        EncDlg::apply(text.get(), index("UTF-8"));
        QCOMPARE(dialogs.calls.size(), 1);
        QCOMPARE(text->codec(), index("UTF-8"));
    }

    // A real GBK state file read wrongly in a Windows page comes back right when reloaded in GBK.
    void realGbkFileReloads()
    {
        TAVREL_REQUIRE_TESTDATA();
        const QStringList found = TestData::files({QStringLiteral("Chang.cns")});
        if (found.isEmpty()) QSKIP("Chang.cns (GBK) is not in the test data");
        const QString path = dir.filePath(QStringLiteral("Chang.cns"));
        QVERIFY(QFile::copy(found.first(), path));
        const QByteArray bytes = readAll(path);
        QDialogRecorder dialogs;
        auto text = loaded(path);
        dialogs.answers.enqueue(QUserDialogs::Yes);
        QVERIFY(EncDlg::apply(text.get(), index("windows-1252")));
        QVERIFY(!text->text().contains(QStringLiteral("\u5c0f\u7070\u5c18")));

        dialogs.answers.enqueue(QUserDialogs::Yes);
        QVERIFY(EncDlg::apply(text.get(), index("GBK")));
        QVERIFY(text->text().contains(QStringLiteral("[State 106, 3];\u5c0f\u7070\u5c18")));
        QCOMPARE(text->text(), QTextCodec::codecForName("GBK")->toUnicode(bytes).remove(QLatin1Char('\r')));
        QVERIFY(text->save());
        QCOMPARE(readAll(path), bytes);
    }

    // A click on the encoding in the status line offers the table with the file's codec chosen; OK
    // applies the choice and the status line shows it.
    void statusLineOpensTheDialog()
    {
        const QString path = dir.filePath(QStringLiteral("status.cns"));
        QVERIFY(writeAll(path, "[Statedef 0]\n"));
        QDialogRecorder dialogs;
        auto text = loaded(path);
        QTextWorkspace workspace;
        workspace.setText(text.get());
        workspace.show();
        QVERIFY(QTest::qWaitForWindowExposed(&workspace));
        auto* label = workspace.findChild<QLabel*>(QStringLiteral("encodingStatus"));
        QVERIFY(label);
        QTest::mouseClick(label, Qt::LeftButton);
        auto* dialog = workspace.findChild<EncDlg*>();
        QVERIFY(dialog);
        QCOMPARE(dialog->windowTitle(), QStringLiteral("Encoding"));
        auto* codePage = dialog->findChild<QComboBox*>(QStringLiteral("codePage"));
        QVERIFY(codePage);
        QCOMPARE(codePage->count(), int(codecList().size()));
        QCOMPARE(codePage->currentIndex(), text->codec());
        codePage->setCurrentIndex(index("Shift_JIS"));
        dialogs.answers.enqueue(QUserDialogs::Yes);
        dialog->accept();
        QCOMPARE(dialogs.calls.size(), 1);
        QCOMPARE(text->codec(), index("Shift_JIS"));
        QCOMPARE(label->text(), QStringLiteral("Encoding: Shift_JIS"));
        QCOMPARE(workspace.editor()->toPlainText(), QStringLiteral("[Statedef 0]\n"));
    }
};

QTEST_MAIN(tst_Encoding)
#include "tst_Encoding.moc"
