// The options dialog in the real window: keys bound in its table through the action manager, with
// the manager's conflict warning, and the code editor options reaching the open text workspace.

#include "MainWindow.h"
#include "MugenDlg.h"
#include "OptionsDlg.h"
#include "QActionManager.h"
#include "QDialogRecorder.h"
#include "QInterface.h"
#include "QMugenModel.h"
#include "QMugenPage.h"
#include "QSingleInstance.h"
#include "QTextEditor.h"
#include "QTextEditors.h"
#include "QTextWorkspace.h"
#include "WindowTestConfig.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QKeySequenceEdit>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QSpinBox>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

class tst_OptionsDlg : public QObject
{
    Q_OBJECT

    WindowTestConfig configDir;

    static OptionsDlg* openOptions(MainWindow& window)
    {
        window.interface()->actionManager()->find(QStringLiteral("tools_options"))->trigger();
        return window.findChild<OptionsDlg*>();
    }

    // Types keys into the cell of an action as the user does: the cell's key editor takes them and
    // hands them on when typing ends.
    static bool typeKeys(QTableView* view, int row, const QKeySequence& keys)
    {
        // The editor of the last cell is gone only once its deletion has run.
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        const QModelIndex cell = view->model()->index(row, 1);
        view->setCurrentIndex(cell);
        view->edit(cell);
        auto* editor = view->findChild<QKeySequenceEdit*>();
        if (!editor) return false;
        editor->setKeySequence(keys);
        emit editor->editingFinished();
        return true;
    }

private Q_SLOTS:
    void initTestCase() { configDir.claim(); }

    void init() { WindowTestConfig::fresh(); }

    void cleanup() { WindowTestConfig::drop(); }

    void gamesPage();

    void keysTableBindsThroughTheManager()
    {
        QDialogRecorder dialogs;
        MainWindow window;
        QActionManager* manager = window.interface()->actionManager();
        OptionsDlg* options = openOptions(window);
        QTableView* view = options->keysTable();
        QCOMPARE(view->model(), manager);
        QCOMPARE(view->model()->headerData(0, Qt::Horizontal).toString(), QStringLiteral("Function"));
        QCOMPARE(view->model()->headerData(1, Qt::Horizontal).toString(), QStringLiteral("Keys"));

        QAction* save = manager->find(QStringLiteral("file_save"));
        QAction* open = manager->find(QStringLiteral("file_open"));
        const int saveRow = int(manager->actions().indexOf(save));
        const int openRow = int(manager->actions().indexOf(open));
        QVERIFY(typeKeys(view, saveRow, QKeySequence(QStringLiteral("Ctrl+Alt+K"))));
        QCOMPARE(manager->shortcut(save), QKeySequence(QStringLiteral("Ctrl+Alt+K")));
        QVERIFY(dialogs.calls.isEmpty());

        // Both work everywhere: the second is refused with the warning and keeps its keys.
        const QKeySequence openKeys = manager->shortcut(open);
        QVERIFY(typeKeys(view, openRow, QKeySequence(QStringLiteral("Ctrl+Alt+K"))));
        QCOMPARE(dialogs.calls.size(), 1);
        QCOMPARE(dialogs.calls.at(0).title, QStringLiteral("Conflict!"));
        QCOMPARE(dialogs.calls.at(0).text,
                 QStringLiteral("This shortcut conflict with another that resides in the same scope."));
        QCOMPARE(manager->shortcut(open), openKeys);
        QCOMPARE(manager->shortcut(save), QKeySequence(QStringLiteral("Ctrl+Alt+K")));

        view->setCurrentIndex(manager->index(saveRow, 0));
        options->findChild<QPushButton*>(QStringLiteral("clearKey"))->click();
        QVERIFY(manager->shortcut(save).isEmpty());
        for (QAction* key : manager->keyActions())
            QVERIFY(key->shortcut() != QKeySequence(QStringLiteral("Ctrl+Alt+K")));
        options->reject();
    }

    // Apply writes the settings and the open workspace follows; what Cancel throws away changes nothing.
    void codeOptionsReachTheWorkspace()
    {
        QDialogRecorder dialogs;
        MainWindow window;
        QTextEditor* editor = window.texts()->workspace()->editor();
        const int gutter = editor->extraAreaWidth();
        OptionsDlg* options = openOptions(window);
        QVERIFY(options->check(QStringLiteral("code_line_numbers"))->isChecked());
        QCOMPARE(options->fontSize()->value(), 10);
        options->check(QStringLiteral("code_line_numbers"))->setChecked(false);
        options->check(QStringLiteral("code_highlight_line"))->setChecked(false);
        options->check(QStringLiteral("confirm_close"))->setChecked(false);
        options->apply();
        QVERIFY(!(*mugenModel)[QStringLiteral("confirm_close")].toBool());
        QVERIFY(!editor->lineNumbersVisible() && !editor->highlightCurrentLine() && editor->foldingEnabled());
        QVERIFY(editor->extraAreaWidth() < gutter);

        options->fontSize()->setValue(15);
        options->apply();
        QCOMPARE(editor->font().pointSize(), 15);
        QCOMPARE(editor->tabStopDistance(),
                 QFontMetricsF(editor->font()).horizontalAdvance(QLatin1Char(' ')) * 4);
        options->check(QStringLiteral("code_folding_markers"))->setChecked(false);
        options->reject();
        QVERIFY(editor->foldingEnabled());
        QVERIFY(dialogs.calls.isEmpty());
    }
};

// The games page edits the configuration's list through the game dialog, whose presets fill the
// command line; removing and moving keep a row selected.
void tst_OptionsDlg::gamesPage()
{
    mugenModel->clear();
    QMugenPage page(mugenModel);
    QTimer::singleShot(0, [] {
        auto* dialog = qobject_cast<MugenDlg*>(QApplication::activeModalWidget());
        QVERIFY(dialog);
        dialog->findChildren<QLineEdit*>().at(0)->setText(QStringLiteral("Local"));
        dialog->presets()->setCurrentIndex(1);
        emit dialog->presets()->activated(1);
        dialog->accept();
    });
    page.add();
    QCOMPARE(mugenModel->rowCount(), 1);
    QCOMPARE(mugenModel->entry(0)->name, QStringLiteral("Local"));
    QCOMPARE(mugenModel->entry(0)->params, QStringLiteral("%0 %0 -p2.ai 1"));
    mugenModel->addEntry(QStringLiteral("Second"), QString(), QStringLiteral("%0"), QString());
    page.list()->setCurrentIndex(mugenModel->index(1, 0));
    page.moveUp();
    QCOMPARE(mugenModel->entry(0)->name, QStringLiteral("Second"));
    QCOMPARE(page.list()->currentIndex().row(), 0);
    page.remove();
    QCOMPARE(mugenModel->rowCount(), 1);
    QCOMPARE(page.list()->currentIndex().row(), 0);
}

QTEST_MAIN(tst_OptionsDlg)
#include "tst_OptionsDlg.moc"
