// The whole-file operations of the sprite model: each is one undo step, and a long random run of
// changes undoes back to every state it passed through.

#include "QPaletteObject.h"
#include "QSprite.h"
#include "QSpriteClipItem.h"
#include "QSpriteImageRecord.h"
#include "QSpritePalette.h"
#include "QSprites.h"
#include "SpriteTestKit.h"

#include <QMimeData>
#include <QtTest>

#include <random>

namespace {

using Numbers = QList<QPair<int, int>>;
using SpriteTestKit::colours;
using SpriteTestKit::snapshot;

// An indexed image of colour 0 with a block of colour `colour` at box.
QImage indexedWithBox(QSize size, QRect box, int colour = 5)
{
    QImage image(size, QImage::Format_Indexed8);
    QList<QRgb> table(256);
    for (int i = 0; i < 256; ++i)
        table[i] = qRgb(i, i, i);
    image.setColorTable(table);
    image.fill(0);
    for (int y = box.top(); y <= box.bottom(); ++y)
        for (int x = box.left(); x <= box.right(); ++x)
            image.setPixel(x, y, uint(colour));
    return image;
}

QImage rgbWithBox(QSize size, QRect box, QImage::Format format)
{
    QImage image(size, format);
    image.fill(qRgba(9, 8, 7, 200));
    for (int y = box.top(); y <= box.bottom(); ++y)
        for (int x = box.left(); x <= box.right(); ++x)
            image.setPixel(x, y, qRgba(1, 2, 3, 255));
    return image;
}

QSprite* addSprite(QSprites& sprites, int group, int index, const QImage& image = QImage())
{
    QSprite* sprite = sprites.add();
    sprite->setInfo(sprite->palette(), group, index, 0, 0, 0);
    if (!image.isNull()) sprite->setImage(image);
    return sprite;
}

// The model as it is, with an empty undo stack, so that an operation's steps can be counted.
QStringList settled(QSprites& sprites)
{
    sprites.undoStack()->clear();
    return snapshot(sprites);
}

// The operation made exactly one undo step of that name, and undoing it gives back the model before.
void undoesInOneStep(QSprites& sprites, const QString& name, const QStringList& before)
{
    QCOMPARE(sprites.undoStack()->count(), 1);
    QCOMPARE(sprites.undoStack()->text(0), name);
    sprites.undoChange();
    QCOMPARE(snapshot(sprites), before);
}

Numbers numbers(const QSprites& sprites)
{
    QList<QPair<int, int>> list;
    for (uint i = 0; i < sprites.count(); ++i)
        list << qMakePair(sprites.at(i)->itemGroup(), sprites.at(i)->itemIndex());
    return list;
}

} // namespace

class tst_SpriteOperations : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void removeGroup_data();
    void removeGroup();
    void removeDuplicatePalettes_data();
    void removeDuplicatePalettes();
    void clearUnusedPalettes_data();
    void clearUnusedPalettes();
    void contentBox_data();
    void contentBox();
    void crop_data();
    void crop();
    void crop_sharedRecord();
    void cropAll_data();
    void cropAll();
    void cropAll_cancel();
    void splitRGB();
    void paste_data();
    void paste();
    void paletteAutoOrganize();
    void reductionTouchesOnlyReducedSprites();
    void randomUndo_data();
    void randomUndo();
};

void tst_SpriteOperations::removeGroup_data()
{
    QTest::addColumn<bool>("all");
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    QTest::addColumn<Numbers>("left");
    using L = Numbers;
    QTest::newRow("all of the group") << true << 0 << 0 << L{{2, 3}};
    QTest::newRow("index range, inclusive") << false << 3 << 5 << L{{1, 0}, {2, 3}, {1, 10}};
    QTest::newRow("range matching nothing")
        << false << 20 << 30 << L{{1, 0}, {1, 5}, {2, 3}, {1, 10}, {1, 3}};
}

