// The sprite view as a user sees it: every stored kind of sprite of the real content drawn at zoom 1
// with exactly the colours of its decoded pixels and palette, and the mouse moving the axis, the frame
// offset, the guide lines and the boxes by the dragged distance, with undo.

#include "QAirDocument.h"
#include "QAnimation.h"
#include "QAnimationFrame.h"
#include "QCollisionBox.h"
#include "QCollisionBoxes.h"
#include "QRenderWidgets.h"
#include "QSFFFormat.h"
#include "QSprRender.h"
#include "QSprite.h"
#include "QSpritePalette.h"
#include "QSprites.h"
#include "QTextElementRegistry.h"
#include "TestData.h"

#include <QApplication>
#include <QClipboard>
#include <QFileInfo>
#include <QSignalSpy>
#include <QTest>
#include <QWheelEvent>
#include <QWidget>

#include <memory>

namespace {

const QRgb backdrop = qRgb(12, 34, 56);

// A view on a plain backdrop with nothing drawn over the sprite, in a widget of the given size.
struct ViewHost
{
    QWidget host;
    QSprRender render;
    QWidget* widget = nullptr;

    explicit ViewHost(QSize size)
    {
        host.resize(size);
        widget = QRenderWidgets::make(&render, &host, false);
        widget->resize(size);
        render.setBackground(QColor(backdrop), QColor(backdrop), 0, QPoint(), QString());
        render.showSpriteCross(false);
        render.showAnimationCross(false);
        render.showRulers(false);
        render.setZoomMode(QViewZoom::LargeRange);
        render.setZoomIndex(2);
        render.resize();
    }

    // The widget goes before the renderer it borrows.
    ~ViewHost() { delete widget; }

    QImage grab()
    {
        QImage image(widget->size(), QImage::Format_ARGB32);
        image.fill(Qt::black);
        widget->render(&image);
        return image;
    }
};

// The pixels under the sprite against its decoded pixels: opaque colours exactly, transparent ones
// as the backdrop, and partly transparent ones blended over it (to a rounding step). Answers the first
// difference, or an empty text.
QString compareSprite(const QImage& shown, QPoint topLeft, const QImage& expected, bool transparentShown)
{
    const QImage colours = expected.convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < colours.height(); ++y) {
        for (int x = 0; x < colours.width(); ++x) {
            QRgb want = colours.pixel(x, y);
            if (transparentShown && expected.format() == QImage::Format_Indexed8 &&
                expected.pixelIndex(x, y) == 0)
                want |= 0xff000000u;
            const QRgb got = shown.pixel(topLeft + QPoint(x, y)) | 0xff000000u;
            const int alpha = qAlpha(want);
            QRgb blended = backdrop;
            if (alpha == 255) blended = want;
            if (alpha > 0 && alpha < 255) {
                const auto mix = [alpha](int top, int below) {
                    return (top * alpha + below * (255 - alpha)) / 255;
                };
                blended = qRgb(mix(qRed(want), qRed(backdrop)), mix(qGreen(want), qGreen(backdrop)),
                               mix(qBlue(want), qBlue(backdrop)));
            }
            const int tolerance = alpha > 0 && alpha < 255 ? 2 : 0;
            if (qAbs(qRed(got) - qRed(blended)) > tolerance ||
                qAbs(qGreen(got) - qGreen(blended)) > tolerance ||
                qAbs(qBlue(got) - qBlue(blended)) > tolerance)
                return QStringLiteral("pixel %1,%2: shown #%3, decoded #%4 (alpha %5)")
                    .arg(x)
                    .arg(y)
                    .arg(got & 0xffffff, 6, 16, QLatin1Char('0'))
                    .arg(blended & 0xffffff, 6, 16, QLatin1Char('0'))
                    .arg(alpha);
        }
    }
    return QString();
}

void dragBy(QWidget* widget, QPoint from, QPoint delta, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    QTest::mousePress(widget, Qt::LeftButton, modifiers, from);
    // In steps, as a hand moves: the remainder of each step must carry over.
    const int steps = 4;
    for (int i = 1; i <= steps; ++i)
        QTest::mouseMove(widget, from + delta * i / steps);
    QTest::mouseRelease(widget, Qt::LeftButton, modifiers, from + delta);
}

} // namespace

