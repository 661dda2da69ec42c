// The commands of the sprites editor that open dialogs: adding sprites from files with the numbering
// question, replacing an image with the palette question, saving plain and aligned images, cropping,
// splitting, the group commands, export and import, the align tools and the empty file. Each change is
// checked on the model and taken back by one undo, on built models, the bundled sample and real
// characters.

#include "../sprites/SpriteTestKit.h"
#include "AddSpr.h"
#include "AlignDlg.h"
#include "DelGrp.h"
#include "ExpDlg.h"
#include "PalDlg.h"
#include "QAnimSpriteWorkspace.h"
#include "QDialogRecorder.h"
#include "QDialogRunner.h"
#include "QGroupRangeBox.h"
#include "QImageFiles.h"
#include "QMugenModel.h"
#include "QProgress.h"
#include "QSprRender.h"
#include "QSprite.h"
#include "QSpritePalette.h"
#include "QSprites.h"
#include "QSpritesEditor.h"
#include "QSpritesPanel.h"
#include "RenGrp.h"
#include "SaveSpr.h"
#include "TestData.h"
#include "sprimport.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QListWidget>
#include <QRadioButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QToolButton>

#include <climits>
#include <cstring>
#include <functional>
#include <memory>

using SpriteTestKit::snapshot;
using Numbers = QList<int>;
using Buttons = QList<QUserDialogs::Button>;

Q_DECLARE_METATYPE(SaveItem)
Q_DECLARE_METATYPE(QUserDialogs::Button)

namespace {

// Answers the program's own dialogs in turn: each step fills the dialog it is given and says whether
// it is accepted; a dialog past the end of the script is cancelled. Every dialog is recorded as
// "class: title".
class DialogScript
{
public:
    using Step = std::function<bool(QDialog*)>;

    explicit DialogScript(QList<Step> steps = {}) : steps(std::move(steps))
    {
        QDialogRunner::install([this](QDialog* dialog) {
            shown << QStringLiteral("%1: %2").arg(QLatin1String(dialog->metaObject()->className()),
                                                  dialog->windowTitle());
            const bool accepted = !this->steps.isEmpty() && this->steps.takeFirst()(dialog);
            return int(accepted ? QDialog::Accepted : QDialog::Rejected);
        });
    }
    ~DialogScript() { QDialogRunner::install(nullptr); }

    QList<Step> steps;
    QStringList shown;
};

// The titles of the progress windows that stand while a command runs; they are looked for whenever
// the command lets events through.
class ProgressWatch
{
public:
    ProgressWatch()
    {
        timer.setInterval(0);
        QObject::connect(&timer, &QTimer::timeout, [this]() {
            for (QWidget* widget : QApplication::allWidgets())
                if (auto* progress = qobject_cast<QProgress*>(widget))
                    if (!titles.contains(progress->windowTitle())) titles << progress->windowTitle();
        });
        timer.start();
    }

    QTimer timer;
    QStringList titles;
};

template <class Dialog>
DialogScript::Step fill(std::function<void(Dialog*)> set)
{
    return [set](QDialog* dialog) {
        auto* typed = qobject_cast<Dialog*>(dialog);
        if (!typed) return false;
        set(typed);
        return true;
    };
}

DialogScript::Step chooseRange(const SaveItem& item)
{
    return fill<SaveSpr>([item](SaveSpr* dialog) {
        (item.kind == SaveItem::All     ? dialog->allButton()
         : item.kind == SaveItem::Group ? dialog->groupButton()
                                        : dialog->currentButton())
            ->setChecked(true);
        dialog->range()->setGroup(item.group);
        dialog->range()->setNumbers(item.allNumbers, item.from, item.to);
    });
}

SaveItem range(SaveItem::Kind kind, int group = 0, bool allNumbers = true, int from = 0, int to = 0)
{
    SaveItem item;
    item.kind = kind;
    item.group = group;
    item.allNumbers = allNumbers;
    item.from = from;
    item.to = to;
    return item;
}

// 256 distinct colours, a different run for each seed.
QList<QRgb> table(int seed)
{
    QList<QRgb> colours(256);
    for (int i = 0; i < 256; ++i)
        colours[i] = qRgb(i, (seed * 37) & 0xFF, 255 - i);
    return colours;
}

// An indexed image of colour 0 with a block of colour `colour` inside a border of `border` pixels.
QImage indexedImage(QSize size, int border, int colour, int seed)
{
    QImage image(size, QImage::Format_Indexed8);
    image.setColorTable(table(seed));
    image.fill(0);
    for (int y = border; y < size.height() - border; ++y)
        for (int x = border; x < size.width() - border; ++x)
            image.setPixel(x, y, uint(colour + (x + y) % 3));
    return image;
}

// The colour indices of an indexed image, or the colours of another, row by row without padding.
QByteArray pixels(const QImage& image)
{
    const QImage plain =
        image.format() == QImage::Format_Indexed8 ? image : image.convertToFormat(QImage::Format_ARGB32);
    QByteArray bytes;
    const int row = plain.width() * plain.depth() / 8;
    for (int y = 0; y < plain.height(); ++y)
        bytes.append(reinterpret_cast<const char*>(plain.constScanLine(y)), row);
    return bytes;
}

QList<int> numbersOf(const QSprites& sprites, int group)
{
    QList<int> list;
    for (const QSprite* sprite : sprites.spriteItems())
        if (sprite->itemGroup() == group) list << sprite->itemIndex();
    return list;
}

QList<QDialogRecorder::Call> messages(const QDialogRecorder& recorder)
{
    QList<QDialogRecorder::Call> list;
    for (const auto& call : recorder.calls)
        if (call.kind == QLatin1String("message")) list << call;
    return list;
}

} // namespace

class tst_SpritesEditorCommands : public QObject
{
    Q_OBJECT

    QWidget host;
    QAnimSpriteWorkspace* workspace = nullptr;
    QSpritesEditor* editor = nullptr;
    QMap<QString, QString> variables;
    std::unique_ptr<QTemporaryDir> folder;

    static QString samplePath() { return TestData::binDir() + QStringLiteral("/samples/Roan/Roan.sff"); }

    void bind(QSprites* sprites)
    {
        editor->bind(sprites, &variables);
        editor->activate();
    }

