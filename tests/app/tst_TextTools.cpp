// Find and replace over all text files of a project, driven through its dialog in the real window:
// the walk from file to file and the editor that follows it, the switches, replacing everywhere with
// one undo step per file, and the dialog's place kept in the configuration.

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
#include "QSyntaxTextEditor.h"
#include "QTextEditor.h"
#include "QTextEditors.h"
#include "QTextTools.h"
#include "QTextWorkspace.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QTabBar>
#include <QTemporaryDir>
#include <QTest>

namespace {

const QString noText = QStringLiteral("No text found!");

struct Opened
{
    ProjectFixture fixture;
    QDialogRecorder dialogs;
    MainWindow window;
    QInterface* iface = nullptr;
    FindDlgMlt* find = nullptr;

    bool open()
    {
        if (!fixture.make()) return false;
        iface = window.interface();
        iface->openProject(fixture.def());
        find = window.findChild<FindDlgMlt*>();
        return find && iface->currentProject()->statesCount() == 2;
    }
    QProject* project() const { return iface->currentProject(); }
    QTextEditor* view() const { return window.texts()->workspace()->editor(); }
    QSyntaxTextEditor* states(const char* name) const
    {
        for (int i = 0; i < project()->statesCount(); ++i)
            if (project()->states(i)->filePath().endsWith(QLatin1String(name))) return project()->states(i);
        return nullptr;
    }
    QString selected() const { return view()->textCursor().selectedText(); }
    void search(const QString& text)
    {
        find->findTxt()->setText(text);
        find->doFind();
    }
};

} // namespace

class tst_TextTools : public QObject
{
    Q_OBJECT

    QTemporaryDir configDir;

private Q_SLOTS:
    void initTestCase()
    {
        qputenv("TAVREL_CONFIG_DIR", configDir.path().toLocal8Bit());
        isFirstInstance = false;
    }

    void init() { mugenModel = new QMugenModel; }

    void cleanup()
    {
        delete mugenModel;
        mugenModel = nullptr;
    }

    // With "All files" the search leaves the shown file when it has no more hits and shows the next
    // file that has one, in its editor and tab; without it, the shown file is all there is.
    void findWalksThroughTheFiles()
    {
        Opened opened;
        QVERIFY(opened.open());
        QInterface* iface = opened.iface;
        iface->switchEditor(4);
        auto* tabs = opened.window.findChild<QTabBar*>(QStringLiteral("statesTabs"));
        QSyntaxTextEditor* own = opened.states("test.cns");
        QSyntaxTextEditor* common = opened.states("common1.cns");
        QVERIFY(own && common);
        tabs->setCurrentIndex(opened.project()->states(0) == own ? 0 : 1);
        QCOMPARE(opened.view()->document(), own->document);

        opened.search(QStringLiteral("Statedef 5000"));
        QCOMPARE(opened.dialogs.calls.size(), 1);
        QCOMPARE(opened.dialogs.calls.at(0).text, noText);
        QCOMPARE(opened.view()->document(), own->document);

        opened.find->setInAllFiles(true);
        opened.search(QStringLiteral("statedef"));
        QCOMPARE(opened.view()->document(), own->document);
        QCOMPARE(opened.selected(), QStringLiteral("Statedef"));
        opened.find->doFind();
        QCOMPARE(opened.view()->document(), common->document);
        QCOMPARE(tabs->tabText(tabs->currentIndex()), QStringLiteral("common1.cns"));
        QCOMPARE(opened.view()->textCursor().blockNumber(), 1);
        QCOMPARE(opened.selected(), QStringLiteral("Statedef"));
        // At the last file the walk ends, unless it is circular: then it goes round to the commands.
        opened.find->doFind();
        QCOMPARE(opened.dialogs.calls.size(), 2);
        QCOMPARE(opened.view()->document(), common->document);
        opened.find->setOption(QQuickFindOption::Circular, true);
        opened.find->doFind();
        QCOMPARE(iface->currentEditor(), 3);
        QCOMPARE(opened.view()->document(), opened.project()->commands()->document);
        QCOMPARE(opened.selected(), QStringLiteral("Statedef"));

        // Backward from there: the definitions come before the commands, and then, round, the last file.
        opened.find->setOption(QQuickFindOption::Backward, true);
        opened.search(QStringLiteral("type = s"));
        QCOMPARE(opened.view()->document(), opened.project()->states(1)->document);
        QCOMPARE(opened.selected(), QStringLiteral("type = S"));
        opened.find->setOption(QQuickFindOption::Backward, false);

        opened.find->setOption(QQuickFindOption::CaseSensitive, true);
        opened.search(QStringLiteral("STATEDEF"));
        QCOMPARE(opened.dialogs.calls.size(), 3);
        opened.find->setOption(QQuickFindOption::RegularExpression, true);
        opened.search(QStringLiteral("Statedef \\d{4}\\]"));
        QCOMPARE(opened.view()->document(), common->document);
        QCOMPARE(opened.selected(), QStringLiteral("Statedef 5000]"));
        opened.search(QStringLiteral("name = \"\\w\""));
        QCOMPARE(iface->currentEditor(), 3);
        QCOMPARE(opened.selected(), QStringLiteral("name = \"a\""));
        QCOMPARE(opened.dialogs.calls.size(), 3);
    }

