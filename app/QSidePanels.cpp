#include "QSidePanels.h"

#include "MainWindow.h"
#include "QActionInfo.h"
#include "QActionList.h"
#include "QActionManager.h"
#include "QActionTexts.h"
#include "QAnimations.h"
#include "QAnimationsOrg.h"
#include "QCommands.h"
#include "QCommandsOrg.h"
#include "QDialogRunner.h"
#include "QInterface.h"
#include "QMugenModel.h"
#include "QOrganizerEditor.h"
#include "QPaletteObject.h"
#include "QPalettesEditor.h"
#include "QProject.h"
#include "QSounds.h"
#include "QSoundsEditor.h"
#include "QSprites.h"
#include "QSpritesEditor.h"
#include "QThumbnailsEditor.h"
#include "SprSheetDlg.h"

#include <QMenu>

namespace {
// The editors by their numbers, as the window registers them.
constexpr int spritesEditor = 1;
constexpr int animationsEditor = 2;
constexpr int commandsEditor = 3;
constexpr int soundsEditor = 5;
constexpr int noSideEditor = 4;
} // namespace

QSidePanels::QSidePanels(QInterface* iface, MainWindow* window, QSpritesEditor* sprites, QObject* parent)
    : QObject(parent), iface(iface), window(window), manager(iface->actionManager()), sprites(sprites),
      organizerEditor(new QOrganizerEditor(this)), thumbnailsEditor(new QThumbnailsEditor(this))
{
    iface->registerExtraEditor(organizerEditor);
    iface->registerExtraEditor(thumbnailsEditor);
    organizerShown = flagSetting("show_organizer", false);
    addActions();

    connect(organizerEditor, &QOrganizerEditor::itemClicked, this, &QSidePanels::itemPicked);
    // The sprites editor shows its current sprite again when the organizer moved the sprites under it.
    connect(organizerEditor, &QOrganizerEditor::changed, sprites, [this]() {
        if (this->iface->currentEditor() == spritesEditor) this->sprites->updateSel();
    });
    connect(thumbnailsEditor, &QThumbnailsEditor::switchToAnimations, this, [this]() {
        // Switching to an editor the window doesn't have would empty the panels.
        if (this->iface->editor(animationsEditor)) this->iface->switchEditor(animationsEditor);
    });
    connect(thumbnailsEditor, &QThumbnailsEditor::animationsChanged, this, [this]() {
        if (project && project->animations()) emit animationPicked(project->animations()->currentIndex);
    });
    connect(iface, &QInterface::currentProjectChanged, this, &QSidePanels::setProject);
    // Every switch of editors ends by giving the action list the new editor's commands; that is the
    // one moment the window tells of it.
    connect(manager->actionList(), &QAbstractItemModel::modelReset, this, &QSidePanels::editorShown);
    setProject(iface->currentProject());
}

QSidePanels::~QSidePanels()
{
    disconnect(manager->actionList(), nullptr, this, nullptr);
    organizerEditor->setObjects(nullptr);
    thumbnailsEditor->bind(nullptr, nullptr, nullptr, nullptr);
}

QAction* QSidePanels::add(const QList<int>& scopes, const char* name, bool checkable)
{
    const QString key = QLatin1String(name);
    QAction* action = manager->add(scopes, key, QActionTexts::id(key), checkable, this, [](bool) {});
    action->setObjectName(key);
    return action;
}

