// QDefinitions: sections and keys of definitions files, the project facts read from them, binding of
// parameters to sections while the text changes, and files written back in their own format.

#include "ParamTestSupport.h"
#include "QDialogRecorder.h"
#include "QProjectContext.h"
#include "TestData.h"
#include "TestElements.h"

#include <QRandomGenerator>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBlock>
#include <QTextCodec>

Q_DECLARE_METATYPE(QProjectType)

class tst_Definitions : public QObject
{
    Q_OBJECT

    QTemporaryDir dir;

    static QString lineOf(const QDefinitions& definitions, int number)
    {
        return definitions.document->findBlockByNumber(number).text();
    }

    static void type(QElementTextEditor& editor, int position, const QString& text)
    {
        QTextCursor cursor(editor.document);
        cursor.setPosition(position);
        cursor.insertText(text);
    }

    static void removeLine(QElementTextEditor& editor, int number)
    {
        QTextCursor cursor(editor.document->findBlockByNumber(number));
        cursor.movePosition(QTextCursor::NextBlock, QTextCursor::KeepAnchor);
        cursor.removeSelectedText();
    }

private Q_SLOTS:
    void initTestCase()
    {
        qRegisterMetaType<QProjectContext*>();
        registerTextElements();
    }
    void cleanupTestCase() { unregisterTextElements(); }

    void reading_data();
    void reading();
    void fileLists_data();
    void fileLists();
    void duplicatesTakeOver();
    void retypedKeyChangesSlot();
    void signalsFollowTyping();
    void settersWriteTheirLine();
    void canDiscardAsks();
    void realFiles_data();
    void realFiles();
    void realCharacters_data();
    void realCharacters();
    void formatsKeepTheirBytes_data();
    void formatsKeepTheirBytes();
    void editKeepsLineEnds();
    void failedSaveLeavesFile();
    void randomEdits_data();
    void randomEdits();
};

void tst_Definitions::reading_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("name");
    QTest::addColumn<uint>("version");
    QTest::addColumn<QPoint>("localCoord");
    QTest::addColumn<QProjectType>("type");
    // Without a version line the version is 1.1 and the coordinates are 320 by 240.
    auto row = [](const char* name, const char* text, const char* title, QProjectType type = Character,
                  uint version = 0x1010000u) {
        QTest::newRow(name) << text << title << version << QPoint(320, 240) << type;
    };
    QTest::newRow("character")
        << "[Info]\nname = \"Kung Fu Man\" ;Name\nmugenversion = 1.0\nlocalcoord = 1280,720\n"
        << "Kung Fu Man" << 0x1000000u << QPoint(1280, 720) << Character;
    row("any case", "[INFO]\nNAME = \"K\"\nMugenVersion = 1.1", "K");
    row("section with a word more", "[Info 2]\nname = \"K\"", "");
    row("unquoted name", "[Info]\nname = Kung Fu", "");
    row("date as version", "[Info]\nmugenversion = 04,14,2002", "", Character, 0);
    row("empty version", "[Info]\nmugenversion =", "", Character, 0);
    row("three numbers", "[Info]\nlocalcoord = 320, 240, 1\n[Info]\nlocalcoord = 1,2", "");
    row("comment naming the next section", "[Info]\nmugenversion = 1.1 ;v\n[Files]", "");
    row("second info ignored", "[Info]\nname = \"A\"\n[Info]\nname = \"B\"", "A");
    row("stage", "[Info]\nname = \"S\"\n[BGdef]\nspr = s.sff", "S", Stage);
    row("storyboard", "[SceneDef]\nspr = i.sff\n[BGDef]", "", Stage);
    row("font", "[FNT v2]\n[Def]\nfile = f.sff", "", Font);
    row("system", "[Files]\n[TitleBGdef]\n[Select Info]", "", SystemScreen);
    row("fight", "[Files]\n[Lifebar]", "", FightFX);
    row("scene before def", "[Def]\n[SceneDef]", "", Storyboard);
}

void tst_Definitions::reading()
{
    QFETCH(QString, text);
    QDefinitions definitions;
    definitions.setPlainText(text);
    QTEST(definitions.name(), "name");
    QTEST(uint(definitions.version()), "version");
    QTEST(definitions.localCoord(), "localCoord");
    QTEST(definitions.type(), "type");
    QCOMPARE(checkParamBinding(definitions), QString());
}