    std::unique_ptr<QSprites> load(const QString& path)
    {
        auto sprites = std::make_unique<QSprites>();
        if (!sprites->fromFile(path)) return nullptr;
        bind(sprites.get());
        return sprites;
    }

    // The sample and a real character, one row each; "path" names the file.
    static void addFileRows()
    {
        QTest::addColumn<QString>("path");
        QTest::newRow("sample") << samplePath();
        QTest::newRow("kfm") << QStringLiteral("elecbyte-mugen11/chars/kfm/kfm.sff");
    }

    // Loads the file of the current row, or skips when it is absent.
    std::unique_ptr<QSprites> loadRow()
    {
        QFETCH(QString, path);
        if (QDir::isRelativePath(path)) {
            if (TestData::root().isEmpty()) return nullptr;
            path = TestData::root() + QLatin1Char('/') + path;
        }
        return QFileInfo::exists(path) ? load(path) : nullptr;
    }

    // Group 5 holds 0, 1, 2 and 4; group 6 holds 0. Sprites 0 and 1 share one image.
    static void fillBuilt(QSprites& sprites)
    {
        const QList<QPair<int, int>> numbers{{5, 0}, {5, 1}, {5, 2}, {5, 4}, {6, 0}};
        for (int i = 0; i < numbers.size(); ++i) {
            QSprite* sprite = sprites.add();
            sprite->setImage(indexedImage(QSize(8, 6), 1, 10 + i, 1));
            sprite->setInfo(sprite->palette(), numbers.at(i).first, numbers.at(i).second, 3 + i, 5 - i, 0);
        }
        sprites.at(1)->setImageRecord(sprites.at(0)->imageRecord());
        sprites.undoStack()->clear();
    }

    QString writeImage(const QString& name, const QImage& image)
    {
        const QString path = folder->filePath(name);
        if (!QImageFiles::save(image, path)) return QString();
        return path;
    }

    // The model gave back exactly what it was before, by one undo.
    static void undoOnce(QSprites& sprites, const QStringList& before)
    {
        sprites.undoChange();
        QCOMPARE(snapshot(sprites), before);
    }

private Q_SLOTS:
    void initTestCase()
    {
        qRegisterMetaType<SaveItem>();
        host.resize(800, 600);
        workspace = new QAnimSpriteWorkspace(&host, this);
        editor = new QSpritesEditor(workspace, this);
    }

    // The workspace's widgets live in the host: they go before it does.
    void cleanupTestCase()
    {
        delete editor;
        delete workspace;
    }

    void init()
    {
        mugenModel = new QMugenModel;
        folder = std::make_unique<QTemporaryDir>();
        variables.clear();
    }

    void cleanup()
    {
        QDialogRunner::install(nullptr);
        editor->bind(nullptr, nullptr);
        delete mugenModel;
        mugenModel = nullptr;
        folder.reset();
    }

    // ---- Adding sprites

    void addsFilesWithoutTheDialog_data() { addFileRows(); }

    void addsFilesWithoutTheDialog()
    {
        auto sprites = loadRow();
        if (!sprites) QSKIP("the file of this row is absent");
        (*mugenModel)[QStringLiteral("show_addsprite_dialog")] = false;
        editor->definePos(2);
        const QSprite* current = editor->currentSprite();
        const int group = current->itemGroup();
        const int number = current->itemIndex();
        const QStringList before = snapshot(*sprites);
        const uint count = sprites->count();
        // Sorted as people count: "a2" comes before "a10", and both before "b".
        const QImage images[3] = {indexedImage(QSize(5, 4), 0, 3, 7), indexedImage(QSize(6, 3), 0, 9, 8),
                                  indexedImage(QSize(4, 4), 0, 20, 9)};
        const QString a2 = writeImage(QStringLiteral("a2.png"), images[0]);
        const QString a10 = writeImage(QStringLiteral("a10.png"), images[1]);
        const QString b = writeImage(QStringLiteral("b.png"), images[2]);
        QDialogRecorder dialogs;
        dialogs.fileAnswers << QStringList{b, a10, a2};
        DialogScript script;
        editor->add();

        QCOMPARE(script.shown, QStringList());
        QCOMPARE(dialogs.calls.size(), 1);
        QCOMPARE(dialogs.calls.at(0).kind, QStringLiteral("openMany"));
        QCOMPARE(dialogs.calls.at(0).text, QImageFiles::openFilter());
        QCOMPARE(variables.value(QStringLiteral("spr_path")), QFileInfo(a2).absolutePath());
        QCOMPARE(sprites->count(), count + 3);
        for (int k = 0; k < 3; ++k) {
            const QSprite* added = sprites->at(uint(3 + k));
            QCOMPARE(added->itemGroup(), group);
            QCOMPARE(added->itemIndex(), number + 1 + k);
            QCOMPARE(QPoint(added->offsetX(), added->offsetY()), QPoint());
            QCOMPARE(pixels(added->image(QSpriteImagePalette::None)), pixels(images[k]));
            QCOMPARE(added->image().colorTable().mid(1), images[k].colorTable().mid(1));
        }
        QCOMPARE(editor->position(), 3);
        undoOnce(*sprites, before);
    }

    void numberInUseIsAskedAbout_data()
    {
        QTest::addColumn<int>("step");
        QTest::addColumn<Buttons>("answers");
        QTest::addColumn<Numbers>("added");
        QTest::addColumn<int>("questions");
        QTest::newRow("Yes moves on, and holds for the second file without a question")
            << 1 << Buttons{QUserDialogs::Yes} << Numbers{3, 5} << 1;
        QTest::newRow("No inserts as is, and holds for the second file")
            << 1 << Buttons{QUserDialogs::No} << Numbers{0, 1} << 1;
        QTest::newRow("Discard skips the file; the next takes a free number")
            << 1 << Buttons{QUserDialogs::Discard} << Numbers{3} << 1;
        QTest::newRow("a step of 2 looks for a free number by twos")
            << 2 << Buttons{QUserDialogs::Yes} << Numbers{6, 7} << 1;
        QTest::newRow("step 0 numbers by tens") << 0 << Buttons{QUserDialogs::Yes} << Numbers{10, 20} << 1;
        QTest::newRow("a closed question skips like Discard")
            << 1 << Buttons{QUserDialogs::Cancel} << Numbers{3} << 1;
    }

