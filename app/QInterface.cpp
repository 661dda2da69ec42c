#include "QInterface.h"

#include "BakDlg.h"
#include "ErrorDlg.h"
#include "MainWindow.h"
#include "OptionsDlg.h"
#include "QActionInfo.h"
#include "QActionList.h"
#include "QActionManager.h"
#include "QAnimations.h"
#include "QBakManager.h"
#include "QColorsetManager.h"
#include "QCommands.h"
#include "QConfigLocation.h"
#include "QDefinitions.h"
#include "QFrameActions.h"
#include "QHandOff.h"
#include "QHistoryManager.h"
#include "QIconsetManager.h"
#include "QInterfaceEditor.h"
#include "QLanguageManager.h"
#include "QMugenModel.h"
#include "QMugenRunner.h"
#include "QPanelWidget.h"
#include "QPresetManager.h"
#include "QProgress.h"
#include "QProject.h"
#include "QProjectFiles.h"
#include "QProjectStatus.h"
#include "QRGBPalette.h"
#include "QSFFFormat.h"
#include "QSingleInstance.h"
#include "QSounds.h"
#include "QSpritePalette.h"
#include "QSprites.h"
#include "QStylesheetManager.h"
#include "QSyntaxFormats.h"
#include "QSyntaxTextEditor.h"
#include "QTrace.h"
#include "QUserDialogs.h"
#include "QWindowState.h"

#include <QActionGroup>
#include <QCoreApplication>
#include <QDir>
#include <QDockWidget>
#include <QFileInfo>
#include <QLabel>
#include <QListView>
#include <QMap>
#include <QMenu>
#include <QSplitter>
#include <QStackedLayout>
#include <QStatusBar>
#include <QTabBar>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>

#include <functional>
#include <tuple>

