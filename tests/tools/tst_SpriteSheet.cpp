// The sprite sheet importer: which drawings the automatic detection finds on a sheet, on made-up
// sheets and on the sample's own sprites laid out as one, and how its view zooms, pans and answers the
// mouse.

#include "QDialogRecorder.h"
#include "QSheetDetector.h"
#include "QSprSheetRender.h"
#include "QSprite.h"
#include "QSprites.h"
#include "SprSheetDlg.h"
#include "TestData.h"

#include <QApplication>
#include <QLabel>
#include <QMouseEvent>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>
#include <QWheelEvent>

using Points = QList<QPoint>;
using Rects = QList<QRect>;

namespace {

// An indexed sheet of the background colour with the points in colour 5.
QImage sheet(QSize size, const Points& points, uchar background = 0)
{
    QImage image(size, QImage::Format_Indexed8);
    image.setColorCount(256);
    for (int i = 0; i < 256; ++i)
        image.setColor(i, qRgb(i, 255 - i, i / 2));
    image.fill(background);
    for (const QPoint& point : points)
        image.setPixel(point, 5);
    return image;
}

Points block(int left, int top, int width, int height)
{
    Points points;
    for (int y = top; y < top + height; ++y)
        for (int x = left; x < left + width; ++x)
            points << QPoint(x, y);
    return points;
}

QRect box(int left, int top, int right, int bottom)
{
    return QRect(QPoint(left, top), QPoint(right, bottom));
}

void sendMouse(QWidget* widget, QEvent::Type type, QPoint pos, Qt::MouseButtons buttons,
               Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    const Qt::MouseButton button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(type, QPointF(pos), widget->mapToGlobal(QPointF(pos)), button, buttons, modifiers);
    QApplication::sendEvent(widget, &event);
}

void sendWheel(QWidget* widget, QPoint pos, int delta)
{
    QWheelEvent event(QPointF(pos), widget->mapToGlobal(QPointF(pos)), QPoint(), QPoint(0, delta),
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(widget, &event);
}

} // namespace

class tst_SpriteSheet : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void detection_data();
    void detection();
    void detectionSkipsSheetsWithoutPalette();
    void wholeSheetIsOneDrawing();
    void findsTheSampleSpritesOnASheet();
    void wheelZoomsAboutTheMouse();
    void dragPansInWholeSheetPixels();
    void hoverAndSelectionTool();
    void handlesOfASelectedRectangle();
    void zoomButtonsStopAtTheEnds();
    void openAsksForASheetAndDetects();
    void paintOutlinesTheDrawings();
};

void tst_SpriteSheet::detection_data()
{
    QTest::addColumn<QImage>("image");
    QTest::addColumn<Rects>("expected");

    const QSize size(12, 10);
    QTest::newRow("an isolated pixel is left out") << sheet(size, {QPoint(5, 5)}) << Rects();
    QTest::newRow("a block") << sheet(size, block(2, 3, 4, 2)) << Rects{box(2, 3, 5, 4)};
    QTest::newRow("a line of one pixel's width is kept")
        << sheet(size, block(7, 2, 1, 5)) << Rects{box(7, 2, 7, 6)};
    QTest::newRow("blocks that touch at a corner are one drawing")
        << sheet(size, block(2, 2, 2, 2) + block(4, 4, 2, 2)) << Rects{box(2, 2, 5, 5)};
    QTest::newRow("blocks a pixel apart are two, in the order the rows meet them")
        << sheet(size, block(8, 1, 2, 2) + block(1, 2, 2, 2)) << Rects{box(8, 1, 9, 2), box(1, 2, 2, 3)};
    QTest::newRow("a U is one drawing although its top row shows two")
        << sheet(size, block(1, 1, 1, 6) + block(5, 1, 1, 6) + block(1, 6, 5, 1)) << Rects{box(1, 1, 5, 6)};
    QTest::newRow("an S needs the fill to go up a column")
        << sheet(size, block(1, 1, 6, 1) + block(1, 1, 1, 3) + block(1, 3, 6, 1) + block(6, 3, 1, 3) +
                           block(1, 5, 6, 1))
        << Rects{box(1, 1, 6, 5)};
    QTest::newRow("a drawing in row 0 is at least two rows high")
        << sheet(size, block(3, 0, 3, 1)) << Rects{box(3, 0, 5, 1)};
    QTest::newRow("a drawing in column 0 is at least two columns wide")
        << sheet(size, block(0, 3, 1, 2)) << Rects{box(0, 3, 1, 4)};
    QTest::newRow("so one pixel in row 0 is kept") << sheet(size, {QPoint(4, 0)}) << Rects{box(4, 0, 4, 1)};
    QTest::newRow("a corner drawing along row 0 and column 0")
        << sheet(size, {QPoint(1, 0), QPoint(2, 0), QPoint(0, 1), QPoint(0, 2)}) << Rects{box(0, 0, 2, 2)};
    // The pixel at (0, 0) names the background, whatever its index.
    QTest::newRow("a sheet of one colour holds no drawing") << sheet(size, block(0, 0, 12, 10)) << Rects();
    QImage inverted = sheet(size, {}, 5);
    for (const QPoint& point : block(3, 3, 3, 3))
        inverted.setPixel(point, 0);
    QTest::newRow("a background of another index") << inverted << Rects{box(3, 3, 5, 5)};
    QImage dot = sheet(size, {QPoint(0, 0)});
    QTest::newRow("a mark at (0, 0) makes everything else the drawing") << dot << Rects{box(0, 0, 11, 9)};
    QImage mono(QSize(16, 8), QImage::Format_Mono);
    mono.fill(0);
    for (const QPoint& point : block(9, 2, 3, 4))
        mono.setPixel(point, 1);
    QTest::newRow("a sheet of two colours is read as indexed") << mono << Rects{box(9, 2, 11, 5)};
    QTest::newRow("a null sheet") << QImage() << Rects();
}

