#include "QLZ5Codec.h"
#include "QRLE8Codec.h"
#include "QSprite.h"
#include "QSpriteColorTable.h"
#include "QSpriteImageRecord.h"
#include "QSpritePalette.h"
#include "QSprites.h"
#include "QStreamCacheFilter.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QRandomGenerator>
#include <QSaveFile>
#include <QTemporaryDir>
#include <QtEndian>

#include <benchmark/benchmark.h>

#include <unistd.h>

// Opening a sprite file must cost little more than reading its bytes: the reader keeps every block in
// its stored form and decodes only what the sharing pass must compare. Saving in the stored form must
// cost little more than copying the file. Measured on the largest file of the test data and on a
// synthetic file of 10,000 sprites.
namespace {

QString largestTestFile()
{
    const QString root = qEnvironmentVariable("TAVREL_TESTDATA");
    QString best;
    qint64 size = -1;
    if (root.isEmpty()) return best;
    QDirIterator it(root, {QStringLiteral("*.sff")}, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString path = it.next();
        if (QFileInfo(path).size() > size) {
            size = QFileInfo(path).size();
            best = path;
        }
    }
    return best;
}

void put32(QByteArray& bytes, int at, quint32 value)
{
    qToLittleEndian<quint32>(value, bytes.data() + at);
}

void put16(QByteArray& bytes, int at, quint16 value)
{
    qToLittleEndian<quint16>(value, bytes.data() + at);
}

// 10,000 sprites of 24 to 160 pixels a side with a shaded figure each; one in ten is a link, one in
// five uses a 32-colour palette and LZ5, the rest RLE8.
QByteArray syntheticFile(int count)
{
    QRandomGenerator rng(7);
    QByteArray colours;
    for (int i = 0; i < 256; ++i)
        for (int channel : {i, (i * 3) & 0xFF, 255 - i, 255})
            colours += char(channel);
    QByteArray ldata = colours + colours.left(128);
    QByteArray paletteNodes(32, '\0');
    put16(paletteNodes, 0, 1);
    put16(paletteNodes, 2, 1);
    put16(paletteNodes, 4, 256);
    put32(paletteNodes, 12, 1024);
    put16(paletteNodes, 16, 2);
    put16(paletteNodes, 20, 32);
    put32(paletteNodes, 24, 1024);
    put32(paletteNodes, 28, 128);
    QByteArray nodes(count * 28, '\0');
    for (int i = 0; i < count; ++i) {
        const int at = i * 28;
        const int width = 24 + int(rng.bounded(137));
        const int height = 24 + int(rng.bounded(137));
        const bool small = i % 5 == 0;
        put16(nodes, at, quint16(i / 20));
        put16(nodes, at + 2, quint16(i % 20));
        put16(nodes, at + 4, quint16(width));
        put16(nodes, at + 6, quint16(height));
        if (i % 10 == 9) {
            put16(nodes, at + 12, quint16(i - 1));
            const int linked = (i - 1) * 28;
            nodes.replace(at + 4, 4, nodes.mid(linked + 4, 4));
            nodes[at + 14] = 1;
            nodes[at + 15] = nodes[linked + 15];
            put16(nodes, at + 24, qFromLittleEndian<quint16>(nodes.constData() + linked + 24));
            continue;
        }
        QImage image(width, height, QImage::Format_Indexed8);
        image.fill(0);
        const int colourCount = small ? 32 : 256;
        for (int y = 0; y < height; ++y) {
            uchar* row = image.scanLine(y);
            for (int x = 0; x < width; ++x) {
                const double dx = (x - width / 2.0) / (width * 0.4);
                const double dy = (y - height / 2.0) / (height * 0.45);
                if (dx * dx + dy * dy < 1)
                    row[x] = uchar(1 + (x / 3 + y / 5 + i + (rng.bounded(9) == 0 ? int(rng.bounded(4)) : 0)) %
                                           (colourCount - 1));
            }
        }
        const QByteArray block = small ? encodeLZ5(image) : encodeRLE8(image);
        nodes[at + 14] = char(small ? 4 : 2);
        nodes[at + 15] = char(small ? 5 : 8);
        put32(nodes, at + 16, quint32(ldata.size()));
        put32(nodes, at + 20, quint32(block.size() + 4));
        put16(nodes, at + 24, small ? 1 : 0);
        QByteArray size(4, '\0');
        put32(size, 0, quint32(width * height));
        ldata += size + block;
    }
    QByteArray header(512, '\0');
    header.replace(0, 12, QByteArray("ElecbyteSpr", 12));
    put32(header, 12, 0x02000100);
    put32(header, 24, 0x02000100);
    put32(header, 36, 512 + 32);
    put32(header, 40, quint32(count));
    put32(header, 44, 512);
    put32(header, 48, 2);
    put32(header, 52, quint32(512 + 32 + nodes.size()));
    put32(header, 56, quint32(ldata.size()));
    put32(header, 60, quint32(512 + 32 + nodes.size() + ldata.size()));
    return header + paletteNodes + nodes + ldata;
}

QTemporaryDir& scratch()
{
    static QTemporaryDir dir;
    return dir;
}

QString syntheticPath()
{
    static const QString path = [] {
        const QString file = scratch().filePath(QStringLiteral("synthetic.sff"));
        QFile out(file);
        if (out.open(QIODevice::WriteOnly)) out.write(syntheticFile(10000));
        return file;
    }();
    return path;
}

QString pathFor(int which)
{
    return which == 0 ? largestTestFile() : syntheticPath();
}

void label(benchmark::State& state, const QString& path)
{
    state.SetLabel(QStringLiteral("%1, %2 KiB")
                       .arg(QFileInfo(path).fileName())
                       .arg(QFileInfo(path).size() / 1024)
                       .toStdString());
    state.SetBytesProcessed(int64_t(state.iterations()) * QFileInfo(path).size());
}

void BM_ReadBytes(benchmark::State& state)
{
    const QString path = pathFor(int(state.range(0)));
    if (path.isEmpty()) return state.SkipWithError("TAVREL_TESTDATA is not set");
    for (auto _ : state) {
        QFile file(path);
        file.open(QIODevice::ReadOnly);
        benchmark::DoNotOptimize(file.readAll());
    }
    label(state, path);
}

void BM_Open(benchmark::State& state)
{
    const QString path = pathFor(int(state.range(0)));
    if (path.isEmpty()) return state.SkipWithError("TAVREL_TESTDATA is not set");
    for (auto _ : state) {
        QSprites sprites(nullptr, uint(state.range(1)), false);
        if (!sprites.fromFile(path)) state.SkipWithError("the file doesn't open");
        benchmark::DoNotOptimize(sprites.count());
    }
    label(state, path);
}

// The floor under opening: the bytes read, and the model built for them as the reader builds it (one
// object and one image record per sprite, the blocks copied into the cache, the palettes, the check),
// but nothing parsed, decoded or compared.
void BM_BuildModel(benchmark::State& state)
{
    const QString path = pathFor(int(state.range(0)));
    if (path.isEmpty()) return state.SkipWithError("TAVREL_TESTDATA is not set");
    QSprites shape(nullptr, 0, false);
    if (!shape.fromFile(path)) return state.SkipWithError("the file doesn't open");
    struct Item
    {
        int group, index, x, y, shares;
        qsizetype bytes;
        QImageInfo info;
    };
    QList<Item> items;
    QHash<const QSpriteImageRecord*, int> first;
    for (uint i = 0; i < shape.count(); ++i) {
        const QSprite* sprite = shape.at(i);
        const QSpriteImageRecord* record = sprite->imageRecord();
        const int shares = first.value(record, -1);
        if (shares < 0) first.insert(record, int(i));
        items.append(Item{sprite->itemGroup(), sprite->itemIndex(), sprite->offsetX(), sprite->offsetY(),
                          shares, shape.cache()->stored(record->item).size(), record->info});
    }
    const uint palettes = shape.paletteCount();
    for (auto _ : state) {
        QFile file(path);
        file.open(QIODevice::ReadOnly);
        const QByteArray bytes = file.readAll();
        QSprites sprites(nullptr, uint(state.range(1)), false);
        sprites.beginNoUndo();
        sprites.setLoading(true);
        QList<QSpritePalette*> made;
        for (uint p = 0; p < palettes; ++p) {
            auto* palette = new QSpritePalette(&sprites);
            palette->setFields(1, int(p), 256);
            palette->setColorTable(QSpriteColorTable::create());
            sprites.insertPaletteObject(p, palette);
            made.append(palette);
        }
        QList<QSprite*> loaded;
        qsizetype at = 0;
        for (const Item& item : std::as_const(items)) {
            auto* sprite = new QSprite(&sprites);
            sprite->setFields(made.value(0), item.group, item.index, item.x, item.y, 0);
            if (item.shares >= 0) {
                sprite->setImageRecord(loaded.at(item.shares)->imageRecord());
            } else {
                QSpriteImageRecord* record = QSpriteImageRecord::create(sprites.cache());
                const qsizetype size = std::min(item.bytes, bytes.size() - at);
                record->setBlock(QByteArray(bytes.constData() + at, size), QStreamCacheFilter::PNGFilter,
                                 item.info, 0, true);
                at = (at + size) % std::max(qsizetype(1), bytes.size() / 2);
                sprite->setImageRecord(record);
            }
            loaded.append(sprite);
        }
        sprites.appendLoaded(loaded);
        sprites.endNoUndo();
        sprites.setLoading(false);
        sprites.check();
        benchmark::DoNotOptimize(sprites.count());
    }
    label(state, path);
}

void BM_SaveStored(benchmark::State& state)
{
    const QString path = pathFor(int(state.range(0)));
    if (path.isEmpty()) return state.SkipWithError("TAVREL_TESTDATA is not set");
    QSprites sprites(nullptr, 0, false);
    sprites.fromFile(path);
    const QString target = scratch().filePath(QStringLiteral("saved.sff"));
    for (auto _ : state)
        if (!sprites.toFile(target, 0, true)) state.SkipWithError("the file can't be saved");
    label(state, path);
}

// The same bytes written as the save writes them: through QSaveFile, which syncs before it renames.
void BM_CopySaveFile(benchmark::State& state)
{
    const QString path = pathFor(int(state.range(0)));
    if (path.isEmpty()) return state.SkipWithError("TAVREL_TESTDATA is not set");
    const QString target = scratch().filePath(QStringLiteral("copied.sff"));
    for (auto _ : state) {
        QFile in(path);
        in.open(QIODevice::ReadOnly);
        QSaveFile out(target);
        out.open(QIODevice::WriteOnly);
        out.write(in.readAll());
        out.commit();
    }
    label(state, path);
}

void BM_CopyPlain(benchmark::State& state)
{
    const QString path = pathFor(int(state.range(0)));
    if (path.isEmpty()) return state.SkipWithError("TAVREL_TESTDATA is not set");
    const QString target = scratch().filePath(QStringLiteral("plain.sff"));
    for (auto _ : state) {
        QFile::remove(target);
        QFile::copy(path, target);
    }
    label(state, path);
}

qint64 residentBytes()
{
    QFile statm(QStringLiteral("/proc/self/statm"));
    if (!statm.open(QIODevice::ReadOnly)) return 0;
    const QList<QByteArray> fields = statm.readAll().split(' ');
    return fields.value(1).toLongLong() * sysconf(_SC_PAGESIZE);
}

// Resident memory that an open model of the synthetic file adds, with the cache in memory (0) or in a
// temporary file (1).
void BM_ResidentMemory(benchmark::State& state)
{
    const QString path = syntheticPath();
    qint64 added = 0;
    qint64 cacheFile = 0;
    for (auto _ : state) {
        const qint64 before = residentBytes();
        QSprites sprites(nullptr, uint(state.range(0)), false);
        sprites.fromFile(path);
        added = residentBytes() - before;
        cacheFile = sprites.cache()->fileSize();
    }
    state.counters["resident_MiB"] = double(added) / (1 << 20);
    state.counters["file_MiB"] = double(QFileInfo(path).size()) / (1 << 20);
    state.counters["cache_file_MiB"] = double(cacheFile) / (1 << 20);
}

} // namespace

BENCHMARK(BM_ReadBytes)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Open)->Args({0, 0})->Args({1, 0})->Args({1, 1})->Unit(benchmark::kMillisecond);
BENCHMARK(BM_BuildModel)->Args({0, 0})->Args({1, 0})->Args({1, 1})->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SaveStored)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_CopySaveFile)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_CopyPlain)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ResidentMemory)->Arg(1)->Arg(0)->Iterations(1)->Unit(benchmark::kMillisecond);

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
