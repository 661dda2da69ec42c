// The palettes side editor on the bundled sample and on a real character: what each command does to
// the sprites model, that one undo of the model takes it back, the exact questions it asks, the files
// it reads and writes, and the substitution table's dialog.

#include "AddPal.h"
#include "QAnimSpriteWorkspace.h"
#include "QDialogRecorder.h"
#include "QDialogRunner.h"
#include "QMugenModel.h"
#include "QPaletteWidget.h"
#include "QPalettesEditor.h"
#include "QPalettesPanel.h"
#include "QRGBPalette.h"
#include "QSprRender.h"
#include "QSprite.h"
#include "QSpritePalette.h"
#include "QSprites.h"
#include "QSpritesEditor.h"
#include "RemapDlg.h"
#include "TestData.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QItemSelectionModel>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>

#include <cstring>
#include <functional>
#include <memory>

namespace {
// A recognisable table: colour i of variant v.
void fillTable(QRGBPal* table, int variant)
{
    for (int i = 0; i < QRGBPal::TableSize; ++i)
        table[i] = QRGBPal(uchar(i), uchar(variant * 40 + i / 2), uchar(255 - i), 255);
    table[0].a = 0;
}

bool writeAct(const QString& path, int variant)
{
    QRGBPal table[QRGBPal::TableSize];
    fillTable(table, variant);
    return QRGBPalette(table).toFile(path);
}
} // namespace

class tst_PalettesEditor : public QObject
{
    Q_OBJECT

    QWidget host;
    QAnimSpriteWorkspace* workspace = nullptr;
    QSpritesEditor* spritesEditor = nullptr;
    QPalettesEditor* editor = nullptr;
    QMap<QString, QString> variables;
    std::function<int(QDialog*)> onDialog;
    QStringList dialogTitles;
    int pageSwitches = 0;

    static QString samplePath() { return TestData::binDir() + QStringLiteral("/samples/Roan/Roan.sff"); }
    static QString characterPath()
    {
        return TestData::root() + QStringLiteral("/elecbyte-mugen11/chars/kfm/kfm.sff");
    }

    std::unique_ptr<QSprites> load(const QString& path)
    {
        auto sprites = std::make_unique<QSprites>();
        if (!sprites->fromFile(path)) return nullptr;
        spritesEditor->bind(sprites.get(), &variables);
        spritesEditor->activate();
        editor->bind(sprites.get(), &variables);
        editor->activate();
        return sprites;
    }

    // Each palette's group, number, colour count and colours, then each sprite's palette position.
    static QList<QByteArray> snapshot(const QSprites& sprites)
    {
        QList<QByteArray> all;
        for (const QSpritePalette* palette : sprites.paletteItems()) {
            QByteArray record = QStringLiteral("%1,%2,%3:")
                                    .arg(palette->itemGroup())
                                    .arg(palette->itemIndex())
                                    .arg(palette->colorCount())
                                    .toUtf8();
            if (palette->table())
                record += QByteArray(reinterpret_cast<const char*>(palette->table()), QRGBPal::TableBytes);
            all << record;
        }
        for (const QSprite* sprite : sprites.spriteItems())
            all << QByteArray::number(sprites.paletteIndexOf(sprite->palette()));
        return all;
    }

    // The widget shows the colours of the palette the editor stands on.
    bool widgetShowsPalette() const
    {
        const QSpritePalette* palette = editor->currentPalette();
        if (!palette) return editor->controls()->positionLabel()->text() == QLatin1String("0 / 0");
        return palette->table() &&
               std::memcmp(palette->table(), editor->colors()->colors(), QRGBPal::TableBytes) == 0 &&
               editor->colors()->colorCount() == palette->colorCount();
    }

    QString positionText() const { return editor->controls()->positionLabel()->text(); }

private Q_SLOTS:
    void initTestCase()
    {
        host.resize(800, 600);
        workspace = new QAnimSpriteWorkspace(&host, this);
        spritesEditor = new QSpritesEditor(workspace, this);
        editor = new QPalettesEditor(spritesEditor, workspace, this);
        editor->setPageSwitch([this]() {
            ++pageSwitches;
            spritesEditor->activate();
        });
        QDialogRunner::install([this](QDialog* dialog) {
            dialogTitles << dialog->windowTitle();
            return onDialog ? onDialog(dialog) : int(QDialog::Rejected);
        });
    }

