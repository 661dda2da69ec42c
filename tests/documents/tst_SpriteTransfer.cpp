#include "FileBytes.h"
#include "QSprite.h"
#include "QSpritePalette.h"
#include "QSpriteTransfer.h"
#include "QSprites.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

Q_DECLARE_METATYPE(QSpriteSelection)

namespace {

const QByteArray header = ";0 always import the palette, 1 import only if all colors doesn't match to any "
                          "existing palette\nnoDuplicatePal = 0\n";

const QByteArray sprMakerHead = "[Output]\r\n;filename = chars.sff\r\n\r\n[Option]\r\nsprite.compress.5 = "
                                "lz5\r\nsprite.compress.8 = png8\r\nsprite.compress.24 = "
                                "png24\r\nsprite.compress.32 = png32\r\nsprite.decompressonload = "
                                "0\r\npal.reversepng = 0\r\n\r\n";

// A table whose first colours differ and whose rest repeat colour 255 from `used` on, so that the
// model counts 32 colours for a small `used` and 256 otherwise.
QVector<uint> palette(int used, int seed)
{
    QVector<uint> colours(256, qRgb(9, 9, 9));
    for (int i = 0; i < used; ++i)
        colours[i] = qRgb((i * 7 + seed) & 255, (i * 3) & 255, (seed * 5 + i) & 255);
    colours[0] &= 0x00ffffff;
    return colours;
}

QImage indexed(const QVector<uint>& colours, int seed)
{
    QImage image(3, 2, QImage::Format_Indexed8);
    image.setColorTable(QList<QRgb>(colours.cbegin(), colours.cend()));
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            image.setPixel(x, y, uint((x + y * 3 + seed) % 20));
    return image;
}

// Two palettes (1,0) of 256 colours and (2,3) of 32; sprite (0,0) uses the first, sprite (0,1) the
// second and is decompressed on load, sprite (10,2) has true colour and no palette.
void fill(QSprites& sprites)
{
    const QVector<uint> full = palette(200, 1);
    const QVector<uint> small = palette(20, 2);
    sprites.addPalette(full, QSpritePaletteShareMode::Share, 1, 0);
    sprites.addPalette(small, QSpritePaletteShareMode::Share, 2, 3);
    QSprite* first = sprites.add();
    first->setInfo(nullptr, 0, 0, 5, -3, 0);
    first->setImage(indexed(full, 0), QSpriteShareMode::Share, false, QSpritePaletteMode::SwapPalette,
                    {1, 0});
    QSprite* second = sprites.add();
    second->setInfo(nullptr, 0, 1, 0, 0, quint16(QSpriteFlag::DecompressOnLoad));
    second->setImage(indexed(small, 4), QSpriteShareMode::Share, false, QSpritePaletteMode::SwapPalette,
                     {2, 3});
    QSprite* third = sprites.add();
    third->setInfo(nullptr, 10, 2, 7, 8, 0);
    QImage rgb(2, 2, QImage::Format_RGB32);
    rgb.fill(qRgb(10, 200, 30));
    rgb.setPixel(1, 1, qRgb(1, 2, 3));
    third->setImage(rgb);
}

const QByteArray paletteDef10 = "\n[PaletteDef]\ngroup = 1\nnumber = 0\nfile = 1-0.act\n";
const QByteArray paletteDef23 = "\n[PaletteDef]\ngroup = 2\nnumber = 3\nfile = 2-3.act\n";
const QByteArray spriteDef00 =
    "\n[SpriteDef]\ngroup = 0\nimage = 0\nxaxis = 5\nyaxis = -3\nflags = 0\npalette = 1,0\nfile = 0-0.png\n";
const QByteArray spriteDef01 =
    "\n[SpriteDef]\ngroup = 0\nimage = 1\nxaxis = 0\nyaxis = 0\nflags = 1\npalette = 2,3\nfile = 0-1.png\n";
const QByteArray spriteDef102 =
    "\n[SpriteDef]\ngroup = 10\nimage = 2\nxaxis = 7\nyaxis = 8\nflags = 0\nfile = 10-2.png\n";

} // namespace

class tst_SpriteTransfer : public QObject
{
    Q_OBJECT

private slots:
    void exportFile_data();
    void exportFile();
    void sprMaker_data();
    void sprMaker();
    void sprMakerNameIsLatin1();
    void roundTrip();
    void import_data();
    void import();
    void missingFileChangesNothing();
};

void tst_SpriteTransfer::exportFile_data()
{
    QTest::addColumn<bool>("filled");
    QTest::addColumn<QSpriteSelection>("selection");
    QTest::addColumn<QByteArray>("expected");
    QTest::addColumn<QStringList>("files");

    QTest::newRow("empty model") << false << QSpriteSelection::all() << header << QStringList();
    QTest::newRow("no sprite in the groups")
        << true << QSpriteSelection::ofGroups({5, 6}) << header << QStringList();
    QTest::newRow("all") << true << QSpriteSelection::all()
                         << header + paletteDef10 + paletteDef23 + spriteDef00 + spriteDef01 + spriteDef102
                         << QStringList{"1-0.act", "2-3.act", "0-0.png", "0-1.png", "10-2.png"};
    QTest::newRow("group 10 has no palette")
        << true << QSpriteSelection::ofGroups({10}) << header + spriteDef102 << QStringList{"10-2.png"};
    QTest::newRow("run takes the used palette only")
        << true << QSpriteSelection::run(0, 1, 4) << header + paletteDef23 + spriteDef01
        << QStringList{"2-3.act", "0-1.png"};
}

