#include "QCodecList.h"
#include "QTextEncoding.h"

#include <QTest>
#include <QTextCodec>

// Text long enough for the charset detector to be sure.
static QString sample(const QByteArray& language)
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

class tst_TextEncoding : public QObject
{
    Q_OBJECT

private slots:
    void table();
    void roundTrip_data();
    void roundTrip();
    void fallbacks_data();
    void fallbacks();
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

void tst_TextEncoding::fallbacks_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QByteArray>("wanted");
    QTest::addColumn<QByteArray>("used");

    // Plain ASCII names no charset worth keeping: the wanted codec stays.
    QTest::newRow("ASCII keeps the wanted codec") << QByteArray("[Begin Action 0]\n0,0, 0,0, 5\n")
                                                  << QByteArray("windows-1252") << QByteArray("windows-1252");
    QTest::newRow("ASCII without a wish takes the locale")
        << QByteArray("[Begin Action 0]\n") << QByteArray() << QTextCodec::codecForLocale()->name();
    QTest::newRow("empty file") << QByteArray() << QByteArray("Shift_JIS") << QByteArray("Shift_JIS");
}

void tst_TextEncoding::fallbacks()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QByteArray, wanted);
    QFETCH(QByteArray, used);

    int index = -1;
    const QString text =
        QTextEncoding::decode(bytes, wanted.isEmpty() ? 0 : QTextEncoding::codecIndex(wanted), &index);
    QCOMPARE(text, QString::fromLatin1(bytes));
    QCOMPARE(QTextEncoding::codec(index)->name(), used);
}

QTEST_GUILESS_MAIN(tst_TextEncoding)
#include "tst_TextEncoding.moc"
