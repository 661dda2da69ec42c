// The thumbnails panel: which pictures a group gives and how large, the group kept per project, and
// the frames and actions made from the pictures, each one undo step of the animation text.

#include "AddAnim.h"
#include "QAirDocument.h"
#include "QAnimation.h"
#include "QAnimationFrame.h"
#include "QDialogRecorder.h"
#include "QDialogRunner.h"
#include "QMugenModel.h"
#include "QSprite.h"
#include "QSprites.h"
#include "QTextElementRegistry.h"
#include "QThumbModel.h"
#include "QThumbnailsEditor.h"
#include "TestData.h"

#include <QAbstractItemModelTester>
#include <QComboBox>
#include <QFileInfo>
#include <QLineEdit>
#include <QListView>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTemporaryDir>
#include <QTest>
#include <QTextDocument>
#include <QToolButton>

#include <memory>

namespace {

// A sprite of a plain image of a size, in a group, with a number.
void addSprite(QSprites& sprites, int group, int number, QSize size)
{
    QSpritePalette* palette = sprites.paletteAt(0);
    if (!palette) {
        QVector<uint> colours(256);
        for (int i = 0; i < 256; ++i)
            colours[i] = qRgb(i, i, 255 - i);
        palette = sprites.addPalette(colours, QSpritePaletteShareMode::NoShare, 1, 1);
    }
    QImage image(size, QImage::Format_Indexed8);
    image.setColorCount(256);
    image.fill(3);
    QSprite* sprite = sprites.add();
    sprite->setImage(image);
    sprite->setInfo(palette, group, number, 0, 0, 0);
}

// "group,number time" for each frame of an action.
QStringList frames(const QAnimation* animation)
{
    QStringList list;
    for (const QAnimationFrame* frame : animation->frames)
        list << QStringLiteral("%1,%2 %3,%4 %5")
                    .arg(frame->spriteGroup)
                    .arg(frame->spriteIndex)
                    .arg(frame->offsetX)
                    .arg(frame->offsetY)
                    .arg(frame->time);
    return list;
}

const QString airText = QStringLiteral("[Begin Action 0]\n0,0, 0,0, 5\n0,1, 0,0, 5\n\n"
                                       "[Begin Action 1]\n1,0, 3,4, 7\n1,1, 0,0, 7\n\n"
                                       "[Begin Action 2]\n");

} // namespace

class tst_Thumbnails : public QObject
{
    Q_OBJECT

    std::unique_ptr<QSprites> sprites;
    std::unique_ptr<QAirDocument> air;
    std::unique_ptr<QThumbnailsEditor> editor;
    std::unique_ptr<QAbstractItemModelTester> tester;
    QObject project;
    QMap<QString, QString> variables;

    QToolButton* button(const char* name) const
    {
        return editor->panel()->findChild<QToolButton*>(QLatin1String(name));
    }

    QStringList groupTexts() const
    {
        QStringList texts;
        for (int i = 0; i < editor->groupList()->count(); ++i)
            texts << editor->groupList()->itemText(i);
        return texts;
    }

    void showGroup(int group)
    {
        editor->groupList()->setCurrentIndex(editor->groupList()->findText(QString::number(group)));
        QCOMPARE(editor->group(), group);
    }

private Q_SLOTS:
    void initTestCase() { registerTextElements(); }
    void cleanupTestCase() { unregisterTextElements(); }

    void init()
    {
        mugenModel = new QMugenModel;
        (*mugenModel)[QStringLiteral("thumb_size")] = 32;
        sprites = std::make_unique<QSprites>();
        addSprite(*sprites, 7, 0, QSize(100, 20));
        addSprite(*sprites, 3, 4, QSize(10, 10));
        addSprite(*sprites, 7, 3, QSize(10, 40));
        addSprite(*sprites, 7, 10, QSize(1, 1));
        addSprite(*sprites, 5, 0, QSize(300, 300));
        air = std::make_unique<QAirDocument>(airText);
        editor = std::make_unique<QThumbnailsEditor>();
        tester = std::make_unique<QAbstractItemModelTester>(editor->model());
        project.setProperty(QThumbnailsEditor::GroupProperty, QVariant());
        variables.clear();
        editor->bind(sprites.get(), &air->model, &variables, &project);
        editor->activate();
    }