    void numberInUseIsAskedAbout()
    {
        QFETCH(int, step);
        QFETCH(Buttons, answers);
        QFETCH(Numbers, added);
        QFETCH(int, questions);
        QSprites sprites;
        fillBuilt(sprites);
        bind(&sprites);
        const QStringList before = snapshot(sprites);
        const QString first = writeImage(QStringLiteral("1.png"), indexedImage(QSize(4, 4), 0, 1, 2));
        const QString second = writeImage(QStringLiteral("2.png"), indexedImage(QSize(4, 4), 0, 2, 3));
        QDialogRecorder dialogs;
        dialogs.fileAnswers << QStringList{first, second};
        for (QUserDialogs::Button answer : std::as_const(answers))
            dialogs.answers << answer;
        DialogScript script({fill<AddSpr>([step](AddSpr* dialog) {
            dialog->numberBox()->setValue(0);
            dialog->stepBox()->setValue(step);
        })});
        editor->add();

        QCOMPARE(script.shown, QStringList{QStringLiteral("AddSpr: Add sprites")});
        const auto asked = messages(dialogs);
        QCOMPARE(asked.size(), questions);
        QCOMPARE(asked.at(0).title, QStringLiteral("Confict"));
        QCOMPARE(asked.at(0).text,
                 QStringLiteral(
                     "The index 0 of the group 5 is already in use. Do you want to use the next available "
                     "index?\nOtherwise, choose Discard to skip this sprite or No to insert as is."));
        QCOMPARE(asked.at(0).buttons,
                 QUserDialogs::Buttons(QUserDialogs::Yes | QUserDialogs::No | QUserDialogs::Discard));
        // The new sprites stand after the current one, in the order of the files.
        QCOMPARE(sprites.count(), uint(5 + added.size()));
        for (int k = 0; k < added.size(); ++k) {
            QCOMPARE(sprites.at(uint(1 + k))->itemGroup(), 5);
            QCOMPARE(sprites.at(uint(1 + k))->itemIndex(), added.at(k));
        }
        undoOnce(sprites, before);
    }

    void addDialogSetsAxisCropPaletteAndSharing()
    {
        QSprites sprites;
        fillBuilt(sprites);
        bind(&sprites);
        // The chosen palette holds the image's colours in another order.
        const QList<QRgb> colours = table(1);
        QVector<uint> backwards(256);
        backwards[0] = colours.at(0);
        for (int i = 1; i < 256; ++i)
            backwards[i] = colours.at(256 - i);
        QSpritePalette* chosen = sprites.addPalette(backwards, QSpritePaletteShareMode::Share, 3, 3);
        sprites.undoStack()->clear();
        editor->definePos(3);
        const QStringList before = snapshot(sprites);
        const QImage image = indexedImage(QSize(10, 7), 2, 4, 1);
        const QString one = writeImage(QStringLiteral("one.pcx"), image);
        const QString two = writeImage(QStringLiteral("two.pcx"), image);
        QDialogRecorder dialogs;
        dialogs.fileAnswers << QStringList{one, two};
        int shownGroup = -1;
        int shownNumber = -1;
        DialogScript script({fill<AddSpr>([&](AddSpr* dialog) {
            shownGroup = dialog->groupBox()->value();
            shownNumber = dialog->numberBox()->value();
            dialog->groupBox()->setValue(70);
            dialog->bottomCenterBox()->setChecked(true);
            dialog->cropBox()->setChecked(true);
            dialog->shareBox()->setChecked(false);
            dialog->paletteBox()->setCurrentIndex(2);
            dialog->pGrpBox()->setValue(3);
            dialog->pIdxBox()->setValue(3);
        })});
        editor->add();

        // The dialog starts from the sprite after the current one.
        QCOMPARE(shownGroup, 5);
        QCOMPARE(shownNumber, 5);
        QVERIFY(messages(dialogs).isEmpty());
        const QSprite* first = sprites.at(4);
        const QSprite* second = sprites.at(5);
        QCOMPARE(first->itemGroup(), 70);
        QCOMPARE(QList<int>({first->itemIndex(), second->itemIndex()}), QList<int>({5, 6}));
        // Cropped to the block inside the 2 pixel border, the axis at the middle of its bottom.
        QCOMPARE(first->imageProperties().width, 6);
        QCOMPARE(first->imageProperties().height, 3);
        QCOMPARE(QPoint(first->offsetX(), first->offsetY()), QPoint(3, 3));
        // Adapted to the palette chosen: its colours, the pixels showing the same colours as before.
        QCOMPARE(first->palette(), chosen);
        QCOMPARE(first->image().pixel(0, 0), image.pixel(2, 2));
        QCOMPARE(first->image(QSpriteImagePalette::None).pixelIndex(0, 0), 256 - image.pixelIndex(2, 2));
        // Sharing off: two files with the same pixels keep two records.
        QVERIFY(first->imageRecord() != second->imageRecord());
        undoOnce(sprites, before);

        // Cancelling the dialog adds nothing.
        dialogs.fileAnswers << QStringList{one};
        DialogScript cancel;
        editor->add();
        QCOMPARE(snapshot(sprites), before);
    }

    // ---- Replacing the image

    void openImgReplacesTheCurrentImage_data()
    {
        QTest::addColumn<bool>("crop");
        QTest::addColumn<bool>("ownColours");
        QTest::newRow("cropped, palette question closed") << true << false;
        QTest::newRow("not cropped, palette question closed") << false << false;
        QTest::newRow("the sprite's own colours: no palette question") << false << true;
    }

