// The range operations of the sprite model: which rows a range names, renaming a group, the common
// canvas of aligned images, splitting channels of a range and taking sprites over from another model.
// Each change is one undo step that gives the model back exactly.

#include "QSprite.h"
#include "QSpriteChangeGroup.h"
#include "QSpritePalette.h"
#include "QSprites.h"
#include "SpriteTestKit.h"

#include <QtTest>

namespace {

using SpriteTestKit::colours;
using SpriteTestKit::snapshot;
using Rows = QList<uint>;
using Numbers = QList<QPair<int, int>>;

QImage indexed(QSize size, int fill, int seed = 0)
{
    QImage image(size, QImage::Format_Indexed8);
    QList<QRgb> table(256);
    for (int i = 0; i < 256; ++i)
        table[i] = qRgb(i, seed, 255 - i);
    image.setColorTable(table);
    image.fill(uint(fill));
    return image;
}

QSprite* addSprite(QSprites& sprites, int group, int index, QPoint axis, const QImage& image)
{
    QSprite* sprite = sprites.add();
    sprite->setImage(image);
    sprite->setInfo(sprite->palette(), group, index, axis.x(), axis.y(), 0);
    return sprite;
}

// Groups 10 (0, 1, 2, 5), 20 (0), 10 again (9): a group need not stand in one run. Sprite i has
// palette i, (0, i).
void fill(QSprites& sprites)
{
    const Numbers numbers{{10, 0}, {10, 1}, {10, 2}, {10, 5}, {20, 0}, {10, 9}};
    for (int i = 0; i < numbers.size(); ++i)
        addSprite(sprites, numbers.at(i).first, numbers.at(i).second, QPoint(i, -i),
                  indexed(QSize(4, 3), i + 1, i));
    sprites.undoStack()->clear();
}

Numbers numbers(const QSprites& sprites)
{
    Numbers list;
    for (const QSprite* sprite : sprites.spriteItems())
        list << qMakePair(sprite->itemGroup(), sprite->itemIndex());
    return list;
}

void undoesInOneStep(QSprites& sprites, const QString& name, const QStringList& before)
{
    QCOMPARE(sprites.undoStack()->count(), 1);
    QCOMPARE(sprites.undoStack()->text(0), name);
    sprites.undoChange();
    QCOMPARE(snapshot(sprites), before);
}

} // namespace