void tst_Definitions::fileLists_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("sprite");
    QTest::addColumn<QString>("others");
    QTest::addColumn<QStringList>("states");

    // Others: animation, sound, commands and the first two palettes.
    auto row = [](const char* name, const char* text, const char* sprite, const char* others = "||||",
                  const QStringList& states = QStringList()) {
        QTest::newRow(name) << text << sprite << others << states;
    };
    row("character",
        "[Files]\ncmd = k.cmd\ncns = k.cns\nst = k.cns\nstcommon = common1.cns\nsprite = k.sff\nanim = "
        "k.air\n"
        "sound = k.snd\npal1 = a.act\npal12 = l.act\npal13 = m.act\nst2 = more.st",
        "k.sff", "k.air|k.snd|k.cmd|a.act|l.act", {"k.cns", "common1.cns", "more.st"});
    row("backslashes and blanks", "[Files]\nsprite = my chars\\kfm.sff ;comment\nanim = \"q a.air\"",
        "my chars/kfm.sff", "q a.air||||");
    row("last sprite key wins", "[Files]\nsff = a.sff\nspr = b.sff", "b.sff");
    row("empty value", "[Files]\nsprite =\nanim = a.air", "", "a.air||||");
    row("two files sections", "[Files]\nsprite = a.sff\n[Files]\nsprite = b.sff\nanim = b.air", "a.sff");
    row("keys outside a section", "sprite = a.sff\n[Palette Keymap]\nsprite = b.sff", "");
    row("stage folder cut", "[BGDef]\nspr = Stages\\kfm.sff", "kfm.sff");
    row("stage leading slash", "[BGDef]\nspr = /stages/a/kfm.sff", "a/kfm.sff");
    row("stage other folder", "[BGDef]\nspr = mystages/kfm.sff", "mystages/kfm.sff");
    row("storyboard", "[Info]\n[SceneDef]\nspr = intro.sff\n[Files]\nsprite = no.sff", "intro.sff");
    row("font", "[FNT v2]\n[Def]\nType = bitmap\nfile = f\\num.sff", "f/num.sff");
}

void tst_Definitions::fileLists()
{
    QFETCH(QString, text);
    QFETCH(QString, others);
    QDefinitions definitions;
    definitions.setPlainText(text);
    const QDefinitionFiles files = definitions.files();
    QTEST(files.sprite, "sprite");
    QStringList pals;
    for (const QString& palette : files.palettes)
        if (!palette.isEmpty()) pals << palette;
    const QString got =
        QStringList{files.animation, files.sound, files.commands, pals.value(0), pals.value(1)}.join(
            QLatin1Char('|'));
    QCOMPARE(got, others);
    QTEST(files.states, "states");
}

void tst_Definitions::duplicatesTakeOver()
{
    QDefinitions definitions;
    definitions.setPlainText("[Files]\nsprite = a.sff\nsprite = b.sff\n[Files]\nsprite = c.sff\n");
    QCOMPARE(definitions.files().sprite, QStringLiteral("a.sff"));
    removeLine(definitions, 1);
    QCOMPARE(definitions.files().sprite, QStringLiteral("b.sff"));
    QCOMPARE(checkParamBinding(definitions), QString());
    removeLine(definitions, 0);
    // The keys of the removed section now stand outside any: the second section is the one that counts.
    QCOMPARE(definitions.files().sprite, QStringLiteral("c.sff"));
    QCOMPARE(checkParamBinding(definitions), QString());
    type(definitions, 0, QStringLiteral("[Files]\n"));
    QCOMPARE(definitions.files().sprite, QStringLiteral("b.sff"));
    // A key typed above the live one of its id takes over.
    type(definitions, QStringLiteral("[Files]\n").size(), QStringLiteral("sprite = z.sff\n"));
    QCOMPARE(definitions.files().sprite, QStringLiteral("z.sff"));
    QCOMPARE(checkParamBinding(definitions), QString());
}

void tst_Definitions::retypedKeyChangesSlot()
{
    QDefinitions definitions;
    definitions.setPlainText("[Files]\npal1 = a.act\npal2 = b.act\n");
    QCOMPARE(definitions.files().pal(1), QStringLiteral("a.act"));
    // "pal1" to "pal3": the line keeps its element, which now stands for palette 3.
    QTextCursor cursor(definitions.document->findBlockByNumber(1));
    cursor.setPosition(cursor.position() + 3);
    cursor.deleteChar();
    cursor.insertText(QStringLiteral("3"));
    const QDefinitionFiles files = definitions.files();
    QCOMPARE(files.pal(1), QString());
    QCOMPARE(files.pal(2), QStringLiteral("b.act"));
    QCOMPARE(files.pal(3), QStringLiteral("a.act"));
    QCOMPARE(checkParamBinding(definitions), QString());
}

