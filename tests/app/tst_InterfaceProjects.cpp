// The projects of the main window: the empty start project giving way, failed opens, closing the
// last project, and the questions a project asks through the window.

#include "MainWindow.h"
#include "ProjectFixture.h"
#include "QDialogRecorder.h"
#include "QInterface.h"
#include "QMugenModel.h"
#include "QProject.h"
#include "QRGBPalette.h"
#include "QSingleInstance.h"
#include "QSprites.h"

#include <QTabBar>
#include <QTest>

class tst_InterfaceProjects : public QObject
{
    Q_OBJECT

    QTemporaryDir configDir;

    static QStringList tabs(const MainWindow& window)
    {
        QStringList names;
        auto* bar = window.findChild<QTabBar*>(QStringLiteral("projectTabs"));
        for (int i = 0; bar && i < bar->count(); ++i)
            names << bar->tabText(i);
        return names;
    }

private Q_SLOTS:
    void initTestCase()
    {
        qputenv("TAVREL_CONFIG_DIR", configDir.path().toLocal8Bit());
        isFirstInstance = false;
    }

    void init() { mugenModel = new QMugenModel; }

    void cleanup()
    {
        delete mugenModel;
        mugenModel = nullptr;
    }

    void openingAndClosing()
    {
        ProjectFixture fixture;
        QVERIFY(fixture.make());
        QDialogRecorder dialogs;
        MainWindow window;
        QInterface* iface = window.interface();
        QCOMPARE(tabs(window), QStringList{"Project 1"});

        // A definitions file that can't be read adds nothing and says nothing beyond the definitions.
        iface->openProject(fixture.file(QStringLiteral("nothing.def")));
        QCOMPARE(tabs(window), QStringList{"Project 1"});

        // The first real project replaces the empty one; a second one closes nothing.
        iface->openProject(fixture.def());
        QCOMPARE(tabs(window), QStringList{"Test"});
        QCOMPARE(iface->currentProject()->variables.value(QStringLiteral("proj_path")), fixture.character());
        iface->openProject(fixture.def());
        QCOMPARE(tabs(window), (QStringList{"Test", "Test"}));
        QCOMPARE(iface->currentProject(), iface->project(1));

        QVERIFY(iface->closeProject(1));
        QVERIFY(iface->closeProject(0));
        // Closing the last project leaves a new empty one, named by the next number.
        QCOMPARE(tabs(window), QStringList{"Project 2"});
        QVERIFY(iface->onlyEmptyProjectLeft());
        QVERIFY(dialogs.calls.isEmpty());
    }

    void answersTheProjectsQuestions()
    {
        QDialogRecorder dialogs;
        MainWindow window;
        QInterface* iface = window.interface();

        dialogs.fileAnswers << QStringList{"1.01"} << QStringList();
        QCOMPARE(iface->spritesVersionToSave(QSprites::Version_200), quint32(QSprites::Version_101));
        QCOMPARE(iface->spritesVersionToSave(QSprites::Version_200), 0u);
        QCOMPARE(dialogs.calls.first().kind, QStringLiteral("item"));

        dialogs.calls.clear();
        dialogs.fileAnswers << QStringList{"/x/y.cns"};
        QCOMPARE(iface->saveFileName(pftStates, QStringLiteral("/x")), QStringLiteral("/x/y.cns"));
        QCOMPARE(dialogs.calls.first().text,
                 QStringLiteral("Constants (*.cns);;States (*.st);;Text (*.txt);;Lua script (*.lua)"));
        QCOMPARE(dialogs.calls.first().dir, QStringLiteral("/x"));
    }

    void asksForTheCharacterPalette()
    {
        ProjectFixture fixture;
        QVERIFY(fixture.make());
        QDialogRecorder dialogs;
        MainWindow window;
        dialogs.fileAnswers << QStringList{fixture.file(QStringLiteral("pal/P1.act"))};
        QRGBPal table[QRGBPal::TableSize];
        window.interface()->charPalette(table);
        QCOMPARE(dialogs.calls.size(), 2);
        QCOMPARE(dialogs.calls.at(0).title, QStringLiteral("Palette warning!"));
        QCOMPARE(
            dialogs.calls.at(0).text,
            QStringLiteral("Tavrel not found the character palette. To view all sprites properly you must "
                           "select an external palette file."));
        QCOMPARE(dialogs.calls.at(1).kind, QStringLiteral("open"));
        QCOMPARE(QRGBPalette(table).color(3).g, uchar(20));
    }
};

QTEST_MAIN(tst_InterfaceProjects)
#include "tst_InterfaceProjects.moc"