void QSidePanels::addActions()
{
    // The organizer works beside every editor that has a list; its palettes only beside the sprites.
    const QList<int> organizing = {QActionInfo::SpritesScope, QActionInfo::AnimationsScope,
                                   QActionInfo::CommandsScope, QActionInfo::SoundsScope};
    QOrganizerEditor* org = organizerEditor;
    const struct
    {
        const char* name;
        void (QOrganizerEditor::*slot)();
    } moves[] = {{"org_up", &QOrganizerEditor::moveUp},      {"org_down", &QOrganizerEditor::moveDown},
                 {"org_up_10", &QOrganizerEditor::moveUp10}, {"org_down_10", &QOrganizerEditor::moveDown10},
                 {"org_top", &QOrganizerEditor::moveTop},    {"org_bottom", &QOrganizerEditor::moveBottom},
                 {"org_auto", &QOrganizerEditor::moveAuto}};
    for (const auto& move : moves) {
        QAction* action = add(organizing, move.name, false);
        connect(action, &QAction::triggered, org, move.slot);
        org->setCommand(action);
    }
    QAction* palettes = add({QActionInfo::SpritesScope}, "org_palette", true);
    connect(palettes, &QAction::toggled, org, &QOrganizerEditor::palToggled);
    org->setCommand(palettes);

    QThumbnailsEditor* thumbs = thumbnailsEditor;
    const struct
    {
        const char* name;
        void (QThumbnailsEditor::*slot)();
    } picks[] = {{"thumb_add", &QThumbnailsEditor::add},
                 {"thumb_add_all", &QThumbnailsEditor::addAll},
                 {"thumb_new", &QThumbnailsEditor::newAnim},
                 {"thumb_new_all", &QThumbnailsEditor::newAnimAll},
                 {"thumb_save", &QThumbnailsEditor::save}};
    for (const auto& pick : picks) {
        QAction* action = add({QActionInfo::AnimationsScope}, pick.name, false);
        connect(action, &QAction::triggered, thumbs, pick.slot);
        thumbs->setCommand(action);
    }

    organizerAction = add({QActionInfo::Everywhere}, "view_organizer", true);
    organizerAction->setChecked(organizerShown);
    connect(organizerAction, &QAction::toggled, this, &QSidePanels::viewOrganizer);
    window->viewMenu()->addAction(organizerAction);
}

void QSidePanels::setProject(QProject* current)
{
    project = current;
    thumbnailsEditor->bind(current ? current->sprites() : nullptr, current ? current->animations() : nullptr,
                           current ? &current->variables : nullptr, current);
    editorShown();
}

void QSidePanels::viewOrganizer(bool shown)
{
    organizerShown = shown;
    if (organizerAction && organizerAction->isChecked() != shown) {
        const QSignalBlocker blocker(organizerAction);
        organizerAction->setChecked(shown);
    }
    if (mugenModel) (*mugenModel)[QStringLiteral("show_organizer")] = shown;
    editorShown();
}

void QSidePanels::editorShown()
{
    const int editor = iface->currentEditor();
    QOrganizableObject* primary = nullptr;
    QOrganizableObject* secondary = nullptr;
    if (project && iface->editor(editor)) {
        switch (editor) {
        case spritesEditor:
            primary = project->sprites();
            secondary = project->sprites() ? project->sprites()->paletteObject() : nullptr;
            break;
        case animationsEditor:
            primary = QAnimationsOrg::of(project->animations());
            break;
        case commandsEditor:
            primary = project->commands() ? project->commands()->organizer : nullptr;
            break;
        case soundsEditor:
            primary = project->sounds();
            break;
        default:
            break;
        }
    }
    if (organizerEditor->primaryObject() != primary || organizerEditor->secondaryObject() != secondary)
        organizerEditor->setObjects(primary, secondary);

    int side = noSideEditor;
    if (primary && organizerShown)
        side = QOrganizerEditor::Number;
    else if (editor == spritesEditor && iface->editor(editor))
        side = QPalettesEditor::Number;
    else if (editor == animationsEditor && iface->editor(editor))
        side = QThumbnailsEditor::Number;
    if (iface->currentExtraEditor() != side) iface->switchExtraEditor(side);
}

void QSidePanels::itemPicked(int row)
{
    switch (iface->currentEditor()) {
    case spritesEditor:
        if (!organizerEditor->showsSecondary()) sprites->definePos(row);
        break;
    case animationsEditor:
        if (project && project->animations()) {
            project->animations()->currentIndex = row;
            emit animationPicked(row);
        }
        break;
    case soundsEditor:
        if (auto* sounds = dynamic_cast<QSoundsEditor*>(iface->editor(soundsEditor))) sounds->definePos(row);
        break;
    default:
        break;
    }
}

void QSidePanels::sheetImport()
{
    SprSheetDlg dialog(window);
    QMap<QString, QString>* variables = project ? &project->variables : nullptr;
    QString start;
    if (variables) {
        start = variables->value(QStringLiteral("spr_path"));
        if (start.isEmpty()) start = variables->value(QStringLiteral("proj_path"));
    }
    dialog.setFolder(start);
    QDialogRunner::run(&dialog);
    if (variables && !dialog.folder().isEmpty() && dialog.folder() != start)
        (*variables)[QStringLiteral("spr_path")] = dialog.folder();
}
