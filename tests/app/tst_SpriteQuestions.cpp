// The answers to the sprite model's questions on changes: a 1.01 character whose sprites stand where
// the file can't give them the character palette ("Reorder" or not), and a new image for a sprite whose
// image others share (which of them follow).

#include "OrderDlg.h"
#include "QDialogRunner.h"
#include "QSprite.h"
#include "QSpritePalette.h"
#include "QSprites.h"
#include "ShareDlg.h"

#include <QTableView>
#include <QTableWidget>
#include <QTest>

class tst_SpriteQuestions : public QObject
{
    Q_OBJECT

    static void fill(QSprites& sprites)
    {
        QImage image(2, 2, QImage::Format_Indexed8);
        image.setColorTable(QList<QRgb>(256, qRgb(1, 2, 3)));
        image.fill(1);
        QSpritePalette* character =
            sprites.addPalette(QVector<uint>(256, qRgb(9, 9, 9)), QSpritePaletteShareMode::Share, 1, 1);
        QSpritePalette* other =
            sprites.addPalette(QVector<uint>(256, qRgb(5, 5, 5)), QSpritePaletteShareMode::Share, 2, 0);
        for (const auto& [group, palette] :
             {std::pair{0, character}, std::pair{5, other}, std::pair{6, character}}) {
            QSprite* sprite = sprites.add();
            sprite->setInfo(nullptr, group, 0, 0, 0, 0);
            sprite->setImage(image);
            sprite->setPalette(palette);
        }
    }

private Q_SLOTS:
    void sharingAsked();

    void reordersOnlyWhenAsked()
    {
        QSprites sprites;
        fill(sprites);
        // The order matters only in the version being saved, 1.01.
        sprites.setVersion(QSprites::Version_101);
        const QList<uint> rows = sprites.characterPaletteOrder();
        QCOMPARE(rows, QList<uint>{2});
        QStringList shown;
        QDialogRunner::install([&shown](QDialog* dialog) {
            auto* table = static_cast<OrderDlg*>(dialog)->table();
            for (int column = 0; column < 3; ++column)
                shown << table->model()->headerData(column, Qt::Horizontal).toString() + '=' +
                             table->model()->index(0, column).data().toString();
            return int(QDialog::Rejected);
        });
        OrderDlg::answer(&sprites, rows, nullptr);
        QCOMPARE(shown, (QStringList{"Index=2", "Group=6", "Number=0"}));
        QCOMPARE(sprites.characterPaletteOrder(), rows);
        QDialogRunner::install([](QDialog*) { return int(QDialog::Accepted); });
        OrderDlg::answer(&sprites, rows, nullptr);
        QVERIFY(sprites.characterPaletteOrder().isEmpty());
        QCOMPARE(sprites.at(1)->itemGroup(), 6);
        QDialogRunner::install(nullptr);
    }
};

// A new image for a sprite whose image others share: the checked sprites follow it, the unchecked
// keep the old image, and "No sharing" lets the sprite change alone.
void tst_SpriteQuestions::sharingAsked()
{
    QSprites sprites;
    fill(sprites);
    for (uint i = 1; i < 3; ++i)
        sprites.at(i)->setImageRecord(sprites.at(0)->imageRecord());
    QImage other(2, 2, QImage::Format_Indexed8);
    other.setColorTable(QList<QRgb>(256, qRgb(1, 2, 3)));
    other.fill(7);
    connect(&sprites, &QSprites::dataSharing, this,
            [&sprites](QList<uint>& rows) { ShareDlg::answer(&sprites, rows, nullptr); });
    QDialogRunner::install([](QDialog* dialog) {
        auto* table = static_cast<ShareDlg*>(dialog)->table();
        // Sprite 2 stays with the old image.
        table->item(1, 0)->setCheckState(Qt::Unchecked);
        return int(QDialog::Accepted);
    });
    QVERIFY(sprites.at(0)->setImage(other, QSpriteShareMode::AskToShare));
    QCOMPARE(sprites.at(1)->imageRecord(), sprites.at(0)->imageRecord());
    QVERIFY(sprites.at(2)->imageRecord() != sprites.at(0)->imageRecord());
    QDialogRunner::install([](QDialog*) { return int(QDialog::Rejected); });
    other.fill(9);
    QVERIFY(sprites.at(0)->setImage(other, QSpriteShareMode::AskToShare));
    QVERIFY(sprites.at(1)->imageRecord() != sprites.at(0)->imageRecord());
    QDialogRunner::install(nullptr);
}

QTEST_MAIN(tst_SpriteQuestions)
#include "tst_SpriteQuestions.moc"
