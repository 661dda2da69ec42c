#include "QCodecList.h"

#include "QConfigLocation.h"
#include "QMugenModel.h"
#include "QXmlParser.h"
#include <algorithm>

#include <QAbstractItemModelTester>
#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QIcon>
#include <QImage>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QXmlStreamReader>

#include <csignal>
#ifdef Q_OS_UNIX
#include <sys/resource.h>
#endif

namespace {

using Pairs = QList<QPair<QString, QString>>;

QByteArray configXml(const Pairs& pairs, const QString& root = QStringLiteral("configuration"))
{
    QByteArray xml = "<?xml version=\"1.0\"?>\n<" + root.toUtf8() + ">\n";
    for (const auto& p : pairs)
        xml += "  <config name=\"" + p.first.toUtf8() + "\" value=\"" + p.second.toUtf8() + "\"/>\n";
    return xml + "</" + root.toUtf8() + ">\n";
}

bool writeFile(const QString& path, const QByteArray& bytes)
{
    QFile f(path);
    return f.open(QIODevice::WriteOnly) && f.write(bytes) == bytes.size();
}

QByteArray readFile(const QString& path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

Pairs executables(const QList<int>& numbers)
{
    Pairs pairs;
    for (int n : numbers) {
        const QString k = QStringLiteral("mugen_%1_").arg(n);
        pairs << qMakePair(k + "name", QStringLiteral("M%1").arg(n))
              << qMakePair(k + "exe", QStringLiteral("/games/m%1/mugen").arg(n))
              << qMakePair(k + "params", QStringLiteral("-p%1").arg(n)) << qMakePair(k + "icon", QString());
    }
    return pairs;
}

// The saved file read independently of the parser under test: the names in file order, with values.
struct SavedFile
{
    QString root;
    QStringList names;
    QMap<QString, QString> values;
    bool onlyEmptyConfigs = true;
};

SavedFile readSaved(const QString& path)
{
    SavedFile saved;
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly)) return saved;
    QXmlStreamReader xml(&f);
    int depth = 0;
    while (!xml.atEnd()) {
        const auto token = xml.readNext();
        if (token == QXmlStreamReader::EndElement) --depth;
        if (token == QXmlStreamReader::Characters && depth > 1 && !xml.isWhitespace())
            saved.onlyEmptyConfigs = false;
        if (token != QXmlStreamReader::StartElement) continue;
        if (++depth == 1) {
            saved.root = xml.name().toString();
            continue;
        }
        if (depth != 2 || xml.name() != QLatin1String("config")) saved.onlyEmptyConfigs = false;
        const QString name = xml.attributes().value("name").toString();
        saved.names << name;
        saved.values[name] = xml.attributes().value("value").toString();
    }
    return saved;
}

QStringList rowNames(const QMugenModel& model)
{
    QStringList names;
    for (int r = 0; r < model.rowCount(); ++r)
        names << model.data(model.index(r), Qt::DisplayRole).toString();
    return names;
}

} // namespace

class tst_QMugenModel : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;
    QString path(const QString& name) const { return m_dir.filePath(name); }

