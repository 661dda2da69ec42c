#include "ErrorDlg.h"
#include "QMessageList.h"
#include "QMessages.h"

#include <QAbstractItemModelTester>
#include <QDialogButtonBox>
#include <QListView>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include <memory>

class tst_QMessageList : public QObject
{
    Q_OBJECT

private slots:
    void oneRefreshPerCheck_data()
    {
        QTest::addColumn<bool>("batched");
        QTest::addColumn<int>("adds");
        QTest::addColumn<int>("refreshes");

        QTest::newRow("check of 50 issues") << true << 50 << 1;
        QTest::newRow("check without issues") << true << 0 << 1;
        QTest::newRow("5 lone adds") << false << 5 << 5;
        QTest::newRow("1 lone add") << false << 1 << 1;
    }

    void oneRefreshPerCheck()
    {
        QFETCH(bool, batched);
        QFETCH(int, adds);
        QFETCH(int, refreshes);

        QMessageList list;
        QAbstractItemModelTester tester(&list, QAbstractItemModelTester::FailureReportingMode::QtTest);
        QMessages messages(pftAnimations, &list);
        QSignalSpy updated(&list, &QMessageList::updated);
        QSignalSpy resets(&list, &QAbstractItemModel::modelReset);
        QSignalSpy inserted(&messages, &QAbstractItemModel::rowsInserted);

        if (batched) messages.begin();
        for (int i = 0; i < adds; ++i) {
            messages.add(i % 3, QStringLiteral("issue %1").arg(i), i);
            // Views of the project's list see rows change only through a reset.
            if (batched) QCOMPARE(list.rowCount(), 0);
        }
        if (batched) messages.end();

        QCOMPARE(updated.count(), refreshes);
        QCOMPARE(resets.count(), refreshes);
        QCOMPARE(inserted.count(), adds);
        QCOMPARE(list.rowCount(), adds);
        QCOMPARE(messages.rowCount(), adds);
    }

    void beginClearsEarlierCheck()
    {
        QMessageList list;
        QMessages messages(pftCommands, &list);
        messages.begin();
        messages.add(0, QStringLiteral("old error"), 1);
        messages.add(1, QStringLiteral("old warning"), 2);
        messages.end();

        QSignalSpy updated(&list, &QMessageList::updated);
        messages.begin();
        QCOMPARE(messages.rowCount(), 0);
        QCOMPARE(messages.count(0), 0);
        QCOMPARE(messages.count(1), 0);
        messages.add(2, QStringLiteral("new"), 3);
        messages.end();

        QCOMPARE(updated.count(), 1);
        QCOMPARE(list.rowCount(), 1);
        QCOMPARE(list.count(0), 0);
        QCOMPARE(list.count(2), 1);
        QCOMPARE(list.rowText(0), QStringLiteral("CMD(3): new"));
        QCOMPARE(list.rowText(1), QString());
    }

    void listWithoutParentStillFills()
    {
        QMessages messages(pftSounds);
        messages.begin();
        messages.add(1, QStringLiteral("a"), 7);
        messages.add(1, QStringLiteral("b"), 8);
        messages.add(2, QStringLiteral("c"), 9, 1);
        messages.end();

        QCOMPARE(messages.count(0), 0);
        QCOMPARE(messages.count(1), 2);
        QCOMPARE(messages.count(2), 1);
        QCOMPARE(messages.count(3), 3);
        QCOMPARE(messages.data(messages.index(2), Qt::DisplayRole).toString(), QStringLiteral("c"));
        QCOMPARE(messages.at(2).file, int(pftSounds));
        QCOMPARE(messages.at(2).subIndex, 1);
    }

    void rowText_data()
    {
        QTest::addColumn<QProjectFileType>("file");
        QTest::addColumn<int>("index");
        QTest::addColumn<int>("subIndex");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected");

        QTest::newRow("definitions") << pftDefinitions << 12 << 0 << "Unknown key"
                                     << "DEF(12): Unknown key";
        QTest::newRow("sprite") << pftSprites << 5 << 0 << "Image missing"
                                << "SFF(5): Image missing";
        QTest::newRow("palette") << pftSprites << 3 << 1 << "Unused palette"
                                 << "SFF(palette 3): Unused palette";
        QTest::newRow("animations") << pftAnimations << 40 << 0 << "No frames"
                                    << "AIR(40): No frames";
        QTest::newRow("commands") << pftCommands << 7 << 0 << "Bad key"
                                  << "CMD(7): Bad key";
        QTest::newRow("first state file") << pftStates << 100 << 0 << "Bad trigger"
                                          << "ST 0(100): Bad trigger";
        QTest::newRow("third state file") << pftStates << 8 << 2 << "Bad value"
                                          << "ST 2(8): Bad value";
        QTest::newRow("sounds") << pftSounds << 9 << 0 << "Not a WAV"
                                << "SND(9): Not a WAV";
        QTest::newRow("text with a placeholder") << pftDefinitions << 4 << 0 << "Value %1 of %2"
                                                 << "DEF(4): Value %1 of %2";
    }

