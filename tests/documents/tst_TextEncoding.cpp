#include "QCharsetDetector.h"
#include "QCodecList.h"
#include "QTextEncoding.h"

#include <QTest>
#include <QTextCodec>

namespace {

// Text long enough for the charset detector to be sure.
QString sample(const QByteArray& language)
{
    if (language == "ja")
        return QString::fromUtf8("; こんにちは、世界。これは日本語のテキストです。\n[Begin Action 0]\n"
                                 "; 漢字とひらがなとカタカナを含みます。文字コードの判定をテストします。\n");
    if (language == "zh")
        return QString::fromUtf8("; 这是一个中文文本，用于测试字符集检测。\n[Begin Action 0]\n"
                                 "; 我们需要足够长的文本才能正确识别编码。简体中文使用国标编码。\n");
    return QString::fromUtf8("; Les élèves étaient très contents de l'été. Où est la bibliothèque?\n"
                             "[Begin Action 0]\n; Ça coûte cher, naïveté à côté — “déjà vu”, 5 €.\n");
}

QByteArray encoded(const char* utf8, const char* codec)
{
    return QTextCodec::codecForName(codec)->fromUnicode(QString::fromUtf8(utf8));
}

int indexOf(const QByteArray& name)
{
    return name.isEmpty() ? 0 : QTextEncoding::codecIndex(name);
}

} // namespace

class tst_TextEncoding : public QObject
{
    Q_OBJECT

private slots:
    void table();
    void roundTrip_data();
    void roundTrip();
    void fewHighBytes_data();
    void fewHighBytes();
    void readings_data();
    void readings();
};

void tst_TextEncoding::table()
{
    QCOMPARE(QTextEncoding::codecName(0), QStringLiteral("System"));
    QCOMPARE(QTextEncoding::codecName(-1), QStringLiteral("System"));
    QCOMPARE(QTextEncoding::codecName(int(codecList().size())), QStringLiteral("System"));
    QCOMPARE(QTextEncoding::codecIndex("no such codec"), 0);
    QCOMPARE(QTextEncoding::codecIndex("System"), 0);
    const int utf8 = QTextEncoding::codecIndex("UTF-8");
    QVERIFY(utf8 > 0);
    QCOMPARE(QTextEncoding::codecName(utf8), QStringLiteral("UTF-8"));
    QCOMPARE(QTextEncoding::codec(utf8)->mibEnum(), 106);
    QCOMPARE(QTextEncoding::codec(0), QTextCodec::codecForLocale());
    // Every codec that detection tries is one the table offers, so that a file can be saved in it.
    for (const QByteArray& name : detectionCodecs())
        QVERIFY2(QTextEncoding::indexOf(QTextCodec::codecForName(name)) > 0, name.constData());
}

void tst_TextEncoding::roundTrip_data()
{
    QTest::addColumn<QByteArray>("codec");
    QTest::addColumn<QByteArray>("language");
    QTest::addColumn<bool>("bom");

    QTest::newRow("UTF-8") << QByteArray("UTF-8") << QByteArray("fr") << false;
    QTest::newRow("UTF-8 with BOM") << QByteArray("UTF-8") << QByteArray("ja") << true;
    QTest::newRow("CP-1252") << QByteArray("windows-1252") << QByteArray("fr") << false;
    QTest::newRow("GBK") << QByteArray("GBK") << QByteArray("zh") << false;
    QTest::newRow("Shift-JIS") << QByteArray("Shift_JIS") << QByteArray("ja") << false;
    QTest::newRow("UTF-16LE with BOM") << QByteArray("UTF-16LE") << QByteArray("zh") << true;
}

