// The organizer on the bundled sample: every move of a block of sprites, of palettes and of actions,
// that the selection goes with the block and one undo puts the old order back, deleting with its
// question, and the switch between sprites and palettes.

#include "QAirDocument.h"
#include "QAnimation.h"
#include "QAnimationsOrg.h"
#include "QDialogRecorder.h"
#include "QOrganizerEditor.h"
#include "QPaletteObject.h"
#include "QSprite.h"
#include "QSpritePalette.h"
#include "QSprites.h"
#include "QTextElementRegistry.h"
#include "TestData.h"

#include <QAbstractItemModelTester>
#include <QAction>
#include <QApplication>
#include <QFile>
#include <QListView>
#include <QMouseEvent>
#include <QSignalSpy>
#include <QTest>
#include <QTextDocument>
#include <QToolButton>

#include <memory>

using Move = void (QOrganizerEditor::*)();
Q_DECLARE_METATYPE(Move)

namespace {

QString samplePath(const char* name)
{
    return TestData::binDir() + QStringLiteral("/samples/Roan/") + QLatin1String(name);
}

// The items of a list by identity, in list order.
QList<const void*> order(const QSprites& sprites, bool palettes)
{
    QList<const void*> items;
    if (palettes)
        for (const QSpritePalette* palette : sprites.paletteItems())
            items << palette;
    else
        for (const QSprite* sprite : sprites.spriteItems())
            items << sprite;
    return items;
}

// The items by what they hold, for comparing across an undo that makes them anew.
QStringList describe(const QSprites& sprites, bool palettes)
{
    QStringList items;
    if (palettes) {
        for (const QSpritePalette* palette : sprites.paletteItems()) {
            QByteArray colours;
            if (const QRGBPal* table = palette->table())
                for (int i = 0; i < QRGBPal::TableSize; ++i)
                    colours.append(char(table[i].r)).append(char(table[i].g)).append(char(table[i].b));
            items << QStringLiteral("%1,%2 %3")
                         .arg(palette->itemGroup())
                         .arg(palette->itemIndex())
                         .arg(QString::fromLatin1(colours.toHex()));
        }
    } else {
        for (const QSprite* sprite : sprites.spriteItems())
            items << QStringLiteral("%1,%2 %3,%4 %5x%6")
                         .arg(sprite->itemGroup())
                         .arg(sprite->itemIndex())
                         .arg(sprite->offsetX())
                         .arg(sprite->offsetY())
                         .arg(sprite->imageProperties().width)
                         .arg(sprite->imageProperties().height);
    }
    return items;
}

QList<int> numbers(const QAnimations& animations)
{
    QList<int> list;
    for (const QAnimation* animation : animations.animations)
        list << animation->number;
    return list;
}

template <class T>
QList<T> moved(QList<T> items, int first, int last, int to)
{
    const QList<T> block = items.mid(first, last - first + 1);
    items.remove(first, block.size());
    for (int i = 0; i < block.size(); ++i)
        items.insert(to + i, block.at(i));
    return items;
}

} // namespace

class tst_Organizer : public QObject
{
    Q_OBJECT

    std::unique_ptr<QSprites> sprites;
    std::unique_ptr<QOrganizerEditor> editor;
    std::unique_ptr<QAbstractItemModelTester> spriteTester;
    std::unique_ptr<QAbstractItemModelTester> paletteTester;

    QToolButton* button(const char* name) const
    {
        return editor->panel()->findChild<QToolButton*>(QLatin1String(name));
    }

private Q_SLOTS:
    void initTestCase() { registerTextElements(); }
    void cleanupTestCase() { unregisterTextElements(); }

    void init()
    {
        sprites = std::make_unique<QSprites>();
        if (!sprites->fromFile(samplePath("Roan.sff"))) QSKIP("the sample is not built next to the tests");
        spriteTester = std::make_unique<QAbstractItemModelTester>(sprites.get());
        paletteTester = std::make_unique<QAbstractItemModelTester>(sprites->paletteObject());
        editor = std::make_unique<QOrganizerEditor>();
        editor->setObjects(sprites.get(), sprites->paletteObject());
    }

    void cleanup()
    {
        editor.reset();
        spriteTester.reset();
        paletteTester.reset();
        sprites.reset();
    }

