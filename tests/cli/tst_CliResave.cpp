// "tavrel-cli resave": the real executable reading text files into the editor and writing them back.

#include "CliTest.h"

class tst_CliResave : public QObject
{
    Q_OBJECT

    QTemporaryDir dir;

    static int run(const QStringList& arguments, QString* err = nullptr)
    {
        const CliRunner::Result result = CliRunner::run(arguments);
        if (err) *err = result.err;
        return result.exitCode;
    }

    QString write(const QString& name, const QByteArray& bytes) { return CliTest::write(dir, name, bytes); }

private slots:
    void initTestCase() { TAVREL_REQUIRE_CLI(); }

    void sameBytes_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("bytes");

        QTest::newRow("states, mixed line ends")
            << "kfm.cns" << QByteArray("; KFM \r\n[Statedef 0]\ntype = S\r\n\r\nctrl = 1  ");
        QTest::newRow("common states with BOM")
            << "common1.st" << QByteArray("\xEF\xBB\xBF[Statedef 5]\r\n; \xC3\xA9t\xC3\xA9\r\n");
        QTest::newRow("animations, CR only") << "kfm.air" << QByteArray("[Begin Action 0]\r0,0, 0,0, 5\r");
        QTest::newRow("commands") << "kfm.cmd" << QByteArray("[Command]\nname = \"a\"\ncommand = a\n");
        QTest::newRow("definitions, upper-case suffix")
            << "KFM.DEF" << QByteArray("[Info]\r\nname = \"Kung Fu Man\"\r\n");
        QTest::newRow("other text") << "readme.txt" << QByteArray("just text\n\n");
        // Read into the models of definitions and commands: sections, keys, duplicates and unknown
        // sections are recognised and bound, and still nothing of the text changes.
        QTest::newRow("definitions model, CP-1252, duplicates, unknown section")
            << "hero.def"
            << QByteArray("; H\xE9ros\r\n[INFO]\r\nname = \"H\xE9ros\"\r\nname = \"B\"\r\n"
                          "localcoord = 320, 240, 1\r\n[Files]  ; list\r\nsprite = my chars\\hero.sff ; x\r\n"
                          "pal13 = a.act\r\n[Info 2]\r\nsprite = y\n\r[Files]\r\ncmd = b.cmd");
        QTest::newRow("commands model, defaults, states and odd steps")
            << "hero.cmd"
            << QByteArray(
                   "[Defaults]\ncommand.time = 15\n\n;-| Fireball |-\n[Command]\nname = \"QCF_x\"\n"
                   "command = ~D, DF, F, x\ncommand = ~30a\n[command]\nname=\"b\"\t\ncommand = /F+a ;hold\n"
                   "[Statedef -1]\n[State -1, x]\ntrigger1 = command = \"QCF_x\"");
        // Read into the animation model: a box count that disagrees with its boxes and a box with its
        // corners swapped stay as written, and Shift-JIS comments keep their bytes.
        QTest::newRow("animations model, Shift-JIS, counts and boxes as written")
            << "hero.air"
            << QByteArray("; \x97\xA7\x82\xBF\r\n[Begin Action 0]\r\nClsn2Default: 2\r\n"
                          "  Clsn2[0] = 10,0,-10,-70\r\nLoopStart\r\n0,0, 0,0, 5, H, A\r\n"
                          "Interpolate Offset\r\n0,1, 0,0, -1\r\n\r\n[Foo]\r\nx = 1\r\n"
                          "[begin action 5] ; \x82\xA0\n5,0,0,0,1,,AS20D30");
    }

    void sameBytes()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, bytes);

        const QString input = write(name, bytes);
        const QString output = dir.filePath(QStringLiteral("out-") + name);
        QString err;
        QCOMPARE(run({QStringLiteral("resave"), input, output}, &err), 0);
        QCOMPARE(err, QString());
        QCOMPARE(readBytes(output), bytes);
    }

    void failures_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("message");

        const QString missing = dir.filePath(QStringLiteral("missing.cns"));
        const QString binary = write(QStringLiteral("kfm.sff"), QByteArray("ElecbyteSpr\0\0\1\0", 15));
        const QString text = write(QStringLiteral("ok.cns"), "[Statedef 0]\n");
        QTest::newRow("missing input")
            << QStringList{"resave", missing, dir.filePath("x")} << 1 << missing + ": no such file";
        QTest::newRow("binary input")
            << QStringList{"resave", binary, dir.filePath("x")} << 1 << binary + ": is not a text file";
        const QString unwritable = dir.filePath(QStringLiteral("no/such/folder/out.cns"));
        QTest::newRow("unwritable output")
            << QStringList{"resave", text, unwritable} << 1 << unwritable + ": can't be written";
    }

    void failures()
    {
        QFETCH(QStringList, arguments);
        QFETCH(int, status);
        QFETCH(QString, message);

        QString err;
        QCOMPARE(run(arguments, &err), status);
        QVERIFY2(err.contains(message), qPrintable(err));
    }

    // Every text file of the real content, in whatever code page its authors wrote it (those without a
    // zero byte, as the command tells text from binary files).
    void realFiles()
    {
        TAVREL_REQUIRE_TESTDATA();
        const QString output = dir.filePath(QStringLiteral("real.out"));
        int identical = 0;
        for (const QString& path : TestData::files({QStringLiteral("*")})) {
            const QByteArray bytes = readBytes(path);
            if (bytes.contains('\0')) continue;
            QString err;
            QVERIFY2(run({QStringLiteral("resave"), path, output}, &err) == 0, qPrintable(path + err));
            QVERIFY2(readBytes(output) == bytes, qPrintable(path));
            ++identical;
        }
        QVERIFY(identical > 0);
        qInfo("%d real text files written back byte for byte", identical);
    }
};

QTEST_GUILESS_MAIN(tst_CliResave)
#include "tst_CliResave.moc"
