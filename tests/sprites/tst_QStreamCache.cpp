#include "QCrc64.h"
#include "QImageInfo.h"
#include "QLZ5Codec.h"
#include "QPCXCodec.h"
#include "QPNGCodec.h"
#include "QRLE8Codec.h"
#include "QStreamCache.h"
#include "QStreamCacheFilter.h"
#include "SffBuilder.h"

#include <QRandomGenerator>
#include <QtTest>

#include <vector>

namespace {

// Bit by bit, the plain definition the table-driven hash must agree with.
quint64 referenceCrc(const QByteArray& data)
{
    quint64 crc = ~quint64(0);
    for (char c : data) {
        crc ^= uchar(c);
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc & 1) ? (crc >> 1) ^ 0x95AC9329AC4BC9B5ULL : crc >> 1;
    }
    return crc;
}

QImage testImage(int width, int height, quint32 seed)
{
    QRandomGenerator rng(seed);
    QImage image(width, height, QImage::Format_Indexed8);
    image.setColorCount(256);
    image.fill(0);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            image.scanLine(y)[x] = uchar((x / 4 + y / 3 + (rng.bounded(6) == 0 ? rng.bounded(5) : 0)) % 32);
    return image;
}

// One image in every stored form of the cache.
struct Sample
{
    QImageInfo info;
    QByteArray raw;
    QList<QPair<uint, QByteArray>> forms;
};

Sample sample(int width, int height, quint32 seed)
{
    const QImage image = testImage(width, height, seed);
    Sample s;
    s.info = QImageInfo::of(image);
    s.raw = QImageInfo::raw(image);
    s.forms = {{QStreamCacheFilter::RawFilter, s.raw},
               {QStreamCacheFilter::PCXFilter, SffBuilder::pcx(image)},
               {QStreamCacheFilter::RLE8Filter, encodeRLE8(image)},
               {QStreamCacheFilter::LZ5Filter, encodeLZ5(image)},
               {QStreamCacheFilter::PNGFilter, encodePNG(image)}};
    return s;
}

} // namespace

class tst_QStreamCache : public QObject
{
    Q_OBJECT

private slots:
    void hash_data();
    void hash();
    void modes_data();
    void modes();
    void fileCompaction();
    void replaceKeepsOthers_data();
    void replaceKeepsOthers();
    void addHash();
    void equal_data();
    void equal();
    void find();
    void pool();
};

void tst_QStreamCache::hash_data()
{
    QTest::addColumn<QByteArray>("data");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("one byte") << QByteArray("a");
    QTest::newRow("check string") << QByteArray("123456789");
    QByteArray random(1000, Qt::Uninitialized);
    QRandomGenerator rng(3);
    for (char& c : random)
        c = char(rng.bounded(256));
    for (int n : {7, 8, 9, 15, 16, 17, 1000})
        QTest::newRow(qPrintable(QStringLiteral("random %1").arg(n))) << random.left(n);
}

void tst_QStreamCache::hash()
{
    QFETCH(QByteArray, data);
    QCOMPARE(crc64(data), referenceCrc(data));
    QCOMPARE(QStreamCache::hash(data), referenceCrc(data));
    if (data.isEmpty()) QCOMPARE(crc64(data), ~quint64(0));
}

void tst_QStreamCache::modes_data()
{
    QTest::addColumn<uint>("mode");
    QTest::addColumn<bool>("compress");
    QTest::newRow("memory") << uint(QStreamCache::MemoryMode) << false;
    QTest::newRow("memory compressed") << uint(QStreamCache::MemoryMode) << true;
    QTest::newRow("file") << uint(QStreamCache::FileMode) << false;
    QTest::newRow("file compressed") << uint(QStreamCache::FileMode) << true;
}