void tst_Definitions::signalsFollowTyping()
{
    QDefinitions definitions;
    QSignalSpy names(&definitions, &QDefinitions::nameChanged);
    QSignalSpy versions(&definitions, &QDefinitions::versionChanged);
    QSignalSpy types(&definitions, &QDefinitions::typeChanged);
    definitions.setPlainText("[Info]\nname = \"A\"\n");
    QCOMPARE(names.count(), 1);
    QCOMPARE(names.last().at(1).toString(), QStringLiteral("A"));
    type(definitions, definitions.document->characterCount() - 1, QStringLiteral("mugenversion = 1.0"));
    QCOMPARE(versions.count(), 1);
    QCOMPARE(definitions.version(), 0x1000000u);
    QVERIFY(definitions.versionTimer.isActive());
    type(definitions, definitions.document->characterCount() - 1, QStringLiteral("\n[BGDef]"));
    QCOMPARE(types.count(), 1);
    QCOMPARE(definitions.type(), Stage);
    // Removing the header leaves its keys unbound: the name is gone.
    removeLine(definitions, 0);
    QCOMPARE(definitions.name(), QString());
    QCOMPARE(definitions.version(), QDefinitions::defaultVersion);
    QCOMPARE(names.count(), 2);
}

void tst_Definitions::settersWriteTheirLine()
{
    QDefinitions definitions;
    definitions.setPlainText("[Info]\nname = \"A\" ; comment\n[Files]\nsprite = a.sff\n");
    int updates = 0;
    connect(&definitions, &QElementTextEditor::update, this, [&updates] { ++updates; });
    auto* name = static_cast<QStringParam*>(definitions.singletonGroup(Info)->find(gpName));
    name->setValue(QStringLiteral("Kung Fu Man"));
    QCOMPARE(lineOf(definitions, 1), QStringLiteral("name = \"Kung Fu Man\""));
    auto* sprite = static_cast<QFileParam*>(definitions.singletonGroup(Files)->find(gpSprite));
    sprite->setValue(QStringLiteral("chars/k.sff"));
    QCOMPARE(lineOf(definitions, 3), QStringLiteral("sprite = chars/k.sff"));
    QCOMPARE(updates, 0);
    QCOMPARE(definitions.files().sprite, QStringLiteral("chars/k.sff"));
    definitions.singletonGroup(Files)->setName(QStringLiteral("The files"));
    QCOMPARE(lineOf(definitions, 2), QStringLiteral("; The files"));
    QVERIFY(definitions.isModified());
}

void tst_Definitions::canDiscardAsks()
{
    QDialogRecorder dialogs;
    QDefinitions definitions;
    definitions.setPlainText("[Info]");
    QVERIFY(definitions.canDiscard()); // never saved: nothing to ask
    const QString path = dir.filePath(QStringLiteral("discard.def"));
    QVERIFY(writeBytes(path, "[Info]\n"));
    QVERIFY(definitions.fromFile(path, 0));
    QVERIFY(definitions.canDiscard());
    QVERIFY(dialogs.calls.isEmpty());
    type(definitions, 0, QStringLiteral(";"));
    dialogs.answers.enqueue(QUserDialogs::No);
    QVERIFY(!definitions.canDiscard());
    dialogs.answers.enqueue(QUserDialogs::Yes);
    QVERIFY(definitions.canDiscard());
    QCOMPARE(dialogs.calls.size(), 2);
    QCOMPARE(dialogs.calls.at(0).title, QStringLiteral("Discard changes"));
    QCOMPARE(dialogs.calls.at(0).text,
             QStringLiteral("Do you really want to discard the changes made in the definitions?"));
    QCOMPARE(dialogs.calls.at(0).defaultButton, QUserDialogs::No);
}

void tst_Definitions::realFiles_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QProjectType>("expected");
    for (const QString& path : TestData::files({QStringLiteral("*.def")})) {
        const QString relative = QDir(TestData::root()).relativeFilePath(path);
        const QString name = QFileInfo(path).fileName().toLower();
        QProjectType kind = Character;
        if (relative.contains(QLatin1String("/font/")) || relative.contains(QLatin1String("/fonts/")))
            kind = Font;
        else if (relative.contains(QLatin1String("/stages/")) &&
                 !relative.contains(QLatin1String("attachedchar")))
            kind = Stage;
        else if (name == QLatin1String("system.def"))
            kind = SystemScreen;
        else if (name == QLatin1String("fight.def"))
            kind = FightFX;
        else if (name == QLatin1String("intro.def") || name == QLatin1String("ending.def") ||
                 (relative.contains(QLatin1String("data/kfm/")) && name != QLatin1String("select.def")))
            kind = Storyboard;
        QTest::newRow(qPrintable(relative)) << path << kind;
    }
}