    void openImgReplacesTheCurrentImage()
    {
        QFETCH(bool, crop);
        QFETCH(bool, ownColours);
        QSprites sprites;
        fillBuilt(sprites);
        bind(&sprites);
        const QStringList before = snapshot(sprites);
        const uint palettes = sprites.paletteCount();
        QSpritePalette* old = sprites.at(0)->palette();
        QImage image = indexedImage(QSize(9, 9), 3, 50, ownColours ? 1 : 77);
        // The image file says nothing of transparency; the palette's colour 0 is transparent all the same.
        const QString path = writeImage(QStringLiteral("new.png"), image);
        QDialogRecorder dialogs;
        dialogs.fileAnswers << QStringList{path};
        dialogs.answers << (crop ? QUserDialogs::Yes : QUserDialogs::No);
        DialogScript script;
        editor->openImg();

        QCOMPARE(dialogs.calls.at(0).kind, QStringLiteral("open"));
        QCOMPARE(dialogs.calls.at(0).text, QImageFiles::openFilter());
        QCOMPARE(dialogs.calls.at(1).text, QStringLiteral("Do you want to crop the image?"));
        QCOMPARE(dialogs.calls.at(1).buttons, QUserDialogs::Buttons(QUserDialogs::Yes | QUserDialogs::No));
        QCOMPARE(script.shown, ownColours ? QStringList() : QStringList{QStringLiteral("PalDlg: Palette")});
        const QSprite* sprite = sprites.at(0);
        QCOMPARE(int(sprite->imageProperties().width), crop ? 3 : 9);
        QCOMPARE(pixels(sprite->image(QSpriteImagePalette::None)),
                 pixels(crop ? image.copy(3, 3, 3, 3) : image));
        if (ownColours) {
            QCOMPARE(sprite->palette(), old);
            QCOMPARE(sprites.paletteCount(), palettes);
        } else {
            // Closed without Ok: the image's own palette, and a copy of the pixels for this sprite alone.
            QVERIFY(sprite->palette() != old);
            QCOMPARE(sprites.paletteCount(), palettes + 1);
        }
        QVERIFY(sprites.at(1)->imageRecord() != sprite->imageRecord());
        QCOMPARE(variables.value(QStringLiteral("spr_path")), folder->path());
        undoOnce(sprites, before);
    }

    void palDlgChoices_data()
    {
        QTest::addColumn<QString>("option");
        QTest::addColumn<bool>("reversed");
        QTest::addColumn<int>("shareRow");
        QTest::addColumn<int>("paletteMode");
        QTest::addColumn<int>("shareMode");
        QTest::newRow("exchange") << "exchange" << false << 0 << int(QSpritePaletteMode::SwapPalette)
                                  << int(QSpriteShareMode::NoShare);
        QTest::newRow("force") << "force" << false << 0 << int(QSpritePaletteMode::AdaptImage)
                               << int(QSpriteShareMode::NoShare);
        QTest::newRow("own") << "own" << false << 0 << int(QSpritePaletteMode::OwnPalette)
                             << int(QSpriteShareMode::NoShare);
        QTest::newRow("own, reversed")
            << "own" << true << 0 << int(QSpritePaletteMode::OwnPalette) << int(QSpriteShareMode::NoShare);
        QTest::newRow("own, the sharers follow")
            << "own" << false << 1 << int(QSpritePaletteMode::OwnPalette) << int(QSpriteShareMode::Share);
        QTest::newRow("own, ask who follows") << "own" << false << 2 << int(QSpritePaletteMode::OwnPalette)
                                              << int(QSpriteShareMode::AskToShare);
    }

    void palDlgChoices()
    {
        QFETCH(QString, option);
        QFETCH(bool, reversed);
        QFETCH(int, shareRow);
        QFETCH(int, paletteMode);
        QFETCH(int, shareMode);
        QSprites sprites;
        fillBuilt(sprites);
        bind(&sprites);
        // The specified palette holds the image's colours in reverse order (colour 0 stays first).
        const QList<QRgb> colours = table(60);
        QVector<uint> backwards(256);
        backwards[0] = colours.at(0);
        for (int i = 1; i < 256; ++i)
            backwards[i] = colours.at(256 - i);
        QSpritePalette* specified = sprites.addPalette(backwards, QSpritePaletteShareMode::Share, 9, 1);
        sprites.undoStack()->clear();
        const QStringList before = snapshot(sprites);
        int sharing = 0;
        connect(&sprites, &QSprites::dataSharing, this, [&sharing](QList<uint>&) { ++sharing; });
        QImage image = indexedImage(QSize(4, 4), 0, 30, 60);

        QSpritePaletteMode givenMode = QSpritePaletteMode::Ignore;
        QSpriteShareMode givenShare = QSpriteShareMode::ReplaceShared;
        bool givenReversed = false;
        QSubItem startPalette;
        const QPoint ownPalette(sprites.at(0)->palette()->itemGroup(), sprites.at(0)->palette()->itemIndex());
        DialogScript script({fill<PalDlg>([&](PalDlg* dialog) {
            startPalette = dialog->palette();
            QVERIFY(dialog->ownButton()->isChecked());
            dialog->findChild<QRadioButton*>(option)->setChecked(true);
            dialog->reversedBox()->setChecked(reversed);
            dialog->shareBox()->setCurrentIndex(shareRow);
            dialog->pGrpBox()->setValue(9);
            dialog->pIdxBox()->setValue(1);
            givenMode = dialog->paletteMode();
            givenShare = dialog->shareMode();
            givenReversed = dialog->reversed();
        })});
        editor->definePos(0);
        editor->setSprite(image);

        QCOMPARE(script.shown, QStringList{QStringLiteral("PalDlg: Palette")});
        // It starts from the sprite's own palette.
        QCOMPARE(QPoint(startPalette.group, startPalette.index), ownPalette);
        QCOMPARE(int(givenMode), paletteMode);
        QCOMPARE(int(givenShare), shareMode);
        QCOMPARE(givenReversed, reversed);
        const QSprite* sprite = sprites.at(0);
        const QImage shown = sprite->image();
        if (option == QLatin1String("exchange")) {
            QCOMPARE(sprite->palette(), specified);
            QCOMPARE(pixels(sprite->image(QSpriteImagePalette::None)), pixels(image));
        } else if (option == QLatin1String("force")) {
            QCOMPARE(sprite->palette(), specified);
            for (int y = 0; y < 4; ++y)
                for (int x = 0; x < 4; ++x)
                    QCOMPARE(shown.pixel(x, y) & 0xFFFFFFu, image.pixel(x, y) & 0xFFFFFFu);
        } else {
            QVERIFY(sprite->palette() != specified);
            const int pixel = sprite->image(QSpriteImagePalette::None).pixelIndex(1, 1);
            QCOMPARE(pixel, reversed ? 255 - image.pixelIndex(1, 1) : image.pixelIndex(1, 1));
            QCOMPARE(shown.pixel(1, 1), image.pixel(1, 1));
        }
        // Sprite 1 shared the old pixels: it keeps them only with a copy of its own; asked, nobody answers
        // here, so it follows.
        QCOMPARE(sprites.at(1)->imageRecord() == sprite->imageRecord(),
                 shareMode != int(QSpriteShareMode::NoShare));
        QCOMPARE(sharing, shareMode == int(QSpriteShareMode::AskToShare) ? 1 : 0);
        undoOnce(sprites, before);
    }

