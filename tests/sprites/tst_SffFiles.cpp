// Reading and writing hand-built sprite files: every rule of the reader, the forms the writer chooses,
// what a failed save leaves behind, and hostile input.

#include "FileBytes.h"
#include "QDialogRecorder.h"
#include "QEncodeCounters.h"
#include "QLZ5Codec.h"
#include "QPNGCodec.h"
#include "QRLE8Codec.h"
#include "QSFFFormat.h"
#include "QSFFInfo.h"
#include "QSprite.h"
#include "QSpriteImageRecord.h"
#include "QSpritePalette.h"
#include "QSprites.h"
#include "QStreamCacheFilter.h"
#include "SffBuilder.h"
#include "SpriteTestKit.h"
#include "TestProject.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

using namespace SffBuilder;

class tst_SffFiles : public QObject
{
    Q_OBJECT

    QTemporaryDir dir;
    int serial = 0;

    QString write(const QByteArray& bytes)
    {
        const QString path = dir.filePath(QStringLiteral("f%1.sff").arg(++serial));
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly)) return QString();
        file.write(bytes);
        return path;
    }

    static QStringList boxTexts(const QDialogRecorder& recorder)
    {
        QStringList texts;
        for (const QDialogRecorder::Call& call : recorder.calls)
            texts << call.title + QStringLiteral(" | ") + call.text;
        return texts;
    }

    static QByteArray pixelsOf(const QSprites& sprites, uint i) { return QSFFInfo::pixels(*sprites.at(i)); }

    static QByteArray unpadded(const QImage& image) { return QImageInfo::unpadded(image); }

private Q_SLOTS:
    void version1_dataLength_data();
    void version1_dataLength();
    void version1_links();
    void version1_characterPalette_data();
    void version1_characterPalette();
    void version1_blankCharacterPalette();
    void version1_clipsToSmallPalette();
    void version2_palettes_data();
    void version2_palettes();
    void version2_spriteLinks_data();
    void version2_spriteLinks();
    void version2_blockCutAtEndOfFile();
    void version2_rawAndTdataBlocks();
    void version2_withoutPalettes();
    void notSpriteFiles_data();
    void notSpriteFiles();
    void equalBlocksAreShared_data();
    void equalBlocksAreShared();
    void writer_formats_data();
    void writer_formats();
    void writer_storedFormNeedsNoEncoding();
    void writer_headerText();
    void writer_reducesTrueColour();
    void writer_characterPaletteOrder();
    void writer_emptyItems();
    void writer_failedSaveKeepsOldFile();
    void hostile_data();
    void hostile();
    void truncated();
};

void tst_SffFiles::version1_dataLength_data()
{
    QTest::addColumn<quint32>("next");
    QTest::addColumn<quint32>("length");
    QTest::addColumn<bool>("decodes");
    QTest::newRow("next and length agree") << Auto << Auto << true;
    QTest::newRow("next is 0: the length decides") << 0u << Auto << true;
    QTest::newRow("next wins over a short length") << Auto << 20u << true;
    QTest::newRow("next wins over a long length") << Auto << 100000u << true;
    QTest::newRow("next before the data: empty block") << 10u << Auto << false;
    QTest::newRow("next past the end: cut at the end") << 0x7FFFFFF0u << Auto << true;
}

void tst_SffFiles::version1_dataLength()
{
    QFETCH(quint32, next);
    QFETCH(quint32, length);
    QFETCH(bool, decodes);
    const QImage image = indexedImage(13, 7);
    V1Sprite first{pcx(image), 0, 0};
    first.next = next;
    first.length = length;
    const V1Sprite second{pcx(indexedImage(5, 5, 16, 3)), 3, 4};
    const bool lastIsSecond = next == Auto || next == 0;
    const QString path = write(v1(lastIsSecond ? QList<V1Sprite>{first, second} : QList<V1Sprite>{first}));
    QDialogRecorder recorder;
    TestProject spritesProject(Stage);
    QSprites sprites(&spritesProject);
    QVERIFY(sprites.fromFile(path));
    QVERIFY(recorder.calls.isEmpty());
    QCOMPARE(sprites.count(), lastIsSecond ? 2u : 1u);
    QCOMPARE(!pixelsOf(sprites, 0).isEmpty(), decodes);
    if (decodes) QCOMPARE(pixelsOf(sprites, 0), unpadded(image));
    if (lastIsSecond) {
        QCOMPARE(sprites.at(1)->itemGroup(), 3);
        QCOMPARE(pixelsOf(sprites, 1), unpadded(indexedImage(5, 5, 16, 3)));
    }
}