private slots:
    void defaultsSurviveRoundTrip()
    {
        // Saved values come back as strings; every reader's conversion must still give the default.
        QMugenModel defaults;
        QVERIFY(defaults.save(path("defaults.xml")));
        QMugenModel loaded;
        QVERIFY(loaded.load(path("defaults.xml")));
        QCOMPARE(loaded.settings.keys(), defaults.settings.keys());
        for (auto it = defaults.settings.constBegin(); it != defaults.settings.constEnd(); ++it) {
            const QVariant& value = loaded.settings[it.key()];
            QCOMPARE(value.typeId(), QMetaType::QString);
            if (it.value().typeId() == QMetaType::Bool)
                QVERIFY2(value.toBool() == it.value().toBool(), qPrintable(it.key()));
            else if (it.value().typeId() == QMetaType::Int)
                QVERIFY2(value.toInt() == it.value().toInt(), qPrintable(it.key()));
            else
                QCOMPARE(value.toString(), it.value().toString());
        }
    }

    void partialFileOverlaysDefaults()
    {
        QVERIFY(writeFile(path("other.tvc3"), configXml({{"proj_path", "/x"}, {"zoom_level", "7"}})));
        QVERIFY(writeFile(path("partial.tvc3"), configXml({{"language", "fr-fr"}, {"thumb_size", "96"}})));
        QMugenModel model;
        QVERIFY(model.load(path("other.tvc3")));
        QVERIFY(model.load(path("partial.tvc3")));
        QCOMPARE(model["language"], QVariant(QStringLiteral("fr-fr")));
        QCOMPARE(model["thumb_size"].toInt(), 96);
        // Loading starts over: nothing of the previous file stays.
        QCOMPARE(model["zoom_level"], QVariant(2));
        QVERIFY(!model.settings.contains("proj_path"));
        QCOMPARE(model["preset"], QVariant(QStringLiteral("Classic")));
        QCOMPARE(model["show_rulers"], QVariant(true));
    }

    void unknownKeysSurviveRoundTrip()
    {
        QVERIFY(writeFile(path("unknown.xml"),
                          configXml({{"proj_path", "C:/chars/kfm"}, {"show_organizer", "false"}})));
        QMugenModel model;
        QVERIFY(model.load(path("unknown.xml")));
        QVariant& touched = model["never_written"];
        QVERIFY(!touched.isValid());
        QCOMPARE(touched.toInt(), 0);
        QVERIFY(!touched.toBool());
        model["spr_onion_sel"] = 3;
        QVERIFY(model.save(path("unknown_out.xml")));

        QMugenModel again;
        QVERIFY(again.load(path("unknown_out.xml")));
        QCOMPARE(again["proj_path"].toString(), QStringLiteral("C:/chars/kfm"));
        QCOMPARE(again["show_organizer"].toBool(), false);
        QCOMPARE(again["spr_onion_sel"].toInt(), 3);
        QVERIFY(again.settings.contains("never_written"));
        QCOMPARE(again["never_written"].toString(), QString());
    }

    void savedFileFormat()
    {
        QMugenModel model;
        model["a_key & <odd> \"text\""] = QStringLiteral("x < y & \"z\"");
        QVERIFY(model.save(path("format.xml")));
        const QByteArray bytes = readFile(path("format.xml"));
        QVERIFY(bytes.startsWith("<?xml version=\"1.0\""));
        QVERIFY(bytes.contains("\n    <config name=\"language\" value=\"en-us\"/>\n"));
        QVERIFY(bytes.contains("<config name=\"use_opengl\" value=\"false\"/>"));
        const SavedFile saved = readSaved(path("format.xml"));
        QCOMPARE(saved.root, QStringLiteral("configuration"));
        QVERIFY(saved.onlyEmptyConfigs);
        QStringList sorted = saved.names;
        sorted.sort();
        QCOMPARE(saved.names, sorted);
        QCOMPARE(saved.values.value("a_key & <odd> \"text\""), QStringLiteral("x < y & \"z\""));
    }

    void fiftyOneExecutables()
    {
        QList<int> numbers;
        for (int n = 0; n <= QMugenModel::MaxEntries; ++n)
            numbers << n;
        QVERIFY(writeFile(path("fiftyone.xml"), configXml(executables(numbers))));
        QMugenModel model;
        QVERIFY(model.load(path("fiftyone.xml")));
        QCOMPARE(model.rowCount(), 50);
        QCOMPARE(model.entry(49)->name, QStringLiteral("M49"));
        QVERIFY(model.entry(50) == nullptr);

        QVERIFY(model.save(path("fifty.xml")));
        const SavedFile saved = readSaved(path("fifty.xml"));
        QVERIFY(saved.values.contains("mugen_49_icon"));
        for (const QString& name : saved.names)
            QVERIFY2(!name.startsWith("mugen_50_"), qPrintable(name));
        QCOMPARE(saved.names.filter(QRegularExpression("^mugen_")).size(), 200);
        QMugenModel again;
        QVERIFY(again.load(path("fifty.xml")));
        QCOMPARE(again.rowCount(), 50);
    }

    void executableGaps_data()
    {
        QTest::addColumn<QList<int>>("numbers");
        QTest::addColumn<QStringList>("names");
        QTest::newRow("first slot empty") << QList<int>{1, 2} << QStringList{"M1", "M2"};
        QTest::newRow("holes inside") << QList<int>{0, 3, 7} << QStringList{"M0", "M3", "M7"};
        QTest::newRow("only the last slot") << QList<int>{49} << QStringList{"M49"};
        QTest::newRow("only beyond the last slot") << QList<int>{50} << QStringList{};
        QTest::newRow("file order not numeric") << QList<int>{12, 2} << QStringList{"M2", "M12"};
    }

    void executableGaps()
    {
        QFETCH(QList<int>, numbers);
        QFETCH(QStringList, names);
        Pairs pairs = executables(numbers);
        // A stray field of a missing executable is no executable.
        pairs << qMakePair(QStringLiteral("mugen_40_exe"), QStringLiteral("/stray"));
        QVERIFY(writeFile(path("gaps.xml"), configXml(pairs)));
        QMugenModel model;
        QVERIFY(model.load(path("gaps.xml")));
        QCOMPARE(rowNames(model), names);

        QVERIFY(model.save(path("gaps_out.xml")));
        const SavedFile saved = readSaved(path("gaps_out.xml"));
        QStringList expectedKeys;
        for (int n = 0; n < names.size(); ++n)
            for (const char* field : {"exe", "icon", "name", "params"})
                expectedKeys << QStringLiteral("mugen_%1_%2").arg(n).arg(field);
        expectedKeys.sort();
        QStringList savedKeys = saved.names.filter(QRegularExpression("^mugen_"));
        savedKeys.sort();
        QCOMPARE(savedKeys, expectedKeys);
        for (int n = 0; n < names.size(); ++n) {
            QCOMPARE(saved.values.value(QStringLiteral("mugen_%1_name").arg(n)), names.at(n));
            QCOMPARE(saved.values.value(QStringLiteral("mugen_%1_exe").arg(n)),
                     QStringLiteral("/games/m%1/mugen").arg(names.at(n).mid(1)));
        }
    }

    void emptyValueIsEmptyString()
    {
        QVERIFY(
            writeFile(path("empty.xml"), configXml({{"language", ""}, {"zoom_level", ""}, {"new_key", ""}})));
        QMugenModel model;
        QVERIFY(model.load(path("empty.xml")));
        for (const char* key : {"language", "zoom_level", "new_key"}) {
            const QVariant value = model.settings.value(key);
            QVERIFY2(value.isValid(), key);
            QCOMPARE(value.typeId(), QMetaType::QString);
            QCOMPARE(value.toString(), QString());
        }
    }

    void foreignDocumentLeavesDefaults_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        const Pairs pairs = Pairs{{"language", "de-de"}} + executables({0});
        QTest::newRow("other root") << configXml(pairs, "shortcuts");
        QTest::newRow("config as root") << QByteArray("<config name=\"language\" value=\"de-de\"/>");
        QTest::newRow("not xml") << QByteArray("language=de-de\n");
        QTest::newRow("empty file") << QByteArray();
        QTest::newRow("missing file") << QByteArray();
    }

    void foreignDocumentLeavesDefaults()
    {
        QFETCH(QByteArray, bytes);
        const bool missing = QByteArray(QTest::currentDataTag()) == "missing file";
        if (!missing) QVERIFY(writeFile(path("foreign.xml"), bytes));
        QMugenModel model;
        model["language"] = QStringLiteral("xx");
        model["proj_path"] = QStringLiteral("left over");
        model.addEntry("old", "old.exe", "", "");
        QVERIFY(!model.load(path(missing ? "missing.xml" : "foreign.xml")));
        QCOMPARE(model["language"], QVariant(QStringLiteral("en-us")));
        QVERIFY(!model.settings.contains("proj_path"));
        QCOMPARE(model.rowCount(), 0);
    }

    void saveOnlyModifiedAsBool_data()
    {
        QTest::addColumn<QString>("value");
        QTest::addColumn<bool>("expected");
        QTest::newRow("absent") << QString() << true;
        QTest::newRow("0") << "0" << false;
        QTest::newRow("1") << "1" << true;
        QTest::newRow("false") << "false" << false;
        QTest::newRow("true") << "true" << true;
    }

    void saveOnlyModifiedAsBool()
    {
        QFETCH(QString, value);
        QFETCH(bool, expected);
        Pairs pairs;
        if (!value.isNull()) pairs << qMakePair(QStringLiteral("save_only_modified"), value);
        QVERIFY(writeFile(path("som.xml"), configXml(pairs)));
        QMugenModel model;
        QVERIFY(model.load(path("som.xml")));
        QCOMPARE(model["save_only_modified"].toBool(), expected);
    }

    void failedSaveKeepsOldFile_data()
    {
        QTest::addColumn<QString>("target");
        QTest::addColumn<QString>("existing");
        QTest::addColumn<QString>("obstacle");
        const QString none;
        QTest::newRow("folder missing") << QString("nowhere/config.xml") << none << none;
        QTest::newRow("target is a folder")
            << QString("folder.xml") << QString("folder.xml/inside.xml") << none;
        QTest::newRow("read-only folder")
            << QString("locked/config.xml") << QString("locked/config.xml") << QString("read-only");
        QTest::newRow("write fails halfway")
            << QString("full/config.xml") << QString("full/config.xml") << QString("size limit");
    }

    void failedSaveKeepsOldFile()
    {
        QFETCH(QString, target);
        QFETCH(QString, existing);
        QFETCH(QString, obstacle);
        const QByteArray old = configXml({{"language", "old"}});
        if (!existing.isEmpty()) {
            QVERIFY(QDir().mkpath(QFileInfo(path(existing)).absolutePath()));
            QVERIFY(writeFile(path(existing), old));
        }
        const QString folder = QFileInfo(path(target)).absolutePath();
        const auto unlock = [&] {
            QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        };
        if (obstacle == "read-only") {
            QFile::setPermissions(folder, QFile::ReadOwner | QFile::ExeOwner);
            if (QConfigLocation::isWritableDir(folder)) {
                unlock();
                QSKIP("permission bits do not stop this user from writing");
            }
        }

        QMugenModel model;
        bool saved = false;
        if (obstacle == "size limit") {
#ifdef Q_OS_UNIX
            // Files of this process may not grow past a few bytes: a direct write would have truncated the
            // old file and then failed.
            rlimit limit;
            QCOMPARE(getrlimit(RLIMIT_FSIZE, &limit), 0);
            const rlimit small = {rlim_t(old.size() / 2), limit.rlim_max};
            const auto oldHandler = std::signal(SIGXFSZ, SIG_IGN);
            QCOMPARE(setrlimit(RLIMIT_FSIZE, &small), 0);
            saved = model.save(path(target));
            setrlimit(RLIMIT_FSIZE, &limit);
            std::signal(SIGXFSZ, oldHandler);
#else
            QSKIP("needs a limit on file size");
#endif
        } else {
            saved = model.save(path(target));
        }
        if (obstacle == "read-only") unlock();

        QVERIFY(!saved);
        if (!existing.isEmpty()) QCOMPARE(readFile(path(existing)), old);
        // No half-written copy is left beside the target either.
        const QFileInfo targetInfo(path(target));
        const QStringList leftovers =
            targetInfo.dir().entryList({targetInfo.fileName() + ".*"}, QDir::Files | QDir::Hidden);
        QCOMPARE(leftovers, QStringList());
    }

    void location_data()
    {
        QTest::addColumn<bool>("appWritable");
        QTest::addColumn<bool>("inApp");
        QTest::addColumn<bool>("inUser");
        QTest::addColumn<QString>("read");
        QTest::addColumn<QString>("write");
        QTest::newRow("installed, no files") << false << false << false << "user"
                                             << "user";
        QTest::newRow("installed, shipped file only") << false << true << false << "app"
                                                      << "user";
        QTest::newRow("installed, user's own copy") << false << true << true << "user"
                                                    << "user";
        QTest::newRow("portable, no files") << true << false << false << "app"
                                            << "app";
        QTest::newRow("portable, stray user file") << true << false << true << "app"
                                                   << "app";
    }

    void location()
    {
        QFETCH(bool, appWritable);
        QFETCH(bool, inApp);
        QFETCH(bool, inUser);
        QFETCH(QString, read);
        QFETCH(QString, write);
        QTemporaryDir root;
        const QString appDir = root.filePath("app");
        const QString userDir = root.filePath("home/.config/Tavrel");
        QVERIFY(QDir().mkpath(appDir));
        if (inApp) QVERIFY(writeFile(appDir + "/history.xml", "<history/>"));
        if (inUser) {
            QVERIFY(QDir().mkpath(userDir));
            QVERIFY(writeFile(userDir + "/history.xml", "<history/>"));
        }
        const QConfigLocation location(appDir, userDir, appWritable);
        const auto folder = [&](const QString& which) { return which == "app" ? appDir : userDir; };
        QCOMPARE(location.readPath("history.xml"), folder(read) + "/history.xml");
        QCOMPARE(location.readPath("/history.xml"), folder(read) + "/history.xml");
        QCOMPARE(QFileInfo::exists(userDir), inUser);
        QCOMPARE(location.writePath("/history.xml"), folder(write) + "/history.xml");
        QCOMPARE(QFileInfo(userDir).isDir(), inUser || write == "user");
    }

    void locationFallbackRoundTrip()
    {
        QTemporaryDir root;
        const QString appDir = root.filePath("app");
        const QString userDir = root.filePath("user");
        QVERIFY(QDir().mkpath(appDir));
        QVERIFY(writeFile(appDir + "/config.xml", configXml({{"language", "shipped"}})));
        const QConfigLocation location(appDir, userDir, false);

        QMugenModel model;
        QVERIFY(model.load(location.readPath("config.xml")));
        QCOMPARE(model["language"].toString(), QStringLiteral("shipped"));
        model["language"] = QStringLiteral("mine");
        QVERIFY(model.save(location.writePath("config.xml")));
        QCOMPARE(readSaved(appDir + "/config.xml").values.value("language"), QStringLiteral("shipped"));

        QMugenModel next;
        QVERIFY(next.load(location.readPath("config.xml")));
        QCOMPARE(next["language"].toString(), QStringLiteral("mine"));
    }

    void standardLocationLeavesNoProbe()
    {
        const QDir appDir(QCoreApplication::applicationDirPath());
        const QStringList before = appDir.entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
        const QConfigLocation location = QConfigLocation::standard();
        QCOMPARE(appDir.entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot), before);
        QVERIFY(!location.userDir().isEmpty());
        QVERIFY(!QConfigLocation::isWritableDir(m_dir.filePath("no such folder")));
        QVERIFY(QConfigLocation::isWritableDir(m_dir.path()));
    }

    void rowsAndRoles()
    {
        QImage image(5, 7, QImage::Format_ARGB32);
        image.fill(Qt::red);
        QVERIFY(image.save(path("icon.png")));

        QMugenModel model;
        QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);
        QCOMPARE(model.addEntry("Plain", "/m/mugen", "-r kfm", ""), 0);
        QCOMPARE(model.addEntry("Iconic", "/i/ikemen", "", path("icon.png")), 1);
        QCOMPARE(inserted.size(), 2);
        QCOMPARE(inserted.at(1).at(1).toInt(), 1);
        QCOMPARE(model.rowCount(), 2);

        QCOMPARE(model.data(model.index(0), 0), QVariant(QStringLiteral("Plain")));
        const QIcon fallback = model.data(model.index(0), 1).value<QIcon>();
        QVERIFY(!fallback.pixmap(16, 16).isNull());
        const QIcon own = model.data(model.index(1), 1).value<QIcon>();
        QCOMPARE(own.pixmap(16, 16).toImage().pixelColor(2, 3), QColor(Qt::red));
        QVERIFY(!model.data(QModelIndex(), 0).isValid());
        QVERIFY(!model.data(model.index(2), 0).isValid());

        QVERIFY(!model.remove(2));
        QVERIFY(!model.remove(-1));
        QVERIFY(model.remove(0));
        QCOMPARE(rowNames(model), QStringList{"Iconic"});
        model.clear();
        QCOMPARE(model.rowCount(), 0);
        QVERIFY(model.entry(0) == nullptr);
    }

    void move_data()
    {
        QTest::addColumn<int>("from");
        QTest::addColumn<int>("to");
        QTest::addColumn<bool>("ok");
        QTest::addColumn<QStringList>("names");
        QTest::newRow("down by one") << 0 << 1 << true << QStringList{"B", "A", "C", "D"};
        QTest::newRow("down to the end") << 0 << 3 << true << QStringList{"B", "C", "D", "A"};
        QTest::newRow("up to the top") << 3 << 0 << true << QStringList{"D", "A", "B", "C"};
        QTest::newRow("in place") << 2 << 2 << true << QStringList{"A", "B", "C", "D"};
        QTest::newRow("past the end") << 1 << 4 << false << QStringList{"A", "B", "C", "D"};
        QTest::newRow("negative") << -1 << 0 << false << QStringList{"A", "B", "C", "D"};
    }

    void move()
    {
        QFETCH(int, from);
        QFETCH(int, to);
        QFETCH(bool, ok);
        QFETCH(QStringList, names);
        QMugenModel model;
        for (const char* name : {"A", "B", "C", "D"})
            model.addEntry(name, "", "", "");
        QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        QCOMPARE(model.move(from, to), ok);
        QCOMPARE(rowNames(model), names);
        QVERIFY(model.save(path("moved.xml")));
        QMugenModel again;
        QVERIFY(again.load(path("moved.xml")));
        QCOMPARE(rowNames(again), names);
    }

    void parserWalksChildren()
    {
        QByteArray xml = "<?xml version=\"1.0\"?>\n<root><a x=\"1\"><b>one</b><c><b>two<i>!</i></b></c>"
                         "<b>three</b></a><b y=\"2\">four</b><d/></root>";
        QBuffer buffer(&xml);
        QXmlParser parser(&buffer);
        QVERIFY(parser.isOpen());
        QVERIFY(parser.findRoot("root"));
        QCOMPARE(parser.depth(), 1);
        QVERIFY(parser.nextElement());
        QCOMPARE(parser.name(), QStringLiteral("a"));
        QCOMPARE(parser.attribute("x"), QStringLiteral("1"));
        const int a = parser.depth();
        QStringList inside;
        while (parser.nextElement(a)) {
            const QString entry = parser.name() + ":" + QString::number(parser.depth());
            inside << entry + ":" + (parser.name() == "b" ? parser.text() : QString());
        }
        QCOMPARE(inside, (QStringList{"b:3:one", "c:3:", "b:4:two!", "b:3:three"}));
        QVERIFY(parser.nextElement());
        QCOMPARE(parser.name(), QStringLiteral("b"));
        QCOMPARE(parser.text(), QStringLiteral("four"));
        QCOMPARE(parser.text(), QStringLiteral("four"));
        QCOMPARE(parser.attribute("y"), QStringLiteral("2"));
        QVERIFY(!parser.nextElement(parser.depth() + 1));
        QVERIFY(parser.nextElement());
        QCOMPARE(parser.name(), QStringLiteral("d"));
        QVERIFY(!parser.nextElement());
        QVERIFY(!parser.hasError());

        buffer.seek(0);
        QXmlParser wrongRoot(&buffer);
        QVERIFY(!wrongRoot.findRoot("history"));
        QVERIFY(!wrongRoot.nextElement());

        QXmlParser missing(path("absent.xml"));
        QVERIFY(!missing.isOpen());
        QVERIFY(!missing.findRoot("root"));
    }

    void codecList()
    {
        buildCodecList();
        buildCodecList();
        const QList<QByteArray>& codecs = ::codecList();
        QVERIFY(codecs.size() > 1);
        QCOMPARE(codecs.first(), QByteArray("System"));
        QVERIFY(std::is_sorted(codecs.begin() + 1, codecs.end()));
        QCOMPARE(codecs.count("System"), 1);
        QVERIFY(codecs.contains("UTF-8"));
    }
};

QTEST_MAIN(tst_QMugenModel)
#include "tst_QMugenModel.moc"
