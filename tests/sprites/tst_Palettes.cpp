// The colour operations of QRGBPalette on a table of 256 colours, with results worked out by hand.

#include "SpriteTestKit.h"

#include <QSignalSpy>
#include <QTest>

#include <array>
#include <cstring>
#include <functional>

using Table = std::array<QRGBPal, 256>;
using Mask = std::array<uchar, 256>;

using PaletteChange = std::function<void(QRGBPalette&)>;

Q_DECLARE_METATYPE(PaletteChange)

namespace {

Table filled(const QRGBPal& colour)
{
    Table table;
    table.fill(colour);
    return table;
}

// Every entry different: (i, 255 - i, i / 2), opaque but for colour 0.
Table ramp()
{
    Table table;
    for (int i = 0; i < 256; ++i)
        table[i] = QRGBPal(uchar(i), uchar(255 - i), uchar(i / 2), i == 0 ? 0 : 255);
    return table;
}

Mask maskOf(std::initializer_list<int> positions)
{
    Mask mask{};
    for (int position : positions)
        mask[position] = 1;
    return mask;
}

} // namespace

class tst_Palettes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void nearest_data()
    {
        QTest::addColumn<QList<int>>("positions");
        QTest::addColumn<QList<QRGBPal>>("colours");
        QTest::addColumn<QRGBPal>("query");
        QTest::addColumn<int>("expected");
        QTest::newRow("exact") << QList<int>{7} << QList<QRGBPal>{{100, 150, 200}} << QRGBPal(100, 150, 200)
                               << 7;
        QTest::newRow("equal colours: the earliest")
            << QList<int>{9, 3} << QList<QRGBPal>{{50, 50, 50}, {50, 50, 50}} << QRGBPal(50, 50, 50) << 3;
        QTest::newRow("equal distance: the earliest")
            << QList<int>{4, 6} << QList<QRGBPal>{{0, 0, 0}, {20, 0, 0}} << QRGBPal(10, 0, 0) << 4;
        QTest::newRow("equal distance: the alpha decides")
            << QList<int>{2, 5} << QList<QRGBPal>{{60, 60, 60, 0}, {60, 60, 60, 255}}
            << QRGBPal(60, 60, 60, 255) << 5;
        // 90 - 95 is 251 as a byte, 110 - 95 is 15: the entry above the wanted alpha wins.
        QTest::newRow("alpha difference is a byte")
            << QList<int>{2, 5} << QList<QRGBPal>{{60, 60, 60, 90}, {60, 60, 60, 110}}
            << QRGBPal(60, 60, 60, 95) << 5;
        QTest::newRow("distance beats alpha")
            << QList<int>{2, 5} << QList<QRGBPal>{{61, 60, 60, 95}, {63, 60, 60, 95}}
            << QRGBPal(60, 60, 60, 0) << 2;
    }

    void nearest()
    {
        QFETCH(QList<int>, positions);
        QFETCH(QList<QRGBPal>, colours);
        QFETCH(QRGBPal, query);
        QFETCH(int, expected);
        Table table = filled(QRGBPal(255, 255, 255));
        table[0].a = 0;
        for (int i = 0; i < positions.size(); ++i)
            table[positions.at(i)] = colours.at(i);
        QRGBPalette palette(table.data());
        QCOMPARE(int(palette.nearest(query)), expected);
    }

    void lastUsed_data()
    {
        QTest::addColumn<QList<int>>("different");
        QTest::addColumn<int>("expected");
        QTest::newRow("all equal") << QList<int>{} << 0;
        QTest::newRow("first 41 used") << QList<int>{0, 1, 17, 40} << 40;
        QTest::newRow("only 254") << QList<int>{254} << 254;
        QTest::newRow("only colour 0") << QList<int>{0} << 0;
    }

    void lastUsed()
    {
        QFETCH(QList<int>, different);
        QFETCH(int, expected);
        Table table = filled(QRGBPal(9, 9, 9));
        for (int i : different)
            table[i] = QRGBPal(9, 9, 9, 8);
        QCOMPARE(int(QRGBPalette(table.data()).lastUsed()), expected);
    }

    void gradientBetweenPositions_data()
    {
        QTest::addColumn<int>("from");
        QTest::addColumn<QRGBPal>("a");
        QTest::addColumn<int>("to");
        QTest::addColumn<QRGBPal>("b");
        QTest::addColumn<QList<int>>("positions");
        QTest::addColumn<QList<QRGBPal>>("expected");
        QTest::newRow("black to white")
            << 0 << QRGBPal(0, 0, 0) << 255 << QRGBPal(255, 255, 255) << QList<int>{0, 128, 255}
            << QList<QRGBPal>{{0, 0, 0}, {128, 128, 128}, {255, 255, 255}};
        QTest::newRow("mixed directions")
            << 10 << QRGBPal(0, 100, 200) << 20 << QRGBPal(100, 0, 200) << QList<int>{9, 10, 15, 20, 21}
            << QList<QRGBPal>{{7, 7, 7}, {0, 100, 200}, {50, 50, 200}, {100, 0, 200}, {7, 7, 7}};
        QTest::newRow("truncated steps up")
            << 0 << QRGBPal(0, 0, 0) << 3 << QRGBPal(10, 10, 10) << QList<int>{0, 1, 2, 3}
            << QList<QRGBPal>{{0, 0, 0}, {3, 3, 3}, {6, 6, 6}, {10, 10, 10}};
        QTest::newRow("truncated steps down")
            << 0 << QRGBPal(10, 10, 10) << 3 << QRGBPal(0, 0, 0) << QList<int>{0, 1, 2, 3}
            << QList<QRGBPal>{{10, 10, 10}, {7, 7, 7}, {4, 4, 4}, {0, 0, 0}};
        QTest::newRow("positions given backwards")
            << 3 << QRGBPal(10, 10, 10) << 0 << QRGBPal(0, 0, 0) << QList<int>{0, 1, 2, 3}
            << QList<QRGBPal>{{0, 0, 0}, {3, 3, 3}, {6, 6, 6}, {10, 10, 10}};
        QTest::newRow("alpha ramps too")
            << 1 << QRGBPal(0, 0, 0, 0) << 3 << QRGBPal(0, 0, 0, 200) << QList<int>{1, 2, 3}
            << QList<QRGBPal>{{0, 0, 0, 0}, {0, 0, 0, 100}, {0, 0, 0, 200}};
        QTest::newRow("one position") << 5 << QRGBPal(1, 2, 3) << 5 << QRGBPal(4, 5, 6) << QList<int>{4, 5, 6}
                                      << QList<QRGBPal>{{7, 7, 7}, {1, 2, 3}, {7, 7, 7}};
    }

    void gradientBetweenPositions()
    {
        QFETCH(int, from);
        QFETCH(QRGBPal, a);
        QFETCH(int, to);
        QFETCH(QRGBPal, b);
        QFETCH(QList<int>, positions);
        QFETCH(QList<QRGBPal>, expected);
        Table table = filled(QRGBPal(7, 7, 7));
        QRGBPalette(table.data()).gradient(uchar(from), a, uchar(to), b);
        for (int i = 0; i < positions.size(); ++i)
            QCOMPARE(table[positions.at(i)], expected.at(i));
    }

    void gradientOverMask()
    {
        Table table = filled(QRGBPal(7, 7, 7));
        const Mask mask = maskOf({2, 5, 9});
        QRGBPalette palette(table.data());
        palette.gradient(mask.data(), QRGBPal(0, 0, 0), QRGBPal(90, 180, 30));
        QCOMPARE(table[2], QRGBPal(0, 0, 0));
        QCOMPARE(table[5], QRGBPal(45, 90, 15));
        QCOMPARE(table[9], QRGBPal(90, 180, 30));
        QCOMPARE(table[3], QRGBPal(7, 7, 7));
        QCOMPARE(table[255], QRGBPal(7, 7, 7));

        palette.gradient(nullptr, QRGBPal(0, 0, 0), QRGBPal(255, 0, 0));
        QCOMPARE(table[0], QRGBPal(0, 0, 0));
        QCOMPARE(table[100], QRGBPal(100, 0, 0));
        QCOMPARE(table[255], QRGBPal(255, 0, 0));

        const Mask single = maskOf({40});
        palette.gradient(single.data(), QRGBPal(1, 1, 1), QRGBPal(2, 2, 2));
        QCOMPARE(table[40], QRGBPal(1, 1, 1));
    }

    void replaceDuplicates_data()
    {
        QTest::addColumn<QList<int>>("equal");
        QTest::addColumn<QList<int>>("replaced");
        QTest::newRow("a pair: the lower one") << QList<int>{3, 8} << QList<int>{3};
        QTest::newRow("three: all but the highest") << QList<int>{2, 4, 6} << QList<int>{2, 4};
        QTest::newRow("colour 0 takes no part") << QList<int>{0, 5} << QList<int>{};
        QTest::newRow("position 1 against 255") << QList<int>{1, 255} << QList<int>{1};
    }

    void replaceDuplicates()
    {
        QFETCH(QList<int>, equal);
        QFETCH(QList<int>, replaced);
        Table table = ramp();
        for (int i : equal)
            table[i] = QRGBPal(200, 1, 2, 255);
        const Table before = table;
        QRGBPalette(table.data()).replaceDuplicates(QRGBPal(255, 0, 255, 0));
        for (int i = 0; i < 256; ++i)
            QCOMPARE(table[i], replaced.contains(i) ? QRGBPal(255, 0, 255, 255) : before[i]);
    }

    void replaceDuplicatesOfOneColour()
    {
        Table table = filled(QRGBPal(7, 7, 7));
        QRGBPalette(table.data()).replaceDuplicates(QRGBPal(255, 0, 255));
        QCOMPARE(table[0], QRGBPal(7, 7, 7));
        QCOMPARE(table[255], QRGBPal(7, 7, 7));
        for (int i = 1; i < 255; ++i)
            QCOMPARE(table[i], QRGBPal(255, 0, 255));
    }

    void reverse_data()
    {
        QTest::addColumn<QList<int>>("selection");
        QTest::addColumn<bool>("keepAlpha");
        // Position of each entry after the change: pairs of (position, old position).
        QTest::addColumn<QList<int>>("moves");
        QTest::newRow("all") << QList<int>{} << false << QList<int>{0, 255, 1, 254, 127, 128, 255, 0};
        QTest::newRow("range 10 to 13") << QList<int>{10, 11, 12, 13} << false
                                        << QList<int>{10, 13, 11, 12, 12, 11, 13, 10, 9, 9, 14, 14};
        QTest::newRow("odd count: the middle stays")
            << QList<int>{1, 5, 9} << false << QList<int>{1, 9, 5, 5, 9, 1, 0, 0, 255, 255};
        QTest::newRow("keepAlpha leaves alphas alone when 0 and 255 stay")
            << QList<int>{0, 40} << true << QList<int>{0, 40, 40, 0};
    }

    void reverse()
    {
        QFETCH(QList<int>, selection);
        QFETCH(bool, keepAlpha);
        QFETCH(QList<int>, moves);
        Table table = ramp();
        const Table before = table;
        Mask mask{};
        for (int i : selection)
            mask[i] = 1;
        QRGBPalette(table.data()).reverse(selection.isEmpty() ? nullptr : mask.data(), keepAlpha);
        for (int i = 0; i < moves.size(); i += 2)
            QCOMPARE(table[moves.at(i)], before[moves.at(i + 1)]);
    }

    void reverseKeepingAlpha()
    {
        Table table = ramp();
        const Table before = table;
        QRGBPalette(table.data()).reverse(nullptr, true);
        QCOMPARE(table[0], QRGBPal(before[255].r, before[255].g, before[255].b, 0));
        QCOMPARE(table[255], QRGBPal(before[0].r, before[0].g, before[0].b, 255));
        QCOMPARE(table[1], before[254]);
    }

    void transform_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<QRGBPal>("colour");
        QTest::addColumn<QRGBPal>("expected");
        // (240, 100, 20) has the grey (240 + 100 + 20) / 3 = 120.
        const QRGBPal c(240, 100, 20, 77);
        QTest::newRow("1 red and blue") << 1 << c << QRGBPal(20, 100, 240, 77);
        QTest::newRow("2 green and blue") << 2 << c << QRGBPal(240, 20, 100, 77);
        QTest::newRow("3 red and green") << 3 << c << QRGBPal(100, 240, 20, 77);
        QTest::newRow("4 blue and green") << 4 << c << QRGBPal(240, 20, 100, 77);
        QTest::newRow("5 green and red") << 5 << c << QRGBPal(100, 240, 20, 77);
        QTest::newRow("6 blue and red") << 6 << c << QRGBPal(20, 100, 240, 77);
        QTest::newRow("7 lighter, held") << 7 << c << QRGBPal(255, 132, 52, 77);
        QTest::newRow("8 darker, held") << 8 << c << QRGBPal(208, 68, 0, 77);
        QTest::newRow("9 monochrome") << 9 << c << QRGBPal(120, 120, 120, 77);
        QTest::newRow("10 fire") << 10 << c << QRGBPal(220, 60, 0, 77);
        QTest::newRow("10 fire, held") << 10 << QRGBPal(200, 200, 200) << QRGBPal(255, 100, 0);
        QTest::newRow("11 sapphire") << 11 << c << QRGBPal(90, 0, 120, 77);
        QTest::newRow("12 stone, dark") << 12 << c << QRGBPal(170, 170, 170, 77);
        QTest::newRow("12 stone, light") << 12 << QRGBPal(200, 200, 201) << QRGBPal(150, 150, 150);
        QTest::newRow("13 much lighter") << 13 << c << QRGBPal(255, 228, 148, 77);
        QTest::newRow("14 much darker") << 14 << c << QRGBPal(112, 0, 0, 77);
        QTest::newRow("0 does nothing") << 0 << c << c;
        QTest::newRow("15 does nothing") << 15 << c << c;
    }

    void transform()
    {
        QFETCH(int, kind);
        QFETCH(QRGBPal, colour);
        QFETCH(QRGBPal, expected);
        Table table = filled(colour);
        const Mask mask = maskOf({3});
        QRGBPalette(table.data()).transform(kind, mask.data());
        QCOMPARE(table[3], expected);
        QCOMPARE(table[2], colour);
        QCOMPARE(table[4], colour);
    }

    void adjust_data()
    {
        QTest::addColumn<QRGBPal>("colour");
        QTest::addColumn<int>("hue");
        QTest::addColumn<int>("saturation");
        QTest::addColumn<QRGBPal>("expected");
        QTest::newRow("red to green") << QRGBPal(255, 0, 0, 9) << 120 << 0 << QRGBPal(0, 255, 0, 9);
        QTest::newRow("red back to blue") << QRGBPal(255, 0, 0) << -120 << 0 << QRGBPal(0, 0, 255);
        QTest::newRow("hue wraps past 360") << QRGBPal(255, 0, 0) << 480 << 0 << QRGBPal(0, 255, 0);
        QTest::newRow("a full turn") << QRGBPal(255, 0, 0) << 360 << 0 << QRGBPal(255, 0, 0);
        // (128, 64, 64): lightness 96/255, saturation 1/3; full saturation gives (192, 0, 0).
        QTest::newRow("saturation held at 255") << QRGBPal(128, 64, 64) << 0 << 300 << QRGBPal(192, 0, 0);
        QTest::newRow("saturation held at 0") << QRGBPal(128, 64, 64) << 0 << -300 << QRGBPal(96, 96, 96);
        QTest::newRow("grey has no hue to turn")
            << QRGBPal(100, 100, 100) << 90 << 0 << QRGBPal(100, 100, 100);
    }

    void adjust()
    {
        QFETCH(QRGBPal, colour);
        QFETCH(int, hue);
        QFETCH(int, saturation);
        QFETCH(QRGBPal, expected);
        Table table = filled(colour);
        QRGBPalette(table.data()).adjust(nullptr, hue, saturation);
        QCOMPARE(table[17], expected);
    }

    void adjustByNothingKeepsEveryColour()
    {
        Table table;
        for (int r = 0; r < 256; r += 5) {
            for (int g = 0; g < 256; g += 5) {
                for (int i = 0; i < 256; ++i)
                    table[i] = QRGBPal(uchar(r), uchar(g), uchar(i), uchar(i));
                const Table before = table;
                QRGBPalette(table.data()).adjust(nullptr, 0, 0);
                QCOMPARE(std::memcmp(table.data(), before.data(), 1024), 0);
            }
        }
    }

    void shift_data()
    {
        QTest::addColumn<QList<int>>("amounts");
        QTest::addColumn<QRGBPal>("expected");
        QTest::newRow("held at both ends") << QList<int>{20, 20, -200} << QRGBPal(30, 255, 0, 50);
        QTest::newRow("huge amounts") << QList<int>{1000000, -1000000, 0} << QRGBPal(255, 0, 128, 50);
        QTest::newRow("nothing") << QList<int>{0, 0, 0} << QRGBPal(10, 250, 128, 50);
    }

    void shift()
    {
        QFETCH(QList<int>, amounts);
        QFETCH(QRGBPal, expected);
        Table table = filled(QRGBPal(10, 250, 128, 50));
        const Mask mask = maskOf({0, 255});
        QRGBPalette(table.data()).shift(mask.data(), amounts[0], amounts[1], amounts[2]);
        QCOMPARE(table[0], expected);
        QCOMPARE(table[255], expected);
        QCOMPARE(table[1], QRGBPal(10, 250, 128, 50));
    }

    void setColorOverMask()
    {
        Table table = ramp();
        const Mask mask = maskOf({5, 6});
        QRGBPalette(table.data()).setColor(mask.data(), QRGBPal(9, 9, 9));
        QCOMPARE(table[4], ramp()[4]);
        QCOMPARE(table[5], QRGBPal(9, 9, 9));
        QCOMPARE(table[6], QRGBPal(9, 9, 9));
        QCOMPARE(table[7], ramp()[7]);
    }

    void everyChangeIsAnnounced_data()
    {
        QTest::addColumn<PaletteChange>("change");
        const Mask mask = maskOf({1, 2});
        QTest::newRow("setColors") << PaletteChange([](QRGBPalette& p) {
            const Table t = ramp();
            p.setColors(t.data());
        });
        QTest::newRow("setColor") << PaletteChange(
            [](QRGBPalette& p) { p.setColor(uchar(3), QRGBPal(1, 2, 3)); });
        QTest::newRow("setColor mask")
            << PaletteChange([mask](QRGBPalette& p) { p.setColor(mask.data(), QRGBPal(1, 2, 3)); });
        QTest::newRow("gradient") << PaletteChange(
            [](QRGBPalette& p) { p.gradient(0, QRGBPal(), 9, QRGBPal(9, 9, 9)); });
        QTest::newRow("gradient mask") << PaletteChange(
            [mask](QRGBPalette& p) { p.gradient(mask.data(), QRGBPal(), QRGBPal(9, 9, 9)); });
        QTest::newRow("replaceDuplicates")
            << PaletteChange([](QRGBPalette& p) { p.replaceDuplicates(QRGBPal()); });
        QTest::newRow("reverse") << PaletteChange([](QRGBPalette& p) { p.reverse(nullptr, true); });
        QTest::newRow("transform") << PaletteChange([](QRGBPalette& p) { p.transform(9, nullptr); });
        QTest::newRow("adjust") << PaletteChange([](QRGBPalette& p) { p.adjust(nullptr, 10, 10); });
        QTest::newRow("shift") << PaletteChange([](QRGBPalette& p) { p.shift(nullptr, 1, 2, 3); });
    }

    void everyChangeIsAnnounced()
    {
        QFETCH(PaletteChange, change);
        Table table = ramp();
        QRGBPalette palette(table.data());
        QList<QByteArray> order;
        connect(&palette, &QRGBPalette::changing, this, [&] {
            order << "changing";
            // Listeners of changing() see the table as it was.
            QCOMPARE(std::memcmp(table.data(), ramp().data(), 1024), 0);
        });
        connect(&palette, &QRGBPalette::changed, this, [&] { order << "changed"; });
        change(palette);
        QCOMPARE(order, (QList<QByteArray>{"changing", "changed"}));
    }

    void withoutTableNothingHappens()
    {
        QRGBPalette palette;
        QSignalSpy changed(&palette, &QRGBPalette::changed);
        palette.setColor(uchar(1), QRGBPal());
        palette.reverse(nullptr, false);
        palette.transform(1, nullptr);
        QCOMPARE(palette.nearest(QRGBPal()), uchar(0));
        QCOMPARE(palette.lastUsed(), uchar(0));
        QCOMPARE(palette.color(4), QRGBPal());
        QVERIFY(!palette.toFile(QStringLiteral("/nonexistent/never.act")));
        QCOMPARE(changed.count(), 0);
    }
};

QTEST_GUILESS_MAIN(tst_Palettes)
#include "tst_Palettes.moc"
