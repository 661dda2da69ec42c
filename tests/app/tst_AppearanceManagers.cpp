#include "QColorsetManager.h"
#include "QIconsetManager.h"
#include "QLanguageManager.h"
#include "QPresetManager.h"
#include "QStylesheetManager.h"
#include "QSyntaxFormats.h"
#include "TestData.h"

#include <QApplication>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QtEndian>

namespace {

void writeFile(const QString& path, const QByteArray& bytes)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    QVERIFY2(file.open(QIODevice::WriteOnly), qPrintable(path));
    file.write(bytes);
}

QByteArray colorsetXml(const QByteArray& elements)
{
    return "<?xml version=\"1.0\"?>\n<colorset>" + elements + "</colorset>\n";
}

// The hash by which a compiled translation file finds a source text.
quint32 elfHash(const QByteArray& text)
{
    quint32 h = 0;
    for (uchar c : text) {
        h = (h << 4) + c;
        const quint32 g = h & 0xf0000000;
        if (g) h ^= g >> 24;
        h &= ~g;
    }
    return h ? h : 1;
}

void append32(QByteArray& bytes, quint32 value)
{
    char buffer[4];
    qToBigEndian(value, buffer);
    bytes.append(buffer, 4);
}

// A compiled translation file with one message, as lrelease writes it.
QByteArray qmFile(const QByteArray& context, const QByteArray& source, const QString& translation)
{
    QByteArray message;
    message.append(char(0x03));
    append32(message, quint32(translation.size() * 2));
    for (QChar c : translation) {
        message.append(char(c.unicode() >> 8));
        message.append(char(c.unicode() & 0xff));
    }
    message.append(char(0x06));
    append32(message, quint32(source.size()));
    message.append(source);
    message.append(char(0x07));
    append32(message, quint32(context.size()));
    message.append(context);
    message.append(char(0x01));

    QByteArray hashes;
    append32(hashes, elfHash(source));
    append32(hashes, 0);

    QByteArray bytes = QByteArray::fromHex("3cb86418caef9c95cd211cbf60a1bddd");
    bytes.append(char(0x42));
    append32(bytes, quint32(hashes.size()));
    bytes.append(hashes);
    bytes.append(char(0x69));
    append32(bytes, quint32(message.size()));
    bytes.append(message);
    return bytes;
}

// Where the shipped data folders are: the build's bin folder when the test runs under CTest, else the
// source tree's data folder.
QString shippedDataDir()
{
    const QString bin = qEnvironmentVariable("TAVREL_BIN_DIR");
    if (!bin.isEmpty() && QDir(bin + QStringLiteral("/presets")).exists()) return bin;
    return QFileInfo(QFINDTESTDATA("../../data/presets")).absolutePath();
}

} // namespace

class tst_AppearanceManagers : public QObject
{
    Q_OBJECT

private slots:
    void cleanup()
    {
        presetManager = nullptr;
        iconsetManager = nullptr;
        stylesheetManager = nullptr;
        colorsetManager = nullptr;
        qApp->setStyleSheet(QString());
    }

    void listing_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QStringList>("files");
        QTest::addColumn<QStringList>("expected");

