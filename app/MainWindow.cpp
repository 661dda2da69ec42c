#include "MainWindow.h"

#include "QAnimationEditors.h"
#include "QConfigLocation.h"
#include "QFileWatcherManager.h"
#include "QIconsetManager.h"
#include "QInterface.h"
#include "QLanguageManager.h"
#include "QMediaSoundPlayer.h"
#include "QModelTables.h"
#include "QMugenModel.h"
#include "QMugenSyntaxHierarchy.h"
#include "QProjectTextTools.h"
#include "QSoundEditors.h"
#include "QSpriteEditors.h"
#include "QTextEditors.h"
#include "QUserDialogs.h"
#include "QWindowState.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QDockWidget>
#include <QListView>
#include <QMenuBar>
#include <QToolBar>

MainWindow::MainWindow(QWidget* parent) : QMainWindow(parent)
{
    buildForm();
    tables = std::make_unique<QModelTables>();
    QModelTables::checkers();
    QMugenSyntaxHierarchy::setIconLookup(
        [](const QString& name) { return iconsetManager ? iconsetManager->icon(name) : QIcon(); });
    QMediaSoundPlayer::install();
    if (languageManager)
        connect(languageManager, &QLanguageManager::langChanged, this, &MainWindow::retranslate);
    fileWatcherManager = new QFileWatcherManager;
    iface = new QInterface(this, actionsDock, actList);
    textEditors = new QTextEditors(iface, this);
    textEditors->retranslate();
    spriteEditors = new QSpriteEditors(iface, this);
    animationEditors = new QAnimationEditors(iface, this, spriteEditors->workspace());
    new QSoundEditors(iface, this);
    new QProjectTextTools(iface, this, textEditors);
    iface->setup();
}

MainWindow::~MainWindow()
{
    // The animations editor borrows the sprite workspace, which goes with the interface's first parts.
    delete animationEditors;
    animationEditors = nullptr;
    delete iface;
    iface = nullptr;
    textEditors = nullptr;
    spriteEditors = nullptr;
    if (mugenModel) mugenModel->save(QConfigLocation::standard().writePath(QStringLiteral("config.xml")));
    delete fileWatcherManager;
    fileWatcherManager = nullptr;
    tables.reset();
}

void MainWindow::buildForm()
{
    setObjectName(QStringLiteral("MainWindow"));
    centralArea = new QWidget(this);
    centralArea->setObjectName(QStringLiteral("centralWidget"));
    setCentralWidget(centralArea);

    QMenuBar* bar = new QMenuBar(this);
    bar->setObjectName(QStringLiteral("menuBar"));
    setMenuBar(bar);
    auto addMenu = [bar](const char* name) {
        QMenu* menu = bar->addMenu(QString());
        menu->setObjectName(QLatin1String(name));
        return menu;
    };
    menuFile = addMenu("menuFile");
    menuEdit = addMenu("menuEdit");
    menuView = addMenu("menuView");
    menuTools = addMenu("menuTools");
    menuHelp = addMenu("menuHelp");

    mainBar = addToolBar(QString());
    mainBar->setObjectName(QStringLiteral("mainToolbar"));
    extraBar = addToolBar(QString());
    extraBar->setObjectName(QStringLiteral("extraToolbar"));

    actionsDock = new QDockWidget(this);
    actionsDock->setObjectName(QStringLiteral("actions"));
    actList = new QListView(actionsDock);
    actList->setObjectName(QStringLiteral("actList"));
    actionsDock->setWidget(actList);
    addDockWidget(Qt::LeftDockWidgetArea, actionsDock);
    retranslate();
}

void MainWindow::retranslate()
{
    setWindowTitle(tr("Orlenmark Tavrel"));
    menuFile->setTitle(tr("Project"));
    menuEdit->setTitle(tr("Edit"));
    menuView->setTitle(tr("View"));
    menuTools->setTitle(tr("Tools"));
    menuHelp->setTitle(tr("Help"));
    actionsDock->setWindowTitle(tr("Action list"));
    mainBar->setWindowTitle(tr("Main tool bar"));
    extraBar->setWindowTitle(tr("Editors tool bar"));
    if (iface) iface->retranslate();
    if (textEditors) textEditors->retranslate();
    if (spriteEditors) spriteEditors->retranslate();
    if (animationEditors) animationEditors->retranslate();
}

void MainWindow::restoreToolbars(const QWindowState& state)
{
    removeToolBar(mainBar);
    removeToolBar(extraBar);
    QToolBar* first = state.toolbarFirst ? mainBar : extraBar;
    QToolBar* second = state.toolbarFirst ? extraBar : mainBar;
    addToolBar(Qt::TopToolBarArea, first);
    if (state.toolbarBreak) addToolBarBreak(Qt::TopToolBarArea);
    addToolBar(Qt::TopToolBarArea, second);
    // removeToolBar hides them; their own keys say whether they come back.
    mainBar->setVisible(state.mainToolbar);
    extraBar->setVisible(state.extraToolbar);
}

void MainWindow::storeToolbars(QWindowState* state) const
{
    state->mainToolbar = !mainBar->isHidden();
    state->extraToolbar = !extraBar->isHidden();
    state->toolbarBreak = toolBarBreak(mainBar) || toolBarBreak(extraBar);
    // A hidden bar has no place to compare; the order it was restored with stands.
    if (mainBar->isHidden() || extraBar->isHidden()) return;
    // Laid out in one row, the first one stands further left; in two rows, further up.
    const QPoint main = mainBar->pos(), extra = extraBar->pos();
    state->toolbarFirst = main.y() != extra.y() ? main.y() < extra.y() : main.x() <= extra.x();
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    if (mugenModel && (*mugenModel)[QStringLiteral("confirm_close")].toBool()) {
        const auto answer = QUserDialogs::question(tr("Close"), tr("Do you really want to close Tavrel?"),
                                                   QUserDialogs::Yes | QUserDialogs::No, QUserDialogs::No);
        if (answer != QUserDialogs::Yes) {
            event->ignore();
            return;
        }
    }
    iface->fileCloseAll();
    if (iface->onlyEmptyProjectLeft())
        event->accept();
    else
        event->ignore();
}