// Every form decodes to the same raw bytes in every mode; removals and replacements keep the rest intact.
void tst_QStreamCache::modes()
{
    QFETCH(uint, mode);
    QFETCH(bool, compress);

    QStreamCache cache(QStringLiteral("tavreltest"), mode, compress);
    QCOMPARE(cache.mode(), mode);
    std::vector<Sample> samples;
    for (int i = 0; i < 4; ++i)
        samples.push_back(sample(13 + i * 7, 9 + i, quint32(i)));
    QList<QPair<QStreamCacheItem*, const Sample*>> added;
    for (const Sample& s : samples)
        for (const auto& form : s.forms)
            added.append({cache.add(form.second, form.first, const_cast<QImageInfo*>(&s.info)), &s});
    for (const auto& entry : added) {
        QCOMPARE(cache.decoded(entry.first), entry.second->raw);
        QCOMPARE(entry.first->hash, crc64(entry.second->raw));
        if (entry.first->filter != QStreamCacheFilter::RawFilter || !compress)
            QCOMPARE(quint32(cache.stored(entry.first).size()), entry.first->rawSize);
        QCOMPARE(entry.first->data.isEmpty(), mode == QStreamCache::FileMode);
    }
    if (compress) QCOMPARE(cache.stored(added[0].first), qCompress(samples[0].raw));

    // Take every other item out; the others still decode.
    for (int i = 0; i < added.size(); i += 2)
        cache.remove(added[i].first);
    for (int i = 1; i < added.size(); i += 2)
        QCOMPARE(cache.decoded(added[i].first), added[i].second->raw);
    QCOMPARE(cache.items().size(), added.size() / 2);

    cache.clear();
    QVERIFY(cache.items().isEmpty());
    QCOMPARE(cache.fileSize(), 0);
    QVERIFY(cache.decoded(nullptr).isEmpty());
    QVERIFY(cache.stored(nullptr).isEmpty());
}

void tst_QStreamCache::fileCompaction()
{
    QStreamCache cache(QStringLiteral("tavreltest"), QStreamCache::FileMode, false);
    QCOMPARE(cache.mode(), uint(QStreamCache::FileMode));
    QVERIFY(cache.fileName().contains(QStringLiteral("tavreltest")));
    QStreamCacheItem* a = cache.add(QByteArray(10, 'a'), 0, nullptr);
    QStreamCacheItem* empty = cache.add(QByteArray(), 0, nullptr);
    QStreamCacheItem* b = cache.add(QByteArray(20, 'b'), 0, nullptr);
    QStreamCacheItem* c = cache.add(QByteArray(5, 'c'), 0, nullptr);
    QCOMPARE(cache.fileSize(), 35);
    QCOMPARE(b->offset, 10u);
    QCOMPARE(empty->offset, 10u);

    cache.remove(a);
    QCOMPARE(cache.fileSize(), 25);
    QCOMPARE(empty->offset, 0u);
    QCOMPARE(b->offset, 0u);
    QCOMPARE(c->offset, 20u);
    QCOMPARE(cache.stored(b), QByteArray(20, 'b'));
    QCOMPARE(cache.stored(c), QByteArray(5, 'c'));
    QVERIFY(cache.stored(empty).isEmpty());

    // Removing the last block leaves a file as long as its offset.
    cache.remove(c);
    QCOMPARE(cache.fileSize(), 20);
    cache.remove(empty);
    QCOMPARE(cache.stored(b), QByteArray(20, 'b'));
    cache.remove(b);
    QCOMPARE(cache.fileSize(), 0);
}

void tst_QStreamCache::replaceKeepsOthers_data()
{
    modes_data();
}

