// The real tavrel under a real X server (Xvfb), driven only by keys that its own "shortcuts.xml" binds:
// it opens a state file given on its command line, takes typing, saves by a key and quits by a key.
// The file on disk must hold exactly the typed line, in the file's encoding and line ends.

#include "TestData.h"

#include <QDir>
#include <QFile>
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
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("DISPLAY"), display);
        env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
        env.insert(QStringLiteral("TMPDIR"), box.path());
        env.insert(QStringLiteral("TAVREL_TRACE"), box.filePath(QStringLiteral("trace.txt")));
        env.insert(QStringLiteral("TAVREL_CONFIG_DIR"), box.filePath(QStringLiteral("config")));
        editor.setProcessEnvironment(env);
        editor.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        editor.start(TestData::binDir() + QStringLiteral("/tavrel"), {states});
        QVERIFY(editor.waitForStarted());
        auto stop = qScopeGuard([&editor]() {
            if (editor.state() == QProcess::NotRunning) return;
            editor.kill();
            editor.waitForFinished(10000);
        });
        QVERIFY2(QTest::qWaitFor(
                     [&]() { return trace().contains(QStringLiteral("loaded cns ok ") + states); }, 60000),
                 qPrintable(trace().join(QLatin1Char('\n'))));

        const QString window =
            xdotool({QStringLiteral("search"), QStringLiteral("--sync"), QStringLiteral("--onlyvisible"),
                     QStringLiteral("--name"), QStringLiteral("Orlenmark Tavrel")})
                .section(QLatin1Char('\n'), 0, 0)
                .trimmed();
        QVERIFY(!window.isEmpty());
        QVERIFY(!xdotool({QStringLiteral("windowfocus"), QStringLiteral("--sync"), window}).isNull());
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
};

QTEST_GUILESS_MAIN(tst_EndToEnd)
#include "tst_EndToEnd.moc"