void tst_SpriteOperations::removeGroup()
{
    QFETCH(bool, all);
    QFETCH(int, from);
    QFETCH(int, to);
    QFETCH(Numbers, left);
    QSprites sprites;
    for (const auto& [g, i] : QList<QPair<int, int>>{{1, 0}, {1, 5}, {2, 3}, {1, 10}, {1, 3}})
        addSprite(sprites, g, i, indexedWithBox({2, 2}, {0, 0, 1, 1}, g + i));
    const QStringList before = settled(sprites);
    sprites.removeGroup(1, all, from, to);
    QCOMPARE(numbers(sprites), left);
    if (left.size() == 5)
        QCOMPARE(sprites.undoStack()->count(), 0);
    else
        undoesInOneStep(sprites, QStringLiteral("removeGroup"), before);
}

void tst_SpriteOperations::removeDuplicatePalettes_data()
{
    QTest::addColumn<bool>("sharedTable");
    QTest::newRow("equal colours") << false;
    QTest::newRow("one colour table") << true;
}

// Palettes 0 and 2 (and 3) hold the same colours; 1 differs; 4 is empty.
void tst_SpriteOperations::removeDuplicatePalettes()
{
    QFETCH(bool, sharedTable);
    QSprites sprites;
    QSpritePalette* first = sprites.addPalette(colours(1), QSpritePaletteShareMode::Share, 3, 0);
    sprites.addPalette(colours(2), QSpritePaletteShareMode::Share, 3, 1);
    QSpritePalette* repeat = sprites.addPalette(colours(1), QSpritePaletteShareMode::Share, 3, 2);
    QSpritePalette* again = sprites.addPalette(colours(1), QSpritePaletteShareMode::Share, 3, 3);
    sprites.insertPaletteObject(4, new QSpritePalette(&sprites));
    if (sharedTable) again->setColorTable(first->colorTable());
    addSprite(sprites, 0, 0)->setPalette(repeat);
    addSprite(sprites, 0, 1)->setPalette(again);
    addSprite(sprites, 0, 2)->setPalette(sprites.paletteAt(1));
    const QStringList before = settled(sprites);

    sprites.removeDuplicatePalettes();
    QCOMPARE(sprites.paletteCount(), 3u);
    QCOMPARE(sprites.paletteAt(0), first);
    QCOMPARE(sprites.paletteAt(0)->itemIndex(), 0);
    QVERIFY(sprites.paletteAt(2)->isEmpty());
    QCOMPARE(sprites.at(0)->palette(), first);
    QCOMPARE(sprites.at(1)->palette(), first);
    QCOMPARE(sprites.at(2)->palette(), sprites.paletteAt(1));
    undoesInOneStep(sprites, QStringLiteral("removeDuplicatePalettes"), before);

    sprites.removeDuplicatePalettes();
    sprites.removeDuplicatePalettes();
    QCOMPARE(sprites.undoStack()->count(), 1);
}

void tst_SpriteOperations::clearUnusedPalettes_data()
{
    QTest::addColumn<bool>("withSprites");
    QTest::addColumn<QList<int>>("leftGroups");
    QTest::newRow("no sprites: all but group 1") << false << QList<int>{1, 1};
    QTest::newRow("used palettes stay") << true << QList<int>{0, 1, 1};
}

void tst_SpriteOperations::clearUnusedPalettes()
{
    QFETCH(bool, withSprites);
    QFETCH(QList<int>, leftGroups);
    QSprites sprites;
    for (int group : {0, 1, 2, 1, 0})
        sprites.addPalette(colours(group * 10 + int(sprites.paletteCount())), QSpritePaletteShareMode::Share,
                           group, -1);
    if (withSprites) {
        addSprite(sprites, 0, 0)->setPalette(sprites.paletteAt(0));
        addSprite(sprites, 0, 1)->setPalette(sprites.paletteAt(0));
        addSprite(sprites, 0, 2)->setPalette(sprites.paletteAt(1));
    }
    const QStringList before = settled(sprites);
    sprites.clearUnusedPalettes();
    QList<int> groups;
    for (uint i = 0; i < sprites.paletteCount(); ++i)
        groups << sprites.paletteAt(i)->itemGroup();
    QCOMPARE(groups, leftGroups);
    undoesInOneStep(sprites, QStringLiteral("removeUnusedPalettes"), before);
}

