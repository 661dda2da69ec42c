#include "QInterface.h"

#include "MainWindow.h"
#include "QColorsetManager.h"
#include "QHandOff.h"
#include "QIconsetManager.h"
#include "QLanguageManager.h"
#include "QMugenModel.h"
#include "QPresetManager.h"
#include "QSingleInstance.h"
#include "QStylesheetManager.h"
#include "QSyntaxFormats.h"
#include "QTrace.h"

#include <QActionGroup>
#include <QDockWidget>
#include <QFileInfo>
#include <QLabel>
#include <QListView>
#include <QMenu>
#include <QStackedLayout>
#include <QStatusBar>
#include <QTabBar>
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
    layout->addWidget(projectTabs);
    workspaces = new QStackedLayout;
    layout->addLayout(workspaces, 1);

    projectLabel = new QLabel(window);
    issueButton = new QToolButton(window);
    issueButton->setAutoRaise(true);
    issueButton->setIcon(QIcon(QStringLiteral(":/imgs/Imgs/ok.png")));
    window->statusBar()->addWidget(issueButton);
    window->statusBar()->addWidget(projectLabel, 1);
}

QInterface::~QInterface()
{
    storeWindowState();
}

void QInterface::setup()
{
    restoreWindowState();
    // No editor is registered yet: the none state.
    editorNumber = 9;
    workspaceNumber = 4;
    extraEditorNumber = 4;
    newProject(false);
    buildAppearanceMenus();
    retranslate();

    if (isFirstInstance) {
        readHandOff();
        handOffWatcher.addPath(handOffPath);
        connect(&handOffWatcher, &QFileSystemWatcher::fileChanged, this, &QInterface::fileChanged);
    }
}

int QInterface::projectCount() const
{
    return projectTabs->count();
}

bool QInterface::onlyEmptyProjectLeft() const
{
    return projectTabs->count() <= 1;
}

void QInterface::newProject(bool fromTemplate)
{
    Q_UNUSED(fromTemplate);
    const int tab = projectTabs->addTab(tr("New project"));
    projectTabs->setCurrentIndex(tab);
    QTrace::write(QStringLiteral("project"), QStringLiteral("new"));
}

void QInterface::newProject()
{
    newProject(false);
}

void QInterface::openProject(const QString& fileName)
{
    QTrace::write(QStringLiteral("open"), QStringLiteral("def ") + fileName);
}

void QInterface::openLooseFile(QProjectFileType kind, const QString& path)
{
    static const char* const names[] = {"def", "sff", "air", "cmd", "cns", "snd"};
    QTrace::write(QStringLiteral("open"), QLatin1String(names[kind]) + QLatin1Char(' ') + path);
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

void QInterface::fileCloseAll()
{
    // Every project but the last is closed; the last stays as the empty project of a fresh window.
    while (projectTabs->count() > 1)
        projectTabs->removeTab(projectTabs->count() - 1);
}

void QInterface::navigateTo(QProjectFileType file, int fileIndex, int index, int subIndex)
{
    // No editor is registered yet, so there is no visible editor of any file kind: the request is
    // dropped, as it is for any kind without a visible editor.
    Q_UNUSED(file);
    Q_UNUSED(fileIndex);
    Q_UNUSED(index);
    Q_UNUSED(subIndex);
}

void QInterface::retranslate()
{
    for (int tab = 0; tab < projectTabs->count(); ++tab)
        projectTabs->setTabText(tab, tr("New project"));
    issueButton->setToolTip(tr("No issues found!"));
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
    QMugenModel& config = *mugenModel;
    const int width = config[QStringLiteral("window_width")].toInt();
    const int height = config[QStringLiteral("window_height")].toInt();
    if (width > 0 && height > 0) window->resize(width, height);
    window->move(config[QStringLiteral("window_left")].toInt(), config[QStringLiteral("window_top")].toInt());
    if (config[QStringLiteral("window_state")].toInt() & Qt::WindowMaximized)
        window->setWindowState(window->windowState() | Qt::WindowMaximized);
    const QVariant showActions = config[QStringLiteral("show_action_list")];
    actionsDock->setVisible(!showActions.isValid() || showActions.toBool());
}

void QInterface::storeWindowState()
{
    if (!mugenModel) return;
    QMugenModel& config = *mugenModel;
    const QRect normal = window->normalGeometry();
    config[QStringLiteral("window_left")] = normal.x();
    config[QStringLiteral("window_top")] = normal.y();
    config[QStringLiteral("window_width")] = normal.width();
    config[QStringLiteral("window_height")] = normal.height();
    config[QStringLiteral("window_state")] = int(window->windowState());
    config[QStringLiteral("show_action_list")] = !actionsDock->isHidden();
}