void tst_Definitions::realFiles()
{
    TAVREL_REQUIRE_TESTDATA();
    QFETCH(QString, path);
    QDefinitions definitions;
    QVERIFY(definitions.fromFile(path, 0));
    QTEST(definitions.type(), "expected");
    QCOMPARE(definitions.baseDirectory(), QFileInfo(path).absolutePath());
    QVERIFY(!definitions.isModified());
    QCOMPARE(checkInvariants(definitions), QString());
    QCOMPARE(checkParamBinding(definitions), QString());
    // Every non-character kind names its sprite file, and a stage's name has lost its folder.
    const QDefinitionFiles files = definitions.files();
    if (definitions.type() != Character) {
        QVERIFY2(!files.sprite.isEmpty(), "no sprite file");
        QVERIFY(!files.sprite.contains(QLatin1Char('\\')));
        QVERIFY(!files.sprite.startsWith(QLatin1String("stages/"), Qt::CaseInsensitive));
    }
    const QString copy = dir.filePath(QStringLiteral("copy.def"));
    QVERIFY(definitions.toFile(copy, true));
    QCOMPARE(readBytes(copy), readBytes(path));
    QCOMPARE(definitions.filePath(), QFileInfo(path).absoluteFilePath());
}

void tst_Definitions::realCharacters_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("name");
    QTest::addColumn<uint>("version");
    QTest::addColumn<QStringList>("files");
    QTest::addColumn<QStringList>("palettes");
    QTest::addColumn<QStringList>("states");

    const QStringList none(12, QString());
    QTest::newRow("kfm") << "elecbyte-mugen11/chars/kfm/kfm.def"
                         << "Kung Fu Man" << 0x1000000u
                         << QStringList{"kfm.sff", "kfm.air", "kfm.snd", "kfm.cmd"} << none
                         << QStringList{"kfm.cns", "common1.cns"};
    QTest::newRow("kfm720") << "elecbyte-mugen11/chars/kfm720/kfm720.def"
                            << "Kung Fu Man 720" << 0x1000000u
                            << QStringList{"kfm720.sff", "kfm720.air", "kfm.snd", "kfm720.cmd"} << none
                            << QStringList{"kfm720.cns", "common1.cns"};
    QStringList catwalk;
    for (const char* name : {"Default", "GreenFill", "RedFill", "TealFill", "YellowFill", "PinkFill",
                             "PurpleFill", "MagentaFill", "OrangeFill", "", "", "GreyFill"})
        catwalk << (*name ? QStringLiteral("Palettes/%1.act").arg(QLatin1String(name)) : QString());
    QTest::newRow("Catwalk") << "ikemen-go-2019/chars/Catwalk/Catwalk.def"
                             << "Catwalk" << 0x1000000u
                             << QStringList{"Sprite.sff", "Anim.air", "Sound.snd", "Command.cmd"} << catwalk
                             << QStringList{"Constants.cns", "States.st", "CONFIG.txt", "common1.cns"};
    QTest::newRow("Training") << "ikemen-go-2019/chars/training/Training.def"
                              << "Training" << 0u
                              << QStringList{"Training.sff", "Training.air", "Training.snd", "Training.cmd"}
                              << QStringList(12, QStringLiteral("01.act"))
                              << QStringList{"Training.cns", "config.txt", "common1.cns"};
    QTest::newRow("attached char") << "ikemen-screenpack/stages/attachedchar/interactivestagechar.def"
                                   << "Attached Char for Interactive Stage" << 0x1010000u
                                   << QStringList{"InteractiveStage.sff", "InteractiveStage.air",
                                                  "InteractiveStage.snd", ""}
                                   << none << QStringList{"common1.cns", "InteractiveStage.zss"};
}

void tst_Definitions::realCharacters()
{
    TAVREL_REQUIRE_TESTDATA();
    QFETCH(QString, path);
    QDefinitions definitions;
    QVERIFY(definitions.fromFile(TestData::root() + QLatin1Char('/') + path, 0));
    QCOMPARE(definitions.type(), Character);
    QTEST(definitions.name(), "name");
    QTEST(uint(definitions.version()), "version");
    const QDefinitionFiles files = definitions.files();
    QTEST((QStringList{files.sprite, files.animation, files.sound, files.commands}), "files");
    QTEST(QStringList(files.palettes.begin(), files.palettes.end()), "palettes");
    QTEST(files.states, "states");
}