void tst_SpriteOperations::contentBox_data()
{
    QTest::addColumn<QImage>("image");
    QTest::addColumn<QRect>("box");
    QTest::newRow("indexed, all 0") << indexedWithBox({4, 3}, QRect()) << QRect();
    QTest::newRow("indexed, one pixel") << indexedWithBox({4, 3}, {2, 1, 1, 1}) << QRect(2, 1, 1, 1);
    QTest::newRow("indexed, whole") << indexedWithBox({4, 3}, {0, 0, 4, 3}) << QRect(0, 0, 4, 3);
    QTest::newRow("RGB32 against the corner")
        << rgbWithBox({6, 5}, {1, 2, 3, 2}, QImage::Format_RGB32) << QRect(1, 2, 3, 2);
    QTest::newRow("ARGB32 against the corner")
        << rgbWithBox({6, 5}, {5, 4, 1, 1}, QImage::Format_ARGB32) << QRect(5, 4, 1, 1);
    QTest::newRow("RGB32, one colour") << rgbWithBox({3, 3}, QRect(), QImage::Format_RGB32) << QRect();
    QTest::newRow("null") << QImage() << QRect();
    QTest::newRow("other format") << QImage(3, 3, QImage::Format_RGB888) << QRect();
}

void tst_SpriteOperations::contentBox()
{
    QFETCH(QImage, image);
    QFETCH(QRect, box);
    const QRect found = QSprite::contentBox(image);
    QCOMPARE(found.isValid(), box.isValid());
    if (box.isValid()) QCOMPARE(found, box);
}

void tst_SpriteOperations::crop_data()
{
    QTest::addColumn<QImage>("image");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QPoint>("axis");
    QTest::newRow("all colour 0 does nothing")
        << indexedWithBox({5, 4}, QRect()) << QSize(5, 4) << QPoint(10, 20);
    QTest::newRow("nothing to cut") << indexedWithBox({5, 4}, {0, 0, 5, 4}) << QSize(5, 4) << QPoint(10, 20);
    QTest::newRow("indexed") << indexedWithBox({5, 4}, {1, 2, 3, 1}) << QSize(3, 1) << QPoint(9, 18);
    QTest::newRow("RGB") << rgbWithBox({5, 4}, {4, 0, 1, 4}, QImage::Format_RGB32) << QSize(1, 4)
                         << QPoint(6, 20);
}

void tst_SpriteOperations::crop()
{
    QFETCH(QImage, image);
    QFETCH(QSize, size);
    QFETCH(QPoint, axis);
    QSprites sprites;
    QSprite* sprite = addSprite(sprites, 0, 0, image);
    sprite->setOffsetX(10);
    sprite->setOffsetY(20);
    const QStringList before = settled(sprites);
    const bool cropped = sprite->crop();
    QCOMPARE(cropped, size != image.size());
    QCOMPARE(sprite->image().size(), size);
    QCOMPARE(QPoint(sprite->offsetX(), sprite->offsetY()), axis);
    if (!cropped) {
        QCOMPARE(sprites.undoStack()->count(), 0);
        return;
    }
    const QStringList after = snapshot(sprites);
    undoesInOneStep(sprites, QStringLiteral("crop"), before);
    sprites.redoChange();
    QCOMPARE(snapshot(sprites), after);
}

void tst_SpriteOperations::crop_sharedRecord()
{
    QSprites sprites;
    const QImage image = indexedWithBox({6, 6}, {2, 3, 2, 2});
    QSprite* a = addSprite(sprites, 0, 0, image);
    addSprite(sprites, 0, 1, indexedWithBox({2, 2}, {0, 0, 1, 1}));
    QSprite* b = addSprite(sprites, 0, 2, image);
    QCOMPARE(a->imageRecord(), b->imageRecord());
    b->setOffsetX(100);
    b->setOffsetY(-7);
    const QStringList before = settled(sprites);
    QVERIFY(b->crop());
    QCOMPARE(a->imageRecord(), b->imageRecord());
    QCOMPARE(a->image().size(), QSize(2, 2));
    QCOMPARE(QPoint(a->offsetX(), a->offsetY()), QPoint(-2, -3));
    QCOMPARE(QPoint(b->offsetX(), b->offsetY()), QPoint(98, -10));
    QCOMPARE(sprites.at(1)->offsetX(), 0);
    undoesInOneStep(sprites, QStringLiteral("crop"), before);
}

