// The sound file model: reading and writing SND files, the facts of WAV files, undo of every edit,
// the issues, the player hand-off, and hostile or cut-off files.

#include "FileBytes.h"
#include "QDialogRecorder.h"
#include "QSNDReader.h"
#include "QSNDWriter.h"
#include "QSound.h"
#include "QSoundPlayer.h"
#include "QSounds.h"
#include "TestData.h"

#include <QBuffer>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QtEndian>

#include <functional>

namespace {

QByteArray le32(quint32 value)
{
    QByteArray bytes(4, '\0');
    qToLittleEndian<quint32>(value, bytes.data());
    return bytes;
}

QByteArray le16(quint16 value)
{
    QByteArray bytes(2, '\0');
    qToLittleEndian<quint16>(value, bytes.data());
    return bytes;
}

// A PCM WAV file of the given form holding frames frames of a ramp.
QByteArray wav(quint16 channels, quint32 rate, quint16 bits, quint32 frames, quint16 format = 1)
{
    const quint16 align = quint16(channels * bits / 8);
    QByteArray samples;
    for (quint32 i = 0; i < frames * align; ++i)
        samples.append(char(i * 7));
    QByteArray bytes = "RIFF" + le32(36 + samples.size()) + "WAVE";
    bytes += "fmt " + le32(16) + le16(format) + le16(channels) + le32(rate) + le32(rate * align) +
             le16(align) + le16(bits);
    bytes += "data" + le32(quint32(samples.size())) + samples;
    return bytes;
}

QByteArray header(quint32 count)
{
    QByteArray bytes("ElecbyteSnd", 12);
    bytes += le32(0x00010001) + le32(count) + le32(512);
    bytes.append(QByteArray(512 - bytes.size(), '\0'));
    return bytes;
}

QByteArray record(quint32 next, quint32 size, quint32 group, quint32 sample)
{
    return le32(next) + le32(size) + le32(group) + le32(sample);
}

QByteArray fileBytes(QSounds& sounds)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    return sounds.write(&buffer) ? buffer.data() : QByteArray();
}

bool load(QSounds& sounds, const QByteArray& bytes)
{
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    return sounds.read(&buffer);
}

struct Row
{
    uint group;
    uint sample;
    QByteArray bytes;
    bool operator==(const Row& other) const
    {
        return group == other.group && sample == other.sample && bytes == other.bytes;
    }
};

QList<Row> rows(const QSounds& sounds)
{
    QList<Row> list;
    for (uint i = 0; i < sounds.count(); ++i)
        list.append(Row{sounds.at(i)->group, sounds.at(i)->sample, sounds.bytes(i)});
    return list;
}

QStringList texts(QSounds& sounds)
{
    QStringList list;
    for (int i = 0; i < sounds.messages()->size(); ++i) {
        const QMessage message = sounds.messages()->at(i);
        list << QStringLiteral("%1:%2:%3").arg(message.severity).arg(message.index).arg(message.text);
    }
    return list;
}

using Edit = std::function<void(QSounds&)>;

} // namespace

Q_DECLARE_METATYPE(Edit)

