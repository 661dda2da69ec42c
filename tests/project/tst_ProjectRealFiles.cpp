// Every project of the real content: it opens with the right kind, saves back everything (not only
// what changed) into a copy of the content, and opens again to the same models; text files come back
// byte for byte.

#include "FileBytes.h"
#include "QAnimations.h"
#include "QCodecList.h"
#include "QCommands.h"
#include "QDefinitions.h"
#include "QDialogRecorder.h"
#include "QMugenModel.h"
#include "QProject.h"
#include "QSound.h"
#include "QSounds.h"
#include "QSprite.h"
#include "QSpritePalette.h"
#include "QSprites.h"
#include "QSyntaxTextEditor.h"
#include "QTextElementRegistry.h"
#include "QTextEncoding.h"
#include "TestData.h"

#include <QDirIterator>
#include <QTemporaryDir>
#include <QTest>
#include <QTextCodec>

namespace {

// The kind a definitions file stands for, by where the engine keeps it and what it is called.
QProjectType expectedType(const QString& relative)
{
    const QString name = QFileInfo(relative).fileName().toLower();
    if (relative.contains(QLatin1String("/font")) || relative.contains(QLatin1String("/fonts/"))) return Font;
    if (name == QLatin1String("system.def")) return SystemScreen;
    if (name == QLatin1String("fight.def")) return FightFX;
    if (name.contains(QLatin1String("intro")) || name.contains(QLatin1String("ending")) ||
        name.contains(QLatin1String("credits")) || name.contains(QLatin1String("gameover")) ||
        (name == QLatin1String("logo.def") && relative.contains(QLatin1String("data/kfm"))))
        return Storyboard;
    if (relative.contains(QLatin1String("/stages/")) && !relative.contains(QLatin1String("attachedchar")))
        return Stage;
    return Character;
}

QString imageKey(const QImage& image)
{
    quint32 sum = 0;
    const int bytes = image.width() * image.depth() / 8;
    for (int y = 0; y < image.height(); ++y)
        sum = sum * 31 + qChecksum(QByteArrayView(image.constScanLine(y), bytes));
    return QStringLiteral("%1x%2/%3/%4")
        .arg(image.width())
        .arg(image.height())
        .arg(int(image.format()))
        .arg(sum);
}

// What the models hold, line by line, so that a difference names its place.
QStringList fingerprint(const QProject& project)
{
    QStringList lines;
    const QSprites* sprites = project.sprites();
    for (const QSpritePalette* palette : sprites->paletteItems()) {
        const QVector<uint> colours = palette->colors();
        lines << QStringLiteral("pal %1,%2 %3")
                     .arg(palette->itemGroup())
                     .arg(palette->itemIndex())
                     .arg(qHashRange(colours.cbegin(), colours.cend()));
    }
    for (const QSprite* sprite : sprites->spriteItems())
        lines << QStringLiteral("spr %1,%2 %3,%4 %5 %6")
                     .arg(sprite->itemGroup())
                     .arg(sprite->itemIndex())
                     .arg(sprite->offsetX())
                     .arg(sprite->offsetY())
                     .arg(sprite->palette() ? sprites->paletteIndexOf(sprite->palette()) : -1)
                     .arg(imageKey(sprite->image(QSpriteImagePalette::None)));
    for (uint i = 0; i < project.sounds()->count(); ++i)
        lines << QStringLiteral("snd %1,%2 %3")
                     .arg(project.sounds()->at(i)->group)
                     .arg(project.sounds()->at(i)->sample)
                     .arg(qHash(project.sounds()->bytes(i)));
    lines << QStringLiteral("air ") + project.animationText()->text();
    lines << QStringLiteral("cmd ") + project.commands()->text();
    for (int i = 0; i < project.statesCount(); ++i)
        lines << QStringLiteral("st ") + project.states(i)->text();
    return lines;
}

} // namespace

class tst_ProjectRealFiles : public QObject
{
    Q_OBJECT

    QTemporaryDir copy;

private slots:
    void initTestCase()
    {
        registerTextElements();
        const QString root = TestData::root();
        if (root.isEmpty()) return;
        QDirIterator it(root, QDir::Files, QDirIterator::Subdirectories);
        while (it.hasNext()) {
            const QString source = it.next();
            const QString target = copy.filePath(QDir(root).relativeFilePath(source));
            QDir().mkpath(QFileInfo(target).absolutePath());
            QVERIFY(QFile::copy(source, target));
        }
    }

    void saveAndReopen_data()
    {
        QTest::addColumn<QString>("relative");
        const QString root = TestData::root();
        for (const QString& path : TestData::files({"*.def"}))
            QTest::newRow(qPrintable(QDir(root).relativeFilePath(path))) << QDir(root).relativeFilePath(path);
    }