void tst_TextEncoding::roundTrip()
{
    QFETCH(QByteArray, codec);
    QFETCH(QByteArray, language);
    QFETCH(bool, bom);

    const QString text = sample(language);
    QTextCodec* writer = QTextCodec::codecForName(codec);
    QVERIFY(writer);
    QByteArray bytes = writer->fromUnicode(text);
    if (bom) bytes.prepend(codec == "UTF-8" ? QByteArray("\xEF\xBB\xBF") : QByteArray("\xFF\xFE"));

    int index = -1;
    bool hadBom = !bom;
    const QString decoded = QTextEncoding::decode(bytes, 0, &index, &hadBom);
    QCOMPARE(decoded, text);
    QCOMPARE(hadBom, bom);
    QVERIFY(index > 0);
    QCOMPARE(QTextEncoding::encode(decoded, index, hadBom), bytes);
}

// Short text with few high bytes, where a detector that counts frequencies has too little to go on.
void tst_TextEncoding::fewHighBytes_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QByteArray>("wanted"); // empty: the locale's
    QTest::addColumn<QByteArray>("codec");  // the name of the codec chosen
    QTest::addColumn<bool>("exact");

    const QByteArray gbkName = encoded("[Files]\r\nst5 = 新·冻结处刑.cns\r\n", "GBK");
    QTest::newRow("GBK file name") << gbkName << QByteArray() << QByteArray("GBK") << true;
    QTest::newRow("GBK file name, Thai page wanted")
        << gbkName << QByteArray("TIS-620") << QByteArray("GBK") << true;
    QTest::newRow("GBK file name, CP-1252 wanted")
        << gbkName << QByteArray("windows-1252") << QByteArray("GBK") << true;
    QTest::newRow("GBK two characters")
        << encoded("name = \"库拉\"\n", "GBK") << QByteArray() << QByteArray("GBK") << true;
    QTest::newRow("GBK kana in a name")
        << encoded("st8 = 裁决の刃.cns\n", "GBK") << QByteArray("windows-1252") << QByteArray("GBK") << true;
    QTest::newRow("Shift-JIS one kanji")
        << encoded("[State explod];氷X\n", "Shift_JIS") << QByteArray() << QByteArray("Shift_JIS") << true;
    QTest::newRow("Shift-JIS kana") << encoded("; ひょうけつ\n", "Shift_JIS") << QByteArray("GBK")
                                    << QByteArray("Shift_JIS") << true;
    // Windows' Shift-JIS has the NEC and IBM rows twice: read, but not all written back alike.
    QTest::newRow("Shift-JIS, characters of two codes")
        << encoded("; ほぼ等しい記号 ", "Shift_JIS") + "\x87\x90\n"
        << QByteArray() << QByteArray("Shift_JIS") << false;
    // Comments of two authors: most lines Japanese, one Chinese.
    QTest::newRow("Shift-JIS with a GBK line")
        << encoded("; ヘルパーがコントロール可能\n; 操作不可\n; 操作可能\n", "Shift_JIS") +
               encoded(";身上白光\n", "GBK")
        << QByteArray() << QByteArray("Shift_JIS") << false;
    QTest::newRow("Big5") << encoded("; 冰之舞\n", "Big5") << QByteArray() << QByteArray("Big5") << true;
    QTest::newRow("EUC-KR hanja, wanted")
        << encoded("name = \"名字\"\n", "EUC-KR") << QByteArray("EUC-KR") << QByteArray("EUC-KR") << true;
    QTest::newRow("CP-1252 accents") << encoded("; Héros à côté\n", "windows-1252") << QByteArray()
                                     << QByteArray("windows-1252") << true;
    QTest::newRow("CP-1252 accents, GBK wanted") << encoded("; Héros, été.\n", "windows-1252")
                                                 << QByteArray("GBK") << QByteArray("windows-1252") << true;
    // A rule of one repeated byte reads as one common character repeated in Big5 and as katakana in
    // Shift-JIS.
    QTest::newRow("CP-1252 rule") << encoded(";¯¯¯¯¯¯¯¯¯¯¯¯¯¯¯¯¯¯¯¯\n", "windows-1252") << QByteArray()
                                  << QByteArray("windows-1252") << true;
    QTest::newRow("CP-1252 bullet") << encoded("; • x\n", "windows-1252") << QByteArray()
                                    << QByteArray("windows-1252") << true;
    QTest::newRow("CP-1251, wanted") << encoded("; Привет\n", "windows-1251") << QByteArray("windows-1251")
                                     << QByteArray("windows-1251") << true;
    QTest::newRow("UTF-8 one accent, CP-1252 wanted")
        << encoded("; é\n", "UTF-8") << QByteArray("windows-1252") << QByteArray("UTF-8") << true;
    QTest::newRow("UTF-8 Chinese, GBK wanted")
        << encoded("; 冰\n", "UTF-8") << QByteArray("GBK") << QByteArray("UTF-8") << true;
    QTest::newRow("ASCII keeps the wanted codec")
        << QByteArray("[Files]\r\nsprite = kfm.sff\r\n") << QByteArray("GBK") << QByteArray("GBK") << true;
    QTest::newRow("ASCII without a wish takes the locale")
        << QByteArray("[Begin Action 0]\n") << QByteArray() << QTextCodec::codecForLocale()->name() << true;
    QTest::newRow("empty file") << QByteArray() << QByteArray("Shift_JIS") << QByteArray("Shift_JIS") << true;
}

