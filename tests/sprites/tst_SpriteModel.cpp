// The sprite model on its own: palettes and their sharing, images and their sharing, validation, the
// questions before saving and closing, and undo.

#include "QDialogRecorder.h"
#include "QPaletteObject.h"
#include "QSprite.h"
#include "QSpriteColorTable.h"
#include "QSpriteImageRecord.h"
#include "QSpritePalette.h"
#include "QSprites.h"
#include "SffBuilder.h"
#include "SpriteTestKit.h"
#include "TestProject.h"

#include <QtTest>

using SpriteTestKit::colours;

namespace {

QStringList texts(const QMessages* messages)
{
    QStringList list;
    for (int i = 0; i < messages->size(); ++i)
        list << messages->at(i).text;
    return list;
}

QImage rgbImage(int width, int height, QRgb colour)
{
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(colour);
    return image;
}

} // namespace

class tst_SpriteModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void addPalette_data();
    void addPalette();
    void paletteIndexAndCount_data();
    void paletteIndexAndCount();
    void setColors_data();
    void setColors();
    void removePalette();
    void setImage_sharing_data();
    void setImage_sharing();
    void setImage_askToShare();
    void setImage_palettes_data();
    void setImage_palettes();
    void setImage_warnsBelow201();
    void check_data();
    void check();
    void check_requiredSprites();
    void canSave_data();
    void canSave();
    void canDiscard();
    void undoRedo();
    void autoOrganize_data();
    void autoOrganize();
};

void tst_SpriteModel::addPalette_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("existingGroup");
    QTest::addColumn<bool>("same");
    QTest::newRow("Share always makes a new one") << 0 << 5 << false;
    QTest::newRow("NoShare returns the equal one") << 1 << 5 << true;
    QTest::newRow("NoShare returns one of group 1 too") << 1 << 1 << true;
    QTest::newRow("AskToShare returns the equal one") << 2 << 5 << true;
    QTest::newRow("AskToShare never returns group 1") << 2 << 1 << false;
}

void tst_SpriteModel::addPalette()
{
    QFETCH(int, mode);
    QFETCH(int, existingGroup);
    QFETCH(bool, same);
    QSprites sprites;
    QSpritePalette* existing =
        sprites.addPalette(colours(7), QSpritePaletteShareMode::Share, existingGroup, 0);
    sprites.addPalette(colours(8), QSpritePaletteShareMode::Share, 3, 0);
    const int before = sprites.undoStack()->count();
    QSpritePalette* added = sprites.addPalette(colours(7), QSpritePaletteShareMode(mode), 4, -1);
    QCOMPARE(added == existing, same);
    QCOMPARE(sprites.paletteCount(), same ? 2u : 3u);
    QCOMPARE(sprites.undoStack()->count(), same ? before : before + 1);
    if (!same) {
        QCOMPARE(added->itemGroup(), 4);
        QCOMPARE(added->itemIndex(), 0);
        sprites.undoChange();
        QCOMPARE(sprites.paletteCount(), 2u);
        sprites.redoChange();
        QCOMPARE(sprites.paletteAt(2)->colors(), colours(7));
    }
}

void tst_SpriteModel::paletteIndexAndCount_data()
{
    QTest::addColumn<int>("differentUpTo");
    QTest::addColumn<int>("count");
    QTest::newRow("every colour equal") << -1 << 32;
    QTest::newRow("colours up to 31 differ") << 31 << 32;
    QTest::newRow("colour 32 differs") << 32 << 256;
    QTest::newRow("all differ") << 255 << 256;
}

void tst_SpriteModel::paletteIndexAndCount()
{
    QFETCH(int, differentUpTo);
    QFETCH(int, count);
    QSprites sprites;
    QCOMPARE(sprites.addPalette(colours(1), QSpritePaletteShareMode::Share, 6, -1)->itemIndex(), 0);
    sprites.addPalette(colours(2), QSpritePaletteShareMode::Share, 6, 7);
    sprites.addPalette(colours(3), QSpritePaletteShareMode::Share, 2, 40);
    QSpritePalette* palette =
        sprites.addPalette(colours(4, differentUpTo), QSpritePaletteShareMode::Share, 6, -1);
    QCOMPARE(palette->itemIndex(), 8);
    QCOMPARE(palette->colorCount(), count);
    palette->setColorCount(1000);
    QCOMPARE(palette->colorCount(), 256);
    palette->setProperty("colorCount", 300);
    QCOMPARE(palette->colorCount(), 256);
    // Palettes alone make a model that isn't empty.
    QVERIFY(!sprites.isEmpty());
    QCOMPARE(sprites.paletteObject()->rowCount(), 4);
}