    void cleanupTestCase()
    {
        QDialogRunner::install(nullptr);
        // The workspace's tool window lives on the host widget, which goes before this object's children.
        delete editor;
        delete spritesEditor;
        delete workspace;
    }

    void cleanup()
    {
        editor->bind(nullptr, nullptr);
        spritesEditor->bind(nullptr, nullptr);
        onDialog = nullptr;
        dialogTitles.clear();
        pageSwitches = 0;
        variables.clear();
        delete mugenModel;
        mugenModel = nullptr;
    }

    void panelFollowsThePalettes()
    {
        auto sprites = load(samplePath());
        if (!sprites) QSKIP("the sample is not built next to the tests");
        const int count = int(sprites->paletteCount());
        QVERIFY(count > 2);
        QCOMPARE(editor->title(), QStringLiteral("Palettes"));
        QCOMPARE(QPalettesEditor::key(), QStringLiteral("palettes"));
        QCOMPARE(editor->position(), 0);
        QCOMPARE(positionText(), QStringLiteral("1 / %1").arg(count));
        QVERIFY(widgetShowsPalette());

        editor->nextPal();
        QCOMPARE(positionText(), QStringLiteral("2 / %1").arg(count));
        QCOMPARE(editor->controls()->groupBox()->value(), sprites->paletteAt(1)->itemGroup());
        QCOMPARE(editor->controls()->numberBox()->value(), sprites->paletteAt(1)->itemIndex());
        QVERIFY(widgetShowsPalette());
        editor->prevPal();
        editor->prevPal();
        QCOMPARE(editor->position(), 0);
        editor->controls()->selector()->setValue(count - 1);
        QCOMPARE(editor->position(), count - 1);
        editor->nextPal();
        QCOMPARE(editor->position(), count - 1);

        // Groups are runs of palettes: the next group starts where the group changes.
        QRGBPal table[QRGBPal::TableSize];
        fillTable(table, 1);
        sprites->addPalette(table, QSpritePaletteShareMode::Share, 7, 0);
        sprites->addPalette(table, QSpritePaletteShareMode::Share, 7, 1);
        editor->showPalette(1);
        editor->nextGrp();
        QCOMPARE(editor->position(), count);
        editor->nextPal();
        editor->prevGrp();
        QCOMPARE(editor->position(), 0);

        // A sprite shown with its palette brings the panel to that palette.
        sprites->at(3)->setPalette(sprites->paletteAt(2));
        spritesEditor->definePos(3);
        QCOMPARE(editor->position(), 2);

        // An empty file shows nothing, and no command finds anything to work on.
        QSprites empty;
        spritesEditor->bind(&empty, &variables);
        editor->bind(&empty, &variables);
        QCOMPARE(positionText(), QStringLiteral("0 / 0"));
        QCOMPARE(editor->controls()->groupBox()->value(), 0);
        editor->switchCount();
        editor->del();
        editor->save();
        QCOMPARE(empty.undoStack()->count(), 0);
    }

