// A session of edits in the sprites editor on a real character, then a save: the file read back holds
// exactly the edits, and the undo stack takes every edit back to the file as it was opened.

#include "QAnimSpriteWorkspace.h"
#include "QDialogRecorder.h"
#include "QMugenModel.h"
#include "QSprite.h"
#include "QSpritePalette.h"
#include "QSprites.h"
#include "QSpritesEditor.h"
#include "TestData.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <QWidget>

namespace {

// What a user sees of each sprite, by content: numbers, axis, pixels and the colours it is shown
// with. Palette positions are left out, since a file version may store shared palettes its own way.
QStringList contents(const QSprites& sprites)
{
    QStringList lines;
    for (const QSprite* sprite : sprites.spriteItems()) {
        const QImage image = sprite->image(QSpriteImagePalette::Default);
        QByteArray pixels;
        for (int y = 0; y < image.height(); ++y)
            pixels += QByteArray(reinterpret_cast<const char*>(image.constScanLine(y)),
                                 int(qsizetype(image.width()) * image.depth() / 8));
        QByteArray colours;
        for (QRgb colour : image.colorTable())
            colours += QByteArray::number(colour, 16) + ' ';
        lines << QStringLiteral("%1,%2 axis %3,%4 %5x%6/%7 %8 %9")
                     .arg(sprite->itemGroup())
                     .arg(sprite->itemIndex())
                     .arg(sprite->offsetX())
                     .arg(sprite->offsetY())
                     .arg(image.width())
                     .arg(image.height())
                     .arg(image.depth())
                     .arg(QString::number(qHash(pixels), 16), QString::number(qHash(colours), 16));
    }
    return lines;
}

} // namespace

class tst_SpriteEditsSave : public QObject
{
    Q_OBJECT

    QWidget host;
    QAnimSpriteWorkspace* workspace = nullptr;
    QSpritesEditor* editor = nullptr;
    QMap<QString, QString> variables;

private Q_SLOTS:
    void initTestCase()
    {
        host.resize(800, 600);
        workspace = new QAnimSpriteWorkspace(&host);
        editor = new QSpritesEditor(workspace);
    }

    void cleanupTestCase()
    {
        delete editor;
        delete workspace;
    }

    void editsSurviveTheSave_data()
    {
        QTest::addColumn<QString>("file");
        QTest::newRow("sample") << TestData::binDir() + QStringLiteral("/samples/Roan/Roan.sff");
        for (const char* name : {"kfm.sff", "Chang.sff", "kfm720.sff"}) {
            const QStringList found = TestData::files({QLatin1String(name)});
            if (!found.isEmpty()) QTest::newRow(name) << found.first();
        }
    }

    void editsSurviveTheSave()
    {
        QFETCH(QString, file);
        if (!QFile::exists(file)) QSKIP("the file is not there (sample not built or no test data)");
        QTemporaryDir dir;
        const QString copy = dir.filePath(QStringLiteral("edited.sff"));
        QVERIFY(QFile::copy(file, copy));
        QSprites sprites;
        QVERIFY(sprites.fromFile(copy));
        QVERIFY(sprites.count() > 6);
        const QStringList opened = contents(sprites);
        editor->bind(&sprites, &variables);
        editor->activate();
        QDialogRecorder dialogs;

        // The axis by the panel's buttons, group and number by its fields, a duplicate, a deletion that
        // is confirmed, and a colour of the sprite's palette.
        editor->definePos(2);
        editor->axisLeft();
        editor->axisUp();
        editor->axisUp();
        editor->definePos(3);
        const int number = sprites.at(3)->itemIndex() + 700;
        editor->numChanged(number);
        editor->duplicate();
        editor->definePos(5);
        dialogs.answers.enqueue(QUserDialogs::Yes);
        editor->del();
        QSpritePalette* palette = sprites.at(0)->palette();
        QVERIFY(palette);
        QVector<uint> colours = palette->colors();
        colours[7] = 0xff102030u;
        palette->setColors(colours);
        QCOMPARE(dialogs.calls.size(), 1);
        QCOMPARE(dialogs.calls.first().text, QStringLiteral("Do you really want to delete the sprite?"));

        const QStringList edited = contents(sprites);
        QVERIFY(edited != opened);
        QVERIFY(sprites.toFile(copy));
        QSprites reread;
        QVERIFY(reread.fromFile(copy));
        QCOMPARE(contents(reread), edited);

        // And the undo stack walks the whole session back.
        while (sprites.undoStack()->canUndo())
            sprites.undoChange();
        QCOMPARE(contents(sprites), opened);
        editor->bind(nullptr, nullptr);
    }
};

QTEST_MAIN(tst_SpriteEditsSave)
#include "tst_SpriteEditsSave.moc"