    void cleanup()
    {
        QDialogRunner::install(nullptr);
        tester.reset();
        editor.reset();
        air.reset();
        sprites.reset();
        delete mugenModel;
        mugenModel = nullptr;
    }

    void groupsAndLabels()
    {
        QCOMPARE(groupTexts(), (QStringList{QStringLiteral("3"), QStringLiteral("5"), QStringLiteral("7")}));
        QCOMPARE(editor->group(), 3);
        QSignalSpy shown(editor.get(), &QThumbnailsEditor::setGroup);
        showGroup(7);
        QCOMPARE(shown.takeLast().at(0).toInt(), 7);
        // The numbers with their gaps, in file order, as the labels.
        QThumbModel* model = editor->model();
        QCOMPARE(model->rowCount(), 3);
        QCOMPARE(model->group(), 7);
        const QList<uint> expected = {0, 3, 10};
        for (int row = 0; row < 3; ++row) {
            QCOMPARE(model->index(row).data(Qt::DisplayRole).toUInt(), expected.at(row));
            QCOMPARE(model->index(row).data(Qt::ToolTipRole).toString(),
                     QStringLiteral("7, %1").arg(expected.at(row)));
        }
        QCOMPARE(project.property(QThumbnailsEditor::GroupProperty).toInt(), 7);

        // The list follows the file: a new sprite of the group comes in, a new group joins the list.
        addSprite(*sprites, 7, 12, QSize(4, 4));
        addSprite(*sprites, 9, 0, QSize(4, 4));
        QCOMPARE(model->rowCount(), 4);
        QCOMPARE(model->index(3).data().toUInt(), 12u);
        QCOMPARE(groupTexts().last(), QStringLiteral("9"));
        QCOMPARE(editor->group(), 7);
    }

    void pictureSizes_data()
    {
        QTest::addColumn<int>("size");
        QTest::addColumn<int>("group");
        QTest::newRow("32, wide and tall and tiny") << 32 << 7;
        QTest::newRow("64, wide and tall and tiny") << 64 << 7;
        QTest::newRow("20, large square") << 20 << 5;
    }

    void pictureSizes()
    {
        QFETCH(int, size);
        QFETCH(int, group);
        (*mugenModel)[QStringLiteral("thumb_size")] = size;
        showGroup(3);
        showGroup(group);
        QThumbModel* model = editor->model();
        QVERIFY(model->rowCount() > 0);
        for (int row = 0; row < model->rowCount(); ++row) {
            const QPixmap pixmap = model->index(row).data(Qt::DecorationRole).value<QPixmap>();
            const QSprite* sprite = sprites->at(uint(model->at(row).position));
            const QSize source(sprite->imageProperties().width, sprite->imageProperties().height);
            const QSize expected = source.scaled(4 * size, 4 * size, Qt::KeepAspectRatio)
                                       .scaled(size, size, Qt::KeepAspectRatio);
            QCOMPARE(pixmap.size(), expected);
            // Each picture fills the square along its longer side.
            QCOMPARE(qMax(pixmap.width(), pixmap.height()), size);
        }
        QCOMPARE(editor->view()->iconSize(), QSize(size, size));
    }

    void groupWithoutSprites()
    {
        // The sprites of the group shown go: another group shows; with none left the list is empty.
        showGroup(5);
        QSignalSpy enabled(editor.get(), &QThumbnailsEditor::enabled);
        for (int row = int(sprites->count()) - 1; row >= 0; --row)
            if (sprites->at(uint(row))->itemGroup() == 5) sprites->remove(uint(row));
        QCOMPARE(editor->group(), 3);
        QCOMPARE(editor->model()->rowCount(), 1);
        QCOMPARE(enabled.takeLast().at(0).toBool(), true);
        while (sprites->count() > 0)
            sprites->remove(0);
        QCOMPARE(editor->groupList()->count(), 0);
        QCOMPARE(editor->group(), -1);
        QCOMPARE(editor->model()->rowCount(), 0);
        QCOMPARE(enabled.takeLast().at(0).toBool(), false);
        QVERIFY(!editor->panel()->isEnabled());
        // An empty file from the start gives the same.
        QSprites empty;
        editor->bind(&empty, &air->model, &variables, &project);
        QCOMPARE(editor->model()->rowCount(), 0);
        QVERIFY(!button("thumb_add_all")->isEnabled());
    }