void tst_SpriteSheet::detection()
{
    QFETCH(QImage, image);
    QFETCH(Rects, expected);
    const QImage before = image;
    QCOMPARE(QSheetDetector::detect(image), expected);
    // The sheet shown stays as it was: the fill erases a copy.
    QCOMPARE(image, before);
}

void tst_SpriteSheet::detectionSkipsSheetsWithoutPalette()
{
    const QImage indexed = sheet(QSize(20, 20), block(2, 2, 4, 4) + block(10, 10, 5, 5));
    QCOMPARE(QSheetDetector::detect(indexed).size(), 2);
    for (const QImage::Format format : {QImage::Format_RGB32, QImage::Format_ARGB32, QImage::Format_RGB888})
        QVERIFY2(QSheetDetector::detect(indexed.convertToFormat(format)).isEmpty(),
                 qPrintable(QStringLiteral("format %1").arg(int(format))));
}

void tst_SpriteSheet::wholeSheetIsOneDrawing()
{
    // A large sheet where every pixel but the first belongs to one drawing: the fill keeps its own
    // stack, so size alone can't exhaust anything.
    QImage image = sheet(QSize(1500, 1200), {}, 1);
    image.setPixel(0, 0, 0);
    QCOMPARE(QSheetDetector::detect(image), Rects{box(0, 0, 1499, 1199)});
}

void tst_SpriteSheet::findsTheSampleSpritesOnASheet()
{
    QSprites sprites;
    if (!sprites.fromFile(TestData::binDir() + QStringLiteral("/samples/Roan/Roan.sff")))
        QSKIP("the sample is not built next to the tests");
    // The first sprites of distinct groups, each in a cell of its own with a margin of background.
    QList<QImage> images;
    int lastGroup = -1;
    for (const QSprite* sprite : sprites.spriteItems()) {
        if (sprite->itemGroup() == lastGroup || !sprite->hasImage() || images.size() == 6) continue;
        lastGroup = sprite->itemGroup();
        images << sprite->image(QSpriteImagePalette::Default);
    }
    QVERIFY(images.size() >= 3);
    int cellWidth = 0, cellHeight = 0;
    for (const QImage& image : images) {
        QCOMPARE(image.format(), QImage::Format_Indexed8);
        cellWidth = qMax(cellWidth, image.width() + 8);
        cellHeight = qMax(cellHeight, image.height() + 8);
    }
    const int columns = 3;
    const int rows = int((images.size() + columns - 1) / columns);
    QImage layout(cellWidth * columns, cellHeight * rows, QImage::Format_Indexed8);
    layout.setColorTable(images.first().colorTable());
    layout.fill(0);
    QList<QRect> cells;
    QList<QRect> expected;
    for (int i = 0; i < images.size(); ++i) {
        const QPoint at((i % columns) * cellWidth + 4, (i / columns) * cellHeight + 4);
        const QImage& image = images.at(i);
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                layout.setPixel(at + QPoint(x, y), image.pixelIndex(x, y));
        cells << QRect(at, image.size());
        expected << QSprite::contentBox(image).translated(at);
    }

    const Rects found = QSheetDetector::detect(layout);
    // The sample's figures are drawn in one piece: one rectangle each.
    QCOMPARE(found.size(), images.size());
    // Each lies in its own cell and bounds what the sprite holds.
    for (int i = 0; i < cells.size(); ++i) {
        QRect united;
        for (const QRect& rect : found)
            if (cells.at(i).contains(rect)) united |= rect;
        QCOMPARE(united, expected.at(i));
    }
    for (const QRect& rect : found) {
        bool inside = false;
        for (const QRect& cell : std::as_const(cells))
            inside = inside || cell.contains(rect);
        QVERIFY2(inside, "a rectangle spans two cells");
    }
}