QInterface::QInterface(MainWindow* window, QDockWidget* actionsDock, QListView* actionList)
    : window(window), actionsDock(actionsDock), actionList(actionList), handOffPath(QHandOff::defaultPath())
{
    QWidget* central = window->centralWidget();
    auto* layout = new QVBoxLayout(central);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    projectTabs = new QTabBar(central);
    projectTabs->setObjectName(QStringLiteral("projectTabs"));
    projectTabs->setMovable(true);
    projectTabs->setTabsClosable(true);
    projectTabs->setExpanding(false);
    layout->addWidget(projectTabs);
    connect(projectTabs, &QTabBar::currentChanged, this, &QInterface::projTabsChanged);
    connect(projectTabs, &QTabBar::tabMoved, this, &QInterface::projTabsMoved);
    connect(projectTabs, &QTabBar::tabCloseRequested, this, &QInterface::projTabsClosed);
    files = new QProjectFiles(window, this);
    // The tab bar shows the list of projects; it never changes it by itself.
    connect(files, &QProjectFiles::projectAdded, this, [this](int index, const QString& name) {
        const QSignalBlocker blocker(projectTabs);
        projectTabs->insertTab(index, name);
    });
    connect(files, &QProjectFiles::projectRemoved, this, [this](int index) {
        const QSignalBlocker blocker(projectTabs);
        projectTabs->removeTab(index);
    });
    connect(files, &QProjectFiles::projectNameChanged, projectTabs, &QTabBar::setTabText);
    connect(files, &QProjectFiles::currentProjectChanged, this, [this](QProject* project) {
        {
            const QSignalBlocker blocker(projectTabs);
            projectTabs->setCurrentIndex(files->currentIndex());
        }
        updateProjectStatus();
        updateErrorStatus();
        if (issues) issues->setList(project ? project->messageList() : nullptr);
        emit currentProjectChanged(project);
    });
    connect(files, &QProjectFiles::currentStatusChanged, this, &QInterface::updateProjectStatus);
    connect(files, &QProjectFiles::currentIssuesChanged, this, &QInterface::updateErrorStatus);
    // Left the current editor's panel, in the middle the workspace, right the side editor.
    splitter = new QSplitter(Qt::Horizontal, central);
    splitter->setObjectName(QStringLiteral("panels"));
    splitter->setChildrenCollapsible(false);
    leftPanel = new QPanelWidget(splitter);
    leftPanel->setObjectName(QStringLiteral("leftPanel"));
    auto* middle = new QWidget(splitter);
    workspaces = new QStackedLayout(middle);
    workspaces->setContentsMargins(0, 0, 0, 0);
    rightPanel = new QPanelWidget(splitter);
    rightPanel->setObjectName(QStringLiteral("rightPanel"));
    rightPanel->hide();
    splitter->addWidget(leftPanel);
    splitter->addWidget(middle);
    splitter->addWidget(rightPanel);
    splitter->setStretchFactor(1, 1);
    splitter->setSizes({220, 800, 220});
    layout->addWidget(splitter, 1);

    QEditorSwitcher::Hooks hooks;
    hooks.showWorkspace = [this](int number) { workspaces->setCurrentIndex(number); };
    // Without an editor the frame's scope serves, in which the commands that work everywhere have keys.
    hooks.setScope = [this](int scope) {
        actions->setScope(scope >= QEditorSwitcher::NoEditor ? int(QActionInfo::FrameScope) : scope);
    };
    hooks.setPanelTitle = [this](const QString&) {
        updateEditorName();
        QInterfaceEditor* shown = switcher.editor(switcher.currentEditor());
        leftPanel->setContent(shown ? shown->panel() : nullptr);
    };
    hooks.clearPanels = [this]() {
        leftPanel->setTitle(QString());
        leftPanel->setContent(nullptr);
        switchExtraEditor(4);
    };
    hooks.checkEditorAction = [this](int number) {
        for (QAction* action : editorGroup->actions()) {
            // Checking would trigger another switch to the editor being switched to.
            const QSignalBlocker blocker(action);
            action->setChecked(action->objectName() == QString::number(number));
        }
    };
    editorGroup = new QActionGroup(this);
    editorGroup->setExclusive(true);
    switcher = QEditorSwitcher(hooks);
    actions = new QActionManager(window);
    actionList->setModel(actions->actionList());
    connect(actionList, &QListView::activated, this, &QInterface::actionChanged);
    projectLabel = new QLabel(window);
    projectLabel->setObjectName(QStringLiteral("projectStatus"));
    issueButton = new QToolButton(window);
    issueButton->setAutoRaise(true);
    issueButton->setObjectName(QStringLiteral("issueButton"));
    issueButton->setIcon(QIcon(QStringLiteral(":/imgs/Imgs/ok.png")));
    connect(issueButton, &QToolButton::clicked, this, &QInterface::fileCheck);
    window->statusBar()->addWidget(issueButton);
    window->statusBar()->addWidget(projectLabel, 1);
    // The zoom of whatever the window shows, at the right end where viewers keep it.
    for (const auto& [name, text, slot] : {std::tuple{"zoomOut", "-", &QInterface::zoomOut},
                                           {"zoomActual", "1:1", &QInterface::zoomActual},
                                           {"zoomIn", "+", &QInterface::zoomIn}}) {
        auto* button = new QToolButton(window);
        button->setObjectName(QLatin1String(name));
        button->setText(QLatin1String(text));
        button->setAutoRaise(true);
        connect(button, &QToolButton::clicked, this, slot);
        window->statusBar()->addPermanentWidget(button);
    }
    runner = new QMugenRunner(this, window);
    recent = new QHistoryManager(QConfigLocation::standard().writePath(QStringLiteral("history.xml")), this);
    connect(files, &QProjectFiles::projectFileUsed, recent, &QHistoryManager::add);
    connect(recent, &QHistoryManager::entryTriggered, files, &QProjectFiles::openProject);
}

QInterface::~QInterface()
{
    storeWindowState();
    projectTabs->blockSignals(true);
    // The editors let go of the documents before the projects that own them go.
    files->release();
    delete files;
}

void QInterface::setup()
{
    auto* frameActions = new QFrameActions(actions, this, window);
    restoreShortcuts();
    restoreWindowState();
    frameActions->showPanelStates();
    // The first registered editor becomes current; with none, the none state.
    switcher.switchTo(editorList.isEmpty() ? QEditorSwitcher::NoEditor : editorList.first()->number());
    files->newProject(false);
    buildAppearanceMenus();
    retranslate();

    if (isFirstInstance) {
        // Files of the command line open once the window is up, so that their questions and progress
        // stand over the window and not over the splash.
        QTimer::singleShot(0, this, &QInterface::readHandOff);
        handOffWatcher.addPath(handOffPath);
        connect(&handOffWatcher, &QFileSystemWatcher::fileChanged, this, &QInterface::fileChanged);
    }
}

