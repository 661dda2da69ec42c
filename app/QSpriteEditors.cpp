#include "QSpriteEditors.h"

#include "MainWindow.h"
#include "QActionInfo.h"
#include "QActionManager.h"
#include "QActionTexts.h"
#include "QAnimSpriteWorkspace.h"
#include "QColorsetManager.h"
#include "QInterface.h"
#include "QPaletteSide.h"
#include "QProject.h"
#include "QSidePanels.h"
#include "QSpritesEditor.h"
#include "QSpritesPanel.h"

#include <QActionGroup>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QStatusBar>
#include <QToolBar>

namespace {
// The sprites editor saves through the project, which asks for the version and a name the way every
// file of a project is saved.
class QProjectSpritesEditor : public QSpritesEditor
{
public:
    using QSpritesEditor::QSpritesEditor;
    QPointer<QProject> project;

    void save() override
    {
        if (project) project->saveFile(pftSprites, false, 0);
        emit titleChanged();
    }
    void saveAs() override
    {
        // A save as always asks, even when the file has a name.
        if (!project || !sprites()) return;
        const QString kept = sprites()->fileName();
        sprites()->setFileName(QString());
        project->saveFile(pftSprites, false, 0);
        if (sprites()->fileName().isEmpty()) sprites()->setFileName(kept);
        emit titleChanged();
    }
    void saveFile() override { save(); }
    void saveFileAs() override { saveAs(); }
};
} // namespace

QSpriteEditors::QSpriteEditors(QInterface* iface, MainWindow* window)
    : QObject(iface), iface(iface), window(window), manager(iface->actionManager())
{
    m_workspace = new QAnimSpriteWorkspace(window->centralWidget(), this);
    m_workspace->setColorSource(
        [](const QString& key) { return colorsetManager ? colorsetManager->color(key) : QColor(); });
    iface->registerWorkspace(1, m_workspace, m_workspace->page());
    m_sprites = new QProjectSpritesEditor(m_workspace, this);
    iface->registerEditor(m_sprites);
    connect(m_sprites, &QSpritesEditor::titleChanged, iface, [iface, this]() {
        if (iface->currentEditor() == m_sprites->number()) iface->updateEditorName();
    });
    connect(iface, &QInterface::currentProjectChanged, this, &QSpriteEditors::setProject);
    connect(iface, &QInterface::configApplied, m_workspace, &QAnimSpriteWorkspace::optionsApplied);

    QAction* show =
        manager->add({QActionInfo::Everywhere}, QStringLiteral("editor_sprites"),
                     QActionTexts::id(QStringLiteral("editor_sprites")), true, iface, [this](bool on) {
                         if (!on) return;
                         this->iface->switchEditor(m_sprites->number());
                         m_workspace->renderWidget()->setFocus();
                     });
    show->setObjectName(QString::number(m_sprites->number()));
    iface->editorActions()->addAction(show);
    window->viewMenu()->addAction(show);
    window->extraToolBar()->addAction(show);

    spritesMenu = new QMenu(window);
    spritesMenu->setObjectName(QStringLiteral("menuSprites"));
    window->menuBar()->insertMenu(window->toolsMenu()->menuAction(), spritesMenu);
    addSpriteActions();
    new QPaletteSide(iface, window, m_sprites, this);
    auto* sidePanels = new QSidePanels(iface, window, m_sprites, this);
    connect(m_sprites, &QSpritesEditor::sheetImportRequested, sidePanels, &QSidePanels::sheetImport);
    m_workspace->addViewActions(window->viewMenu(), [this](const QString& name, bool checkable) {
        return manager->add({QSpritesEditor::Scope, QActionInfo::AnimationsScope}, name,
                            QActionTexts::id(name), checkable, this, [](bool) {});
    });

    position = new QLabel(window);
    position->setObjectName(QStringLiteral("spritePosition"));
    window->statusBar()->addWidget(position);
    position->hide();
    connect(m_workspace, &QAnimSpriteWorkspace::statusChanged, position, &QLabel::setText);
    retranslate();
}

QSpriteEditors::~QSpriteEditors()
{
    m_sprites->bind(nullptr, nullptr);
    // Each piece borrows from those made before it (the editor shows the workspace's view, the side
    // panels follow the editor), so they go in the reverse order of their making.
    QList<QPointer<QObject>> made;
    for (QObject* child : children())
        made.prepend(child);
    for (const QPointer<QObject>& child : made)
        delete child.data();
}

QAction* QSpriteEditors::add(const char* name, bool checkable, void (QSpritesEditor::*slot)())
{
    const QString key = QLatin1String(name);
    QSpritesEditor* editor = m_sprites;
    QAction* action = manager->add({QSpritesEditor::Scope}, key, QActionTexts::id(key), checkable, editor,
                                   [editor, slot]() { (editor->*slot)(); });
    action->setObjectName(key);
    spritesMenu->addAction(action);
    return action;
}

