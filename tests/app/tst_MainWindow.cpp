// The frame of the main window as the entry routine builds it: its form, and the close question.

#include "MainWindow.h"
#include "QDialogRecorder.h"
#include "QInterface.h"
#include "QMugenModel.h"
#include "QSingleInstance.h"
#include "QTextElementReg.h"

#include <QDockWidget>
#include <QListView>
#include <QMenuBar>
#include <QTemporaryDir>
#include <QTest>

class tst_MainWindow : public QObject
{
    Q_OBJECT

    QTemporaryDir configDir;

private Q_SLOTS:
    void initTestCase()
    {
        // The window writes the configuration when it is destroyed; keep that out of the build tree.
        qputenv("TAVREL_CONFIG_DIR", configDir.path().toLocal8Bit());
        isFirstInstance = false;
    }

    void init() { mugenModel = new QMugenModel; }

    void cleanup()
    {
        delete mugenModel;
        mugenModel = nullptr;
    }

    void formHasTitleMenusAndActionDock()
    {
        MainWindow window;
        QCOMPARE(window.windowTitle(), QStringLiteral("Orlenmark Tavrel"));
        QStringList titles;
        for (QAction* action : window.menuBar()->actions())
            titles << action->text();
        QCOMPARE(titles.mid(0, 5),
                 (QStringList{QStringLiteral("Project"), QStringLiteral("Edit"), QStringLiteral("View"),
                              QStringLiteral("Tools"), QStringLiteral("Help")}));
        auto* dock = window.findChild<QDockWidget*>(QStringLiteral("actions"));
        QVERIFY(dock);
        QCOMPARE(dock->windowTitle(), QStringLiteral("Action list"));
        QVERIFY(dock->findChild<QListView*>(QStringLiteral("actList")));
        QVERIFY(window.findChild<QWidget*>(QStringLiteral("centralWidget")));
        // Final setup leaves exactly one empty project and no current editor.
        QCOMPARE(window.interface()->projectCount(), 1);
        QCOMPARE(window.interface()->currentEditor(), 9);
    }

    // The recognisers stand for the window's lifetime, once however often a window is made.
    void registersTextElementsForItsLifetime()
    {
        QVERIFY(QTextElementReg::registered().isEmpty());
        qsizetype count = 0;
        {
            MainWindow window;
            count = QTextElementReg::registered().size();
            QVERIFY(count > 0);
        }
        QVERIFY(QTextElementReg::registered().isEmpty());
        MainWindow again;
        QCOMPARE(QTextElementReg::registered().size(), count);
    }

    void closeAsksWhenConfigured_data()
    {
        QTest::addColumn<QString>("confirm");
        QTest::addColumn<int>("answer");
        QTest::addColumn<bool>("asked");
        QTest::addColumn<bool>("closed");
        QTest::newRow("yes closes") << QStringLiteral("true") << int(QMessageBox::Yes) << true << true;
        QTest::newRow("no keeps it open") << QStringLiteral("true") << int(QMessageBox::No) << true << false;
        QTest::newRow("escape keeps it open")
            << QStringLiteral("true") << int(QMessageBox::Cancel) << true << false;
        QTest::newRow("no question when off")
            << QStringLiteral("false") << int(QMessageBox::No) << false << true;
    }

    void closeAsksWhenConfigured()
    {
        QFETCH(QString, confirm);
        QFETCH(int, answer);
        QFETCH(bool, asked);
        QFETCH(bool, closed);
        (*mugenModel)[QStringLiteral("confirm_close")] = confirm;
        QDialogRecorder dialogs;
        dialogs.answers.enqueue(QMessageBox::StandardButton(answer));
        MainWindow window;
        window.show();
        QCOMPARE(window.close(), closed);
        QCOMPARE(dialogs.calls.size(), asked ? 1 : 0);
        if (asked) {
            const QDialogRecorder::Call& call = dialogs.calls.first();
            QCOMPARE(call.title, QStringLiteral("Close"));
            QCOMPARE(call.text, QStringLiteral("Do you really want to close Tavrel?"));
            QCOMPARE(call.buttons, QUserDialogs::Buttons(QMessageBox::Yes | QMessageBox::No));
            QCOMPARE(call.defaultButton, QMessageBox::No);
        }
    }

    void windowGeometryIsStoredInTheConfiguration()
    {
        {
            MainWindow window;
            window.resize(640, 480);
            window.show();
        }
        QCOMPARE((*mugenModel)[QStringLiteral("window_width")].toInt(), 640);
        QCOMPARE((*mugenModel)[QStringLiteral("window_height")].toInt(), 480);
        QVERIFY(QFile::exists(configDir.filePath(QStringLiteral("config.xml"))));
    }
};

QTEST_MAIN(tst_MainWindow)
#include "tst_MainWindow.moc"