class tst_SprRender : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { registerTextElements(); }

    void pixelTruth_data();
    void pixelTruth();
    void pickedPaletteColoursTheSprite();
    void dragMovesTheAxis_data();
    void dragMovesTheAxis();
    void dragMovesAGuideLine_data();
    void dragMovesAGuideLine();
    void frameDragsAndBoxes();
    void drawnBoxesAndTheirEdgeCases();
    void lentLookLastsUntilTheNextFrame();
    void boxClipboardAndFlip();
    void zoomLimits();
    void decodedImagesAreCachedAndFollowEdits();
};

void tst_SprRender::pixelTruth_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<int>("index");
    QTest::addColumn<bool>("transparentShown");
    const QStringList files = TestData::files({QStringLiteral("*.sff")});
    for (const QString& file : files) {
        QSprites sprites;
        if (!sprites.fromFile(file)) continue;
        // The first sprite of each stored kind, and of each palette, so that every codec and every
        // way of giving a sprite its colours is drawn once.
        QSet<QString> kinds;
        const QSFFLayout& layout = sprites.storedLayout();
        for (uint i = 0; i < sprites.count() && i < uint(layout.sprites.size()); ++i) {
            const QSprite* sprite = sprites.at(i);
            const QImageInfo info = sprite->imageProperties();
            if (!sprite->hasImage() || info.width == 0 || info.height == 0 || info.width > 1400 ||
                info.height > 1000)
                continue;
            const QSFFStoredSprite& stored = layout.sprites.at(int(i));
            const QString kind = QStringLiteral("%1-%2-%3")
                                     .arg(QSFF::formatName(stored.format))
                                     .arg(stored.depth)
                                     .arg(sprites.paletteIndexOf(sprite->palette()));
            if (kinds.contains(kind) || kinds.size() >= 6) continue;
            kinds.insert(kind);
            for (bool shown : {false, true}) {
                const QString name = QStringLiteral("%1 #%2 %3%4")
                                         .arg(QFileInfo(file).fileName())
                                         .arg(i)
                                         .arg(kind)
                                         .arg(shown ? QStringLiteral(" transparent shown") : QString());
                QTest::newRow(qPrintable(name)) << file << int(i) << shown;
            }
        }
    }
    if (files.isEmpty()) QTest::newRow("no test data") << QString() << 0 << false;
}

void tst_SprRender::pixelTruth()
{
    QFETCH(QString, file);
    QFETCH(int, index);
    QFETCH(bool, transparentShown);
    TAVREL_REQUIRE_TESTDATA();
    QSprites sprites;
    QVERIFY(sprites.fromFile(file));
    const QSprite* sprite = sprites.at(uint(index));
    const QImage expected = sprite->image(QSpriteImagePalette::Default);
    QVERIFY(!expected.isNull());
    ViewHost view(expected.size() + QSize(80, 80));
    view.render.setSprites(&sprites);
    view.render.showTransparentColor(transparentShown);
    view.render.setMainAxis(QPoint(40 + sprite->offsetX(), 40 + sprite->offsetY()));
    view.render.setSprite(index);
    QCOMPARE(view.render.spriteRect(), QRect(QPoint(40, 40), expected.size()));
    const QImage shown = view.grab();
    QCOMPARE(compareSprite(shown, QPoint(40, 40), expected, transparentShown), QString());
    // Around the sprite the backdrop is untouched.
    QCOMPARE(shown.pixel(39, 39) | 0xff000000u, backdrop);
    QCOMPARE(shown.pixel(40 + expected.width(), 40 + expected.height()) | 0xff000000u, backdrop);
}