void QSpriteEditors::addLaterAction(const char* name)
{
    const QString key = QLatin1String(name);
    QAction* action =
        manager->add({QSpritesEditor::Scope}, key, QActionTexts::id(key), false, m_sprites, []() {});
    action->setObjectName(key);
    action->setEnabled(false);
    action->setProperty("laterFeature", true);
    spritesMenu->addAction(action);
}

void QSpriteEditors::addSpriteActions()
{
    using E = QSpritesEditor;
    add("spr_new", false, &E::clear);
    add("spr_open", false, &E::open);
    add("spr_save", false, &E::save);
    add("spr_saveas", false, &E::saveAs);
    spritesMenu->addSeparator();
    add("spr_add", false, &E::add);
    add("spr_delete", false, &E::del);
    add("spr_openimg", false, &E::openImg);
    add("spr_saveimg", false, &E::saveImg);
    add("spr_saveimg_aligned", false, &E::saveImgAlign);
    add("spr_crop", false, &E::crop);
    add("spr_duplicate", false, &E::duplicate);
    add("spr_delete_grp", false, &E::delGroup);
    add("spr_rename_grp", false, &E::renameGroup);
    add("spr_align", false, &E::alignTools);
    addLaterAction("spr_edit_img");
    add("spr_split_channels", false, &E::splitRGB);
    spritesMenu->addSeparator();
    add("spr_export", false, &E::fileExport);
    add("spr_import", false, &E::fileImport);
    add("spr_import_proj", false, &E::projImport);
    {
        const QString key = QStringLiteral("spr_frame_spr");
        QSpritesEditor* editor = m_sprites;
        QAction* action = manager->add({QSpritesEditor::Scope}, key, QActionTexts::id(key), true, editor,
                                       [editor](bool on) { editor->frameSpr(on); });
        action->setObjectName(key);
        spritesMenu->addAction(action);
    }
    spritesMenu->addSeparator();
    QSpritesPanel* panel = m_sprites->controls();
    panel->addCommand(add("spr_prev", false, &E::prevSpr));
    panel->addCommand(add("spr_next", false, &E::nextSpr));
    panel->addCommand(add("spr_prev_grp", false, &E::prevGrp));
    panel->addCommand(add("spr_next_grp", false, &E::nextGrp));
    panel->addCommand(add("spr_pos_left", false, &E::axisLeft));
    panel->addCommand(add("spr_pos_up", false, &E::axisUp));
    panel->addCommand(add("spr_pos_right", false, &E::axisRight));
    panel->addCommand(add("spr_pos_down", false, &E::axisDown));
    QMenu* align = spritesMenu->addMenu(QString());
    align->setObjectName(QStringLiteral("menuAlign"));
    const auto alignTo = [this, align](const char* name, void (QSpritesEditor::*slot)()) {
        QAction* action = add(name, false, slot);
        spritesMenu->removeAction(action);
        align->addAction(action);
    };
    alignTo("spr_align_topleft", &E::alignTopLeft);
    alignTo("spr_align_topcenter", &E::alignTopCenter);
    alignTo("spr_align_topright", &E::alignTopRight);
    alignTo("spr_align_centerleft", &E::alignCenterLeft);
    alignTo("spr_align_centercenter", &E::alignCenterCenter);
    alignTo("spr_align_centerright", &E::alignCenterRight);
    alignTo("spr_align_bottomleft", &E::alignBotLeft);
    alignTo("spr_align_bottomcenter", &E::alignBotCenter);
    alignTo("spr_align_bottomright", &E::alignBotRight);
}

void QSpriteEditors::setProject(QProject* current)
{
    project = current;
    static_cast<QProjectSpritesEditor*>(m_sprites)->project = current;
    m_sprites->bind(current ? current->sprites() : nullptr, current ? &current->variables : nullptr);
    // Sprites may be imported from any other open project; the list is read when projects switch,
    // which every open and close does.
    QList<QPair<QString, QSprites*>> sources;
    for (int i = 0; i < iface->projectCount(); ++i)
        if (QProject* other = iface->project(i); other && other->sprites())
            sources << qMakePair(other->displayName(), other->sprites());
    m_sprites->setImportSources(sources);
}

void QSpriteEditors::retranslate()
{
    if (spritesMenu) spritesMenu->setTitle(tr("Sprites"));
    if (QMenu* align = spritesMenu ? spritesMenu->findChild<QMenu*>(QStringLiteral("menuAlign")) : nullptr)
        align->setTitle(tr("Align"));
    // Commands whose windows come later say so where the user looks.
    for (QAction* action : manager->actions())
        if (action->property("laterFeature").toBool())
            action->setToolTip(tr("The image editor is not part of this version yet."));
}
