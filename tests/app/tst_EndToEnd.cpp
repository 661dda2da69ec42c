// The real tavrel under a real X server (Xvfb), driven only by keys that its own "shortcuts.xml" binds:
// it opens a state file given on its command line, takes typing, saves by a key and quits by a key.
// The file on disk must hold exactly the typed line, in the file's encoding and line ends. A sprite
// deleted by keys leaves a sprite file with one sprite fewer and every other sprite as it was.

#include "TestData.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMap>
#include <QProcess>
#include <QScopeGuard>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

class tst_EndToEnd : public QObject
{
    Q_OBJECT

    QTemporaryDir box;
    QProcess server;
    QString display;

    static QByteArray read(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    static bool write(const QString& path, const QByteArray& bytes)
    {
        QDir().mkpath(QFileInfo(path).absolutePath());
        QFile file(path);
        return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
    }

    QStringList trace() const
    {
        return QString::fromLocal8Bit(read(box.filePath(QStringLiteral("trace.txt"))))
            .split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    }

    // Runs xdotool against the virtual display; its output, or a null text when it failed.
    QString xdotool(const QStringList& arguments) const
    {
        QProcess tool;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("DISPLAY"), display);
        tool.setProcessEnvironment(env);
        tool.start(QStringLiteral("xdotool"), arguments);
        if (!tool.waitForFinished(30000) || tool.exitCode() != 0) return QString();
        return QString::fromLocal8Bit(tool.readAllStandardOutput()).trimmed() + QLatin1Char(' ');
    }

    // The real editor on the virtual display with its own configuration folder.
    void start(QProcess& editor, const QString& config, const QString& file) const
    {
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("DISPLAY"), display);
        env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
        env.insert(QStringLiteral("TMPDIR"), box.path());
        env.insert(QStringLiteral("TAVREL_TRACE"), box.filePath(QStringLiteral("trace.txt")));
        env.insert(QStringLiteral("TAVREL_CONFIG_DIR"), config);
        editor.setProcessEnvironment(env);
        editor.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        editor.start(TestData::binDir() + QStringLiteral("/tavrel"), {file});
    }

    QString focusWindow() const
    {
        const QString window =
            xdotool({QStringLiteral("search"), QStringLiteral("--sync"), QStringLiteral("--onlyvisible"),
                     QStringLiteral("--name"), QStringLiteral("Orlenmark Tavrel")})
                .section(QLatin1Char('\n'), 0, 0)
                .trimmed();
        if (!window.isEmpty()) xdotool({QStringLiteral("windowfocus"), QStringLiteral("--sync"), window});
        return window;
    }

    static QString cli(const QStringList& arguments)
    {
        QProcess tool;
        tool.start(TestData::binDir() + QStringLiteral("/tavrel-cli"), arguments);
        if (!tool.waitForFinished(60000) || tool.exitCode() != 0) return QString();
        return QString::fromUtf8(tool.readAllStandardOutput());
    }