void tst_SpriteOperations::cropAll_data()
{
    QTest::addColumn<bool>("all");
    QTest::addColumn<bool>("allIndices");
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    QTest::addColumn<QList<bool>>("cropped");
    // Sprites: (1,0), (1,5), (2,0), (1,9) sharing the record of (1,0), (1,7).
    QTest::newRow("all") << true << false << 0 << 0 << QList<bool>{true, true, true, true, true};
    QTest::newRow("one group") << false << true << 0 << 0 << QList<bool>{true, true, false, true, true};
    QTest::newRow("index range") << false << false << 5 << 7 << QList<bool>{false, true, false, false, true};
    QTest::newRow("shared record reached through a sharer")
        << false << false << 9 << 9 << QList<bool>{true, false, false, true, false};
}

void tst_SpriteOperations::cropAll()
{
    QFETCH(bool, all);
    QFETCH(bool, allIndices);
    QFETCH(int, from);
    QFETCH(int, to);
    QFETCH(QList<bool>, cropped);
    QSprites sprites;
    const QImage shared = indexedWithBox({8, 8}, {2, 2, 2, 2});
    addSprite(sprites, 1, 0, shared);
    addSprite(sprites, 1, 5, indexedWithBox({8, 8}, {1, 1, 2, 2}, 6));
    addSprite(sprites, 2, 0, indexedWithBox({8, 8}, {1, 1, 2, 2}, 7));
    addSprite(sprites, 1, 9, shared);
    addSprite(sprites, 1, 7, indexedWithBox({8, 8}, {1, 1, 2, 2}, 8));
    const QStringList before = settled(sprites);
    QList<uint> steps;
    connect(&sprites, &QSprites::progress, this, [&](uint pos, uint max, bool&) {
        QCOMPARE(max, 5u);
        steps << pos;
    });
    sprites.cropAll(all, 1, allIndices, from, to);
    QCOMPARE(steps, (QList<uint>{0, 1, 2, 3, 4, 5}));
    for (uint i = 0; i < 5; ++i) {
        QCOMPARE(sprites.at(i)->image().width() == 2, cropped.at(int(i)));
        QCOMPARE(sprites.at(i)->offsetX(), cropped.at(int(i)) ? -(i == 0 || i == 3 ? 2 : 1) : 0);
    }
    undoesInOneStep(sprites, QStringLiteral("cropAll"), before);
}

void tst_SpriteOperations::cropAll_cancel()
{
    QSprites sprites;
    for (int i = 0; i < 3; ++i)
        addSprite(sprites, 0, i, indexedWithBox({4, 4}, {1, 1, 1, 1}, i + 1));
    connect(&sprites, &QSprites::progress, this, [](uint pos, uint, bool& allow) { allow = pos < 1; });
    sprites.cropAll(true, 0, true, 0, 0);
    QCOMPARE(sprites.at(0)->image().size(), QSize(1, 1));
    QCOMPARE(sprites.at(1)->image().size(), QSize(4, 4));
    QCOMPARE(sprites.at(2)->image().size(), QSize(4, 4));
}

