// The playback clock measured in ticks, not wall time: which frame each tick of ten seconds shows,
// where LoopStart sends the loop, that a negative time holds for good, and how interpolation marks
// bend a frame's look on the way to the next one.

#include "QAirDocument.h"
#include "QAnimation.h"
#include "QAnimationFrame.h"
#include "QAnimationPlayer.h"
#include "QAnimations.h"
#include "QTextElementRegistry.h"
#include "TestData.h"

#include <QTest>

class tst_AnimationPlayer : public QObject
{
    Q_OBJECT

    // The frame shown at each tick, one digit (or letter from 10) per tick.
    static QString schedule(QAnimation* action, int ticks, QList<int>* counts = nullptr)
    {
        QAnimationPlayer player;
        player.start(action, 0);
        QString shown;
        for (int i = 0; i < ticks; ++i) {
            player.tick();
            const int frame = player.frameIndex();
            shown += QString::number(frame, 36);
            if (counts) {
                while (counts->size() <= frame)
                    counts->append(0);
                ++(*counts)[frame];
            }
        }
        return shown;
    }

private Q_SLOTS:
    void initTestCase() { registerTextElements(); }
    void cleanupTestCase() { unregisterTextElements(); }

    void tenSeconds_data()
    {
        QTest::addColumn<QString>("air");
        QTest::addColumn<QString>("start");
        QTest::addColumn<QList<int>>("counts");
        // 600 ticks are ten seconds at the game's speed.
        QTest::newRow("plain loop") << "[Begin Action 0]\n0,0, 0,0, 5\n0,1, 0,0, 3\n"
                                    << "0000011100000111" << QList<int>{375, 225};
        QTest::newRow("loop start") << "[Begin Action 0]\n0,0, 0,0, 4\nLoopStart\n0,1, 0,0, 2\n0,2, 0,0, 3\n"
                                    << "0000112221122211" << QList<int>{4, 239, 357};
        QTest::newRow("negative time holds") << "[Begin Action 0]\n0,0, 0,0, 3\n0,1, 0,0, -1\n0,2, 0,0, 5\n"
                                             << "0001111111111111" << QList<int>{3, 597};
        QTest::newRow("one frame") << "[Begin Action 0]\n0,0, 0,0, 7\n"
                                   << "0000000000000000" << QList<int>{600};
        QTest::newRow("a mark of another kind is no loop start")
            << "[Begin Action 0]\n0,0, 0,0, 2\nInterpolate Offset\n0,1, 0,0, 2\n"
            << "0011001100110011" << QList<int>{300, 300};
    }

    void tenSeconds()
    {
        QFETCH(QString, air);
        QFETCH(QString, start);
        QFETCH(QList<int>, counts);
        QAirDocument document(air);
        QAnimation* action = document.model.at(0);
        QVERIFY(action);
        QList<int> shown;
        const QString ticks = schedule(action, 600, &shown);
        QCOMPARE(ticks.left(start.size()), start);
        QCOMPARE(shown, counts);
    }

    // Every frame of the real standing action is shown exactly its time, in order, over ten seconds.
    void realActionShowsEachFrameItsTime()
    {
        TAVREL_REQUIRE_TESTDATA();
        QAirDocument document;
        QVERIFY(document.model.fromFile(TestData::root() +
                                        QStringLiteral("/elecbyte-mugen11/chars/kfm/kfm.air")));
        QAnimation* action = document.model.at(uint(document.model.findByNumber(0, 0)));
        QVERIFY(action);
        QAnimationPlayer player;
        player.start(action, 0);
        int expectedFrame = 0;
        int left = action->frameAt(0)->time;
        for (int tick = 0; tick < 600; ++tick) {
            if (left == 0) {
                expectedFrame = (expectedFrame + 1) % action->frameCount();
                left = action->frameAt(uint(expectedFrame))->time;
            }
            const bool changed = player.tick();
            QCOMPARE(player.frameIndex(), expectedFrame);
            QCOMPARE(changed, tick == 0 || left == action->frameAt(uint(expectedFrame))->time);
            --left;
        }
    }

