// The palette grid driven by the mouse as a user drives it: its short history, moving a colour by
// dragging, the colour count, the selection rules and the pixels of a cell.

#include "QPaletteWidget.h"
#include "QRGBPalette.h"

#include <QApplication>
#include <QMouseEvent>
#include <QSignalSpy>
#include <QTest>

#include <algorithm>
#include <vector>

namespace {
QRGBPal colourOf(int i)
{
    return QRGBPal(uchar(i), uchar(255 - i), uchar(i / 2), 255);
}
} // namespace

class tst_PaletteWidget : public QObject
{
    Q_OBJECT

    QPaletteWidget* widget = nullptr;

    void loadDistinctColours()
    {
        QRGBPal table[QRGBPal::TableSize];
        for (int i = 0; i < QRGBPal::TableSize; ++i)
            table[i] = colourOf(i);
        widget->loadColors(table);
    }

    QPoint centre(int index) const { return widget->cellRect(index).center(); }

    void send(QEvent::Type type, QPoint at, Qt::MouseButton button, Qt::MouseButtons buttons,
              Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QMouseEvent event(type, at, widget->mapToGlobal(at), button, buttons, modifiers);
        QApplication::sendEvent(widget, &event);
    }

    void click(int index, Qt::MouseButton button = Qt::LeftButton,
               Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        send(QEvent::MouseButtonPress, centre(index), button, button, modifiers);
        send(QEvent::MouseButtonRelease, centre(index), button, Qt::NoButton, modifiers);
    }

    void drag(int from, int to)
    {
        send(QEvent::MouseButtonPress, centre(from), Qt::LeftButton, Qt::LeftButton);
        send(QEvent::MouseMove, (centre(from) + centre(to)) / 2 + QPoint(1, 1), Qt::NoButton, Qt::LeftButton);
        send(QEvent::MouseMove, centre(to), Qt::NoButton, Qt::LeftButton);
        send(QEvent::MouseButtonRelease, centre(to), Qt::LeftButton, Qt::NoButton);
    }

    QList<int> selected() const
    {
        QList<int> list;
        for (int i = 0; i < QPaletteWidget::CellCount; ++i)
            if (widget->isSelected(i)) list << i;
        return list;
    }

private Q_SLOTS:
    void init()
    {
        widget = new QPaletteWidget;
        // Sixteen cells of 12 pixels to a row.
        widget->resize(192, 192);
        widget->show();
        QVERIFY(QTest::qWaitForWindowExposed(widget));
        QCOMPARE(widget->columnCount(), 16);
    }

    void cleanup()
    {
        delete widget;
        widget = nullptr;
    }

    void historyKeepsTwelveTables_data()
    {
        QTest::addColumn<bool>("reset");
        QTest::addColumn<int>("changes");
        QTest::addColumn<int>("undos");
        // The value of colour 1 after all undos: 0 for the loaded table, else the change's number.
        QTest::addColumn<int>("earliest");
        QTest::newRow("13 changes after a reset") << true << 13 << 11 << 2;
        QTest::newRow("13 changes, never reset") << false << 13 << 11 << 2;
        QTest::newRow("5 changes after a reset") << true << 5 << 5 << 0;
        // The first change of a widget never reset only opens the history.
        QTest::newRow("5 changes, never reset") << false << 5 << 4 << 1;
    }

    void historyKeepsTwelveTables()
    {
        QFETCH(bool, reset);
        QFETCH(int, changes);
        QFETCH(int, undos);
        QFETCH(int, earliest);
        if (reset) widget->loadColors(nullptr);
        QSignalSpy changed(widget, &QPaletteWidget::changed);
        for (int change = 1; change <= changes; ++change)
            widget->rgbPalette()->setColor(uchar(1), QRGBPal(uchar(change), 0, 0));
        QCOMPARE(changed.size(), changes);
        QCOMPARE(widget->color(1).r, changes);

        int steps = 0;
        while (widget->canUndo()) {
            widget->undo();
            ++steps;
        }
        QCOMPARE(steps, undos);
        QCOMPARE(widget->color(1).r, earliest);
        widget->undo();
        QCOMPARE(widget->color(1).r, earliest);

        while (widget->canRedo())
            widget->redo();
        QCOMPARE(widget->color(1).r, changes);

        // A change after an undo cuts off what could have been redone.
        widget->undo();
        widget->rgbPalette()->setColor(uchar(2), QRGBPal(9, 9, 9));
        QVERIFY(!widget->canRedo());
        QCOMPARE(widget->color(1).r, changes - 1);
    }