void tst_SprRender::pickedPaletteColoursTheSprite()
{
    TAVREL_REQUIRE_TESTDATA();
    const QStringList files = TestData::files({QStringLiteral("kfm.sff")});
    if (files.isEmpty()) QSKIP("kfm.sff is not in the test data");
    QSprites sprites;
    QVERIFY(sprites.fromFile(files.first()));
    QVERIFY(sprites.paletteCount() > 1);
    const QSprite* sprite = sprites.at(0);
    ViewHost view(sprite->imageProperties().width > 0 ? QSize(400, 400) : QSize(100, 100));
    view.render.setSprites(&sprites);
    view.render.setMainAxis(QPoint(40 + sprite->offsetX(), 40 + sprite->offsetY()));
    view.render.setSprite(0);
    // Each palette of the file in turn: the sprite's indices show that palette's colours, and an index
    // out of range goes back to the sprite's own.
    for (int picked : {1, int(sprites.paletteCount()) - 1, -1, int(sprites.paletteCount()) + 5}) {
        view.render.setPalette(picked);
        QImage expected = sprite->image(QSpriteImagePalette::None);
        QList<QRgb> table(256, 0);
        const QSpritePalette* palette = picked >= 0 && picked < int(sprites.paletteCount())
                                            ? sprites.paletteAt(uint(picked))
                                            : sprite->palette();
        for (int i = 0; i < 256; ++i)
            table[i] = palette->table()[i].toRgb();
        expected.setColorTable(table);
        QCOMPARE(compareSprite(view.grab(), QPoint(40, 40), expected, false), QString());
    }
}

void tst_SprRender::dragMovesTheAxis_data()
{
    QTest::addColumn<int>("zoomIndex");
    QTest::addColumn<QPoint>("screenDelta");
    QTest::addColumn<QPoint>("axisDelta");
    QTest::newRow("zoom 1") << 2 << QPoint(7, 5) << QPoint(-7, -5);
    QTest::newRow("zoom 3, whole pixels") << 4 << QPoint(21, -15) << QPoint(-7, 5);
    // A hand that moves less than a sprite pixel per step still gets there: remainders carry over.
    QTest::newRow("zoom 3, uneven") << 4 << QPoint(10, 0) << QPoint(-3, 0);
    QTest::newRow("zoom 1/2") << 1 << QPoint(8, -4) << QPoint(-16, 8);
}

void tst_SprRender::dragMovesTheAxis()
{
    QFETCH(int, zoomIndex);
    QFETCH(QPoint, screenDelta);
    QFETCH(QPoint, axisDelta);
    QSprites sprites;
    if (!sprites.fromFile(TestData::binDir() + QStringLiteral("/samples/Roan/Roan.sff")))
        QSKIP("the sample is not built next to the tests");
    ViewHost view(QSize(640, 480));
    view.render.setSprites(&sprites);
    view.render.setMainAxis(QPoint(320, 400));
    view.render.setZoomIndex(zoomIndex);
    view.render.setSprite(0);
    QSprite* sprite = sprites.at(0);
    const QPoint before(sprite->offsetX(), sprite->offsetY());
    QSignalSpy axisChanges(&view.render, &QSprRender::axisChanged);
    const QPoint inside = view.render.spriteRect().center();
    QCOMPARE(view.render.hitTest(inside), int(QSprRender::TargetSprite));
    dragBy(view.widget, inside, screenDelta);
    QCOMPARE(QPoint(sprite->offsetX(), sprite->offsetY()), before + axisDelta);
    QVERIFY(!axisChanges.isEmpty());
    QCOMPARE(axisChanges.last().first().toPoint(), before + axisDelta);
    // The picture follows the hand, and one undo takes the whole drag back.
    const double z = view.render.zoomFactor();
    const QPoint after = before + axisDelta;
    QCOMPARE(view.render.spriteRect().topLeft(), QPoint(int(320 - after.x() * z), int(400 - after.y() * z)));
    sprites.undoChange();
    QCOMPARE(QPoint(sprite->offsetX(), sprite->offsetY()), before);
    // With Control held the same drag pans the view and leaves the sprite alone.
    const QPoint axis = view.render.mainAxis();
    view.render.setSprite(0);
    dragBy(view.widget, view.render.spriteRect().center(), QPoint(10, 6), Qt::ControlModifier);
    QCOMPARE(QPoint(sprite->offsetX(), sprite->offsetY()), before);
    QCOMPARE(view.render.mainAxis(), axis + QPoint(10, 6));
}