    // ---- Saving images

    void saveImgWritesTheRange_data()
    {
        QTest::addColumn<SaveItem>("item");
        QTest::addColumn<QString>("file");
        QTest::newRow("the current sprite") << range(SaveItem::Current) << "one.png";
        QTest::newRow("all sprites, PCX") << range(SaveItem::All) << "all.pcx";
        QTest::newRow("a whole group") << range(SaveItem::Group, 5) << "images.png";
        QTest::newRow("a run of a group") << range(SaveItem::Group, 5, false, 1, 3) << "run.bmp";
    }

    void saveImgWritesTheRange()
    {
        QFETCH(SaveItem, item);
        QFETCH(QString, file);
        QSprites sprites;
        fillBuilt(sprites);
        bind(&sprites);
        editor->definePos(2);
        const QStringList before = snapshot(sprites);
        const QString path = folder->filePath(file);
        QDialogRecorder dialogs;
        dialogs.fileAnswers << QStringList{path};
        DialogScript script({chooseRange(item)});
        ProgressWatch progress;
        editor->saveImg();

        QCOMPARE(script.shown, QStringList{QStringLiteral("SaveSpr: Save images")});
        QCOMPARE(dialogs.calls.size(), 1);
        QCOMPARE(dialogs.calls.at(0).kind, QStringLiteral("save"));
        QCOMPARE(dialogs.calls.at(0).dir,
                 item.isRange() ? QStringLiteral("images.png") : QStringLiteral("5-2.png"));
        QCOMPARE(snapshot(sprites), before);
        const QList<uint> rows = item.rows(sprites, 2);
        if (!item.isRange()) {
            QCOMPARE(pixels(QImageFiles::load(path)), pixels(sprites.at(2)->image()));
            return;
        }
        QCOMPARE(progress.titles, QStringList{QStringLiteral("Saving images...")});
        // One file per sprite, named by group and number, in the folder named after the file chosen.
        const QFileInfo chosen(path);
        QDir images(chosen.path() + QLatin1Char('/') + chosen.completeBaseName());
        QStringList expected;
        for (uint row : rows) {
            const QSprite* sprite = sprites.at(row);
            const QString name = QStringLiteral("%1-%2.%3")
                                     .arg(sprite->itemGroup())
                                     .arg(sprite->itemIndex())
                                     .arg(chosen.suffix());
            expected << name;
            QCOMPARE(pixels(QImageFiles::load(images.filePath(name))), pixels(sprite->image()));
        }
        expected.sort();
        QCOMPARE(images.entryList(QDir::Files, QDir::Name), expected);
    }

    void saveImgAlignWritesOneCanvas_data()
    {
        QTest::addColumn<SaveItem>("item");
        QTest::addColumn<QUserDialogs::Button>("answer");
        QTest::newRow("one sprite at its own size and axis") << range(SaveItem::Current) << QUserDialogs::Yes;
        QTest::newRow("a group on one canvas") << range(SaveItem::Group, 5) << QUserDialogs::Yes;
        QTest::newRow("the axis not written") << range(SaveItem::All) << QUserDialogs::No;
    }

    void saveImgAlignWritesOneCanvas()
    {
        QFETCH(SaveItem, item);
        QFETCH(QUserDialogs::Button, answer);
        QSprites sprites;
        fillBuilt(sprites);
        // Sizes and axes that differ, so that the canvas is wider than any one image.
        QSprite* wide = sprites.at(3);
        wide->setImage(indexedImage(QSize(20, 4), 0, 8, 1), QSpriteShareMode::NoShare);
        wide->setInfo(wide->palette(), 5, 4, -2, 12, 0);
        bind(&sprites);
        editor->definePos(2);
        const QString path = folder->filePath(QStringLiteral("aligned.png"));
        QDialogRecorder dialogs;
        dialogs.fileAnswers << QStringList{path};
        dialogs.answers << answer;
        DialogScript script({chooseRange(item)});
        editor->saveImgAlign();

        const QList<uint> rows = item.rows(sprites, 2);
        QPoint axis(INT_MIN, INT_MIN);
        int right = INT_MIN;
        int down = INT_MIN;
        for (uint row : rows) {
            const QSprite* sprite = sprites.at(row);
            axis = QPoint(qMax(axis.x(), sprite->offsetX()), qMax(axis.y(), sprite->offsetY()));
            right = qMax(right, int(sprite->imageProperties().width) - sprite->offsetX());
            down = qMax(down, int(sprite->imageProperties().height) - sprite->offsetY());
        }
        const QSize canvas(axis.x() + right, axis.y() + down);
        const auto asked = messages(dialogs);
        QCOMPARE(asked.size(), 1);
        QCOMPARE(asked.at(0).title, QStringLiteral("Perfect axis"));
        QCOMPARE(asked.at(0).text,
                 QStringLiteral("The axis is X: %1, Y: %2. Do you want to save this information to a file?")
                     .arg(axis.x())
                     .arg(axis.y()));
        if (!item.isRange()) {
            const QSprite* sprite = sprites.at(2);
            QCOMPARE(axis, QPoint(sprite->offsetX(), sprite->offsetY()));
            const QImage written = QImageFiles::load(path);
            QCOMPARE(written.size(),
                     QSize(sprite->imageProperties().width, sprite->imageProperties().height));
            QCOMPARE(pixels(written), pixels(sprite->image()));
        } else {
            for (uint row : rows) {
                const QSprite* sprite = sprites.at(row);
                const QImage written = QImageFiles::load(folder->filePath(
                    QStringLiteral("aligned/%1-%2.png").arg(sprite->itemGroup()).arg(sprite->itemIndex())));
                QCOMPARE(written.size(), canvas);
                // The image's corner stands where its axis meets the common one.
                const QPoint corner = axis - QPoint(sprite->offsetX(), sprite->offsetY());
                QCOMPARE(pixels(written.copy(QRect(corner, QSize(sprite->imageProperties().width,
                                                                 sprite->imageProperties().height)))),
                         pixels(sprite->image()));
            }
        }
        QFile text(folder->filePath(QStringLiteral("axis.txt")));
        QCOMPARE(text.exists(), answer == QUserDialogs::Yes);
        if (answer == QUserDialogs::Yes) {
            QVERIFY(text.open(QIODevice::ReadOnly));
            QCOMPARE(text.readAll(),
                     QStringLiteral("X axis: %1\r\nY axis: %2").arg(axis.x()).arg(axis.y()).toLatin1());
        }
    }