void tst_SffFiles::version1_links()
{
    const QImage image = indexedImage(8, 8);
    V1Sprite linked{QByteArray(), 1, 1};
    linked.link = 0;
    V1Sprite broken{QByteArray(), 1, 2};
    broken.link = 7;
    const V1Sprite after{pcx(indexedImage(4, 4, 16, 9)), 1, 3};
    const QString path = write(v1({{pcx(image), 1, 0}, linked, broken, after}));
    QDialogRecorder recorder;
    TestProject spritesProject(Stage);
    QSprites sprites(&spritesProject);
    QVERIFY(sprites.fromFile(path));
    QCOMPARE(boxTexts(recorder),
             QStringList{QStringLiteral("Sprite loading error | %1(2): Sprite incorrectly "
                                        "linked to the index 7")
                             .arg(path)});
    QCOMPARE(recorder.calls.first().icon, QUserDialogs::Critical);
    QCOMPARE(sprites.count(), 4u);
    QCOMPARE(sprites.at(1)->imageRecord(), sprites.at(0)->imageRecord());
    QCOMPARE(sprites.at(1)->palette(), sprites.at(0)->palette());
    QVERIFY(!sprites.at(2)->hasImage());
    QCOMPARE(pixelsOf(sprites, 3), unpadded(indexedImage(4, 4, 16, 9)));
    QCOMPARE(sprites.storedLayout().sprites.at(1).link, 0);
    QCOMPARE(sprites.storedLayout().sprites.at(0).link, -1);
}

void tst_SffFiles::version1_characterPalette_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<bool>("paletteFirst");
    QTest::newRow("character") << int(Character) << false;
    QTest::newRow("character with its palette files read first") << int(Character) << true;
    QTest::newRow("stage") << int(Stage) << false;
}

// Sprites: (9000, 0) own table A, (5, 0) same palette, (5, 1) own table B, (6, 0) own table B,
// (7, 0) own table A, (0, 0) own table B.
void tst_SffFiles::version1_characterPalette()
{
    QFETCH(int, kind);
    QFETCH(bool, paletteFirst);
    QImage a = indexedImage(6, 6);
    QImage b = indexedImage(6, 5, 16, 1);
    QList<QRgb> tableB = b.colorTable();
    for (QRgb& colour : tableB)
        colour = qRgb(qBlue(colour), qRed(colour), 17);
    b.setColorTable(tableB);
    V1Sprite same{pcx(a), 5, 0};
    same.samePalette = true;
    const QString path =
        write(v1({{pcx(a), 9000, 0}, same, {pcx(b), 5, 1}, {pcx(b), 6, 0}, {pcx(a), 7, 0}, {pcx(b), 0, 0}}));
    TestProject spritesProject{QProjectType(kind)};
    QSprites sprites(&spritesProject);
    QVector<uint> loadedFirst(256, qRgb(1, 2, 3));
    if (paletteFirst) sprites.addPalette(loadedFirst, QSpritePaletteShareMode::Share, 1, 1);
    QDialogRecorder recorder;
    QVERIFY(sprites.fromFile(path));
    QVERIFY(recorder.calls.isEmpty());
    const auto group = [&](uint i) { return sprites.at(i)->palette()->itemGroup(); };
    const auto number = [&](uint i) { return sprites.at(i)->palette()->itemIndex(); };
    const auto colour = [&](uint i, int c) { return sprites.at(i)->palette()->colors().at(c); };
    if (kind == Character) {
        QCOMPARE(group(0), 1);
        QCOMPARE(number(0), 1);
        QCOMPARE(sprites.at(5)->palette(), sprites.at(0)->palette());
        if (paletteFirst) {
            QCOMPARE(sprites.paletteAt(0), sprites.at(0)->palette());
            QCOMPARE(colour(0, 5), qRgb(1, 2, 3));
        } else {
            QCOMPARE(colour(0, 5), a.colorTable().at(5));
            QCOMPARE(qAlpha(colour(0, 0)), 0);
        }
        // Table A again, in another sprite: the character's palette is never handed out as an
        // equal one, so (7, 0) gets a palette of its own group.
        if (!paletteFirst) {
            QVERIFY(sprites.at(4)->palette() != sprites.at(0)->palette());
            QCOMPARE(group(4), 7);
            QCOMPARE(number(4), 0);
        }
    } else {
        QCOMPARE(group(0), 9000);
        QCOMPARE(sprites.at(5)->palette(), sprites.at(2)->palette());
        QCOMPARE(sprites.at(4)->palette(), sprites.at(0)->palette());
    }
    QCOMPARE(sprites.at(1)->palette(), sprites.at(0)->palette());
    QCOMPARE(group(2), 5);
    // Equal tables give the palette that was made first for them.
    QCOMPARE(sprites.at(3)->palette(), sprites.at(2)->palette());
    QCOMPARE(colour(2, 3), tableB.at(3));
}

void tst_SffFiles::version1_blankCharacterPalette()
{
    QImage rgb(4, 4, QImage::Format_RGB32);
    rgb.fill(qRgb(10, 20, 30));
    const QString path = write(v1({{pcx(rgb), 0, 0}}));
    QSprites sprites;
    int asked = 0;
    connect(&sprites, &QSprites::charPalette, this, [&](QRGBPal* table) {
        ++asked;
        table[3] = QRGBPal(7, 8, 9);
    });
    QVERIFY(sprites.fromFile(path));
    QCOMPARE(asked, 1);
    QCOMPARE(sprites.paletteCount(), 1u);
    QCOMPARE(sprites.paletteAt(0)->itemGroup(), 1);
    QCOMPARE(sprites.paletteAt(0)->colors().at(3), qRgb(7, 8, 9));
    QVERIFY(sprites.at(0)->imageProperties().imageFormat() != QImage::Format_Indexed8);
}

