#include "QAnimationEditors.h"

#include "MainWindow.h"
#include "QActionGif.h"
#include "QActionInfo.h"
#include "QActionManager.h"
#include "QActionTexts.h"
#include "QAnimSpriteWorkspace.h"
#include "QAnimation.h"
#include "QAnimations.h"
#include "QAnimationsEditor.h"
#include "QAnimationsPanel.h"
#include "QInterface.h"
#include "QMugenModel.h"
#include "QProject.h"
#include "QQuickFind.h"
#include "QTextEditors.h"
#include "QTextFileCommands.h"
#include "QTextWorkspace.h"
#include "QUserDialogs.h"

#include <QActionGroup>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QSignalBlocker>
#include <QStatusBar>
#include <QToolBar>

namespace {
// The animations editor saves and opens through the project's commands for text files, which ask
// for names and discard questions the way every file of a project does.
class QProjectAnimationsEditor : public QAnimationsEditor
{
public:
    using QAnimationsEditor::QAnimationsEditor;
    QPointer<QProject> project;

    void newFile() override
    {
        forceStop();
        QTextFileCommands::clear(text());
    }
    void openFile() override
    {
        forceStop();
        QTextFileCommands::open(text(), pftAnimations);
    }
    void saveFile() override
    {
        if (text()) QTextFileCommands::save(project, text(), pftAnimations, 0);
        emit titleChanged();
    }
    void saveFileAs() override
    {
        if (text()) QTextFileCommands::saveAs(project, text(), pftAnimations, 0);
        emit titleChanged();
    }
};
} // namespace

QAnimationEditors::QAnimationEditors(QInterface* iface, MainWindow* window, QAnimSpriteWorkspace* workspace)
    : QObject(iface), iface(iface), manager(iface->actionManager())
{
    m_animations = new QProjectAnimationsEditor(workspace, window->texts()->workspace(), this);
    iface->registerEditor(m_animations);
    connect(m_animations, &QAnimationsEditor::titleChanged, iface, [iface, this]() {
        if (iface->currentEditor() == m_animations->number()) iface->updateEditorName();
    });
    // Text mode lives in the other workspace: switching to the editor again shows it there.
    connect(m_animations, &QAnimationsEditor::workspaceChanged, iface, [iface, this]() {
        if (iface->currentEditor() == m_animations->number()) iface->switchEditor(m_animations->number());
    });
    connect(iface, &QInterface::currentProjectChanged, this, &QAnimationEditors::setProject);
    connect(m_animations, &QAnimationsEditor::saveGifRequested, this, &QAnimationEditors::saveGif);
    // In text mode the search bar of the text page searches the animation text.
    QQuickFind* findBar = window->texts()->workspace()->findBar();
    connect(findBar, &QQuickFind::doFind, this,
            [this](const QString& text, const QQuickFindOptions& options) {
                if (textModeCurrent()) m_animations->QTextDocumentEditor::find(text, options);
            });
    connect(findBar, &QQuickFind::doReplace, this,
            [this](const QString& source, const QString& dest, const QQuickFindOptions& options, bool all) {
                if (textModeCurrent()) m_animations->QTextDocumentEditor::replace(source, dest, options, all);
            });
    // An import names a project; it is opened the way the window opens one, and goes when the import
    // is done.
    m_animations->setImportLoader([](const QString& path, QObject* owner) -> QAnimations* {
        if (!path.endsWith(QLatin1String(".def"), Qt::CaseInsensitive)) return nullptr;
        auto* source = new QProject(owner);
        const uint codepage =
            mugenModel ? mugenModel->settings.value(QStringLiteral("default_codepage")).toUInt() : 0;
        if (!source->fromFile(path, codepage) || !source->animations() || source->animations()->count() == 0)
            return nullptr;
        return source->animations();
    });

    QAction* show = manager->add({QActionInfo::Everywhere}, QStringLiteral("editor_animations"),
                                 QActionTexts::id(QStringLiteral("editor_animations")), true, iface,
                                 [this, workspace](bool on) {
                                     if (!on) return;
                                     this->iface->switchEditor(m_animations->number());
                                     if (!m_animations->isTextMode()) workspace->renderWidget()->setFocus();
                                 });
    show->setObjectName(QString::number(m_animations->number()));
    iface->editorActions()->addAction(show);
    window->viewMenu()->addAction(show);
    window->extraToolBar()->addAction(show);

    animationsMenu = new QMenu(window);
    animationsMenu->setObjectName(QStringLiteral("menuAnimations"));
    window->menuBar()->insertMenu(window->toolsMenu()->menuAction(), animationsMenu);
    addAnimationActions();

    rate = new QLabel(window);
    rate->setObjectName(QStringLiteral("animationRate"));
    window->statusBar()->addWidget(rate);
    rate->hide();
    connect(m_animations, &QAnimationsEditor::rateText, rate, [this](const QString& text) {
        rate->setText(text);
        rate->setVisible(!text.isEmpty());
    });
    retranslate();
    // Made after the first project, the editor still shows the one that is current.
    if (iface->currentProject()) setProject(iface->currentProject());
}

QAnimationEditors::~QAnimationEditors()
{
    m_animations->forceStop();
    m_animations->bind(nullptr, nullptr, nullptr);
    delete m_animations;
}

