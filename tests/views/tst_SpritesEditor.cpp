// The sprites editor on the bundled sample and on a real character: what each command does to the
// model, that one undo takes it back, and what the side panel shows.

#include "QAnimSpriteWorkspace.h"
#include "QDialogRecorder.h"
#include "QMugenModel.h"
#include "QSprRender.h"
#include "QSprite.h"
#include "QSprites.h"
#include "QSpritesEditor.h"
#include "QSpritesPanel.h"
#include "TestData.h"

#include <QLabel>
#include <QSpinBox>
#include <QTest>
#include <QWidget>

#include <memory>

class tst_SpritesEditor : public QObject
{
    Q_OBJECT

    QWidget host;
    QAnimSpriteWorkspace* workspace = nullptr;
    QSpritesEditor* editor = nullptr;
    QMap<QString, QString> variables;

    static QString samplePath() { return TestData::binDir() + QStringLiteral("/samples/Roan/Roan.sff"); }

    std::unique_ptr<QSprites> load(const QString& path)
    {
        auto sprites = std::make_unique<QSprites>();
        if (!sprites->fromFile(path)) return nullptr;
        editor->bind(sprites.get(), &variables);
        editor->activate();
        return sprites;
    }

    // What identifies each sprite, in list order: group, number, axis.
    static QList<QList<int>> fields(const QSprites& sprites)
    {
        QList<QList<int>> all;
        for (const QSprite* sprite : sprites.spriteItems())
            all << QList<int>{sprite->itemGroup(), sprite->itemIndex(), sprite->offsetX(), sprite->offsetY()};
        return all;
    }

private Q_SLOTS:
    void initTestCase()
    {
        host.resize(800, 600);
        workspace = new QAnimSpriteWorkspace(&host, this);
        editor = new QSpritesEditor(workspace, this);
    }

    // The host goes with the test object's members, before its children: the editors go first.
    void cleanupTestCase()
    {
        delete editor;
        delete workspace;
    }

    void cleanup()
    {
        editor->bind(nullptr, nullptr);
        delete mugenModel;
        mugenModel = nullptr;
    }

    void panelFollowsTheSprite()
    {
        auto sprites = load(samplePath());
        if (!sprites) QSKIP("the sample is not built next to the tests");
        QSpritesPanel* panel = editor->controls();
        QCOMPARE(panel->positionLabel()->text(), QStringLiteral("1 / %1").arg(sprites->count()));
        const QSprite* first = sprites->at(0);
        QCOMPARE(panel->groupBox()->value(), first->itemGroup());
        QCOMPARE(panel->xBox()->value(), first->offsetX());
        QCOMPARE(panel->infoLabel()->text(), QStringLiteral("%1 x %2 px (8 bit) - unique")
                                                 .arg(first->imageProperties().width)
                                                 .arg(first->imageProperties().height));
        QCOMPARE(workspace->view()->sprite(), first);

        // Groups are runs: the next group starts where the group number changes, and back again.
        editor->nextGrp();
        const int next = editor->position();
        QVERIFY(next > 0);
        QVERIFY(sprites->at(uint(next))->itemGroup() != first->itemGroup());
        QCOMPARE(sprites->at(uint(next - 1))->itemGroup(), first->itemGroup());
        editor->prevGrp();
        QCOMPARE(editor->position(), 0);
        editor->prevSpr();
        QCOMPARE(editor->position(), 0);

        // Finding by "group,number", and renumbering the current sprite by a pair with a missing part.
        const QSprite* target = sprites->at(uint(next));
        QVERIFY(
            editor->find(QStringLiteral("^%1,%2$").arg(target->itemGroup()).arg(target->itemIndex()), false));
        QCOMPARE(editor->position(), next);
        QVERIFY(editor->find(QStringLiteral("%1,*").arg(first->itemGroup()), true));
        QVERIFY(editor->replace(QStringLiteral(",77")));
        QCOMPARE(editor->currentSprite()->itemIndex(), 77);
        QVERIFY(!editor->replace(QStringLiteral("x,1")));
    }

    void fieldsAndKeysChangeTheAxisWithUndo()
    {
        auto sprites = load(samplePath());
        if (!sprites) QSKIP("the sample is not built next to the tests");
        const auto before = fields(*sprites);
        QSprite* sprite = editor->currentSprite();
        const int x = sprite->offsetX();
        const int y = sprite->offsetY();
        editor->axisLeft();
        editor->axisUp();
        QCOMPARE(QPoint(sprite->offsetX(), sprite->offsetY()), QPoint(x + 1, y + 1));
        QCOMPARE(editor->controls()->xBox()->value(), x + 1);
        editor->axisRight();
        editor->axisDown();
        editor->axisDown();
        QCOMPARE(QPoint(sprite->offsetX(), sprite->offsetY()), QPoint(x, y - 1));
        for (int step = 0; step < 5; ++step)
            sprites->undoChange();
        QCOMPARE(fields(*sprites), before);

        // An inverted axis shows and takes the negated value.
        mugenModel = new QMugenModel;
        (*mugenModel)[QStringLiteral("reverse_spr_axis")] = true;
        editor->controls()->xBox()->setValue(10);
        QCOMPARE(sprite->offsetX(), -10);
        sprites->undoChange();
        QCOMPARE(fields(*sprites), before);
    }