// A table whose colours from 32 on all equal colour 255 gives a palette of 32 colours; pixels beyond
// it go to 255, and the block becomes raw pixels.
void tst_SffFiles::version1_clipsToSmallPalette()
{
    QImage image = indexedImage(10, 10, 40);
    QList<QRgb> table = image.colorTable();
    for (int i = 32; i < 256; ++i)
        table[i] = qRgb(9, 9, 9);
    image.setColorTable(table);
    const QImage untouched = indexedImage(10, 4, 30);
    const QString path = write(v1({{pcx(image), 3, 0}, {pcx(untouched), 3, 1}}));
    TestProject spritesProject(Stage);
    QSprites sprites(&spritesProject);
    QVERIFY(sprites.fromFile(path));
    QCOMPARE(sprites.at(0)->palette()->colorCount(), 32);
    QCOMPARE(sprites.cache()->filter(sprites.at(0)->imageRecord()->item),
             uint(QStreamCacheFilter::RawFilter));
    QImage expected = image;
    for (int y = 0; y < 10; ++y)
        for (int x = 0; x < 10; ++x)
            if (expected.scanLine(y)[x] >= 32) expected.scanLine(y)[x] = 255;
    QCOMPARE(pixelsOf(sprites, 0), unpadded(expected));
    QCOMPARE(sprites.cache()->filter(sprites.at(1)->imageRecord()->item),
             uint(QStreamCacheFilter::PCXFilter));
}

void tst_SffFiles::version2_palettes_data()
{
    QTest::addColumn<quint32>("version");
    QTest::addColumn<int>("link");
    QTest::addColumn<bool>("blank");
    QTest::newRow("2.01 keeps alpha") << QSFF::Version201 << -1 << false;
    QTest::newRow("2.00 overwrites alpha") << QSFF::Version200 << -1 << false;
    QTest::newRow("linked to an earlier palette") << QSFF::Version201 << 0 << false;
    QTest::newRow("linked to itself: blank") << QSFF::Version201 << 1 << true;
    QTest::newRow("linked past the list: blank") << QSFF::Version201 << 9 << true;
}

void tst_SffFiles::version2_palettes()
{
    QFETCH(quint32, version);
    QFETCH(int, link);
    QFETCH(bool, blank);
    V2Palette second{rgbaColours(32, 77), 2, 3, 32};
    if (link >= 0) {
        second.colours.clear();
        second.link = link;
    }
    const QImage image = indexedImage(8, 3);
    V2Sprite sprite{encodeRLE8(image), 0, 0, 8, 3};
    sprite.palette = 1;
    const QString path = write(v2(version, {{rgbaColours(256, 77), 1, 1, 256}, second}, {sprite}));
    QDialogRecorder recorder;
    QSprites sprites;
    QVERIFY(sprites.fromFile(path));
    QVERIFY(recorder.calls.isEmpty());
    QCOMPARE(sprites.version(), version);
    QCOMPARE(sprites.paletteCount(), 2u);
    const QSpritePalette* palette = sprites.paletteAt(1);
    QCOMPARE(palette->itemGroup(), 2);
    QCOMPARE(palette->itemIndex(), 3);
    QCOMPARE(palette->colorCount(), 32);
    QCOMPARE(sprites.at(0)->palette(), palette);
    QCOMPARE(palette->isEmpty(), blank);
    if (blank) {
        QVERIFY(sprites.messages()->at(sprites.messages()->size() - 1).text ==
                    QStringLiteral("Empty palette!") ||
                sprites.messages()->count(0) > 0);
        return;
    }
    if (link == 0) QCOMPARE(palette->colorTable(), sprites.paletteAt(0)->colorTable());
    const int alpha1 = version == QSFF::Version200 ? 255 : 77;
    const int alpha0 = version == QSFF::Version200 ? 0 : 77;
    QCOMPARE(palette->colors().at(5), qRgba(5, 10, 250, alpha1));
    QCOMPARE(qAlpha(palette->colors().at(0)), alpha0);
}

void tst_SffFiles::version2_spriteLinks_data()
{
    QTest::addColumn<int>("depth");
    QTest::addColumn<int>("paletteIndex");
    QTest::addColumn<int>("link");
    QTest::addColumn<QStringList>("boxes");
    const QString paletteBox =
        QStringLiteral("Sprite loading error | FILE(1): Sprite incorrectly linked to the "
                       "palette index %1");
    const QString spriteBox =
        QStringLiteral("Sprite loading error | FILE(1): Sprite incorrectly linked to the "
                       "index %1");
    QTest::newRow("good links") << 8 << 0 << 0 << QStringList();
    QTest::newRow("palette index too high") << 8 << 4 << 0 << QStringList{paletteBox.arg(4)};
    QTest::newRow("sprite link too high") << 8 << 0 << 1 << QStringList{spriteBox.arg(1)};
    QTest::newRow("both") << 5 << 9 << 60000 << QStringList{paletteBox.arg(9), spriteBox.arg(60000)};
    QTest::newRow("depth above 8: the palette index is ignored") << 32 << 9 << 0 << QStringList();
}