QAction* QAnimationEditors::add(const char* name, void (QAnimationsEditor::*slot)())
{
    const QString key = QLatin1String(name);
    QAnimationsEditor* editor = m_animations;
    QAction* action = manager->add({QAnimationsEditor::Scope}, key, QActionTexts::id(key), false, editor,
                                   [editor, slot]() { (editor->*slot)(); });
    action->setObjectName(key);
    animationsMenu->addAction(action);
    return action;
}

QAction* QAnimationEditors::addCheckable(const char* name, void (QAnimationsEditor::*slot)(bool))
{
    const QString key = QLatin1String(name);
    QAnimationsEditor* editor = m_animations;
    QAction* action = manager->add({QAnimationsEditor::Scope}, key, QActionTexts::id(key), true, editor,
                                   [editor, slot](bool on) { (editor->*slot)(on); });
    action->setObjectName(key);
    animationsMenu->addAction(action);
    return action;
}

void QAnimationEditors::addAnimationActions()
{
    using E = QAnimationsEditor;
    add("air_new", &E::clear);
    add("air_open", &E::open);
    add("air_save", &E::save);
    add("air_saveas", &E::saveAs);
    animationsMenu->addSeparator();
    QAction* textMode = addCheckable("air_text_mode", &E::txtModeChanged);
    add("air_add", &E::add);
    add("air_delete", &E::del);
    add("air_duplicate", &E::duplicate);
    add("air_edit_text", &E::editText);
    add("air_save_gif", &E::saveGIF);
    add("air_import_proj", &E::projImport);
    animationsMenu->addSeparator();
    QAction* play = addCheckable("air_play", &E::playChanged);
    QAction* stop = add("air_stop", &E::stopChanged);
    animationsMenu->addSeparator();
    QAction* frameAdd = add("air_frame_add", &E::frameAdd);
    QAction* frameDelete = add("air_frame_delete", &E::frameDel);
    add("air_frameall_time", &E::frameAllTime);
    add("air_frameall_flip", &E::frameAllFlip);
    add("air_frameall_trans", &E::frameAllTrans);
    add("air_frame_align", &E::frameAlign);
    animationsMenu->addSeparator();
    QAction* draw1 = addCheckable("air_clsn_add1", &E::clsnAdd1Changed);
    QAction* draw2 = addCheckable("air_clsn_add2", &E::clsnAdd2Changed);
    add("air_clsn_del", &E::clsnDel);
    add("air_clsn_delall", &E::clsnDelAll);
    add("air_clsn_delall_anim", &E::clsnDelAllAnim);
    add("air_clsn_type", &E::clsnSwType);
    add("air_clsn_default", &E::clsnSwDef);
    add("air_clsn_prev", &E::clsnPrev);
    add("air_clsn_allinst", &E::clsnAllInst);
    animationsMenu->addSeparator();
    QAnimationsPanel* panel = m_animations->controls();
    panel->addCommand(add("air_prev_anim", &E::prevAnim));
    panel->addCommand(add("air_next_anim", &E::nextAnim));
    panel->addCommand(add("air_prev_frame", &E::prevFrame));
    panel->addCommand(add("air_next_frame", &E::nextFrame));
    panel->addCommand(add("air_pos_left", &E::axisLeft));
    panel->addCommand(add("air_pos_up", &E::axisUp));
    panel->addCommand(add("air_pos_right", &E::axisRight));
    panel->addCommand(add("air_pos_down", &E::axisDown));
    for (QAction* action : {play, stop, frameAdd, frameDelete, draw1, draw2})
        panel->addCommand(action);

    // The editor says when its switches flip by themselves (playing ended, drawing left by the right
    // button); the actions follow without calling back.
    connect(m_animations, &QAnimationsEditor::playChecked, play, [play](bool on) {
        const QSignalBlocker blocker(play);
        play->setChecked(on);
    });
    connect(m_animations, &QAnimationsEditor::clsnDrawing, this, [draw1, draw2](int type, bool on) {
        QAction* action = type == 0 ? draw1 : type == 1 ? draw2 : nullptr;
        if (!action) return;
        const QSignalBlocker blocker(action);
        action->setChecked(on);
    });
    connect(m_animations, &QAnimationsEditor::workspaceChanged, textMode, [this, textMode]() {
        const QSignalBlocker blocker(textMode);
        textMode->setChecked(m_animations->isTextMode());
    });
}

void QAnimationEditors::saveGif(int action, const QString& path)
{
    QAnimations* model = m_animations->animations();
    QAnimation* animation = model ? model->at(uint(action)) : nullptr;
    QSprites* sprites = m_animations->sprites();
    if (!animation || !sprites) return;
    QString error;
    if (!QActionGif::write(*animation, *sprites, path, &error))
        QUserDialogs::critical(tr("Save as GIF"), tr("The GIF %1 can't be saved: %2").arg(path, error));
}

bool QAnimationEditors::textModeCurrent() const
{
    return iface->currentEditor() == m_animations->number() && m_animations->isTextMode();
}

void QAnimationEditors::setProject(QProject* current)
{
    project = current;
    static_cast<QProjectAnimationsEditor*>(m_animations)->project = current;
    m_animations->bind(current ? current->animations() : nullptr, current ? current->sprites() : nullptr,
                       current ? &current->variables : nullptr);
}

void QAnimationEditors::retranslate()
{
    if (animationsMenu) animationsMenu->setTitle(tr("Animations"));
}