void tst_SprRender::dragMovesAGuideLine_data()
{
    QTest::addColumn<int>("zoomIndex");
    QTest::addColumn<int>("screenDy");
    QTest::addColumn<int>("guideDy");
    QTest::newRow("zoom 1") << 2 << 30 << 30;
    QTest::newRow("zoom 3") << 4 << 30 << 10;
    QTest::newRow("zoom 3, up") << 4 << -45 << -15;
}

void tst_SprRender::dragMovesAGuideLine()
{
    QFETCH(int, zoomIndex);
    QFETCH(int, screenDy);
    QFETCH(int, guideDy);
    ViewHost view(QSize(640, 480));
    view.render.setMainAxis(QPoint(300, 240));
    view.render.setZoomIndex(zoomIndex);
    view.render.showGuides(true);
    view.render.setGuides(QPoint(-20, 5));
    const double z = view.render.zoomFactor();
    const int k = qMax(1, int(z));
    const QPoint onHorizontal(500, int(5 * z + 240 + (k >> 1)));
    QCOMPARE(view.render.hitTest(onHorizontal), int(QSprRender::TargetHorizontalGuide));
    dragBy(view.widget, onHorizontal, QPoint(17, screenDy));
    // A horizontal line moves only up and down.
    QCOMPARE(view.render.guides(), QPoint(-20, 5 + guideDy));
    const QPoint onVertical(int(-20 * z + 300 + (k >> 1)), 400);
    QCOMPARE(view.render.hitTest(onVertical), int(QSprRender::TargetVerticalGuide));
    dragBy(view.widget, onVertical, QPoint(screenDy, 9));
    QCOMPARE(view.render.guides(), QPoint(-20 + guideDy, 5 + guideDy));
    // The ruler strips only pan, also where a guide runs through them.
    QCOMPARE(view.render.hitTest(QPoint(10, onHorizontal.y())), int(QSprRender::TargetView));
}

