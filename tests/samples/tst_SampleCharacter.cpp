// The bundled sample character: the generator writes the same bytes on every run, and each file loads
// into its model with nothing that the models or the M.U.G.E.N. checker call an error.

#include "QAirDocument.h"
#include "QAnimation.h"
#include "QDefinitions.h"
#include "QMugenSyntaxProcessor.h"
#include "QMugenSyntaxProperties.h"
#include "QRGBPalette.h"
#include "QSound.h"
#include "QSoundInfo.h"
#include "QSounds.h"
#include "QSprite.h"
#include "QSpritePalette.h"
#include "QSprites.h"
#include "QSyntaxLibrary.h"
#include "QTextElementRegistry.h"
#include "QTextEncoding.h"
#include "TestData.h"

#include <QFile>
#include <QProcess>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBlock>
#include <QTextDocument>

namespace {

QByteArray bytesOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// The findings of the checker on a text file, as "line: text", errors only.
QStringList checkerErrors(const QString& path)
{
    QTextDocument document;
    document.setPlainText(QTextEncoding::decode(bytesOf(path), 0));
    QMugenSyntaxProcessor processor(&document, mugenSyntaxProperties(), true);
    processor.setMugenVersion(QDefinitions::defaultVersion);
    QStringList errors;
    for (QTextBlock block = document.firstBlock(); block.isValid(); block = block.next()) {
        const auto* data = static_cast<const QTextEditorBlockData*>(block.userData());
        if (!data) continue;
        for (const QSyntaxMessage& message : data->messages)
            if (message.kind == SyntaxError)
                errors << QStringLiteral("%1: %2").arg(block.blockNumber() + 1).arg(message.text);
    }
    return errors;
}

QStringList modelErrors(const QMessages* messages)
{
    QStringList errors;
    for (int row = 0; row < messages->size(); ++row)
        if (messages->at(row).severity == 0) errors << messages->at(row).text;
    return errors;
}

} // namespace

class tst_SampleCharacter : public QObject
{
    Q_OBJECT

    QTemporaryDir runs[2];

    QString path(int run, const QString& file) const { return runs[run].filePath("Roan/" + file); }

private slots:
    void initTestCase()
    {
        const QString generator = TestData::binDir() + QStringLiteral("/tavrel-make-sample");
        for (QTemporaryDir& dir : runs) {
            QProcess process;
            process.start(generator, {dir.path()});
            QVERIFY2(process.waitForFinished(120000), qPrintable(generator));
            QVERIFY2(process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0,
                     process.readAllStandardError().constData());
        }
        registerTextElements();
        QVERIFY(loadSyntaxDefinitions(TestData::binDir()));
        installSyntaxProcessors();
    }

    void files_data()
    {
        QTest::addColumn<QString>("file");
        for (const char* file : {"Roan.def", "Roan.sff", "Roan1.act", "Roan2.act", "Roan3.act", "Roan.air",
                                 "Roan.cmd", "Roan.cns", "Roan.snd"})
            QTest::newRow(file) << QString::fromLatin1(file);
    }

    // Each file comes out byte for byte the same twice, and reads back clean.
    void files()
    {
        QFETCH(QString, file);
        const QString written = path(0, file);
        const QByteArray bytes = bytesOf(written);
        QVERIFY(!bytes.isEmpty());
        QCOMPARE(bytesOf(path(1, file)), bytes);

        const QString suffix = file.section(QLatin1Char('.'), -1);
        if (QStringList({"def", "air", "cmd", "cns"}).contains(suffix)) {
            const QStringList errors = checkerErrors(written);
            QVERIFY2(errors.isEmpty(), qPrintable(errors.join(QLatin1Char('\n'))));
        }

        if (suffix == QLatin1String("def")) {
            QDefinitions definitions;
            QVERIFY(definitions.fromFile(written, 0));
            QCOMPARE(definitions.type(), Character);
            QCOMPARE(definitions.name(), QStringLiteral("Roan"));
            QCOMPARE(definitions.version(), QDefinitions::defaultVersion);
            const QDefinitionFiles named = definitions.files();
            const QStringList own = {named.sprite, named.animation, named.sound, named.commands,
                                     named.pal(1), named.pal(2),    named.pal(3)};
            for (const QString& name : own + named.states)
                QVERIFY2(name == QLatin1String("common1.cns") || QFile::exists(path(0, name)),
                         qPrintable(name));
            QCOMPARE(named.states, QStringList({"Roan.cns", "common1.cns"}));
        } else if (suffix == QLatin1String("sff")) {
            QSprites sprites;
            QVERIFY(sprites.fromFile(written));
            QCOMPARE(sprites.version(), quint32(QSprites::Version_200));
            const QStringList errors = modelErrors(sprites.messages());
            QVERIFY2(errors.isEmpty(), qPrintable(errors.join(QLatin1Char('\n'))));
            for (const QSubItem& item : QSprites::requiredSprites())
                QVERIFY2(sprites.find(0, item.group, item.index) >= 0,
                         qPrintable(QStringLiteral("%1,%2").arg(item.group).arg(item.index)));
            QCOMPARE(sprites.paletteCount(), 3u);
            for (int index = 1; index <= 3; ++index)
                QVERIFY(sprites.findPalette(0, 1, index) >= 0);
            // The palette files hold the colours of the sprite file's palettes.
            for (int index = 1; index <= 3; ++index) {
                QSpritePalette* fromFile = sprites.paletteAt(uint(sprites.findPalette(0, 1, index)));
                QRGBPal colours[QRGBPal::TableSize];
                QRGBPalette act(colours);
                QVERIFY(act.fromFile(path(0, QStringLiteral("Roan%1.act").arg(index))));
                for (int colour = 1; colour < QRGBPal::TableSize; ++colour)
                    QCOMPARE(colours[colour].toRgb(), fromFile->table()[colour].toRgb());
            }
        } else if (suffix == QLatin1String("air")) {
            QAirDocument document;
            QVERIFY(document.model.fromFile(written));
            QSet<int> numbers;
            for (int i = 0; i < document.model.count(); ++i)
                numbers << document.model.at(uint(i))->number;
            // What the common states play, and the character's own moves.
            for (int number :
                 {0,    5,    6,    10,   11,   12,   20,   21,   40,   41,   42,   43,   47,   100,
                  105,  120,  121,  122,  130,  131,  132,  140,  141,  142,  150,  151,  152,  200,
                  210,  400,  600,  1000, 5000, 5001, 5002, 5005, 5006, 5007, 5010, 5011, 5012, 5015,
                  5016, 5017, 5020, 5021, 5022, 5025, 5026, 5027, 5030, 5035, 5040, 5050, 5070, 5080,
                  5090, 5100, 5101, 5110, 5120, 5150, 5160, 5170, 5200, 5210})
                QVERIFY2(numbers.contains(number), qPrintable(QString::number(number)));
        } else if (suffix == QLatin1String("snd")) {
            QSounds sounds;
            QVERIFY(sounds.fromFile(written));
            QVERIFY(modelErrors(sounds.messages()).isEmpty());
            QSet<int> depths;
            for (const QSound* sound : sounds.soundItems()) {
                QVERIFY(sound->info.duration > 0.1f);
                depths << sound->info.bitsPerSample;
            }
            QCOMPARE(depths, QSet<int>({8, 16}));
        }
    }
};

QTEST_GUILESS_MAIN(tst_SampleCharacter)
#include "tst_SampleCharacter.moc"