void tst_SpriteModel::setColors_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<bool>("bothChange");
    QTest::newRow("Share writes into the shared table") << 0 << true;
    QTest::newRow("NoShare gives the palette a table of its own") << 1 << false;
    QTest::newRow("AskToShare likewise") << 2 << false;
}

void tst_SpriteModel::setColors()
{
    QFETCH(int, mode);
    QFETCH(bool, bothChange);
    QSprites sprites;
    QSpritePalette* a = sprites.addPalette(colours(1), QSpritePaletteShareMode::Share, 1, 1);
    QSpritePalette* b = sprites.addPalette(colours(2), QSpritePaletteShareMode::Share, 1, 2);
    b->setColorTable(a->colorTable());
    sprites.undoStack()->clear();
    b->setColors(colours(9), QSpriteShareMode(mode));
    QCOMPARE(b->colors(), colours(9));
    QCOMPARE(a->colors(), bothChange ? colours(9) : colours(1));
    QCOMPARE(a->colorTable() == b->colorTable(), bothChange);
    QVERIFY(sprites.isModified());
    sprites.undoChange();
    QCOMPARE(a->colors(), colours(1));
    QCOMPARE(b->colors(), colours(1));
    QCOMPARE(a->colorTable(), b->colorTable());
    sprites.redoChange();
    QCOMPARE(b->colors(), colours(9));
    QCOMPARE(a->colors(), bothChange ? colours(9) : colours(1));
}

void tst_SpriteModel::removePalette()
{
    QSprites sprites;
    sprites.addPalette(colours(1), QSpritePaletteShareMode::Share, 1, 1);
    QSpritePalette* used = sprites.addPalette(colours(2), QSpritePaletteShareMode::Share, 1, 2);
    QSprite* a = sprites.add();
    QSprite* b = sprites.add();
    a->setPalette(used);
    b->setPalette(used);
    sprites.removePalette(1);
    QCOMPARE(sprites.paletteCount(), 1u);
    QVERIFY(!sprites.at(0)->palette());
    QVERIFY(!sprites.at(1)->palette());
    sprites.undoChange();
    QCOMPARE(sprites.paletteCount(), 2u);
    QCOMPARE(sprites.at(0)->palette(), sprites.paletteAt(1));
    QCOMPARE(sprites.at(1)->palette(), sprites.paletteAt(1));
    QCOMPARE(sprites.paletteAt(1)->colors(), colours(2));
    sprites.movePalette(1, 0);
    QCOMPARE(sprites.at(0)->palette(), sprites.paletteAt(0));
    sprites.undoChange();
    QCOMPARE(sprites.at(0)->palette(), sprites.paletteAt(1));
}

void tst_SpriteModel::setImage_sharing_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<bool>("takesEqual");
    QTest::addColumn<bool>("sharerFollows");
    QTest::newRow("Share: takes the record of the equal sprite") << 0 << true << false;
    QTest::newRow("NoShare") << 1 << false << false;
    QTest::newRow("ReplaceShared") << 3 << false << true;
}

