// The organizer and the thumbnails in the window: their commands under their names and scopes, what
// the right panel shows beside each editor with the organizer on and off, an organizer pick showing
// the sprite, and the sprite sheet importer opened for the sprites editor.

#include "MainWindow.h"
#include "ProjectFixture.h"
#include "QActionInfo.h"
#include "QActionManager.h"
#include "QCommands.h"
#include "QCommandsOrg.h"
#include "QDialogRunner.h"
#include "QInterface.h"
#include "QOrganizerEditor.h"
#include "QPaletteObject.h"
#include "QPalettesEditor.h"
#include "QProject.h"
#include "QSidePanels.h"
#include "QSpriteEditors.h"
#include "QSpritesEditor.h"
#include "QThumbnailsEditor.h"
#include "SprSheetDlg.h"
#include "WindowTestConfig.h"

#include <QMenu>
#include <QTest>
#include <QToolButton>

class tst_SidePanels : public QObject
{
    Q_OBJECT

    WindowTestConfig configDir;

    // The window's side panels: the sprite editors make them beside the sprites editor.
    static QSidePanels* side(MainWindow& window)
    {
        return window.spriteEditorsPart()->findChild<QSidePanels*>();
    }

private Q_SLOTS:
    void initTestCase() { configDir.claim(); }
    void init() { WindowTestConfig::fresh(); }
    void cleanup()
    {
        QDialogRunner::install(nullptr);
        WindowTestConfig::drop();
    }