    void rowText()
    {
        QFETCH(QProjectFileType, file);
        QFETCH(int, index);
        QFETCH(int, subIndex);
        QFETCH(QString, text);
        QFETCH(QString, expected);

        QMessageList list;
        QMessages messages(file, &list);
        messages.add(1, text, index, subIndex);

        QCOMPARE(list.data(list.index(0), Qt::DisplayRole).toString(), expected);
        QCOMPARE(list.rowText(0), expected);
        QCOMPARE(messages.data(messages.index(0), Qt::DisplayRole).toString(), text);
    }

    void rowsFollowOrderOfLists()
    {
        QMessageList list;
        QMessages definitions(pftDefinitions, &list);
        QMessages sprites(pftSprites, &list);
        QMessages animations(pftAnimations, &list);

        animations.add(0, QStringLiteral("a1"), 1);
        definitions.add(1, QStringLiteral("d1"), 1);
        sprites.add(2, QStringLiteral("s1"), 1);
        definitions.add(0, QStringLiteral("d2"), 2);
        animations.add(1, QStringLiteral("a2"), 2);

        const QStringList expected = {"DEF(1): d1", "DEF(2): d2", "SFF(1): s1", "AIR(1): a1", "AIR(2): a2"};
        QCOMPARE(list.rowCount(), expected.size());
        for (int row = 0; row < expected.size(); ++row)
            QCOMPARE(list.rowText(row), expected.at(row));
        QCOMPARE(list.at(3).file, int(pftAnimations));
        QCOMPARE(list.at(3).text, QStringLiteral("a1"));
        QCOMPARE(list.at(5).text, QString());
        QCOMPARE(list.at(-1).text, QString());
        QCOMPARE(list.count(0), 2);
        QCOMPARE(list.count(1), 2);
        QCOMPARE(list.count(2), 1);
        QCOMPARE(list.count(3), 5);
    }

    void destroyedListLeavesOthers()
    {
        QMessageList list;
        QAbstractItemModelTester tester(&list, QAbstractItemModelTester::FailureReportingMode::QtTest);
        QMessages definitions(pftDefinitions, &list);
        auto sprites = std::make_unique<QMessages>(pftSprites, &list);
        QMessages commands(pftCommands, &list);
        definitions.add(0, QStringLiteral("d"), 1);
        sprites->add(0, QStringLiteral("s"), 2);
        commands.add(1, QStringLiteral("c"), 3);

        QSignalSpy updated(&list, &QMessageList::updated);
        sprites.reset();

        QCOMPARE(updated.count(), 1);
        QCOMPARE(list.rowCount(), 2);
        QCOMPARE(list.rowText(0), QStringLiteral("DEF(1): d"));
        QCOMPARE(list.rowText(1), QStringLiteral("CMD(3): c"));
        QCOMPARE(list.count(0), 1);

        // An empty list leaving changes nothing that a view shows.
        auto empty = std::make_unique<QMessages>(pftSounds, &list);
        empty.reset();
        QCOMPARE(updated.count(), 1);
    }

    void movingBetweenLists()
    {
        QMessageList project;
        QMessages definitions(pftDefinitions, &project);
        definitions.add(0, QStringLiteral("d"), 1);

        QMessages lone(pftAnimations);
        lone.add(1, QStringLiteral("a"), 5);

        QSignalSpy updated(&project, &QMessageList::updated);
        lone.setParentList(&project);
        QCOMPARE(lone.messageList(), &project);
        QCOMPARE(updated.count(), 1);
        QCOMPARE(project.rowCount(), 2);
        QCOMPARE(project.rowText(1), QStringLiteral("AIR(5): a"));

        QMessageList other;
        QSignalSpy otherUpdated(&other, &QMessageList::updated);
        lone.setParentList(&other);
        QCOMPARE(updated.count(), 2);
        QCOMPARE(otherUpdated.count(), 1);
        QCOMPARE(project.rowCount(), 1);
        QCOMPARE(other.rowCount(), 1);

        lone.add(0, QStringLiteral("b"), 6);
        QCOMPARE(updated.count(), 2);
        QCOMPARE(other.rowCount(), 2);
    }

    void listDestroyedBeforeItsMessages()
    {
        auto list = std::make_unique<QMessageList>();
        QMessages messages(pftStates, list.get());
        messages.add(0, QStringLiteral("x"), 1);
        list.reset();

        QVERIFY(!messages.messageList());
        messages.begin();
        messages.add(0, QStringLiteral("y"), 2);
        messages.end();
        QCOMPARE(messages.count(3), 1);
    }