void QInterface::projTabsChanged(int index)
{
    files->setCurrentIndex(index);
}

void QInterface::projTabsMoved(int from, int to)
{
    files->move(from, to);
}

void QInterface::updateProjectStatus()
{
    const QProject* current = files->currentProject();
    projectLabel->setText(current ? QProjectStatus::text(current->type(), current->mugenVersion())
                                  : QString());
}

void QInterface::updateErrorStatus()
{
    const QProject* current = files->currentProject();
    QMessageList* list = current ? current->messageList() : nullptr;
    const int errors = list ? list->count(0) : 0;
    const int warnings = list ? list->count(1) : 0;
    if (errors > 0) {
        issueButton->setIcon(QIcon(QStringLiteral(":/imgs/Imgs/error.png")));
        issueButton->setToolTip(tr("%n error(s) found!", nullptr, errors));
    } else if (warnings > 0) {
        issueButton->setIcon(QIcon(QStringLiteral(":/imgs/Imgs/warn.png")));
        issueButton->setToolTip(tr("%n warnings found!", nullptr, warnings));
    } else {
        issueButton->setIcon(QIcon(QStringLiteral(":/imgs/Imgs/ok.png")));
        issueButton->setToolTip(tr("No issues found!"));
    }
}

void QInterface::fileCheck()
{
    QProject* current = files->currentProject();
    if (!current) return;
    current->check();
    if (!issues) {
        issues = new ErrorDlg(window);
        issues->setObjectName(QStringLiteral("issues"));
        connect(issues, &ErrorDlg::navigate, this, &QInterface::navigateTo);
    }
    issues->setList(current->messageList());
    issues->show();
    issues->raise();
    issues->activateWindow();
}

void QInterface::projTabsClosed(int index)
{
    files->closeProject(index);
}

// Characters of version 1.01 sprite files keep their palettes in the files that the definitions name.
void QInterface::fileRunMugen()
{
    runner->run();
}

void QInterface::fileChanged(const QString& path)
{
    if (path == handOffPath) {
        readHandOff();
        // Truncating or replacing the file may drop the watch; keep watching while it exists.
        if (!handOffWatcher.files().contains(handOffPath) && QFileInfo::exists(handOffPath))
            handOffWatcher.addPath(handOffPath);
    }
}

void QInterface::readHandOff()
{
    QHandOff handOff(handOffPath);
    for (const QString& path : handOff.take())
        files->openHandedFile(path);
}

void QInterface::navigateTo(QProjectFileType file, int fileIndex, int index, int subIndex)
{
    // A place in a kind of file that no visible editor shows is dropped in silence.
    switcher.navigate(file, fileIndex, index, subIndex);
}

void QInterface::registerEditor(QInterfaceEditor* editor)
{
    editorList.append(editor);
    switcher.addEditor(editor);
}

void QInterface::registerWorkspace(int number, QInterfaceWorkspace* workspace, QWidget* page)
{
    switcher.addWorkspace(number, workspace);
    if (page) workspaces->insertWidget(number, page);
}

void QInterface::updateEditorName()
{
    leftPanel->setTitle(switcher.panelTitle([](const QString& title) {
        return QCoreApplication::translate("QInterfaceEditor", title.toUtf8().constData());
    }));
}

void QInterface::toolsOptions()
{
    auto* dialog = new OptionsDlg(actions, window);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &OptionsDlg::applied, this, &QInterface::applyConfig);
    dialog->open();
}

void QInterface::applyConfig()
{
    // Re-laying out large open texts in a new font takes a moment; the user sees why.
    QProgress progress(window, tr("Applying new options..."));
    progress.setRange(0, 0);
    emit configApplied();
}

void QInterface::retranslate()
{
    recent->retranslate();
    updateEditorName();
    updateProjectStatus();
    updateErrorStatus();
    if (appearanceMenu) appearanceMenu->setTitle(tr("Appearance"));
}

