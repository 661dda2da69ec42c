// Find and replace over all text files of a project through its dialog in the real window: the walk
// from file to file and the editor that follows it, the switches, replacing everywhere with one undo
// step per file, and the dialog's place kept in the configuration.

#include "FindDlgMlt.h"
#include "MainWindow.h"
#include "ProjectFixture.h"
#include "QActionManager.h"
#include "QCommands.h"
#include "QDialogRecorder.h"
#include "QInterface.h"
#include "QMugenModel.h"
#include "QProject.h"
#include "QSingleInstance.h"
#include "QTextEditor.h"
#include "QTextEditors.h"
#include "QTextWorkspace.h"
#include "WindowTestConfig.h"

#include <QLineEdit>
#include <QTabBar>
#include <QTemporaryDir>
#include <QTest>

namespace {

// The fixture's project: the definitions, the commands, then test.cns and the shared common1.cns.
struct Opened
{
    ProjectFixture fixture;
    QDialogRecorder dialogs;
    MainWindow window;
    FindDlgMlt* find = window.findChild<FindDlgMlt*>();

    bool open()
    {
        if (!fixture.make()) return false;
        window.interface()->openProject(fixture.def());
        return find && project()->statesCount() == 2;
    }
    QProject* project() const { return window.interface()->currentProject(); }
    QTextDocument* shown() const { return window.texts()->workspace()->editor()->document(); }
    QString selected() const { return window.texts()->workspace()->editor()->textCursor().selectedText(); }
    void search(const QString& text)
    {
        find->findTxt()->setText(text);
        find->doFind();
    }
};

} // namespace

class tst_ProjectTextTools : public QObject
{
    Q_OBJECT

    WindowTestConfig configDir;

private Q_SLOTS:
    void initTestCase() { configDir.claim(); }

    void init() { WindowTestConfig::fresh(); }

    void cleanup() { WindowTestConfig::drop(); }

    // With "All files" the search leaves the shown file when it has no more hits and shows the next
    // file that has one, in its editor and tab; without it, the shown file is all there is.
    void findWalksThroughTheFiles()
    {
        Opened opened;
        QVERIFY(opened.open());
        opened.window.interface()->switchEditor(4);
        QTextDocument* own = opened.project()->states(0)->document;
        QTextDocument* common = opened.project()->states(1)->document;
        QCOMPARE(opened.shown(), own);
        opened.search(QStringLiteral("Statedef 5000"));
        QCOMPARE(opened.dialogs.calls.size(), 1);
        QCOMPARE(opened.dialogs.calls.at(0).text, QStringLiteral("No text found!"));

        opened.find->setInAllFiles(true);
        opened.search(QStringLiteral("statedef"));
        QCOMPARE(opened.shown(), own);
        opened.find->doFind();
        QCOMPARE(opened.shown(), common);
        auto* tabs = opened.window.findChild<QTabBar*>(QStringLiteral("statesTabs"));
        QCOMPARE(tabs->tabText(tabs->currentIndex()), QStringLiteral("common1.cns"));
        QCOMPARE(opened.selected(), QStringLiteral("Statedef"));
        // At the last file the walk ends, unless it is circular: then it goes round to the commands.
        opened.find->doFind();
        QCOMPARE(opened.dialogs.calls.size(), 2);
        opened.find->setOption(QQuickFindOption::Circular, true);
        opened.find->doFind();
        QCOMPARE(opened.window.interface()->currentEditor(), 3);
        QCOMPARE(opened.shown(), opened.project()->commands()->document);
        // Backward from the commands: past the definitions and round to the last file.
        opened.find->setOption(QQuickFindOption::Backward, true);
        opened.search(QStringLiteral("type = s"));
        QCOMPARE(opened.shown(), common);
        QCOMPARE(opened.selected(), QStringLiteral("type = S"));

        opened.find->setOption(QQuickFindOption::Backward, false);
        opened.find->setOption(QQuickFindOption::CaseSensitive, true);
        opened.search(QStringLiteral("STATEDEF"));
        QCOMPARE(opened.dialogs.calls.size(), 3);
        opened.find->setOption(QQuickFindOption::RegularExpression, true);
        opened.search(QStringLiteral("name = \"\\w\""));
        QCOMPARE(opened.shown(), opened.project()->commands()->document);
        QCOMPARE(opened.selected(), QStringLiteral("name = \"a\""));
        QCOMPARE(opened.dialogs.calls.size(), 3);
    }

    // Replace All in all files changes every file with hits, each in one step that its own undo takes
    // back, and tells how many; Replace changes the selected hit and goes on to the next.
    void replaceInAllFiles()
    {
        Opened opened;
        QVERIFY(opened.open());
        QTextDocument* own = opened.project()->states(0)->document;
        QTextDocument* common = opened.project()->states(1)->document;
        const QString commonBefore = common->toPlainText();
        opened.find->setInAllFiles(true);
        opened.find->findTxt()->setText(QStringLiteral("type = S"));
        opened.find->replaceTxt()->setText(QStringLiteral("type = A"));
        opened.find->doReplaceAll();
        QCOMPARE(opened.dialogs.calls.size(), 1);
        QCOMPARE(opened.dialogs.calls.at(0).title, QStringLiteral("Replace All"));
        QCOMPARE(opened.dialogs.calls.at(0).text, QStringLiteral("2 occurrence(s) replaced in 2 file(s)."));
        QCOMPARE(own->toPlainText(), QStringLiteral("[Statedef 0]\ntype = A\n"));
        QVERIFY(common->toPlainText().contains(QStringLiteral("type = A")));
        own->undo();
        QCOMPARE(own->toPlainText(), QStringLiteral("[Statedef 0]\ntype = S\n"));
        QVERIFY(!own->isUndoAvailable());
        common->undo();
        QCOMPARE(common->toPlainText(), commonBefore);

        // The definitions are shown; the first Replace only finds, the second replaces and goes on.
        opened.find->doReplace();
        QCOMPARE(opened.shown(), own);
        opened.find->doReplace();
        QCOMPARE(own->toPlainText(), QStringLiteral("[Statedef 0]\ntype = A\n"));
        QCOMPARE(opened.shown(), common);
        QCOMPARE(opened.dialogs.calls.size(), 1);
    }

    // The dialog's place and whether it is open come back with the next window; closing it by hand is
    // remembered too.
    void dialogPlaceIsKept()
    {
        {
            QDialogRecorder dialogs;
            MainWindow window;
            window.interface()->actionManager()->find(QStringLiteral("edit_find_replace_multi"))->trigger();
            auto* find = window.findChild<FindDlgMlt*>();
            QVERIFY(find->isVisible() && !find->isModal());
            find->move(123, 145);
        }
        QVERIFY((*mugenModel)[QStringLiteral("show_find_multi")].toBool());
        const QPoint kept((*mugenModel)[QStringLiteral("find_multi_x")].toInt(),
                          (*mugenModel)[QStringLiteral("find_multi_y")].toInt());
        {
            QDialogRecorder dialogs;
            MainWindow window;
            auto* find = window.findChild<FindDlgMlt*>();
            QVERIFY(find->isVisible());
            QCOMPARE(find->pos(), kept);
            find->reject();
        }
        QVERIFY(!(*mugenModel)[QStringLiteral("show_find_multi")].toBool());
    }
};

QTEST_MAIN(tst_ProjectTextTools)
#include "tst_ProjectTextTools.moc"
