// The commands of the text workspace's templates as the window registers them: names, scopes, menus
// and the two view switches that follow and write the configuration.

#include "QActionInfo.h"
#include "QActionManager.h"
#include "QMugenModel.h"
#include "QSCtrlList.h"
#include "QTextBar.h"
#include "QTextToolActions.h"
#include "QTextTools.h"
#include "QTextWorkspace.h"

#include <QAction>
#include <QMainWindow>
#include <QMenu>
#include <QTest>

class tst_TextToolActions : public QObject
{
    Q_OBJECT

private slots:
    void registersTheCommands()
    {
        QMugenModel config;
        mugenModel = &config;
        config[QStringLiteral("show_sctrl_list")] = false;
        QMainWindow window;
        auto* workspace = new QTextWorkspace(&window);
        window.setCentralWidget(workspace);
        auto* manager = new QActionManager(&window);
        QMenu view, code;
        const QList<int> scopes = {QActionInfo::DefinitionsScope, QActionInfo::StatesScope};
        addTextToolActions(manager, scopes, workspace->tools(), &view, &code);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));

        QStringList names;
        for (QAction* action : code.actions())
            if (!action->isSeparator()) names << QActionInfo::of(action).name;
        QCOMPARE(names, QStringList({"code_snippet_insert", "code_snippet_new", "code_snippet_edit",
                                     "st_sctrl_new", "st_sctrl_edit", "st_sctrl_delete"}));
        QAction* list = manager->find(QStringLiteral("view_sctrl_list"));
        QAction* bar = manager->find(QStringLiteral("view_text_bar"));
        QVERIFY(view.actions().contains(list) && view.actions().contains(bar));
        QVERIFY(QActionInfo::of(list).inScope(QActionInfo::StatesScope));
        QVERIFY(!QActionInfo::of(list).inScope(QActionInfo::SpritesScope));

        // The switches start as configured and write what the user chooses.
        QVERIFY(list->isCheckable() && !list->isChecked());
        QVERIFY(!workspace->tools()->sctrlList()->isVisible());
        QVERIFY(bar->isChecked());
        QVERIFY(workspace->tools()->textBar()->isVisible());
        bar->trigger();
        QVERIFY(!workspace->tools()->textBar()->isVisible());
        QCOMPARE(config[QStringLiteral("show_text_bar")].toBool(), false);
        list->trigger();
        QVERIFY(workspace->tools()->sctrlList()->isVisible());
        QCOMPARE(config[QStringLiteral("show_sctrl_list")].toBool(), true);
        mugenModel = nullptr;
    }
};

QTEST_MAIN(tst_TextToolActions)
#include "tst_TextToolActions.moc"