    // Replace All in all files changes every file that has hits, each in one step that its own undo
    // takes back, and tells how many; Replace changes the hit that is selected and goes on to the next.
    void replaceInAllFiles()
    {
        Opened opened;
        QVERIFY(opened.open());
        QSyntaxTextEditor* own = opened.states("test.cns");
        QSyntaxTextEditor* common = opened.states("common1.cns");
        const QString ownBefore = own->text();
        const QString commonBefore = common->text();
        opened.find->setInAllFiles(true);
        opened.find->findTxt()->setText(QStringLiteral("type = S"));
        opened.find->replaceTxt()->setText(QStringLiteral("type = A"));
        opened.find->doReplaceAll();
        QCOMPARE(opened.dialogs.calls.size(), 1);
        QCOMPARE(opened.dialogs.calls.at(0).title, QStringLiteral("Replace All"));
        QCOMPARE(opened.dialogs.calls.at(0).text, QStringLiteral("2 occurrence(s) replaced in 2 file(s)."));
        QCOMPARE(own->text(), QStringLiteral("[Statedef 0]\ntype = A\n"));
        QVERIFY(common->text().contains(QStringLiteral("type = A")));
        QVERIFY(own->isModified() && common->isModified());

        own->document->undo();
        QCOMPARE(own->text(), ownBefore);
        QVERIFY(!own->document->isUndoAvailable());
        QVERIFY(common->text().contains(QStringLiteral("type = A")));
        common->document->undo();
        QCOMPARE(common->text(), commonBefore);

        // One by one: the definitions are shown, the first hit is in a state file.
        opened.find->doReplace();
        QCOMPARE(opened.view()->document(), own->document);
        QCOMPARE(own->text(), ownBefore);
        opened.find->doReplace();
        QCOMPARE(own->text(), QStringLiteral("[Statedef 0]\ntype = A\n"));
        QCOMPARE(opened.view()->document(), common->document);
        QCOMPARE(opened.selected(), QStringLiteral("type = S"));
        QCOMPARE(opened.dialogs.calls.size(), 1);
    }

    // The action opens the dialog with the selection; its place and whether it is open are kept and
    // come back with the next window; closing it by hand is remembered too.
    void dialogPlaceIsKept()
    {
        {
            QDialogRecorder dialogs;
            MainWindow window;
            QAction* action =
                window.interface()->actionManager()->find(QStringLiteral("edit_find_replace_multi"));
            QVERIFY(action);
            action->trigger();
            auto* find = window.findChild<FindDlgMlt*>();
            QVERIFY(find && find->isVisible() && !find->isModal());
            find->move(123, 145);
        }
        QCOMPARE((*mugenModel)[QStringLiteral("show_find_multi")].toBool(), true);
        const QPoint kept((*mugenModel)[QStringLiteral("find_multi_x")].toInt(),
                          (*mugenModel)[QStringLiteral("find_multi_y")].toInt());
        {
            QDialogRecorder dialogs;
            MainWindow window;
            auto* find = window.findChild<FindDlgMlt*>();
            QVERIFY(find && find->isVisible());
            QCOMPARE(find->pos(), kept);
            find->reject();
        }
        QCOMPARE((*mugenModel)[QStringLiteral("show_find_multi")].toBool(), false);
    }
};

QTEST_MAIN(tst_TextTools)
#include "tst_TextTools.moc"
