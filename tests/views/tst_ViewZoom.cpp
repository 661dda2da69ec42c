// The sprite view's zoom without a widget: the index rules of every way to zoom, the point that stays
// put, and the mapping of screen rectangles to sprite pixels.

#include "QViewZoom.h"

#include <QTest>

class tst_ViewZoom : public QObject
{
    Q_OBJECT

    const QPoint centre{400, 300};

private Q_SLOTS:
    void indexRules()
    {
        QViewZoom zoom;
        QCOMPARE(zoom.factor(), 1.0);
        QCOMPARE(QViewZoom::factorOf(QViewZoom::SmallRange, QViewZoom::actualIndex(QViewZoom::SmallRange)),
                 1.0);
        const QPoint axis(10, 20);
        QCOMPARE(zoom.setIndex(-1, axis, centre, QViewZoom::SpriteAxis), axis);
        QCOMPARE(zoom.index(), 0);
        zoom.zoomOut(QSize(100, 100), axis, centre, QViewZoom::SpriteAxis);
        QCOMPARE(zoom.index(), 0);
        zoom.setIndex(40, axis, centre, QViewZoom::SpriteAxis);
        QCOMPARE(zoom.index(), 11);
        QCOMPARE(zoom.factor(), 10.0);
        zoom.setRow(QViewZoom::SmallRange);
        QCOMPARE(zoom.factor(), 4.0);
        zoom.zoomActual(axis, centre, QViewZoom::SpriteAxis);
        QCOMPARE(zoom.index(), 3);

        // A tiny sprite never shrinks below a pixel.
        zoom.setIndex(2, axis, centre, QViewZoom::SpriteAxis);
        zoom.zoomOut(QSize(1, 30), axis, centre, QViewZoom::SpriteAxis);
        QCOMPARE(zoom.index(), 2);
        zoom.zoomOut(QSize(3, 30), axis, centre, QViewZoom::SpriteAxis);
        QCOMPARE(zoom.index(), 1);
        zoom.zoomOut(QSize(3, 30), axis, centre, QViewZoom::SpriteAxis);
        QCOMPARE(zoom.index(), 1);

        // Whole notches only, and never past 9 by the wheel.
        zoom.wheel(60, axis, centre, QViewZoom::SpriteAxis);
        QCOMPARE(zoom.index(), 1);
        zoom.wheel(120 * 20, axis, centre, QViewZoom::SpriteAxis);
        QCOMPARE(zoom.index(), 9);
        zoom.wheel(-240, axis, centre, QViewZoom::SpriteAxis);
        QCOMPARE(zoom.index(), 7);

        zoom.setIndex(0, axis, centre, QViewZoom::SpriteAxis);
        zoom.fitSprite(QSize(3, 8));
        QCOMPARE(zoom.index(), 1);
        zoom.fitSprite(QSize(8, 1));
        QCOMPARE(zoom.index(), 2);
        zoom.fitSprite(QSize(8, 1));
        QCOMPARE(zoom.index(), 2);
    }

    // Zooming about the view's middle keeps the sprite pixel there; about the sprite's axis the axis
    // stays.
    void pointThatStays()
    {
        QViewZoom zoom;
        const QPoint axis(250, 250);
        const QPointF before = zoom.toSprite(centre, axis);
        QPoint moved = axis;
        for (int step = 0; step < 5; ++step) {
            moved = zoom.zoomIn(moved, centre, QViewZoom::WorkspaceCentre);
            QVERIFY(qAbs(zoom.toSprite(centre, moved).x() - before.x()) <= 1.0 / zoom.factor());
            QVERIFY(qAbs(zoom.toSprite(centre, moved).y() - before.y()) <= 1.0 / zoom.factor());
        }
        QCOMPARE(zoom.zoomIn(axis, centre, QViewZoom::SpriteAxis), axis);
    }

    void screenToModel()
    {
        QViewZoom zoom;
        const QPoint axis(100, 50);
        zoom.setIndex(3, axis, centre, QViewZoom::SpriteAxis); // 2X
        // Drawn from bottom right to top left: 8x6 screen pixels are 4x3 sprite pixels.
        QCOMPARE(zoom.screenToModel(QRect(QPoint(107, 55), QPoint(100, 50)), axis), QRect(0, 0, 4, 3));
        QCOMPARE(zoom.screenToModel(QRect(QPoint(90, 40), QPoint(91, 41)), axis), QRect(-5, -5, 1, 1));
        QCOMPARE(zoom.toScreen(QPointF(-5, -5), axis), QPoint(90, 40));
        zoom.setIndex(0, axis, centre, QViewZoom::SpriteAxis); // 0.25X
        QCOMPARE(zoom.toSprite(QPointF(104, 54), axis), QPointF(16, 16));
    }
};

QTEST_GUILESS_MAIN(tst_ViewZoom)
#include "tst_ViewZoom.moc"
