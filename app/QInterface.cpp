#include "QInterface.h"

#include "BakDlg.h"
#include "ErrorDlg.h"
#include "MainWindow.h"
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
#include "QIconsetManager.h"
#include "QInterfaceEditor.h"
#include "QLanguageManager.h"
#include "QMugenModel.h"
#include "QMugenRunner.h"
#include "QPanelWidget.h"
#include "QPresetManager.h"
#include "QProgress.h"
#include "QProject.h"
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
        rightPanel->setTitle(QString());
        rightPanel->setContent(nullptr);
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
    projectLabel = new QLabel(window);
    projectLabel->setObjectName(QStringLiteral("projectStatus"));
    issueButton = new QToolButton(window);
    issueButton->setAutoRaise(true);
    issueButton->setObjectName(QStringLiteral("issueButton"));
    issueButton->setIcon(QIcon(QStringLiteral(":/imgs/Imgs/ok.png")));
    connect(issueButton, &QToolButton::clicked, this, &QInterface::fileCheck);
    window->statusBar()->addWidget(issueButton);
    window->statusBar()->addWidget(projectLabel, 1);
    runner = new QMugenRunner(this, window);
}

QInterface::~QInterface()
{
    storeWindowState();
    projectTabs->blockSignals(true);
    // The editors let go of the documents before the projects that own them go.
    emit currentProjectChanged(nullptr);
    qDeleteAll(projects);
}