private Q_SLOTS:
    void initTestCase()
    {
        if (QStandardPaths::findExecutable(QStringLiteral("Xvfb")).isEmpty() ||
            QStandardPaths::findExecutable(QStringLiteral("xdotool")).isEmpty())
            QSKIP("Xvfb and xdotool are needed to drive the real window (./build.sh test installs them)");
        if (!QFile::exists(TestData::binDir() + QStringLiteral("/tavrel")))
            QSKIP("the tavrel executable is not built next to the tests");
        // The server picks a free display and writes its number to the descriptor given.
        server.start(QStringLiteral("Xvfb"),
                     {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"),
                      QStringLiteral("0"), QStringLiteral("1280x800x24"), QStringLiteral("-nolisten"),
                      QStringLiteral("tcp")});
        QVERIFY(server.waitForStarted());
        QVERIFY(QTest::qWaitFor([this]() { return server.canReadLine(); }, 20000));
        display = QLatin1Char(':') + QString::fromLatin1(server.readLine()).trimmed();
    }

    void cleanupTestCase()
    {
        if (server.state() == QProcess::NotRunning) return;
        server.terminate();
        server.waitForFinished(5000);
    }

    void editsAndSavesAStateFileByItsKeys()
    {
        TAVREL_REQUIRE_TESTDATA();
        // A GBK state file with LF line ends: typing must leave every other byte alone.
        const QString original = TestData::root() + QStringLiteral("/kof-h-cjk/chars/kula/supers.cns");
        const QByteArray before = read(original);
        QVERIFY2(!before.isEmpty(), qPrintable(original));
        const QString states = box.filePath(QStringLiteral("work/supers.cns"));
        QVERIFY(write(states, before));
        QVERIFY(write(box.filePath(QStringLiteral("config/config.xml")),
                      "<configuration><config name=\"confirm_close\" value=\"false\"/></configuration>\n"));
        // Keys no shipped file uses, so that only this file can have bound them.
        QVERIFY(write(box.filePath(QStringLiteral("config/shortcuts.xml")),
                      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<shortcuts>\n"
                      "<shortcut action=\"editor_states\" keys=\"F6\"/>\n"
                      "<shortcut action=\"st_save\" keys=\"Ctrl+Shift+W\"/>\n"
                      "<shortcut action=\"file_exit\" keys=\"Ctrl+Shift+Q\"/>\n</shortcuts>\n"));

        QProcess editor;
        start(editor, box.filePath(QStringLiteral("config")), states);
        QVERIFY(editor.waitForStarted());
        auto stop = qScopeGuard([&editor]() {
            if (editor.state() == QProcess::NotRunning) return;
            editor.kill();
            editor.waitForFinished(10000);
        });
        QVERIFY2(QTest::qWaitFor(
                     [&]() { return trace().contains(QStringLiteral("loaded cns ok ") + states); }, 60000),
                 qPrintable(trace().join(QLatin1Char('\n'))));

        QVERIFY(!focusWindow().isEmpty());
        QVERIFY(!xdotool({QStringLiteral("key"), QStringLiteral("F6")}).isNull());
        QVERIFY(!xdotool({QStringLiteral("type"), QStringLiteral("--delay"), QStringLiteral("30"),
                          QStringLiteral(";e2e")})
                     .isNull());
        QVERIFY(!xdotool({QStringLiteral("key"), QStringLiteral("Return")}).isNull());
        QVERIFY(!xdotool({QStringLiteral("key"), QStringLiteral("ctrl+shift+w")}).isNull());
        const QByteArray expected = QByteArray(";e2e\n") + before;
        QVERIFY2(QTest::qWaitFor([&]() { return read(states) != before; }, 20000),
                 "the save key wrote nothing");
        QCOMPARE(read(states), expected);

        QVERIFY(!xdotool({QStringLiteral("key"), QStringLiteral("ctrl+shift+q")}).isNull());
        QVERIFY(editor.waitForFinished(30000));
        QCOMPARE(editor.exitCode(), 0);
        QCOMPARE(read(states), expected);
    }

    void deletesASpriteByItsKeys()
    {
        // The bundled sample, copied: the second sprite goes, the project is saved, the editor quits.
        const QString sample = TestData::binDir() + QStringLiteral("/samples/Roan");
        if (!QFile::exists(sample + QStringLiteral("/Roan.def")))
            QSKIP("the sample is not built next to the tests");
        const QString work = box.filePath(QStringLiteral("sample"));
        QVERIFY(QDir().mkpath(work));
        for (const QString& name : QDir(sample).entryList(QDir::Files))
            QVERIFY(QFile::copy(sample + QLatin1Char('/') + name, work + QLatin1Char('/') + name));
        const QString sprites = work + QStringLiteral("/Roan.sff");
        const QStringList before = cli({QStringLiteral("sff"), QStringLiteral("list"), sprites})
                                       .split(QLatin1Char('\n'), Qt::SkipEmptyParts);
        QVERIFY(before.size() > 3);
        const QString config = box.filePath(QStringLiteral("config-sprites"));
        QVERIFY(write(config + QStringLiteral("/config.xml"),
                      "<configuration><config name=\"confirm_close\" value=\"false\"/>"
                      "<config name=\"confirm_delete\" value=\"false\"/></configuration>\n"));
        QVERIFY(write(config + QStringLiteral("/shortcuts.xml"),
                      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<shortcuts>\n"
                      "<shortcut action=\"editor_sprites\" keys=\"F6\"/>\n"
                      "<shortcut action=\"spr_next\" keys=\"F4\"/>\n"
                      "<shortcut action=\"spr_delete\" keys=\"Ctrl+Shift+D\"/>\n"
                      "<shortcut action=\"file_save\" keys=\"Ctrl+Shift+W\"/>\n"
                      "<shortcut action=\"file_exit\" keys=\"Ctrl+Shift+Q\"/>\n</shortcuts>\n"));

        QProcess editor;
        start(editor, config, work + QStringLiteral("/Roan.def"));
        QVERIFY(editor.waitForStarted());
        auto stop = qScopeGuard([&editor]() {
            if (editor.state() == QProcess::NotRunning) return;
            editor.kill();
            editor.waitForFinished(10000);
        });
        QVERIFY2(
            QTest::qWaitFor([&]() { return trace().contains(QStringLiteral("project opened Roan")); }, 60000),
            qPrintable(trace().join(QLatin1Char('\n'))));
        QVERIFY(!focusWindow().isEmpty());
        const QDateTime written = QFileInfo(sprites).lastModified();
        for (const char* key : {"F6", "F4", "ctrl+shift+d", "ctrl+shift+w"})
            QVERIFY(!xdotool({QStringLiteral("key"), QLatin1String(key)}).isNull());
        QVERIFY2(QTest::qWaitFor([&]() { return QFileInfo(sprites).lastModified() != written; }, 20000),
                 "the save key wrote no sprite file");
        QVERIFY(!xdotool({QStringLiteral("key"), QStringLiteral("ctrl+shift+q")}).isNull());
        QVERIFY(editor.waitForFinished(30000));
        QCOMPARE(editor.exitCode(), 0);

        // Every sprite but the second, in order, with its numbers, axis, size, format and palette.
        const QStringList after = cli({QStringLiteral("sff"), QStringLiteral("list"), sprites})
                                      .split(QLatin1Char('\n'), Qt::SkipEmptyParts);
        QCOMPARE(after.size(), before.size() - 1);
        const auto withoutPosition = [](const QString& line) { return line.section(QLatin1Char('\t'), 1); };
        for (int row = 1, kept = 1; row < before.size(); ++row) {
            if (row == 2) continue; // the header, then sprite 0, then the deleted one
            QCOMPARE(withoutPosition(after.at(kept)), withoutPosition(before.at(row)));
            ++kept;
        }
        // And the pixels: every extracted image of the kept sprites is the same file.
        const QString old = box.filePath(QStringLiteral("extract-before"));
        const QString now = box.filePath(QStringLiteral("extract-after"));
        QVERIFY(!cli({QStringLiteral("sff"), QStringLiteral("extract"), sample + QStringLiteral("/Roan.sff"),
                      old})
                     .isNull());
        QVERIFY(!cli({QStringLiteral("sff"), QStringLiteral("extract"), sprites, now}).isNull());
        // Extracted files are named by position, group and number; the position shifts after the gap.
        const auto images = [](const QString& folder) {
            QMap<QString, QByteArray> byName;
            for (const QString& name : QDir(folder).entryList(QDir::Files))
                byName.insert(name.section(QLatin1Char('_'), 1), read(folder + QLatin1Char('/') + name));
            return byName;
        };
        QMap<QString, QByteArray> expected = images(old);
        QVERIFY(expected.remove(before.at(2).section(QLatin1Char('\t'), 1, 1) + QLatin1Char('_') +
                                before.at(2).section(QLatin1Char('\t'), 2, 2) + QStringLiteral(".png")) == 1);
        QVERIFY(expected == images(now));
    }
    void addsAFrameByItsKeys()
    {
        // The bundled sample, copied: the animations editor adds a frame after the first frame of the
        // first action, the project is saved, the editor quits. The AIR file has exactly one line more.
        const QString sample = TestData::binDir() + QStringLiteral("/samples/Roan");
        if (!QFile::exists(sample + QStringLiteral("/Roan.def")))
            QSKIP("the sample is not built next to the tests");
        const QString work = box.filePath(QStringLiteral("sample-air"));
        QVERIFY(QDir().mkpath(work));
        for (const QString& name : QDir(sample).entryList(QDir::Files))
            QVERIFY(QFile::copy(sample + QLatin1Char('/') + name, work + QLatin1Char('/') + name));
        const QString animations = work + QStringLiteral("/Roan.air");
        const QByteArray before = read(animations);
        const QString config = box.filePath(QStringLiteral("config-animations"));
        QVERIFY(write(config + QStringLiteral("/config.xml"),
                      "<configuration><config name=\"confirm_close\" value=\"false\"/></configuration>\n"));
        QVERIFY(write(config + QStringLiteral("/shortcuts.xml"),
                      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<shortcuts>\n"
                      "<shortcut action=\"editor_animations\" keys=\"F6\"/>\n"
                      "<shortcut action=\"air_frame_add\" keys=\"Ctrl+Shift+F\"/>\n"
                      "<shortcut action=\"file_save\" keys=\"Ctrl+Shift+W\"/>\n"
                      "<shortcut action=\"file_exit\" keys=\"Ctrl+Shift+Q\"/>\n</shortcuts>\n"));

        QProcess editor;
        start(editor, config, work + QStringLiteral("/Roan.def"));
        QVERIFY(editor.waitForStarted());
        auto stop = qScopeGuard([&editor]() {
            if (editor.state() == QProcess::NotRunning) return;
            editor.kill();
            editor.waitForFinished(10000);
        });
        QVERIFY2(
            QTest::qWaitFor([&]() { return trace().contains(QStringLiteral("project opened Roan")); }, 60000),
            qPrintable(trace().join(QLatin1Char('\n'))));
        QVERIFY(!focusWindow().isEmpty());
        const QDateTime written = QFileInfo(animations).lastModified();
        for (const char* key : {"F6", "ctrl+shift+f", "ctrl+shift+w"})
            QVERIFY(!xdotool({QStringLiteral("key"), QLatin1String(key)}).isNull());
        QVERIFY2(QTest::qWaitFor([&]() { return QFileInfo(animations).lastModified() != written; }, 20000),
                 "the save key wrote no animation file");
        QVERIFY(!xdotool({QStringLiteral("key"), QStringLiteral("ctrl+shift+q")}).isNull());
        QVERIFY(editor.waitForFinished(30000));
        QCOMPARE(editor.exitCode(), 0);

        // One frame line more, after the first frame of the first action; every other line keeps its
        // bytes, line ends included.
        const QList<QByteArray> old = before.split('\n');
        const QList<QByteArray> now = read(animations).split('\n');
        QCOMPARE(now.size(), old.size() + 1);
        int added = -1;
        for (int i = 0, j = 0; i < now.size(); ++i) {
            if (j < old.size() && now.at(i) == old.at(j)) {
                ++j;
                continue;
            }
            QCOMPARE(added, -1);
            added = i;
        }
        QVERIFY(added > 0);
        QVERIFY2(now.at(added).startsWith("-1,0, 0,0, 10"), now.at(added).constData());
    }
};

QTEST_GUILESS_MAIN(tst_EndToEnd)
#include "tst_EndToEnd.moc"
