// Where the sprite view places what it draws: truncation towards zero, mirrored axes of flipped
// frames, crosses scaled by the whole zoom, collision boxes and their handles.

#include "QSprGeometry.h"

#include <QTest>

class tst_SprGeometry : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void spritesAndFrames()
    {
        const QPoint axis(250, 250);
        // A 10x20 sprite with its axis at 4,18 at 1X stands left of and above the main axis.
        QCOMPARE(QSprGeometry::sprite(QSize(10, 20), QPoint(4, 18), 1.0, axis), QRect(246, 232, 10, 20));
        // At 0.75X, 250 - 4 * 0.75 = 247 and a width of 7.5 truncates to 7.
        QCOMPARE(QSprGeometry::sprite(QSize(10, 20), QPoint(4, 18), 0.75, axis), QRect(247, 236, 7, 15));
        QVERIFY(QSprGeometry::sprite(QSize(), QPoint(4, 18), 1.0, axis).isNull());

        // A flipped frame mirrors the axis (width - x - 1) before its offset is taken off.
        const QSprGeometry::Frame flipped{QPoint(3, -2), true, false};
        QCOMPARE(QSprGeometry::axisInFrame(QPoint(4, 18), QSize(10, 20), flipped),
                 QPoint(10 - 4 - 1 - 3, 20));
        const QSprGeometry::Frame both{QPoint(0, 0), true, true};
        QCOMPARE(QSprGeometry::axisInFrame(QPoint(0, 0), QSize(10, 20), both), QPoint(9, 19));

        // Negative positions truncate towards zero, not down: -1.5 + 0 becomes -1.
        QCOMPARE(QSprGeometry::placed(QPoint(-3, -3), QSize(5, 5), 0.5, QPoint(0, 0)), QRect(-1, -1, 2, 2));
    }

    void crossesAndBoxes()
    {
        const QPoint axis(100, 100);
        // Below 1X the cross keeps its size; at 2.5X it is drawn twice as large.
        QCOMPARE(QSprGeometry::axisCross(QSize(9, 9), 0.5, axis), QRect(96, 96, 9, 9));
        QCOMPARE(QSprGeometry::axisCross(QSize(9, 9), 2.5, axis), QRect(92, 92, 18, 18));
        QCOMPARE(QSprGeometry::crossAt(QPoint(10, -4), QSize(9, 9), 2.0, axis), QRect(112, 84, 18, 18));

        // A model box of 4x2 pixels at 2X covers 8x4 screen pixels.
        const QRect screen = QSprGeometry::box(QRect(QPoint(-2, -1), QPoint(1, 0)), 2.0, axis);
        QCOMPARE(screen, QRect(96, 98, 8, 4));
        const auto points = QSprGeometry::handles({screen, QRect(QPoint(90, 100), QPoint(95, 110))});
        QCOMPARE(points[0], QPoint(90, 98));
        QCOMPARE(points[1], QPoint(96, 98));
        QCOMPARE(points[3], QPoint(103, 104));
        QCOMPARE(points[7], QPoint(103, 110));
    }
};

QTEST_GUILESS_MAIN(tst_SprGeometry)
#include "tst_SprGeometry.moc"