void tst_SffFiles::version2_spriteLinks()
{
    QFETCH(int, depth);
    QFETCH(int, paletteIndex);
    QFETCH(int, link);
    QFETCH(QStringList, boxes);
    QImage argb(4, 4, QImage::Format_ARGB32);
    argb.fill(qRgba(1, 2, 3, 4));
    const QImage indexed = indexedImage(4, 4);
    const bool deep = depth > 8;
    V2Sprite first{deep ? encodePNG(argb) : encodeRLE8(indexed), 0, 0, 4, 4};
    first.format = deep ? 12 : 2;
    first.depth = depth;
    V2Sprite second{QByteArray(), 0, 1, 4, 4};
    second.depth = depth;
    second.format = 1;
    second.link = link;
    second.palette = paletteIndex;
    const QString path = write(v2(QSFF::Version201, {{rgbaColours(), 1, 1}}, {first, second}));
    QDialogRecorder recorder;
    QSprites sprites;
    QVERIFY(sprites.fromFile(path));
    for (QString& box : boxes)
        box.replace(QStringLiteral("FILE"), path);
    QCOMPARE(boxTexts(recorder), boxes);
    QCOMPARE(sprites.count(), 2u);
    const bool linked = link == 0;
    QCOMPARE(sprites.at(1)->imageRecord() == sprites.at(0)->imageRecord(), linked);
    QCOMPARE(sprites.at(1)->hasImage(), linked);
    QCOMPARE(sprites.at(1)->palette() != nullptr, !deep && paletteIndex == 0);
    QCOMPARE(sprites.at(0)->palette() != nullptr, !deep);
    if (deep) QCOMPARE(sprites.at(0)->image().pixel(1, 1), qRgba(1, 2, 3, 4));
}

void tst_SffFiles::version2_blockCutAtEndOfFile()
{
    const QImage image = indexedImage(30, 30, 200);
    const QByteArray block = encodeRLE8(image);
    V2Sprite sprite{block, 0, 0, 30, 30};
    sprite.length = 1000000;
    QByteArray file = v2(QSFF::Version201, {{rgbaColours(), 1, 1}}, {sprite});
    file.chop(block.size() / 2);
    QSprites sprites;
    QVERIFY(sprites.fromFile(write(file)));
    QCOMPARE(sprites.cache()->stored(sprites.at(0)->imageRecord()->item),
             block.left(block.size() - block.size() / 2));
    const QByteArray pixels = pixelsOf(sprites, 0);
    QCOMPARE(pixels.size(), 900);
    QCOMPARE(pixels.left(200), unpadded(image).left(200));
    QVERIFY(pixels.endsWith(QByteArray(100, '\0')));
}

void tst_SffFiles::version2_rawAndTdataBlocks()
{
    const QImage image = indexedImage(3, 5, 50);
    V2Sprite raw{unpadded(image), 0, 33, 3, 5};
    raw.format = 0;
    raw.rawBlock = true;
    V2Sprite translated{encodeLZ5(indexedImage(9, 2, 30)), 0, 34, 9, 2};
    translated.format = 4;
    translated.depth = 5;
    translated.flags = 1;
    const QString path = write(v2(QSFF::Version200, {{rgbaColours(), 1, 1}}, {raw, translated}));
    QSprites sprites;
    QVERIFY(sprites.fromFile(path));
    QCOMPARE(pixelsOf(sprites, 0), unpadded(image));
    QCOMPARE(pixelsOf(sprites, 1), unpadded(indexedImage(9, 2, 30)));
    QCOMPARE(sprites.at(1)->flags(), quint16(1));
    // Written again: the flag keeps the block in tdata, and raw pixels become RLE8 for 2.00.
    const QString again = dir.filePath(QStringLiteral("tdata.sff"));
    QVERIFY(sprites.toFile(again));
    QSprites reread;
    QVERIFY(reread.fromFile(again));
    const QByteArray bytes = readBytes(again);
    QVERIFY(qFromLittleEndian<quint32>(bytes.constData() + 64) > 0);
    QCOMPARE(reread.storedLayout().sprites.at(0).format, quint8(QSFF::RLE8Format));
    QCOMPARE(reread.storedLayout().sprites.at(1).flags, quint16(1));
    QCOMPARE(pixelsOf(reread, 0), unpadded(image));
    QCOMPARE(pixelsOf(reread, 1), unpadded(indexedImage(9, 2, 30)));
}

void tst_SffFiles::version2_withoutPalettes()
{
    QImage rgb(5, 5, QImage::Format_RGB32);
    rgb.fill(qRgb(50, 60, 70));
    V2Sprite sprite{encodePNG(rgb), 0, 0, 5, 5};
    sprite.format = 11;
    sprite.depth = 24;
    QSprites sprites;
    QVERIFY(sprites.fromFile(write(v2(QSFF::Version201, {}, {sprite}))));
    QCOMPARE(sprites.paletteCount(), 0u);
    QDialogRecorder recorder;
    QVERIFY(sprites.canSave(QSFF::Version201));
    QVERIFY(!sprites.canSave(QSFF::Version200));
    QCOMPARE(boxTexts(recorder), QStringList{"Save SFF | You can't save this SFF without palettes."});
}

void tst_SffFiles::notSpriteFiles_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QStringList>("boxes");
    QByteArray wrongMagic = v2(QSFF::Version201, {}, {});
    wrongMagic[3] = 'X';
    QByteArray version3 = v2(0x03000000, {}, {});
    QTest::newRow("wrong magic") << wrongMagic << QStringList();
    QTest::newRow("empty file") << QByteArray() << QStringList();
    QTest::newRow("unknown version")
        << version3 << QStringList{"Sprite loading error | %1(0): SFF version '3.0.0.0' not supported yet"};
}