void tst_SpriteSheet::wheelZoomsAboutTheMouse()
{
    SprSheetDlg dialog;
    dialog.show();
    QSprSheetRender* render = dialog.render();
    QWidget* view = dialog.renderWidget();
    render->setImage(sheet(QSize(100, 80), block(10, 10, 5, 5)));
    QCOMPARE(render->zoomIndex(), 2);
    QCOMPARE(render->zoom(), 1.0);

    // One notch in at (40, 30): zoom 2, and the sheet pixel under the mouse stays there.
    sendWheel(view, QPoint(40, 30), 120);
    QCOMPARE(render->zoomIndex(), 3);
    QCOMPARE(render->origin(), QPoint(-40, -30));
    sendWheel(view, QPoint(40, 30), -120);
    QCOMPARE(render->zoomIndex(), 2);
    QCOMPARE(render->origin(), QPoint(0, 0));
    // Far past either end clamps to the table.
    sendWheel(view, QPoint(0, 0), 120 * 20);
    QCOMPARE(render->zoomIndex(), 9);
    QCOMPARE(render->zoom(), 8.0);
    sendWheel(view, QPoint(0, 0), -120 * 20);
    QCOMPARE(render->zoomIndex(), 0);
    QCOMPARE(render->zoom(), 0.25);
    QCOMPARE(dialog.findChild<QLabel*>(QStringLiteral("zoom"))->text(), QStringLiteral("25%"));
}

void tst_SpriteSheet::dragPansInWholeSheetPixels()
{
    SprSheetDlg dialog;
    dialog.show();
    QSprSheetRender* render = dialog.render();
    QWidget* view = dialog.renderWidget();
    render->setImage(sheet(QSize(100, 80), block(10, 10, 5, 5)));

    sendMouse(view, QEvent::MouseButtonPress, QPoint(50, 50), Qt::LeftButton);
    QVERIFY(render->isPressed());
    QCOMPARE(render->dragTarget(), int(QSprSheetRender::Pan));
    QCOMPARE(view->cursor().shape(), Qt::ClosedHandCursor);
    sendMouse(view, QEvent::MouseMove, QPoint(80, 70), Qt::LeftButton);
    QCOMPARE(render->origin(), QPoint(30, 20));
    sendMouse(view, QEvent::MouseButtonRelease, QPoint(80, 70), Qt::NoButton);
    QVERIFY(!render->isPressed());

    // At zoom 2 the sheet moves by whole sheet pixels, and the rest of the way is kept for later.
    render->setOrigin(QPoint());
    render->setZoomIndex(3, QPoint());
    sendMouse(view, QEvent::MouseButtonPress, QPoint(50, 50), Qt::LeftButton);
    sendMouse(view, QEvent::MouseMove, QPoint(55, 53), Qt::LeftButton);
    QCOMPARE(render->origin(), QPoint(4, 2));
    sendMouse(view, QEvent::MouseMove, QPoint(56, 54), Qt::LeftButton);
    QCOMPARE(render->origin(), QPoint(6, 4));
    sendMouse(view, QEvent::MouseButtonRelease, QPoint(56, 54), Qt::NoButton);

    // Over a rectangle a drag takes the rectangle, which stays as it was; with Control it pans.
    render->setZoomIndex(2, QPoint());
    render->setOrigin(QPoint());
    render->detect();
    QCOMPARE(render->rectangles(), Rects{box(10, 10, 14, 14)});
    sendMouse(view, QEvent::MouseButtonPress, QPoint(12, 12), Qt::LeftButton);
    QCOMPARE(render->dragTarget(), int(QSprSheetRender::Rectangle));
    sendMouse(view, QEvent::MouseMove, QPoint(30, 30), Qt::LeftButton);
    QCOMPARE(render->origin(), QPoint());
    QCOMPARE(render->rectangles(), Rects{box(10, 10, 14, 14)});
    sendMouse(view, QEvent::MouseButtonRelease, QPoint(30, 30), Qt::NoButton);
    sendMouse(view, QEvent::MouseButtonPress, QPoint(12, 12), Qt::LeftButton, Qt::ControlModifier);
    QCOMPARE(render->dragTarget(), int(QSprSheetRender::Pan));
    sendMouse(view, QEvent::MouseMove, QPoint(20, 15), Qt::LeftButton, Qt::ControlModifier);
    QCOMPARE(render->origin(), QPoint(8, 3));
    sendMouse(view, QEvent::MouseButtonRelease, QPoint(20, 15), Qt::NoButton);
}