class tst_Sounds : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void wavInfo_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<int>("channels");
        QTest::addColumn<uint>("rate");
        QTest::addColumn<int>("bits");
        QTest::addColumn<float>("duration");
        QTest::newRow("8-bit mono") << wav(1, 11025, 8, 11025) << 1 << 11025u << 8 << 1.0f;
        QTest::newRow("16-bit stereo") << wav(2, 44100, 16, 4410) << 2 << 44100u << 16 << 0.1f;
        QTest::newRow("not PCM") << wav(1, 22050, 16, 100, 3) << 0 << 0u << 0 << 0.0f;
        QTest::newRow("empty") << QByteArray() << 0 << 0u << 0 << 0.0f;
        QTest::newRow("cut inside fmt") << wav(1, 22050, 16, 100).left(26) << 1 << 0u << 0 << 0.0f;
        QByteArray noData = wav(1, 22050, 16, 100);
        noData.replace("data", "dat_");
        QTest::newRow("no data chunk") << noData << 1 << 22050u << 16 << 0.0f;
        QTest::newRow("byte rate 0") << wav(1, 0, 16, 100) << 1 << 0u << 16 << 0.0f;
    }

    void wavInfo()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(int, channels);
        QFETCH(uint, rate);
        QFETCH(int, bits);
        QFETCH(float, duration);
        const QSoundInfo info = QSoundInfo::fromWav(bytes);
        QCOMPARE(int(info.channels), channels);
        QCOMPARE(info.sampleRate, rate);
        QCOMPARE(int(info.bitsPerSample), bits);
        QCOMPARE(info.duration, duration);
    }

    void writeLayout()
    {
        QSounds sounds(nullptr, 0, false);
        const QByteArray a = wav(1, 11025, 8, 50);
        sounds.add(1, 0, a);
        sounds.add(2, 5, QByteArray());
        sounds.add(3, 1, a);
        const QByteArray bytes = fileBytes(sounds);
        QCOMPARE(bytes.left(12), QByteArray("ElecbyteSnd", 12));
        QCOMPARE(bytes.mid(12, 4), QByteArray("\x01\x00\x01\x00", 4));
        QCOMPARE(qFromLittleEndian<quint32>(bytes.constData() + 16), 3u);
        QCOMPARE(qFromLittleEndian<quint32>(bytes.constData() + 20), 512u);
        QVERIFY(bytes.mid(24).startsWith(QSNDWriter::comment()));
        const quint32 first = 512 + 16 + quint32(a.size());
        QCOMPARE(bytes.mid(512, 16), record(first, quint32(a.size()), 1, 0));
        QCOMPARE(bytes.mid(int(first), 16), record(first + 16, 0, 2, 5));
        QCOMPARE(bytes.mid(int(first) + 16, 16), record(quint32(bytes.size()), quint32(a.size()), 3, 1));
        // Equal samples share one block of the cache.
        QCOMPARE(sounds.cache()->items().size(), 1);
    }

    void readRecords_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QList<int>>("sizes");
        const QByteArray a = wav(1, 8000, 8, 100);
        QTest::newRow("count 0") << header(0) << QList<int>();
        // The next-record field wins over the stated size and swallows the gap.
        QTest::newRow("gap") << header(1) + record(512 + 16 + 150, 100, 1, 1) + QByteArray(150, 'x')
                             << QList<int>{150};
        QTest::newRow("next 0 uses the size") << header(2) + record(0, 100, 1, 1) + QByteArray(100, 'y') +
                                                     record(0, quint32(a.size()), 1, 2) + a
                                              << QList<int>{100, int(a.size())};
        QTest::newRow("empty sound ignores next")
            << header(2) + record(9999, 0, 1, 1) + record(0, 4, 1, 2) + "abcd" << QList<int>{0, 4};
        QTest::newRow("old version and comment")
            << QByteArray("ElecbyteSnd", 12) + le32(4) + le32(1) + le32(1234) + QByteArray(488, 'c') +
                   record(0, 3, 7, 8) + "abc"
            << QList<int>{3};
    }

    void readRecords()
    {
        QFETCH(QByteArray, file);
        QFETCH(QList<int>, sizes);
        QSounds sounds(nullptr, 0, false);
        QVERIFY2(load(sounds, file), qPrintable(sounds.errorString()));
        QCOMPARE(int(sounds.count()), sizes.size());
        for (int i = 0; i < sizes.size(); ++i)
            QCOMPARE(sounds.bytes(uint(i)).size(), sizes.at(i));
        QVERIFY(!sounds.isModified());
        QVERIFY(!sounds.undoStack()->canUndo());
    }

    void hostile_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QString>("error");
        QTest::newRow("empty file") << QByteArray() << QStringLiteral("header");
        QTest::newRow("wrong magic") << QByteArray("ElecbyteSpr", 12) + QByteArray(500, '\0')
                                     << QStringLiteral("signature");
        QTest::newRow("short magic") << QByteArray("RIFF") << QStringLiteral("signature");
        QTest::newRow("short header")
            << QByteArray("ElecbyteSnd", 12) + le32(0x10001) + le32(1) << QStringLiteral("header");
    }

    // A wrong header is refused, with a reason, and leaves the model empty.
    void hostile()
    {
        QFETCH(QByteArray, file);
        QFETCH(QString, error);
        QSounds sounds(nullptr, 0, false);
        sounds.add(1, 1, "keep");
        QVERIFY(!load(sounds, file));
        QVERIFY2(sounds.errorString().contains(error), qPrintable(sounds.errorString()));
        QCOMPARE(sounds.count(), 0u);
        QVERIFY(sounds.cache()->items().isEmpty());
    }

    void tolerated_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QList<int>>("sizes");
        QTest::addColumn<QStringList>("warnings");
        QTest::newRow("huge count") << header(0xFFFFFFFF) + record(0, 4, 1, 1) + "abcd" << QList<int>{4}
                                    << QStringList{
                                           QStringLiteral("The file ends after 1 of its 4294967295 sounds.")};
        QTest::newRow("last sample past the end")
            << header(2) + record(0, 2, 1, 1) + "ab" + record(0, 0xFFFFFFF0, 1, 2) + "abcd"
            << QList<int>{2, 4}
            << QStringList{
                   QStringLiteral("The sample of sound #1 runs past the end of the file: 4 of its 4294967280 "
                                  "bytes are there.")};
        QTest::newRow("huge next") << header(1) + record(0xFFFFFFF0, 4, 1, 1) + "abcd" << QList<int>{4}
                                   << QStringList{
                                          QStringLiteral("The sample of sound #0 runs past the end of the "
                                                         "file: 4 of its 4294966752 bytes are there.")};
        QTest::newRow("next points back")
            << header(2) + record(512, 4, 1, 1) + "abcd" << QList<int>{4}
            << QStringList{
                   QStringLiteral("The record of sound #0 at 512 names 512 as the next record, which lies "
                                  "behind it; its stated size of 4 bytes is read."),
                   QStringLiteral("The file ends after 1 of its 2 sounds.")};
        QTest::newRow("next inside own header, more behind")
            << header(2) + record(520, 4, 1, 1) + "abcd" + record(0, 2, 1, 2) + "ef" << QList<int>{4, 2}
            << QStringList{
                   QStringLiteral("The record of sound #0 at 512 names 520 as the next record, which lies "
                                  "behind it; its stated size of 4 bytes is read.")};
        QTest::newRow("cut in a record header")
            << header(2) + record(0, 2, 1, 1) + "ab" + QByteArray(7, 'r') << QList<int>{2}
            << QStringList{QStringLiteral("The file ends inside the record of sound #1, which is left out.")};
    }

    // Past the header a file is read as far as it goes, as the engine reads it: what could be read is
    // kept, and each liberty taken is a warning in the sounds' issues until the sounds are written.
    void tolerated()
    {
        QFETCH(QByteArray, file);
        QFETCH(QList<int>, sizes);
        QFETCH(QStringList, warnings);
        QSounds sounds(nullptr, 0, false);
        QVERIFY2(load(sounds, file), qPrintable(sounds.errorString()));
        QCOMPARE(int(sounds.count()), sizes.size());
        for (int i = 0; i < sizes.size(); ++i)
            QCOMPARE(sounds.bytes(uint(i)).size(), sizes.at(i));
        QStringList told;
        for (int row = 0; row < sounds.messages()->size(); ++row)
            if (sounds.messages()->at(row).severity == 1) told << sounds.messages()->at(row).text;
        QCOMPARE(told, warnings);
        QVERIFY(!sounds.isModified());
        QBuffer out;
        out.open(QIODevice::ReadWrite);
        QVERIFY(sounds.write(&out));
        sounds.check();
        QCOMPARE(sounds.messages()->count(1), 0);
    }

    // A file cut anywhere past its header keeps every sound that is wholly there, and the sound that
    // was cut keeps the bytes before the cut; a cut inside the header is refused.
    void truncated()
    {
        const QByteArray a = wav(1, 11025, 8, 300);
        const QByteArray b = wav(2, 22050, 16, 200);
        QSounds source(nullptr, 0, false);
        source.add(1, 0, a);
        source.add(1, 1, QByteArray());
        source.add(2, 0, b);
        const QByteArray full = fileBytes(source);
        QList<int> cuts{0, 1, 11, 12, 16, 20, 24, 511, 512, 513, 527, 528};
        const int second = 528 + a.size();
        cuts << second - 1 << second << second + 8 << second + 16 << second + 32 << full.size() - 1;
        for (int at = 0; at < full.size(); at += 97)
            cuts << at;
        for (int at : std::as_const(cuts)) {
            const QString where = QString::number(at);
            QSounds sounds(nullptr, 0, false);
            if (at < 512) {
                QVERIFY2(!load(sounds, full.left(at)), qPrintable(where));
                QVERIFY2(!sounds.errorString().isEmpty(), qPrintable(where));
                QCOMPARE(sounds.count(), 0u);
                continue;
            }
            QVERIFY2(load(sounds, full.left(at)), qPrintable(where));
            int notes = 0;
            for (int row = 0; row < sounds.messages()->size(); ++row)
                notes += sounds.messages()->at(row).text != QLatin1String("Empty sound!");
            QVERIFY2(notes > 0, qPrintable(where));
            QVERIFY2(sounds.count() <= source.count(), qPrintable(where));
            for (uint i = 0; i < sounds.count(); ++i) {
                QCOMPARE(sounds.at(i)->group, source.at(i)->group);
                QVERIFY2(source.bytes(i).startsWith(sounds.bytes(i)), qPrintable(where));
            }
        }
        QSounds sounds(nullptr, 0, false);
        QVERIFY(load(sounds, full));
        QCOMPARE(rows(sounds), rows(source));
        QCOMPARE(sounds.messages()->count(1), source.messages()->count(1));
    }

    void realFiles_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<uint>("cacheType");
        const QStringList files = TestData::files({QStringLiteral("*.snd")});
        for (const QString& path : files) {
            const QString name = path.mid(TestData::root().size() + 1);
            QTest::newRow(qPrintable(name + QStringLiteral(" memory"))) << path << 0u;
            QTest::newRow(qPrintable(name + QStringLiteral(" temp file"))) << path << 1u;
        }
    }

    // Every real sound file comes back with the same sounds, sample for sample; what the writer makes
    // is the original's layout with its own header, and reads and writes back byte for byte.
    void realFiles()
    {
        TAVREL_REQUIRE_TESTDATA();
        QFETCH(QString, path);
        QFETCH(uint, cacheType);
        const QByteArray original = readBytes(path);
        QVERIFY(!original.isEmpty());
        QList<QSNDRecord> records;
        QBuffer buffer(const_cast<QByteArray*>(&original));
        buffer.open(QIODevice::ReadOnly);
        QString error;
        QVERIFY2(QSNDReader::readAll(&buffer, &records, &error), qPrintable(error));

        QSounds sounds(nullptr, cacheType, true);
        QVERIFY2(sounds.fromFile(path), qPrintable(sounds.errorString()));
        QCOMPARE(sounds.fileName(), path);
        QCOMPARE(int(sounds.count()), records.size());
        QTemporaryDir dir;
        const QString copy = dir.filePath(QStringLiteral("copy.snd"));
        QVERIFY(sounds.toFile(copy, true));
        QCOMPARE(sounds.fileName(), path);

        QSounds again(nullptr, 0, false);
        QVERIFY(again.fromFile(copy));
        QCOMPARE(int(again.count()), records.size());
        for (int i = 0; i < records.size(); ++i) {
            QCOMPARE(again.at(uint(i))->group, records.at(i).group);
            QCOMPARE(again.at(uint(i))->sample, records.at(i).sample);
            QVERIFY2(again.bytes(uint(i)) == records.at(i).bytes, qPrintable(QString::number(i)));
        }
        const QByteArray bytes = readBytes(copy);
        // The records stand where they stood; only the header's version and comment are the writer's.
        QCOMPARE(bytes.size(), original.size());
        QCOMPARE(bytes.left(12), original.left(12));
        QCOMPARE(bytes.mid(16, 8), original.mid(16, 8));
        QVERIFY(bytes.mid(512) == original.mid(512));
        QVERIFY(fileBytes(again) == bytes);
    }

    void undo_data()
    {
        QTest::addColumn<Edit>("edit");
        QTest::addColumn<QList<Row>>("expected");
        const QByteArray a = wav(1, 8000, 8, 10);
        const QByteArray b = wav(2, 8000, 16, 10);
        const QByteArray c = wav(1, 22050, 16, 10);
        QTest::newRow("insert") << Edit([c](QSounds& s) { s.insert(1, 9, 9, c); })
                                << QList<Row>{{1, 0, a}, {9, 9, c}, {1, 1, b}, {2, 0, a}};
        QTest::newRow("insert past end") << Edit([c](QSounds& s) { s.insert(99, 9, 9, c); })
                                         << QList<Row>{{1, 0, a}, {1, 1, b}, {2, 0, a}, {9, 9, c}};
        QTest::newRow("remove") << Edit([](QSounds& s) { s.remove(1); }) << QList<Row>{{1, 0, a}, {2, 0, a}};
        QTest::newRow("move down") << Edit([](QSounds& s) { s.move(0, 2); })
                                   << QList<Row>{{1, 1, b}, {2, 0, a}, {1, 0, a}};
        QTest::newRow("move up") << Edit([](QSounds& s) { s.move(2, 0); })
                                 << QList<Row>{{2, 0, a}, {1, 0, a}, {1, 1, b}};
        QTest::newRow("set info") << Edit([](QSounds& s) { s.setInfo(2, 5, 6); })
                                  << QList<Row>{{1, 0, a}, {1, 1, b}, {5, 6, a}};
        QTest::newRow("replace") << Edit([c](QSounds& s) { s.setSample(0, c); })
                                 << QList<Row>{{1, 0, c}, {1, 1, b}, {2, 0, a}};
        QTest::newRow("replace by nothing") << Edit([](QSounds& s) { s.setSample(1, QByteArray()); })
                                            << QList<Row>{{1, 0, a}, {1, 1, QByteArray()}, {2, 0, a}};
        QTest::newRow("remove group") << Edit([](QSounds& s) { s.removeGroup(1); }) << QList<Row>{{2, 0, a}};
        QTest::newRow("rename group")
            << Edit([](QSounds& s) { s.renameGroup(1, 7); }) << QList<Row>{{7, 0, a}, {7, 1, b}, {2, 0, a}};
        QTest::newRow("auto organize") << Edit([c](QSounds& s) {
            s.add(0, 3, c);
            s.autoOrganize();
        }) << QList<Row>{{0, 3, c}, {1, 0, a}, {1, 1, b}, {2, 0, a}};
    }

    // Each edit, a batch like removing a group included, is one undo step and one change signal (two
    // of each for the organize row); undo gives back the model as it was, bytes and cache included,
    // and redo the edited one.
    void undo()
    {
        QFETCH(Edit, edit);
        QFETCH(QList<Row>, expected);
        const QByteArray a = wav(1, 8000, 8, 10);
        const QByteArray b = wav(2, 8000, 16, 10);
        QSounds sounds(nullptr, 1, true);
        QVERIFY(load(sounds, [&] {
            QSounds source(nullptr, 0, false);
            source.add(1, 0, a);
            source.add(1, 1, b);
            source.add(2, 0, a);
            return fileBytes(source);
        }()));
        const QList<Row> before = rows(sounds);
        const int blocks = sounds.cache()->items().size();
        QCOMPARE(blocks, 2);
        QSignalSpy changed(&sounds, &QSounds::changed);
        edit(sounds);
        QCOMPARE(rows(sounds), expected);
        QVERIFY(sounds.isModified());
        const int steps = QByteArray(QTest::currentDataTag()) == "auto organize" ? 2 : 1;
        QCOMPARE(sounds.undoStack()->count(), steps);
        QCOMPARE(changed.count(), steps);
        while (sounds.undoStack()->canUndo())
            sounds.undoStack()->undo();
        QCOMPARE(rows(sounds), before);
        QCOMPARE(sounds.cache()->items().size(), blocks);
        for (uint i = 0; i < sounds.count(); ++i)
            QCOMPARE(sounds.at(i)->info, QSoundInfo::fromWav(sounds.bytes(i)));
        while (sounds.undoStack()->canRedo())
            sounds.undoStack()->redo();
        QCOMPARE(rows(sounds), expected);
    }

    void check_data()
    {
        QTest::addColumn<QList<Row>>("sounds");
        QTest::addColumn<QStringList>("messages");
        QTest::newRow("clean") << QList<Row>{{1, 0, "a"}, {1, 1, "b"}} << QStringList();
        QTest::newRow("empty sound") << QList<Row>{{1, 0, "a"}, {1, 1, QByteArray()}}
                                     << QStringList{QStringLiteral("1:1:Empty sound!")};
        QTest::newRow("one repeat") << QList<Row>{{1, 0, "a"}, {2, 0, "b"}, {1, 0, "c"}}
                                    << QStringList{QStringLiteral(
                                           "0:2:The group 1, index 0 is already in use by sound #0!")};
        QTest::newRow("two repeats, nearest first")
            << QList<Row>{{4, 4, "a"}, {4, 4, QByteArray()}, {4, 4, "c"}}
            << QStringList{QStringLiteral("1:1:Empty sound!"),
                           QStringLiteral("0:1:The group 4, index 4 is already in use by sound #0!"),
                           QStringLiteral("0:2:The group 4, index 4 is already in use by sound #1!"),
                           QStringLiteral("0:2:The group 4, index 4 is already in use by sound #0!")};
    }

    void check()
    {
        QFETCH(QList<Row>, sounds);
        QFETCH(QStringList, messages);
        QSounds model(nullptr, 0, false);
        for (const Row& row : sounds)
            model.add(row.group, row.sample, row.bytes);
        QCOMPARE(texts(model), messages);
        // A load checks once at its end.
        QSounds loaded(nullptr, 0, false);
        QVERIFY(load(loaded, fileBytes(model)));
        QCOMPARE(texts(loaded), messages);
    }

    void projectFile()
    {
        QDialogRecorder recorder;
        QSounds sounds(nullptr, 0, false);
        QVERIFY(sounds.isEmpty());
        QVERIFY(!sounds.canSave(0));
        QCOMPARE(recorder.calls.size(), 1);
        QCOMPARE(recorder.calls.at(0).title, QStringLiteral("Save SND"));
        QCOMPARE(recorder.calls.at(0).text,
                 QStringLiteral("You can't save an empty SND because M.U.G.E.N. will not open it."));
        QVERIFY(sounds.canDiscard());
        sounds.add(1, 1, "x");
        QVERIFY(sounds.canSave(0));
        QVERIFY(sounds.isModified());
        recorder.answers.enqueue(QUserDialogs::No);
        QVERIFY(!sounds.canDiscard());
        QCOMPARE(recorder.calls.last().title, QStringLiteral("Discard changes"));
        QCOMPARE(recorder.calls.last().text,
                 QStringLiteral("Do you really want to discard the changes made in the sounds?"));
        recorder.answers.enqueue(QUserDialogs::Yes);
        QVERIFY(sounds.canDiscard());
        QCOMPARE(sounds.data(sounds.index(0), Qt::DisplayRole).toString(), QStringLiteral("1, 1"));
    }

    // A failed save leaves the old file as it was; a stopped load leaves the model empty.
    void failures()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("a.snd"));
        QSounds sounds(nullptr, 0, false);
        sounds.add(1, 1, wav(1, 8000, 8, 10));
        QVERIFY(sounds.toFile(path));
        QCOMPARE(sounds.fileName(), path);
        QVERIFY(!sounds.isModified());
        const QByteArray saved = readBytes(path);

        sounds.add(2, 2, "more");
        connect(&sounds, &QSounds::progress, this, [](uint pos, uint, bool& allow) { allow = pos < 1; });
        QVERIFY(!sounds.toFile(path));
        QCOMPARE(readBytes(path), saved);
        QVERIFY(!sounds.fromFile(path));
        QCOMPARE(sounds.count(), 0u);
        QVERIFY(!sounds.fromFile(dir.filePath(QStringLiteral("missing.snd"))));
    }

    // The model hands the sample to its player and takes it back on stop; nothing is played aloud.
    void player()
    {
        QSounds sounds(nullptr, 0, false);
        const QByteArray a = wav(1, 8000, 8, 4000);
        sounds.add(1, 1, a);
        sounds.add(1, 2, QByteArray());
        // No player exists until a sound is played.
        QVERIFY(!sounds.soundPlayer());
        QVERIFY(!sounds.isPlaying());
        sounds.play(0, false);
        auto* silent = qobject_cast<QSilentSoundPlayer*>(sounds.soundPlayer());
        QVERIFY(silent);
        QVERIFY(sounds.isPlaying());
        QCOMPARE(silent->bytes(), a);
        QCOMPARE(sounds.playingBytes(), a);
        QVERIFY(sounds.playTimer().isActive());
        sounds.stop();
        QVERIFY(!sounds.isPlaying());
        QVERIFY(!sounds.playTimer().isActive());
        sounds.play(0, true);
        QVERIFY(silent->isLooping());
        QVERIFY(!sounds.playTimer().isActive());
        sounds.play(1, false);
        QVERIFY(!sounds.isPlaying());
    }

    // A player that can't be made, one that refuses the bytes and one that fails while playing: each
    // is told once under "Play sound", and the model goes on working.
    void playerProblemsAreTold()
    {
        QDialogRecorder dialogs;
        struct Refusing : QSoundPlayer
        {
            using QSoundPlayer::QSoundPlayer;
            bool play(const QByteArray&, bool) override
            {
                problem = QStringLiteral("no output");
                return false;
            }
            void stop() override {}
            bool isPlaying() const override { return false; }
        };
        QSoundPlayer::setFactory([](QObject*, QString* error) -> QSoundPlayer* {
            *error = QStringLiteral("no back end");
            return nullptr;
        });
        QSounds sounds(nullptr, 0, false);
        sounds.add(3, 7, wav(1, 8000, 8, 400));
        sounds.play(0, false);
        QVERIFY(!sounds.isPlaying());
        QSoundPlayer::setFactory(
            [](QObject* parent, QString*) -> QSoundPlayer* { return new Refusing(parent); });
        sounds.play(0, true);
        QSoundPlayer::setFactory(nullptr);
        QVERIFY(!sounds.isPlaying());
        QVERIFY(!sounds.playTimer().isActive());
        QCOMPARE(sounds.playingBytes(), QByteArray());

        QSounds failing(nullptr, 0, false);
        failing.add(1, 1, wav(1, 8000, 8, 400));
        failing.play(0, false);
        QSignalSpy stopped(&failing, &QSounds::stopped);
        emit failing.soundPlayer()->failed(QStringLiteral("device lost"));
        QCOMPARE(stopped.count(), 1);
        QVERIFY(!failing.playTimer().isActive());

        QStringList texts;
        for (const QDialogRecorder::Call& call : dialogs.calls) {
            QCOMPARE(call.title, QStringLiteral("Play sound"));
            texts << call.text;
        }
        QCOMPARE(texts, (QStringList{QStringLiteral("Sounds can't be played on this computer.\nno back end"),
                                     QStringLiteral("The sound 3, 7 can't be played: no output"),
                                     QStringLiteral("Playing stopped: device lost")}));
        // Still an ordinary model: edits and undo work after all of that.
        sounds.add(4, 0, wav(1, 8000, 8, 10));
        QCOMPARE(sounds.count(), 2u);
    }
};

QTEST_GUILESS_MAIN(tst_Sounds)
#include "tst_Sounds.moc"