    void savesAndCropsARealCharacter_data() { addFileRows(); }

    void savesAndCropsARealCharacter()
    {
        auto sprites = loadRow();
        if (!sprites) QSKIP("the file of this row is absent");
        editor->definePos(1);
        const int group = editor->currentSprite()->itemGroup();
        // Pad every sprite of the group, so that the crop has something to take away.
        const QList<uint> rows = sprites->rangeRows(false, group, true, 0, 0);
        for (uint row : rows) {
            QSprite* sprite = sprites->at(row);
            const QImage image = sprite->image(QSpriteImagePalette::None);
            if (image.format() != QImage::Format_Indexed8) continue;
            QImage padded(image.width() + 4, image.height() + 3, QImage::Format_Indexed8);
            padded.fill(0);
            for (int y = 0; y < image.height(); ++y)
                std::memcpy(padded.scanLine(y + 1) + 2, image.constScanLine(y), size_t(image.width()));
            padded.setColorTable(sprite->image().colorTable());
            sprite->setImage(padded, QSpriteShareMode::NoShare);
            sprite->setInfo(sprite->palette(), group, sprite->itemIndex(), sprite->offsetX() + 2,
                            sprite->offsetY() + 1, sprite->flags());
        }
        sprites->undoStack()->clear();
        const QStringList before = snapshot(*sprites);

        DialogScript script({chooseRange(range(SaveItem::Group, group))});
        ProgressWatch progress;
        editor->crop();
        QCOMPARE(script.shown, QStringList{QStringLiteral("SaveSpr: Crop sprites")});
        QCOMPARE(progress.titles, QStringList{QStringLiteral("Cropping sprites...")});
        for (uint row : rows)
            QVERIFY(!sprites->at(row)->cropBox().isValid());
        QCOMPARE(sprites->undoStack()->count(), 1);
        undoOnce(*sprites, before);

        // The group's images, written and read back, are the sprites' own.
        const QString path = folder->filePath(QStringLiteral("grp.png"));
        QDialogRecorder dialogs;
        dialogs.fileAnswers << QStringList{path};
        DialogScript save({chooseRange(range(SaveItem::Group, group))});
        editor->saveImg();
        for (uint row : rows) {
            const QSprite* sprite = sprites->at(row);
            const QString name = QStringLiteral("grp/%1-%2.png").arg(group).arg(sprite->itemIndex());
            QCOMPARE(pixels(QImageFiles::load(folder->filePath(name))), pixels(sprite->image()));
        }
    }

    // ---- Groups

    void deletesAndRenamesGroups_data() { addFileRows(); }

    void deletesAndRenamesGroups()
    {
        auto sprites = loadRow();
        if (!sprites) QSKIP("the file of this row is absent");
        editor->definePos(1);
        const int group = editor->currentSprite()->itemGroup();
        const QList<int> numbers = numbersOf(*sprites, group);
        const QStringList before = snapshot(*sprites);
        const int from = numbers.first();
        const int to = numbers.first();

        int shownGroup = -1;
        DialogScript remove({fill<DelGrp>([&](DelGrp* dialog) {
            shownGroup = dialog->range()->group();
            dialog->range()->setNumbers(false, from, to);
        })});
        editor->delGroup();
        QCOMPARE(remove.shown, QStringList{QStringLiteral("DelGrp: Delete group")});
        QCOMPARE(shownGroup, group);
        QList<int> left = numbers;
        left.removeAll(from);
        QCOMPARE(numbersOf(*sprites, group), left);
        undoOnce(*sprites, before);

        DialogScript rename({fill<RenGrp>([](RenGrp* dialog) { dialog->toGroupBox()->setValue(7777); })});
        editor->renameGroup();
        QCOMPARE(rename.shown, QStringList{QStringLiteral("RenGrp: Rename group")});
        QCOMPARE(numbersOf(*sprites, group), QList<int>());
        QCOMPARE(numbersOf(*sprites, 7777), numbers);
        QCOMPARE(editor->currentSprite()->itemGroup(), 7777);
        undoOnce(*sprites, before);
    }

    void renamingOntoNumbersInUseAsks_data()
    {
        QTest::addColumn<QUserDialogs::Button>("answer");
        QTest::addColumn<Numbers>("group6");
        QTest::newRow("Yes merges") << QUserDialogs::Yes << Numbers{0, 0, 1, 2, 4};
        QTest::newRow("No keeps the groups") << QUserDialogs::No << Numbers{0};
    }

    void renamingOntoNumbersInUseAsks()
    {
        QFETCH(QUserDialogs::Button, answer);
        QFETCH(Numbers, group6);
        QSprites sprites;
        fillBuilt(sprites);
        bind(&sprites);
        QDialogRecorder dialogs;
        dialogs.answers << answer;
        DialogScript script({fill<RenGrp>([](RenGrp* dialog) { dialog->toGroupBox()->setValue(6); })});
        editor->renameGroup();
        const auto asked = messages(dialogs);
        QCOMPARE(asked.size(), 1);
        QCOMPARE(asked.at(0).title, QStringLiteral("Rename group"));
        QCOMPARE(asked.at(0).text,
                 QStringLiteral(
                     "The group 6 already uses some of these numbers. Do you want to rename the sprites "
                     "anyway?"));
        QList<int> numbers = numbersOf(sprites, 6);
        std::sort(numbers.begin(), numbers.end());
        QCOMPARE(numbers, group6);
    }

