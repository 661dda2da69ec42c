// The tools of the states editor: the log of variable use, the PalFX and throw code, and the commands
// driven on a small project, with their dialogs filled and accepted the way a person would.

#include "OffsetDlg.h"
#include "PalFXDlg.h"
#include "ProjectFixture.h"
#include "QActionManager.h"
#include "QModelTables.h"
#include "QMugenSyntaxHierarchy.h"
#include "QOffsetView.h"
#include "QPalFX.h"
#include "QProject.h"
#include "QStatesEditor.h"
#include "QStatesTools.h"
#include "QTextEditor.h"
#include "QTextWorkspace.h"
#include "QThrowWriter.h"
#include "QVarLog.h"
#include "TestData.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QMenu>
#include <QPushButton>
#include <QSpinBox>
#include <QTabBar>
#include <QTest>

#include <memory>

namespace {

const char* const states = "; Stand\n"
                           "[Statedef 200]\ntype = S\n\n"
                           "[State 200, 1]\ntype = VarSet\ntrigger1 = 1\nvar(3) = 1\n\n"
                           "[State 200, 2]\ntype = VarSet\ntrigger1 = 1\nfvar(2) = 1.5\n\n"
                           "; Foo\n"
                           "[Statedef -1]\n\n"
                           "[State -1, 1]\ntype = VarAdd\ntrigger1 = 1\nvar(3) = 1\n\n"
                           "[Statedef 300]\ntype = S\n\n"
                           "[State 300, 1]\ntype = Null\ntrigger1 = (var(59) := 1)\n";

const QString integers =
    QStringLiteral(";---------------------- Integer variable list ----------------------\n\n");
const QString floats =
    QStringLiteral(";---------------------- Float variable list ----------------------\n\n");

// Shows the dialog so that its widgets have their sizes, as they have for a person clicking them.
void show(QDialog& dialog)
{
    dialog.show();
    if (!QTest::qWaitForWindowExposed(&dialog)) qWarning("dialog not exposed");
}

void accept(QDialog& dialog)
{
    const QDialogButtonBox* box = dialog.findChild<QDialogButtonBox*>();
    for (QAbstractButton* button : box->buttons())
        if (box->buttonRole(button) == QDialogButtonBox::AcceptRole)
            QTest::mouseClick(button, Qt::LeftButton);
}

// A project whose state file writes variables, shown in the states editor as the window would.
struct Shown
{
    ProjectFixture fixture;
    QProject project{0, false};
    QTextWorkspace workspace;
    QStatesEditor editor{&workspace};
    QWidget window;
    QActionManager manager{&window};
    QMenu menu;

    bool open()
    {
        if (!fixture.make() || !fixture.write(QStringLiteral("chars/test/test.cns"), states) ||
            !fixture.write(QStringLiteral("chars/test/test.cmd"),
                           "[Statedef -1]\n\n[State -1, 1]\ntype = VarSet\ntrigger1 = 1\nvar(7) = 1\n") ||
            !project.fromFile(fixture.def(), 0))
            return false;
        editor.tools()->addActions(&manager, &menu);
        editor.tools()->palFXFolder = TestData::binDir() + QStringLiteral("/palFX");
        editor.setProject(&project);
        editor.activate();
        return editor.text() == project.states(0);
    }
    QAction* action(const char* name) const { return manager.find(QLatin1String(name)); }
    QString plain() const { return editor.text()->document->toPlainText(); }
};

} // namespace

class tst_StatesTools : public QObject
{
    Q_OBJECT

    std::unique_ptr<QModelTables> tables;

private slots:
    void initTestCase()
    {
        tables = std::make_unique<QModelTables>(TestData::binDir());
        QVERIFY2(QModelTables::checkers(), "syntax_mugen.xml beside the programs");
    }

    void varLog_data()
    {
        QTest::addColumn<int>("format");
        QTest::addColumn<bool>("onePerLine");
        QTest::addColumn<QString>("var3");
        QTest::addColumn<QString>("var59");
        QTest::newRow("number") << int(QVarLog::StateDefNumber) << false << "200, -1"
                                << "300";
        QTest::newRow("name") << int(QVarLog::StateDefName) << false << "Stand, Foo"
                              << "300";
        QTest::newRow("number and name")
            << int(QVarLog::StateDefNumberAndName) << false << "200 - Stand, -1 - Foo"
            << "300";
        QTest::newRow("one per line") << int(QVarLog::StateDefNumber) << true << "200\n;          -1"
                                      << "300";
    }