    void blockedChangesRecordNoStep()
    {
        widget->loadColors(nullptr);
        widget->rgbPalette()->setColor(uchar(1), QRGBPal(1, 1, 1));
        widget->blockUndo();
        widget->rgbPalette()->setColor(uchar(1), QRGBPal(2, 2, 2));
        widget->undo();
        QCOMPARE(widget->color(1), QRGBPal(2, 2, 2));
        widget->unblockUndo();
        widget->undo();
        QCOMPARE(widget->color(1), QRGBPal(0, 0, 0, 0));

        // Loading another table starts the history afresh.
        widget->redo();
        loadDistinctColours();
        QVERIFY(!widget->canUndo());
        QVERIFY(!widget->canRedo());
        QCOMPARE(widget->stepCount(), 1);
    }

    void dragMovesAColour_data()
    {
        QTest::addColumn<int>("from");
        QTest::addColumn<int>("to");
        QTest::newRow("left, same row") << 9 << 3;
        QTest::newRow("right, same row") << 3 << 9;
        QTest::newRow("up, rows apart") << 200 << 17;
        QTest::newRow("down to the last cell") << 0 << 255;
        QTest::newRow("neighbour") << 4 << 5;
    }

    void dragMovesAColour()
    {
        QFETCH(int, from);
        QFETCH(int, to);
        loadDistinctColours();
        QStringList order;
        connect(widget, &QPaletteWidget::changed, this, [&order]() { order << QStringLiteral("changed"); });
        connect(widget, &QPaletteWidget::colorMoved, this, [&order](ushort source, ushort target) {
            order << QStringLiteral("moved %1 %2").arg(source).arg(target);
        });
        drag(from, to);
        QCOMPARE(order,
                 QStringList({QStringLiteral("changed"), QStringLiteral("moved %1 %2").arg(from).arg(to)}));

        // The colour is cut out and put in at the target; those in between close up toward the gap.
        std::vector<int> expected;
        for (int i = 0; i < QRGBPal::TableSize; ++i)
            expected.push_back(i);
        expected.erase(expected.begin() + from);
        expected.insert(expected.begin() + to, from);
        for (int i = 0; i < QRGBPal::TableSize; ++i)
            QCOMPARE(widget->color(i), colourOf(expected[size_t(i)]));

        widget->undo();
        for (int i = 0; i < QRGBPal::TableSize; ++i)
            QCOMPARE(widget->color(i), colourOf(i));
    }

    void dragBackToItsCellOrOffTheGridMovesNothing()
    {
        loadDistinctColours();
        QSignalSpy moved(widget, &QPaletteWidget::colorMoved);
        send(QEvent::MouseButtonPress, centre(5), Qt::LeftButton, Qt::LeftButton);
        send(QEvent::MouseMove, centre(6), Qt::NoButton, Qt::LeftButton);
        send(QEvent::MouseMove, centre(5), Qt::NoButton, Qt::LeftButton);
        send(QEvent::MouseButtonRelease, centre(5), Qt::LeftButton, Qt::NoButton);
        send(QEvent::MouseButtonPress, centre(5), Qt::LeftButton, Qt::LeftButton);
        send(QEvent::MouseMove, QPoint(-20, 5), Qt::NoButton, Qt::LeftButton);
        send(QEvent::MouseButtonRelease, QPoint(-20, 5), Qt::LeftButton, Qt::NoButton);
        QCOMPARE(moved.size(), 0);
        QCOMPARE(widget->color(5), colourOf(5));
        QVERIFY(!widget->canUndo());
    }

    void draggedCellFollowsTheMouse()
    {
        loadDistinctColours();
        const QPoint grab = centre(2) - widget->cellRect(2).topLeft();
        send(QEvent::MouseButtonPress, centre(2), Qt::LeftButton, Qt::LeftButton);
        const QPoint mouse(103, 101);
        send(QEvent::MouseMove, mouse, Qt::NoButton, Qt::LeftButton);
        const QImage shot = widget->grab().toImage();
        const QPoint inside = mouse - grab + QPoint(4, 4);
        QCOMPARE(shot.pixelColor(inside), colourOf(2).toColor());
        send(QEvent::MouseButtonRelease, QPoint(-5, -5), Qt::LeftButton, Qt::NoButton);
    }