void tst_SffFiles::notSpriteFiles()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QStringList, boxes);
    const QString path = write(bytes);
    QSprites sprites;
    sprites.add();
    QDialogRecorder recorder;
    QVERIFY(!sprites.fromFile(path));
    for (QString& box : boxes)
        box = box.arg(path);
    QCOMPARE(boxTexts(recorder), boxes);
    QCOMPARE(sprites.count(), 0u);
    QCOMPARE(sprites.noUndoCount(), 0u);
    QVERIFY(!sprites.isLoading());
    QVERIFY(!sprites.fromFile(dir.filePath(QStringLiteral("missing.sff"))));
}

// Separate blocks with equal pixels come out sharing one record, whatever their stored form, and are
// written as links. The pixels are compared row by row, so rows that differ only at the end count.
void tst_SffFiles::equalBlocksAreShared_data()
{
    QTest::addColumn<QList<QByteArray>>("blocks"); // a format byte, then the block
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("depth");
    QTest::addColumn<QList<int>>("shares"); // per sprite, the first sprite with the same pixels
    const auto png = SpriteTestKit::pngAt;
    const auto tagged = [](int format, const QByteArray& block) { return char(format) + block; };
    const QImage image = indexedImage(12, 9, 20);
    QImage lastRow = image;
    lastRow.scanLine(8)[11] = 3;
    QTest::newRow("rle8, png8, another, rle8 again")
        << QList<QByteArray>{tagged(2, encodeRLE8(image)), tagged(10, encodePNG(image)),
                             tagged(2, encodeRLE8(indexedImage(12, 9, 20, 1))), tagged(2, encodeRLE8(image))}
        << QSize(12, 9) << 8 << QList<int>{0, 0, 2, 0};
    QTest::newRow("png8 at two levels, lz5")
        << QList<QByteArray>{tagged(10, png(image, 0)), tagged(10, png(image, 100)),
                             tagged(4, encodeLZ5(image))}
        << QSize(12, 9) << 8 << QList<int>{0, 0, 0};
    QTest::newRow("the last pixel differs")
        << QList<QByteArray>{tagged(10, encodePNG(image)), tagged(10, encodePNG(lastRow)),
                             tagged(2, encodeRLE8(lastRow)), tagged(4, encodeLZ5(image))}
        << QSize(12, 9) << 8 << QList<int>{0, 1, 1, 0};
    QImage argb(40, 30, QImage::Format_ARGB32);
    for (int y = 0; y < 30; ++y)
        for (int x = 0; x < 40; ++x)
            argb.setPixel(x, y, qRgba(x * 6, y * 8, 100, y < 20 ? 255 : x * 6));
    QImage alpha = argb;
    alpha.setPixel(39, 29, qRgba(234, 232, 100, 7));
    QTest::newRow("png32: equal at two levels, alpha differs at the end")
        << QList<QByteArray>{tagged(12, png(argb, 100)), tagged(12, png(alpha, 0)), tagged(12, png(argb, 0))}
        << QSize(40, 30) << 32 << QList<int>{0, 1, 0};
    // More sprites of one size than are compared directly: pairs with equal pixels in other forms.
    QList<QByteArray> many;
    QList<int> shares;
    for (int i = 0; i < 12; ++i) {
        const QImage one = indexedImage(16, 64, 30, i / 2);
        many << (i % 2 ? tagged(10, encodePNG(one)) : tagged(2, encodeRLE8(one)));
        shares << (i / 2) * 2;
    }
    QTest::newRow("twelve of one size") << many << QSize(16, 64) << 8 << shares;
}

void tst_SffFiles::equalBlocksAreShared()
{
    QFETCH(QList<QByteArray>, blocks);
    QFETCH(QSize, size);
    QFETCH(int, depth);
    QFETCH(QList<int>, shares);
    QList<V2Sprite> nodes;
    for (int i = 0; i < blocks.size(); ++i) {
        V2Sprite node{blocks.at(i).mid(1), 1, i, size.width(), size.height()};
        node.format = uchar(blocks.at(i).at(0));
        node.depth = depth;
        nodes << node;
    }
    const QString path = write(v2(QSFF::Version201, {{rgbaColours(), 1, 1}}, nodes));
    QSprites sprites;
    QVERIFY(sprites.fromFile(path));
    for (int i = 0; i < shares.size(); ++i) {
        QCOMPARE(sprites.at(uint(i))->imageRecord(), sprites.at(uint(shares.at(i)))->imageRecord());
        QCOMPARE(pixelsOf(sprites, uint(i)), pixelsOf(sprites, uint(shares.at(i))));
    }
    const QString saved = dir.filePath(QStringLiteral("linked.sff"));
    QVERIFY(sprites.toFile(saved));
    QSprites reread;
    QVERIFY(reread.fromFile(saved));
    for (int i = 0; i < shares.size(); ++i)
        QCOMPARE(reread.storedLayout().sprites.at(i).link, shares.at(i) == i ? -1 : shares.at(i));
}