    void saveAndReopen()
    {
        TAVREL_REQUIRE_TESTDATA();
        QFETCH(QString, relative);
        QDialogRecorder dialogs;
        QMugenModel settings;
        settings[QStringLiteral("save_only_modified")] = false;
        mugenModel = &settings;
        const QString path = copy.filePath(relative);

        QStringList before;
        QStringList textFiles;
        {
            QProject project(0, false);
            QVERIFY(project.fromFile(path, 0));
            QCOMPARE(project.type(), expectedType(relative));
            for (const QProjectFileEntry& entry : project.fileEntries())
                if (!entry.path.isEmpty()) {
                    // Every file that exists loads; the missing ones are skipped.
                    QVERIFY2(entry.loaded, qPrintable(entry.path));
                    if (entry.kind != pftSprites && entry.kind != pftSounds) textFiles << entry.path;
                }
            textFiles << path;
            before = fingerprint(project);
            QVERIFY(project.save());
        }
        for (const QString& file : std::as_const(textFiles)) {
            const QString original =
                QDir(TestData::root()).filePath(QDir(copy.path()).relativeFilePath(file));
            QVERIFY2(readBytes(file) == readBytes(original), qPrintable(file));
        }
        // num72.sff is a version 2.00 file of true-colour sprites without any palette: that version can't
        // hold it once written by the rules, so the save refuses and leaves the file as it was.
        // Files that the content lacks are told at each opening; namesFoundInEverySpelling() checks them.
        QStringList boxes;
        for (const QDialogRecorder::Call& call : std::as_const(dialogs.calls))
            if (call.title != QLatin1String("Missing files"))
                boxes << call.title + QStringLiteral(": ") + call.text;
        QStringList expectedBoxes;
        if (relative.endsWith(QLatin1String("num72.def")))
            expectedBoxes << QStringLiteral("Save SFF: You can't save this SFF without palettes.");
        QCOMPARE(boxes, expectedBoxes);
        QProject again(0, false);
        QVERIFY(again.fromFile(path, 0));
        const QStringList after = fingerprint(again);
        mugenModel = nullptr;
        QCOMPARE(after.size(), before.size());
        for (int i = 0; i < before.size(); ++i)
            QCOMPARE(after.at(i).left(300), before.at(i).left(300));
        QCOMPARE(after, before);
    }

    // No name is told missing when a file exists that its bytes may stand for: a file whose name, written
    // in any of the code pages that content comes in, gives the bytes of the name in the definitions.
    void namesFoundInEverySpelling_data() { saveAndReopen_data(); }

    void namesFoundInEverySpelling()
    {
        TAVREL_REQUIRE_TESTDATA();
        QFETCH(QString, relative);
        const QString path = QDir(TestData::root()).filePath(relative);
        const QString base = QFileInfo(path).absolutePath();
        QStringList onDisk;
        QDirIterator it(base, QDir::Files, QDirIterator::Subdirectories);
        while (it.hasNext())
            onDisk << QDir(base).relativeFilePath(it.next());
        // Whatever page the user has configured: the Thai one read GBK definitions as Thai.
        for (const char* configured : {"", "TIS-620", "Shift_JIS"}) {
            QDialogRecorder dialogs;
            QProject project(0, false);
            QVERIFY(project.fromFile(path, uint(QTextEncoding::codecIndex(configured))));
            QTextCodec* defCodec = QTextEncoding::codec(project.definitions()->codec());
            const QStringList missing = project.missingFiles();
            for (const QString& name : missing) {
                const QByteArray bytes = defCodec->fromUnicode(name).toLower();
                for (const QString& file : std::as_const(onDisk))
                    for (const QByteArray& codec : detectionCodecs())
                        QVERIFY2(QTextCodec::codecForName(codec)->fromUnicode(file).toLower() != bytes,
                                 qPrintable(name + QStringLiteral(" is there as ") + file));
            }
            // Those that are told are told once, by name.
            QCOMPARE(dialogs.calls.size(), missing.isEmpty() ? 0 : 1);
            for (const QString& name : missing)
                QVERIFY(dialogs.calls.first().text.contains(name));
        }
    }

    // Save as of content in Chinese and Japanese code pages: the copy opens with every file the original
    // has, each text file byte for byte; the copy lacks only what the original lacks.
    void saveAsKeepsEveryFile_data()
    {
        QTest::addColumn<QString>("relative");
        QTest::newRow("GBK, Chinese state file names") << "kof-h-cjk/chars/kula/kula.def";
        QTest::newRow("GBK, backslashes") << "kof-h-cjk/chars/Chang/Chang.def";
        QTest::newRow("Shift-JIS") << "ikemen-aru/chars/Crescent/Crescent.def";
    }

    void saveAsKeepsEveryFile()
    {
        TAVREL_REQUIRE_TESTDATA();
        QFETCH(QString, relative);
        QDialogRecorder dialogs;
        QTemporaryDir target;
        const QString copyPath = target.filePath(QStringLiteral("out/") + QFileInfo(relative).fileName());
        QStringList lacking;
        QList<QProjectFileEntry> original;
        {
            QProject project(0, false);
            QVERIFY(project.fromFile(QDir(TestData::root()).filePath(relative), 0));
            connect(&project, &QProject::spritesVersionToSave, this, [](quint32 current) { return current; });
            QVERIFY(project.toFile(copyPath, true));
            lacking = project.missingFiles();
            original = project.fileEntries();
        }
        QProject copy(0, false);
        QVERIFY(copy.fromFile(copyPath, 0));
        QCOMPARE(copy.missingFiles(), lacking);
        QCOMPARE(copy.fileEntries().size(), original.size());
        for (int i = 0; i < original.size(); ++i) {
            const QProjectFileEntry& before = original.at(i);
            const QProjectFileEntry& after = copy.fileEntries().at(i);
            QCOMPARE(after.name, before.name);
            QCOMPARE(after.loaded, before.loaded);
            if (before.loaded && before.kind != pftSprites && before.kind != pftSounds)
                QVERIFY2(readBytes(after.path) == readBytes(before.path), qPrintable(after.path));
        }
        QCOMPARE(readBytes(copyPath), readBytes(QDir(TestData::root()).filePath(relative)));
    }
};

QTEST_GUILESS_MAIN(tst_ProjectRealFiles)
#include "tst_ProjectRealFiles.moc"
