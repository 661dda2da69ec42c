// Old single-file fonts: reading the header, image and text, and converting them into definitions
// text and a version 2.00 sprite model with one sprite per character.

#include "FileBytes.h"
#include "QDefinitions.h"
#include "QDialogRecorder.h"
#include "QFntReader.h"
#include "QFontFile.h"
#include "QPCXCodec.h"
#include "QSprite.h"
#include "QSpritePalette.h"
#include "QSprites.h"
#include "QTextElementRegistry.h"
#include "TestData.h"

#include <QBuffer>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>
#include <QtEndian>

namespace {

// An 8-bit image whose pixel (x, y) is x + 16 * y, with colour i being (i, 255 - i, i / 2).
QImage testImage(int width, int height)
{
    QImage image(width, height, QImage::Format_Indexed8);
    QList<QRgb> table;
    for (int i = 0; i < 256; ++i)
        table << qRgb(i, 255 - i, i / 2);
    image.setColorTable(table);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            image.setPixel(x, y, uint(x + 16 * y));
    return image;
}

QByteArray pcxOf(const QImage& image)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    encodePCX(image, &buffer);
    return bytes;
}

// A font file: header, then the image, then the text.
QByteArray fntOf(const QByteArray& pcx, const QByteArray& text)
{
    QByteArray bytes(QFntReader::HeaderSize, '\0');
    std::memcpy(bytes.data(), "ElecbyteFnt", 12);
    uchar* fields = reinterpret_cast<uchar*>(bytes.data());
    qToLittleEndian<quint32>(0x100, fields + 12);
    qToLittleEndian<quint32>(QFntReader::HeaderSize, fields + 16);
    qToLittleEndian<quint32>(quint32(pcx.size()), fields + 20);
    qToLittleEndian<quint32>(quint32(QFntReader::HeaderSize + pcx.size()), fields + 24);
    qToLittleEndian<quint32>(quint32(text.size()), fields + 28);
    return bytes + pcx + text;
}

const QByteArray smallText = "; small\r\n[Def]\r\nType = Variable\r\nSize = 3,3\r\nSpacing = 1,0\r\n"
                             "Colors = 128\r\nOffset = 0,-1\r\n[Map]\r\nA 0 3\r\nB 4 4\r\n";

bool importBytes(const QByteArray& bytes, QDefinitions& definitions, QSprites& sprites)
{
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    return QFontFile::importFnt(&buffer, QStringLiteral("small"), definitions, sprites);
}

QByteArray pixelsOf(const QImage& image)
{
    QByteArray bytes;
    for (int y = 0; y < image.height(); ++y)
        bytes += QByteArray(reinterpret_cast<const char*>(image.constScanLine(y)), image.width());
    return bytes;
}