// Sprites 0 and 1 share a record; sprite 2 has other pixels. Sprite 0 gets the pixels of sprite 2.
void tst_SpriteModel::setImage_sharing()
{
    QFETCH(int, mode);
    QFETCH(bool, takesEqual);
    QFETCH(bool, sharerFollows);
    QSprites sprites;
    for (int i = 0; i < 3; ++i)
        sprites.add();
    const QImage first = rgbImage(3, 3, qRgb(1, 1, 1));
    const QImage second = rgbImage(3, 3, qRgb(2, 2, 2));
    sprites.at(0)->setImage(first);
    sprites.at(1)->setImage(first);
    sprites.at(2)->setImage(second);
    QCOMPARE(sprites.at(1)->imageRecord(), sprites.at(0)->imageRecord());
    QVERIFY(sprites.at(0)->imageIsShared());
    sprites.undoStack()->clear();

    sprites.at(0)->setImage(second, QSpriteShareMode(mode));
    QCOMPARE(sprites.at(0)->image().pixel(0, 0), second.pixel(0, 0));
    QCOMPARE(sprites.at(0)->imageRecord() == sprites.at(2)->imageRecord(), takesEqual);
    QCOMPARE(sprites.at(1)->image().pixel(0, 0), sharerFollows ? second.pixel(0, 0) : first.pixel(0, 0));
    sprites.undoChange();
    for (int i = 0; i < 2; ++i)
        QCOMPARE(sprites.at(i)->image().pixel(0, 0), first.pixel(0, 0));
    QCOMPARE(sprites.at(2)->image().pixel(0, 0), second.pixel(0, 0));
    sprites.redoChange();
    QCOMPARE(sprites.at(0)->image().pixel(0, 0), second.pixel(0, 0));
    QCOMPARE(sprites.at(1)->image().pixel(0, 0), sharerFollows ? second.pixel(0, 0) : first.pixel(0, 0));
}

void tst_SpriteModel::setImage_askToShare()
{
    QSprites sprites;
    for (int i = 0; i < 4; ++i)
        sprites.add()->setImage(rgbImage(2, 2, qRgb(5, 5, 5)));
    QList<uint> offered;
    connect(&sprites, &QSprites::dataSharing, this, [&](QList<uint>& list) {
        offered = list;
        list.removeAll(2u);
    });
    sprites.at(0)->setImage(rgbImage(2, 2, qRgb(6, 6, 6)), QSpriteShareMode::AskToShare);
    QCOMPARE(offered, (QList<uint>{1, 2, 3}));
    QCOMPARE(sprites.at(1)->imageRecord(), sprites.at(0)->imageRecord());
    QCOMPARE(sprites.at(3)->imageRecord(), sprites.at(0)->imageRecord());
    QCOMPARE(sprites.at(2)->image().pixel(1, 1), qRgb(5, 5, 5));
    QCOMPARE(sprites.at(3)->image().pixel(1, 1), qRgb(6, 6, 6));
    sprites.undoChange();
    for (uint i = 0; i < 4; ++i)
        QCOMPARE(sprites.at(i)->image().pixel(1, 1), qRgb(5, 5, 5));
}

void tst_SpriteModel::setImage_palettes_data()
{
    QTest::addColumn<int>("paletteMode");
    QTest::addColumn<bool>("invert");
    QTest::addColumn<int>("expectedPalette"); // -1: a new one made from the image
    QTest::newRow("no palette yet: one from the image") << 0 << false << -1;
    QTest::newRow("inverted") << 0 << true << -1;
    QTest::newRow("OwnPalette") << 1 << false << -1;
    QTest::newRow("SwapPalette") << 3 << false << 1;
    QTest::newRow("AdaptImage") << 2 << false << 1;
}

void tst_SpriteModel::setImage_palettes()
{
    QFETCH(int, paletteMode);
    QFETCH(bool, invert);
    QFETCH(int, expectedPalette);
    QSprites sprites;
    sprites.addPalette(colours(1), QSpritePaletteShareMode::Share, 1, 1);
    const QImage image = SffBuilder::indexedImage(4, 4, 16);
    // The image's colours in the other order.
    const QList<QRgb> table = image.colorTable();
    QVector<uint> reversed(table.begin(), table.end());
    std::reverse(reversed.begin(), reversed.end());
    sprites.addPalette(reversed, QSpritePaletteShareMode::Share, 7, 7);
    QSprite* sprite = sprites.add();
    sprite->setImage(image, QSpriteShareMode::Share, invert, QSpritePaletteMode(paletteMode), QSubItem{7, 7});
    QVERIFY(sprite->palette());
    if (expectedPalette >= 0) {
        QCOMPARE(sprite->palette(), sprites.paletteAt(uint(expectedPalette)));
    } else {
        QCOMPARE(sprite->palette()->itemGroup(), 0);
        QCOMPARE(qAlpha(sprite->palette()->colors().at(0)), 0);
    }
    const QImage shown = sprite->image();
    for (int y = 0; y < 4; ++y)
        for (int x = 0; x < 4; ++x) {
            const int original = image.pixelIndex(x, y);
            const int now = shown.pixelIndex(x, y);
            if (invert) QCOMPARE(now, 255 - original);
            if (paletteMode == 3) QCOMPARE(now, original);
            // Adapted or own: the colour stays (colour 0 of an own palette turns clear).
            if (paletteMode == 2 || (paletteMode <= 1 && original != 0))
                QCOMPARE(QColor(shown.pixel(x, y)).rgb(), QColor(image.pixel(x, y)).rgb());
        }
}