void tst_Definitions::formatsKeepTheirBytes_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("codec");
    QTest::addColumn<QString>("name");

    QTextCodec* cp1252 = QTextCodec::codecForName("windows-1252");
    QTextCodec* gbk = QTextCodec::codecForName("GBK");
    const QString french = QStringLiteral("Frédéric le Pâtissier à la crème");
    const QString chinese = QStringLiteral("功夫男人 角色 定义 文件 中文 名字 测试");
    const QString comment =
        QStringLiteral("; Définition du personnage, créé à Noël, éàèùç — «très» célèbre\n");
    const QString chineseComment =
        QStringLiteral("; 这是一个角色定义文件，用于测试编码。人物的名字是中文的。\n");
    QTest::newRow("cp1252") << cp1252->fromUnicode(comment + "[Info]\r\nname = \"" + french +
                                                   "\"\r\nauthor = \"Hélène\u00a0Noël\"\r\n")
                            << "windows-1252" << french;
    QTest::newRow("gbk") << gbk->fromUnicode(chineseComment + "[Info]\nname = \"" + chinese + "\"\n[Files]\n")
                         << "GBK" << chinese;
    QTest::newRow("utf8 bom, no last line end")
        << QByteArray("\xEF\xBB\xBF[Info]\nname = \"K\xC3\xA9\"  \n\t\n[Files]  ;x") << "UTF-8"
        << "Ké";
    QTest::newRow("mixed line ends") << QByteArray("[Info]\r\nname = \"A\"\n\r[Files]\r\n\r\n") << ""
                                     << "A";
    QTest::newRow("old mac line ends") << QByteArray("[Info]\rname = \"A\"\r") << ""
                                       << "A";
    QTest::newRow("empty") << QByteArray() << ""
                           << "";
}

void tst_Definitions::formatsKeepTheirBytes()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, codec);
    const QString path = dir.filePath(QStringLiteral("format.def"));
    QVERIFY(writeBytes(path, bytes));
    QDefinitions definitions;
    const int wanted = codec.isEmpty() ? 0 : QTextEncoding::codecIndex(codec.toLatin1());
    QVERIFY(definitions.fromFile(path, uint(wanted)));
    QTEST(definitions.name(), "name");
    QVERIFY(definitions.save());
    QCOMPARE(readBytes(path), bytes);
}

void tst_Definitions::editKeepsLineEnds()
{
    const QString path = dir.filePath(QStringLiteral("crlf.def"));
    QVERIFY(writeBytes(path, "[Info]\r\nname = \"A\"\r\n"));
    QDefinitions definitions;
    QVERIFY(definitions.fromFile(path, 0));
    static_cast<QStringParam*>(definitions.singletonGroup(Info)->find(gpName))->setValue(QStringLiteral("B"));
    QVERIFY(definitions.isModified());
    QVERIFY(definitions.save());
    QVERIFY(!definitions.isModified());
    QCOMPARE(readBytes(path), QByteArray("[Info]\r\nname = \"B\"\r\n"));
}

void tst_Definitions::failedSaveLeavesFile()
{
    QDefinitions definitions;
    definitions.setPlainText("[Info]");
    const QString missing = dir.filePath(QStringLiteral("no/such/folder/a.def"));
    QVERIFY(!definitions.toFile(missing));
    QVERIFY(!QFile::exists(missing));
    QVERIFY(definitions.isModified() || definitions.filePath().isEmpty());
    QCOMPARE(definitions.filePath(), QString());
    // A folder in the way of the file: the save fails and the folder stays.
    const QString folder = dir.filePath(QStringLiteral("taken.def"));
    QVERIFY(QDir().mkpath(folder));
    QVERIFY(!definitions.toFile(folder));
    QVERIFY(QFileInfo(folder).isDir());
    QVERIFY(!definitions.save());
}

void tst_Definitions::randomEdits_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<quint32>("seed");
    for (const char* file : {"elecbyte-mugen11/chars/kfm/kfm.def",
                             "ikemen-go-2019/chars/training/Training.def", "elecbyte-mugen11/stages/kfm.def"})
        for (quint32 seed : {3u, 77u})
            QTest::newRow(qPrintable(QStringLiteral("%1 %2").arg(QLatin1String(file)).arg(seed)))
                << QString::fromLatin1(file) << seed;
}