    // Labels without the form a format picks ("300" has no name, nor a blank behind its number) are
    // taken whole; outlines of other languages are passed over.
    void varLog()
    {
        QFETCH(int, format);
        QFETCH(bool, onePerLine);
        QFETCH(QString, var3);
        QFETCH(QString, var59);
        QMugenSyntaxHierarchy hierarchy;
        hierarchy.update(QLatin1String(states));
        QVarLog::Options options;
        options.format = QVarLog::Format(format);
        options.onePerLine = onePerLine;
        options.onlyUsed = true;
        QCOMPARE(QVarLog::text({&hierarchy, nullptr}, options),
                 integers + QStringLiteral("; var(3):= %1\n;var(59):= %2\n").arg(var3, var59) + floats +
                     QStringLiteral("; fvar(2):= %1\n")
                         .arg(QVarLog::entry(QStringLiteral("200 - Stand"), options.format)));
        options.onlyUsed = false;
        options.floats = false;
        const QStringList lines = QVarLog::text({&hierarchy, &hierarchy}, options).split(QLatin1Char('\n'));
        QCOMPARE(lines.filter(QStringLiteral("):= ")).size(), 60);
        QCOMPARE(lines.at(2), QStringLiteral("; var(0):= "));
        if (!onePerLine) QCOMPARE(lines.at(5), QStringLiteral("; var(3):= %1, %1").arg(var3));
        QCOMPARE(QVarLog::entry(QStringLiteral("-1 - Foo"), QVarLog::StateDefNumber), QStringLiteral("-1"));
    }

    void palFX()
    {
        QPalFX values;
        values.add = {10, -20, 0};
        values.mul = {256, 0, 1024};
        values.sinadd = {5, -5, 0, 60};
        values.invertall = 1;
        values.color = 128;
        QCOMPARE(values.code(), QStringLiteral("[State 0, PalFXWiz]\ntype = PalFX\ntrigger1 = \ntime = \n"
                                               "add =   10, -20,   0\nmul =  256,   0,1024\n"
                                               "sinadd =    5,  -5,   0,  60\ninvertall =    1\n"
                                               "color =  128\n"));
        // Grey first, then inverted, then added to and multiplied, clamped to a byte.
        QPalFX grey;
        grey.color = 0;
        grey.invertall = 1;
        grey.add = {0, 0, 300};
        grey.mul = {256, 128, 256};
        QCOMPARE(grey.apply(qRgba(255, 0, 0, 7), 0), qRgba(179, 89, 255, 7));
        // A quarter period in, the sine is at its top.
        QPalFX wave;
        wave.sinadd = {40, -40, 0, 8};
        QCOMPARE(wave.apply(qRgb(100, 100, 100), 2), qRgb(140, 60, 100));
        QCOMPARE(wave.apply(qRgb(100, 100, 100), 4), qRgb(100, 100, 100));

        const QList<QPalFX::Preset> presets = QPalFX::presets(TestData::binDir() + QStringLiteral("/palFX"));
        QCOMPARE(presets.size(), 3);
        for (const QPalFX::Preset& preset : presets)
            QVERIFY2(!(preset.values == QPalFX()), qPrintable(preset.name));
        QVERIFY(QPalFX::presets(QStringLiteral("/nonexistent")).isEmpty());
    }

    // The written code passes the checker whatever the numbers; a broken line shows the check runs.
    void throwCodeChecks()
    {
        QThrowWriter writer;
        QThrowWriter other;
        other.stateDef = 1000;
        other.xVelocity = 0;
        other.yVelocity = 2.5;
        other.sprPriority = -2;
        QVERIFY(!other.code().contains(QLatin1String("-0,")));
        for (const QString& code : {writer.code(), other.code()}) {
            QSyntaxTextEditor text(pftStates);
            text.setPlainText(code + QStringLiteral("\n[State 0, x]\ntype = NoSuchThing\ntrigger1 = 1\n"));
            QTRY_VERIFY(text.errorCount() > 0);
            text.setPlainText(code);
            QTRY_COMPARE(text.errorCount(), 0);
        }
        const QString code = other.code();
        for (const char* line : {"[Statedef 1000]", "p1stateno = 1001", "p2stateno = 1010", "[Statedef 1011]",
                                 "type = ChangeAnim2\ntrigger1 = Time = 0\nvalue = 820", "velset = 0, 2.5",
                                 "type = SprPriority\ntrigger1 = Time = 0\nvalue = -2",
                                 "type = TargetBind\ntrigger1 = Time <= 20"})
            QVERIFY2(code.contains(QLatin1String(line)), line);
    }

    void commandsFollowTheEditor()
    {
        Shown shown;
        QVERIFY(shown.open());
        QCOMPARE(shown.menu.actions().size(), 5);
        for (QAction* action : shown.menu.actions())
            QVERIFY(action->isEnabled());
        QVERIFY(shown.action("st_var_list")->isCheckable());
        QVERIFY(shown.project.statesCount() >= 2);
        QSyntaxHierarchy* first = shown.project.states(0)->hierarchy();
        QSyntaxHierarchy* second = shown.project.states(1)->hierarchy();
        shown.action("st_var_list")->setChecked(true);
        QCOMPARE(first->mode(), int(QMugenSyntaxHierarchy::Variables));
        shown.editor.tabBar()->setCurrentIndex(1);
        QCOMPARE(first->mode(), int(QMugenSyntaxHierarchy::Outline));
        QCOMPARE(second->mode(), int(QMugenSyntaxHierarchy::Variables));
        shown.action("st_var_list")->setChecked(false);
        QCOMPARE(second->mode(), int(QMugenSyntaxHierarchy::Outline));
        shown.editor.deactivate();
        QVERIFY(!shown.action("st_throw")->isEnabled());
        shown.editor.setProject(nullptr);
        shown.editor.activate();
        QVERIFY(!shown.action("st_throw")->isEnabled());
    }