void tst_SffFiles::writer_formats_data()
{
    QTest::addColumn<quint32>("version");
    QTest::addColumn<int>("colours");
    QTest::addColumn<int>("format");
    QTest::addColumn<int>("depth");
    QTest::newRow("2.01, 256 colours: PNG8") << QSFF::Version201 << 200 << int(QSFF::PNG8Format) << 8;
    QTest::newRow("2.01, 32 colours: LZ5") << QSFF::Version201 << 20 << int(QSFF::LZ5Format) << 5;
    QTest::newRow("2.00, 256 colours: RLE8") << QSFF::Version200 << 200 << int(QSFF::RLE8Format) << 8;
    QTest::newRow("2.00, 32 colours: LZ5") << QSFF::Version200 << 20 << int(QSFF::LZ5Format) << 5;
}

// A version 1.01 file saved as version 2: every block is encoded anew in the form of its palette.
void tst_SffFiles::writer_formats()
{
    QFETCH(quint32, version);
    QFETCH(int, colours);
    QFETCH(int, format);
    QFETCH(int, depth);
    QImage image = indexedImage(20, 20, colours);
    QList<QRgb> table = image.colorTable();
    for (int i = colours; i < 256; ++i)
        table[i] = qRgb(1, 1, 1);
    image.setColorTable(table);
    const QString path = write(v1({{pcx(image), 0, 0}}));
    TestProject spritesProject(Stage);
    QSprites sprites(&spritesProject);
    QVERIFY(sprites.fromFile(path));
    const QString saved = dir.filePath(QStringLiteral("formats.sff"));
    QEncodeCounters::reset();
    QVERIFY(sprites.toFile(saved, version));
    QCOMPARE(QEncodeCounters::total(), quint64(1));
    TestProject rereadProject(Stage);
    QSprites reread(&rereadProject);
    QVERIFY(reread.fromFile(saved));
    QCOMPARE(int(reread.storedLayout().sprites.at(0).format), format);
    QCOMPARE(int(reread.storedLayout().sprites.at(0).depth), depth);
    QCOMPARE(pixelsOf(reread, 0), unpadded(image));
    // The cache kept the new form: the next save encodes nothing.
    QEncodeCounters::reset();
    QVERIFY(sprites.toFile(saved));
    QCOMPARE(QEncodeCounters::total(), quint64(0));
}

void tst_SffFiles::writer_storedFormNeedsNoEncoding()
{
    const QImage a = indexedImage(16, 16, 200);
    const QImage b = indexedImage(7, 3, 30, 2);
    V2Sprite rle{encodeRLE8(a), 1, 0, 16, 16};
    V2Sprite lz5{encodeLZ5(b), 1, 1, 7, 3};
    lz5.format = 4;
    lz5.depth = 5;
    V2Sprite png{encodePNG(indexedImage(5, 5, 100, 7)), 1, 2, 5, 5};
    png.format = 10;
    const QByteArray original =
        v2(QSFF::Version201, {{rgbaColours(), 1, 1}, {rgbaColours(32), 1, 2, 32}}, {rle, lz5, png});
    QSprites sprites;
    QVERIFY(sprites.fromFile(write(original)));
    sprites.at(1)->setPalette(sprites.paletteAt(1));
    const QString saved = dir.filePath(QStringLiteral("stored.sff"));
    QEncodeCounters::reset();
    QVERIFY(sprites.toFile(saved));
    QCOMPARE(QEncodeCounters::total(), quint64(0));
    QVERIFY(!sprites.isModified());
    QCOMPARE(sprites.fileName(), saved);
    QSprites reread;
    QVERIFY(reread.fromFile(saved));
    for (uint i = 0; i < 3; ++i) {
        QCOMPARE(reread.storedLayout().sprites.at(i).format, sprites.storedLayout().sprites.at(i).format);
        QCOMPARE(pixelsOf(reread, i), pixelsOf(sprites, i));
    }
}

void tst_SffFiles::writer_headerText()
{
    const QByteArray text("Made in Orlenmark\nPowered by Tavrel 3\nhttps://tavrel.invalid/\0", 61);
    QSprites sprites;
    QVERIFY(sprites.fromFile(write(
        v2(QSFF::Version201, {{rgbaColours(), 1, 1}}, {{encodeRLE8(indexedImage(2, 2)), 0, 0, 2, 2}}))));
    for (quint32 version : {QSFF::Version101, QSFF::Version200, QSFF::Version201}) {
        const QString saved = dir.filePath(QStringLiteral("text.sff"));
        QVERIFY(sprites.toFile(saved, version));
        const QByteArray bytes = readBytes(saved);
        const int at = version == QSFF::Version101 ? 36 : 76;
        QCOMPARE(bytes.mid(at, 76), text + QByteArray(15, '\0'));
        QCOMPARE(bytes.mid(at + 76, 512 - at - 76), QByteArray(512 - at - 76, '\0'));
        QCOMPARE(qFromLittleEndian<quint32>(bytes.constData() + 12), version);
    }
}