void QInterface::setup()
{
    auto* frameActions = new QFrameActions(actions, this, window);
    restoreShortcuts();
    restoreWindowState();
    frameActions->showPanelStates();
    // The first registered editor becomes current; with none, the none state.
    switcher.switchTo(editorList.isEmpty() ? QEditorSwitcher::NoEditor : editorList.first()->number());
    newProject(false);
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

int QInterface::projectCount() const
{
    return int(projects.size());
}

bool QInterface::onlyEmptyProjectLeft() const
{
    return projects.size() <= 1 && (projects.isEmpty() || projects.first()->isEmpty());
}

void QInterface::newProject(bool fromTemplate)
{
    // Templates come from the scripts, which this program does not run yet: every new project is empty.
    Q_UNUSED(fromTemplate);
    auto* project = new QProject;
    connectProject(project);
    project->setDisplayName(tr("Project %1").arg(++newProjects));
    addProject(project);
    QTrace::write(QStringLiteral("project"), QStringLiteral("new"));
}

void QInterface::connectProject(QProject* project)
{
    connect(project, &QProject::saveFileName, this, &QInterface::saveFileName);
    connect(project, &QProject::spritesVersionToSave, this, &QInterface::spritesVersionToSave);
    connect(project, &QProject::nameChanged, this, &QInterface::changeTabName);
    connect(project, &QProject::charPalette, this, &QInterface::charPalette);
    connect(project, &QProject::typeChanged, this, [this](QProject* changed) {
        if (changed == current) updateProjectStatus();
    });
    connect(project, &QProject::versionChanged, this, [this](QProject* changed) {
        if (changed == current) updateProjectStatus();
    });
    connect(project->messageList(), &QMessageList::updated, this, [this, project]() {
        if (project == current) updateErrorStatus();
    });
}

void QInterface::addProject(QProject* project)
{
    projects.append(project);
    const int tab = projectTabs->addTab(project->displayName());
    projectTabs->setCurrentIndex(tab);
    current = project;
    updateProjectStatus();
    updateErrorStatus();
    emit currentProjectChanged(current);
}

void QInterface::newProject()
{
    newProject(false);
}

void QInterface::openProject(const QString& fileName)
{
    QTrace::write(QStringLiteral("open"), QStringLiteral("def ") + fileName);
    auto* project = new QProject;
    connectProject(project);
    const QFileInfo info(fileName);
    project->variables[QStringLiteral("proj_path")] = info.absolutePath();
    bool opened = false;
    if (info.suffix().compare(QLatin1String("fnt"), Qt::CaseInsensitive) == 0) {
        opened = project->fromFontFile(fileName);
    } else {
        QProgress progress(window, tr("Loading project..."));
        connect(project, &QProject::progress, &progress, &QProgress::onProgress);
        QMugenModel& config = *mugenModel;
        opened = project->fromFile(fileName, config[QStringLiteral("default_codepage")].toUInt(),
                                   config[QStringLiteral("backup_onload")].toBool(), false);
    }
    if (!opened) {
        delete project;
        QTrace::write(QStringLiteral("project"), QStringLiteral("failed ") + fileName);
        return;
    }
    addProject(project);
    QTrace::write(QStringLiteral("project"), QStringLiteral("opened ") + project->displayName());
    // The empty project of a fresh window gives way to the first real one.
    if (projects.size() == 2 && projects.first()->isEmpty()) closeProject(0);
}

bool QInterface::closeProject(int index)
{
    QProject* project = projects.value(index);
    if (!project || !project->canClose()) return false;
    if (projects.size() == 1) newProject(false);
    projects.removeAt(index);
    projectTabs->removeTab(index);
    current = projects.value(projectTabs->currentIndex());
    emit currentProjectChanged(current);
    delete project;
    return true;
}

void QInterface::projTabsChanged(int index)
{
    current = projects.value(index);
    updateProjectStatus();
    updateErrorStatus();
    if (issues) issues->setList(current ? current->messageList() : nullptr);
    emit currentProjectChanged(current);
}

void QInterface::updateProjectStatus()
{
    projectLabel->setText(current ? QProjectStatus::text(current->type(), current->mugenVersion())
                                  : QString());
}

void QInterface::updateErrorStatus()
{
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

void QInterface::projTabsMoved(int from, int to)
{
    if (from >= 0 && from < projects.size() && to >= 0 && to < projects.size()) projects.move(from, to);
}

void QInterface::projTabsClosed(int index)
{
    closeProject(index);
}

void QInterface::changeTabName(QProject* project, const QString& name)
{
    const int index = int(projects.indexOf(project));
    if (index >= 0) projectTabs->setTabText(index, name);
}

QString QInterface::saveFileName(QProjectFileType file, const QString& path)
{
    static const char* const titles[] = {QT_TR_NOOP("Save project"),    QT_TR_NOOP("Save sprites"),
                                         QT_TR_NOOP("Save animations"), QT_TR_NOOP("Save commands"),
                                         QT_TR_NOOP("Save states"),     QT_TR_NOOP("Save sounds")};
    static const char* const filters[] = {
        "Definitions (*.def)",
        "Sprites (*.sff)",
        "Animations (*.air)",
        "Commands (*.cmd)",
        "Constants (*.cns);;States (*.st);;Text (*.txt);;Lua script (*.lua)",
        "Sounds (*.snd)"};
    const int kind = qBound(0, int(file), 5);
    return QUserDialogs::getSaveFileName(tr(titles[kind]), path, QLatin1String(filters[kind]));
}

quint32 QInterface::spritesVersionToSave(quint32 currentVersion)
{
    QStringList names;
    for (quint32 version : {QSprites::Version_101, QSprites::Version_200, QSprites::Version_201})
        names << QSFF::versionText(version);
    const int currentIndex = qMax(0, int(names.indexOf(QSFF::versionText(currentVersion))));
    return QSFF::parseVersion(QUserDialogs::getItem(
        tr("Sprite file version"), tr("Save the sprites in the version:"), names, currentIndex));
}

void QInterface::charPalette(QRGBPal* palette)
{
    QUserDialogs::warning(tr("Palette warning!"),
                          tr("Tavrel not found the character palette. To view all sprites properly you must "
                             "select an external palette file."));
    // The project asking may still be loading, before it is the current one.
    const auto* asking = qobject_cast<const QProject*>(sender());
    const QString start = asking ? asking->variables.value(QStringLiteral("proj_path")) : QString();
    const QString path =
        QUserDialogs::getOpenFileName(tr("Character palette"), start, QRGBPalette::openFilter());
    if (path.isEmpty()) return;
    QRGBPalette reader(palette);
    reader.fromFile(path);
}

void QInterface::fileSave()
{
    if (!current) return;
    QProgress progress(window, tr("Loading project..."));
    connect(current, &QProject::progress, &progress, &QProgress::onProgress);
    current->save();
    askToSavePalettes();
}

void QInterface::fileSaveAs()
{
    if (!current) return;
    const QString path = saveFileName(pftDefinitions, current->variables.value(QStringLiteral("proj_path")));
    if (path.isEmpty()) return;
    current->variables[QStringLiteral("proj_path")] = QFileInfo(path).absolutePath();
    QProgress progress(window, tr("Loading project..."));
    connect(current, &QProject::progress, &progress, &QProgress::onProgress);
    current->toFile(path, false);
    askToSavePalettes();
}

// Characters of version 1.01 sprite files keep their palettes in the files that the definitions name.
void QInterface::askToSavePalettes()
{
    if (current->type() != Character || current->sprites()->version() != QSprites::Version_101 ||
        !mugenModel || !(*mugenModel)[QStringLiteral("ask_save_palettes")].toBool())
        return;
    if (QUserDialogs::question(tr("Save palettes"),
                               tr("Do you want to save the palettes of the group 1 based on the definitions "
                                  "(palette 1,x = palx in DEF)?\nChoose No to ignore palettes."),
                               QUserDialogs::Yes | QUserDialogs::No, QUserDialogs::No) != QUserDialogs::Yes)
        return;
    const QDefinitionFiles files = current->definitions()->files();
    for (int i = 0; i < 12; ++i) {
        if (files.palettes.at(i).isEmpty()) continue;
        const QString path = QDir(files.baseDirectory).filePath(files.palettes.at(i));
        QDir().mkpath(QFileInfo(path).absolutePath());
        const int palette = current->sprites()->findPalette(0, 1, i + 1);
        if (palette >= 0) current->sprites()->paletteAt(uint(palette))->toFile(path);
    }
}

void QInterface::fileBackup()
{
    if (!current) return;
    QProgress progress(window, tr("Loading project..."));
    connect(current, &QProject::progress, &progress, &QProgress::onProgress);
    current->backup();
}

void QInterface::fileRunMugen()
{
    runner->run();
}

void QInterface::fileLoadBackup()
{
    if (!current) return;
    const QBakManager backups(current->definitions()->filePath());
    if (backups.entries().isEmpty()) {
        QUserDialogs::information(tr("Load backup"), tr("This project has no backups yet."));
        return;
    }
    BakDlg chooser(backups.titles(), window);
    if (chooser.exec() != QDialog::Accepted || chooser.chosen() < 0) return;
    const QString path = backups.entries().at(chooser.chosen()).definitions;
    QTrace::write(QStringLiteral("backup"), QStringLiteral("load ") + path);
    bool loaded = false;
    {
        QProgress progress(window, tr("Loading backup..."));
        connect(current, &QProject::progress, &progress, &QProgress::onProgress);
        loaded = current->fromFile(path, numberSetting("default_codepage", 0), false, true);
    }
    if (!loaded)
        QUserDialogs::warning(tr("Load backup"),
                              tr("The backup %1 can't be loaded.").arg(QDir::toNativeSeparators(path)));
    // The editors show the models again, which the load has filled anew.
    emit currentProjectChanged(current);
    updateProjectStatus();
    updateErrorStatus();
}

void QInterface::fileClose()
{
    closeProject(projectTabs->currentIndex());
}

void QInterface::openLooseFile(QProjectFileType kind, const QString& path)
{
    static const char* const names[] = {"def", "sff", "air", "cmd", "cns", "snd"};
    QTrace::write(QStringLiteral("open"), QLatin1String(names[kind]) + QLatin1Char(' ') + path);
    const uint codepage = (*mugenModel)[QStringLiteral("default_codepage")].toUInt();
    // For each kind: whether a project already holds such a file, and how it reads one.
    struct Kind
    {
        std::function<bool(QProject*)> occupied;
        std::function<bool(QProject*)> load;
    };
    const QMap<QProjectFileType, Kind> kinds = {
        {pftSprites,
         {[](QProject* p) { return !p->sprites()->isEmpty() || p->sprites()->isModified(); },
          // Read as a copy: the sprite file's own path is not kept, so a save asks where to write.
          [&](QProject* p) { return p->sprites()->fromFile(path, true); }}},
        {pftAnimations,
         {[](QProject* p) { return !p->animations()->isEmpty(); },
          [&](QProject* p) { return p->animations()->fromFile(path, int(codepage)); }}},
        {pftCommands,
         {[](QProject* p) { return !p->commands()->isEmpty(); },
          [&](QProject* p) { return p->commands()->fromFile(path, codepage); }}},
        {pftStates,
         {[](QProject* p) { return p->statesCount() > 0; },
          [&](QProject* p) {
              QSyntaxTextEditor* states = p->addStatesFile(QString());
              states->setObjectName(path);
              if (states->fromFile(path, codepage)) return true;
              p->removeStatesFile(p->statesCount() - 1);
              return false;
          }}},
        {pftSounds,
         {[](QProject* p) { return !p->sounds()->isEmpty(); },
          [&](QProject* p) { return p->sounds()->fromFile(path); }}},
    };
    if (!kinds.contains(kind)) return;
    // A file goes into the current project when that project has no such file yet; else it gets a
    // project of its own, so that nothing the user has open is replaced.
    const bool fresh = kinds[kind].occupied(current);
    if (fresh) newProject(false);
    QProject* project = current;
    const bool loaded = kinds[kind].load(project);
    QTrace::write(QStringLiteral("loaded"),
                  QLatin1String(names[kind]) +
                      (loaded ? QStringLiteral(" ok ") : QStringLiteral(" failed ")) + path);
    if (loaded) return;
    QUserDialogs::warning(tr("Open"), tr("The file %1 can't be opened.").arg(QDir::toNativeSeparators(path)));
    if (fresh && project->isEmpty()) closeProject(projects.indexOf(project));
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
        openHandedFile(path);
}

void QInterface::openHandedFile(const QString& path)
{
    const QFileInfo info(path);
    const QString suffix = info.suffix().toLower();
    if (suffix == QLatin1String("def"))
        openProject(info.absoluteFilePath());
    else if (suffix == QLatin1String("sff"))
        openLooseFile(pftSprites, info.absoluteFilePath());
    else if (suffix == QLatin1String("air"))
        openLooseFile(pftAnimations, info.absoluteFilePath());
    else if (suffix == QLatin1String("cmd"))
        openLooseFile(pftCommands, info.absoluteFilePath());
    else if (suffix == QLatin1String("cns"))
        openLooseFile(pftStates, info.absoluteFilePath());
    else if (suffix == QLatin1String("snd"))
        openLooseFile(pftSounds, info.absoluteFilePath());
}

void QInterface::fileNew()
{
    newProject(false);
}

void QInterface::fileOpen()
{
    const QString path = QUserDialogs::getOpenFileName(tr("Open project"),
                                                       (*mugenModel)[QStringLiteral("proj_path")].toString(),
                                                       tr("Definitions or Font (*.def *.fnt)"));
    if (path.isEmpty()) return;
    (*mugenModel)[QStringLiteral("proj_path")] = QFileInfo(path).absolutePath();
    openProject(path);
}

void QInterface::fileCloseAllCurr()
{
    QProject* keep = current;
    for (int index = int(projects.size()) - 1; index >= 0; --index)
        if (projects.at(index) != keep) closeProject(index);
    projectTabs->setCurrentIndex(int(projects.indexOf(keep)));
}

void QInterface::fileCloseAll()
{
    // From the last tab to the first; a project that may not close stops nothing else.
    for (int index = int(projects.size()) - 1; index >= 0; --index)
        if (projects.size() > 1 || !projects.first()->isEmpty()) closeProject(index);
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

void QInterface::retranslate()
{
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
    window->storeToolbars(&state);
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