void tst_QStreamCache::replaceKeepsOthers()
{
    QFETCH(uint, mode);
    QFETCH(bool, compress);

    QStreamCache cache(QStringLiteral("tavreltest"), mode, compress);
    const Sample first = sample(17, 11, 1);
    const Sample second = sample(30, 4, 2);
    QImageInfo firstInfo = first.info;
    QImageInfo secondInfo = second.info;
    QStreamCacheItem* a = cache.add(first.forms[2].second, first.forms[2].first, &firstInfo);
    QStreamCacheItem* b = cache.add(second.forms[0].second, second.forms[0].first, &secondInfo);
    QStreamCacheItem* c = cache.add(first.forms[1].second, first.forms[1].first, &firstInfo);

    // The save path: a block decoded and encoded anew under another filter, its hash kept.
    const quint64 kept = a->hash;
    cache.replace(a, first.forms[3].second, first.forms[3].first, &firstInfo, kept);
    QCOMPARE(cache.filter(a), uint(QStreamCacheFilter::LZ5Filter));
    QCOMPARE(a->hash, kept);
    QCOMPARE(cache.stored(a), first.forms[3].second);
    cache.replace(b, second.forms[4].second, second.forms[4].first, &secondInfo);
    QCOMPARE(cache.items(), (QList<QStreamCacheItem*>{a, b, c}));
    QCOMPARE(cache.decoded(a), first.raw);
    QCOMPARE(cache.decoded(b), second.raw);
    QCOMPARE(cache.decoded(c), first.raw);
    if (mode == QStreamCache::FileMode) QCOMPARE(cache.fileSize(), qint64(a->size) + b->size + c->size);
}

void tst_QStreamCache::addHash()
{
    QStreamCache cache(QStringLiteral("tavreltest"), QStreamCache::MemoryMode, true);
    const Sample s = sample(9, 9, 5);
    QImageInfo info = s.info;
    QStreamCacheItem* given = cache.add(s.forms[2].second, s.forms[2].first, &info, 1234);
    QCOMPARE(given->hash, quint64(1234));
    QStreamCacheItem* computed = cache.add(s.forms[4].second, s.forms[4].first, &info);
    QCOMPARE(computed->hash, crc64(s.raw));
    computed->hash = 0;
    QCOMPARE(cache.hash(computed), crc64(s.raw));
    QCOMPARE(computed->hash, crc64(s.raw));
    // A block that can't be decoded hashes as an empty one.
    QStreamCacheItem* broken = cache.add(QByteArray("junk"), QStreamCacheFilter::PNGFilter, &info);
    QCOMPARE(broken->hash, ~quint64(0));
    QVERIFY(cache.decoded(broken).isEmpty());
}

void tst_QStreamCache::equal_data()
{
    QTest::addColumn<int>("formA");
    QTest::addColumn<int>("formB");
    QTest::addColumn<bool>("sameImage");
    QTest::addColumn<bool>("forgetHashes");
    QTest::addColumn<bool>("expected");

    for (bool forget : {false, true}) {
        const QByteArray suffix = forget ? " (hashes unknown)" : "";
        QTest::newRow("same form, same image" + suffix) << 2 << 2 << true << forget << true;
        QTest::newRow("raw and LZ5 of one image" + suffix) << 0 << 3 << true << forget << true;
        QTest::newRow("PCX and PNG of one image" + suffix) << 1 << 4 << true << forget << true;
        QTest::newRow("different images" + suffix) << 2 << 2 << false << forget << false;
        QTest::newRow("different images and forms" + suffix) << 0 << 4 << false << forget << false;
    }
}

void tst_QStreamCache::equal()
{
    QFETCH(int, formA);
    QFETCH(int, formB);
    QFETCH(bool, sameImage);
    QFETCH(bool, forgetHashes);
    QFETCH(bool, expected);

    QStreamCache cache(QStringLiteral("tavreltest"), QStreamCache::FileMode, true);
    const Sample one = sample(21, 8, 1);
    const Sample two = sample(21, 8, 2);
    const Sample& other = sameImage ? one : two;
    QImageInfo infoA = one.info;
    QImageInfo infoB = other.info;
    QStreamCacheItem* a = cache.add(one.forms[formA].second, one.forms[formA].first, &infoA);
    QStreamCacheItem* b = cache.add(other.forms[formB].second, other.forms[formB].first, &infoB);
    if (forgetHashes) a->hash = b->hash = 0;
    QCOMPARE(cache.equal(a, b), expected);
    QCOMPARE(cache.equal(b, a), expected);
    QVERIFY(a->hash != 0 && b->hash != 0);
    QVERIFY(cache.equal(a, a));
    QVERIFY(!cache.equal(a, nullptr));
}