void tst_SffFiles::writer_reducesTrueColour()
{
    QImage argb(6, 6, QImage::Format_ARGB32);
    for (int y = 0; y < 6; ++y)
        for (int x = 0; x < 6; ++x)
            argb.setPixel(x, y, qRgb(x * 40, y * 40, 100));
    V2Sprite sprite{encodePNG(argb), 0, 0, 6, 6};
    sprite.format = 12;
    sprite.depth = 32;
    QSprites sprites;
    QVERIFY(sprites.fromFile(write(v2(QSFF::Version201, {{rgbaColours(), 1, 1}}, {sprite}))));
    const QString saved = dir.filePath(QStringLiteral("reduced.sff"));
    QVERIFY(sprites.toFile(saved, QSFF::Version200));
    QCOMPARE(sprites.at(0)->imageProperties().imageFormat(), QImage::Format_Indexed8);
    QVERIFY(sprites.at(0)->palette());
    QSprites reread;
    QVERIFY(reread.fromFile(saved));
    const QImage back = reread.at(0)->image();
    QCOMPARE(back.format(), QImage::Format_Indexed8);
    // 36 colours fit in the table: the colours come back as they were, opaque ones beyond colour 0.
    for (int y = 0; y < 6; ++y)
        for (int x = 0; x < 6; ++x)
            if (back.pixelIndex(x, y) != 0) QCOMPARE(back.pixel(x, y), qRgb(x * 40, y * 40, 100));
}

void tst_SffFiles::writer_characterPaletteOrder()
{
    QSprites sprites;
    QVERIFY(sprites.fromFile(write(v2(QSFF::Version201, {{rgbaColours(), 1, 1}, {rgbaColours(256, 9), 2, 0}},
                                      {{encodeRLE8(indexedImage(2, 2)), 0, 0, 2, 2},
                                       {encodeRLE8(indexedImage(3, 2)), 5, 0, 3, 2},
                                       {encodeRLE8(indexedImage(4, 2)), 6, 0, 4, 2}}))));
    sprites.at(1)->setPalette(sprites.paletteAt(1));
    QList<QList<uint>> asked;
    bool reorder = false;
    connect(&sprites, &QSprites::orderMustBeChanged, this, [&](const QList<uint>& list) {
        asked << list;
        if (reorder) sprites.autoOrganize();
    });
    const QString saved = dir.filePath(QStringLiteral("order.sff"));
    QFile::remove(saved);
    QDialogRecorder recorder;
    QVERIFY(!sprites.toFile(saved, QSFF::Version101));
    QCOMPARE(asked, (QList<QList<uint>>{{2}}));
    QVERIFY(!QFile::exists(saved));
    // Unanswered, the save fails with a word that names the sprite, not in silence.
    QCOMPARE(recorder.calls.size(), 1);
    QCOMPARE(recorder.calls.first().title, QStringLiteral("Sprite order"));
    QVERIFY(recorder.calls.first().text.contains(QStringLiteral(": 6,0.")));
    reorder = true;
    QVERIFY(sprites.toFile(saved, QSFF::Version101));
    QCOMPARE(sprites.at(1)->itemGroup(), 6);
    QCOMPARE(sprites.at(2)->itemGroup(), 5);
    QVERIFY(sprites.characterPaletteOrder().isEmpty());
}

void tst_SffFiles::writer_emptyItems()
{
    QSprites sprites;
    QVERIFY(sprites.fromFile(write(
        v2(QSFF::Version201, {{rgbaColours(), 1, 1}}, {{encodeRLE8(indexedImage(2, 2)), 0, 0, 2, 2}}))));
    sprites.add();
    QDialogRecorder recorder;
    const QString saved = dir.filePath(QStringLiteral("empty.sff"));
    QVERIFY(!sprites.toFile(saved));
    sprites.remove(1);
    sprites.addPalette(QVector<uint>(), QSpritePaletteShareMode::Share, 4, 4);
    sprites.paletteAt(1)->setColorTable(nullptr);
    QVERIFY(!sprites.toFile(saved));
    QCOMPARE(boxTexts(recorder),
             (QStringList{
                 "Empty sprite! | The sprite at index 2 is empty. You can't save a SFF file with an empty "
                 "sprite.",
                 "Empty palette! | The palette at index 2 is empty. You can't save a SFF file with an "
                 "empty palette."}));
    QVERIFY(!QFile::exists(saved));
}

void tst_SffFiles::writer_failedSaveKeepsOldFile()
{
    QSprites sprites;
    QVERIFY(sprites.fromFile(write(
        v2(QSFF::Version201, {{rgbaColours(), 1, 1}},
           {{encodeRLE8(indexedImage(2, 2)), 0, 0, 2, 2}, {encodeRLE8(indexedImage(3, 3)), 0, 1, 3, 3}}))));
    const QString target = dir.filePath(QStringLiteral("old.sff"));
    {
        QFile old(target);
        QVERIFY(old.open(QIODevice::WriteOnly));
        old.write("old contents");
    }
    // Stopped through progress in the middle.
    connect(&sprites, &QSprites::progress, this, [](uint pos, uint, bool& allow) { allow = pos < 2; });
    QVERIFY(!sprites.toFile(target));
    QCOMPARE(readBytes(target), QByteArray("old contents"));
    disconnect(&sprites, &QSprites::progress, this, nullptr);
    // A folder that can't exist: the parent is a file.
    QVERIFY(!sprites.toFile(target + QStringLiteral("/inside.sff")));
    QVERIFY(!sprites.toFile(dir.filePath(QStringLiteral("missing/folder/x.sff"))));
    QCOMPARE(readBytes(target), QByteArray("old contents"));
    QVERIFY(QDir(dir.path()).entryList({"*.sff.*", "old.sff?*"}, QDir::Files).isEmpty());
}

