// The octree quantizer: colour limits, exact images, averages with truncation, tree order, the
// greyscale use and determinism.

#include "QOctreeQuantizer.h"

#include <QRandomGenerator>
#include <QTest>

#include <array>
#include <cstring>
#include <set>

namespace {

QImage imageOf(const QList<QRgb>& pixels, int width)
{
    QImage image(width, int((pixels.size() + width - 1) / width), QImage::Format_RGB32);
    image.fill(pixels.first());
    for (int i = 0; i < pixels.size(); ++i)
        image.setPixel(i % width, i / width, pixels.at(i));
    return image;
}

QImage noise(int width, int height, quint32 seed)
{
    QRandomGenerator random(seed);
    QImage image(width, height, QImage::Format_ARGB32);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            image.setPixel(x, y, random.generate() | 0xFF000000u);
    return image;
}

} // namespace

class tst_OctreeQuantizer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void fewColoursComeBackExactly_data()
    {
        QTest::addColumn<QList<QRgb>>("pixels");
        QTest::newRow("one colour") << QList<QRgb>{qRgb(12, 34, 56), qRgb(12, 34, 56)};
        QTest::newRow("neighbours differing in the last bit")
            << QList<QRgb>{qRgb(0, 0, 0), qRgb(1, 1, 1), qRgb(1, 0, 0), qRgb(0, 0, 1), qRgb(255, 255, 254)};
        QList<QRgb> many;
        for (int i = 0; i < 256; ++i)
            many << qRgb(i, (i * 37) & 0xFF, 255 - i);
        QTest::newRow("exactly 256 colours") << many;
    }

    void fewColoursComeBackExactly()
    {
        QFETCH(QList<QRgb>, pixels);
        const QImage image = imageOf(pixels, 16);
        std::array<QRGBPal, 256> palette;
        const QImage indexed = QOctreeQuantizer::quantize(image, 256, 8, palette.data());
        QCOMPARE(indexed.format(), QImage::Format_Indexed8);
        QCOMPARE(indexed.size(), image.size());
        const std::set<QRgb> distinct(pixels.cbegin(), pixels.cend());
        QCOMPARE(indexed.colorCount(), int(distinct.size()));
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                QCOMPARE(indexed.pixel(x, y), image.pixel(x, y));
        for (int i = 0; i < indexed.colorCount(); ++i)
            QCOMPARE(palette[i].toRgb(), indexed.color(i));
    }

    void neverMoreThanTheMaximum_data()
    {
        QTest::addColumn<int>("maximum");
        QTest::addColumn<int>("depth");
        QTest::newRow("256, 8") << 256 << 8;
        QTest::newRow("8, 8") << 8 << 8;
        QTest::newRow("3, 8: the root merges too") << 3 << 8;
        QTest::newRow("1, 8") << 1 << 8;
        QTest::newRow("256, 3") << 256 << 3;
        QTest::newRow("100, 1") << 100 << 1;
    }

    void neverMoreThanTheMaximum()
    {
        QFETCH(int, maximum);
        QFETCH(int, depth);
        const QImage image = noise(64, 48, 7);
        QOctreeQuantizer quantizer(maximum, depth);
        quantizer.addImage(image);
        QVERIFY(quantizer.colorCount() <= maximum);
        QVERIFY(quantizer.colorCount() >= 1);
        const QImage indexed = quantizer.toIndexed(image);
        QCOMPARE(indexed.colorCount(), quantizer.colorCount());
        for (int y = 0; y < indexed.height(); ++y)
            for (int x = 0; x < indexed.width(); ++x)
                QVERIFY(indexed.pixelIndex(x, y) < quantizer.colorCount());
    }

    void leavesAverageWithTruncation()
    {
        // Depth 3 looks at the top three bits only: both colours fall in one leaf.
        const QImage image = imageOf({qRgb(10, 20, 30), qRgb(13, 21, 31)}, 2);
        std::array<QRGBPal, 256> palette;
        const QImage indexed = QOctreeQuantizer::quantize(image, 256, 3, palette.data());
        QCOMPARE(indexed.colorCount(), 1);
        QCOMPARE(palette[0], QRGBPal(11, 20, 30));
        // Behind the last leaf the table is zero, alpha included.
        QCOMPARE(palette[1], QRGBPal(0, 0, 0, 0));
        QCOMPARE(palette[255], QRGBPal(0, 0, 0, 0));
    }

    void theDeepestColoursMergeFirst()
    {
        // The eight corners of the cube and a colour next to black: one merge, of black's neighbours.
        QList<QRgb> pixels;
        for (int corner = 0; corner < 8; ++corner)
            pixels << qRgb(corner & 4 ? 255 : 0, corner & 2 ? 255 : 0, corner & 1 ? 255 : 0);
        pixels << qRgb(3, 3, 3) << qRgb(3, 3, 3) << qRgb(3, 3, 3);
        QOctreeQuantizer quantizer(8, 8);
        quantizer.addImage(imageOf(pixels, 11));
        const QList<QRgb> table = quantizer.colorTable();
        QCOMPARE(table.size(), 8);
        // Black and three times (3, 3, 3): 9 / 4 = 2.
        QCOMPARE(table.at(0), qRgb(2, 2, 2));
        for (int corner = 1; corner < 8; ++corner)
            QCOMPARE(table.at(corner), pixels.at(corner));
    }

    void tableFollowsTheTreeNotThePixels()
    {
        const QImage whiteFirst = imageOf({qRgb(255, 255, 255), qRgb(0, 0, 0), qRgb(255, 0, 0)}, 3);
        QOctreeQuantizer quantizer;
        quantizer.addImage(whiteFirst);
        QCOMPARE(quantizer.colorTable(), (QList<QRgb>{qRgb(0, 0, 0), qRgb(255, 0, 0), qRgb(255, 255, 255)}));
    }

    void greyscale()
    {
        // A ramp of all 256 greys with depth 3 gives eight greys, each the average of 32 of them.
        QImage ramp(256, 1, QImage::Format_RGB32);
        for (int x = 0; x < 256; ++x)
            ramp.setPixel(x, 0, qRgb(x, x, x));
        std::array<QRGBPal, 256> palette;
        const QImage indexed = QOctreeQuantizer::quantize(ramp, 256, 3, palette.data());
        QCOMPARE(indexed.colorCount(), 8);
        for (int k = 0; k < 8; ++k) {
            const uchar grey = uchar(32 * k + 15);
            QCOMPARE(palette[k], QRGBPal(grey, grey, grey));
            QCOMPARE(indexed.pixelIndex(32 * k, 0), k);
            QCOMPARE(indexed.pixelIndex(32 * k + 31, 0), k);
        }
    }

    void deterministic()
    {
        const QImage image = noise(80, 60, 42);
        std::array<QRGBPal, 256> first, second;
        const QImage a = QOctreeQuantizer::quantize(image, 256, 8, first.data());
        const QImage b = QOctreeQuantizer::quantize(image, 256, 8, second.data());
        QCOMPARE(std::memcmp(first.data(), second.data(), 1024), 0);
        QCOMPARE(a, b);
    }

    void severalImagesShareOneTable()
    {
        QOctreeQuantizer quantizer(256, 8);
        quantizer.addImage(imageOf({qRgb(1, 2, 3)}, 1));
        quantizer.addImage(imageOf({qRgb(200, 100, 50), qRgb(1, 2, 3)}, 2));
        QCOMPARE(quantizer.colorCount(), 2);
        // A colour never added maps to the nearest of the table.
        const QImage other = quantizer.toIndexed(imageOf({qRgb(190, 110, 40), qRgb(0, 0, 0)}, 2));
        QCOMPARE(other.pixel(0, 0), qRgb(200, 100, 50));
        QCOMPARE(other.pixel(1, 0), qRgb(1, 2, 3));
    }

    void alphaIsIgnored()
    {
        QImage image(2, 1, QImage::Format_ARGB32);
        image.setPixel(0, 0, qRgba(10, 20, 30, 255));
        image.setPixel(1, 0, qRgba(10, 20, 30, 0));
        QOctreeQuantizer quantizer;
        quantizer.addImage(image);
        QCOMPARE(quantizer.colorCount(), 1);
    }

    void nothingToQuantize()
    {
        QOctreeQuantizer quantizer;
        quantizer.addImage(QImage());
        QCOMPARE(quantizer.colorCount(), 0);
        std::array<QRGBPal, 256> palette;
        palette.fill(QRGBPal(9, 9, 9));
        quantizer.palette(palette.data());
        QCOMPARE(palette[0], QRGBPal(0, 0, 0, 0));
        QVERIFY(quantizer.toIndexed(QImage()).isNull());
        QVERIFY(QOctreeQuantizer::quantize(QImage(), 256, 8).isNull());
    }
};

QTEST_GUILESS_MAIN(tst_OctreeQuantizer)
#include "tst_OctreeQuantizer.moc"