void tst_QStreamCache::find()
{
    QStreamCache cache(QStringLiteral("tavreltest"), QStreamCache::MemoryMode, false);
    const Sample one = sample(12, 12, 1);
    const Sample two = sample(12, 12, 2);
    QImageInfo info1 = one.info;
    QImageInfo info2 = two.info;
    QImageInfo nothing{4, 4, QImage::Format_Indexed8};
    QStreamCacheItem* empty = cache.add(QByteArray(), QStreamCacheFilter::RLE8Filter, &nothing);
    QStreamCacheItem* a = cache.add(two.forms[3].second, two.forms[3].first, &info2);
    QStreamCacheItem* b = cache.add(one.forms[2].second, one.forms[2].first, &info1);
    QStreamCacheItem* c = cache.add(one.forms[4].second, one.forms[4].first, &info1);
    b->hash = 0;

    QCOMPARE(cache.find(one.raw, nullptr), b);
    QCOMPARE(cache.find(one.raw, b), c);
    QCOMPARE(cache.find(two.raw, nullptr), a);
    QCOMPARE(cache.find(two.raw, a), nullptr);
    QCOMPARE(cache.find(QByteArray(), nullptr), nullptr);
    QCOMPARE(b->hash, crc64(one.raw));
    // The empty RLE8 block decodes to a blank 4x4 image, which is found as such.
    QCOMPARE(cache.find(QByteArray(16, '\0'), nullptr), empty);

    // Two zero-length raw blocks are equal through their stored bytes, a zero-length block never
    // through decoded ones.
    QStreamCacheItem* zero1 = cache.add(QByteArray(), QStreamCacheFilter::RawFilter, nullptr);
    QStreamCacheItem* zero2 = cache.add(QByteArray(), QStreamCacheFilter::RawFilter, nullptr);
    QVERIFY(cache.decoded(zero1).isEmpty());
    QVERIFY(cache.equal(zero1, zero2));
    QStreamCacheItem* zeroPng = cache.add(QByteArray(), QStreamCacheFilter::PNGFilter, &nothing);
    QCOMPARE(zeroPng->hash, zero1->hash);
    QVERIFY(!cache.equal(zero1, zeroPng));
}

void tst_QStreamCache::pool()
{
    QStreamCache::releasePool();
    const int before = QStreamCache::poolSize();
    QCOMPARE(QStreamCache::freeCount(), 0);
    {
        QStreamCache cache(QStringLiteral("tavreltest"), QStreamCache::MemoryMode, false);
        QStreamCacheItem* a = cache.add(QByteArray("a"), 0, nullptr);
        QStreamCacheItem* b = cache.add(QByteArray("b"), 0, nullptr);
        QCOMPARE(QStreamCache::poolSize(), before + 2);
        cache.remove(a);
        QCOMPARE(QStreamCache::freeCount(), 1);
        QStreamCacheItem* reused = cache.add(QByteArray("c"), 0, nullptr);
        QCOMPARE(reused, a);
        QCOMPARE(reused->hash, crc64(QByteArray("c")));
        QCOMPARE(QStreamCache::poolSize(), before + 2);
        QCOMPARE(QStreamCache::freeCount(), 0);

        // Items that a cache holds outlive a release of the pool.
        cache.remove(b);
        QStreamCache::releasePool();
        QCOMPARE(QStreamCache::poolSize(), before + 1);
        QCOMPARE(cache.decoded(reused), QByteArray("c"));
    }
    // A cache gives its items back when it goes; closing a project then frees them all.
    QCOMPARE(QStreamCache::freeCount(), 1);
    QStreamCache::releasePool();
    QCOMPARE(QStreamCache::poolSize(), before);
}

QTEST_GUILESS_MAIN(tst_QStreamCache)
#include "tst_QStreamCache.moc"
