// Drives the real tavrel executable: single-instance decision, hand-off of files from later starts,
// and recovery from a killed first instance. Each case runs in its own temporary folder (TMPDIR), so
// the lock and the hand-off file are private to it, and watches the editor through its trace file.

#include "TestData.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <QTest>

#include <signal.h>

class tst_StartUp : public QObject
{
    Q_OBJECT

private:
    struct Sandbox
    {
        QTemporaryDir dir;
        QString tracePath() const { return dir.filePath(QStringLiteral("trace.txt")); }
        QString handOffPath() const { return dir.filePath(QStringLiteral("open.tv3")); }
        QString lockPath() const { return dir.filePath(QStringLiteral("Tavrel3.lock")); }
        QString file(const QString& name) const
        {
            const QString path = dir.filePath(name);
            QFile f(path);
            if (f.open(QIODevice::WriteOnly)) f.write("; content\n");
            return path;
        }
        QStringList trace() const
        {
            QFile f(tracePath());
            if (!f.open(QIODevice::ReadOnly | QIODevice::Text)) return QStringList();
            return QString::fromLocal8Bit(f.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
        }
        QStringList traceOf(const QString& category) const
        {
            QStringList lines;
            for (const QString& line : trace())
                if (line.startsWith(category + QLatin1Char(' '))) lines << line.mid(category.size() + 1);
            return lines;
        }
    };

    static QString editorPath() { return TestData::binDir() + QStringLiteral("/tavrel"); }

    static QProcess* start(const Sandbox& box, const QStringList& arguments,
                           QProcessEnvironment env = QProcessEnvironment::systemEnvironment())
    {
        auto* process = new QProcess;
        env.insert(QStringLiteral("TMPDIR"), box.dir.path());
        env.insert(QStringLiteral("TAVREL_TRACE"), box.tracePath());
        env.insert(QStringLiteral("TAVREL_CONFIG_DIR"), box.dir.filePath(QStringLiteral("config")));
        env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        process->setProcessEnvironment(env);
        process->setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process->start(editorPath(), arguments);
        process->waitForStarted();
        return process;
    }

    static void kill(QProcess* process)
    {
        if (process->state() != QProcess::NotRunning) {
            ::kill(pid_t(process->processId()), SIGKILL);
            process->waitForFinished(10000);
        }
        delete process;
    }

    // The first instance is ready when its window is shown; hand-off reading starts just before.
    static bool waitForWindows(const Sandbox& box, int count)
    {
        return QTest::qWaitFor([&]() { return box.traceOf(QStringLiteral("window")).size() >= count; },
                               60000);
    }

    static bool runToEnd(QProcess* process, int* exitCode)
    {
        const bool finished = process->waitForFinished(60000);
        *exitCode = process->exitCode();
        delete process;
        return finished;
    }

private Q_SLOTS:
    void initTestCase()
    {
        if (!QFile::exists(editorPath())) QSKIP("the tavrel executable is not built next to the tests");
    }

    void secondStartsHandFilesOverInOrder()
    {
        Sandbox box;
        QProcess* first = start(box, {});
        QVERIFY(waitForWindows(box, 1));
        QCOMPARE(box.traceOf(QStringLiteral("instance")), QStringList{QStringLiteral("first")});

        const QString character = box.file(QStringLiteral("kfm.def"));
        const QString notes = box.file(QStringLiteral("notes.txt"));
        const QString upper = box.file(QStringLiteral("STAGE.DEF"));
        // A real sprite file: a file that can't be read would stop the editor at its message box.
        const QString sprites = box.dir.filePath(QStringLiteral("kfm.Sff"));
        QVERIFY(QFile::copy(TestData::binDir() + QStringLiteral("/samples/Roan/Roan.sff"), sprites));
        // Quick starts one after the other, without waiting for the editor to read in between.
        for (const QString& path : {character, notes, upper, sprites}) {
            int exitCode = -1;
            QVERIFY(runToEnd(start(box, {path}), &exitCode));
            QCOMPARE(exitCode, 0);
        }
        const QStringList expected = {QStringLiteral("def ") + character, QStringLiteral("def ") + upper,
                                      QStringLiteral("sff ") + sprites};
        QVERIFY2(QTest::qWaitFor([&]() { return box.traceOf(QStringLiteral("open")).size() >= 3; }, 20000),
                 qPrintable(box.trace().join(QLatin1Char('\n'))));
        QTest::qWait(300);
        // The unknown suffix is dropped; upper-case suffixes are recognised; order is kept.
        QCOMPARE(box.traceOf(QStringLiteral("open")), expected);
        // Second instances show no window.
        QCOMPARE(box.traceOf(QStringLiteral("window")).size(), 1);
        QCOMPARE(box.traceOf(QStringLiteral("instance")).count(QStringLiteral("second")), 4);
        QTRY_COMPARE_WITH_TIMEOUT(QFileInfo(box.handOffPath()).size(), qint64(0), 10000);
        kill(first);
    }

    void firstInstanceOpensItsOwnArgument()
    {
        Sandbox box;
        const QString relativeName = QStringLiteral("own.def");
        box.file(relativeName);
        // A relative path is handed over as an absolute one.
        auto* process = new QProcess;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("TMPDIR"), box.dir.path());
        env.insert(QStringLiteral("TAVREL_TRACE"), box.tracePath());
        process->setProcessEnvironment(env);
        process->setWorkingDirectory(box.dir.path());
        process->start(editorPath(), {relativeName});
        QVERIFY(process->waitForStarted());
        QVERIFY(waitForWindows(box, 1));
        QTRY_COMPARE_WITH_TIMEOUT(box.traceOf(QStringLiteral("open")),
                                  QStringList{QStringLiteral("def ") + box.dir.filePath(relativeName)},
                                  10000);
        QCOMPARE(QFileInfo(box.handOffPath()).size(), qint64(0));
        kill(process);
    }

