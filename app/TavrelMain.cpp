#include "TavrelMain.h"

#include "MainWindow.h"
#include "QCodecList.h"
#include "QColorsetManager.h"
#include "QConfigLocation.h"
#include "QHandOff.h"
#include "QIconsetManager.h"
#include "QLanguageManager.h"
#include "QMugenModel.h"
#include "QPresetManager.h"
#include "QQuitSignals.h"
#include "QSingleInstance.h"
#include "QStylesheetManager.h"
#include "QSyntaxFormats.h"
#include "QTrace.h"
#include "QWidgetDialogs.h"

#include <QApplication>
#include <QFileInfo>
#include <QPixmap>
#include <QSplashScreen>
#include <QThread>

namespace {

enum class RunKind
{
    Editor,
    HandOff
};

void createProcessObjects(QApplication& app)
{
    const QString appDir = QCoreApplication::applicationDirPath();
    presetManager = new QPresetManager(appDir);
    iconsetManager = new QIconsetManager(appDir + QStringLiteral("/iconsets"));
    stylesheetManager = new QStylesheetManager(appDir + QStringLiteral("/styles"));
    languageManager = new QLanguageManager(&app, appDir + QStringLiteral("/languages"));
    colorsetManager = new QColorsetManager(appDir + QStringLiteral("/colorsets"));
    syntaxFormats = new QSyntaxFormats;
    mugenModel = new QMugenModel;
    mugenModel->load(QConfigLocation::standard().readPath(QStringLiteral("config.xml")));
    buildCodecList();
}

void deleteProcessObjects()
{
    delete presetManager;
    presetManager = nullptr;
    delete mugenModel;
    mugenModel = nullptr;
    delete syntaxFormats;
    syntaxFormats = nullptr;
    delete colorsetManager;
    colorsetManager = nullptr;
    delete stylesheetManager;
    stylesheetManager = nullptr;
    delete iconsetManager;
    iconsetManager = nullptr;
    delete languageManager;
    languageManager = nullptr;
}

// Only a lone argument naming an existing file is looked at; any other command line starts a plain
// editor. The stand-alone palette editor ("-ape") arrives with the palette editor and until then is
// such an unknown argument.
RunKind dispatch(const QStringList& arguments, QHandOff& handOff)
{
    if (arguments.size() != 2) return RunKind::Editor;
    const QString argument = arguments.at(1);
    if (!QFileInfo(argument).isFile()) return RunKind::Editor;
    handOff.append(argument);
    QTrace::write(QStringLiteral("handoff"), QFileInfo(argument).absoluteFilePath());
    return isFirstInstance ? RunKind::Editor : RunKind::HandOff;
}

int runEditor(QApplication& app)
{
    QSplashScreen* splash = new QSplashScreen(QPixmap(QStringLiteral(":/imgs/Imgs/Splash.png")));
    splash->show();
    QCoreApplication::processEvents();
    // The splash stays for a fixed second on purpose, so that it can be seen at all.
    QThread::msleep(1000);
    MainWindow window;
    QQuitSignals quitSignals([&window]() { window.close(); });
    window.show();
    // Without a window manager (a bare X server) nobody else gives the new window the keyboard.
    window.raise();
    window.activateWindow();
    delete splash;
    QTrace::write(QStringLiteral("window"), QStringLiteral("shown"));
    return app.exec();
}

} // namespace

int tavrelMain(int argc, char** argv)
{
    QApplication* app = new QApplication(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("Tavrel"));
    QCoreApplication::setApplicationVersion(QStringLiteral(TAVREL_VERSION));
    QCoreApplication::addLibraryPath(QCoreApplication::applicationDirPath());
    createProcessObjects(*app);
    // A person answers the boxes of this program; until now the silent seam would have answered.
    QWidgetDialogs dialogs;
    QUserDialogs::install(&dialogs);

    int status = 0;
    {
        QSingleInstance instance;
        isFirstInstance = instance.tryBecomeFirst();
        QTrace::write(QStringLiteral("instance"),
                      isFirstInstance ? QStringLiteral("first") : QStringLiteral("second"));
        QHandOff handOff;
        if (isFirstInstance) handOff.claim();

        if (dispatch(QCoreApplication::arguments(), handOff) == RunKind::Editor) status = runEditor(*app);
    }

    QUserDialogs::install(nullptr);
    deleteProcessObjects();
    delete app;
    return status;
}