void tst_SpriteOperations::splitRGB()
{
    QSprites sprites;
    QImage rgb(2, 1, QImage::Format_RGB32);
    rgb.setPixel(0, 0, qRgb(10, 20, 30));
    rgb.setPixel(1, 0, qRgb(200, 100, 50));
    QSprite* sprite = addSprite(sprites, 4, 2, rgb);
    QSprite* sharer = addSprite(sprites, 4, 3, rgb);
    sprite->setInfo(nullptr, 4, 2, 7, 8, 1);
    const QStringList before = settled(sprites);
    QVERIFY(sprite->splitRGB());
    QCOMPARE(sprites.count(), 4u);
    QCOMPARE(sprites.at(3), sharer);
    QCOMPARE(sharer->image().pixel(1, 0), qRgb(200, 100, 50));
    const int values[3][2] = {{10, 200}, {20, 100}, {30, 50}};
    for (uint c = 0; c < 3; ++c) {
        const QSprite* part = sprites.at(c);
        QCOMPARE(part->imageProperties().format, quint32(QImage::Format_Indexed8));
        QCOMPARE(part->image(QSpriteImagePalette::None).pixelIndex(0, 0), values[c][0]);
        QCOMPARE(part->image(QSpriteImagePalette::None).pixelIndex(1, 0), values[c][1]);
        QCOMPARE(QPoint(part->offsetX(), part->offsetY()), QPoint(7, 8));
        QVERIFY(part->palette());
        const QRgb ramp = part->palette()->colors().at(100);
        QCOMPARE(ramp, qRgba(c == 0 ? 100 : 0, c == 1 ? 100 : 0, c == 2 ? 100 : 0, 255));
    }
    undoesInOneStep(sprites, QStringLiteral("splitRGB"), before);
}

void tst_SpriteOperations::paste_data()
{
    QTest::addColumn<bool>("plainImage");
    QTest::newRow("our own format") << false;
    QTest::newRow("a plain image") << true;
}

void tst_SpriteOperations::paste()
{
    QFETCH(bool, plainImage);
    QSprites source;
    QSprite* original = addSprite(source, 30, 4, indexedWithBox({3, 2}, {1, 0, 1, 1}, 9));
    original->setInfo(original->palette(), 30, 4, -5, 6, 1);
    addSprite(source, 31, 0, rgbWithBox({2, 2}, {0, 0, 1, 1}, QImage::Format_ARGB32));
    const QList<QSpriteClipItem> items{QSpriteClipItem::fromSprite(source.at(0)),
                                       QSpriteClipItem::fromSprite(source.at(1))};
    QScopedPointer<QMimeData> data(QSpriteClipItem::toMimeData(items));
    if (plainImage) data->removeFormat(QSpriteClipItem::mimeType());

    QSprites sprites;
    addSprite(sprites, 0, 0, indexedWithBox({1, 1}, {0, 0, 1, 1}));
    addSprite(sprites, 0, 1, indexedWithBox({1, 1}, {0, 0, 1, 1}, 2));
    const QStringList before = settled(sprites);
    const int pasted = sprites.paste(1, data.data());
    QCOMPARE(pasted, plainImage ? 1 : 2);
    QCOMPARE(sprites.count(), uint(2 + pasted));
    const QSprite* first = sprites.at(1);
    QCOMPARE(first->image(QSpriteImagePalette::None).pixelIndex(1, 0), 9);
    QCOMPARE(first->image().pixel(1, 0), original->image().pixel(1, 0));
    if (plainImage) {
        QCOMPARE(QPoint(first->offsetX(), first->offsetY()), QPoint(0, 0));
    } else {
        QCOMPARE(numbers(sprites), (QList<QPair<int, int>>{{0, 0}, {30, 4}, {31, 0}, {0, 1}}));
        QCOMPARE(QPoint(first->offsetX(), first->offsetY()), QPoint(-5, 6));
        QCOMPARE(first->flags(), quint16(1));
        QCOMPARE(sprites.at(2)->image(), source.at(1)->image());
    }
    undoesInOneStep(sprites, QStringLiteral("paste"), before);
}