    void commandsAndTheirScopes_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QList<int>>("scopes");
        QTest::addColumn<bool>("checkable");
        const QList<int> organizing = {QActionInfo::SpritesScope, QActionInfo::AnimationsScope,
                                       QActionInfo::CommandsScope, QActionInfo::SoundsScope};
        for (const char* name :
             {"org_up", "org_down", "org_up_10", "org_down_10", "org_top", "org_bottom", "org_auto"})
            QTest::newRow(name) << QString::fromLatin1(name) << organizing << false;
        QTest::newRow("org_palette") << QStringLiteral("org_palette") << QList<int>{QActionInfo::SpritesScope}
                                     << true;
        for (const char* name : {"thumb_add", "thumb_add_all", "thumb_new", "thumb_new_all", "thumb_save"})
            QTest::newRow(name) << QString::fromLatin1(name) << QList<int>{QActionInfo::AnimationsScope}
                                << false;
        QTest::newRow("view_organizer")
            << QStringLiteral("view_organizer") << QList<int>{QActionInfo::Everywhere} << true;
    }

    void commandsAndTheirScopes()
    {
        QFETCH(QString, name);
        QFETCH(QList<int>, scopes);
        QFETCH(bool, checkable);
        MainWindow window;
        QSidePanels* panels = side(window);
        QAction* action = window.interface()->actionManager()->find(name);
        QVERIFY(action);
        QCOMPARE(action->isCheckable(), checkable);
        const QActionInfo info = QActionInfo::of(action);
        for (int scope = 0; scope < QActionInfo::ScopeCount; ++scope)
            QVERIFY2(info.inScope(scope) == scopes.contains(scope), qPrintable(QString::number(scope)));
        // The panels' buttons are the commands themselves.
        QWidget* page = name.startsWith(QLatin1String("org_"))     ? panels->organizer()->panel()
                        : name.startsWith(QLatin1String("thumb_")) ? panels->thumbnails()->panel()
                                                                   : nullptr;
        if (page)
            QCOMPARE(page->findChild<QToolButton*>(name)->defaultAction(), action);
        else
            QVERIFY(window.viewMenu()->actions().contains(action));
    }

    void rightPanelFollowsTheEditor()
    {
        MainWindow window;
        QSidePanels* panels = side(window);
        QInterface* iface = window.interface();
        QProject* project = iface->currentProject();
        QVERIFY(project);
        QOrganizerEditor* organizer = panels->organizer();
        QAction* toggle = iface->actionManager()->find(QStringLiteral("view_organizer"));
        QVERIFY(!toggle->isChecked());

        iface->switchEditor(1);
        QCOMPARE(iface->currentExtraEditor(), QPalettesEditor::Number);
        QCOMPARE(organizer->primaryObject(), project->sprites());
        QCOMPARE(organizer->secondaryObject(), project->sprites()->paletteObject());

        toggle->trigger();
        QVERIFY(panels->isOrganizerShown());
        QCOMPARE(iface->currentExtraEditor(), QOrganizerEditor::Number);
        QCOMPARE((*mugenModel)[QStringLiteral("show_organizer")].toBool(), true);

        // The commands' list has no palettes; the definitions have no list at all.
        iface->switchEditor(3);
        QCOMPARE(iface->currentExtraEditor(), QOrganizerEditor::Number);
        QCOMPARE(organizer->primaryObject(), project->commands()->organizer);
        QCOMPARE(organizer->secondaryObject(), nullptr);
        iface->switchEditor(0);
        QCOMPARE(iface->currentExtraEditor(), 4);
        QCOMPARE(organizer->primaryObject(), nullptr);

        iface->switchEditor(1);
        QCOMPARE(iface->currentExtraEditor(), QOrganizerEditor::Number);
        toggle->trigger();
        QCOMPARE(iface->currentExtraEditor(), QPalettesEditor::Number);
        QCOMPARE((*mugenModel)[QStringLiteral("show_organizer")].toBool(), false);
        iface->switchEditor(3);
        QCOMPARE(iface->currentExtraEditor(), 4);
    }

    void organizerShownAtStartFromTheConfiguration()
    {
        (*mugenModel)[QStringLiteral("show_organizer")] = true;
        MainWindow window;
        QSidePanels* panels = side(window);
        QVERIFY(panels->isOrganizerShown());
        QVERIFY(window.interface()->actionManager()->find(QStringLiteral("view_organizer"))->isChecked());
        window.interface()->switchEditor(1);
        QCOMPARE(window.interface()->currentExtraEditor(), QOrganizerEditor::Number);
    }

    void pickShowsTheSpriteAndFollowsTheProject()
    {
        MainWindow window;
        QSidePanels* panels = side(window);
        QInterface* iface = window.interface();
        ProjectFixture fixture;
        QVERIFY(fixture.make());
        iface->openProject(fixture.def());
        QProject* project = iface->currentProject();
        QVERIFY(project && project->sprites()->count() == 2);
        QCOMPARE(panels->thumbnails()->sprites(), project->sprites());
        QCOMPARE(panels->thumbnails()->animations(), project->animations());

        iface->switchEditor(1);
        QSpritesEditor* sprites = window.spriteEditorsPart()->sprites();
        QCOMPARE(panels->organizer()->primaryObject(), project->sprites());
        sprites->definePos(0);
        panels->organizer()->itemDblClick(project->sprites()->index(1));
        QCOMPARE(sprites->position(), 1);
        // A pick among the palettes leaves the sprite alone.
        panels->organizer()->palToggled(true);
        panels->organizer()->itemDblClick(project->sprites()->paletteObject()->index(0));
        QCOMPARE(sprites->position(), 1);
    }

    void sheetImporterStartsInTheProjectsFolder()
    {
        MainWindow window;
        QSidePanels* panels = side(window);
        QProject* project = window.interface()->currentProject();
        project->variables.insert(QStringLiteral("proj_path"), QStringLiteral("/some/where"));
        QString title, folder;
        QDialogRunner::install([&](QDialog* dialog) {
            auto* sheet = qobject_cast<SprSheetDlg*>(dialog);
            title = dialog->windowTitle();
            folder = sheet ? sheet->folder() : QString();
            if (sheet) sheet->setFolder(QStringLiteral("/sheets"));
            return int(QDialog::Rejected);
        });
        panels->sheetImport();
        QCOMPARE(title, QStringLiteral("Sprite sheet importer"));
        QCOMPARE(folder, QStringLiteral("/some/where"));
        // Where a sheet came from is where the next sprite dialog starts.
        QCOMPARE(project->variables.value(QStringLiteral("spr_path")), QStringLiteral("/sheets"));
    }
};

QTEST_MAIN(tst_SidePanels)
#include "tst_SidePanels.moc"
