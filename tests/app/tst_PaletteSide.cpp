// The palettes side of the window: its commands under their names in the sprites editor's key scope,
// the right panel showing the palettes beside the sprites editor, and the panel following the
// current project.

#include "MainWindow.h"
#include "ProjectFixture.h"
#include "QActionInfo.h"
#include "QActionManager.h"
#include "QInterface.h"
#include "QPaletteSide.h"
#include "QPalettesEditor.h"
#include "QProject.h"
#include "QSpriteEditors.h"
#include "QSpritesEditor.h"
#include "WindowTestConfig.h"

#include <QMenu>
#include <QMenuBar>
#include <QTest>

class tst_PaletteSide : public QObject
{
    Q_OBJECT

    WindowTestConfig configDir;

    // The window's palettes side: the sprite editors make it beside the sprites editor.
    static QPaletteSide* side(MainWindow& window)
    {
        return window.spriteEditorsPart()->findChild<QPaletteSide*>();
    }

private Q_SLOTS:
    void initTestCase() { configDir.claim(); }
    void init() { WindowTestConfig::fresh(); }
    void cleanup() { WindowTestConfig::drop(); }

    void commandsLiveInTheSpritesScope()
    {
        MainWindow window;
        QPaletteSide* palettes = side(window);
        QVERIFY(palettes);
        const QStringList names{"pal_clear",
                                "pal_clear_unused",
                                "pal_add",
                                "pal_delete",
                                "pal_delete_duplicates",
                                "pal_open",
                                "pal_save",
                                "pal_switch_count",
                                "pal_remap",
                                "pal_undo",
                                "pal_redo",
                                "pal_switch_color",
                                "pal_pick_color",
                                "pal_set_color",
                                "pal_apply_sprite",
                                "pal_apply_group",
                                "pal_advanced",
                                "pal_prev_grp",
                                "pal_next_grp",
                                "pal_prev",
                                "pal_next"};
        QActionManager* manager = window.interface()->actionManager();
        for (const QString& name : names) {
            QAction* action = manager->find(name);
            QVERIFY2(action, qPrintable(name));
            const QActionInfo info = QActionInfo::of(action);
            QVERIFY2(info.inScope(QSpritesEditor::Scope), qPrintable(name));
            QVERIFY2(!info.inScope(0), qPrintable(name));
            QVERIFY2(palettes->menu()->actions().contains(action), qPrintable(name));
            QCOMPARE(action->isEnabled(), name != QLatin1String("pal_advanced"));
        }
        QVERIFY(manager->find(QStringLiteral("pal_pick_color"))->isCheckable());
        QCOMPARE(manager->find(QStringLiteral("pal_advanced"))->toolTip(),
                 QStringLiteral("The advanced palette editor is not part of this version yet."));
        QVERIFY(window.menuBar()->actions().contains(palettes->menu()->menuAction()));
    }

    void panelStandsBesideTheSpritesEditor()
    {
        MainWindow window;
        QPaletteSide* palettes = side(window);
        QVERIFY(palettes);
        QInterface* iface = window.interface();
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        ProjectFixture fixture;
        QVERIFY(fixture.make());
        iface->openProject(fixture.def());
        QProject* project = iface->currentProject();
        QVERIFY(project && project->sprites()->paletteCount() > 0);
        QCOMPARE(palettes->editor()->sprites(), project->sprites());

        iface->switchEditor(window.spriteEditorsPart()->sprites()->number());
        QCOMPARE(iface->currentExtraEditor(), QPalettesEditor::Number);
        QVERIFY(palettes->editor()->panel()->isVisible());

        // Its commands answer their keys' actions.
        const int before = palettes->editor()->position();
        project->sprites()->addPalette(static_cast<const QRGBPal*>(nullptr), QSpritePaletteShareMode::Share,
                                       9, 0);
        iface->actionManager()->find(QStringLiteral("pal_next"))->trigger();
        QCOMPARE(palettes->editor()->position(), before + 1);

        // Another editor takes the panel away, and with it the picking of colours from the shared view.
        QAction* pick = iface->actionManager()->find(QStringLiteral("pal_pick_color"));
        pick->setChecked(true);
        iface->switchEditor(0);
        QCOMPARE(iface->currentExtraEditor(), 4);
        QVERIFY(!pick->isChecked());
    }
};

QTEST_MAIN(tst_PaletteSide)
#include "tst_PaletteSide.moc"