// Reducing a true-colour sprite on saving may share the record of an indexed sprite with equal bytes
// (two blank sprites), but the indexed sprite keeps its palette; a sprite that shared the true-colour
// image takes the reduced image and its palette.
void tst_SpriteOperations::reductionTouchesOnlyReducedSprites()
{
    QSprites sprites;
    QImage blankIndexed = indexedWithBox({2, 2}, QRect());
    QSprite* indexed = addSprite(sprites, 1, 0, blankIndexed);
    QSpritePalette* own = sprites.addPalette(colours(7), QSpritePaletteShareMode::Share, 1, 0);
    indexed->setPalette(own);
    const QVector<uint> before = own->colors();
    QImage clear(2, 2, QImage::Format_ARGB32);
    clear.fill(qRgba(0, 0, 0, 0));
    QSprite* reduced = addSprite(sprites, 2, 0, clear);
    QSprite* follower = addSprite(sprites, 2, 1);
    follower->setImageRecord(reduced->imageRecord());
    sprites.reduceToIndexed();
    QCOMPARE(indexed->palette(), own);
    QCOMPARE(own->colors(), before);
    QCOMPARE(reduced->imageProperties().format, QImage::Format_Indexed8);
    QCOMPARE(reduced->image(QSpriteImagePalette::None).pixelIndex(1, 1), 0);
    QCOMPARE(follower->imageRecord(), reduced->imageRecord());
    QCOMPARE(follower->palette(), reduced->palette());
}

void tst_SpriteOperations::paletteAutoOrganize()
{
    QSprites sprites;
    for (const auto& [group, index] : QList<QPair<int, int>>{{2, 1}, {1, 3}, {2, 0}, {1, 1}, {0, 9}})
        sprites.addPalette(colours(group * 16 + index), QSpritePaletteShareMode::Share, group, index);
    QSprite* sprite = addSprite(sprites, 0, 0);
    sprite->setPalette(sprites.paletteAt(2));
    const QStringList before = settled(sprites);
    sprites.paletteObject()->autoOrganize();
    QList<QPair<int, int>> order;
    for (uint i = 0; i < sprites.paletteCount(); ++i)
        order << qMakePair(sprites.paletteAt(i)->itemGroup(), sprites.paletteAt(i)->itemIndex());
    QCOMPARE(order, (QList<QPair<int, int>>{{0, 9}, {1, 1}, {1, 3}, {2, 0}, {2, 1}}));
    QCOMPARE(sprite->palette()->itemIndex(), 0);
    undoesInOneStep(sprites, QStringLiteral("autoOrganize"), before);
}

void tst_SpriteOperations::randomUndo_data()
{
    QTest::addColumn<uint>("seed");
    for (uint seed : {1u, 7u, 42u, 1234u, 99991u, 31337u})
        QTest::addRow("seed %u", seed) << seed;
}