class tst_SpriteGroupOperations : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void rangeRows_data()
    {
        QTest::addColumn<bool>("all");
        QTest::addColumn<int>("group");
        QTest::addColumn<bool>("allIndices");
        QTest::addColumn<int>("from");
        QTest::addColumn<int>("to");
        QTest::addColumn<Rows>("rows");
        QTest::newRow("every sprite, the group ignored")
            << true << 99 << false << 0 << 0 << Rows{0, 1, 2, 3, 4, 5};
        QTest::newRow("a whole group in two runs") << false << 10 << true << 0 << 0 << Rows{0, 1, 2, 3, 5};
        QTest::newRow("indices within the bounds, both included")
            << false << 10 << false << 1 << 5 << Rows{1, 2, 3};
        QTest::newRow("a range no index falls in") << false << 10 << false << 6 << 8 << Rows{};
        QTest::newRow("reversed bounds name nothing") << false << 10 << false << 5 << 1 << Rows{};
        QTest::newRow("a group that isn't there") << false << 30 << true << 0 << 0 << Rows{};
    }

    void rangeRows()
    {
        QFETCH(bool, all);
        QFETCH(int, group);
        QFETCH(bool, allIndices);
        QFETCH(int, from);
        QFETCH(int, to);
        QFETCH(Rows, rows);
        QSprites sprites;
        fill(sprites);
        QCOMPARE(sprites.rangeRows(all, group, allIndices, from, to), rows);
    }

    void renameGroup_data()
    {
        QTest::addColumn<int>("newGroup");
        QTest::addColumn<bool>("all");
        QTest::addColumn<int>("from");
        QTest::addColumn<int>("to");
        QTest::addColumn<int>("moved");
        QTest::addColumn<Numbers>("after");
        QTest::newRow("the whole group, both runs")
            << 7 << true << 0 << 0 << 5 << Numbers{{7, 0}, {7, 1}, {7, 2}, {7, 5}, {20, 0}, {7, 9}};
        QTest::newRow("a range of indices")
            << 7 << false << 1 << 5 << 3 << Numbers{{10, 0}, {7, 1}, {7, 2}, {7, 5}, {20, 0}, {10, 9}};
        QTest::newRow("onto a group in use: numbers may repeat")
            << 20 << false << 0 << 0 << 1 << Numbers{{20, 0}, {10, 1}, {10, 2}, {10, 5}, {20, 0}, {10, 9}};
    }

    void renameGroup()
    {
        QFETCH(int, newGroup);
        QFETCH(bool, all);
        QFETCH(int, from);
        QFETCH(int, to);
        QFETCH(int, moved);
        QFETCH(Numbers, after);
        QSprites sprites;
        fill(sprites);
        const QStringList before = snapshot(sprites);
        QSignalSpy changed(&sprites, &QSprites::changed);
        QCOMPARE(sprites.renameGroup(10, newGroup, all, from, to), moved);
        QCOMPARE(numbers(sprites), after);
        // The validation runs once for the whole rename, not once per sprite.
        QCOMPARE(changed.size(), 1);
        undoesInOneStep(sprites, QStringLiteral("renameGroup"), before);
    }

    void renameThatChangesNothingLeavesNoStep_data()
    {
        QTest::addColumn<int>("group");
        QTest::addColumn<int>("newGroup");
        QTest::addColumn<int>("from");
        QTest::addColumn<int>("to");
        QTest::newRow("to the same group") << 10 << 10 << 0 << 9;
        QTest::newRow("a group that isn't there") << 30 << 7 << 0 << 9;
        QTest::newRow("a range without sprites") << 10 << 7 << 6 << 8;
    }

    void renameThatChangesNothingLeavesNoStep()
    {
        QFETCH(int, group);
        QFETCH(int, newGroup);
        QFETCH(int, from);
        QFETCH(int, to);
        QSprites sprites;
        fill(sprites);
        const QStringList before = snapshot(sprites);
        QSignalSpy changed(&sprites, &QSprites::changed);
        QCOMPARE(sprites.renameGroup(group, newGroup, false, from, to), 0);
        QCOMPARE(sprites.undoStack()->count(), 0);
        QCOMPARE(changed.size(), 0);
        QCOMPARE(snapshot(sprites), before);
        QVERIFY(!sprites.isLoading());
    }

    void alignedCanvas_data()
    {
        QTest::addColumn<QList<QRect>>("sprites"); // axis as x, y and the image size as width, height
        QTest::addColumn<QPoint>("axis");
        QTest::addColumn<QSize>("canvas");
        QTest::newRow("one sprite: its own size and axis")
            << QList<QRect>{{7, 30, 20, 40}} << QPoint(7, 30) << QSize(20, 40);
        QTest::newRow("an axis outside the image still gives the image's size")
            << QList<QRect>{{-5, 50, 10, 8}} << QPoint(-5, 50) << QSize(10, 8);
        QTest::newRow("largest axis, farthest right and lower extents")
            << QList<QRect>{{10, 40, 20, 50}, {4, 60, 30, 62}, {12, 10, 14, 30}} << QPoint(12, 60)
            << QSize(12 + 26, 60 + 20);
    }

    void alignedCanvas()
    {
        QFETCH(QList<QRect>, sprites);
        QFETCH(QPoint, axis);
        QFETCH(QSize, canvas);
        QSprites model;
        Rows rows;
        for (const QRect& s : sprites) {
            addSprite(model, 0, int(rows.size()), s.topLeft(), indexed(s.size(), 1));
            rows << uint(rows.size());
        }
        // An empty sprite has nothing to place and doesn't widen the canvas.
        model.add()->setInfo(nullptr, 0, 99, 1000, 1000, 0);
        rows << model.count() - 1;
        QPoint common(-1, -1);
        QCOMPARE(model.alignedCanvas(rows, &common), canvas);
        QCOMPARE(common, axis);
        // Every image placed with its axis on the common one fits the canvas.
        for (uint row = 0; row + 1 < model.count(); ++row)
            QCOMPARE(model.at(row)->alignedImage(common, canvas).size(), canvas);
        QVERIFY(!model.alignedCanvas(Rows{model.count() - 1}, &common).isValid());
    }

    void alignedImagePlacesThePixels_data()
    {
        QTest::addColumn<bool>("rgb");
        QTest::newRow("indexed stays indexed on colour 0") << false;
        QTest::newRow("RGB becomes ARGB on a transparent ground") << true;
    }

    void alignedImagePlacesThePixels()
    {
        QFETCH(bool, rgb);
        QSprites model;
        QImage image = indexed(QSize(3, 2), 0);
        image.setPixel(0, 0, 9);
        image.setPixel(2, 1, 4);
        if (rgb) image = image.convertToFormat(QImage::Format_RGB32);
        QSprite* sprite = addSprite(model, 0, 0, QPoint(1, 1), image);
        const QImage placed = sprite->alignedImage(QPoint(4, 3), QSize(6, 5));
        QCOMPARE(placed.format(), rgb ? QImage::Format_ARGB32 : QImage::Format_Indexed8);
        QCOMPARE(placed.size(), QSize(6, 5));
        // The image's corner stands at (4 - 1, 3 - 1).
        const QImage original = sprite->image();
        for (int y = 0; y < 5; ++y)
            for (int x = 0; x < 6; ++x) {
                const bool inside = x >= 3 && y >= 2 && x < 6 && y < 4;
                if (rgb)
                    QCOMPARE(placed.pixel(x, y), inside ? original.pixel(x - 3, y - 2) | 0xFF000000u : 0u);
                else
                    QCOMPARE(placed.pixelIndex(x, y), inside ? original.pixelIndex(x - 3, y - 2) : 0);
            }
        if (!rgb) QCOMPARE(placed.colorTable(), original.colorTable());
        // A canvas smaller than the image clips it instead of writing past its rows.
        const QImage clipped = sprite->alignedImage(QPoint(0, 0), QSize(2, 1));
        QCOMPARE(clipped.size(), QSize(2, 1));
        QCOMPARE(rgb ? clipped.pixel(0, 0) : uint(clipped.pixelIndex(0, 0)),
                 rgb ? original.pixel(1, 1) | 0xFF000000u : uint(original.pixelIndex(1, 1)));
    }

    void splitsTheRGBSpritesOfARange()
    {
        QSprites sprites;
        QImage rgb(2, 2, QImage::Format_RGB32);
        rgb.fill(qRgb(10, 20, 30));
        addSprite(sprites, 1, 0, QPoint(3, 4), rgb);
        addSprite(sprites, 1, 1, QPoint(0, 0), indexed(QSize(2, 2), 3));
        addSprite(sprites, 1, 2, QPoint(5, 6), rgb.convertToFormat(QImage::Format_ARGB32));
        sprites.undoStack()->clear();
        const QStringList before = snapshot(sprites);
        QCOMPARE(sprites.splitRGB(Rows{0, 1, 2, 2}), 2);
        // Each RGB sprite became three indexed sprites in place; the indexed one stays between them.
        QCOMPARE(sprites.count(), 7u);
        const Numbers expected{{1, 0}, {1, 0}, {1, 0}, {1, 1}, {1, 2}, {1, 2}, {1, 2}};
        QCOMPARE(numbers(sprites), expected);
        for (uint row : {0u, 1u, 2u, 4u, 5u, 6u})
            QCOMPARE(sprites.at(row)->imageProperties().imageFormat(), QImage::Format_Indexed8);
        QCOMPARE(sprites.at(1)->image().pixel(0, 0), qRgb(0, 20, 0));
        QCOMPARE(QPoint(sprites.at(6)->offsetX(), sprites.at(6)->offsetY()), QPoint(5, 6));
        undoesInOneStep(sprites, QStringLiteral("splitRGB"), before);

        // Indexed sprites and rows past the end are left alone, without a step.
        sprites.undoStack()->clear();
        QCOMPARE(sprites.splitRGB(Rows{1, 40}), 0);
        QCOMPARE(sprites.undoStack()->count(), 0);
    }

    void importsFromAnotherModel()
    {
        QSprites source;
        fill(source);
        // Palette 0 of the source has the colours of a palette here; palette 1 clashes with a pair in use.
        QSprites target;
        QSpritePalette* same =
            target.addPalette(source.paletteAt(0)->colors(), QSpritePaletteShareMode::Share, 4, 4);
        target.addPalette(colours(77), QSpritePaletteShareMode::Share, source.paletteAt(1)->itemGroup(),
                          source.paletteAt(1)->itemIndex());
        addSprite(target, 50, 0, QPoint(), indexed(QSize(1, 1), 1));
        target.undoStack()->clear();
        const QStringList before = snapshot(target);
        const uint palettes = target.paletteCount();
        source.paletteAt(1)->setColorCount(200);

        QCOMPARE(target.importSprites(source, Rows{0, 1, 4}), 3);
        QCOMPARE(target.count(), 4u);
        const Numbers expected{{50, 0}, {10, 0}, {10, 1}, {20, 0}};
        QCOMPARE(numbers(target), expected);
        for (uint k = 0; k < 3; ++k) {
            const QSprite* from = source.at(Rows{0, 1, 4}.at(k));
            const QSprite* to = target.at(k + 1);
            QCOMPARE(QPoint(to->offsetX(), to->offsetY()), QPoint(from->offsetX(), from->offsetY()));
            QCOMPARE(to->image(), from->image());
        }
        QCOMPARE(target.at(1)->palette(), same);
        // A new palette keeps its group, takes the next free index, and keeps its colour count.
        const QSpritePalette* moved = target.at(2)->palette();
        QCOMPARE(moved->itemGroup(), source.paletteAt(1)->itemGroup());
        QCOMPARE(moved->itemIndex(), source.paletteAt(1)->itemIndex() + 1);
        QCOMPARE(moved->colorCount(), 200);
        QCOMPARE(target.paletteCount(), palettes + 2);
        undoesInOneStep(target, QStringLiteral("import"), before);

        // The model itself and rows that aren't there import nothing and leave no step.
        target.undoStack()->clear();
        QCOMPARE(target.importSprites(target, Rows{0}), 0);
        QCOMPARE(target.importSprites(source, Rows{17}), 0);
        QCOMPARE(target.undoStack()->count(), 0);
    }

    void importStopsWhenProgressSaysSo()
    {
        QSprites source;
        fill(source);
        QSprites target;
        connect(&target, &QSprites::progress, this, [](uint pos, uint, bool& allow) { allow = pos < 2; });
        QCOMPARE(target.importSprites(source, Rows{0, 1, 2, 3}), 2);
        QCOMPARE(target.count(), 2u);
    }

    void aGroupThatChangesNothingLeavesNoStep()
    {
        QSprites sprites;
        fill(sprites);
        QSignalSpy changed(&sprites, &QSprites::changed);
        {
            QSpriteChangeGroup group(&sprites, QStringLiteral("nothing"));
            QVERIFY(sprites.isLoading());
            QVERIFY(!group.isOpen());
        }
        QVERIFY(!sprites.isLoading());
        QCOMPARE(sprites.undoStack()->count(), 0);
        QCOMPARE(changed.size(), 0);
        {
            QSpriteChangeGroup group(&sprites, QStringLiteral("two"));
            group.open();
            sprites.at(0)->setOffsetX(50);
            group.open();
            sprites.at(1)->setOffsetX(50);
            QCOMPARE(changed.size(), 0);
        }
        QCOMPARE(changed.size(), 1);
        QCOMPARE(sprites.undoStack()->count(), 1);
        QCOMPARE(sprites.undoStack()->text(0), QStringLiteral("two"));
    }
};

QTEST_MAIN(tst_SpriteGroupOperations)
#include "tst_SpriteGroupOperations.moc"
