#include "MainWindow.h"

#include "QConfigLocation.h"
#include "QFileWatcherManager.h"
#include "QIconsetManager.h"
#include "QInterface.h"
#include "QLanguageManager.h"
#include "QMediaSoundPlayer.h"
#include "QModelTables.h"
#include "QMugenModel.h"
#include "QMugenSyntaxHierarchy.h"
#include "QTextEditors.h"
#include "QUserDialogs.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QDockWidget>
#include <QListView>
#include <QMenuBar>

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
    iface->setup();
}

MainWindow::~MainWindow()
{
    delete iface;
    iface = nullptr;
    textEditors = nullptr;
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
    if (iface) iface->retranslate();
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