// A run of random changes; after it, undo walks back through every state it passed, and redo walks
// forward again.
void tst_SpriteOperations::randomUndo()
{
    QFETCH(uint, seed);
    std::mt19937 random(seed);
    const auto pick = [&](int below) { return below <= 0 ? 0 : int(random() % uint(below)); };
    QSprites sprites;
    sprites.undoStack()->setUndoLimit(0);

    // Few distinct images and palettes, so that records and tables get shared.
    const auto anImage = [&]() {
        const int kind = pick(6);
        const QSize size(1 + pick(5), 1 + pick(5));
        const QRect box(pick(size.width()), pick(size.height()), 1, 1);
        if (kind == 5) return rgbWithBox(size, box, pick(2) ? QImage::Format_RGB32 : QImage::Format_ARGB32);
        QImage image = indexedWithBox(size, box, 1 + kind);
        if (pick(2)) image.setPixel(pick(size.width()), pick(size.height()), uint(pick(4)));
        return image;
    };
    const auto someSprite = [&]() { return sprites.at(uint(pick(int(sprites.count())))); };
    const auto somePalette = [&]() { return sprites.paletteAt(uint(pick(int(sprites.paletteCount())))); };

    QList<QStringList> states{snapshot(sprites)};
    QStringList done;
    for (int step = 0; step < 120; ++step) {
        const int operation = pick(20);
        const int before = sprites.undoStack()->index();
        switch (operation) {
        case 0:
        case 1: {
            sprites.beginChanges();
            QSprite* sprite = sprites.insert(uint(pick(int(sprites.count()) + 1)));
            const QSpritePalette* target = somePalette();
            sprite->setImage(anImage(), QSpriteShareMode(pick(3)), pick(4) == 0, QSpritePaletteMode(pick(4)),
                             target ? QSubItem{target->itemGroup(), target->itemIndex()} : QSubItem());
            sprite->setInfo(sprite->palette(), pick(3), pick(4), pick(9) - 4, pick(9) - 4, quint16(pick(2)));
            sprites.endChanges();
            break;
        }
        case 2:
            sprites.remove(uint(pick(int(sprites.count()))));
            break;
        case 3:
            sprites.move(uint(pick(int(sprites.count()))), uint(pick(int(sprites.count()))));
            break;
        case 4:
            if (QSprite* sprite = someSprite())
                sprite->setInfo(pick(3) ? somePalette() : nullptr, pick(3), pick(4), pick(9) - 4, pick(9) - 4,
                                quint16(pick(2)));
            break;
        case 5:
            if (QSprite* sprite = someSprite())
                sprite->setImage(anImage(), QSpriteShareMode(pick(4)), false, QSpritePaletteMode::Ignore);
            break;
        case 6:
            sprites.addPalette(colours(pick(4)), QSpritePaletteShareMode(pick(3)), pick(3),
                               pick(2) ? -1 : pick(3));
            break;
        case 7:
            sprites.removePalette(uint(pick(int(sprites.paletteCount()))));
            break;
        case 8:
            sprites.movePalette(uint(pick(int(sprites.paletteCount()))),
                                uint(pick(int(sprites.paletteCount()))));
            break;
        case 9:
            if (QSpritePalette* palette = somePalette())
                palette->setColors(colours(pick(4)), QSpriteShareMode(pick(3)));
            break;
        case 10:
            sprites.removeGroup(uint(pick(3)), pick(2), pick(3), pick(3) + 1);
            break;
        case 11:
            sprites.removeDuplicatePalettes();
            break;
        case 12:
            sprites.clearUnusedPalettes();
            break;
        case 13:
            if (QSprite* sprite = someSprite()) sprite->crop();
            break;
        case 14:
            sprites.cropAll(pick(2), uint(pick(3)), pick(2), pick(3), pick(4));
            break;
        case 15:
            if (QSprite* sprite = someSprite()) sprite->splitRGB();
            break;
        case 16: {
            QList<QSpriteClipItem> items;
            for (int k = pick(3); k >= 0 && sprites.count() > 0; --k)
                items << QSpriteClipItem::fromSprite(someSprite());
            sprites.paste(uint(pick(int(sprites.count()) + 1)), items);
            break;
        }
        case 17:
            sprites.autoOrganize();
            break;
        case 18:
            sprites.paletteObject()->autoOrganize();
            break;
        default:
            if (QSpritePalette* palette = somePalette())
                palette->setInfo(pick(3), pick(3), 32 + pick(2) * 224);
            break;
        }
        const int after = sprites.undoStack()->index();
        const QStringList now = snapshot(sprites);
        QVERIFY2(after == before || after == before + 1,
                 qPrintable(QStringLiteral("operation %1 made %2 steps").arg(operation).arg(after - before)));
        if (after == before) {
            QVERIFY2(now == states.last(),
                     qPrintable(QStringLiteral("operation %1 changed without a step").arg(operation)));
            continue;
        }
        states << now;
        done << QString::number(operation);
    }
    QVERIFY(states.size() > 40);

    for (int i = states.size() - 2; i >= 0; --i) {
        sprites.undoChange();
        QVERIFY2(snapshot(sprites) == states.at(i),
                 qPrintable(QStringLiteral("undo of operation %1 (step %2)").arg(done.at(i)).arg(i)));
    }
    QVERIFY(!sprites.undoStack()->canUndo());
    for (int i = 1; i < states.size(); ++i) {
        sprites.redoChange();
        QVERIFY2(snapshot(sprites) == states.at(i),
                 qPrintable(QStringLiteral("redo of operation %1 (step %2)").arg(done.at(i - 1)).arg(i)));
    }
}

QTEST_GUILESS_MAIN(tst_SpriteOperations)
#include "tst_SpriteOperations.moc"