    void alignsToTheGuideCrossing()
    {
        auto sprites = load(samplePath());
        if (!sprites) QSKIP("the sample is not built next to the tests");
        QSprite* sprite = editor->currentSprite();
        const int w = sprite->imageProperties().width;
        const int h = sprite->imageProperties().height;
        workspace->view()->setGuides(QPoint(3, -5));
        const struct
        {
            void (QSpritesEditor::*slot)();
            QPoint axis;
        } table[] = {
            {&QSpritesEditor::alignTopLeft, {-3, 5}},
            {&QSpritesEditor::alignTopRight, {w - 3, 5}},
            {&QSpritesEditor::alignBotLeft, {-3, h + 5}},
            {&QSpritesEditor::alignBotRight, {w - 3, h + 5}},
            {&QSpritesEditor::alignTopCenter, {(w >> 1) - 3, 5}},
            {&QSpritesEditor::alignBotCenter, {(w >> 1) - 3, h + 5}},
            {&QSpritesEditor::alignCenterCenter, {(w >> 1) - 3, (h >> 1) + 5}},
            {&QSpritesEditor::alignCenterLeft, {-3, (h >> 1) + 5}},
            {&QSpritesEditor::alignCenterRight, {w - 3, (h >> 1) + 5}},
        };
        const auto before = fields(*sprites);
        for (const auto& row : table) {
            (editor->*row.slot)();
            QCOMPARE(QPoint(sprite->offsetX(), sprite->offsetY()), row.axis);
            sprites->undoChange();
            QCOMPARE(fields(*sprites), before);
        }
        workspace->view()->setGuides(QPoint());
    }

    void deletesAndDuplicatesWithUndo()
    {
        auto sprites = load(samplePath());
        if (!sprites) QSKIP("the sample is not built next to the tests");
        const auto before = fields(*sprites);
        editor->nextSpr();
        QDialogRecorder dialogs;
        dialogs.answers << QUserDialogs::No << QUserDialogs::Yes;
        editor->del();
        QCOMPARE(sprites->count(), uint(before.size()));
        editor->del();
        QCOMPARE(sprites->count(), uint(before.size() - 1));
        QCOMPARE(dialogs.calls.size(), 2);
        QCOMPARE(dialogs.calls.at(0).text, QStringLiteral("Do you really want to delete the sprite?"));
        QCOMPARE(editor->controls()->positionLabel()->text(),
                 QStringLiteral("2 / %1").arg(before.size() - 1));
        sprites->undoChange();
        QCOMPARE(fields(*sprites), before);

        // A duplicate stands after its original and shares its pixels.
        editor->definePos(1);
        editor->duplicate();
        QCOMPARE(editor->position(), 2);
        QCOMPARE(fields(*sprites).at(2), before.at(1));
        QVERIFY(sprites->at(2)->imageRecord() == sprites->at(1)->imageRecord());
        QCOMPARE(editor->controls()->infoLabel()->text().endsWith(QStringLiteral("shared")), true);
        sprites->undoChange();
        QCOMPARE(fields(*sprites), before);

        // Nothing to delete or align in an empty file.
        QSprites empty;
        editor->bind(&empty, &variables);
        editor->del();
        editor->alignTopLeft();
        QCOMPARE(editor->controls()->positionLabel()->text(), QStringLiteral("0 / 0"));
        QCOMPARE(editor->controls()->infoLabel()->text(), QStringLiteral("No image"));
    }

    void numbersOnARealCharacter()
    {
        TAVREL_REQUIRE_TESTDATA();
        auto sprites = load(TestData::root() + QStringLiteral("/kof-h-cjk/chars/Chang/Chang.sff"));
        QVERIFY(sprites);
        const auto before = fields(*sprites);
        editor->definePos(5);
        QSprite* sprite = editor->currentSprite();
        editor->controls()->groupBox()->setValue(4321);
        editor->controls()->numberBox()->setValue(12);
        QCOMPARE(sprite->itemGroup(), 4321);
        QCOMPARE(sprite->itemIndex(), 12);
        // The panel stays on the sprite that changed.
        QCOMPARE(editor->currentSprite(), sprite);
        sprites->undoChange();
        sprites->undoChange();
        QCOMPARE(fields(*sprites), before);

        // Copy and paste through the clipboard make a sprite with the same numbers and pixels.
        editor->copy();
        editor->paste();
        QCOMPARE(sprites->count(), uint(before.size() + 1));
        QCOMPARE(editor->position(), 6);
        QCOMPARE(sprites->at(6)->image(), sprites->at(5)->image());
        sprites->undoChange();
        QCOMPARE(fields(*sprites), before);
    }
};

QTEST_MAIN(tst_SpritesEditor)
#include "tst_SpritesEditor.moc"