void tst_SpriteTransfer::exportFile()
{
    QFETCH(bool, filled);
    QFETCH(QSpriteSelection, selection);
    QFETCH(QByteArray, expected);
    QFETCH(QStringList, files);

    QSprites sprites;
    if (filled) fill(sprites);
    QTemporaryDir dir;
    QVERIFY(QSpriteTransfer::exportTo(sprites, dir.filePath("out.tve"), selection));
    QCOMPARE(readBytes(dir.filePath("out.tve")), expected);
    QStringList written = QDir(dir.path()).entryList(QDir::Files);
    written.removeOne("out.tve");
    files.sort();
    written.sort();
    QCOMPARE(written, files);
}

void tst_SpriteTransfer::sprMaker_data()
{
    QTest::addColumn<QSpriteSelection>("selection");
    QTest::addColumn<QByteArray>("body");

    const QByteArray line00 = "0,0, 0-0.png, 5,-3 ? usepal = 1,0\r\n";
    const QByteArray line01 = "0,1, 0-1.png, 0,0 ? usepal = 2,3\r\n";
    const QByteArray line102 = "10,2, 10-2.png, 7,8\r\n";
    const QByteArray options01 =
        "\r\n[Option]\r\nsprite.decompressonload = 1\r\nsprite.removecolors = 32,255\r\n\r\n[Sprite]\r\n";

    QTest::newRow("empty selection") << QSpriteSelection::ofGroups({99})
                                     << QByteArray("[Pal]\r\n\r\n[Sprite]\r\n");
    QTest::newRow("all, options around the decompressed 32-colour sprite")
        << QSpriteSelection::all()
        << "[Pal]\r\n1,0, 1-0.act, 0,256\r\n2,3, 2-3.act, 0,32\r\n\r\n[Sprite]\r\n" + line00 + options01 +
               line01 + "\r\n[Option]\r\nsprite.decompressonload = 0\r\n\r\n[Sprite]\r\n" + line102;
    QTest::newRow("plain sprite needs no option block")
        << QSpriteSelection::run(0, 0, 0) << "[Pal]\r\n1,0, 1-0.act, 0,256\r\n\r\n[Sprite]\r\n" + line00;
    QTest::newRow("option block before the first sprite")
        << QSpriteSelection::run(0, 1, 1)
        << "[Pal]\r\n2,3, 2-3.act, 0,32\r\n\r\n[Sprite]\r\n" + options01 + line01;
}

void tst_SpriteTransfer::sprMaker()
{
    QFETCH(QSpriteSelection, selection);
    QFETCH(QByteArray, body);

    QSprites sprites;
    fill(sprites);
    QTemporaryDir dir;
    QVERIFY(QSpriteTransfer::exportTo(sprites, dir.filePath("chars.DEF"), selection));
    QCOMPARE(readBytes(dir.filePath("chars.DEF")), sprMakerHead + body);
}

void tst_SpriteTransfer::sprMakerNameIsLatin1()
{
    QSprites sprites;
    QTemporaryDir dir;
    const QString target = dir.filePath(QString::fromUtf8("Sprüte Спрайт.def"));
    QVERIFY(QSpriteTransfer::exportTo(sprites, target));
    const QByteArray text = readBytes(target);
    QVERIFY2(text.startsWith("[Output]\r\n;filename = Spr\xfc"
                             "te ??????.sff\r\n"),
             text.constData());
}

void tst_SpriteTransfer::roundTrip()
{
    QSprites source;
    fill(source);
    QTemporaryDir dir;
    QVERIFY(QSpriteTransfer::exportTo(source, dir.filePath("all.tve")));

    QSprites target;
    QVERIFY(QSpriteTransfer::importFrom(target, dir.filePath("all.tve")));
    QCOMPARE(target.paletteCount(), source.paletteCount());
    for (uint i = 0; i < source.paletteCount(); ++i) {
        const QSpritePalette* a = source.paletteAt(i);
        const QSpritePalette* b = target.paletteAt(i);
        QCOMPARE(b->itemGroup(), a->itemGroup());
        QCOMPARE(b->itemIndex(), a->itemIndex());
        QCOMPARE(b->colorCount(), a->colorCount());
        QCOMPARE(b->colors(), a->colors());
    }
    QCOMPARE(target.count(), source.count());
    for (uint i = 0; i < source.count(); ++i) {
        const QSprite* a = source.at(i);
        const QSprite* b = target.at(i);
        QCOMPARE(b->itemGroup(), a->itemGroup());
        QCOMPARE(b->itemIndex(), a->itemIndex());
        QCOMPARE(b->offsetX(), a->offsetX());
        QCOMPARE(b->offsetY(), a->offsetY());
        QCOMPARE(b->flags(), a->flags());
        QCOMPARE(b->palette() ? target.paletteIndexOf(b->palette()) : -1,
                 a->palette() ? source.paletteIndexOf(a->palette()) : -1);
        QCOMPARE(b->image(), a->image());
    }

    QCOMPARE(target.undoStack()->count(), 1);
    QCOMPARE(target.undoStack()->undoText(), QStringLiteral("import"));
    target.undoStack()->undo();
    QCOMPARE(target.count(), 0u);
    QCOMPARE(target.paletteCount(), 0u);
}