    void cellsPastTheColourCountIgnoreClicks()
    {
        loadDistinctColours();
        widget->selectOnly(3);
        widget->setColorCount(32);
        QCOMPARE(widget->colorCount(), 32);
        QVERIFY(selected().isEmpty());
        QSignalSpy clicks(widget, &QPaletteWidget::colorClick);
        QSignalSpy selection(widget, &QPaletteWidget::selectionChanged);
        click(40);
        send(QEvent::MouseButtonDblClick, centre(40), Qt::LeftButton, Qt::LeftButton);
        QCOMPARE(widget->indexAt(centre(40)), -1);
        QCOMPARE(clicks.size(), 0);
        QCOMPARE(selection.size(), 0);
        QVERIFY(selected().isEmpty());
        click(31);
        QCOMPARE(clicks.size(), 1);
        QCOMPARE(clicks.at(0).at(0).value<ushort>(), ushort(31));
        QCOMPARE(selected(), QList<int>{31});
        // Nor can a colour be dragged onto them.
        drag(31, 40);
        QCOMPARE(widget->color(31), colourOf(31));
    }

    // Clicks are written "index", "c index" with Control, "s index" with Shift, "r index" with the
    // right button.
    void selectionRules_data()
    {
        QTest::addColumn<bool>("multi");
        QTest::addColumn<QStringList>("clicks");
        QTest::addColumn<QList<int>>("expected");
        QTest::addColumn<int>("multiClicks");
        QTest::newRow("shift with nothing selected") << true << QStringList{"s 5"} << QList<int>{5} << 0;
        QTest::newRow("shift run forward")
            << true << QStringList{"3", "s 7"} << QList<int>{3, 4, 5, 6, 7} << 1;
        QTest::newRow("shift run backward") << true << QStringList{"9", "s 6"} << QList<int>{6, 7, 8, 9} << 1;
        QTest::newRow("shift runs from the last selected")
            << true << QStringList{"2", "c 10", "s 12"} << QList<int>{2, 10, 11, 12} << 1;
        QTest::newRow("control adds") << true << QStringList{"1", "c 4", "c 8"} << QList<int>{1, 4, 8} << 0;
        QTest::newRow("a plain click starts over")
            << true << QStringList{"1", "c 4", "6"} << QList<int>{6} << 0;
        QTest::newRow("right button deselects")
            << true << QStringList{"1", "c 4", "r 1"} << QList<int>{4} << 0;
        QTest::newRow("single selection ignores the keys")
            << false << QStringList{"1", "c 4", "s 7"} << QList<int>{7} << 0;
    }

    void selectionRules()
    {
        QFETCH(bool, multi);
        QFETCH(QStringList, clicks);
        QFETCH(QList<int>, expected);
        QFETCH(int, multiClicks);
        widget->setMultiSelection(multi);
        QSignalSpy multiple(widget, &QPaletteWidget::multiColorClick);
        QSignalSpy selection(widget, &QPaletteWidget::selectionChanged);
        QSignalSpy colorClicks(widget, &QPaletteWidget::colorClick);
        for (const QString& step : std::as_const(clicks)) {
            const QStringList parts = step.split(QLatin1Char(' '));
            const int index = parts.last().toInt();
            const QString kind = parts.size() > 1 ? parts.first() : QString();
            if (kind == QLatin1String("r"))
                click(index, Qt::RightButton);
            else
                click(index, Qt::LeftButton,
                      kind == QLatin1String("c")   ? Qt::ControlModifier
                      : kind == QLatin1String("s") ? Qt::ShiftModifier
                                                   : Qt::NoModifier);
        }
        QCOMPARE(selected(), expected);
        QCOMPARE(multiple.size(), multiClicks);
        QCOMPARE(selection.size(), clicks.size());
        QCOMPARE(colorClicks.size(), clicks.size());
        QCOMPARE(widget->firstSelected(), expected.first());

        // A widget without selection only reports the clicks.
        widget->clearSelection();
        widget->setSelectionEnabled(false);
        click(20);
        QVERIFY(selected().isEmpty());
        QCOMPARE(colorClicks.size(), clicks.size() + 1);
    }