void QInterface::buildAppearanceMenus()
{
    QMugenModel& config = *mugenModel;
    if (languageManager) languageManager->apply(config[QStringLiteral("language")].toString());
    if (presetManager)
        presetManager->apply(
            config[QStringLiteral("preset")].toString(), config[QStringLiteral("iconset")].toString(),
            config[QStringLiteral("stylesheet")].toString(), config[QStringLiteral("colorset")].toString());
    if (colorsetManager && syntaxFormats) colorsetManager->applyTo(*syntaxFormats);

    appearanceMenu = window->viewMenu()->addMenu(QString());
    struct Kind
    {
        const char* title;
        const char* key;
        QStringList names;
        std::function<bool(const QString&)> apply;
    };
    const QList<Kind> kinds = {
        {QT_TR_NOOP("Language"), "language", languageManager ? languageManager->names() : QStringList(),
         [](const QString& name) { return languageManager->apply(name); }},
        {QT_TR_NOOP("Colour set"), "colorset", colorsetManager ? colorsetManager->names() : QStringList(),
         [](const QString& name) {
             const bool applied = colorsetManager->apply(name);
             if (applied && syntaxFormats) colorsetManager->applyTo(*syntaxFormats);
             return applied;
         }},
        {QT_TR_NOOP("Stylesheet"), "stylesheet",
         stylesheetManager ? stylesheetManager->names() : QStringList(),
         [](const QString& name) { return stylesheetManager->apply(name); }},
        {QT_TR_NOOP("Iconset"), "iconset", iconsetManager ? iconsetManager->names() : QStringList(),
         [](const QString& name) { return iconsetManager->apply(name); }},
        {QT_TR_NOOP("Preset"), "preset", presetManager ? presetManager->names() : QStringList(),
         [](const QString& name) { return presetManager->apply(name, QString(), QString(), QString()); }},
    };
    for (const Kind& kind : kinds) {
        QMenu* menu = appearanceMenu->addMenu(tr(kind.title));
        auto* group = new QActionGroup(menu);
        const QString key = QLatin1String(kind.key);
        const QString current = config[key].toString();
        for (const QString& name : kind.names) {
            QAction* action = menu->addAction(name);
            action->setCheckable(true);
            action->setChecked(name == current);
            group->addAction(action);
            const auto apply = kind.apply;
            connect(action, &QAction::triggered, this, [apply, key, name]() {
                if (apply(name)) (*mugenModel)[key] = name;
            });
        }
    }
}

void QInterface::restoreWindowState()
{
    QWindowState state;
    state.read(*mugenModel);
    window->resize(state.geometry.size());
    window->move(state.geometry.topLeft());
    if (state.state & Qt::WindowMaximized)
        window->setWindowState(window->windowState() | Qt::WindowMaximized);
    actionsDock->setVisible(state.showActionList);
    const auto area = Qt::DockWidgetArea(state.actionListArea);
    if (area == Qt::LeftDockWidgetArea || area == Qt::RightDockWidgetArea || area == Qt::TopDockWidgetArea ||
        area == Qt::BottomDockWidgetArea)
        window->addDockWidget(area, actionsDock);
    if (state.actionListWidth > 0)
        window->resizeDocks({actionsDock}, {state.actionListWidth}, Qt::Horizontal);
    leftPanelWanted = state.showLeftPanel;
    rightPanelWanted = state.showRightPanel;
    leftPanel->setVisible(leftPanelWanted);
    if (quickSearch) quickSearch->setVisible(state.showQuickSearch);
    window->restoreToolbars(state);
    windowState = state;
}

void QInterface::restoreShortcuts()
{
    // The user's own keys, or else the ones shipped beside the program.
    const QConfigLocation location = QConfigLocation::standard();
    QString path = location.readPath(QStringLiteral("shortcuts.xml"));
    if (!QFileInfo::exists(path))
        path = QCoreApplication::applicationDirPath() + QStringLiteral("/shortcuts.xml");
    actions->load(path);
}

void QInterface::storeWindowState()
{
    actions->save(QConfigLocation::standard().writePath(QStringLiteral("shortcuts.xml")));
    if (!mugenModel) return;
    QWindowState state = windowState;
    state.geometry = window->normalGeometry();
    state.state = int(window->windowState());
    state.showActionList = !actionsDock->isHidden();
    state.actionListWidth = actionsDock->width();
    state.actionListArea = int(window->dockWidgetArea(actionsDock));
    state.showLeftPanel = leftPanelWanted;
    state.showRightPanel = rightPanelWanted;
    state.showQuickSearch = quickSearch && !quickSearch->isHidden();
    // The organizer keeps its own switch while the window runs.
    state.showOrganizer = flagSetting("show_organizer", state.showOrganizer);
    window->storeToolbars(&state);
    // Only tools that are made write their keys; the others keep what the configuration holds.
    state.floating.clear();
    for (auto it = floatingTools.cbegin(); it != floatingTools.cend(); ++it) {
        if (!it.value()) continue;
        QWindowState::Floating& tool = state.floating[it.key()];
        tool.shown = it.value()->isVisible();
        tool.position = it.value()->pos();
    }
    state.write(*mugenModel);
}

