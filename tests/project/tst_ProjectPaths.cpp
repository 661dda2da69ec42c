// Finding the files a definitions file names, as the engine finds them, in a folder laid out as the
// engine's: ROOT/Data, ROOT/chars/Hero, ROOT/stages.

#include "QProjectPaths.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

class tst_ProjectPaths : public QObject
{
    Q_OBJECT

    QTemporaryDir root;

    QString base() const { return root.filePath(QStringLiteral("chars/Hero")); }

private slots:
    void initTestCase()
    {
        for (const char* name : {"chars/Hero/hero.sff", "chars/Hero/Art/Fighter.AIR", "chars/Hero/pal/p1.act",
                                 "Data/common1.cns", "common.txt", "stages/far/far.sff", "chars/shared.st"}) {
            const QString path = root.filePath(QLatin1String(name));
            QDir().mkpath(QFileInfo(path).absolutePath());
            QFile file(path);
            QVERIFY(file.open(QIODevice::WriteOnly));
        }
    }

    void find_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("stage");
        QTest::addColumn<QString>("expected"); // relative to the root; empty when not found

        QTest::newRow("exact") << "hero.sff" << false << "chars/Hero/hero.sff";
        QTest::newRow("backslashes and case") << "art\\fighter.air" << false << "chars/Hero/Art/Fighter.AIR";
        QTest::newRow("surrounding blanks") << " pal/P1.ACT " << false << "chars/Hero/pal/p1.act";
        QTest::newRow("parent folder") << "..\\SHARED.st" << false << "chars/shared.st";
        QTest::newRow("engine data folder") << "Common1.cns" << false << "Data/common1.cns";
        QTest::newRow("engine root") << "common.txt" << false << "common.txt";
        QTest::newRow("stage folder only for stages") << "far/far.sff" << false << "";
        QTest::newRow("stage folder") << "far/far.sff" << true << "stages/far/far.sff";
        QTest::newRow("missing") << "nothing.cns" << false << "";
        QTest::newRow("a folder is no file") << "art" << false << "";
        QTest::newRow("trailing slash") << "art/" << false << "";
        QTest::newRow("empty") << "" << false << "";
    }

    void find()
    {
        QFETCH(QString, name);
        QFETCH(bool, stage);
        QFETCH(QString, expected);
        const QString found = QProjectPaths::find(base(), name, stage);
        QCOMPARE(found.isEmpty() ? QString() : QDir(root.path()).relativeFilePath(found), expected);
        // What a project reads: the file found, or the name as written beside the definitions.
        const QString resolved = QProjectPaths::resolve(base(), name);
        if (!stage)
            QCOMPARE(resolved, found.isEmpty()
                                   ? QDir(base()).filePath(QProjectPaths::normalized(name).trimmed())
                                   : found);
    }

    void engineRoot()
    {
        QCOMPARE(QProjectPaths::engineRoot(base()), QDir(root.path()).absolutePath());
        QCOMPARE(QProjectPaths::engineRoot(root.filePath(QStringLiteral("Data"))),
                 QDir(root.path()).absolutePath());
        // A folder with a "data" folder but no characters (a build tree holding a project) is no engine.
        QTemporaryDir build;
        QVERIFY(QDir().mkpath(build.filePath(QStringLiteral("data"))));
        QVERIFY(QDir().mkpath(build.filePath(QStringLiteral("bin/samples/Roan"))));
        QCOMPARE(QProjectPaths::engineRoot(build.filePath(QStringLiteral("bin/samples/Roan"))), QString());
    }
};

QTEST_GUILESS_MAIN(tst_ProjectPaths)
#include "tst_ProjectPaths.moc"