    void moves_data()
    {
        QTest::addColumn<bool>("palettes");
        QTest::addColumn<Move>("move");
        QTest::addColumn<int>("first");
        QTest::addColumn<int>("last");
        // Where the block's first row lands; -1 when the move can't go anywhere.
        QTest::addColumn<int>("to");

        using E = QOrganizerEditor;
        QTest::newRow("up") << false << Move(&E::moveUp) << 5 << 7 << 4;
        QTest::newRow("up at the top") << false << Move(&E::moveUp) << 0 << 2 << -1;
        QTest::newRow("down") << false << Move(&E::moveDown) << 5 << 7 << 6;
        QTest::newRow("down at the end") << false << Move(&E::moveDown) << 98 << 100 << -1;
        QTest::newRow("up 10 from row 3 lands on row 0") << false << Move(&E::moveUp10) << 3 << 3 << 0;
        QTest::newRow("up 10") << false << Move(&E::moveUp10) << 20 << 22 << 10;
        QTest::newRow("up 10 at the top") << false << Move(&E::moveUp10) << 0 << 4 << -1;
        QTest::newRow("down 10") << false << Move(&E::moveDown10) << 5 << 6 << 15;
        QTest::newRow("down 10 near the end") << false << Move(&E::moveDown10) << 95 << 97 << 98;
        QTest::newRow("top") << false << Move(&E::moveTop) << 40 << 45 << 0;
        QTest::newRow("top at the top") << false << Move(&E::moveTop) << 0 << 0 << -1;
        QTest::newRow("bottom") << false << Move(&E::moveBottom) << 40 << 45 << 95;
        QTest::newRow("bottom at the end") << false << Move(&E::moveBottom) << 100 << 100 << -1;
        QTest::newRow("palette up") << true << Move(&E::moveUp) << 1 << 2 << 0;
        QTest::newRow("palette down") << true << Move(&E::moveDown) << 0 << 0 << 1;
        QTest::newRow("palette up 10") << true << Move(&E::moveUp10) << 2 << 2 << 0;
        QTest::newRow("palette down 10") << true << Move(&E::moveDown10) << 0 << 1 << 1;
        QTest::newRow("palette top") << true << Move(&E::moveTop) << 2 << 2 << 0;
        QTest::newRow("palette bottom") << true << Move(&E::moveBottom) << 0 << 0 << 2;
        QTest::newRow("palette bottom at the end") << true << Move(&E::moveBottom) << 1 << 2 << -1;
    }

    void moves()
    {
        QFETCH(bool, palettes);
        QFETCH(Move, move);
        QFETCH(int, first);
        QFETCH(int, last);
        QFETCH(int, to);
        QCOMPARE(sprites->count(), 101u);
        QCOMPARE(sprites->paletteCount(), 3u);
        editor->palToggled(palettes);
        const QOrganizableObject* shown =
            palettes ? static_cast<QOrganizableObject*>(sprites->paletteObject()) : sprites.get();
        QCOMPARE(editor->object(), shown);
        QCOMPARE(editor->list()->model(), shown);

        const QList<const void*> before = order(*sprites, palettes);
        const QList<const void*> other = order(*sprites, !palettes);
        const int steps = sprites->undoStack()->count();
        editor->selectRows(first, last);
        QCOMPARE(editor->selectedRows(), qMakePair(first, last));
        (editor.get()->*move)();

        if (to < 0) {
            QCOMPARE(order(*sprites, palettes), before);
            QCOMPARE(sprites->undoStack()->count(), steps);
            QCOMPARE(editor->selectedRows(), qMakePair(first, last));
            return;
        }
        QCOMPARE(order(*sprites, palettes), moved(before, first, last, to));
        QCOMPARE(order(*sprites, !palettes), other);
        QCOMPARE(editor->selectedRows(), qMakePair(to, to + last - first));
        QCOMPARE(editor->list()->currentIndex().row(), to);
        QCOMPARE(sprites->undoStack()->count(), steps + 1);
        sprites->undoChange();
        QCOMPARE(order(*sprites, palettes), before);
        sprites->redoChange();
        QCOMPARE(order(*sprites, palettes), moved(before, first, last, to));
    }

    void buttonsFollowTheSelection()
    {
        editor->selectRows(0, 1);
        for (const char* name : {"org_up", "org_up_10", "org_top"})
            QVERIFY2(!button(name)->isEnabled(), name);
        for (const char* name : {"org_down", "org_down_10", "org_bottom", "org_auto"})
            QVERIFY2(button(name)->isEnabled(), name);
        // A click on a button is the move.
        const QList<const void*> before = order(*sprites, false);
        button("org_down")->click();
        QCOMPARE(order(*sprites, false), moved(before, 0, 1, 1));
        button("org_bottom")->click();
        QCOMPARE(editor->selectedRows(), qMakePair(99, 100));
        for (const char* name : {"org_down", "org_down_10", "org_bottom"})
            QVERIFY2(!button(name)->isEnabled(), name);

        // A registered command takes the button over: its state shows, and it triggers the move.
        QAction command;
        command.setObjectName(QStringLiteral("org_top"));
        connect(&command, &QAction::triggered, editor.get(), &QOrganizerEditor::moveTop);
        editor->setCommand(&command);
        QVERIFY(command.isEnabled());
        button("org_top")->click();
        QCOMPARE(editor->selectedRows(), qMakePair(0, 1));
        QVERIFY(!command.isEnabled());
    }