        QTest::newRow("presets") << "presets"
                                 << QStringList{"presets/Wide.xml=<preset/>", "presets/Classic.xml=<preset/>",
                                                "presets/notes.txt=<preset/>", "presets/Other.xml=<layout/>",
                                                "presets/Broken.xml=<preset><editor></preset>"}
                                 << QStringList{"Classic", "Wide"};
        QTest::newRow("iconsets") << "iconsets"
                                  << QStringList{"iconsets/Classic/Iconset.xml=<iconset/>",
                                                 "iconsets/Flat/Iconset.xml=<iconset/>",
                                                 "iconsets/Empty/readme.txt=nothing"}
                                  << QStringList{"Classic", "Flat"};
        QTest::newRow("styles") << "styles"
                                << QStringList{"styles/Classic/Stylesheet.css=",
                                               "styles/Night/Stylesheet.css=", "styles/Loose.css=QWidget{}"}
                                << QStringList{"Classic", "Night"};
        QTest::newRow("languages")
            << "languages"
            << QStringList{"languages/de/info.xml=<language><name>Deutsch</name></language>",
                           "languages/fr/strings.qm=", "languages/pt-br/info.xml=<language/>"}
            << QStringList{"de", "en-us", "pt-br"};
        QTest::newRow("colorsets") << "colorsets"
                                   << QStringList{"colorsets/Classic.xml=<colorset/>",
                                                  "colorsets/Custom.xml=<colorset/>",
                                                  "colorsets/Bad.xml=<colorset><comment>",
                                                  "colorsets/Dark.txt=<colorset/>"}
                                   << QStringList{"Classic", "Custom"};
    }

    void listing()
    {
        QFETCH(QString, kind);
        QFETCH(QStringList, files);
        QFETCH(QStringList, expected);

        QTemporaryDir appDir;
        for (const QString& entry : files) {
            const int split = entry.indexOf(QLatin1Char('='));
            writeFile(appDir.filePath(entry.left(split)), entry.mid(split + 1).toUtf8());
        }
        const QString folder = appDir.filePath(kind);
        QStringList names;
        if (kind == "presets")
            names = QPresetManager(appDir.path()).names();
        else if (kind == "iconsets")
            names = QIconsetManager(folder).names();
        else if (kind == "styles")
            names = QStylesheetManager(folder).names();
        else if (kind == "languages")
            names = QLanguageManager(qApp, folder).names();
        else
            names = QColorsetManager(folder).names();
        QCOMPARE(names, expected);
    }

    void presetAttributes_data()
    {
        QTest::addColumn<QByteArray>("attributes");
        QTest::addColumn<QStringList>("sets");
        QTest::addColumn<QList<int>>("panel");
        QTest::addColumn<QList<int>>("extra");

        // Each preset is applied after "Base" (panel 100,10,20, extra 50,5,5): a bad value keeps Base's.
        const QList<int> defaults{220, 0, 30};
        QTest::newRow("nothing given")
            << QByteArray() << QStringList{"Classic", "Classic", "Classic"} << defaults << defaults;
        QTest::newRow("all given") << QByteArray("stylesheet=\"Night\" iconset=\"Flat\" colorset=\"Dark\" "
                                                 "panel-metric=\"300,1,999\" extra-metric=\"0,0,0\"")
                                   << QStringList{"Night", "Flat", "Dark"} << QList<int>{300, 1, 999}
                                   << QList<int>{0, 0, 0};
        QTest::newRow("two numbers") << QByteArray("panel-metric=\"220,30\"")
                                     << QStringList{"Classic", "Classic", "Classic"}
                                     << QList<int>{100, 10, 20} << defaults;
        QTest::newRow("four digits") << QByteArray("extra-metric=\"1000,0,30\"")
                                     << QStringList{"Classic", "Classic", "Classic"} << defaults
                                     << QList<int>{50, 5, 5};
        QTest::newRow("spaces and sign") << QByteArray("panel-metric=\"220, 0,30\" extra-metric=\"-1,0,30\"")
                                         << QStringList{"Classic", "Classic", "Classic"}
                                         << QList<int>{100, 10, 20} << QList<int>{50, 5, 5};
        QTest::newRow("empty set names") << QByteArray("stylesheet=\"\" colorset=\"Dark\"")
                                         << QStringList{"", "Classic", "Dark"} << defaults << defaults;
    }

    void presetAttributes()
    {
        QFETCH(QByteArray, attributes);
        QFETCH(QStringList, sets);
        QFETCH(QList<int>, panel);
        QFETCH(QList<int>, extra);

        QTemporaryDir appDir;
        writeFile(appDir.filePath("presets/Base.xml"),
                  "<preset panel-metric=\"100,10,20\" extra-metric=\"50,5,5\"/>");
        writeFile(appDir.filePath("presets/Test.xml"), "<preset " + attributes + "/>");
        QPresetManager manager(appDir.path());
        manager.setDpi(96);
        QCOMPARE(manager.panelMetric(), (QList<int>{220, 0, 30}));

        const QPresetData* data = manager.preset("Test");
        QVERIFY(data);
        QCOMPARE((QStringList{data->stylesheet, data->iconset, data->colorset}), sets);
        QVERIFY(manager.apply("Base"));
        QVERIFY(manager.apply("Test"));
        QCOMPARE(manager.current(), QString("Test"));
        QCOMPARE(manager.panelMetric(), panel);
        QCOMPARE(manager.extraMetric(), extra);
    }

    void presetMetricScaling_data()
    {
        QTest::addColumn<int>("dpi");
        QTest::addColumn<QList<int>>("panel");
        QTest::newRow("120 truncates") << 120 << QList<int>{275, 0, 37};
    }

    void presetMetricScaling()
    {
        QFETCH(int, dpi);
        QFETCH(QList<int>, panel);

        QTemporaryDir appDir;
        writeFile(appDir.filePath("presets/Classic.xml"), "<preset/>");
        QPresetManager manager(appDir.path());
        manager.setDpi(dpi);
        QVERIFY(manager.apply("Classic"));
        QCOMPARE(manager.panelMetric(), panel);
        QCOMPARE(manager.extraMetric(), panel);
    }

    void presetTrees()
    {
        QTemporaryDir appDir;
        writeFile(appDir.filePath("presets/Layout.xml"),
                  "<preset><editor name=\"sprites\"><panel name=\"p\"><toolbar name=\"t\" "
                  "orientation=\"horizontal\">"
                  "<button name=\"spr_add\" flat=\"true\" position=\"1,2\"/><separator/>"
                  "<button name=\"spr_delete\"/></toolbar></panel><toolbar name=\"top\"/></editor>"
                  "<unknown name=\"sprites\"/><extra name=\"palettes\"><panel name=\"x\"/></extra></preset>");
        QPresetManager manager(appDir.path());
        QVERIFY(!manager.editor("sprites"));
        QVERIFY(manager.apply("Layout"));

        const QPresetElement* sprites = manager.editor("sprites");
        QVERIFY(sprites);
        QCOMPARE(sprites->children.size(), 2);
        const QPresetElement* panel = sprites->child("panel");
        QVERIFY(panel);
        const QPresetElement* toolbar = panel->child("toolbar", "t");
        QVERIFY(toolbar);
        QCOMPARE(toolbar->attribute("orientation"), QString("horizontal"));
        QCOMPARE(toolbar->children.size(), 3);
        const QPresetElement* add = toolbar->child("button", "spr_add");
        QVERIFY(add);
        QCOMPARE(add->attribute("position"), QString("1,2"));
        QCOMPARE(toolbar->children.at(1).tag, QString("separator"));
        QVERIFY(sprites->child("toolbar", "top"));

        QVERIFY(!manager.editor("palettes"));
        QVERIFY(manager.extra("palettes"));
        QVERIFY(!manager.extra("sprites"));
        QCOMPARE(manager.preset("Layout")->editors.size(), 2);
    }

    void presetApplyOrder()
    {
        QTemporaryDir dir;
        const QString appDir = dir.path();
        writeFile(appDir + "/presets/Night.xml",
                  "<preset stylesheet=\"Night\" iconset=\"Flat\" colorset=\"Dark\"/>");
        writeFile(appDir + "/presets/Classic.xml", "<preset/>");
        for (const char* set : {"Classic", "Flat"})
            writeFile(appDir + "/iconsets/" + set + "/Iconset.xml", "<iconset/>");
        for (const char* sheet : {"Classic", "Night"})
            writeFile(appDir + "/styles/" + sheet + "/Stylesheet.css", "QWidget { margin: [1]px; }");
        for (const char* set : {"Classic", "Dark"})
            writeFile(appDir + "/colorsets/" + set + ".xml", colorsetXml("<comment>1,2,3</comment>"));

        QPresetManager presets(appDir);
        QIconsetManager icons(appDir + "/iconsets");
        QStylesheetManager styles(appDir + "/styles");
        QColorsetManager colors(appDir + "/colorsets");
        presetManager = &presets;
        iconsetManager = &icons;
        stylesheetManager = &styles;
        colorsetManager = &colors;

        QStringList order;
        connect(&presets, &QPresetManager::presetChanged, this, [&] { order << presets.current(); });
        connect(&icons, &QIconsetManager::iconsetChanged, this, [&] { order << "icons:" + icons.current(); });
        connect(&styles, &QStylesheetManager::stylesheetChanged, this,
                [&] { order << "style:" + styles.current(); });
        connect(&colors, &QColorsetManager::colorsetChanged, this,
                [&] { order << "colors:" + colors.current(); });

        QVERIFY(presets.apply("Night", QString(), QString(), QString()));
        QCOMPARE(order, (QStringList{"Night", "icons:Flat", "style:Night", "colors:Dark"}));
        QVERIFY(!qApp->styleSheet().isEmpty());

        order.clear();
        QVERIFY(presets.apply("Night", "Classic", QString(), "Classic"));
        QCOMPARE(order, (QStringList{"Night", "icons:Classic", "style:Night", "colors:Classic"}));

        order.clear();
        QVERIFY(presets.apply("Classic", QString(), QString(), QString()));
        QCOMPARE(order, (QStringList{"Classic", "icons:Classic", "style:Classic", "colors:Classic"}));

        // An unknown preset changes nothing; an unknown set fails alone and the rest still applies.
        order.clear();
        QVERIFY(!presets.apply("Missing", "Flat", "Night", "Dark"));
        QVERIFY(order.isEmpty());
        QCOMPARE(presets.current(), QString("Classic"));
        QVERIFY(!presets.apply("Night", "Missing", QString(), QString()));
        QCOMPARE(order, (QStringList{"Night", "style:Night", "colors:Dark"}));
        QCOMPARE(icons.current(), QString("Classic"));
    }

    void iconsetIcons()
    {
        QTemporaryDir folder;
        QImage image(16, 16, QImage::Format_ARGB32);
        image.fill(Qt::red);
        QDir().mkpath(folder.filePath("Classic/images"));
        QVERIFY(image.save(folder.filePath("Classic/images/new.png")));
        writeFile(folder.filePath("Classic/Iconset.xml"),
                  "<iconset><icon name=\"file_new\" file=\"images/new.png\"/>"
                  "<icon name=\"file_open\" file=\"images/missing.png\"/><icon name=\"file_save\"/>"
                  "<group><icon name=\"file_close\" file=\"images/new.png\"/></group></iconset>");
        writeFile(folder.filePath("Empty/Iconset.xml"), "<iconset/>");

        QIconsetManager manager(folder.path());
        QSignalSpy changed(&manager, &QIconsetManager::iconsetChanged);
        QVERIFY(manager.icon("file_new").isNull());
        QVERIFY(manager.apply("Classic"));
        QCOMPARE(manager.current(), QString("Classic"));
        QCOMPARE(manager.icon("file_new").pixmap(16, 16).toImage().pixelColor(8, 8), QColor(Qt::red));
        QVERIFY(!manager.icon("file_close").isNull());
        QCOMPARE(manager.iconFile("file_new"), folder.filePath("Classic/images/new.png"));
        QVERIFY(manager.icon("file_open").isNull());
        QVERIFY(manager.icon("file_save").isNull());
        QVERIFY(manager.icon("unknown_action").isNull());

        QVERIFY(!manager.apply("Nothing"));
        QCOMPARE(manager.current(), QString("Classic"));
        QVERIFY(manager.apply("Empty"));
        QVERIFY(manager.icon("file_new").isNull());
        QVERIFY(manager.apply(QString()));
        QCOMPARE(manager.current(), QString());
        QCOMPARE(changed.count(), 3);
    }

    void stylesheetRewriting_data()
    {
        QTest::addColumn<QByteArray>("css");
        QTest::addColumn<int>("dpi");
        QTest::addColumn<QString>("expected");

        QTest::newRow("two urls") << QByteArray("a{image:url(a.png)} b{image:url(img/b.png)}") << 96
                                  << "a{image:url(styles/Sheet/a.png)} b{image:url(styles/Sheet/img/b.png)}";
        QTest::newRow("quoted url") << QByteArray("a{image:url(\"a b.png\")}") << 96
                                    << "a{image:url(\"styles/Sheet/a b.png\")}";
        QTest::newRow("size at 96") << QByteArray("a{width:[16]px; height:[0]px}") << 96
                                    << "a{width:16px; height:0px}";
        QTest::newRow("size at 144") << QByteArray("a{width:[16]px; margin:[3]px [5]px}") << 144
                                     << "a{width:24px; margin:4px 7px}";
        QTest::newRow("not a size") << QByteArray("a[flat=\"true\"]{width:[x]px; height:[]px}") << 144
                                    << "a[flat=\"true\"]{width:[x]px; height:[]px}";
    }

    void stylesheetRewriting()
    {
        QFETCH(QByteArray, css);
        QFETCH(int, dpi);
        QFETCH(QString, expected);

        QTemporaryDir folder;
        writeFile(folder.filePath("Sheet/Stylesheet.css"), css);
        QStylesheetManager manager(folder.path());
        manager.setDpi(dpi);
        QCOMPARE(manager.styleSheet("Sheet"), expected);
    }

    void stylesheetApply()
    {
        QTemporaryDir folder;
        writeFile(folder.filePath("Sheet/Stylesheet.css"), "QLabel { padding: [4]px; }");
        QStylesheetManager manager(folder.path());
        manager.setDpi(96);
        QSignalSpy changed(&manager, &QStylesheetManager::stylesheetChanged);

        QVERIFY(manager.apply("Sheet"));
        QCOMPARE(qApp->styleSheet(), QString("QLabel { padding: 4px; }"));
        QCOMPARE(manager.current(), QString("Sheet"));
        QVERIFY(!manager.apply("Missing"));
        QCOMPARE(qApp->styleSheet(), QString("QLabel { padding: 4px; }"));
        QVERIFY(manager.apply(QString()));
        QVERIFY(qApp->styleSheet().isEmpty());
        QCOMPARE(manager.current(), QString());
        QCOMPARE(changed.count(), 2);
    }

    void colorsetParsing_data()
    {
        QTest::addColumn<QByteArray>("element");
        QTest::addColumn<bool>("present");
        QTest::addColumn<QColor>("color");
        QTest::addColumn<bool>("bold");
        QTest::addColumn<bool>("italic");

        QTest::newRow("plain") << QByteArray("<string>163,21,21</string>") << true << QColor(163, 21, 21)
                               << false << false;
        QTest::newRow("italic") << QByteArray("<string italic=\"1\">255,255,255</string>") << true
                                << QColor(255, 255, 255) << false << true;
        QTest::newRow("both, false words")
            << QByteArray("<string bold=\"TRUE\" italic=\"false\">1,2,3</string>") << true << QColor(1, 2, 3)
            << true << false;
        QTest::newRow("outer blanks")
            << QByteArray("<string>\n  10,20,30\n</string>") << true << QColor(10, 20, 30) << false << false;
        QTest::newRow("two parts") << QByteArray("<string>10,20</string>") << false << QColor() << false
                                   << false;
        QTest::newRow("inner blanks")
            << QByteArray("<string>10, 20, 30</string>") << false << QColor() << false << false;
        QTest::newRow("four digits") << QByteArray("<string>1000,0,0</string>") << false << QColor() << false
                                     << false;
        QTest::newRow("above 255") << QByteArray("<string>256,0,0</string>") << false << QColor() << false
                                   << false;
        QTest::newRow("hex") << QByteArray("<string>#ff0000</string>") << false << QColor() << false << false;
    }

    void colorsetParsing()
    {
        QFETCH(QByteArray, element);
        QFETCH(bool, present);
        QFETCH(QColor, color);
        QFETCH(bool, bold);
        QFETCH(bool, italic);

        QTemporaryDir folder;
        writeFile(folder.filePath("Set.xml"), colorsetXml("<comment>9,9,9</comment>" + element +
                                                          "<unknown>1,1,1</unknown><number>7,7,7</number>"));
        QColorsetManager manager(folder.path());
        const QColorset set = manager.colorset("Set");
        QCOMPARE(set.contains("string"), present);
        QCOMPARE(set.value("comment").color, QColor(9, 9, 9));
        QCOMPARE(set.value("number").color, QColor(7, 7, 7));
        QVERIFY(!set.contains("unknown"));
        if (!present) return;
        QVERIFY(manager.apply("Set"));
        QCOMPARE(manager.color("string"), color);
        QCOMPARE(manager.entry("string").bold, bold);
        QCOMPARE(manager.entry("string").italic, italic);
    }

    void colorsetApplyTo()
    {
        QTemporaryDir folder;
        const QByteArray common =
            "<comment italic=\"true\">0,128,0</comment><number>0,128,128</number>"
            "<string>163,21,21</string><keyword>0,0,192</keyword><controller>0,0,128</controller>"
            "<trigger>0,96,160</trigger><value>128,64,0</value>";
        writeFile(folder.filePath("A.xml"), colorsetXml(common + "<block bold=\"true\">128,0,128</block>"));
        writeFile(folder.filePath("B.xml"), colorsetXml(common + "<block>128,0,128</block>"));
        writeFile(folder.filePath("C.xml"), colorsetXml(common + "<block>128,0,128</block>"));

        QColorsetManager manager(folder.path());
        QSyntaxFormats formats;
        QVERIFY(!manager.applyTo(formats));

        QVERIFY(manager.apply("A"));
        QVERIFY(!manager.colorset("A").contains("const"));
        QVERIFY(manager.applyTo(formats));
        QVERIFY(manager.colorset("A").contains("const"));
        QCOMPARE(formats[QSyntaxFormats::Constant].foreground().color(), QColor(0, 0, 0));
        QCOMPARE(formats[QSyntaxFormats::Constant].fontWeight(), int(QFont::Normal));
        QVERIFY(!formats[QSyntaxFormats::Constant].fontItalic());
        QCOMPARE(formats[QSyntaxFormats::Block].fontWeight(), int(QFont::Bold));
        QVERIFY(formats[QSyntaxFormats::Comment].fontItalic());
        // Each slot takes the colour of its own key.
        for (int slot = 0; slot < 9; ++slot)
            QCOMPARE(formats[slot].foreground().color(), manager.color(QSyntaxFormats::colorsetKey(slot)));
        QCOMPARE(formats[QSyntaxFormats::Comment].fontFamilies(), formats.font().families());

        QVERIFY(!manager.applyTo(formats));
        QVERIFY(manager.apply("B"));
        QVERIFY(manager.applyTo(formats));
        QCOMPARE(formats[QSyntaxFormats::Block].fontWeight(), int(QFont::Normal));
        QVERIFY(manager.apply("C"));
        QVERIFY(!manager.applyTo(formats));
        QVERIFY(!manager.apply("D"));
        QCOMPARE(manager.current(), QString("C"));
    }

    void colorsetModelAndCustom()
    {
        QTemporaryDir folder;
        writeFile(folder.filePath("Classic.xml"),
                  colorsetXml("<comment>0,128,0</comment><clsn2def>0,0,255</clsn2def>"));
        QColorsetManager manager(folder.path());
        QCOMPARE(manager.rowCount(), 19);
        QVERIFY(manager.apply("Classic"));

        const QModelIndex comment = manager.index(0);
        QCOMPARE(comment.data().toString(), QString("Comments"));
        QCOMPARE(comment.data(QColorsetManager::KeyRole).toString(), QString("comment"));
        QCOMPARE(comment.data(Qt::DecorationRole).value<QColor>(), QColor(0, 128, 0));

        QSignalSpy changed(&manager, &QAbstractItemModel::dataChanged);
        QVERIFY(manager.setData(comment, QColor(1, 2, 3)));
        QVERIFY(manager.setData(comment, true, QColorsetManager::BoldRole));
        QVERIFY(!manager.setData(comment, QColor()));
        QCOMPARE(changed.count(), 2);
        QCOMPARE(manager.color("comment"), QColor(1, 2, 3));

        QVERIFY(manager.saveCustom());
        QCOMPARE(manager.current(), QString("Custom"));
        QVERIFY(QFileInfo::exists(manager.customFile()));

        QColorsetManager reread(folder.path());
        QCOMPARE(reread.names(), (QStringList{"Classic", "Custom"}));
        QCOMPARE(reread.colorset("Custom"), manager.colorset("Custom"));
        QVERIFY(reread.colorset("Custom").value("comment").bold);
        QCOMPARE(reread.colorset("Custom").value("clsn2def").color, QColor(0, 0, 255));
        QCOMPARE(reread.colorset("Classic").value("comment").color, QColor(0, 128, 0));
    }

    void languageApply()
    {
        QTemporaryDir folder;
        writeFile(folder.filePath("en-us/info.xml"), "<language><name>English</name></language>");
        writeFile(folder.filePath("de/info.xml"),
                  "<language><name>Deutsch</name><author>A. "
                  "Autor</author><contact>a@example.org</contact></language>");
        writeFile(folder.filePath("de/tavrel_de.qm"),
                  qmFile("QInterface", "Close", QStringLiteral("Schließen")));
        writeFile(folder.filePath("de/broken.qm"), "not a translation");

        QLanguageManager manager(qApp, folder.path());
        QCOMPARE(manager.info("de").author, QString("A. Autor"));
        QSignalSpy changed(&manager, &QLanguageManager::langChanged);

        QVERIFY(manager.apply("de"));
        QCOMPARE(changed.count(), 1);
        QCOMPARE(manager.current(), QString("de"));
        QCOMPARE(manager.installedFiles(), QStringList{folder.filePath("de/tavrel_de.qm")});
        QCOMPARE(QCoreApplication::translate("QInterface", "Close"), QStringLiteral("Schließen"));

        QVERIFY(manager.apply("de"));
        QCOMPARE(changed.count(), 2);
        QCOMPARE(manager.installedFiles().size(), 1);

        QVERIFY(!manager.apply("xx"));
        QCOMPARE(changed.count(), 2);
        QCOMPARE(manager.current(), QString("de"));

        QVERIFY(manager.apply("en-us"));
        QCOMPARE(changed.count(), 3);
        QVERIFY(manager.installedFiles().isEmpty());
        QCOMPARE(QCoreApplication::translate("QInterface", "Close"), QString("Close"));
    }

    void shippedData()
    {
        const QString appDir = shippedDataDir();
        QVERIFY2(QDir(appDir + "/presets").exists(), qPrintable(appDir));

        QPresetManager presets(appDir);
        QIconsetManager icons(appDir + "/iconsets");
        QStylesheetManager styles(appDir + "/styles");
        QLanguageManager languages(qApp, appDir + "/languages");
        QColorsetManager colors(appDir + "/colorsets");
        QVERIFY(presets.names().contains("Classic"));
        QVERIFY(icons.names().contains("Classic"));
        QVERIFY(styles.names().contains("Classic"));
        QVERIFY(colors.names().contains("Classic"));
        QVERIFY(languages.names().contains("en-us"));
        QVERIFY(QFileInfo::exists(appDir + "/languages/en-us/info.xml"));

        presetManager = &presets;
        iconsetManager = &icons;
        stylesheetManager = &styles;
        colorsetManager = &colors;
        QVERIFY(languages.apply("en-us"));
        QVERIFY(presets.apply("Classic", QString(), QString(), QString()));
        QCOMPARE(icons.current(), QString("Classic"));
        QCOMPARE(styles.current(), QString("Classic"));
        QCOMPARE(colors.current(), QString("Classic"));
        QVERIFY(!styles.styleSheet("Classic").contains("["));

        // Every key of every shipped set is spelled out, so nothing falls back to black.
        for (const QString& name : colors.names()) {
            const QColorset set = colors.colorset(name);
            for (const QString& key : QColorsetManager::keys())
                QVERIFY2(set.contains(key), qPrintable(name + ": " + key));
        }
        for (const char* action : {"file_new", "file_open", "file_save"})
            QVERIFY2(!icons.icon(action).isNull(), action);
    }
};

QTEST_MAIN(tst_AppearanceManagers)
#include "tst_AppearanceManagers.moc"