// What the test expects of a real font, read from its bytes with none of the reader's code: for each
// mapped character, the size of its cell: its column for a variable font, the font's size at its line's
// place for a fixed one, cut to the image; a blank pixel when nothing of it is left.
QMap<int, QSize> expectedCells(const QByteArray& file)
{
    const uchar* bytes = reinterpret_cast<const uchar*>(file.constData());
    const quint32 pcxAt = qFromLittleEndian<quint32>(bytes + 16);
    const quint32 textAt = qFromLittleEndian<quint32>(bytes + 24);
    const quint32 textSize = qFromLittleEndian<quint32>(bytes + 28);
    const uchar* pcx = bytes + pcxAt;
    const QRect image(0, 0, qFromLittleEndian<quint16>(pcx + 8) - qFromLittleEndian<quint16>(pcx + 4) + 1,
                      qFromLittleEndian<quint16>(pcx + 10) - qFromLittleEndian<quint16>(pcx + 6) + 1);
    const QString text = QString::fromLatin1(file.mid(textAt, textSize));
    const QRegularExpression sizeKey(QStringLiteral("^\\s*size\\s*=\\s*(\\d+)\\s*,\\s*(\\d+)"),
                                     QRegularExpression::CaseInsensitiveOption);
    QSize size;
    bool fixed = false;
    bool inMap = false;
    int order = 0;
    QMap<int, QSize> cells;
    for (QString line : text.split(QLatin1Char('\n'))) {
        line.remove(QLatin1Char('\r'));
        if (line.trimmed().startsWith(QLatin1Char('['))) {
            inMap = line.trimmed().toLower().startsWith(QLatin1String("[map"));
            continue;
        }
        if (!inMap) {
            const QRegularExpressionMatch match = sizeKey.match(line);
            if (match.hasMatch()) size = QSize(match.captured(1).toInt(), match.captured(2).toInt());
            if (line.toLower().remove(QLatin1Char(' ')) == QLatin1String("type=fixed")) fixed = true;
            continue;
        }
        if (line.isEmpty()) continue;
        int code = line.at(0).unicode();
        QString rest = line.mid(1);
        if (line.startsWith(QLatin1String("0x"), Qt::CaseInsensitive)) {
            code = line.section(QLatin1Char(' '), 0, 0).mid(2).toInt(nullptr, 16);
            rest = line.section(QLatin1Char(' '), 1);
        }
        const QStringList fields =
            rest.section(QLatin1Char(';'), 0, 0).split(QLatin1Char(' '), Qt::SkipEmptyParts);
        const QRect cell = fixed ? QRect(order * size.width(), 0, size.width(), size.height())
                                 : QRect(fields.value(0).toInt(), 0, fields.value(1).toInt(), image.height());
        ++order;
        const QRect kept = cell.intersected(image);
        if (!cells.contains(code)) cells.insert(code, kept.isEmpty() ? QSize(1, 1) : kept.size());
    }
    return cells;
}

} // namespace