void tst_SpriteModel::setImage_warnsBelow201()
{
    QSprites sprites;
    sprites.setVersion(QSprites::Version_200);
    sprites.add();
    sprites.add()->setItemGroup(12);
    QDialogRecorder recorder;
    sprites.at(1)->setImage(rgbImage(2, 2, qRgb(1, 2, 3)));
    sprites.at(1)->setImage(SffBuilder::indexedImage(2, 2));
    QCOMPARE(recorder.calls.size(), 1);
    QCOMPARE(recorder.calls.at(0).title, QStringLiteral("Warning!"));
    QCOMPARE(recorder.calls.at(0).text,
             QStringLiteral(
                 "The image to be set to the sprite 12, 0 (#2) isn't color indexed.\nFor the current SFF "
                 "version, the image will be converted to indexed with an optimized palette when you "
                 "save the file."));
}

void tst_SpriteModel::check_data()
{
    QTest::addColumn<quint32>("version");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("2.01") << quint32(QSprites::Version_201)
                          << QStringList{"Empty sprite!",
                                         "Indexed sprite without palette!",
                                         "The group 5, index 5 is already in use by sprite #2!",
                                         "The group 5, index 5 is already in use by sprite #3!",
                                         "The group 5, index 5 is already in use by sprite #2!",
                                         "Empty palette!",
                                         "The group 1, index 1 is already in use by palette #0!"};
    QTest::newRow("1.01")
        << quint32(QSprites::Version_101)
        << QStringList{
               "Empty sprite!",
               "Indexed sprite without palette!",
               "Image format not supported for the current version (automatic conversion to 8bit will be "
               "made on save)!",
               "Sprite can't receive the group 1 (character) palette at his position!",
               "The group 5, index 5 is already in use by sprite #2!",
               "The group 5, index 5 is already in use by sprite #3!",
               "The group 5, index 5 is already in use by sprite #2!",
               "Empty palette!",
               "The group 1, index 1 is already in use by palette #0!"};
}

// Sprites: empty; indexed without palette; RGB (5, 5); RGB (5, 5) with palette of group 1 after it;
// (5, 5) again. Palettes: (1, 1), an empty (1, 1).
void tst_SpriteModel::check()
{
    QFETCH(quint32, version);
    QFETCH(QStringList, expected);
    TestProject project(Stage);
    QSprites sprites(&project);
    sprites.setVersion(version);
    QSpritePalette* palette = sprites.addPalette(colours(1), QSpritePaletteShareMode::Share, 1, 1);
    sprites.addPalette(colours(1), QSpritePaletteShareMode::Share, 1, 1)->setColorTable(nullptr);
    sprites.add();
    sprites.add()->setImage(SffBuilder::indexedImage(2, 2));
    sprites.at(1)->setPalette(nullptr);
    sprites.at(1)->setItemGroup(8);
    sprites.paletteObject()->remove(2);
    sprites.add()->setInfo(nullptr, 5, 5, 0, 0, 0);
    sprites.add()->setInfo(palette, 5, 5, 0, 0, 0);
    sprites.add()->setInfo(nullptr, 5, 5, 0, 0, 0);
    QDialogRecorder recorder;
    sprites.at(2)->setImage(rgbImage(2, 2, 1));
    sprites.at(3)->setImage(rgbImage(2, 2, 1));
    sprites.at(4)->setImage(rgbImage(2, 2, 1));
    QStringList messages = texts(sprites.messages());
    // The character rule only holds in characters; here the project is a stage.
    QVERIFY(!messages.contains("Sprite can't receive the group 1 (character) palette at his position!"));
    TestProject character(Character);
    sprites.setProject(&character);
    sprites.check();
    messages = texts(sprites.messages()).filter(QRegularExpression("^(?!Required)"));
    if (version != QSprites::Version_201) {
        // One format message per RGB sprite; compare one of them.
        messages.removeAll(expected.at(2));
        messages.insert(2, expected.at(2));
    }
    QCOMPARE(messages.join('\n'), expected.join('\n'));
    // A true-colour sprite below 2.01 is an error: saving in that version loses its colours.
    for (int m = 0; m < sprites.messages()->size(); ++m) {
        const QMessage message = sprites.messages()->at(m);
        if (message.text.startsWith(QStringLiteral("Image format not supported")))
            QCOMPARE(message.severity, 0);
        if (message.text == QStringLiteral("Empty sprite!")) QCOMPARE(message.severity, 0);
    }
    sprites.setProject(nullptr);
}