    void splitsTheTrueColourSprites()
    {
        auto sprites = load(samplePath());
        if (!sprites) QSKIP("the sample is not built next to the tests");
        QImage rgb(3, 2, QImage::Format_RGB32);
        rgb.fill(qRgb(200, 100, 50));
        QSprite* sprite = sprites->insert(1);
        sprite->setImage(rgb);
        sprite->setInfo(nullptr, 42, 0, 1, 2, 0);
        sprites->undoStack()->clear();
        const QStringList before = snapshot(*sprites);
        const uint count = sprites->count();

        editor->definePos(1);
        DialogScript script({chooseRange(range(SaveItem::Current))});
        editor->splitRGB();
        QCOMPARE(script.shown, QStringList{QStringLiteral("SaveSpr: Split channels")});
        QCOMPARE(sprites->count(), count + 2);
        for (uint row = 1; row < 4; ++row) {
            QCOMPARE(sprites->at(row)->itemGroup(), 42);
            QCOMPARE(sprites->at(row)->imageProperties().imageFormat(), QImage::Format_Indexed8);
        }
        QCOMPARE(sprites->at(3)->image().pixel(0, 0), qRgb(0, 0, 50));
        undoOnce(*sprites, before);

        // An indexed sprite has no channels to split: the user is told so, and nothing changes.
        editor->definePos(0);
        QDialogRecorder dialogs;
        DialogScript again({chooseRange(range(SaveItem::Current))});
        editor->splitRGB();
        const auto told = messages(dialogs);
        QCOMPARE(told.size(), 1);
        QCOMPARE(told.at(0).title, QStringLiteral("Split channels"));
        QCOMPARE(told.at(0).text,
                 QStringLiteral("There is no true colour sprite in the range. Only true colour "
                                "sprites are split into channels."));
        QCOMPARE(snapshot(*sprites), before);
    }

    // ---- Export and import