void tst_SprRender::frameDragsAndBoxes()
{
    QSprites sprites;
    if (!sprites.fromFile(TestData::binDir() + QStringLiteral("/samples/Roan/Roan.sff")))
        QSKIP("the sample is not built next to the tests");
    const QSprite* first = sprites.at(0);
    const QString frameLine =
        QStringLiteral("%1,%2, 0,0, 5\n").arg(first->itemGroup()).arg(first->itemIndex());
    QAirDocument air(QStringLiteral("[Begin Action 0]\nClsn2: 2\n  Clsn2[0] = -10,-50, 10, 0\n"
                                    "  Clsn2[1] = -40,-90,-20,-70\n") +
                     frameLine + QStringLiteral("Clsn1: 1\n  Clsn1[0] = 20,-60, 45,-40\n") + frameLine);
    ViewHost view(QSize(640, 480));
    view.render.setRenderMode(QSprRender::AnimationMode);
    view.render.setSprites(&sprites);
    view.render.setAnimations(&air.model);
    view.render.setMainAxis(QPoint(300, 300));
    view.render.setZoomIndex(4); // 3X
    view.render.setAction(0);
    QCOMPARE(view.render.boxCount(), 2);

    // A box dragged by its middle moves by whole sprite pixels, and exactly its line is rewritten.
    const QString before = air.text();
    const QRect box = view.render.boxRect(0);
    QCOMPARE(box, QRect(QPoint(300 - 30, 300 - 150), QPoint(300 + 33 - 1, 300 + 3 - 1)));
    const QPoint grip = box.center() + QPoint(0, 20);
    dragBy(view.widget, grip, QPoint(-9, 6));
    QCOMPARE(air.model.at(0)->frameAt(0)->hitBoxes(QCollisionBoxType::Collision)->boxes.at(0)->rect(),
             QRect(QPoint(-13, -48), QPoint(7, 2)));
    QStringList changed;
    const QStringList oldLines = before.split(QLatin1Char('\n')),
                      newLines = air.text().split(QLatin1Char('\n'));
    QCOMPARE(newLines.size(), oldLines.size());
    for (int i = 0; i < oldLines.size(); ++i)
        if (oldLines.at(i) != newLines.at(i)) changed << newLines.at(i);
    QCOMPARE(changed, QStringList{QStringLiteral("  Clsn2[0] = -13, -48, 7, 2")});
    air.editor.document->undo();
    QCOMPARE(air.text(), before);

    // The bottom right handle widens the selected box from its press, not from each move.
    view.render.refreshBoxes();
    const QPoint middle = view.render.boxRect(0).center();
    QTest::mouseClick(view.widget, Qt::LeftButton, Qt::NoModifier, middle);
    QVERIFY(view.render.boxSelected(0));
    const QPoint corner = view.render.boxRect(0).bottomRight();
    QCOMPARE(view.render.hitTest(corner), int(QSprRender::TargetHandleBottomRight));
    dragBy(view.widget, corner, QPoint(30, 0));
    QCOMPARE(air.model.at(0)->frameAt(0)->hitBoxes(QCollisionBoxType::Collision)->boxes.at(0)->rect(),
             QRect(QPoint(-10, -50), QPoint(20, 0)));
    air.editor.document->undo();

    // Arrow keys move the selected box by one sprite pixel, Delete removes it; one undo each.
    view.render.refreshBoxes();
    QTest::mouseClick(view.widget, Qt::LeftButton, Qt::NoModifier, view.render.boxRect(0).center());
    QTest::keyClick(view.widget, Qt::Key_Right);
    QCOMPARE(air.model.at(0)->frameAt(0)->hitBoxes(QCollisionBoxType::Collision)->boxes.at(0)->rect(),
             QRect(QPoint(-9, -50), QPoint(11, 0)));
    air.editor.document->undo();
    QCOMPARE(air.text(), before);
    view.render.refreshBoxes();
    QTest::mouseClick(view.widget, Qt::LeftButton, Qt::NoModifier, view.render.boxRect(1).center());
    QTest::keyClick(view.widget, Qt::Key_Delete);
    QCOMPARE(air.model.at(0)->frameAt(0)->hitBoxes(QCollisionBoxType::Collision)->boxes.size(), 1);
    air.editor.document->undo();
    // The deleted line comes back with its own bytes.
    QCOMPARE(air.text(), before);
    const QString restored = air.text();

    // The second frame shows its own attack box and, having no collision boxes, none of the first's.
    view.render.setFrame(1);
    QCOMPARE(view.render.boxCount(), 1);

    // Dragging the sprite of a frame moves the frame's offset with the hand, in one undo step.
    view.render.setFrame(0);
    const QPoint inside = view.render.spriteRect().topLeft() + QPoint(2, 2);
    QCOMPARE(view.render.hitTest(inside), int(QSprRender::TargetSprite));
    dragBy(view.widget, inside, QPoint(12, -6));
    QCOMPARE(QPoint(air.model.at(0)->frameAt(0)->offsetX, air.model.at(0)->frameAt(0)->offsetY),
             QPoint(4, -2));
    air.editor.document->undo();
    QCOMPARE(air.text(), restored);
}