void tst_SpriteSheet::hoverAndSelectionTool()
{
    SprSheetDlg dialog;
    dialog.show();
    QSprSheetRender* render = dialog.render();
    QWidget* view = dialog.renderWidget();
    render->setImage(sheet(QSize(60, 40), block(4, 4, 6, 6) + block(30, 20, 8, 8)));
    render->detect();
    QCOMPARE(render->rectangles().size(), 2);
    // Hits follow the outlines as drawn, zoomed and panned.
    render->setZoomIndex(3, QPoint());
    render->setOrigin(QPoint(10, 5));
    sendMouse(view, QEvent::MouseMove, QPoint(10 + 31 * 2, 5 + 21 * 2), Qt::NoButton);
    QCOMPARE(render->hovered(), 1);
    QCOMPARE(view->cursor().shape(), Qt::SizeAllCursor);
    sendMouse(view, QEvent::MouseMove, QPoint(5, 2), Qt::NoButton);
    QCOMPARE(render->hovered(), -1);
    QCOMPARE(view->cursor().shape(), Qt::OpenHandCursor);

    // The selection tool only changes what a press means, and Escape leaves it.
    auto* tool = dialog.findChild<QPushButton*>(QStringLiteral("selTool"));
    tool->click();
    QVERIFY(render->creationMode());
    QCOMPARE(render->hitTest(QPoint(10 + 31 * 2, 5 + 21 * 2)), int(QSprSheetRender::Pan));
    sendMouse(view, QEvent::MouseMove, QPoint(10 + 31 * 2, 5 + 21 * 2), Qt::NoButton);
    QCOMPARE(view->cursor().shape(), Qt::CrossCursor);
    sendMouse(view, QEvent::MouseButtonPress, QPoint(20, 20), Qt::LeftButton);
    sendMouse(view, QEvent::MouseMove, QPoint(40, 40), Qt::LeftButton);
    sendMouse(view, QEvent::MouseButtonRelease, QPoint(40, 40), Qt::NoButton);
    QCOMPARE(render->rectangles().size(), 2);
    QTest::keyClick(view, Qt::Key_Escape);
    QVERIFY(!render->creationMode());
    QVERIFY(!tool->isChecked());
}

void tst_SpriteSheet::handlesOfASelectedRectangle()
{
    QSprSheetRender render;
    render.setImage(sheet(QSize(60, 40), block(10, 10, 11, 11)));
    render.detect();
    QCOMPARE(render.rectangles(), Rects{box(10, 10, 20, 20)});
    // Nothing selects a rectangle in use, so no handle can be hit.
    QCOMPARE(render.selected(), -1);
    QCOMPARE(render.hitTest(QPoint(10, 10)), int(QSprSheetRender::Rectangle));
    render.setSelected(0);
    // The outline runs from 10 to 21 on both axes; the handles stand on it.
    const QList<QPair<QPoint, int>> handles = {{QPoint(10, 10), 2}, {QPoint(15, 10), 3}, {QPoint(21, 10), 4},
                                               {QPoint(21, 15), 5}, {QPoint(10, 15), 6}, {QPoint(10, 21), 7},
                                               {QPoint(15, 21), 8}, {QPoint(21, 21), 9}};
    for (const auto& [point, target] : handles)
        QCOMPARE(render.hitTest(point + QPoint(3, 3)), target);
    QCOMPARE(render.hitTest(QPoint(14, 14)), int(QSprSheetRender::Rectangle));
    QCOMPARE(render.hitTest(QPoint(40, 35)), int(QSprSheetRender::Pan));
    render.setSelected(5);
    QCOMPARE(render.selected(), -1);
}

void tst_SpriteSheet::zoomButtonsStopAtTheEnds()
{
    SprSheetDlg dialog;
    QSprSheetRender* render = dialog.render();
    auto* plus = dialog.findChild<QToolButton*>(QStringLiteral("zplus"));
    auto* minus = dialog.findChild<QToolButton*>(QStringLiteral("zminus"));
    auto* label = dialog.findChild<QLabel*>(QStringLiteral("zoom"));
    QCOMPARE(label->text(), QStringLiteral("100%"));
    for (int i = 0; i < 12; ++i)
        plus->click();
    QCOMPARE(render->zoomIndex(), QSprSheetRender::ZoomCount - 1);
    QVERIFY(!plus->isEnabled());
    QCOMPARE(label->text(), QStringLiteral("800%"));
    minus->click();
    QCOMPARE(render->zoom(), 7.0);
    for (int i = 0; i < 12; ++i)
        minus->click();
    QCOMPARE(render->zoomIndex(), 0);
    QVERIFY(!minus->isEnabled());
    QVERIFY(plus->isEnabled());
}