void QInterface::addFloatingTool(const QString& name, QWidget* tool)
{
    floatingTools.insert(name, tool);
    const QWindowState::Floating place = windowState.floating.value(name);
    if (!place.position.isNull()) tool->move(place.position);
    if (place.shown) tool->show();
}

void QInterface::viewLeftPanel(bool shown)
{
    leftPanelWanted = shown;
    leftPanel->setVisible(shown);
}

void QInterface::registerExtraEditor(QInterfaceExtraEditor* editor)
{
    extraEditors.insert(editor->number(), editor);
}

void QInterface::switchExtraEditor(int number)
{
    if (QInterfaceExtraEditor* old = extraEditors.value(extraEditorNumber)) old->deactivate();
    QInterfaceExtraEditor* next = extraEditors.value(number);
    extraEditorNumber = next ? number : 4;
    rightPanel->setContent(next ? next->panel() : nullptr);
    if (next) next->activate();
    updateExtraEditorName();
    viewRightPanel(rightPanelWanted);
}

void QInterface::updateExtraEditorName()
{
    const QInterfaceExtraEditor* shown = extraEditors.value(extraEditorNumber);
    if (!shown) {
        rightPanel->setTitle(QString());
        return;
    }
    QString title = QCoreApplication::translate("QInterfaceEditor", shown->title().toUtf8().constData());
    if (shown->isModified()) title += QLatin1Char('*');
    rightPanel->setTitle(title);
}

void QInterface::viewRightPanel(bool shown)
{
    rightPanelWanted = shown;
    // The right panel shows only while a side editor has something in it.
    rightPanel->setVisible(shown && rightPanel->content());
}

void QInterface::editUndo()
{
    if (QInterfaceEditor* shown = switcher.editor(switcher.currentEditor())) shown->undo();
}

void QInterface::editRedo()
{
    if (QInterfaceEditor* shown = switcher.editor(switcher.currentEditor())) shown->redo();
}

void QInterface::editCut()
{
    if (QInterfaceEditor* shown = switcher.editor(switcher.currentEditor())) shown->cut();
}

void QInterface::editCopy()
{
    if (QInterfaceEditor* shown = switcher.editor(switcher.currentEditor())) shown->copy();
}

void QInterface::editPaste()
{
    if (QInterfaceEditor* shown = switcher.editor(switcher.currentEditor())) shown->paste();
}

void QInterface::editorNew()
{
    if (QInterfaceEditor* shown = switcher.editor(switcher.currentEditor())) shown->newFile();
}

void QInterface::editorOpen()
{
    if (QInterfaceEditor* shown = switcher.editor(switcher.currentEditor())) shown->openFile();
}

void QInterface::editorSave()
{
    if (QInterfaceEditor* shown = switcher.editor(switcher.currentEditor())) shown->saveFile();
}

void QInterface::editorSaveAs()
{
    if (QInterfaceEditor* shown = switcher.editor(switcher.currentEditor())) shown->saveFileAs();
}

void QInterface::zoomIn()
{
    if (QInterfaceWorkspace* shown = switcher.workspace(switcher.currentWorkspace())) shown->zoomIn();
}

void QInterface::zoomOut()
{
    if (QInterfaceWorkspace* shown = switcher.workspace(switcher.currentWorkspace())) shown->zoomOut();
}

void QInterface::zoomActual()
{
    if (QInterfaceWorkspace* shown = switcher.workspace(switcher.currentWorkspace())) shown->zoomActual();
}

void QInterface::actionChanged(const QModelIndex& index)
{
    QAction* action = actions->actionList()->action(index.row());
    if (action && action->isEnabled()) action->trigger();
}

void QInterface::helpAbout()
{
    QUserDialogs::information(
        tr("About Tavrel"), tr("Orlenmark Tavrel %1\nAn editor of characters, stages, storyboards, fonts, "
                               "system screens and fight "
                               "effects for the M.U.G.E.N. engine.\n\nBuilt with Qt %2.")
                                .arg(QCoreApplication::applicationVersion(), QLatin1String(QT_VERSION_STR)));
}