    void groupIsKeptPerProject()
    {
        showGroup(5);
        QObject other;
        QSprites second;
        addSprite(second, 4, 1, QSize(4, 4));
        addSprite(second, 8, 1, QSize(4, 4));
        editor->bind(&second, nullptr, nullptr, &other);
        // A project that chose nothing starts on its first group; the one that chose keeps its choice.
        QCOMPARE(editor->group(), 4);
        showGroup(8);
        editor->bind(sprites.get(), &air->model, &variables, &project);
        QCOMPARE(editor->group(), 5);
        editor->bind(&second, nullptr, nullptr, &other);
        QCOMPARE(editor->group(), 8);
        editor->bind(sprites.get(), &air->model, &variables, &project);
    }

    void addInsertsAfterTheCurrentFrame()
    {
        showGroup(7);
        air->model.currentIndex = 1;
        QAnimation* action = air->model.at(1);
        action->currentFrameIndex = 0;
        QVERIFY(!button("thumb_add")->isEnabled());
        editor->selectRows({0, 2});
        QVERIFY(button("thumb_add")->isEnabled());
        QSignalSpy switched(editor.get(), &QThumbnailsEditor::switchToAnimations);
        QSignalSpy changed(editor.get(), &QThumbnailsEditor::animationsChanged);
        QTextDocument* text = air->editor.document;
        const QString before = air->text();
        button("thumb_add")->click();
        QCOMPARE(frames(air->model.at(1)),
                 (QStringList{QStringLiteral("1,0 3,4 7"), QStringLiteral("7,0 0,0 10"),
                              QStringLiteral("7,10 0,0 10"), QStringLiteral("1,1 0,0 7")}));
        QCOMPARE(air->model.at(1)->currentFrameIndex, 2u);
        QCOMPARE(switched.size(), 1);
        QCOMPARE(changed.size(), 1);
        // The other actions are untouched, and one undo takes all of it back.
        QCOMPARE(frames(air->model.at(0)).size(), 2);
        text->undo();
        QCOMPARE(air->text(), before);

        // All of the group, after the last frame.
        action = air->model.at(1);
        action->currentFrameIndex = 1;
        editor->addAll();
        QCOMPARE(frames(air->model.at(1)).mid(2),
                 (QStringList{QStringLiteral("7,0 0,0 10"), QStringLiteral("7,3 0,0 10"),
                              QStringLiteral("7,10 0,0 10")}));
        QCOMPARE(air->model.at(1)->currentFrameIndex, 4u);
        text->undo();
        QCOMPARE(air->text(), before);
    }

    void addAllToAnActionWithoutFrames()
    {
        showGroup(7);
        air->model.currentIndex = 2;
        editor->addAll();
        QCOMPARE(frames(air->model.at(2)),
                 (QStringList{QStringLiteral("7,0 0,0 10"), QStringLiteral("7,3 0,0 10"),
                              QStringLiteral("7,10 0,0 10")}));
        QCOMPARE(air->model.at(2)->currentFrameIndex, 2u);
    }

    void addNeedsAnAction()
    {
        QAirDocument empty{QString()};
        editor->bind(sprites.get(), &empty.model, &variables, &project);
        showGroup(7);
        editor->selectRows({0});
        QVERIFY(!button("thumb_add")->isEnabled());
        QSignalSpy switched(editor.get(), &QThumbnailsEditor::switchToAnimations);
        editor->add();
        QCOMPARE(empty.model.count(), 0);
        QCOMPARE(switched.size(), 0);
        // A new action needs none.
        QVERIFY(button("thumb_new")->isEnabled());
    }