    void eachCommandIsOneUndoStep_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("command");
        const QStringList commands{"switch count", "set colour",   "reverse colours", "double click colour",
                                   "drag colour",  "widget undo",  "apply to sprite", "apply to group",
                                   "delete",       "delete all",   "duplicates",      "unused",
                                   "add empty",    "add files",    "open file",       "group field",
                                   "number field", "write a table"};
        for (const QString& command : commands) {
            QTest::newRow(qPrintable(QStringLiteral("sample: ") + command))
                << QStringLiteral("sample") << command;
            QTest::newRow(qPrintable(QStringLiteral("kfm: ") + command)) << QStringLiteral("kfm") << command;
        }
    }

    void eachCommandIsOneUndoStep()
    {
        QFETCH(QString, file);
        QFETCH(QString, command);
        if (file == QLatin1String("kfm")) TAVREL_REQUIRE_TESTDATA();
        auto sprites = load(file == QLatin1String("kfm") ? characterPath() : samplePath());
        if (!sprites) QSKIP("the sample is not built next to the tests");
        QVERIFY(sprites->paletteCount() >= 2);
        QTemporaryDir folder;
        QDialogRecorder dialogs;
        QPaletteWidget* grid = editor->colors();
        QSprite* sprite = spritesEditor->currentSprite();
        QVERIFY(sprite);
        const int own = sprites->paletteIndexOf(sprite->palette());
        const int other = own == 0 ? 1 : 0;
        // A palette that repeats palette 0's colours, used by the current sprite, and one no sprite uses.
        const auto addRepeat = [&]() {
            QSpritePalette* repeat =
                sprites->addPalette(sprites->paletteAt(0)->table(), QSpritePaletteShareMode::Share, 77, 0);
            sprite->setPalette(repeat);
            editor->showPalette(sprites->paletteIndexOf(repeat));
        };
        const auto addUnused = [&]() {
            QRGBPal table[QRGBPal::TableSize];
            fillTable(table, 3);
            sprites->addPalette(table, QSpritePaletteShareMode::Share, 78, 0);
            editor->showPalette(0);
        };

        QList<QByteArray> before = snapshot(*sprites);
        const int position = editor->position();
        if (command == QLatin1String("switch count")) {
            const int count = editor->currentPalette()->colorCount();
            editor->switchCount();
            QCOMPARE(editor->currentPalette()->colorCount(), count > 32 ? 32 : 256);
            QCOMPARE(grid->colorCount(), editor->currentPalette()->colorCount());
        } else if (command == QLatin1String("set colour")) {
            grid->selectOnly(3);
            grid->setSelected(5, true);
            onDialog = [](QDialog* dialog) {
                auto* colours = qobject_cast<QColorDialog*>(dialog);
                if (!colours) return int(QDialog::Rejected);
                colours->setCurrentColor(QColor(1, 2, 3));
                return int(QDialog::Accepted);
            };
            editor->setColor();
            QCOMPARE(dialogTitles, QStringList{QStringLiteral("Color")});
            QCOMPARE(editor->currentPalette()->table()[3], QRGBPal(1, 2, 3));
            QCOMPARE(editor->currentPalette()->table()[5], QRGBPal(1, 2, 3));
        } else if (command == QLatin1String("reverse colours")) {
            const QRGBPal second = editor->currentPalette()->table()[2];
            const int last = editor->currentPalette()->colorCount() - 1;
            for (int i = 2; i <= last; ++i)
                grid->setSelected(i, true);
            editor->switchColor();
            QCOMPARE(editor->currentPalette()->table()[last], second);
        } else if (command == QLatin1String("double click colour")) {
            onDialog = [](QDialog* dialog) {
                static_cast<QColorDialog*>(dialog)->setCurrentColor(QColor(9, 8, 7, 200));
                return int(QDialog::Accepted);
            };
            editor->colorDblClicked(7);
            QCOMPARE(editor->currentPalette()->table()[7], QRGBPal(9, 8, 7, 200));
        } else if (command == QLatin1String("drag colour")) {
            // A colour unlike the one at the target, so that the move shows.
            const QRGBPal* table = editor->currentPalette()->table();
            int source = 20;
            while (source + 1 < grid->colorCount() && table[source] == table[2])
                ++source;
            const QRGBPal moved = table[source];
            QSignalSpy moves(grid, &QPaletteWidget::colorMoved);
            const auto send = [grid](QEvent::Type type, int cell, Qt::MouseButtons buttons) {
                const QPoint at = grid->cellRect(cell).center();
                QMouseEvent event(type, at, grid->mapToGlobal(at), Qt::LeftButton, buttons, Qt::NoModifier);
                QApplication::sendEvent(grid, &event);
            };
            send(QEvent::MouseButtonPress, source, Qt::LeftButton);
            send(QEvent::MouseMove, 11, Qt::LeftButton);
            send(QEvent::MouseButtonRelease, 2, Qt::NoButton);
            QCOMPARE(moves.size(), 1);
            QCOMPARE(editor->currentPalette()->table()[2], moved);
        } else if (command == QLatin1String("widget undo")) {
            // A step of the widget taken back reaches the model as a change of its own.
            const QRGBPal original = editor->currentPalette()->table()[4];
            grid->rgbPalette()->setColor(uchar(4), QRGBPal(4, 4, 4));
            before = snapshot(*sprites);
            editor->undo();
            QCOMPARE(editor->currentPalette()->table()[4], original);
            editor->redo();
            QCOMPARE(editor->currentPalette()->table()[4], QRGBPal(4, 4, 4));
            editor->undo();
            QCOMPARE(editor->currentPalette()->table()[4], original);
        } else if (command == QLatin1String("apply to sprite")) {
            editor->showPalette(other);
            editor->setSprPal();
            QCOMPARE(sprite->palette(), sprites->paletteAt(uint(other)));
        } else if (command == QLatin1String("apply to group")) {
            editor->showPalette(other);
            editor->setGrpPal();
            for (const QSprite* each : sprites->spriteItems())
                if (each->itemGroup() == sprite->itemGroup())
                    QCOMPARE(each->palette(), sprites->paletteAt(uint(other)));
        } else if (command == QLatin1String("delete")) {
            dialogs.answers << QUserDialogs::Yes;
            editor->del();
            QCOMPARE(int(sprites->paletteCount()), before.size() - int(sprites->count()) - 1);
        } else if (command == QLatin1String("delete all")) {
            dialogs.answers << QUserDialogs::Yes;
            editor->clear();
            QCOMPARE(sprites->paletteCount(), 0u);
            QCOMPARE(positionText(), QStringLiteral("0 / 0"));
        } else if (command == QLatin1String("duplicates")) {
            addRepeat();
            before = snapshot(*sprites);
            editor->delDupl();
            QVERIFY(sprites->findPalette(0, 77, 0) < 0);
            QVERIFY(sprite->palette() != nullptr);
            QVERIFY(std::memcmp(sprite->palette()->table(), sprites->paletteAt(0)->table(),
                                QRGBPal::TableBytes) == 0);
        } else if (command == QLatin1String("unused")) {
            addUnused();
            before = snapshot(*sprites);
            editor->clearUnused();
            QVERIFY(sprites->findPalette(0, 78, 0) < 0);
            QCOMPARE(editor->position(), 0);
        } else if (command == QLatin1String("add empty")) {
            dialogs.answers << QUserDialogs::No;
            const int group = editor->currentPalette()->itemGroup();
            editor->add();
            QCOMPARE(editor->position(), position + 1);
            const QSpritePalette* added = sprites->paletteAt(uint(position + 1));
            QCOMPARE(added->itemGroup(), group);
            for (int i = 0; i < QRGBPal::TableSize; ++i)
                QCOMPARE(added->table()[i], QRGBPal(0, 0, 0, 0));
        } else if (command == QLatin1String("add files")) {
            const QString a = folder.filePath(QStringLiteral("a.act"));
            const QString b = folder.filePath(QStringLiteral("b.act"));
            QVERIFY(writeAct(a, 1) && writeAct(b, 2));
            dialogs.answers << QUserDialogs::Yes;
            dialogs.fileAnswers << QStringList{b, a};
            onDialog = [](QDialog*) { return int(QDialog::Accepted); };
            editor->add();
            QCOMPARE(int(sprites->paletteCount()), before.size() - int(sprites->count()) + 2);
        } else if (command == QLatin1String("open file")) {
            const QString path = folder.filePath(QStringLiteral("open.act"));
            QVERIFY(writeAct(path, 4));
            dialogs.fileAnswers << QStringList{path};
            editor->open();
            QRGBPal expected[QRGBPal::TableSize];
            fillTable(expected, 4);
            QVERIFY(std::memcmp(editor->currentPalette()->table(), expected, QRGBPal::TableBytes) == 0);
            QCOMPARE(dialogs.calls.at(0).title, QStringLiteral("Open palette"));
            QCOMPARE(variables.value(QStringLiteral("proj_path")), folder.path());
        } else if (command == QLatin1String("group field")) {
            editor->controls()->groupBox()->setValue(4242);
            QCOMPARE(editor->currentPalette()->itemGroup(), 4242);
        } else if (command == QLatin1String("number field")) {
            editor->controls()->numberBox()->setValue(4243);
            QCOMPARE(editor->currentPalette()->itemIndex(), 4243);
        } else if (command == QLatin1String("write a table")) {
            QRGBPal table[QRGBPal::TableSize];
            fillTable(table, 5);
            editor->setPalette(table);
            QVERIFY(std::memcmp(editor->currentPalette()->table(), table, QRGBPal::TableBytes) == 0);
        }
        QVERIFY(snapshot(*sprites) != before);
        QVERIFY(widgetShowsPalette());
        sprites->undoChange();
        QCOMPARE(snapshot(*sprites), before);
        QVERIFY(widgetShowsPalette());
        QCOMPARE(pageSwitches, 0);
    }

    void commandsBringTheSpritesPageBack()
    {
        auto sprites = load(samplePath());
        if (!sprites) QSKIP("the sample is not built next to the tests");
        workspace->view()->setRenderMode(QSprRender::AnimationMode);
        editor->switchCount();
        QCOMPARE(pageSwitches, 1);
        QCOMPARE(workspace->view()->renderMode(), int(QSprRender::SpriteMode));
        // Moving between palettes needs no page.
        workspace->view()->setRenderMode(QSprRender::AnimationMode);
        editor->nextPal();
        QCOMPARE(pageSwitches, 1);
    }

    void addLoadsFilesInNumberOrder_data()
    {
        QTest::addColumn<bool>("dialog");
        QTest::addColumn<bool>("reversed");
        QTest::addColumn<int>("step");
        QTest::addColumn<QList<int>>("numbers");
        QTest::newRow("dialog, step 1") << true << false << 1 << QList<int>{3, 4, 5};
        QTest::newRow("dialog, step 10, reversed") << true << true << 10 << QList<int>{3, 13, 23};
        // Without the dialog the files follow the highest number of the current palette's group.
        QTest::newRow("no dialog") << false << false << 1 << QList<int>();
    }

    void addLoadsFilesInNumberOrder()
    {
        QFETCH(bool, dialog);
        QFETCH(bool, reversed);
        QFETCH(int, step);
        QFETCH(QList<int>, numbers);
        auto sprites = load(samplePath());
        if (!sprites) QSKIP("the sample is not built next to the tests");
        mugenModel = new QMugenModel;
        (*mugenModel)[QStringLiteral("show_addpalette_dialog")] = dialog;
        QTemporaryDir folder;
        // Named so that plain text order and number order differ.
        const QStringList names{"pal10.act", "pal2.act", "Pal1.act"};
        for (int i = 0; i < names.size(); ++i)
            QVERIFY(writeAct(folder.filePath(names.at(i)), 10 - i));
        QFile bad(folder.filePath(QStringLiteral("bad.png")));
        QVERIFY(bad.open(QIODevice::WriteOnly) && bad.write("not an image") > 0);
        bad.close();
        QDialogRecorder dialogs;
        dialogs.answers << QUserDialogs::Yes;
        QStringList chosen;
        for (const QString& name : names)
            chosen << folder.filePath(name);
        chosen << folder.filePath(QStringLiteral("bad.png"));
        dialogs.fileAnswers << chosen;
        onDialog = [&](QDialog* shown) {
            auto* add = qobject_cast<AddPal*>(shown);
            if (!add) return int(QDialog::Rejected);
            add->groupBox()->setValue(9);
            add->indexBox()->setValue(3);
            (step == 10 ? add->stepTen() : add->stepOne())->setChecked(true);
            add->reversedBox()->setChecked(reversed);
            return int(QDialog::Accepted);
        };
        editor->showPalette(1);
        const int group = dialog ? 9 : editor->currentPalette()->itemGroup();
        int highest = -1;
        for (const QSpritePalette* palette : sprites->paletteItems())
            if (palette->itemGroup() == group) highest = qMax(highest, palette->itemIndex());
        const auto before = snapshot(*sprites);
        editor->add();

        QCOMPARE(dialogs.calls.at(0).title, QStringLiteral("Add palette"));
        QCOMPARE(dialogs.calls.at(0).text, QStringLiteral("Do you want to load the palettes from files?"));
        QCOMPARE(dialogs.calls.at(1).title, QStringLiteral("Add palettes"));
        QVERIFY(dialogs.calls.at(1).text.contains(
            QLatin1String(" (*.act *.pcx *.png *.bmp *.pal *.aco *.ase *.txt);;")));
        QCOMPARE(dialogTitles.size(), dialog ? 1 : 0);
        // The file that isn't a palette is named, and the others still go in.
        QCOMPARE(dialogs.calls.last().icon, QUserDialogs::Warning);
        QVERIFY(dialogs.calls.last().text.contains(QLatin1String("bad.png")));

        // After the current palette, in the order 1, 2, 10 of the file names.
        const int variants[] = {8, 9, 10};
        for (int i = 0; i < 3; ++i) {
            const QSpritePalette* added = sprites->paletteAt(uint(2 + i));
            QCOMPARE(added->itemGroup(), group);
            QCOMPARE(added->itemIndex(), numbers.isEmpty() ? highest + 1 + i : numbers.at(i));
            QRGBPal table[QRGBPal::TableSize];
            fillTable(table, variants[i]);
            const int probe = 40;
            const QRGBPal expected = reversed ? table[255 - probe] : table[probe];
            QCOMPARE(added->table()[probe].toColor(), expected.toColor());
            QCOMPARE(added->table()[0].a, uchar(0));
        }
        QCOMPARE(editor->position(), 4);
        sprites->undoChange();
        QCOMPARE(snapshot(*sprites), before);
    }

    void addWithoutAnswerAddsNothing()
    {
        auto sprites = load(samplePath());
        if (!sprites) QSKIP("the sample is not built next to the tests");
        QDialogRecorder dialogs;
        dialogs.answers << QUserDialogs::Cancel << QUserDialogs::Yes;
        editor->add();
        editor->add();
        QCOMPARE(sprites->undoStack()->count(), 0);
        QCOMPARE(dialogs.calls.size(), 3);
    }

    void deleteAsksFirst_data()
    {
        QTest::addColumn<bool>("confirm");
        QTest::addColumn<int>("answer");
        QTest::addColumn<int>("questions");
        QTest::addColumn<bool>("deleted");
        QTest::newRow("asked, no") << true << int(QUserDialogs::No) << 1 << false;
        QTest::newRow("asked, yes") << true << int(QUserDialogs::Yes) << 1 << true;
        QTest::newRow("not asked") << false << int(QUserDialogs::No) << 0 << true;
    }

    void deleteAsksFirst()
    {
        QFETCH(bool, confirm);
        QFETCH(int, answer);
        QFETCH(int, questions);
        QFETCH(bool, deleted);
        auto sprites = load(samplePath());
        if (!sprites) QSKIP("the sample is not built next to the tests");
        mugenModel = new QMugenModel;
        (*mugenModel)[QStringLiteral("confirm_delete")] = confirm;
        const uint count = sprites->paletteCount();
        editor->showPalette(int(count) - 1);
        QDialogRecorder dialogs;
        dialogs.answers << QUserDialogs::Button(answer);
        editor->del();
        QCOMPARE(dialogs.calls.size(), questions);
        if (questions) {
            QCOMPARE(dialogs.calls.at(0).title, QStringLiteral("Delete palette"));
            QCOMPARE(dialogs.calls.at(0).text, QStringLiteral("Do you really want to delete the palette?"));
        }
        QCOMPARE(sprites->paletteCount(), deleted ? count - 1 : count);
        // Deleting the last palette shows the one before it.
        QCOMPARE(editor->position(), int(sprites->paletteCount()) - 1);
    }

    void saveWritesFiles_data()
    {
        QTest::addColumn<int>("choice");
        QTest::addColumn<QStringList>("files");
        QTest::newRow("current") << 0 << QStringList{"chosen.act"};
        QTest::newRow("group") << 1 << QStringList{"5-0.act", "5-1.act"};
        QTest::newRow("all") << 2 << QStringList{"1-1.act", "5-0.act", "5-1.act", "6-0.act"};
    }

    void saveWritesFiles()
    {
        QFETCH(int, choice);
        QFETCH(QStringList, files);
        QSprites sprites;
        QRGBPal table[QRGBPal::TableSize];
        const int places[][2] = {{1, 1}, {5, 0}, {5, 1}, {6, 0}};
        for (int i = 0; i < 4; ++i) {
            fillTable(table, i);
            sprites.addPalette(table, QSpritePaletteShareMode::Share, places[i][0], places[i][1]);
        }
        editor->bind(&sprites, &variables);
        editor->showPalette(2);
        QTemporaryDir folder;
        QDialogRecorder dialogs;
        const QStringList choices{"Current palette", "Palettes of group 5", "All palettes"};
        dialogs.fileAnswers << QStringList{choices.at(choice)};
        dialogs.fileAnswers << QStringList{choice == 0 ? folder.filePath(QStringLiteral("chosen"))
                                                       : folder.path()};
        editor->save();
        QCOMPARE(dialogs.calls.at(0).kind, QStringLiteral("item"));
        QCOMPARE(dialogs.calls.at(1).kind,
                 choice == 0 ? QStringLiteral("save") : QStringLiteral("directory"));
        if (choice == 0) QCOMPARE(dialogs.calls.at(1).text, QStringLiteral("Adobe Color Table (*.act)"));
        QStringList written = QDir(folder.path()).entryList(QDir::Files);
        written.sort();
        QCOMPARE(written, files);
        // What was written reads back as the palette's colours.
        const QString last = folder.filePath(files.last());
        const int variant = choice == 2 ? 3 : 2;
        QRGBPal read[QRGBPal::TableSize];
        QVERIFY(QRGBPalette(read).fromFile(last));
        fillTable(table, variant);
        QVERIFY(std::memcmp(read, table, QRGBPal::TableBytes) == 0);
        QCOMPARE(variables.value(QStringLiteral("proj_path")), folder.path());
    }

    void pickedColourIsSelected()
    {
        auto sprites = load(samplePath());
        if (!sprites) QSKIP("the sample is not built next to the tests");
        editor->pickColor(true);
        editor->colors()->selectOnly(1);
        emit workspace->view()->colorCaptured(9);
        QVERIFY(editor->colors()->isSelected(9));
        QCOMPARE(editor->colors()->selectedCount(), 1);
        editor->pickColor(false);
    }

    void remapDialogEditsTheTable()
    {
        auto sprites = load(samplePath());
        if (!sprites) QSKIP("the sample is not built next to the tests");
        QRemapModel* remap = sprites->remapModel();
        int updates = 0;
        QStringList buttons;
        onDialog = [&](QDialog* shown) {
            auto* dialog = qobject_cast<RemapDlg*>(shown);
            if (!dialog) return int(QDialog::Rejected);
            connect(dialog, &RemapDlg::updateView, dialog, [&updates]() { ++updates; });
            buttons = QStringList{dialog->addButton()->text(), dialog->deleteButton()->text(),
                                  dialog->clearButton()->text()};
            dialog->addButton()->click();
            dialog->addButton()->click();
            dialog->addButton()->click();
            remap->setData(remap->index(1, 0), 2);
            remap->setData(remap->index(2, 0), 3);
            // Two cells of the first row: that row goes, then the row that moved up into its place.
            QItemSelectionModel* selection = dialog->table()->selectionModel();
            selection->select(remap->index(0, 0), QItemSelectionModel::Select);
            selection->select(remap->index(0, 2), QItemSelectionModel::Select);
            dialog->deleteButton()->click();
            return int(QDialog::Accepted);
        };
        editor->remap();
        QCOMPARE(dialogTitles, QStringList{QStringLiteral("Remap")});
        QCOMPARE(buttons,
                 QStringList({QStringLiteral("Add"), QStringLiteral("Delete"), QStringLiteral("Clear")}));
        QCOMPARE(remap->rowCount(), 1);
        QCOMPARE(remap->data(remap->index(0, 0)).toInt(), 3);
        QCOMPARE(remap->data(remap->index(0, 3)).toInt(), 1);
        QCOMPARE(updates, 4);

        onDialog = [&](QDialog* shown) {
            static_cast<RemapDlg*>(shown)->clearButton()->click();
            static_cast<RemapDlg*>(shown)->clearButton()->click();
            return int(QDialog::Accepted);
        };
        editor->remap();
        QCOMPARE(remap->rowCount(), 0);
    }
};

QTEST_MAIN(tst_PalettesEditor)
#include "tst_PalettesEditor.moc"