    void sortPutsTheSpritesInOrder()
    {
        // Take a block out of its place; sorting puts it back and the selection goes with it.
        sprites->autoOrganize();
        const QList<const void*> sorted = order(*sprites, false);
        editor->selectRows(10, 12);
        editor->moveBottom();
        const QList<const void*> shuffled = order(*sprites, false);
        QVERIFY(shuffled != sorted);
        const int steps = sprites->undoStack()->count();
        QSignalSpy changed(editor.get(), &QOrganizerEditor::changed);
        button("org_auto")->click();
        QCOMPARE(order(*sprites, false), sorted);
        QCOMPARE(editor->selectedRows(), qMakePair(10, 12));
        QCOMPARE(changed.size(), 1);
        QCOMPARE(sprites->undoStack()->count(), steps + 1);
        sprites->undoChange();
        QCOMPARE(order(*sprites, false), shuffled);
    }

    void deleteAsksFirst_data()
    {
        QTest::addColumn<bool>("palettes");
        QTest::addColumn<int>("first");
        QTest::addColumn<int>("last");
        QTest::newRow("sprites") << false << 2 << 4;
        QTest::newRow("the last sprite") << false << 100 << 100;
        QTest::newRow("palettes") << true << 1 << 2;
    }

    void deleteAsksFirst()
    {
        QFETCH(bool, palettes);
        QFETCH(int, first);
        QFETCH(int, last);
        editor->palToggled(palettes);
        const QStringList before = describe(*sprites, palettes);
        editor->selectRows(first, last);
        QDialogRecorder recorder;
        recorder.answers.enqueue(QUserDialogs::No);
        recorder.answers.enqueue(QUserDialogs::Yes);
        QTest::keyClick(editor->list(), Qt::Key_Delete);
        QCOMPARE(describe(*sprites, palettes), before);
        QTest::keyClick(editor->list(), Qt::Key_Delete);
        QCOMPARE(recorder.calls.size(), 2);
        for (const QDialogRecorder::Call& call : std::as_const(recorder.calls)) {
            QCOMPARE(call.icon, QUserDialogs::Question);
            QCOMPARE(call.title, QStringLiteral("Delete"));
            QCOMPARE(call.text, QStringLiteral("Do you really want to delete the selected item(s)?"));
        }
        QStringList rest = before;
        rest.remove(first, last - first + 1);
        QCOMPARE(describe(*sprites, palettes), rest);
        // The row after the block is selected, or the last one when the block was at the end.
        QCOMPARE(editor->selectedRows().first, qMin(first, int(rest.size()) - 1));
        sprites->undoChange();
        QCOMPARE(describe(*sprites, palettes), before);
    }

    void paletteSwitch()
    {
        QToolButton* toggle = button("org_palette");
        QVERIFY(toggle->isVisibleTo(editor->panel()));
        QSignalSpy changed(editor.get(), &QOrganizerEditor::changed);
        toggle->click();
        QVERIFY(editor->showsSecondary());
        QCOMPARE(editor->list()->model(), sprites->paletteObject());
        QCOMPARE(changed.takeFirst().at(0).toBool(), true);
        editor->palToggled(false);
        QVERIFY(!toggle->isChecked());
        QCOMPARE(editor->list()->model(), sprites.get());
        QCOMPARE(changed.takeFirst().at(0).toBool(), false);

        // Without palettes (another editor's list) there is nothing to switch to.
        toggle->click();
        QSignalSpy enabled(editor.get(), &QOrganizerEditor::enabled);
        QAirDocument document(QStringLiteral("[Begin Action 5]\n1,0, 0,0, 4\n"));
        editor->setObjects(QAnimationsOrg::of(&document.model));
        QVERIFY(!toggle->isVisibleTo(editor->panel()));
        QVERIFY(!toggle->isChecked());
        QVERIFY(!editor->showsSecondary());
        editor->palToggled(true);
        QVERIFY(!editor->showsSecondary());
        QCOMPARE(enabled.takeLast().at(0).toBool(), true);
        QCOMPARE(editor->list()->model()->rowCount(), 1);
        editor->setObjects(nullptr);
        QCOMPARE(enabled.takeLast().at(0).toBool(), false);
        QVERIFY(!editor->panel()->isEnabled());
        QCOMPARE(editor->selectedRows(), qMakePair(-1, -1));
    }