void tst_SprRender::drawnBoxesAndTheirEdgeCases()
{
    QAirDocument air(QStringLiteral("[Begin Action 7]\n0,0, 0,0, 5\n"));
    ViewHost view(QSize(640, 480));
    view.render.setRenderMode(QSprRender::AnimationMode);
    view.render.setAnimations(&air.model);
    view.render.setMainAxis(QPoint(300, 300));
    view.render.setAction(0);
    view.render.setBoxDrawing(true, int(QCollisionBoxType::Attack));
    // A box drawn at 1X from (310, 250) to (330, 280) becomes its sprite pixels, corners included.
    dragBy(view.widget, QPoint(310, 250), QPoint(20, 30));
    QAnimationFrame* frame = air.model.at(0)->frameAt(0);
    QVERIFY(frame->hitBoxes(QCollisionBoxType::Attack));
    QCOMPARE(frame->hitBoxes(QCollisionBoxType::Attack)->boxes.at(0)->rect(),
             QRect(QPoint(10, -50), QPoint(30, -20)));
    QCOMPARE(view.render.boxCount(), 1);
    // One screen column wide is no box; neither is one whose top equals its own right edge value.
    dragBy(view.widget, QPoint(400, 200), QPoint(0, 40));
    QCOMPARE(view.render.boxCount(), 1);
    dragBy(view.widget, QPoint(350, 360), QPoint(10, 40));
    QCOMPARE(view.render.boxCount(), 1);
    QCOMPARE(frame->hitBoxes(QCollisionBoxType::Attack)->boxes.size(), 1);
    // The right button leaves drawing.
    QSignalSpy exits(&view.render, &QSprRender::clsnModeExit);
    QTest::mouseClick(view.widget, Qt::RightButton, Qt::NoModifier, QPoint(200, 200));
    QCOMPARE(exits.count(), 1);
    dragBy(view.widget, QPoint(100, 100), QPoint(40, 40));
    QCOMPARE(frame->hitBoxes(QCollisionBoxType::Attack)->boxes.size(), 1);
}

void tst_SprRender::boxClipboardAndFlip()
{
    QAirDocument air(QStringLiteral("[Begin Action 0]\nClsn2Default: 1\n  Clsn2[0] = -1,-2, 3, 4\n"
                                    "Clsn1: 2\n  Clsn1[0] = 5,6,7,8\n  Clsn1[1] = 9,10,11,12\n0,0, 0,0, 5\n"
                                    "0,0, 0,0, 5\n"));
    ViewHost view(QSize(640, 480));
    view.render.setRenderMode(QSprRender::AnimationMode);
    view.render.setAnimations(&air.model);
    view.render.setMainAxis(QPoint(300, 300));
    view.render.setZoomIndex(5); // 4X, so the boxes are large enough to click
    view.render.setAction(0);
    QCOMPARE(view.render.boxCount(), 3);
    for (int i = 0; i < 3; ++i)
        QTest::mouseClick(view.widget, Qt::LeftButton, Qt::ShiftModifier, view.render.boxRect(i).center());
    view.render.copyBoxes();
    QCOMPARE(QApplication::clipboard()->text(),
             QStringLiteral("Clsn2Default: 1\n  Clsn2[0] = -1, -2, 3, 4\nClsn1: 2\n  Clsn1[0] = 5, 6, 7, 8\n"
                            "  Clsn1[1] = 9, 10, 11, 12\n"));
    // The defaults reach the next frame; pasting gives it boxes of its own.
    view.render.setFrame(1);
    QCOMPARE(view.render.boxCount(), 1);
    view.render.pasteBoxes();
    QCOMPARE(view.render.boxCount(), 3);
    // Text with an action header is never pasted as boxes.
    QApplication::clipboard()->setText(QStringLiteral("[Begin Action 3]\nClsn1: 1\n  Clsn1[0] = 0,0,1,1\n"));
    view.render.pasteBoxes();
    QCOMPARE(view.render.boxCount(), 3);

    // Flipping the kind of the attack boxes of the first frame makes them collision boxes.
    view.render.setFrame(0);
    QTest::mouseClick(view.widget, Qt::LeftButton, Qt::NoModifier, view.render.boxRect(1).center());
    view.render.flipBoxes(false);
    QAnimationFrame* frame = air.model.at(0)->frameAt(0);
    QVERIFY(frame->hitBoxes(QCollisionBoxType::Collision));
    QCOMPARE(frame->hitBoxes(QCollisionBoxType::Collision)->boxes.at(0)->rect(),
             QRect(QPoint(5, 6), QPoint(7, 8)));
    QCOMPARE(frame->hitBoxes(QCollisionBoxType::Attack)->boxes.size(), 1);
}