    void exportThenImportGivesTheSpritesBack_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<int>("choice"); // 0 all, 1 whole groups, 2 a run of a group
        QTest::newRow("sample, all") << samplePath() << 0;
        QTest::newRow("sample, the current group") << samplePath() << 1;
        QTest::newRow("kfm, a run of a group") << QStringLiteral("elecbyte-mugen11/chars/kfm/kfm.sff") << 2;
    }

    void exportThenImportGivesTheSpritesBack()
    {
        QFETCH(int, choice);
        auto sprites = loadRow();
        if (!sprites) QSKIP("the file of this row is absent");
        editor->definePos(1);
        const int group = editor->currentSprite()->itemGroup();
        const QList<int> numbers = numbersOf(*sprites, group);
        const QString target = folder->filePath(QStringLiteral("out.tve"));
        QDialogRecorder dialogs;
        dialogs.fileAnswers << QStringList{target};
        DialogScript script({fill<ExpDlg>([&](ExpDlg* dialog) {
            if (choice == 1) {
                dialog->groupsButton()->setChecked(true);
            } else if (choice == 2) {
                dialog->groupButton()->setChecked(true);
                dialog->range()->setNumbers(false, numbers.first(), numbers.first());
            }
        })});
        ProgressWatch progress;
        editor->fileExport();
        QCOMPARE(script.shown, QStringList{QStringLiteral("ExpDlg: Export sprites")});
        QCOMPARE(dialogs.calls.at(0).text,
                 QStringLiteral("Tavrel Export (*.tve);;Elecbyte SprMaker 2 (*.def)"));
        QVERIFY(progress.titles.contains(QStringLiteral("Exporting sprites...")));

        QList<const QSprite*> expected;
        for (const QSprite* sprite : sprites->spriteItems())
            if (choice == 0 ||
                (sprite->itemGroup() == group && (choice == 1 || sprite->itemIndex() == numbers.first())))
                expected << sprite;
        QSprites imported;
        bind(&imported);
        dialogs.fileAnswers << QStringList{target};
        editor->fileImport();
        QCOMPARE(messages(dialogs).last().text,
                 QStringLiteral("%1 sprite(s) were imported!").arg(expected.size()));
        QVERIFY(progress.titles.contains(QStringLiteral("Importing sprites...")));
        QCOMPARE(imported.count(), uint(expected.size()));
        for (uint row = 0; row < imported.count(); ++row) {
            const QSprite* back = imported.at(row);
            const QSprite* original = expected.at(int(row));
            QCOMPARE(back->itemGroup(), original->itemGroup());
            QCOMPARE(back->itemIndex(), original->itemIndex());
            QCOMPARE(QPoint(back->offsetX(), back->offsetY()),
                     QPoint(original->offsetX(), original->offsetY()));
            QCOMPARE(pixels(back->image(QSpriteImagePalette::None)),
                     pixels(original->image(QSpriteImagePalette::None)));
        }
        // One undo takes the whole import back.
        imported.undoChange();
        QCOMPARE(imported.count(), 0u);
    }

    void exportsSprMakerDefinitions()
    {
        auto sprites = load(samplePath());
        if (!sprites) QSKIP("the sample is not built next to the tests");
        QDialogRecorder dialogs;
        dialogs.fileAnswers << QStringList{folder->filePath(QStringLiteral("roan.def"))};
        DialogScript script({fill<ExpDlg>([](ExpDlg*) {})});
        editor->fileExport();
        QFile written(folder->filePath(QStringLiteral("roan.def")));
        QVERIFY(written.open(QIODevice::ReadOnly));
        QVERIFY(written.readAll().startsWith("[Output]\r\n;filename = roan.sff\r\n"));
        QVERIFY(!QFileInfo::exists(folder->filePath(QStringLiteral("roan.tve"))));
    }

    void importsFromAnotherProject()
    {
        auto sprites = load(samplePath());
        if (!sprites) QSKIP("the sample is not built next to the tests");
        QSprites other;
        fillBuilt(other);
        const QStringList before = snapshot(*sprites);
        const uint count = sprites->count();
        editor->setImportSources(
            {{QStringLiteral("Roan"), sprites.get()}, {QStringLiteral("Built"), &other}});

        // The project itself is refused.
        QDialogRecorder dialogs;
        DialogScript self(
            {fill<sprimport>([](sprimport* dialog) { dialog->projectList()->setCurrentRow(0); })});
        editor->projImport();
        QCOMPARE(self.shown, QStringList{QStringLiteral("sprimport: Import from a project")});
        QCOMPARE(messages(dialogs).size(), 1);
        QCOMPARE(messages(dialogs).at(0).title, QStringLiteral("Warning"));
        QCOMPARE(messages(dialogs).at(0).text,
                 QStringLiteral("You can't import from the destination project!"));
        QCOMPARE(snapshot(*sprites), before);

        // A run of a group of the other project.
        dialogs.calls.clear();
        ProgressWatch progress;
        DialogScript run({fill<sprimport>([](sprimport* dialog) {
            dialog->projectList()->setCurrentRow(1);
            dialog->groupButton()->setChecked(true);
            dialog->range()->setGroup(5);
            dialog->range()->setNumbers(false, 1, 4);
        })});
        editor->projImport();
        QCOMPARE(messages(dialogs).size(), 1);
        QCOMPARE(messages(dialogs).at(0).text, QStringLiteral("3 sprite(s) were imported!"));
        QCOMPARE(progress.titles, QStringList{QStringLiteral("Importing sprites...")});
        QCOMPARE(sprites->count(), count + 3);
        QCOMPARE(sprites->at(count)->itemIndex(), 1);
        QCOMPARE(pixels(sprites->at(count + 2)->image()), pixels(other.at(3)->image()));
        undoOnce(*sprites, before);

        // A range without sprites imports nothing.
        dialogs.calls.clear();
        DialogScript none({fill<sprimport>([](sprimport* dialog) {
            dialog->projectList()->setCurrentRow(1);
            dialog->groupButton()->setChecked(true);
            dialog->range()->setGroup(99);
        })});
        editor->projImport();
        QCOMPARE(messages(dialogs).at(0).text, QStringLiteral("No sprite imported!"));
        QCOMPARE(snapshot(*sprites), before);
        editor->setImportSources({});
    }

    // ---- The rest

    void axisFieldsFollowTheInvertOption_data()
    {
        QTest::addColumn<bool>("reverse");
        QTest::addColumn<bool>("yField");
        QTest::newRow("x as is") << false << false;
        QTest::newRow("x inverted") << true << false;
        QTest::newRow("y inverted") << true << true;
    }

    void axisFieldsFollowTheInvertOption()
    {
        QFETCH(bool, reverse);
        QFETCH(bool, yField);
        QSprites sprites;
        fillBuilt(sprites);
        bind(&sprites);
        (*mugenModel)[QStringLiteral("reverse_spr_axis")] = reverse;
        editor->definePos(0);
        const QStringList before = snapshot(sprites);
        QSpinBox* field = yField ? editor->controls()->yBox() : editor->controls()->xBox();
        field->setValue(10);
        const QSprite* sprite = sprites.at(0);
        QCOMPARE(yField ? sprite->offsetY() : sprite->offsetX(), reverse ? -10 : 10);
        // The arrows move the model's axis; the field shows it negated again.
        editor->axisLeft();
        editor->axisUp();
        QCOMPARE(field->value(), reverse ? 9 : 11);
        sprites.undoChange();
        sprites.undoChange();
        undoOnce(sprites, before);
    }

    void emptyFileCommandsDoNothing()
    {
        QSprites empty;
        bind(&empty);
        QDialogRecorder dialogs;
        DialogScript script;
        const QList<void (QSpritesEditor::*)()> commands{&QSpritesEditor::del,
                                                         &QSpritesEditor::openImg,
                                                         &QSpritesEditor::saveImg,
                                                         &QSpritesEditor::saveImgAlign,
                                                         &QSpritesEditor::crop,
                                                         &QSpritesEditor::splitRGB,
                                                         &QSpritesEditor::delGroup,
                                                         &QSpritesEditor::renameGroup,
                                                         &QSpritesEditor::duplicate,
                                                         &QSpritesEditor::alignTopLeft,
                                                         &QSpritesEditor::alignTopRight,
                                                         &QSpritesEditor::alignBotLeft,
                                                         &QSpritesEditor::alignBotRight,
                                                         &QSpritesEditor::alignTopCenter,
                                                         &QSpritesEditor::alignBotCenter,
                                                         &QSpritesEditor::alignCenterCenter,
                                                         &QSpritesEditor::alignCenterLeft,
                                                         &QSpritesEditor::alignCenterRight};
        for (auto command : commands)
            (editor->*command)();
        QCOMPARE(dialogs.calls.size(), 0);
        QCOMPARE(script.shown, QStringList());
        QCOMPARE(empty.count(), 0u);
        QCOMPARE(empty.undoStack()->count(), 0);

        // Without a model nothing is asked either, not even for a file.
        editor->bind(nullptr, nullptr);
        editor->add();
        editor->fileExport();
        editor->projImport();
        QCOMPARE(dialogs.calls.size(), 0);
        QCOMPARE(script.shown, QStringList());
    }

    void alignToolsWindowAlignsToTheGuides()
    {
        QSprites sprites;
        fillBuilt(sprites);
        bind(&sprites);
        editor->definePos(3);
        workspace->view()->setGuides(QPoint(4, -6));
        editor->alignTools();
        AlignDlg* tools = editor->alignTool();
        QVERIFY(tools);
        QVERIFY(tools->isVisible());
        QCOMPARE(tools->windowTitle(), QStringLiteral("Align"));
        QCOMPARE(QPoint(tools->xBox()->value(), tools->yBox()->value()), QPoint(4, -6));
        const QStringList before = snapshot(sprites);
        const QSprite* sprite = sprites.at(3);
        const int w = sprite->imageProperties().width;
        const int h = sprite->imageProperties().height;
        tools->findChild<QToolButton*>(QStringLiteral("spr_align_bottomright"))->click();
        QCOMPARE(QPoint(sprite->offsetX(), sprite->offsetY()), QPoint(w - 4, h + 6));
        undoOnce(sprites, before);

        // A crossing typed in the window moves the guide lines.
        tools->xBox()->setValue(1);
        QCOMPARE(workspace->view()->guides(), QPoint(1, -6));
        tools->findChild<QToolButton*>(QStringLiteral("spr_align_centercenter"))->click();
        QCOMPARE(QPoint(sprite->offsetX(), sprite->offsetY()), QPoint((w >> 1) - 1, (h >> 1) + 6));
        undoOnce(sprites, before);

        // With no sprite there is nothing to align.
        QSprites empty;
        bind(&empty);
        QVERIFY(!tools->button(0)->isEnabled());
        tools->close();
        workspace->view()->setGuides(QPoint());
    }

    void sheetImportIsTheWindowsTool()
    {
        QSignalSpy asked(editor, &QSpritesEditor::sheetImportRequested);
        editor->sheetImport();
        QCOMPARE(asked.size(), 0);
        QSprites sprites;
        bind(&sprites);
        editor->sheetImport();
        QCOMPARE(asked.size(), 1);
    }
};

QTEST_MAIN(tst_SpritesEditorCommands)
#include "tst_SpritesEditorCommands.moc"