void tst_SpriteTransfer::import_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("imageName");
    QTest::addColumn<int>("palettes");
    QTest::addColumn<QString>("sprites");

    const QByteArray twoPalettes = "\n[PaletteDef]\ngroup = 1\nnumber = 0\nfile = p.act\n"
                                   "[PaletteDef]\ngroup = 1\nnumber = 1\nfile = p.act\n";
    QTest::newRow("header comment is ignored, duplicates kept")
        << header + twoPalettes << QString() << 2 << QString();
    QTest::newRow("noDuplicatePal drops the same colours")
        << ";comment\nnoDuplicatePal = 1\n" + twoPalettes << QString() << 1 << QString();
    QTest::newRow("sections in file order, other sections skipped")
        << QByteArray("[SpriteDef]\ngroup = 4\nimage = 2\n[Other]\ngroup = 9\n[SpriteDef]\ngroup = 3\n"
                      "image = 1\nxaxis = -2 ; behind\nyaxis = 6\nflags = 1\n")
        << QString() << 0 << "4,2,0,0,0 3,1,-2,6,1";
    QTest::newRow("non-Latin image name read as UTF-8")
        << QString::fromUtf8("[SpriteDef]\ngroup = 1\nimage = 0\nfile = Спрайт 1-2.png\n").toUtf8()
        << QString::fromUtf8("Спрайт 1-2.png") << 0 << "1,0,0,0,0 image";
    QTest::newRow("pcxfile key and palette by group and number")
        << QByteArray("[PaletteDef]\ngroup = 7\nnumber = 5\nfile = p.act\n"
                      "[SpriteDef]\ngroup = 2\nimage = 3\npalette = 7,5\npcxfile = \"sub/i.png\"\n")
        << QStringLiteral("sub/i.png") << 1 << "2,3,0,0,0 image palette 7,5";
}

void tst_SpriteTransfer::import()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, imageName);
    QFETCH(int, palettes);
    QFETCH(QString, sprites);

    QTemporaryDir dir;
    QSprites source;
    source.addPalette(palette(100, 3), QSpritePaletteShareMode::Share, 0, 0);
    QVERIFY(source.paletteAt(0)->toFile(dir.filePath("p.act")));
    if (!imageName.isEmpty()) {
        QDir(dir.path()).mkpath("sub");
        QVERIFY(indexed(palette(100, 3), 1).save(dir.filePath(imageName), "PNG"));
    }
    QVERIFY(writeBytes(dir.filePath("in.tve"), text));

    QSprites model;
    QVERIFY(QSpriteTransfer::importFrom(model, dir.filePath("in.tve")));
    QStringList seen;
    for (uint i = 0; i < model.count(); ++i) {
        const QSprite* sprite = model.at(i);
        QString entry = QStringLiteral("%1,%2,%3,%4,%5")
                            .arg(sprite->itemGroup())
                            .arg(sprite->itemIndex())
                            .arg(sprite->offsetX())
                            .arg(sprite->offsetY())
                            .arg(sprite->flags());
        if (sprite->hasImage()) entry += " image";
        if (sprite->palette() && !imageName.startsWith(QString::fromUtf8("Спрайт")))
            entry += QStringLiteral(" palette %1,%2")
                         .arg(sprite->palette()->itemGroup())
                         .arg(sprite->palette()->itemIndex());
        seen << entry;
    }
    QCOMPARE(seen.join(' '), sprites);
    // An indexed image without a palette line brings its own palette along.
    const int ownPalettes = imageName.startsWith(QString::fromUtf8("Спрайт")) ? 1 : 0;
    QCOMPARE(int(model.paletteCount()), palettes + ownPalettes);
    QCOMPARE(model.undoStack()->count(), 1);
}

void tst_SpriteTransfer::missingFileChangesNothing()
{
    QSprites model;
    fill(model);
    model.undoStack()->clear();
    QTemporaryDir dir;
    QVERIFY(!QSpriteTransfer::importFrom(model, dir.filePath("missing.tve")));
    QCOMPARE(model.count(), 3u);
    QCOMPARE(model.paletteCount(), 2u);
    QCOMPARE(model.undoStack()->count(), 0);
}

QTEST_GUILESS_MAIN(tst_SpriteTransfer)
#include "tst_SpriteTransfer.moc"