    void doubleClickPicksTheItem()
    {
        editor->panel()->resize(300, 400);
        editor->panel()->show();
        QVERIFY(QTest::qWaitForWindowExposed(editor->panel()));
        QSignalSpy picked(editor.get(), &QOrganizerEditor::itemClicked);
        QListView* list = editor->list();
        list->scrollTo(sprites->index(7));
        const QRect row = list->visualRect(sprites->index(7));
        QVERIFY(row.isValid());
        const QPoint centre = row.center();
        // What the window system sends for a double click: press, release, press and double click, release.
        for (const QEvent::Type type :
             {QEvent::MouseButtonPress, QEvent::MouseButtonRelease, QEvent::MouseButtonPress,
              QEvent::MouseButtonDblClick, QEvent::MouseButtonRelease}) {
            const Qt::MouseButtons held = type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
            QMouseEvent event(type, QPointF(centre), list->viewport()->mapToGlobal(QPointF(centre)),
                              Qt::LeftButton, held, Qt::NoModifier);
            QApplication::sendEvent(list->viewport(), &event);
        }
        QCOMPARE(picked.size(), 1);
        QCOMPARE(picked.first().at(0).toInt(), 7);
    }

    void actionsMoveAsOneTextEdit()
    {
        // Actions out of order, each with a name and frames.
        QString text;
        QList<int> before;
        for (int i = 0; i < 30; ++i) {
            const int number = (i * 7) % 30;
            before << number;
            text +=
                QStringLiteral("; Action %1\n[Begin Action %1]\n%1,0, 0,0, 4\n%1,1, 2,0, 5\n\n").arg(number);
        }
        QAirDocument document(text);
        QAnimationsOrg* actions = QAnimationsOrg::of(&document.model);
        QCOMPARE(QAnimationsOrg::of(&document.model), actions);
        QAbstractItemModelTester tester(actions);
        editor->setObjects(actions);
        QTextDocument* lines = document.editor.document;
        QCOMPARE(numbers(document.model), before);
        QCOMPARE(actions->rowCount(), before.size());
        QCOMPARE(actions->index(0).data().toString(), document.model.index(0).data().toString());

        editor->selectRows(3, 5);
        editor->moveDown10();
        QCOMPARE(numbers(document.model), moved(before, 3, 5, 13));
        QCOMPARE(editor->selectedRows(), qMakePair(13, 15));
        editor->moveTop();
        const QList<int> shuffled = moved(before, 3, 5, 0);
        QCOMPARE(numbers(document.model), shuffled);
        QCOMPARE(editor->selectedRows(), qMakePair(0, 2));
        const QString shuffledText = document.text();
        editor->moveAuto();
        QList<int> sorted = before;
        std::sort(sorted.begin(), sorted.end());
        QCOMPARE(numbers(document.model), sorted);
        // The block stands together after sorting too only when its numbers follow each other.
        QCOMPARE(editor->list()->currentIndex().row(), int(sorted.indexOf(shuffled.first())));
        lines->undo();
        QCOMPARE(document.text(), shuffledText);
        lines->undo();
        lines->undo();
        QCOMPARE(document.text(), text);
        QCOMPARE(numbers(document.model), before);

        // Text typed elsewhere reaches the list as rows that come and go.
        document.model.add(9999);
        QCOMPARE(actions->rowCount(), before.size() + 1);
        editor->selectRows(actions->rowCount() - 1, actions->rowCount() - 1);
        QDialogRecorder recorder;
        recorder.answers.enqueue(QUserDialogs::Yes);
        editor->deleteSelected();
        QCOMPARE(numbers(document.model), before);
    }

    void sampleActionMoveUndoesInOneStep()
    {
        QFile file(samplePath("Roan.air"));
        if (!file.open(QIODevice::ReadOnly)) QSKIP("the sample is not built next to the tests");
        QAirDocument document(QString::fromLatin1(file.readAll()));
        QAbstractItemModelTester tester(QAnimationsOrg::of(&document.model));
        editor->setObjects(QAnimationsOrg::of(&document.model));
        const QString original = document.text();
        const QList<int> before = numbers(document.model);
        editor->selectRows(3, 5);
        editor->moveTop();
        QCOMPARE(numbers(document.model), moved(before, 3, 5, 0));
        document.editor.document->undo();
        QCOMPARE(numbers(document.model), before);
        // The lines come back with their own bytes, and the move can be redone.
        QCOMPARE(document.text(), original);
        QVERIFY(document.editor.document->isRedoAvailable());
    }
};

QTEST_MAIN(tst_Organizer)
#include "tst_Organizer.moc"