void tst_TextEncoding::fewHighBytes()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QByteArray, wanted);
    QFETCH(QByteArray, codec);
    QFETCH(bool, exact);

    const QCharsetDetector::Choice choice = QCharsetDetector::choose(bytes, indexOf(wanted));
    QCOMPARE(QTextEncoding::codec(choice.codec)->name(), QTextCodec::codecForName(codec)->name());
    // The wanted codec keeps the entry of the table it was asked by, though an alias names it.
    if (codec == wanted) QCOMPARE(choice.codec, indexOf(wanted));
    QCOMPARE(choice.exact, exact);
    QVERIFY(!choice.bom);
    if (exact)
        QCOMPARE(QTextEncoding::encode(QTextEncoding::decode(bytes, indexOf(wanted)), choice.codec), bytes);
}

// File names in definitions are the author's bytes; on a disk they are usually UTF-8.
void tst_TextEncoding::readings_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QByteArray>("first");
    QTest::addColumn<QString>("reading"); // one of the readings
    QTest::addColumn<int>("at");          // its place among them

    QTest::newRow("ASCII") << QByteArray("kula.cns") << QByteArray("GBK") << "kula.cns" << 0;
    QTest::newRow("GBK, read as GBK") << encoded("新·冻结处刑.cns", "GBK") << QByteArray("GBK")
                                      << QString::fromUtf8("新·冻结处刑.cns") << 0;
    QTest::newRow("GBK, read as CP-1252 first")
        << encoded("新·冻结处刑.cns", "GBK") << QByteArray("windows-1252")
        << QString::fromUtf8("新·冻结处刑.cns") << 1;
    QTest::newRow("Shift-JIS, read as GBK first")
        << encoded("氷の舞.cns", "Shift_JIS") << QByteArray("GBK") << QString::fromUtf8("氷の舞.cns") << -1;
}

void tst_TextEncoding::readings()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QByteArray, first);
    QFETCH(QString, reading);
    QFETCH(int, at);

    const QStringList readings = QCharsetDetector::readings(bytes, indexOf(first));
    QCOMPARE(QStringList(readings).removeDuplicates(), 0);
    if (at >= 0)
        QCOMPARE(readings.indexOf(reading), at);
    else
        QVERIFY2(readings.contains(reading), qPrintable(readings.join(QLatin1Char('|'))));
    // A reading never holds characters that stand for unreadable bytes.
    for (const QString& text : readings)
        QVERIFY(!text.contains(QChar::ReplacementCharacter));
}

QTEST_GUILESS_MAIN(tst_TextEncoding)
#include "tst_TextEncoding.moc"