    void interpolation_data()
    {
        QTest::addColumn<QString>("air");
        QTest::addColumn<int>("tick");
        QTest::addColumn<QPoint>("offset");
        QTest::addColumn<double>("scaleX");
        QTest::addColumn<double>("scaleY");
        QTest::addColumn<double>("angle");
        QTest::addColumn<QPoint>("blend");
        QTest::newRow("blend halfway") << "[Begin Action 0]\n0,0, 0,0, 10, , AS0D256\nInterpolate Blend\n"
                                          "0,0, 0,0, 10, , AS256D0\n"
                                       << 5 << QPoint(0, 0) << 1.0 << 1.0 << 0.0 << QPoint(128, 128);
        QTest::newRow("blend is whole numbers")
            << "[Begin Action 0]\n0,0, 0,0, 3, , AS0D0\nInterpolate Blend\n"
               "0,0, 0,0, 3, , AS100D10\n"
            << 1 << QPoint(0, 0) << 1.0 << 1.0 << 0.0 << QPoint(33, 3);
        QTest::newRow("offset") << "[Begin Action 0]\n0,0, 0,0, 4\nInterpolate Offset\n0,0, 8,-4, 4\n"
                                << 2 << QPoint(4, -2) << 1.0 << 1.0 << 0.0 << QPoint(256, 256);
        QTest::newRow("scale") << "[Begin Action 0]\n0,0, 0,0, 4\nInterpolate Scale\n0,0, 0,0, 4, , , 3,2\n"
                               << 1 << QPoint(0, 0) << 1.5 << 1.25 << 0.0 << QPoint(256, 256);
        QTest::newRow("angle")
            << "[Begin Action 0]\n0,0, 0,0, 4\nInterpolate Angle\n0,0, 0,0, 4, , , , , 90\n"
            << 2 << QPoint(0, 0) << 1.0 << 1.0 << 45.0 << QPoint(256, 256);
        // The mark stands on the frame it leads to: the way out of that frame is not bent.
        QTest::newRow("way back unbent")
            << "[Begin Action 0]\n0,0, 0,0, 4\nInterpolate Offset\n0,0, 8,-4, 4\n"
            << 6 << QPoint(8, -4) << 1.0 << 1.0 << 0.0 << QPoint(256, 256);
        QTest::newRow("loop back to a marked first frame")
            << "[Begin Action 0]\nInterpolate Angle\n0,0, 0,0, 2, , , , , 90\n0,0, 0,0, 2\n"
            << 3 << QPoint(0, 0) << 1.0 << 1.0 << 45.0 << QPoint(256, 256);
        QTest::newRow("no mark, no bend") << "[Begin Action 0]\n0,0, 0,0, 4\n0,0, 8,-4, 4, , , 3,2, 90\n"
                                          << 2 << QPoint(0, 0) << 1.0 << 1.0 << 0.0 << QPoint(256, 256);
    }

    void interpolation()
    {
        QFETCH(QString, air);
        QFETCH(int, tick);
        QAirDocument document(air);
        QAnimationPlayer player;
        player.start(document.model.at(0), 0);
        for (int i = 0; i <= tick; ++i)
            player.tick();
        const QAnimationPlayer::Look look = player.look();
        QTEST(look.offset, "offset");
        QTEST(look.scaleX, "scaleX");
        QTEST(look.scaleY, "scaleY");
        QTEST(look.angle, "angle");
        QTEST(QPoint(look.source, look.destination), "blend");
    }

    // The clock reads the action every tick: a frame retimed or removed while playing takes effect.
    void editsWhilePlaying()
    {
        QAirDocument document(QStringLiteral("[Begin Action 0]\n0,0, 0,0, 3\n0,1, 0,0, 3\n0,2, 0,0, 3\n"));
        QAnimation* action = document.model.at(0);
        QAnimationPlayer player;
        player.start(action, 0);
        player.tick();
        action->frameAt(0)->setTime(1);
        QVERIFY(player.tick());
        QCOMPARE(player.frameIndex(), 1);
        for (int i = 0; i < 3; ++i)
            player.tick();
        QCOMPARE(player.frameIndex(), 2);
        action->frameAt(2)->remove(true);
        action->frameAt(1)->remove(true);
        player.tick();
        QCOMPARE(player.frameIndex(), 0);
        QCOMPARE(player.ticksInFrame(), 0);
        player.stop();
        QVERIFY(!player.isRunning());
        QVERIFY(!player.tick());
    }
};

QTEST_MAIN(tst_AnimationPlayer)
#include "tst_AnimationPlayer.moc"