void tst_SpriteSheet::openAsksForASheetAndDetects()
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("sheet.png"));
    QVERIFY(sheet(QSize(40, 30), block(2, 2, 3, 3) + block(20, 10, 4, 4)).save(path));
    const QString rgbPath = folder.filePath(QStringLiteral("rgb.png"));
    QVERIFY(sheet(QSize(40, 30), block(2, 2, 3, 3)).convertToFormat(QImage::Format_RGB32).save(rgbPath));

    SprSheetDlg dialog;
    dialog.setFolder(QStringLiteral("/start/here"));
    QCOMPARE(dialog.windowTitle(), QStringLiteral("Sprite sheet importer"));
    auto* detect = dialog.findChild<QPushButton*>(QStringLiteral("autoDet"));
    auto* status = dialog.findChild<QLabel*>(QStringLiteral("status"));
    QVERIFY(!detect->isEnabled());
    QDialogRecorder recorder;
    recorder.fileAnswers.enqueue({path});
    recorder.fileAnswers.enqueue({rgbPath});
    recorder.fileAnswers.enqueue({folder.filePath(QStringLiteral("missing.png"))});
    dialog.findChild<QPushButton*>(QStringLiteral("open"))->click();
    QCOMPARE(recorder.calls.size(), 1);
    QCOMPARE(recorder.calls.first().title, QStringLiteral("Open sprite sheet"));
    QCOMPARE(recorder.calls.first().dir, QStringLiteral("/start/here"));
    QVERIFY(recorder.calls.first().text.startsWith(QStringLiteral("Images (*.pcx *.png *.bmp);;")));
    QCOMPARE(dialog.folder(), folder.path());
    QCOMPARE(dialog.render()->image().size(), QSize(40, 30));
    detect->click();
    QCOMPARE(dialog.render()->rectangles(), (Rects{box(2, 2, 4, 4), box(20, 10, 23, 13)}));
    QCOMPARE(status->text(), QStringLiteral("2 drawing(s) found"));

    // Another sheet drops the rectangles of the last one; a true-colour one finds none and says why.
    dialog.findChild<QPushButton*>(QStringLiteral("open"))->click();
    QVERIFY(dialog.render()->rectangles().isEmpty());
    detect->click();
    QVERIFY(dialog.render()->rectangles().isEmpty());
    QCOMPARE(status->text(), QStringLiteral("Automatic detection needs an image with a palette."));
    // A file that can't be read leaves an empty view.
    dialog.findChild<QPushButton*>(QStringLiteral("open"))->click();
    QVERIFY(dialog.render()->image().isNull());
    QVERIFY(!detect->isEnabled());
}

void tst_SpriteSheet::paintOutlinesTheDrawings()
{
    SprSheetDlg dialog;
    dialog.show();
    QSprSheetRender* render = dialog.render();
    render->setImage(sheet(QSize(40, 30), block(10, 6, 8, 5)));
    render->detect();
    render->setZoomIndex(3, QPoint());
    render->setOrigin(QPoint(3, 4));
    const QImage shot = dialog.renderWidget()->grab().toImage();
    const int dpr = int(dialog.renderWidget()->devicePixelRatio());
    const auto at = [&](int x, int y) { return QColor(shot.pixel(x * dpr, y * dpr)); };
    // Outline from (3 + 20, 4 + 12) over 16 by 10 screen pixels, its last pixel inside.
    QCOMPARE(at(23, 16), QColor(Qt::blue));
    QCOMPARE(at(23 + 15, 16 + 9), QColor(Qt::blue));
    QCOMPARE(at(23 + 16, 16 + 10), QColor(sheet(QSize(1, 1), {}).color(0)));
    // Inside the drawing the sheet shows, beyond the sheet the view is grey.
    QCOMPARE(at(30, 20), QColor(sheet(QSize(1, 1), {}).color(5)));
    QCOMPARE(at(3 + 80 + 5, 10), QColor(Qt::gray));
    QCOMPARE(at(1, 1), QColor(Qt::gray));
}

QTEST_MAIN(tst_SpriteSheet)
#include "tst_SpriteSheet.moc"