class tst_Fonts : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { registerTextElements(); }
    void cleanupTestCase() { unregisterTextElements(); }

    void readText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("fixed");
        QTest::addColumn<int>("colors");
        QTest::addColumn<QSize>("size");
        QTest::addColumn<QPoint>("offset");
        // code:order:x:width of each mapped character, in code order.
        QTest::addColumn<QString>("map");
        // A variable font of 256 colours without size or offset, unless the row says otherwise.
        auto row = [](const char* name, const QString& text, const char* map, QSize size = QSize(-1, -1)) {
            QTest::newRow(name) << text << false << 256 << size << QPoint() << map;
        };
        row("defaults", QStringLiteral("[Map]\nA 1 2\n"), "65:0:1:2");
        QTest::newRow("keys in any case")
            << QStringLiteral("[DEF]\nTYPE = fixed\nCOLORS = 16\nSIZE = 8,9\nOFFSET = 0,-1\n[mAp]\nb\na\n")
            << true << 16 << QSize(8, 9) << QPoint(0, -1) << QStringLiteral("97:1:0:0 98:0:0:0");
        row("colors 300", QStringLiteral("[Def]\ncolors = 300\n"), "");
        row("colors 0", QStringLiteral("[Def]\ncolors = 0\n"), "");
        row("colors negative", QStringLiteral("[Def]\ncolors = -4\n"), "");
        row("keys before any section", QStringLiteral("size = 4,5\n[Map]\n"), "", QSize(4, 5));
        row("other section is def", QStringLiteral("[Map]\nA 0 1\n[Other]\nsize = 2,2\nB 1 1\n"), "65:0:0:1",
            QSize(2, 2));
        row("hex codes",
            QStringLiteral("[Map]\n0x5B 216 3 ;Open square bracket\n0x3b 9 1\n0 4 5\n0x1FF 1 1\n"),
            "0:3:1:1 48:2:4:5 59:1:9:1 91:0:216:3");
        row("code above 255 lands on 0", QStringLiteral("[Map]\n\u0100 7 8\n"), "0:0:7:8");
        row("semicolon, quote and blank", QStringLiteral("[Map]\n;\n\" 3 4\n  \n\n"),
            "32:2:0:0 34:1:3:4 59:0:0:0");
        row("no integers, one integer", QStringLiteral("[Map]\nA\nB 5\nC x 6 7\n"),
            "65:0:0:0 66:1:5:0 67:2:6:7");
        row("first line of a character counts", QStringLiteral("[Map]\nA 0 3\nA 9 9\nB 3 3\n"),
            "65:0:0:3 66:2:3:3");
    }

    void readText()
    {
        QFETCH(QString, text);
        QFntFont font;
        QFntReader::readText(text, font);
        QTEST(font.fixed, "fixed");
        QTEST(font.colors, "colors");
        QTEST(font.size, "size");
        QTEST(font.offset, "offset");
        QStringList map;
        for (const QFntGlyph& glyph : std::as_const(font.map))
            map << QStringLiteral("%1:%2:%3:%4")
                       .arg(glyph.code)
                       .arg(glyph.order)
                       .arg(glyph.x)
                       .arg(glyph.width);
        QTEST(map.join(QLatin1Char(' ')), "map");
    }

    void cells_data()
    {
        QTest::addColumn<bool>("fixed");
        QTest::addColumn<QSize>("size");
        QTest::addColumn<int>("order");
        QTest::addColumn<int>("x");
        QTest::addColumn<int>("width");
        QTest::addColumn<QRect>("cell");
        // The image is 10 by 6.
        auto variable = [](const char* name, int x, int width, QRect cell) {
            QTest::newRow(name) << false << QSize() << 0 << x << width << cell;
        };
        auto fixed = [](const char* name, QSize size, int order, QRect cell) {
            QTest::newRow(name) << true << size << order << 0 << 0 << cell;
        };
        variable("variable inside", 2, 3, QRect(2, 0, 3, 6));
        variable("variable cut at the right", 8, 5, QRect(8, 0, 2, 6));
        variable("variable from the left", -2, 4, QRect(0, 0, 2, 6));
        variable("variable outside", 10, 4, QRect());
        variable("variable no width", 3, 0, QRect());
        variable("variable huge", 2147483600, 2147483600, QRect());
        fixed("fixed first row", QSize(4, 3), 1, QRect(4, 0, 4, 3));
        fixed("fixed cut at the right", QSize(4, 3), 2, QRect(8, 0, 2, 3));
        fixed("fixed second row", QSize(4, 3), 3, QRect(0, 3, 4, 3));
        fixed("fixed past the image", QSize(4, 3), 6, QRect());
        fixed("fixed wider than the image", QSize(12, 6), 0, QRect(0, 0, 10, 6));
        fixed("fixed without size", QSize(-1, -1), 0, QRect());
        fixed("fixed huge", QSize(2147483600, 2147483600), 3, QRect());
    }

    void cells()
    {
        QFETCH(bool, fixed);
        QFETCH(QSize, size);
        QFETCH(int, order);
        QFETCH(int, x);
        QFETCH(int, width);
        QFntFont font;
        font.fixed = fixed;
        font.size = size;
        font.image = testImage(10, 6);
        QFntGlyph glyph;
        glyph.order = order;
        glyph.x = x;
        glyph.width = width;
        QTEST(font.cell(glyph), "cell");
    }

    void smallFont()
    {
        QDialogRecorder dialogs;
        const QImage image = testImage(8, 3);
        QDefinitions definitions;
        QSprites sprites(nullptr, 0, false);
        QVERIFY(importBytes(fntOf(pcxOf(image), smallText), definitions, sprites));

        QCOMPARE(definitions.text(),
                 QStringLiteral("[FNT v2]\nfntversion = 2,00\nname = \"small\"\n\n[Def]\n"
                                "type = Bitmap\nsize = 3,3\nspacing = 1,0\noffset = 0,-1\n"
                                "file = small.sff\n"));
        QCOMPARE(sprites.version(), quint32(0x02000000));
        QCOMPARE(sprites.undoStack()->count(), 0);

        // 128 colours make two banks; bank 1 takes the colours 0 to 127 into the top half.
        QCOMPARE(sprites.paletteCount(), 2u);
        const QList<QRgb> table = image.colorTable();
        for (uint bank = 0; bank < 2; ++bank) {
            QSpritePalette* palette = sprites.paletteAt(bank);
            QCOMPARE(palette->itemGroup(), 0);
            QCOMPARE(palette->itemIndex(), int(bank));
            QCOMPARE(palette->colorCount(), 256);
            const QVector<uint> colours = palette->colors();
            QCOMPARE(colours.at(0), table.at(0) & 0xffffffu);
            for (int i = 1; i < 256; ++i)
                QCOMPARE(colours.at(i), table.at(i < 128 ? i : i - int(bank) * 128));
        }

        QCOMPARE(sprites.count(), 2u);
        const int widths[] = {3, 4};
        for (uint i = 0; i < 2; ++i) {
            QSprite* sprite = sprites.at(i);
            QCOMPARE(sprite->itemGroup(), 0);
            QCOMPARE(sprite->itemIndex(), 65 + int(i));
            QCOMPARE(sprite->offsetX(), 0);
            QCOMPARE(sprite->offsetY(), 0);
            QCOMPARE(sprite->palette(), sprites.paletteAt(0));
            const QImage glyph = sprite->image();
            QCOMPARE(glyph.format(), QImage::Format_Indexed8);
            QCOMPARE(pixelsOf(glyph), pixelsOf(image.copy(int(i) * 4, 0, widths[i], 3)));
        }

        // The converted model is one that saves and reads back.
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("small.sff"));
        QVERIFY(sprites.toFile(path, 0, true));
        QSprites back(nullptr, 0, false);
        QVERIFY(back.fromFile(path));
        QCOMPARE(back.version(), quint32(0x02000000));
        QCOMPARE(back.count(), 2u);
        QCOMPARE(back.paletteCount(), 2u);
        QCOMPARE(pixelsOf(back.at(1)->image()), pixelsOf(image.copy(4, 0, 4, 3)));
        QVERIFY(dialogs.calls.isEmpty());
    }

    void fixedAndEmptyCells()
    {
        const QImage image = testImage(4, 2);
        const QByteArray text = "[Def]\nType = Fixed\nSize = 2,2\nColors = 256\n[Map]\na\nb\nc\n";
        QDefinitions definitions;
        QSprites sprites(nullptr, 0, false);
        QVERIFY(importBytes(fntOf(pcxOf(image), text), definitions, sprites));
        QCOMPARE(sprites.paletteCount(), 1u);
        QCOMPARE(sprites.count(), 3u);
        QCOMPARE(pixelsOf(sprites.at(0)->image()), pixelsOf(image.copy(0, 0, 2, 2)));
        QCOMPARE(pixelsOf(sprites.at(1)->image()), pixelsOf(image.copy(2, 0, 2, 2)));
        // "c" has no cell in the image: a blank pixel keeps it saveable.
        QCOMPARE(sprites.at(2)->image().size(), QSize(1, 1));
        QCOMPARE(sprites.at(2)->image().pixelIndex(0, 0), 0);
        QTemporaryDir dir;
        QVERIFY(sprites.toFile(dir.filePath(QStringLiteral("f.sff")), 0, true));
    }

    void failures_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        const QByteArray good = fntOf(pcxOf(testImage(8, 3)), smallText);
        auto patched = [&good](int at, quint32 value) {
            QByteArray bytes = good;
            qToLittleEndian<quint32>(value, reinterpret_cast<uchar*>(bytes.data()) + at);
            return bytes;
        };
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("wrong magic") << QByteArray(good).replace(0, 8, "Elecbyxe");
        QTest::newRow("magic without its zero") << QByteArray(good).replace(11, 1, "!");
        QTest::newRow("header cut") << good.left(40);
        QTest::newRow("image cut") << good.left(QFntReader::HeaderSize + 100);
        QTest::newRow("text cut") << good.left(good.size() - 5);
        QTest::newRow("huge image offset") << patched(16, 0xfffffff0u);
        QTest::newRow("huge image size") << patched(20, 0xfffffff0u);
        QTest::newRow("huge text offset") << patched(24, 0xffffffffu);
        QTest::newRow("huge text size") << patched(28, 0x7fffffffu);
        QTest::newRow("image not a pcx") << patched(16, 0);
        QByteArray giant = good;
        // A PCX header that claims 65536 by 65536 pixels over a few hundred bytes.
        giant.replace(QFntReader::HeaderSize + 8, 4, QByteArray("\xff\xff\xff\xff", 4));
        QTest::newRow("image claims more pixels than its bytes") << giant;
        QImage rgb(4, 4, QImage::Format_RGB32);
        rgb.fill(Qt::red);
        QTest::newRow("true-colour image") << fntOf(pcxOf(rgb), smallText);
    }

    void failures()
    {
        QFETCH(QByteArray, bytes);
        QDefinitions definitions;
        definitions.setPlainText(QStringLiteral("[Info]\nname = \"kept\"\n"));
        QSprites sprites(nullptr, 0, false);
        QDefinitions seed;
        QVERIFY(importBytes(fntOf(pcxOf(testImage(2, 2)), "[Map]\nA 0 1\n"), seed, sprites));
        const uint spriteCount = sprites.count();
        const uint paletteCount = sprites.paletteCount();
        QVERIFY(!importBytes(bytes, definitions, sprites));
        QCOMPARE(definitions.text(), QStringLiteral("[Info]\nname = \"kept\"\n"));
        QCOMPARE(sprites.count(), spriteCount);
        QCOMPARE(sprites.paletteCount(), paletteCount);
    }

    void missingFile()
    {
        QDefinitions definitions;
        QSprites sprites(nullptr, 0, false);
        QVERIFY(!QFontFile::importFnt(QStringLiteral("/nonexistent/font.fnt"), definitions, sprites));
        QVERIFY(definitions.text().isEmpty());
        QVERIFY(sprites.isEmpty());
    }

    void realFonts_data()
    {
        QTest::addColumn<QString>("path");
        for (const QString& path : TestData::files({QStringLiteral("*.fnt")}))
            QTest::newRow(qPrintable(QDir(TestData::root()).relativeFilePath(path))) << path;
    }

    void realFonts()
    {
        TAVREL_REQUIRE_TESTDATA();
        QFETCH(QString, path);
        const QMap<int, QSize> expected = expectedCells(readBytes(path));
        QVERIFY(!expected.isEmpty());

        QDialogRecorder dialogs;
        QDefinitions definitions;
        QSprites sprites(nullptr, 0, false);
        QVERIFY(QFontFile::importFnt(path, definitions, sprites));
        const QString name = QFileInfo(path).completeBaseName();
        QCOMPARE(definitions.findValue(QStringLiteral("Def"), QStringLiteral("file")), name + ".sff");
        QCOMPARE(sprites.count(), uint(expected.size()));
        QVERIFY(sprites.paletteCount() >= 1);
        int position = 0;
        for (auto it = expected.cbegin(); it != expected.cend(); ++it, ++position) {
            const QSprite* sprite = sprites.at(uint(position));
            QCOMPARE(sprite->itemIndex(), it.key());
            const QImageInfo info = sprite->imageProperties();
            QCOMPARE(QSize(info.width, info.height), it.value());
        }

        QTemporaryDir dir;
        const QString sff = dir.filePath(name + ".sff");
        QVERIFY(sprites.toFile(sff, 0, true));
        QSprites back(nullptr, 0, false);
        QVERIFY(back.fromFile(sff));
        QCOMPARE(back.count(), sprites.count());
        QCOMPARE(back.paletteCount(), sprites.paletteCount());
        QVERIFY(dialogs.calls.isEmpty());
    }
};

QTEST_GUILESS_MAIN(tst_Fonts)
#include "tst_Fonts.moc"