void tst_SpriteModel::check_requiredSprites()
{
    QSprites sprites;
    sprites.check();
    QCOMPARE(sprites.messages()->count(0), 63);
    QCOMPARE(sprites.messages()->at(0).text, QStringLiteral("Required sprite 5000, 0 is missing!"));
    QCOMPARE(sprites.messages()->at(62).text, QStringLiteral("Required sprite 5062, 10 is missing!"));
    QVERIFY(texts(sprites.messages()).contains("Required sprite 5020, 20 is missing!"));
    QVERIFY(texts(sprites.messages()).contains("Required sprite 5032, 50 is missing!"));
    for (const QSubItem& item : QSprites::requiredSprites()) {
        QSprite* sprite = sprites.add();
        sprite->setInfo(nullptr, item.group, item.index, 0, 0, 0);
    }
    QCOMPARE(texts(sprites.messages()).filter("Required").size(), 0);
    QCOMPARE(sprites.messages()->count(0), 63);
    QCOMPARE(sprites.messages()->at(0).text, QStringLiteral("Empty sprite!"));
}

void tst_SpriteModel::canSave_data()
{
    QTest::addColumn<quint32>("version");
    QTest::addColumn<QString>("content");
    QTest::addColumn<QString>("box");
    const QString empty = "You can't save an empty SFF because M.U.G.E.N. will not open it.";
    const QString noPalettes = "You can't save this SFF without palettes.";
    QTest::newRow("no sprites") << quint32(QSprites::Version_201) << "" << empty;
    QTest::newRow("palettes only") << quint32(QSprites::Version_201) << "p" << empty;
    QTest::newRow("2.01, RGB only, no palettes") << quint32(QSprites::Version_201) << "r" << QString();
    QTest::newRow("2.00, RGB only, no palettes") << quint32(QSprites::Version_200) << "r" << noPalettes;
    QTest::newRow("2.01, indexed, no palettes") << quint32(QSprites::Version_201) << "i" << noPalettes;
    QTest::newRow("2.01, indexed with palettes") << quint32(QSprites::Version_201) << "ip" << QString();
}

void tst_SpriteModel::canSave()
{
    QFETCH(quint32, version);
    QFETCH(QString, content);
    QFETCH(QString, box);
    QSprites sprites;
    if (content.contains('r')) sprites.add()->setImage(rgbImage(2, 2, 1));
    if (content.contains('i')) {
        sprites.add()->setImage(SffBuilder::indexedImage(2, 2));
        sprites.clearPalettes();
    }
    if (content.contains('p')) sprites.addPalette(colours(1), QSpritePaletteShareMode::Share, 1, 1);
    QDialogRecorder recorder;
    QCOMPARE(sprites.canSave(version), box.isEmpty());
    QCOMPARE(recorder.calls.size(), box.isEmpty() ? 0 : 1);
    if (!box.isEmpty()) {
        QCOMPARE(recorder.calls.at(0).title, QStringLiteral("Save SFF"));
        QCOMPARE(recorder.calls.at(0).text, box);
        QCOMPARE(recorder.calls.at(0).icon, QUserDialogs::Warning);
    }
}

