// Decoding a stored block row by row: at every step, and at the end, the rows are those of the block
// decoded whole, for every form, for broken streams, and for every block of the real sprite files.

#include "QBlockRows.h"
#include "QLZ5Codec.h"
#include "QPNGCodec.h"
#include "QRLE8Codec.h"
#include "QSprite.h"
#include "QSpriteImageRecord.h"
#include "QSprites.h"
#include "QStreamCache.h"
#include "QStreamCacheFilter.h"
#include "SffBuilder.h"
#include "SpriteTestKit.h"

#include <QtTest>

using SpriteTestKit::pngAt;

namespace {

QImage argbImage(int width, int height, int seed)
{
    QImage image(width, height, QImage::Format_ARGB32);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            image.setPixel(x, y,
                           qRgba((x * 7 + seed) & 0xFF, (y * 5) & 0xFF, (x ^ y) & 0xFF, (x + y * 3) & 0xFF));
    return image;
}

// Every row of the progressive decoding, asked for in steps, against the block decoded whole.
QString compare(const QByteArray& block, uint filter, const QImageInfo& info)
{
    const QByteArray whole = QStreamCache::decodeBlock(block, filter, &info);
    QBlockRows rows(block, filter, info);
    for (int until = 1; until <= info.height + 3; until += 1 + until / 3)
        rows.advance(until);
    rows.advance(info.height);
    if (whole.size() != info.rawSize()) return rows.isUndecodable() ? QString() : QStringLiteral("decodable");
    if (rows.isUndecodable()) return QStringLiteral("undecodable");
    for (int y = 0; y < info.height; ++y)
        if (std::memcmp(rows.row(y), whole.constData() + y * info.bytesPerLine(), size_t(info.rowBytes())) !=
            0)
            return QStringLiteral("row %1").arg(y);
    return QString();
}

} // namespace

class tst_BlockRows : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void forms_data();
    void forms();
    void realFiles_data();
    void realFiles();
};

void tst_BlockRows::forms_data()
{
    QTest::addColumn<QByteArray>("block");
    QTest::addColumn<uint>("filter");
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::addColumn<int>("format");
    const QImage indexed = SffBuilder::indexedImage(37, 23, 200);
    const QImage small = SffBuilder::indexedImage(61, 19, 32);
    const QImage argb = argbImage(29, 17, 3);
    const QImage rgb = argb.convertToFormat(QImage::Format_RGB32);
    const QByteArray rle = encodeRLE8(indexed);
    const QByteArray lz5 = encodeLZ5(small);
    const QByteArray png8 = encodePNG(indexed);
    const auto row = [](const char* name, const QByteArray& block, uint filter, const QImage& image) {
        QTest::newRow(name) << block << filter << image.width() << image.height() << int(image.format());
    };
    row("rle8", rle, QStreamCacheFilter::RLE8Filter, indexed);
    row("rle8 cut short", rle.left(rle.size() / 2), QStreamCacheFilter::RLE8Filter, indexed);
    row("rle8 of rgb32", encodeRLE8(rgb), QStreamCacheFilter::RLE8Filter, rgb);
    row("lz5", lz5, QStreamCacheFilter::LZ5Filter, small);
    row("lz5 cut short", lz5.left(lz5.size() / 3), QStreamCacheFilter::LZ5Filter, small);
    row("lz5 of rgb32 is undecodable", lz5, QStreamCacheFilter::LZ5Filter, rgb);
    row("png8", png8, QStreamCacheFilter::PNGFilter, indexed);
    row("png8 at level 9", pngAt(indexed, 0), QStreamCacheFilter::PNGFilter, indexed);
    row("png8 cut in the pixels", png8.left(png8.size() - 30), QStreamCacheFilter::PNGFilter, indexed);
    row("png8 of the wrong size", encodePNG(small), QStreamCacheFilter::PNGFilter, indexed);
    row("png32", pngAt(argb, 50), QStreamCacheFilter::PNGFilter, argb);
    row("png24", pngAt(rgb, 100), QStreamCacheFilter::PNGFilter, rgb);
    row("png32 read as rgb32", pngAt(argb, 50), QStreamCacheFilter::PNGFilter, rgb);
    row("png of grey", pngAt(indexed.convertToFormat(QImage::Format_Grayscale8), 50),
        QStreamCacheFilter::PNGFilter, indexed);
    row("not png", rle, QStreamCacheFilter::PNGFilter, indexed);
    row("raw", QImageInfo::raw(indexed), QStreamCacheFilter::RawFilter, indexed);
    row("empty", QByteArray(), QStreamCacheFilter::RLE8Filter, indexed);
}

void tst_BlockRows::forms()
{
    QFETCH(QByteArray, block);
    QFETCH(uint, filter);
    QFETCH(int, width);
    QFETCH(int, height);
    QFETCH(int, format);
    QImageInfo info;
    info.width = quint16(width);
    info.height = quint16(height);
    info.format = quint32(format);
    const QString problem = compare(block, filter, info);
    QVERIFY2(problem.isEmpty(), qPrintable(problem));
}

void tst_BlockRows::realFiles_data()
{
    SpriteTestKit::addSffFileRows();
}

void tst_BlockRows::realFiles()
{
    TAVREL_REQUIRE_TESTDATA();
    QFETCH(QString, path);
    QSprites sprites(nullptr, 0, false);
    QVERIFY(sprites.fromFile(path));
    for (uint i = 0; i < sprites.count(); ++i) {
        const QSpriteImageRecord* record = sprites.at(i)->imageRecord();
        const QByteArray block = sprites.cache()->stored(record->item);
        const QString problem = compare(block, sprites.cache()->filter(record->item), record->info);
        QVERIFY2(problem.isEmpty(), qPrintable(QStringLiteral("sprite %1: %2").arg(i).arg(problem)));
    }
}

QTEST_GUILESS_MAIN(tst_BlockRows)
#include "tst_BlockRows.moc"