void tst_Definitions::randomEdits()
{
    TAVREL_REQUIRE_TESTDATA();
    QFETCH(QString, path);
    QFETCH(quint32, seed);
    QRandomGenerator random(seed);
    const QStringList pieces = {"[",      "]",   "Files",          "Info", "[BGDef]", "\n",  "\n\n",
                                "sprite", " = ", "pal3",           "st",   "\"",      "; c", "a.sff",
                                "1.1",    ",",   "name = \"X\"\n", "x"};
    const QStringList lines = {"[Files]",
                               "[Info]",
                               "sprite = s%1.sff",
                               "pal%1 = p.act",
                               "name = \"n%1\"",
                               "mugenversion = 1.%1",
                               "localcoord = %1, 2",
                               "; c%1",
                               "",
                               "[Other %1]",
                               "st%1 = s.st",
                               "spr = x%1.sff"};
    auto line = [&](int number) {
        const QString text = lines.at(int(random.bounded(int(lines.size()))));
        return text.contains(QLatin1String("%1")) ? text.arg(number % 13) : text;
    };

    QDefinitions definitions;
    QVERIFY(definitions.fromFile(TestData::root() + QLatin1Char('/') + path, 0));
    definitions.document->setUndoRedoEnabled(true);
    QChangeRecorder recorder(definitions);
    recorder.live.clear();
    for (QTextElement* element = definitions.firstElement; element; element = element->next)
        recorder.live.insert(element);
    QDefinitions fresh;

    for (int step = 0; step < 300; ++step) {
        const int length = definitions.document->characterCount() - 1;
        QTextCursor cursor(definitions.document);
        cursor.setPosition(int(random.bounded(length + 1)));
        switch (random.bounded(8)) {
        case 0:
        case 1:
            cursor.insertText(pieces.at(int(random.bounded(int(pieces.size())))));
            break;
        case 2:
            cursor.setPosition(qMin(length, cursor.position() + int(random.bounded(60)) + 1),
                               QTextCursor::KeepAnchor);
            cursor.removeSelectedText();
            break;
        case 3: {
            QStringList paste;
            for (int n = int(random.bounded(4)); n >= 0; --n)
                paste << line(int(random.bounded(100)));
            cursor.insertText(paste.join(QLatin1Char('\n')));
            break;
        }
        case 4:
            definitions.document->undo();
            break;
        default: {
            QList<QTextElement*> elements;
            for (QTextElement* element = definitions.firstElement; element; element = element->next)
                elements << element;
            if (elements.isEmpty()) break;
            QTextElement* element = elements.at(int(random.bounded(int(elements.size()))));
            switch (random.bounded(3)) {
            case 0:
                element->remove();
                break;
            case 1:
                definitions.insertLineAfter(element, line(step), random.bounded(2) == 0);
                break;
            default:
                if (element->type() == etGroupParam && element->subType() == pkString)
                    static_cast<QStringParam*>(element)->setValue(QStringLiteral("v%1").arg(step));
                else if (element->type() == etGroupParam && element->subType() == pkFile)
                    static_cast<QFileParam*>(element)->setValue(QStringLiteral("f%1.x").arg(step));
                else if (element->flags() & etSection)
                    static_cast<QGroupHeader*>(element)->setName(QStringLiteral("n%1").arg(step));
                break;
            }
        }
        }
        const QString where = QStringLiteral("step %1").arg(step);
        QVERIFY2(checkInvariants(definitions).isEmpty(),
                 qPrintable(where + ": " + checkInvariants(definitions)));
        QVERIFY2(checkParamBinding(definitions).isEmpty(),
                 qPrintable(where + ": " + checkParamBinding(definitions)));
        QVERIFY2(recorder.checkLive().isEmpty(), qPrintable(where + ": " + recorder.checkLive()));
        fresh.setPlainText(definitions.text());
        QCOMPARE(describeModel(definitions), describeModel(fresh));
        QCOMPARE(definitions.name(), fresh.name());
        QCOMPARE(definitions.version(), fresh.version());
        QCOMPARE(definitions.localCoord(), fresh.localCoord());
        QCOMPARE(definitions.type(), fresh.type());
        QCOMPARE(definitions.files().sprite, fresh.files().sprite);
        QCOMPARE(definitions.files().states, fresh.files().states);
    }
}

QTEST_GUILESS_MAIN(tst_Definitions)
#include "tst_Definitions.moc"