void tst_SffFiles::hostile_data()
{
    QTest::addColumn<QByteArray>("bytes");
    const QByteArray block = encodeRLE8(indexedImage(8, 8));
    const QList<V2Palette> palettes{{rgbaColours(), 1, 1}};
    QTest::newRow("v1: 4 billion images") << v1({{pcx(indexedImage(3, 3)), 0, 0}}, 0xFFFFFFFF);
    V1Sprite backwards{pcx(indexedImage(3, 3)), 0, 0};
    backwards.next = 512;
    QTest::newRow("v1: next points back") << v1({backwards, backwards}, 100000);
    V1Sprite hugePcx{pcx(indexedImage(3, 3)), 0, 0};
    put16(hugePcx.data, 8, 0xFFFF);
    put16(hugePcx.data, 10, 0xFFFF);
    QTest::newRow("v1: PCX of 65536 x 65536") << v1({hugePcx});
    QTest::newRow("v2: 4 billion sprites and palettes")
        << v2(QSFF::Version201, palettes, {{block, 0, 0, 8, 8}}, {0xFFFFFFFF, 0xFFFFFFFF, Auto, Auto});
    QTest::newRow("v2: node tables past the end")
        << v2(QSFF::Version201, palettes, {{block, 0, 0, 8, 8}}, {Auto, Auto, 0x7FFFFFFF, 0xFFFFFF00});
    V2Sprite huge{block, 0, 0, 65535, 65535};
    QTest::newRow("v2: 65535 x 65535 sprite") << v2(QSFF::Version201, palettes, {huge});
    V2Sprite hugeRaw{block, 0, 0, 65535, 65535};
    hugeRaw.format = 0;
    hugeRaw.depth = 32;
    QTest::newRow("v2: 65535 x 65535 raw sprite") << v2(QSFF::Version201, palettes, {hugeRaw});
    V2Sprite zero{block, 0, 0, 0, 0};
    QTest::newRow("v2: 0 x 0 sprite") << v2(QSFF::Version201, palettes, {zero});
    V2Sprite far{block, 0, 0, 8, 8};
    far.offset = 0xFFFFFFF0;
    far.length = 0xFFFFFFFF;
    QTest::newRow("v2: offset and length past the end") << v2(QSFF::Version201, palettes, {far});
    V2Sprite tiny{block, 0, 0, 8, 8};
    tiny.length = 2;
    QTest::newRow("v2: length below the size field") << v2(QSFF::Version201, palettes, {tiny});
    QList<V2Sprite> many;
    for (int i = 0; i < 300; ++i) {
        V2Sprite same{block, 0, i, 8, 8};
        same.offset = 0;
        same.length = 0xFFFFFFFF;
        many << same;
    }
    QTest::newRow("v2: every sprite on the whole data") << v2(QSFF::Version201, palettes, many);
    V2Palette badPalette{rgbaColours(), 1, 1, -5};
    badPalette.length = 0xFFFFFFFF;
    QTest::newRow("v2: palette length past the end")
        << v2(QSFF::Version201, {badPalette}, {{block, 0, 0, 8, 8}});
}

void tst_SffFiles::hostile()
{
    QFETCH(QByteArray, bytes);
    QDialogRecorder recorder;
    QSprites sprites;
    QElapsedTimer timer;
    timer.start();
    sprites.fromFile(write(bytes));
    for (uint i = 0; i < sprites.count(); ++i)
        sprites.at(i)->image();
    QVERIFY(sprites.count() <= uint(bytes.size() / 28));
    QVERIFY2(timer.elapsed() < 20000, "reading took too long");
    qint64 stored = 0;
    for (const QStreamCacheItem* item : sprites.cache()->items())
        stored += item->size;
    QVERIFY(stored <= bytes.size());
}

// Files cut at every boundary of their sections and at a sample of other places.
void tst_SffFiles::truncated()
{
    const QImage image = indexedImage(9, 9, 64);
    V1Sprite linked{QByteArray(), 0, 1};
    const QByteArray version1 = v1({{pcx(image), 0, 0}, linked, {pcx(indexedImage(4, 4)), 0, 2}});
    V2Sprite lz5{encodeLZ5(image), 0, 1, 9, 9};
    lz5.format = 4;
    lz5.flags = 1;
    const QByteArray version2 = v2(QSFF::Version201, {{rgbaColours(), 1, 1}, {QByteArray(), 1, 2, 256, 0}},
                                   {{encodeRLE8(image), 0, 0, 9, 9}, lz5, {QByteArray(), 0, 2, 9, 9}});
    QDialogRecorder recorder;
    for (const QByteArray& whole : {version1, version2}) {
        QList<int> cuts{0, 11, 12, 15, 16, 23, 24, 36, 48, 68, 511, 512, 527, 528, 543, 544, 572, 600};
        for (int at = 0; at < whole.size(); at += 7)
            cuts << at;
        for (int cut : std::as_const(cuts)) {
            if (cut > whole.size()) continue;
            QSprites sprites;
            const bool read = sprites.fromFile(write(whole.left(cut)));
            QVERIFY(read || cut < 16);
            for (uint i = 0; i < sprites.count(); ++i)
                sprites.at(i)->image();
            QVERIFY(sprites.count() <= 3);
        }
    }
}

QTEST_GUILESS_MAIN(tst_SffFiles)
#include "tst_SffFiles.moc"