void tst_SprRender::zoomLimits()
{
    QSprites sprites;
    QSprite* tiny = sprites.add();
    QImage pixel(1, 5, QImage::Format_Indexed8);
    pixel.setColorTable(QList<QRgb>(256, qRgb(1, 2, 3)));
    pixel.fill(1);
    tiny->setImage(pixel);
    ViewHost view(QSize(300, 300));
    view.render.setSprites(&sprites);
    view.render.setZoomIndex(0);
    view.render.setSprite(0);
    // A sprite one pixel wide raises the zoom, and zooming out stops at index 2.
    QCOMPARE(view.render.zoomIndex(), 2);
    view.render.zoomOut();
    QCOMPARE(view.render.zoomIndex(), 2);
    // The wheel stops short of the two largest factors; a step below 0 stays at 0.
    for (int i = 0; i < 20; ++i) {
        QWheelEvent notch(QPointF(150, 150), view.widget->mapToGlobal(QPointF(150, 150)), QPoint(),
                          QPoint(0, 120), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(view.widget, &notch);
    }
    QCOMPARE(view.render.zoomIndex(), 9);
    view.render.setZoomIndex(255);
    QCOMPARE(view.render.zoomIndex(), 0);
    view.render.setZoomIndex(40);
    QCOMPARE(view.render.zoomIndex(), 11);
    view.render.zoomActual();
    QCOMPARE(view.render.zoomFactor(), 1.0);
}

void tst_SprRender::decodedImagesAreCachedAndFollowEdits()
{
    QSprites sprites;
    if (!sprites.fromFile(TestData::binDir() + QStringLiteral("/samples/Roan/Roan.sff")))
        QSKIP("the sample is not built next to the tests");
    ViewHost view(QSize(400, 400));
    view.render.setSprites(&sprites);
    view.render.setMainAxis(QPoint(100 + sprites.at(0)->offsetX(), 100 + sprites.at(0)->offsetY()));
    for (uint i = 0; i < sprites.count(); ++i)
        view.render.setSprite(int(i));
    for (uint i = 0; i < sprites.count(); ++i)
        view.render.setSprite(int(i));
    QDecodedImageCache& cache = view.render.decodedImages();
    QVERIFY(cache.hits() >= sprites.count() - 1);
    QVERIFY(cache.bytes() <= cache.budgetBytes());
    // New pixels are shown at once, never the cached old ones; undo brings the old ones back.
    view.render.setSprite(0);
    QSprite* sprite = sprites.at(0);
    QImage changed = sprite->image(QSpriteImagePalette::Default);
    changed.fill(3);
    sprite->setImage(changed);
    view.render.reloadSprite();
    QCOMPARE(compareSprite(view.grab(), view.render.spriteRect().topLeft(), sprite->image(), false),
             QString());
    sprites.undoChange();
    view.render.reloadSprite();
    QCOMPARE(compareSprite(view.grab(), view.render.spriteRect().topLeft(), sprite->image(), false),
             QString());
}

void tst_SprRender::lentLookLastsUntilTheNextFrame()
{
    QSprites sprites;
    if (!sprites.fromFile(TestData::binDir() + QStringLiteral("/samples/Roan/Roan.sff")))
        QSKIP("the sample is not built next to the tests");
    const QSprite* first = sprites.at(0);
    const QString line = QStringLiteral("%1,%2, 0,0, 5\n").arg(first->itemGroup()).arg(first->itemIndex());
    QAirDocument air(QStringLiteral("[Begin Action 0]\n") + line + line);
    const QString text = air.text();
    ViewHost view(QSize(640, 480));
    view.render.setRenderMode(QSprRender::AnimationMode);
    view.render.setSprites(&sprites);
    view.render.setAnimations(&air.model);
    view.render.setMainAxis(QPoint(300, 300));
    view.render.setZoomIndex(4); // 3X
    view.render.setAction(0);
    const QRect own = view.render.spriteRect();
    // Playback lends the frame an offset between two frames: the picture moves, the text does not.
    view.render.setFrameLook(QPoint(4, -2), 1, 1, 0, 256, 256);
    QCOMPARE(view.render.spriteRect(), own.translated(12, -6));
    QCOMPARE(air.text(), text);
    // The next frame shows its own look again.
    view.render.setFrame(1);
    QCOMPARE(view.render.spriteRect(), own);
}

QTEST_MAIN(tst_SprRender)
#include "tst_SprRender.moc"
