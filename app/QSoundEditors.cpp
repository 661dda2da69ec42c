#include "QSoundEditors.h"

#include "MainWindow.h"
#include "QActionInfo.h"
#include "QActionManager.h"
#include "QActionTexts.h"
#include "QInterface.h"
#include "QLanguageManager.h"
#include "QProgress.h"
#include "QProject.h"
#include "QSoundWorkspace.h"
#include "QSounds.h"
#include "QSoundsEditor.h"
#include "QSoundsPanel.h"

#include <QActionGroup>
#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <QSignalBlocker>
#include <QTableView>
#include <QToolBar>

namespace {
// The sounds editor saves through the project, which asks for a name the way every file of a project
// is saved.
class QProjectSoundsEditor : public QSoundsEditor
{
public:
    using QSoundsEditor::QSoundsEditor;
    QPointer<QProject> project;

    void save() override { saveThroughProject(false); }
    void saveAs() override { saveThroughProject(true); }

private:
    void saveThroughProject(bool askName)
    {
        QSounds* model = sounds();
        // An empty file is refused with the reason; the project would pass over it in silence.
        if (!project || !model || !model->canSave(0)) return;
        emit flushFields();
        // A save as always asks, even when the file has a name.
        const QString kept = model->fileName();
        if (askName) model->setFileName(QString());
        {
            QProgress progress(QApplication::activeWindow(), tr("Saving sounds..."));
            connect(model, &QSounds::progress, &progress, &QProgress::onProgress);
            project->saveFile(pftSounds, false, 0);
        }
        if (model->fileName().isEmpty()) model->setFileName(kept);
        emit titleChanged();
    }
};
} // namespace

QSoundEditors::QSoundEditors(QInterface* iface, MainWindow* window)
    : QObject(iface), iface(iface), manager(iface->actionManager())
{
    m_workspace = new QSoundWorkspace(window->centralWidget(), this);
    iface->registerWorkspace(QSoundWorkspace::Number, m_workspace, m_workspace->page());
    m_sounds = new QProjectSoundsEditor(m_workspace, this);
    iface->registerEditor(m_sounds);
    connect(m_sounds, &QSoundsEditor::titleChanged, iface, [iface, this]() {
        if (iface->currentEditor() == m_sounds->number()) iface->updateEditorName();
    });
    connect(iface, &QInterface::currentProjectChanged, this, &QSoundEditors::setProject);

    QAction* show =
        manager->add({QActionInfo::Everywhere}, QStringLiteral("editor_sounds"),
                     QActionTexts::id(QStringLiteral("editor_sounds")), true, iface, [this](bool on) {
                         if (!on) return;
                         this->iface->switchEditor(m_sounds->number());
                         m_workspace->list()->setFocus();
                     });
    show->setObjectName(QString::number(m_sounds->number()));
    iface->editorActions()->addAction(show);
    window->viewMenu()->addAction(show);
    window->extraToolBar()->addAction(show);

    soundsMenu = new QMenu(window);
    soundsMenu->setObjectName(QStringLiteral("menuSounds"));
    window->menuBar()->insertMenu(window->toolsMenu()->menuAction(), soundsMenu);
    addSoundActions();
    setProject(iface->currentProject());
    if (languageManager)
        connect(languageManager, &QLanguageManager::langChanged, this, &QSoundEditors::retranslate);
    retranslate();
}

QSoundEditors::~QSoundEditors()
{
    m_sounds->bind(nullptr, nullptr);
    // The editor shows the workspace's table, so it goes first.
    delete m_sounds;
    m_sounds = nullptr;
    delete m_workspace;
    m_workspace = nullptr;
}

QAction* QSoundEditors::add(const char* name, void (QSoundsEditor::*slot)())
{
    const QString key = QLatin1String(name);
    QSoundsEditor* editor = m_sounds;
    QAction* action = manager->add({QSoundsEditor::Scope}, key, QActionTexts::id(key), false, editor,
                                   [editor, slot]() { (editor->*slot)(); });
    action->setObjectName(key);
    soundsMenu->addAction(action);
    return action;
}

QAction* QSoundEditors::addCheckable(const char* name, void (QSoundsEditor::*slot)(bool))
{
    const QString key = QLatin1String(name);
    QSoundsEditor* editor = m_sounds;
    QAction* action = manager->add({QSoundsEditor::Scope}, key, QActionTexts::id(key), true, editor,
                                   [editor, slot](bool on) { (editor->*slot)(on); });
    action->setObjectName(key);
    soundsMenu->addAction(action);
    return action;
}

void QSoundEditors::addSoundActions()
{
    using E = QSoundsEditor;
    add("snd_new", &E::clear);
    add("snd_open", &E::open);
    add("snd_save", &E::save);
    add("snd_saveas", &E::saveAs);
    soundsMenu->addSeparator();
    add("snd_add", &E::add);
    add("snd_delete", &E::del);
    add("snd_openwav", &E::openWav);
    add("snd_savewav", &E::saveWav);
    add("snd_duplicate", &E::duplicate);
    add("snd_delete_grp", &E::delGroup);
    add("snd_rename_grp", &E::renameGroup);
    soundsMenu->addSeparator();
    QAction* play = addCheckable("snd_play", &E::play);
    QAction* loop = addCheckable("snd_play_loop", &E::playLoop);
    QAction* stop = addCheckable("snd_stop", &E::stop);
    // The editor sets the checked states itself (a sound that ended, one that couldn't start); its own
    // block keeps those from coming back as commands.
    connect(m_sounds, &QSoundsEditor::setPlaying, play, &QAction::setChecked);
    connect(m_sounds, &QSoundsEditor::setLooping, loop, &QAction::setChecked);
    connect(m_sounds, &QSoundsEditor::setStopped, stop, &QAction::setChecked);
    soundsMenu->addSeparator();
    add("snd_export", &E::fileExport);
    add("snd_import", &E::fileImport);
    add("snd_import_proj", &E::projImport);
    soundsMenu->addSeparator();
    QSoundsPanel* panel = m_sounds->controls();
    panel->addCommand(add("snd_prev", &E::prevSnd));
    panel->addCommand(add("snd_next", &E::nextSnd));
    panel->addCommand(add("snd_prev_grp", &E::prevGrp));
    panel->addCommand(add("snd_next_grp", &E::nextGrp));
    panel->addCommand(play);
    panel->addCommand(loop);
    panel->addCommand(stop);
}

void QSoundEditors::setProject(QProject* current)
{
    project = current;
    static_cast<QProjectSoundsEditor*>(m_sounds)->project = current;
    m_sounds->bind(current ? current->sounds() : nullptr, current ? &current->variables : nullptr);
    // Sounds may be imported from any other open project; the list is read when projects switch,
    // which every open and close does.
    QList<QPair<QString, QSounds*>> sources;
    for (int i = 0; i < iface->projectCount(); ++i)
        if (QProject* other = iface->project(i); other && other->sounds())
            sources << qMakePair(other->displayName(), other->sounds());
    m_sounds->setImportSources(sources);
}

void QSoundEditors::retranslate()
{
    if (soundsMenu) soundsMenu->setTitle(tr("Sounds"));
}