    void staleLockOfKilledInstanceDoesNotBlock()
    {
        Sandbox box;
        QProcess* first = start(box, {});
        QVERIFY(waitForWindows(box, 1));
        kill(first);
        QVERIFY2(QFile::exists(box.lockPath()), "a killed editor leaves its lock file behind");

        const QString character = box.file(QStringLiteral("after.def"));
        QProcess* next = start(box, {character});
        QVERIFY(waitForWindows(box, 2));
        QCOMPARE(box.traceOf(QStringLiteral("instance")),
                 (QStringList{QStringLiteral("first"), QStringLiteral("first")}));
        QTRY_COMPARE_WITH_TIMEOUT(box.traceOf(QStringLiteral("open")),
                                  QStringList{QStringLiteral("def ") + character}, 10000);
        kill(next);
    }

    void otherCommandLinesStartAPlainEditor_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("missing file") << QStringList{QStringLiteral("no-such-file.def")};
        QTest::newRow("two files") << QStringList{QStringLiteral("FILE1"), QStringLiteral("FILE2")};
        QTest::newRow("palette editor word") << QStringList{QStringLiteral("-ape")};
    }

    // While a first editor runs, these start a second full editor that hands nothing over.
    void otherCommandLinesStartAPlainEditor()
    {
        QFETCH(QStringList, arguments);
        Sandbox box;
        for (QString& argument : arguments)
            if (argument.startsWith(QLatin1String("FILE")))
                argument = box.file(argument + QStringLiteral(".def"));
        QProcess* first = start(box, {});
        QVERIFY(waitForWindows(box, 1));
        QProcess* second = start(box, arguments);
        QVERIFY(waitForWindows(box, 2));
        QCOMPARE(box.traceOf(QStringLiteral("instance")),
                 (QStringList{QStringLiteral("first"), QStringLiteral("second")}));
        QVERIFY(box.traceOf(QStringLiteral("handoff")).isEmpty());
        QTest::qWait(200);
        QVERIFY(box.traceOf(QStringLiteral("open")).isEmpty());
        kill(second);
        kill(first);
    }

    // The sample opens and the editor keeps running where GStreamer finds no plugin (Qt's media back end
    // crashes when made there), no runtime folder is set and no OpenGL exists (offscreen); asked to
    // quit, it closes in order, writes its configuration and ends with status 0.
    void startsWithoutOptionalServices()
    {
        const QString sample = TestData::binDir() + QStringLiteral("/samples/Roan/Roan.def");
        if (!QFile::exists(sample)) QSKIP("the sample character is not built next to the tests");
        Sandbox box;
        // Without the close question, which nobody could answer here.
        QVERIFY(QDir().mkpath(box.dir.filePath(QStringLiteral("config"))));
        QFile config(box.dir.filePath(QStringLiteral("config/config.xml")));
        QVERIFY(config.open(QIODevice::WriteOnly));
        config.write("<configuration><config name=\"confirm_close\" value=\"false\"/></configuration>\n");
        config.close();
        const QString empty = box.dir.filePath(QStringLiteral("no-plugins"));
        QVERIFY(QDir().mkpath(empty));
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("GST_PLUGIN_SYSTEM_PATH_1_0"), empty);
        env.insert(QStringLiteral("GST_PLUGIN_PATH_1_0"), empty);
        env.insert(QStringLiteral("GST_REGISTRY_1_0"), box.dir.filePath(QStringLiteral("registry.bin")));
        env.remove(QStringLiteral("XDG_RUNTIME_DIR"));
        env.remove(QStringLiteral("QT_MEDIA_BACKEND"));
        QProcess* editor = start(box, {sample}, env);
        auto stopEditor = qScopeGuard([editor]() { kill(editor); });
        QVERIFY(waitForWindows(box, 1));
        QVERIFY2(
            QTest::qWaitFor(
                [&]() {
                    return box.traceOf(QStringLiteral("project")).contains(QStringLiteral("opened Roan"));
                },
                60000),
            qPrintable(box.trace().join(QLatin1Char('\n'))));
        QTest::qWait(1500);
        QCOMPARE(editor->state(), QProcess::Running);
        ::kill(pid_t(editor->processId()), SIGTERM);
        QVERIFY(editor->waitForFinished(30000));
        QCOMPARE(editor->exitStatus(), QProcess::NormalExit);
        QCOMPARE(editor->exitCode(), 0);
        QVERIFY(config.open(QIODevice::ReadOnly));
        QVERIFY(config.readAll().contains("window_width"));
        // With no keys of the user's own, the ones shipped beside the program served and are kept.
        QFile shortcuts(box.dir.filePath(QStringLiteral("config/shortcuts.xml")));
        QVERIFY(shortcuts.open(QIODevice::ReadOnly));
        QVERIFY(shortcuts.readAll().contains("action=\"file_new\" keys=\"Ctrl+N\""));
    }
};

QTEST_GUILESS_MAIN(tst_StartUp)
#include "tst_StartUp.moc"