    void newAction_data()
    {
        QTest::addColumn<bool>("all");
        QTest::addColumn<int>("number");
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("time");
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("selected, named")
            << false << 77 << QStringLiteral("Walk") << 6
            << QStringList{QStringLiteral("7,3 0,0 6"), QStringLiteral("7,10 0,0 6")};
        QTest::newRow("all, unnamed, kept for good")
            << true << 3 << QString() << -1
            << QStringList{QStringLiteral("7,0 0,0 -1"), QStringLiteral("7,3 0,0 -1"),
                           QStringLiteral("7,10 0,0 -1")};
    }

    void newAction()
    {
        QFETCH(bool, all);
        QFETCH(int, number);
        QFETCH(QString, name);
        QFETCH(int, time);
        QFETCH(QStringList, expected);
        showGroup(7);
        editor->selectRows({1, 2});
        int offered = -1;
        QDialogRunner::install([&](QDialog* dialog) {
            auto* ask = qobject_cast<AddAnim*>(dialog);
            offered = ask->numberBox()->value();
            ask->numberBox()->setValue(number);
            ask->nameBox()->setText(name);
            ask->timeBox()->setValue(time);
            dialog->accept();
            return dialog->result();
        });
        const QString before = air->text();
        QSignalSpy switched(editor.get(), &QThumbnailsEditor::switchToAnimations);
        all ? editor->newAnimAll() : button("thumb_new")->click();
        // The first number the file doesn't use is offered.
        QCOMPARE(offered, 3);
        QCOMPARE(air->model.count(), 4);
        const QAnimation* made = air->model.at(3);
        QCOMPARE(made->number, number);
        QCOMPARE(made->name(), name);
        QCOMPARE(frames(made), expected);
        QCOMPARE(air->model.currentIndex, 3);
        QCOMPARE(switched.size(), 1);
        air->editor.document->undo();
        QCOMPARE(air->text(), before);
    }

    void newActionRefusedOrCancelled()
    {
        showGroup(7);
        editor->selectRows({0});
        const QString before = air->text();
        // A number the file has is refused; cancelling makes nothing.
        QDialogRunner::install([](QDialog* dialog) {
            auto* ask = qobject_cast<AddAnim*>(dialog);
            ask->numberBox()->setValue(1);
            dialog->accept();
            return dialog->result();
        });
        editor->newAnim();
        QCOMPARE(air->text(), before);
        QDialogRunner::install([](QDialog*) { return int(QDialog::Rejected); });
        editor->newAnimAll();
        QCOMPARE(air->text(), before);
    }

    void saveWritesTheSelectedSprites()
    {
        showGroup(7);
        editor->selectRows({0, 2});
        QTemporaryDir folder;
        QDialogRecorder recorder;
        recorder.fileAnswers.enqueue({folder.filePath(QStringLiteral("roan.png"))});
        variables.insert(QStringLiteral("proj_path"), QStringLiteral("/projects"));
        button("thumb_save")->click();
        QCOMPARE(recorder.calls.size(), 1);
        QCOMPARE(recorder.calls.first().kind, QStringLiteral("save"));
        QCOMPARE(recorder.calls.first().dir, QStringLiteral("/projects"));
        QCOMPARE(variables.value(QStringLiteral("spr_path")), folder.path());
        QStringList written = QDir(folder.path()).entryList(QDir::Files, QDir::Name);
        QCOMPARE(written, (QStringList{QStringLiteral("roan_7-0.png"), QStringLiteral("roan_7-10.png")}));
        QCOMPARE(QImage(folder.filePath(QStringLiteral("roan_7-0.png"))).size(), QSize(100, 20));

        // Cancelled: nothing is written, the next dialog starts where the last file went.
        editor->selectRows({1});
        button("thumb_save")->click();
        QCOMPARE(recorder.calls.last().dir, folder.path());
        QCOMPARE(QDir(folder.path()).entryList(QDir::Files).size(), 2);
    }
};

QTEST_MAIN(tst_Thumbnails)
#include "tst_Thumbnails.moc"