    void hoverTellsTheColourAndDoubleClickReports()
    {
        QRGBPal table[QRGBPal::TableSize];
        std::fill(std::begin(table), std::end(table), QRGBPal(0, 0, 0, 0));
        table[5] = QRGBPal(5, 250, 2, 128);
        widget->loadColors(table);
        send(QEvent::MouseMove, centre(5), Qt::NoButton, Qt::NoButton);
        QCOMPARE(widget->toolTip(), QStringLiteral("5, 250, 2, 128"));
        send(QEvent::MouseMove, QPoint(5, 190), Qt::NoButton, Qt::NoButton);
        QCOMPARE(widget->toolTip(), QStringLiteral("0, 0, 0, 0"));
        QSignalSpy doubles(widget, &QPaletteWidget::colorDblClick);
        send(QEvent::MouseButtonDblClick, centre(5), Qt::LeftButton, Qt::LeftButton);
        QCOMPARE(doubles.size(), 1);
        QCOMPARE(doubles.at(0).at(0).value<ushort>(), ushort(5));
    }

    // Offsets are from the cell's top left corner; cells are 12 pixels, of which 10 are drawn.
    void cellPixels_data()
    {
        QTest::addColumn<QColor>("colour");
        QTest::addColumn<bool>("selected");
        QTest::addColumn<QPoint>("offset");
        QTest::addColumn<QColor>("expected");
        const QColor plum(200, 10, 100);
        QTest::newRow("selected outline") << plum << true << QPoint(2, 2) << QColor(72, 138, 228);
        QTest::newRow("selected outline, far corner") << plum << true << QPoint(7, 7) << QColor(72, 138, 228);
        QTest::newRow("selected fill outside the outline") << plum << true << QPoint(1, 1) << plum;
        QTest::newRow("selected fill inside the outline") << plum << true << QPoint(4, 5) << plum;
        QTest::newRow("outline wraps each channel")
            << QColor(255, 127, 128) << true << QPoint(2, 4) << QColor(127, 255, 0);
        QTest::newRow("grey top edge") << plum << false << QPoint(4, 0) << QColor(128, 128, 128);
        QTest::newRow("grey left edge") << plum << false << QPoint(0, 4) << QColor(128, 128, 128);
        QTest::newRow("white bottom edge") << plum << false << QPoint(4, 9) << QColor(Qt::white);
        QTest::newRow("white right edge") << plum << false << QPoint(9, 4) << QColor(Qt::white);
        QTest::newRow("plain fill") << plum << false << QPoint(1, 1) << plum;
        const QColor clear(30, 60, 90, 0);
        QTest::newRow("transparent, white square") << clear << false << QPoint(2, 2) << QColor(Qt::white);
        QTest::newRow("transparent, grey square") << clear << false << QPoint(7, 2) << QColor(Qt::gray);
        QTest::newRow("transparent, lower grey") << clear << false << QPoint(2, 7) << QColor(Qt::gray);
        QTest::newRow("transparent, lower white") << clear << false << QPoint(7, 7) << QColor(Qt::white);
        QTest::newRow("transparent selected, checker in the corner")
            << clear << true << QPoint(0, 0) << QColor(Qt::white);
        QTest::newRow("half transparent over white")
            << QColor(0, 0, 0, 128) << false << QPoint(2, 2) << QColor(127, 127, 127);
    }

    void cellPixels()
    {
        QFETCH(QColor, colour);
        QFETCH(bool, selected);
        QFETCH(QPoint, offset);
        QFETCH(QColor, expected);
        QRGBPal table[QRGBPal::TableSize] = {};
        const int index = 21;
        table[index] = QRGBPal::fromColor(colour);
        widget->loadColors(table);
        widget->setSelected(index, selected);
        const QImage shot = widget->grab().toImage();
        const QColor pixel = shot.pixelColor(widget->cellRect(index).topLeft() + offset);
        // Blending may round either way.
        QVERIFY2(qAbs(pixel.red() - expected.red()) <= 1 && qAbs(pixel.green() - expected.green()) <= 1 &&
                     qAbs(pixel.blue() - expected.blue()) <= 1,
                 qPrintable(QStringLiteral("got %1").arg(pixel.name())));
    }

    void onlyTheColourCountIsDrawn()
    {
        loadDistinctColours();
        const QPoint beyond = widget->cellRect(40).topLeft() + QPoint(4, 4);
        const QColor before = widget->grab().toImage().pixelColor(beyond);
        QCOMPARE(before, colourOf(40).toColor());
        widget->setColorCount(32);
        QVERIFY(widget->grab().toImage().pixelColor(beyond) != colourOf(40).toColor());
        QCOMPARE(widget->heightForWidth(192), 2 * 12);
    }
};

QTEST_MAIN(tst_PaletteWidget)
#include "tst_PaletteWidget.moc"
