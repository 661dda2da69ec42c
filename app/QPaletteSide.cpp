#include "QPaletteSide.h"

#include "MainWindow.h"
#include "QActionManager.h"
#include "QActionTexts.h"
#include "QAnimSpriteWorkspace.h"
#include "QInterface.h"
#include "QLanguageManager.h"
#include "QPalettesEditor.h"
#include "QPalettesPanel.h"
#include "QProject.h"
#include "QSpritesEditor.h"

#include <QEvent>
#include <QMenu>
#include <QMenuBar>

QPaletteSide::QPaletteSide(QInterface* iface, MainWindow* window, QSpritesEditor* sprites, QObject* parent)
    : QObject(parent), iface(iface), manager(iface->actionManager()), sprites(sprites),
      palettes(new QPalettesEditor(sprites, sprites->spriteWorkspace(), this))
{
    iface->registerExtraEditor(palettes);
    palettes->setPageSwitch([iface, sprites]() { iface->switchEditor(sprites->number()); });
    connect(palettes, &QPalettesEditor::titleChanged, iface, [iface, this]() {
        if (iface->currentExtraEditor() == palettes->number()) iface->updateExtraEditorName();
    });
    connect(iface, &QInterface::currentProjectChanged, this, &QPaletteSide::setProject);
    if (languageManager)
        connect(languageManager, &QLanguageManager::langChanged, this, &QPaletteSide::retranslate);

    palettesMenu = new QMenu(window);
    palettesMenu->setObjectName(QStringLiteral("menuPalettes"));
    window->menuBar()->insertMenu(window->toolsMenu()->menuAction(), palettesMenu);
    addActions();
    if (QWidget* spritesPanel = sprites->panel()) spritesPanel->installEventFilter(this);
    setProject(iface->currentProject());
    retranslate();
}

QPaletteSide::~QPaletteSide()
{
    if (QWidget* spritesPanel = sprites ? sprites->panel() : nullptr) spritesPanel->removeEventFilter(this);
    palettes->bind(nullptr, nullptr);
}

QAction* QPaletteSide::add(const char* name, void (QPalettesEditor::*slot)())
{
    const QString key = QLatin1String(name);
    QPalettesEditor* editor = palettes;
    QAction* action = manager->add({QSpritesEditor::Scope}, key, QActionTexts::id(key), false, editor,
                                   [editor, slot]() { (editor->*slot)(); });
    action->setObjectName(key);
    palettesMenu->addAction(action);
    return action;
}

void QPaletteSide::addActions()
{
    using E = QPalettesEditor;
    QPalettesPanel* panel = palettes->controls();
    panel->addCommand(add("pal_add", &E::add));
    panel->addCommand(add("pal_delete", &E::del));
    add("pal_delete_duplicates", &E::delDupl);
    add("pal_clear_unused", &E::clearUnused);
    add("pal_clear", &E::clear);
    palettesMenu->addSeparator();
    panel->addCommand(add("pal_open", &E::open));
    panel->addCommand(add("pal_save", &E::save));
    palettesMenu->addSeparator();
    panel->addCommand(add("pal_undo", &E::undo));
    panel->addCommand(add("pal_redo", &E::redo));
    panel->addCommand(add("pal_set_color", &E::setColor));
    panel->addCommand(add("pal_switch_color", &E::switchColor));
    {
        const QString key = QStringLiteral("pal_pick_color");
        QPalettesEditor* editor = palettes;
        QAction* action = manager->add({QSpritesEditor::Scope}, key, QActionTexts::id(key), true, editor,
                                       [editor](bool on) { editor->pickColor(on); });
        action->setObjectName(key);
        palettesMenu->addAction(action);
        panel->addCommand(action);
        connect(editor, &QPalettesEditor::colorPicking, action, [action](bool on) {
            const QSignalBlocker blocker(action);
            action->setChecked(on);
        });
    }
    panel->addCommand(add("pal_switch_count", &E::switchCount));
    palettesMenu->addSeparator();
    panel->addCommand(add("pal_apply_sprite", &E::setSprPal));
    panel->addCommand(add("pal_apply_group", &E::setGrpPal));
    panel->addCommand(add("pal_remap", &E::remap));
    advancedAction = add("pal_advanced", &E::advanced);
    advancedAction->setEnabled(false);
    panel->addCommand(advancedAction);
    palettesMenu->addSeparator();
    panel->addNavigation(add("pal_prev_grp", &E::prevGrp));
    panel->addNavigation(add("pal_prev", &E::prevPal));
    panel->addNavigation(add("pal_next", &E::nextPal));
    panel->addNavigation(add("pal_next_grp", &E::nextGrp));
}

void QPaletteSide::setProject(QProject* project)
{
    palettes->bind(project ? project->sprites() : nullptr, project ? &project->variables : nullptr);
}

void QPaletteSide::retranslate()
{
    if (palettesMenu) palettesMenu->setTitle(tr("Palettes"));
    // The command whose window comes later says so where the user looks.
    advancedAction->setToolTip(tr("The advanced palette editor is not part of this version yet."));
}

bool QPaletteSide::eventFilter(QObject* watched, QEvent* event)
{
    if (sprites && watched == sprites->panel() && !event->spontaneous()) {
        if (event->type() == QEvent::Show && iface->currentExtraEditor() == 4)
            iface->switchExtraEditor(palettes->number());
        else if (event->type() == QEvent::Hide && iface->currentExtraEditor() == palettes->number())
            iface->switchExtraEditor(4);
    }
    return QObject::eventFilter(watched, event);
}
