// The sounds editor on the bundled sample and on real characters: what the list and the panel show,
// what each command does to the model and that one undo takes it back, WAV bytes that leave and come
// back unchanged through replace, save, export and import, and the play commands' checked states.

#include "AddSom.h"
#include "QDialogRecorder.h"
#include "QDialogRunner.h"
#include "QGroupRangeBox.h"
#include "QMugenModel.h"
#include "QSound.h"
#include "QSoundTable.h"
#include "QSoundTransfer.h"
#include "QSoundWorkspace.h"
#include "QSounds.h"
#include "QSoundsEditor.h"
#include "QSoundsPanel.h"
#include "SndGrpDlg.h"
#include "TabImport.h"
#include "TestData.h"

#include <QAbstractItemModelTester>
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QColor>
#include <QDataStream>
#include <QFile>
#include <QLabel>
#include <QListWidget>
#include <QMimeData>
#include <QRadioButton>
#include <QSignalSpy>
#include <QSlider>
#include <QSpinBox>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>
#include <QWidget>

#include <functional>
#include <memory>

namespace {

// A PCM WAV file of frames frames, every byte fill.
QByteArray wav(quint16 channels, quint32 rate, quint16 bits, int frames, char fill = 0x40)
{
    const QByteArray samples(frames * channels * (bits / 8), fill);
    QByteArray out;
    QDataStream stream(&out, QIODevice::WriteOnly);
    stream.setByteOrder(QDataStream::LittleEndian);
    stream.writeRawData("RIFF", 4);
    stream << quint32(36 + samples.size());
    stream.writeRawData("WAVEfmt ", 8);
    stream << quint32(16) << quint16(1) << channels << rate << quint32(rate * channels * (bits / 8))
           << quint16(channels * (bits / 8)) << bits;
    stream.writeRawData("data", 4);
    stream << quint32(samples.size());
    stream.writeRawData(samples.constData(), samples.size());
    return out;
}

// What identifies each sound, in list order: "group,sample" and its bytes.
using Snapshot = QList<QPair<QString, QByteArray>>;

Snapshot snapshot(const QSounds& sounds)
{
    Snapshot all;
    for (uint i = 0; i < sounds.count(); ++i)
        all << qMakePair(QStringLiteral("%1,%2").arg(sounds.at(i)->group).arg(sounds.at(i)->sample),
                         sounds.bytes(i));
    return all;
}

QByteArray fileBytes(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool writeBytes(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

QString samplePath()
{
    return TestData::binDir() + QStringLiteral("/samples/Roan/Roan.snd");
}

// The sound files the round trips run on: the sample and every real character's.
QStringList soundFiles()
{
    QStringList files;
    if (QFile::exists(samplePath())) files << samplePath();
    if (!TestData::root().isEmpty())
        for (const QString& file : TestData::files({QStringLiteral("*.snd")}))
            if (file.contains(QLatin1String("/chars/"))) files << file;
    return files;
}

template <typename Dialog>
void runDialogs(std::function<int(Dialog*)> fill)
{
    QDialogRunner::install([fill](QDialog* dialog) {
        auto* typed = qobject_cast<Dialog*>(dialog);
        return typed ? fill(typed) : int(QDialog::Rejected);
    });
}

} // namespace

class tst_SoundsEditor : public QObject
{
    Q_OBJECT

    QWidget host;
    QSoundWorkspace* workspace = nullptr;
    QSoundsEditor* editor = nullptr;
    QMap<QString, QString> variables;
    QAction* playAction = nullptr;
    QAction* loopAction = nullptr;
    QAction* stopAction = nullptr;

    std::unique_ptr<QSounds> load(const QString& path)
    {
        auto sounds = std::make_unique<QSounds>();
        if (!sounds->fromFile(path)) return nullptr;
        editor->bind(sounds.get(), &variables);
        editor->activate();
        return sounds;
    }

    // A checkable command wired as the window wires it.
    QAction* command(void (QSoundsEditor::*slot)(bool), void (QSoundsEditor::*state)(bool))
    {
        auto* action = new QAction(this);
        action->setCheckable(true);
        connect(action, &QAction::toggled, editor, slot);
        connect(editor, state, action, &QAction::setChecked);
        return action;
    }

private Q_SLOTS:
    void initTestCase()
    {
        host.resize(800, 600);
        workspace = new QSoundWorkspace(&host, this);
        editor = new QSoundsEditor(workspace, this);
        playAction = command(&QSoundsEditor::play, &QSoundsEditor::setPlaying);
        loopAction = command(&QSoundsEditor::playLoop, &QSoundsEditor::setLooping);
        stopAction = command(&QSoundsEditor::stop, &QSoundsEditor::setStopped);
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
        QDialogRunner::install(nullptr);
        variables.clear();
        delete mugenModel;
        mugenModel = nullptr;
    }

    void infoText_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("text");
        QTest::newRow("mono 8 bit") << wav(1, 11025, 8, 11025)
                                    << QStringLiteral("Channels: 1 (Mono)\nSample rate: 11025 Hz\nBits per "
                                                      "sample: 8 bits\nDuration: 1.000 seconds");
        QTest::newRow("stereo 16 bit") << wav(2, 22050, 16, 11025)
                                       << QStringLiteral("Channels: 2 (Stereo)\nSample rate: 22050 Hz\nBits "
                                                         "per sample: 16 bits\nDuration: 0.500 seconds");
        QTest::newRow("empty sound") << QByteArray()
                                     << QStringLiteral("Channels: 0 (---)\nSample rate: 0 Hz\nBits per "
                                                       "sample: 0 bits\nDuration: 0.000 seconds");
    }

    // The panel describes the current sound by its WAV's facts; the table shows the same facts.
    void infoText()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, text);
        QSounds sounds;
        sounds.add(3, 7, bytes);
        editor->bind(&sounds, &variables);
        QCOMPARE(editor->controls()->infoLabel()->text(), text);
        QCOMPARE(editor->controls()->positionLabel()->text(), QStringLiteral("1 / 1"));
        QCOMPARE(editor->controls()->groupBox()->value(), 3);
        QCOMPARE(editor->controls()->numberBox()->value(), 7);
        QSoundTable* table = workspace->table();
        QCOMPARE(table->index(0, QSoundTable::GroupColumn).data().toString(), QStringLiteral("3"));
        QCOMPARE(table->index(0, QSoundTable::SampleColumn).data().toString(), QStringLiteral("7"));
        QCOMPARE(table->index(0, QSoundTable::ChannelsColumn).data().toString(),
                 bytes.isEmpty() ? QString() : QString::number(sounds.at(0)->info.channels));
    }

    // The list marks an empty sound and a pair that an earlier sound has, with the file's own words.
    void tableMarksIssues()
    {
        QSounds sounds;
        sounds.add(1, 1, wav(1, 8000, 8, 10));
        sounds.add(2, 0, QByteArray());
        sounds.add(1, 1, wav(1, 8000, 8, 40));
        editor->bind(&sounds, &variables);
        QSoundTable* table = workspace->table();
        QCOMPARE(table->index(0, 0).data(Qt::ToolTipRole), QVariant());
        QCOMPARE(table->index(1, 0).data(Qt::ToolTipRole).toString(), QStringLiteral("Empty sound!"));
        QCOMPARE(table->index(2, 1).data(Qt::ToolTipRole).toString(),
                 QStringLiteral("The group 1, index 1 is already in use by sound #0!"));
        QCOMPARE(table->index(2, 1).data(Qt::ForegroundRole).value<QColor>(), QColor(Qt::red));
        QCOMPARE(table->index(1, 0).data(Qt::DisplayRole).toString(), QStringLiteral("2"));
        QCOMPARE(table->index(1, QSoundTable::RateColumn).data().toString(), QString());
        QCOMPARE(table->index(2, QSoundTable::RateColumn).data().toString(), QStringLiteral("8000 Hz"));
        QCOMPARE(table->index(2, QSoundTable::DurationColumn).data().toString(), QStringLiteral("0.005 s"));
        QCOMPARE(table->headerData(QSoundTable::RateColumn, Qt::Horizontal).toString(),
                 QStringLiteral("Sample rate"));
    }

    // Without a project, and with an empty sound file, every field shows dashes and nothing is current.
    void emptyShowsDashes()
    {
        const QString dashes =
            QStringLiteral("Channels: ---\nSample rate: ---\nBits per sample: ---\nDuration: ---");
        QSoundsPanel* panel = editor->controls();
        editor->bind(nullptr, nullptr);
        QCOMPARE(panel->infoLabel()->text(), dashes);
        QCOMPARE(panel->positionLabel()->text(), QStringLiteral("0 / 0"));
        QVERIFY(!panel->isEnabled());
        QSounds empty;
        editor->bind(&empty, &variables);
        QVERIFY(panel->isEnabled());
        QCOMPARE(panel->infoLabel()->text(), dashes);
        QCOMPARE(panel->positionLabel()->text(), QStringLiteral("0 / 0"));
        QCOMPARE(editor->position(), -1);
        QCOMPARE(workspace->table()->rowCount(), 0);
        // Commands on nothing do nothing and ask nothing.
        QDialogRecorder dialogs;
        editor->del();
        editor->duplicate();
        editor->saveWav();
        editor->nextGrp();
        editor->play(true);
        QVERIFY(!playAction->isChecked());
        QVERIFY(dialogs.calls.isEmpty());
        QCOMPARE(empty.count(), 0u);
    }

    // The table follows the model through every kind of change, checked by Qt's model tester.
    void tableFollowsTheModel()
    {
        auto sounds = load(samplePath());
        if (!sounds) QSKIP("the sample is not built next to the tests");
        QAbstractItemModelTester tester(workspace->table(),
                                        QAbstractItemModelTester::FailureReportingMode::QtTest);
        QSoundTable* table = workspace->table();
        QCOMPARE(table->rowCount(), int(sounds->count()));
        for (uint i = 0; i < sounds->count(); ++i)
            QCOMPARE(table->index(int(i), QSoundTable::GroupColumn).data().toString() + QLatin1Char(',') +
                         table->index(int(i), QSoundTable::SampleColumn).data().toString(),
                     sounds->data(sounds->index(int(i), 0)).toString().remove(QLatin1Char(' ')));
        sounds->add(9, 9, wav(1, 8000, 8, 10));
        sounds->move(0, 3);
        sounds->remove(1);
        sounds->setSample(0, QByteArray());
        const uint sample = sounds->at(0)->sample;
        // Editing a number in the table is one undo step of the model.
        QVERIFY(table->setData(table->index(0, QSoundTable::SampleColumn), 44));
        QCOMPARE(sounds->at(0)->sample, 44u);
        QVERIFY(!table->setData(table->index(0, QSoundTable::RateColumn), 44));
        sounds->undoStack()->undo();
        QCOMPARE(sounds->at(0)->sample, sample);
        sounds->autoOrganize();
        sounds->clear();
        QCOMPARE(table->rowCount(), 0);
    }

    // Stepping through sounds and groups, and picking a row in the table.
    void navigation()
    {
        auto sounds = load(samplePath());
        if (!sounds) QSKIP("the sample is not built next to the tests");
        QCOMPARE(editor->position(), 0);
        editor->nextGrp();
        QCOMPARE(editor->position(), 2);
        editor->nextGrp();
        QCOMPARE(editor->position(), 3);
        editor->nextSnd();
        QCOMPARE(editor->position(), 4);
        editor->nextSnd();
        QCOMPARE(editor->position(), 4);
        editor->prevGrp();
        QCOMPARE(editor->position(), 2);
        editor->prevGrp();
        QCOMPARE(editor->position(), 0);
        editor->prevSnd();
        QCOMPARE(editor->position(), 0);
        QCOMPARE(workspace->list()->currentIndex().row(), 0);
        workspace->list()->setCurrentIndex(workspace->table()->index(3, 0));
        QCOMPARE(editor->position(), 3);
        QCOMPARE(editor->controls()->positionLabel()->text(), QStringLiteral("4 / 5"));
        QCOMPARE(editor->controls()->selector()->value(), 3);
        editor->controls()->selector()->setValue(1);
        QCOMPARE(editor->position(), 1);
        QCOMPARE(workspace->list()->currentIndex().row(), 1);
        // The current sound stays current when a sound is inserted above it.
        sounds->insert(0, 70, 0, wav(1, 8000, 8, 10));
        QCOMPARE(editor->position(), 2);
        QCOMPARE(editor->controls()->positionLabel()->text(), QStringLiteral("3 / 6"));
    }

    void commandsUndoInOneStep_data()
    {
        QTest::addColumn<QString>("command");
        for (const char* name :
             {"delete", "duplicate", "group field", "number field", "replace wav", "delete group",
              "renumber group", "add", "drop", "paste", "cut", "import", "project import", "replace all"})
            QTest::newRow(name) << QString::fromLatin1(name);
    }

    // Each command changes the model as it should, and one undo gives back what was there.
    void commandsUndoInOneStep()
    {
        QFETCH(QString, command);
        auto sounds = load(samplePath());
        if (!sounds) QSKIP("the sample is not built next to the tests");
        QTemporaryDir dir;
        variables[QStringLiteral("snd_path")] = dir.path();
        const Snapshot before = snapshot(*sounds);
        const QByteArray fresh = wav(2, 44100, 16, 100, 0x11);
        QDialogRecorder dialogs;
        editor->definePos(3);
        Snapshot expected = before;

        if (command == QLatin1String("delete")) {
            dialogs.answers << QUserDialogs::Yes;
            editor->del();
            expected.removeAt(3);
            QCOMPARE(dialogs.calls.value(0).text, QStringLiteral("Do you really want to delete the sound?"));
        } else if (command == QLatin1String("duplicate")) {
            editor->duplicate();
            expected.insert(4, before.at(3));
            QCOMPARE(editor->position(), 4);
        } else if (command == QLatin1String("group field")) {
            editor->controls()->groupBox()->setValue(12);
            expected[3].first = QStringLiteral("12,0");
        } else if (command == QLatin1String("number field")) {
            editor->controls()->numberBox()->setValue(8);
            expected[3].first = QStringLiteral("5,8");
        } else if (command == QLatin1String("replace wav")) {
            const QString file = dir.filePath(QStringLiteral("new.wav"));
            QVERIFY(writeBytes(file, fresh));
            dialogs.fileAnswers << QStringList{file};
            editor->openWav();
            expected[3].second = fresh;
            QCOMPARE(editor->controls()->infoLabel()->text(),
                     QStringLiteral("Channels: 2 (Stereo)\nSample rate: 44100 Hz\nBits per sample: 16 bits\n"
                                    "Duration: 0.002 seconds"));
        } else if (command == QLatin1String("delete group")) {
            runDialogs<SndGrpDlg>([](SndGrpDlg*) { return int(QDialog::Accepted); });
            editor->delGroup();
            expected.removeAt(4);
            expected.removeAt(3);
        } else if (command == QLatin1String("renumber group")) {
            runDialogs<SndGrpDlg>([](SndGrpDlg* dialog) {
                dialog->range()->setNumbers(false, 1, 1);
                dialog->toGroupBox()->setValue(0);
                return int(QDialog::Accepted);
            });
            // The group 0 has a sample 1 already; the user is asked and says yes.
            dialogs.answers << QUserDialogs::Yes;
            editor->renameGroup();
            expected[4].first = QStringLiteral("0,1");
            QCOMPARE(dialogs.calls.size(), 1);
        } else if (command == QLatin1String("add")) {
            QStringList files;
            for (const char* name : {"hit10.wav", "hit2.wav", "note.txt"}) {
                files << dir.filePath(QLatin1String(name));
                QVERIFY(writeBytes(files.last(), name[0] == 'n' ? QByteArray("not a sound") : fresh + name));
            }
            dialogs.fileAnswers << files;
            // Sample 1 of group 5 is taken: the first file moves on to 2, the next to 3.
            runDialogs<AddSom>([](AddSom* dialog) {
                dialog->numberBox()->setValue(1);
                return int(QDialog::Accepted);
            });
            editor->add();
            expected.insert(4, qMakePair(QStringLiteral("5,2"), fresh + "hit2.wav"));
            expected.insert(5, qMakePair(QStringLiteral("5,3"), fresh + "hit10.wav"));
            QCOMPARE(dialogs.calls.last().text,
                     QStringLiteral("These files are no WAV sounds and were passed over:\nnote.txt"));
        } else if (command == QLatin1String("drop")) {
            QList<QUrl> urls;
            for (const char* name : {"b.wav", "a.WAV", "skip.txt"}) {
                urls << QUrl::fromLocalFile(dir.filePath(QLatin1String(name)));
                QVERIFY(writeBytes(urls.last().toLocalFile(), fresh + name));
            }
            runDialogs<AddSom>([](AddSom*) { return int(QDialog::Accepted); });
            QMimeData data;
            data.setUrls(urls);
            QWidget* viewport = workspace->list()->viewport();
            const QPointF onFirstRow =
                workspace->list()->visualRect(workspace->table()->index(0, 0)).center();
            QDragEnterEvent enter(onFirstRow.toPoint(), Qt::CopyAction, &data, Qt::LeftButton,
                                  Qt::NoModifier);
            QApplication::sendEvent(viewport, &enter);
            QVERIFY(enter.isAccepted());
            QDropEvent drop(onFirstRow, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
            QApplication::sendEvent(viewport, &drop);
            // After the row dropped on, in the order people count, past the numbers its group uses.
            expected.insert(1, qMakePair(QStringLiteral("0,2"), fresh + "a.WAV"));
            expected.insert(2, qMakePair(QStringLiteral("0,3"), fresh + "b.wav"));
            QCOMPARE(editor->position(), 1);
        } else if (command == QLatin1String("paste")) {
            editor->copy();
            editor->definePos(0);
            editor->paste();
            expected.insert(1, before.at(3));
            QCOMPARE(editor->position(), 1);
        } else if (command == QLatin1String("cut")) {
            editor->cut();
            expected.removeAt(3);
            QCOMPARE(QApplication::clipboard()->mimeData()->data(QStringLiteral("audio/wav")),
                     before.at(3).second);
        } else if (command == QLatin1String("import")) {
            const QString list = dir.filePath(QStringLiteral("in.tve"));
            QVERIFY(writeBytes(dir.filePath(QStringLiteral("a b.wav")), fresh));
            QVERIFY(writeBytes(list, "[SoundDef]\ngroup = 30\nsample = 4\nfile = a b.wav ; comment\n"
                                     "[SoundDef]\ngroup = 31\nsample = 0\nfile = missing.wav\n"));
            dialogs.fileAnswers << QStringList{list};
            editor->fileImport();
            expected << qMakePair(QStringLiteral("30,4"), fresh);
            QCOMPARE(dialogs.calls.last().text, QStringLiteral("1 sound(s) were imported!"));
            QCOMPARE(editor->position(), 5);
        } else if (command == QLatin1String("project import")) {
            QSounds other;
            other.add(1, 1, fresh);
            other.add(2, 1, fresh + "x");
            other.add(2, 2, fresh + "y");
            editor->setImportSources(
                {{QStringLiteral("this"), sounds.get()}, {QStringLiteral("other"), &other}});
            runDialogs<TabImport>([](TabImport* dialog) {
                dialog->projectList()->setCurrentRow(1);
                dialog->groupButton()->setChecked(true);
                dialog->range()->setGroup(2);
                return int(QDialog::Accepted);
            });
            editor->projImport();
            expected << qMakePair(QStringLiteral("2,1"), fresh + "x")
                     << qMakePair(QStringLiteral("2,2"), fresh + "y");
            QCOMPARE(dialogs.calls.last().text, QStringLiteral("2 sound(s) were imported!"));
            editor->setImportSources({});
        } else if (command == QLatin1String("replace all")) {
            QCOMPARE(editor->replace(QStringLiteral("5,*"), QStringLiteral("6"), {}, true), 2);
            expected[3].first = QStringLiteral("6,0");
            expected[4].first = QStringLiteral("6,1");
        }
        QCOMPARE(snapshot(*sounds), expected);
        editor->undo();
        QCOMPARE(snapshot(*sounds), before);
        QVERIFY(sounds->undoStack()->index() == 0);
    }

    // Declined questions and refusals change nothing and say why in the exact words.
    void refusals()
    {
        auto sounds = load(samplePath());
        if (!sounds) QSKIP("the sample is not built next to the tests");
        const Snapshot before = snapshot(*sounds);
        QDialogRecorder dialogs;
        dialogs.answers << QUserDialogs::No;
        editor->del();
        editor->setImportSources({{QStringLiteral("this"), sounds.get()}});
        runDialogs<TabImport>([](TabImport*) { return int(QDialog::Accepted); });
        editor->projImport();
        QTemporaryDir dir;
        const QString list = dir.filePath(QStringLiteral("none.tve"));
        QVERIFY(writeBytes(list, ";nothing here\n"));
        dialogs.fileAnswers << QStringList{list};
        editor->fileImport();
        QVERIFY(!editor->find(QStringLiteral("77,*"), {}));
        QCOMPARE(snapshot(*sounds), before);
        QCOMPARE(dialogs.calls.size(), 5);
        QCOMPARE(dialogs.calls.at(0).title, QStringLiteral("Delete sound"));
        QCOMPARE(dialogs.calls.at(1).title, QStringLiteral("Warning"));
        QCOMPARE(dialogs.calls.at(1).text, QStringLiteral("You can't import from the destination project!"));
        QCOMPARE(dialogs.calls.at(3).text, QStringLiteral("No sound imported!"));
        QCOMPARE(dialogs.calls.at(4).text, QStringLiteral("No sound found!"));
        QCOMPARE(sounds->undoStack()->count(), 0);
        editor->setImportSources({});
    }

    void find_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("regular");
        QTest::addColumn<bool>("backward");
        QTest::addColumn<bool>("circular");
        QTest::addColumn<int>("from");
        QTest::addColumn<int>("found");
        QTest::newRow("exact pair") << QStringLiteral("5, 1") << false << false << false << 0 << 4;
        QTest::newRow("whole group") << QStringLiteral("5,*") << false << false << false << 0 << 3;
        QTest::newRow("no wrap") << QStringLiteral("0,*") << false << false << false << 2 << -1;
        QTest::newRow("wrap") << QStringLiteral("0,*") << false << false << true << 2 << 0;
        QTest::newRow("backward") << QStringLiteral("0,?") << false << true << false << 4 << 1;
        QTest::newRow("expression") << QStringLiteral("^1,") << true << false << false << 0 << 2;
        QTest::newRow("bad expression") << QStringLiteral("(") << true << false << true << 0 << -1;
    }

    void find()
    {
        QFETCH(QString, text);
        QFETCH(bool, regular);
        QFETCH(bool, backward);
        QFETCH(bool, circular);
        QFETCH(int, from);
        QFETCH(int, found);
        auto sounds = load(samplePath());
        if (!sounds) QSKIP("the sample is not built next to the tests");
        QDialogRecorder dialogs;
        editor->definePos(from);
        const QQuickFindOptions options{{QQuickFindOption::RegularExpression, regular},
                                        {QQuickFindOption::Backward, backward},
                                        {QQuickFindOption::Circular, circular}};
        QCOMPARE(editor->find(text, options), found >= 0);
        QCOMPARE(editor->position(), found >= 0 ? found : from);
        QCOMPARE(dialogs.calls.size(), found >= 0 ? 0 : 1);
    }

    // Export writes every sound's WAV byte for byte and a list that imports them back unchanged; the
    // SndMaker list starts with the target's base name and is Latin-1.
    void exportImportRoundTrip_data()
    {
        QTest::addColumn<QString>("path");
        const QStringList files = soundFiles();
        for (const QString& file : files)
            QTest::newRow(qPrintable(QFileInfo(file).fileName() + QLatin1Char(' ') +
                                     QFileInfo(file).path().section('/', -1)))
                << file;
        if (files.isEmpty()) QTest::newRow("none") << QString();
    }

    void exportImportRoundTrip()
    {
        QFETCH(QString, path);
        if (path.isEmpty()) QSKIP("neither the sample nor TAVREL_TESTDATA's sound files are here");
        auto sounds = load(path);
        QVERIFY(sounds);
        const Snapshot original = snapshot(*sounds);
        QTemporaryDir dir;
        QDialogRecorder dialogs;
        const QString list = dir.filePath(QStringLiteral("out.tve"));
        dialogs.fileAnswers << QStringList{list};
        editor->fileExport();
        QVERIFY(dialogs.calls.size() == 1);
        const QStringList names = QSoundTransfer::wavFileNames(*sounds);
        for (uint i = 0; i < sounds->count(); ++i)
            QCOMPARE(fileBytes(dir.filePath(names.at(int(i)))), sounds->bytes(i));
        QVERIFY(fileBytes(list).startsWith("\n[SoundDef]\ngroup = "));

        QSounds back;
        editor->bind(&back, &variables);
        dialogs.fileAnswers << QStringList{list};
        editor->fileImport();
        QCOMPARE(snapshot(back), original);
        QCOMPARE(dialogs.calls.last().text,
                 QStringLiteral("%1 sound(s) were imported!").arg(original.size()));

        // A name typed without a suffix takes the first filter's, the export list.
        editor->bind(sounds.get(), &variables);
        dialogs.fileAnswers << QStringList{dir.filePath(QStringLiteral("plain"))};
        editor->fileExport();
        QCOMPARE(fileBytes(dir.filePath(QStringLiteral("plain.tve"))), fileBytes(list));
        const QString def = dir.filePath(QStringLiteral("Ça va.def"));
        dialogs.fileAnswers << QStringList{def};
        editor->fileExport();
        const QByteArray text = fileBytes(def);
        QVERIFY(text.startsWith(QByteArray("\xC7") + "a va\n"));
        const QList<QByteArray> lines = text.split('\n');
        QCOMPARE(lines.size(), 1 + 3 * original.size() + 1);
        QCOMPARE(lines.at(1), names.first().toLatin1());
        QCOMPARE(lines.at(2), QByteArray::number(sounds->at(0)->group));
        QCOMPARE(lines.at(3), QByteArray::number(sounds->at(0)->sample));
        QCOMPARE(dialogs.calls.at(0).text,
                 QStringLiteral("Tavrel Export (*.tve);;Elecbyte SndMaker (*.def)"));
    }

    // Sounds that share a group and sample keep a WAV file each, and an empty sound comes back empty.
    void exportKeepsRepeatsAndEmptySounds()
    {
        QSounds sounds;
        sounds.add(1, 1, wav(1, 8000, 8, 10, 0x01));
        sounds.add(1, 1, wav(1, 8000, 8, 10, 0x02));
        sounds.add(1, 1, QByteArray());
        sounds.add(2, 0, wav(1, 8000, 8, 10, 0x01));
        QCOMPARE(QSoundTransfer::wavFileNames(sounds),
                 QStringList({QStringLiteral("1-1.wav"), QStringLiteral("1-1_2.wav"),
                              QStringLiteral("1-1_3.wav"), QStringLiteral("2-0.wav")}));
        QTemporaryDir dir;
        const QString list = dir.filePath(QStringLiteral("all.tve"));
        bool listWritten = false;
        QVERIFY(QSoundTransfer::exportTo(sounds, list, &listWritten));
        QVERIFY(listWritten);
        QSounds back;
        QCOMPARE(QSoundTransfer::importFrom(back, list), 4);
        QCOMPARE(snapshot(back), snapshot(sounds));
        QVERIFY(!back.at(2)->data);
        // One undo step takes the whole import back.
        back.undoStack()->undo();
        QCOMPARE(back.count(), 0u);
        // A target that can't be written ends the export before any WAV file is written.
        QVERIFY(!QSoundTransfer::exportTo(sounds, dir.filePath(QStringLiteral("no/such/folder/x.tve")),
                                          &listWritten));
        QVERIFY(!listWritten);
        QVERIFY(!QFile::exists(dir.filePath(QStringLiteral("no/such/folder/1-1.wav"))));
    }

    // Save WAV writes the sound's bytes unchanged, and replacing a sound by that file gives the same
    // sound back; the folder is kept as "snd_path".
    void saveAndReplaceWav()
    {
        const QStringList files = soundFiles();
        if (files.isEmpty()) QSKIP("no sound files here");
        auto sounds = load(files.last());
        QVERIFY(sounds);
        QTemporaryDir dir;
        QDialogRecorder dialogs;
        editor->definePos(int(sounds->count()) - 1);
        const QByteArray bytes = sounds->bytes(sounds->count() - 1);
        const QString target = dir.filePath(QStringLiteral("last"));
        dialogs.fileAnswers << QStringList{target};
        editor->saveWav();
        QCOMPARE(fileBytes(target + QStringLiteral(".wav")), bytes);
        QCOMPARE(variables.value(QStringLiteral("snd_path")), dir.path());
        editor->definePos(0);
        dialogs.fileAnswers << QStringList{target + QStringLiteral(".wav")};
        editor->openWav();
        QCOMPARE(sounds->bytes(0), bytes);
        QCOMPARE(sounds->at(0)->info, sounds->at(sounds->count() - 1)->info);
        QCOMPARE(dialogs.calls.at(1).dir, dir.path());
    }

    // The play commands are checked while a sound plays; stop, the end of a sound and a failed start
    // uncheck them. Tests play through the silent player.
    void playCommandsFollowThePlayer()
    {
        QSounds sounds;
        sounds.add(0, 0, wav(1, 8000, 8, 80));
        sounds.add(0, 1, QByteArray());
        editor->bind(&sounds, &variables);
        loopAction->setChecked(true);
        QVERIFY(sounds.isPlaying());
        QVERIFY(loopAction->isChecked());
        QVERIFY(!playAction->isChecked());
        stopAction->setChecked(true);
        QVERIFY(!sounds.isPlaying());
        QVERIFY(!loopAction->isChecked() && !playAction->isChecked() && !stopAction->isChecked());

        // Once, the model's timer ends it after its duration and a second.
        playAction->setChecked(true);
        QVERIFY(playAction->isChecked());
        QVERIFY(sounds.playTimer().isActive());
        QTRY_VERIFY_WITH_TIMEOUT(!playAction->isChecked(), 3000);
        QVERIFY(!sounds.isPlaying());

        // An empty sound doesn't start: nothing stays checked.
        editor->nextSnd();
        playAction->setChecked(true);
        QVERIFY(!playAction->isChecked());
        // A loop stops when the editor is left.
        editor->prevSnd();
        loopAction->setChecked(true);
        editor->deactivate();
        QVERIFY(!sounds.isPlaying());
        QVERIFY(!loopAction->isChecked());
    }

    // A new file asks before it drops changes, and leaves the dashes behind.
    void newFileAsksFirst()
    {
        auto sounds = load(samplePath());
        if (!sounds) QSKIP("the sample is not built next to the tests");
        QDialogRecorder dialogs;
        editor->clear();
        QCOMPARE(sounds->count(), 0u);
        QVERIFY(dialogs.calls.isEmpty());
        sounds->add(1, 2, wav(1, 8000, 8, 10));
        dialogs.answers << QUserDialogs::No << QUserDialogs::Yes;
        editor->newFile();
        QCOMPARE(sounds->count(), 1u);
        editor->newFile();
        QCOMPARE(sounds->count(), 0u);
        QCOMPARE(dialogs.calls.size(), 2);
        QCOMPARE(dialogs.calls.at(0).text,
                 QStringLiteral("Do you really want to discard the changes made in the sounds?"));
        QCOMPARE(editor->controls()->positionLabel()->text(), QStringLiteral("0 / 0"));
        QCOMPARE(editor->controls()->infoLabel()->text(), QSoundsEditor::infoText(nullptr));
    }

    // Going through the empty model's save refuses with the model's own words.
    void saveRefusesAnEmptyFile()
    {
        QSounds empty;
        editor->bind(&empty, &variables);
        QDialogRecorder dialogs;
        editor->save();
        QCOMPARE(dialogs.calls.size(), 1);
        QCOMPARE(dialogs.calls.at(0).text,
                 QStringLiteral("You can't save an empty SND because M.U.G.E.N. will not open it."));
    }

    // Save writes the file that open reads back the same, and the title loses its mark.
    void saveAndOpen()
    {
        const QStringList files = soundFiles();
        if (files.isEmpty()) QSKIP("no sound files here");
        auto sounds = load(files.first());
        QVERIFY(sounds);
        QTemporaryDir dir;
        const QString copy = dir.filePath(QStringLiteral("copy.snd"));
        sounds->setInfo(0, 99, 98);
        QVERIFY(editor->isModified());
        QSignalSpy titles(editor, &QSoundsEditor::titleChanged);
        QDialogRecorder dialogs;
        dialogs.fileAnswers << QStringList{copy};
        editor->saveAs();
        QVERIFY(!editor->isModified());
        QVERIFY(titles.count() > 0);
        const Snapshot saved = snapshot(*sounds);
        QSounds other;
        editor->bind(&other, &variables);
        dialogs.fileAnswers << QStringList{copy};
        editor->open();
        QCOMPARE(snapshot(other), saved);
        QCOMPARE(editor->position(), 0);
        QCOMPARE(editor->controls()->groupBox()->value(), 99);
    }
};

QTEST_MAIN(tst_SoundsEditor)
#include "tst_SoundsEditor.moc"