void tst_SpriteModel::canDiscard()
{
    QSprites sprites;
    QDialogRecorder recorder;
    QVERIFY(sprites.canDiscard());
    QVERIFY(recorder.calls.isEmpty());
    sprites.add();
    recorder.answers << QUserDialogs::No << QUserDialogs::Yes;
    QVERIFY(!sprites.canDiscard());
    QVERIFY(sprites.canDiscard());
    QCOMPARE(recorder.calls.at(0).title, QStringLiteral("Discard changes"));
    QCOMPARE(
        recorder.calls.at(0).text,
        QStringLiteral("Do you really want to discard the changes made in the sprites and/or palettes?"));
    QCOMPARE(recorder.calls.at(0).defaultButton, QUserDialogs::No);
    QCOMPARE(recorder.calls.at(0).buttons, QUserDialogs::Yes | QUserDialogs::No);
}

void tst_SpriteModel::undoRedo()
{
    QSprites sprites;
    int changes = 0;
    connect(&sprites, &QSprites::changed, this, [&] { ++changes; });
    QList<QStringList> states{SpriteTestKit::snapshot(sprites)};
    const auto step = [&](auto change) {
        sprites.beginChanges();
        change();
        sprites.endChanges();
        states << SpriteTestKit::snapshot(sprites);
    };
    step([&] { sprites.add()->setImage(rgbImage(1, 1, qRgb(10, 0, 0))); });
    step([&] { sprites.insert(0)->setInfo(nullptr, 3, 4, 5, 6, 1); });
    step([&] { sprites.at(1)->setOffsetX(-20); });
    step([&] { sprites.move(0, 1); });
    step([&] { sprites.at(1)->setImage(rgbImage(1, 1, qRgb(30, 0, 0))); });
    step([&] { sprites.remove(0); });
    step([&] { sprites.at(0)->setFlag(QSpriteFlag::DecompressOnLoad, false); });
    QVERIFY(changes > 0);
    QCOMPARE(sprites.undoStack()->count(), 7);
    for (int i = states.size() - 2; i >= 0; --i) {
        sprites.undoChange();
        QCOMPARE(SpriteTestKit::snapshot(sprites), states.at(i));
    }
    for (int i = 1; i < states.size(); ++i) {
        sprites.redoChange();
        QCOMPARE(SpriteTestKit::snapshot(sprites), states.at(i));
    }
    QVERIFY(sprites.isModified());
    QCOMPARE(sprites.noUndoCount(), 0u);
}

void tst_SpriteModel::autoOrganize_data()
{
    QTest::addColumn<quint32>("version");
    QTest::addColumn<QString>("expected");
    QTest::newRow("2.01: group, then index") << quint32(QSprites::Version_201) << "0,0 0,1 1,0 5,0 9000,0";
    QTest::newRow("1.01: palette runs, character first, 9000 last")
        << quint32(QSprites::Version_101) << "0,1 0,0 1,0 5,0 9000,0";
}

// Sprites (9000, 0) P1, (5, 0) P2, (0, 0) P1, (1, 0) P1, (0, 1) without palette.
void tst_SpriteModel::autoOrganize()
{
    QFETCH(quint32, version);
    QFETCH(QString, expected);
    QSprites sprites;
    sprites.setVersion(version);
    QSpritePalette* character = sprites.addPalette(colours(1), QSpritePaletteShareMode::Share, 1, 1);
    QSpritePalette* other = sprites.addPalette(colours(2), QSpritePaletteShareMode::Share, 2, 0);
    const QList<QPair<QPair<int, int>, QSpritePalette*>> items{
        {{9000, 0}, character}, {{5, 0}, other}, {{0, 0}, character}, {{1, 0}, character}, {{0, 1}, nullptr}};
    for (const auto& item : items)
        sprites.add()->setInfo(item.second, item.first.first, item.first.second, 0, 0, 0);
    sprites.autoOrganize();
    QStringList order;
    for (uint i = 0; i < sprites.count(); ++i)
        order << QStringLiteral("%1,%2").arg(sprites.at(i)->itemGroup()).arg(sprites.at(i)->itemIndex());
    QCOMPARE(order.join(' '), expected);
    sprites.undoChange();
    QCOMPARE(sprites.at(0)->itemGroup(), 9000);
    QCOMPARE(sprites.at(4)->itemIndex(), 1);
}

QTEST_GUILESS_MAIN(tst_SpriteModel)
#include "tst_SpriteModel.moc"