    void iconsBySeverity_data()
    {
        QTest::addColumn<int>("severity");
        QTest::addColumn<QString>("path");

        QTest::newRow("error") << 0 << ":/imgs/Imgs/error.png";
        QTest::newRow("warning") << 1 << ":/imgs/Imgs/warn.png";
        QTest::newRow("information") << 2 << ":/imgs/Imgs/info.png";
    }

    void iconsBySeverity()
    {
        QFETCH(int, severity);
        QFETCH(QString, path);

        QMessageList list;
        QMessages messages(pftCommands, &list);
        messages.add(severity, QStringLiteral("t"), 1);

        const QImage expected(path);
        QVERIFY2(!expected.isNull(), qPrintable(path));
        const QIcon fromList = list.data(list.index(0), Qt::DecorationRole).value<QIcon>();
        const QIcon fromMessages = messages.data(messages.index(0), Qt::DecorationRole).value<QIcon>();
        QVERIFY(!fromList.isNull());
        QVERIFY(!fromMessages.isNull());
        const QSize size = expected.size();
        QCOMPARE(fromList.pixmap(size).toImage().convertToFormat(QImage::Format_ARGB32_Premultiplied),
                 expected.convertToFormat(QImage::Format_ARGB32_Premultiplied));
        QCOMPARE(fromMessages.pixmap(size).toImage().convertToFormat(QImage::Format_ARGB32_Premultiplied),
                 expected.convertToFormat(QImage::Format_ARGB32_Premultiplied));
    }

    void dialogTitleAndClose()
    {
        QMessageList list;
        QMessages messages(pftDefinitions, &list);
        messages.add(0, QStringLiteral("e"), 1);

        ErrorDlg dialog;
        dialog.setList(&list);
        QCOMPARE(dialog.windowTitle(), QStringLiteral("Issues"));
        QCOMPARE(dialog.view()->model(), &list);
        QCOMPARE(dialog.view()->model()->rowCount(), 1);

        dialog.show();
        auto* box = dialog.findChild<QDialogButtonBox*>();
        QVERIFY(box);
        QPushButton* close = box->button(QDialogButtonBox::Close);
        QVERIFY(close);
        QTest::mouseClick(close, Qt::LeftButton);
        QVERIFY(!dialog.isVisible());
        QCOMPARE(dialog.result(), int(QDialog::Rejected));
    }

    void doubleClickNavigates_data()
    {
        QTest::addColumn<int>("row");
        QTest::addColumn<QProjectFileType>("file");
        QTest::addColumn<int>("fileIndex");
        QTest::addColumn<int>("index");
        QTest::addColumn<int>("subIndex");

        QTest::newRow("palette") << 0 << pftSprites << 0 << 3 << 1;
        QTest::newRow("second state file") << 1 << pftStates << 1 << 120 << 1;
        QTest::newRow("fourth state file") << 2 << pftStates << 3 << 7 << 3;
        QTest::newRow("sound") << 3 << pftSounds << 0 << 11 << 0;
    }

    void doubleClickNavigates()
    {
        QFETCH(int, row);
        QFETCH(QProjectFileType, file);
        QFETCH(int, fileIndex);
        QFETCH(int, index);
        QFETCH(int, subIndex);

        QMessageList list;
        QMessages sprites(pftSprites, &list);
        QMessages states1(pftStates, &list);
        QMessages states3(pftStates, &list);
        QMessages sounds(pftSounds, &list);
        sprites.add(0, QStringLiteral("unused palette"), 3, 1);
        states1.add(0, QStringLiteral("bad trigger"), 120, 1);
        states3.add(1, QStringLiteral("bad value"), 7, 3);
        sounds.add(2, QStringLiteral("long sound"), 11);

        ErrorDlg dialog(&list);
        dialog.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dialog));
        QSignalSpy navigate(&dialog, &ErrorDlg::navigate);

        QListView* view = dialog.view();
        const QRect rect = view->visualRect(list.index(row));
        QVERIFY(rect.isValid());
        // A double click arrives as a press and release followed by the double-click event.
        QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, rect.center());
        QTest::mouseDClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, rect.center());

        QCOMPARE(navigate.count(), 1);
        const QList<QVariant> arguments = navigate.takeFirst();
        QCOMPARE(arguments.at(0).value<QProjectFileType>(), file);
        QCOMPARE(arguments.at(1).toInt(), fileIndex);
        QCOMPARE(arguments.at(2).toInt(), index);
        QCOMPARE(arguments.at(3).toInt(), subIndex);
    }
};

QTEST_MAIN(tst_QMessageList)
#include "tst_QMessageList.moc"