    // The log reads the state files and the commands file; a log of nothing changes nothing.
    void varLogInserts()
    {
        Shown shown;
        QVERIFY(shown.open());
        const QString before = shown.plain();
        shown.editor.tools()->runDialog = [](QDialog& dialog) {
            show(dialog);
            dialog.findChild<QComboBox*>(QStringLiteral("format"))->setCurrentIndex(QVarLog::StateDefName);
            QTest::keyClick(dialog.findChild<QCheckBox*>(QStringLiteral("onlyUsed")), Qt::Key_Space);
            QTest::keyClick(dialog.findChild<QCheckBox*>(QStringLiteral("floats")), Qt::Key_Space);
            accept(dialog);
            return dialog.result() == QDialog::Accepted;
        };
        shown.action("st_var_log")->trigger();
        QCOMPARE(shown.plain(), integers +
                                    QStringLiteral("; var(3):= Stand, Foo\n; var(7):= -1\n;var(59):= 300\n") +
                                    before);
        shown.editor.undo();
        QCOMPARE(shown.plain(), before);

        const int steps = shown.editor.text()->document->availableUndoSteps();
        shown.editor.tools()->runDialog = [](QDialog& dialog) {
            show(dialog);
            QTest::keyClick(dialog.findChild<QCheckBox*>(QStringLiteral("floats")), Qt::Key_Space);
            QTest::keyClick(dialog.findChild<QCheckBox*>(QStringLiteral("integers")), Qt::Key_Space);
            accept(dialog);
            return true;
        };
        shown.action("st_var_log")->trigger();
        QCOMPARE(shown.plain(), before);
        QCOMPARE(shown.editor.text()->document->availableUndoSteps(), steps);
    }

    void dialogsInsertAtTheCursor()
    {
        Shown shown;
        QVERIFY(shown.open());
        QTextCursor end(shown.editor.text()->document);
        end.movePosition(QTextCursor::End);
        shown.workspace.editor()->setTextCursor(end);
        const QString before = shown.plain();

        shown.editor.tools()->runDialog = [](QDialog& dialog) {
            show(dialog);
            auto* box = dialog.findChild<QSpinBox*>(QStringLiteral("StateDef"));
            box->selectAll();
            QTest::keyClicks(box, QStringLiteral("1000"));
            accept(dialog);
            return dialog.result() == QDialog::Accepted;
        };
        shown.action("st_throw")->trigger();
        QThrowWriter expected;
        expected.stateDef = 1000;
        QCOMPARE(shown.plain(), before + expected.code());
        shown.editor.undo();

        QPalFX stone;
        shown.editor.tools()->runDialog = [&stone](QDialog& dialog) {
            auto& palFX = static_cast<PalFXDlg&>(dialog);
            auto* presets = dialog.findChild<QComboBox*>(QStringLiteral("presets"));
            const int at = presets->findText(QStringLiteral("Stone"));
            presets->setCurrentIndex(at);
            emit presets->activated(at);
            stone = palFX.values();
            // The fixture's sprites use the colours 0 to 4; colour 1 is green and turns grey.
            const QRgb seen = palFX.preview().colorTable().value(1);
            if (palFX.preview().isNull() || qRed(seen) < 100 || qRed(seen) != qGreen(seen) ||
                qGreen(seen) != qBlue(seen))
                return false;
            accept(dialog);
            return true;
        };
        shown.action("st_palfx")->trigger();
        QCOMPARE(stone.color, 0);
        QCOMPARE(shown.plain(), before + stone.code());
        shown.editor.undo();

        shown.editor.tools()->runDialog = [](QDialog& dialog) {
            show(dialog);
            QOffsetView* view = static_cast<OffsetDlg&>(dialog).view();
            QTest::mouseClick(view, Qt::LeftButton, {}, view->toWidget(QPoint(5, -10)));
            QTest::mouseClick(view, Qt::LeftButton, {}, view->toWidget(QPoint(-3, 0)) + QPoint(1, 1));
            accept(dialog);
            return true;
        };
        shown.action("st_offset")->trigger();
        QCOMPARE(shown.plain(), before + QStringLiteral("-3,0"));
    }
};

QTEST_MAIN(tst_StatesTools)
#include "tst_StatesTools.moc"
