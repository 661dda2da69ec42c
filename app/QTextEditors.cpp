#include "QTextEditors.h"

#include "MainWindow.h"
#include "QActionInfo.h"
#include "QActionManager.h"
#include "QActionTexts.h"
#include "QCommandsEditor.h"
#include "QDefinitionsEditor.h"
#include "QInterface.h"
#include "QQuickFind.h"
#include "QStatesEditor.h"
#include "QStatesTools.h"
#include "QTextEditor.h"
#include "QTextToolActions.h"
#include "QTextWorkspace.h"

#include <QActionGroup>
#include <QMenu>
#include <QToolBar>

#include <functional>

QTextEditors::QTextEditors(QInterface* iface, MainWindow* window)
    : QObject(iface), iface(iface), manager(iface->actionManager())
{
    m_workspace = new QTextWorkspace(window->centralWidget());
    m_definitions = new QDefinitionsEditor(m_workspace, this);
    m_commands = new QCommandsEditor(m_workspace, this);
    m_states = new QStatesEditor(m_workspace, this);
    iface->registerWorkspace(0, m_workspace, m_workspace);
    iface->setQuickSearch(m_workspace->findBar());
    for (QTextDocumentEditor* editor :
         {static_cast<QTextDocumentEditor*>(m_definitions), static_cast<QTextDocumentEditor*>(m_commands),
          static_cast<QTextDocumentEditor*>(m_states)}) {
        iface->registerEditor(editor);
        connect(editor, &QTextDocumentEditor::titleChanged, iface, [iface, editor]() {
            if (iface->currentEditor() == editor->number()) iface->updateEditorName();
        });
    }
    connect(iface, &QInterface::currentProjectChanged, m_definitions, &QDefinitionsEditor::setProject);
    connect(iface, &QInterface::currentProjectChanged, m_commands, &QCommandsEditor::setProject);
    connect(iface, &QInterface::currentProjectChanged, m_states, &QStatesEditor::setProject);
    connect(m_workspace->findBar(), &QQuickFind::doFind, this,
            [this](const QString& text, const QQuickFindOptions& options) {
                if (QTextDocumentEditor* editor = current()) editor->find(text, options);
            });
    connect(m_workspace->findBar(), &QQuickFind::doReplace, this,
            [this](const QString& source, const QString& dest, const QQuickFindOptions& options, bool all) {
                if (QTextDocumentEditor* editor = current()) editor->replace(source, dest, options, all);
            });

    addEditorAction("editor_definitions", m_definitions);
    addEditorAction("editor_commands", m_commands);
    addEditorAction("editor_states", m_states);
    window->viewMenu()->addActions(iface->editorActions()->actions());
    window->extraToolBar()->addActions(iface->editorActions()->actions());
    m_definitions->outline()->setObjectName(QStringLiteral("def_tree"));
    m_commands->outline()->setObjectName(QStringLiteral("cmd_tree"));
    m_states->outline()->setObjectName(QStringLiteral("st_tree"));
    window->viewMenu()->addSeparator();
    addTextActions(window);
    addFileActions(window);
    m_states->tools()->addActions(manager, window->toolsMenu()->addMenu(tr("&States")));
}

void QTextEditors::addFileActions(MainWindow* window)
{
    // The frame puts it into the Project menu beside the commands of the current editor.
    auto* files = new QMenu(window->fileMenu());
    files->setObjectName(QStringLiteral("menuEditorFiles"));
    filesMenu = files;
    const auto add = [this, files](const char* prefix, QTextDocumentEditor* editor) {
        const QList<int> scope = {editor->scope()};
        // Lambdas, not member pointers: the commands are virtuals of the editors' interface.
        const auto one = [&](const char* suffix, std::function<void()> command) {
            const QString key = QLatin1String(prefix) + QLatin1String(suffix);
            files->addAction(
                manager->add(scope, key, QActionTexts::id(key), false, editor, std::move(command)));
        };
        QInterfaceEditor* target = editor;
        one("_new", [target]() { target->newFile(); });
        one("_open", [target]() { target->openFile(); });
        one("_save", [target]() { target->saveFile(); });
        one("_saveas", [target]() { target->saveFileAs(); });
        files->addSeparator();
    };
    add("def", m_definitions);
    add("cmd", m_commands);
    add("st", m_states);
}

void QTextEditors::retranslate()
{
    if (filesMenu) filesMenu->setTitle(tr("Files of the editors"));
}

QTextDocumentEditor* QTextEditors::current() const
{
    for (QTextDocumentEditor* editor :
         {static_cast<QTextDocumentEditor*>(m_definitions), static_cast<QTextDocumentEditor*>(m_commands),
          static_cast<QTextDocumentEditor*>(m_states)})
        if (editor->number() == iface->currentEditor()) return editor;
    return nullptr;
}

void QTextEditors::addEditorAction(const char* name, QTextDocumentEditor* editor)
{
    const QString key = QLatin1String(name);
    const int number = editor->number();
    QAction* action = manager->add({QActionInfo::Everywhere}, key, QActionTexts::id(key), true, iface,
                                   [this, number](bool on) {
                                       if (!on) return;
                                       iface->switchEditor(number);
                                       // Switching by a key means typing comes next.
                                       if (current()) m_workspace->editor()->setFocus();
                                   });
    action->setObjectName(QString::number(number));
    iface->editorActions()->addAction(action);
}

void QTextEditors::addTextActions(MainWindow* window)
{
    const QList<int> text = {QActionInfo::DefinitionsScope, QActionInfo::CommandsScope,
                             QActionInfo::StatesScope};
    QMenu* edit = window->editMenu();
    QTextWorkspace* workspace = m_workspace;
    const auto toWorkspace = [this, text, workspace](QMenu* menu, const char* name,
                                                     void (QTextWorkspace::*slot)()) {
        const QString key = QLatin1String(name);
        menu->addAction(manager->add(text, key, QActionTexts::id(key), false, workspace, slot));
    };
    toWorkspace(edit, "edit_find_replace", &QTextWorkspace::showFind);
    edit->addSeparator();
    toWorkspace(edit, "txt_goto", &QTextWorkspace::goToLine);
    toWorkspace(edit, "txt_prev_error", &QTextWorkspace::prevError);
    toWorkspace(edit, "txt_next_error", &QTextWorkspace::nextError);
    toWorkspace(edit, "txt_prev_deprecation", &QTextWorkspace::prevDepr);
    toWorkspace(edit, "txt_next_deprecation", &QTextWorkspace::nextDepr);
    toWorkspace(edit, "txt_comment", &QTextWorkspace::comment);
    QMenu* view = window->viewMenu();
    view->addSeparator();
    addTextToolActions(manager, text, workspace->tools(), view, edit);
}
