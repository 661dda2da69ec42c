#include "QCliSffCommand.h"

#include "QACTPalette.h"
#include "QProjectContext.h"
#include "QSFFFormat.h"
#include "QSFFInfo.h"
#include "QSprite.h"
#include "QSpriteImageRecord.h"
#include "QSpritePalette.h"
#include "QSprites.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>
#include <QtEndian>

#include <libdeflate.h>

#include <vector>

namespace {

QString orNone(int value)
{
    return value < 0 ? QStringLiteral("none") : QString::number(value);
}

QJsonValue jsonOrNull(int value)
{
    return value < 0 ? QJsonValue() : QJsonValue(value);
}

QString itemName(int position, int group, int index, const QString& suffix)
{
    return QStringLiteral("%1_%2_%3.%4")
        .arg(position, 5, 10, QLatin1Char('0'))
        .arg(group)
        .arg(index)
        .arg(suffix);
}

// The kind of content a file stands in: the version 1.01 rules for the character's palette hold only
// for characters.
class SffProject : public QProjectContext
{
public:
    QProjectType type = Character;
    QProjectType projectType() const override { return type; }
    quint32 mugenVersion() const override { return 0x1010000; }
    QMessageList* messageList() const override { return nullptr; }
};

// The CRC-32 of a sprite's pixels as QSFFInfo::pixels gives them (indexed rows without their padding,
// any other form as RGBA8888), taken from the decoded block without first copying it into an image.
bool pixelsCrc(const QSpriteImageRecord& record, quint32* crc)
{
    const QImageInfo& info = record.info;
    const QByteArray raw = record.decoded();
    if (raw.isEmpty() || raw.size() != info.rawSize()) return false;
    const auto* bits = reinterpret_cast<const uchar*>(raw.constData());
    quint32 sum = 0;
    if (info.imageFormat() == QImage::Format_Indexed8) {
        for (int y = 0; y < info.height; ++y)
            sum = libdeflate_crc32(sum, bits + y * info.bytesPerLine(), size_t(info.rowBytes()));
    } else if (info.imageFormat() == QImage::Format_ARGB32) {
        // Both forms are unpremultiplied: the conversion only orders the bytes of each pixel anew.
        std::vector<quint32> line(info.width);
        for (int y = 0; y < info.height; ++y) {
            const auto* pixels = reinterpret_cast<const QRgb*>(bits + y * info.bytesPerLine());
            for (int x = 0; x < info.width; ++x) {
                const QRgb v = pixels[x];
                line[size_t(x)] =
                    qToLittleEndian((v & 0xFF00FF00u) | ((v >> 16) & 0xFFu) | ((v & 0xFFu) << 16));
            }
            sum = libdeflate_crc32(sum, line.data(), line.size() * 4);
        }
    } else {
        const QImage view(bits, info.width, info.height, info.bytesPerLine(), info.imageFormat());
        const QImage rgba = view.convertToFormat(QImage::Format_RGBA8888);
        if (rgba.isNull()) return false;
        for (int y = 0; y < rgba.height(); ++y)
            sum = libdeflate_crc32(sum, rgba.constScanLine(y), size_t(rgba.width()) * 4);
    }
    *crc = sum;
    return true;
}

bool typeNamed(const QString& name, QProjectType* type)
{
    static const QList<QPair<QString, QProjectType>> names{
        {QStringLiteral("character"), Character},   {QStringLiteral("stage"), Stage},
        {QStringLiteral("storyboard"), Storyboard}, {QStringLiteral("font"), Font},
        {QStringLiteral("system"), SystemScreen},   {QStringLiteral("fightfx"), FightFX}};
    for (const auto& entry : names)
        if (entry.first == name) {
            *type = entry.second;
            return true;
        }
    return false;
}

} // namespace

QString QCliSffCommand::summary() const
{
    return QStringLiteral("inspect, decode, extract or convert a sprite file (SFF 1.01, 2.00, 2.01)");
}

QString QCliSffCommand::usage() const
{
    return QStringLiteral("tavrel-cli sff info FILE [--json]\n"
                          "tavrel-cli sff list FILE [--json]\n"
                          "tavrel-cli sff decode FILE [--json]\n"
                          "tavrel-cli sff extract FILE DIR\n"
                          "tavrel-cli sff convert IN OUT [--version 1.01|2.00|2.01] [--reorder]\n"
                          "  --type character|stage|storyboard|font|system|fightfx: what the file belongs\n"
                          "  to, for every action; without it, a file with the sprite 9000,0 is a\n"
                          "  character's and any other a stage's. Only a character's file keeps the\n"
                          "  version 1.01 rules for the palette of group 1, which --reorder may need.");
}

int QCliSffCommand::run(QCliContext& context)
{
    const bool json = context.takeFlag(QStringLiteral("--json"));
    const bool reorder = context.takeFlag(QStringLiteral("--reorder"));
    QString version;
    bool hasVersion = false;
    if (!context.takeOption(QStringLiteral("--version"), &version, &hasVersion)) return CliUsage;
    QString typeName;
    bool hasType = false;
    if (!context.takeOption(QStringLiteral("--type"), &typeName, &hasType)) return CliUsage;
    SffProject project;
    if (hasType && !typeNamed(typeName, &project.type))
        return context.usageError(
            QStringLiteral("sff: --type takes character, stage, storyboard, font, system or fightfx"),
            usage());
    const QString action = context.arguments.value(0);
    const int wanted = (action == QLatin1String("extract") || action == QLatin1String("convert")) ? 3 : 2;
    const bool known = action == QLatin1String("info") || action == QLatin1String("list") ||
                       action == QLatin1String("decode") || action == QLatin1String("extract") ||
                       action == QLatin1String("convert");
    if (!known || context.arguments.size() != wanted)
        return context.usageError(QStringLiteral("sff: expected info, list, decode, extract or convert and "
                                                 "their files"),
                                  usage());
    if (hasVersion && action != QLatin1String("convert"))
        return context.usageError(QStringLiteral("sff: --version belongs to convert"), usage());

    const QString input = context.arguments.at(1);
    if (!QFileInfo(input).isFile()) return context.fail(input, QStringLiteral("no such file"));
    QSprites sprites(&project, 0, false);
    if (!sprites.fromFile(input)) return context.fail(input, QStringLiteral("not a sprite file"));
    if (!hasType && sprites.find(0, 9000, 0) < 0) {
        // Read as a character's until the sprites were known; a version 1.01 file is read again, since
        // its palettes follow the kind.
        project.type = Stage;
        if (sprites.version() == QSprites::Version_101 && !sprites.fromFile(input))
            return context.fail(input, QStringLiteral("not a sprite file"));
        sprites.check();
    }

    if (action == QLatin1String("info")) return info(context, sprites, json);
    if (action == QLatin1String("list")) return list(context, sprites, json);
    if (action == QLatin1String("decode")) return decode(context, sprites, json);
    if (action == QLatin1String("extract")) return extract(context, sprites, context.arguments.at(2));
    return convert(context, sprites, context.arguments.at(2), version, reorder);
}

int QCliSffCommand::info(QCliContext& context, QSprites& sprites, bool json)
{
    const QSFFInfo::Summary summary = QSFFInfo::summary(sprites);
    if (json) {
        QJsonObject formats;
        for (auto it = summary.formats.constBegin(); it != summary.formats.constEnd(); ++it)
            formats[it.key()] = it.value();
        const QJsonObject root{{QStringLiteral("version"), summary.version},
                               {QStringLiteral("sprites"), summary.sprites},
                               {QStringLiteral("palettes"), summary.palettes},
                               {QStringLiteral("formats"), formats},
                               {QStringLiteral("linkedSprites"), summary.linkedSprites},
                               {QStringLiteral("linkedPalettes"), summary.linkedPalettes},
                               {QStringLiteral("sharedSprites"), summary.sharedSprites}};
        context.out << QJsonDocument(root).toJson(QJsonDocument::Indented);
        return CliSuccess;
    }
    context.out << "version: " << summary.version << '\n'
                << "sprites: " << summary.sprites << '\n'
                << "palettes: " << summary.palettes << '\n';
    for (auto it = summary.formats.constBegin(); it != summary.formats.constEnd(); ++it)
        context.out << "format " << it.key() << ": " << it.value() << '\n';
    context.out << "linked sprites: " << summary.linkedSprites << '\n'
                << "linked palettes: " << summary.linkedPalettes << '\n'
                << "shared sprites: " << summary.sharedSprites << '\n';
    return CliSuccess;
}

int QCliSffCommand::list(QCliContext& context, QSprites& sprites, bool json)
{
    const QList<QSFFInfo::Row> rows = QSFFInfo::rows(sprites);
    if (json) {
        QJsonArray array;
        for (const QSFFInfo::Row& row : rows)
            array.append(QJsonObject{{QStringLiteral("position"), row.position},
                                     {QStringLiteral("group"), row.group},
                                     {QStringLiteral("index"), row.index},
                                     {QStringLiteral("x"), row.axisX},
                                     {QStringLiteral("y"), row.axisY},
                                     {QStringLiteral("width"), row.width},
                                     {QStringLiteral("height"), row.height},
                                     {QStringLiteral("format"), row.format},
                                     {QStringLiteral("depth"), row.depth},
                                     {QStringLiteral("palette"), jsonOrNull(row.palette)},
                                     {QStringLiteral("link"), jsonOrNull(row.link)},
                                     {QStringLiteral("flags"), row.flags}});
        context.out << QJsonDocument(array).toJson(QJsonDocument::Indented);
        return CliSuccess;
    }
    context.out << "pos\tgroup\tindex\tx\ty\twidth\theight\tformat\tdepth\tpalette\tlink\tflags\n";
    for (const QSFFInfo::Row& row : rows)
        context.out << row.position << '\t' << row.group << '\t' << row.index << '\t' << row.axisX << '\t'
                    << row.axisY << '\t' << row.width << '\t' << row.height << '\t' << row.format << '\t'
                    << row.depth << '\t' << orNone(row.palette) << '\t' << orNone(row.link) << '\t'
                    << row.flags << '\n';
    return CliSuccess;
}

int QCliSffCommand::decode(QCliContext& context, QSprites& sprites, bool json)
{
    QElapsedTimer timer;
    timer.start();
    QList<QPair<int, quint32>> sums;
    int failed = 0;
    // Sprites that share pixels share their record: each record is decoded once.
    QHash<const QSpriteImageRecord*, quint32> known;
    for (uint i = 0; i < sprites.count(); ++i) {
        const QSpriteImageRecord* record = sprites.at(i)->imageRecord();
        quint32 crc = 0;
        if (!record) {
            ++failed;
        } else if (const auto it = known.constFind(record); it != known.constEnd()) {
            crc = it.value();
        } else if (pixelsCrc(*record, &crc)) {
            known.insert(record, crc);
        } else {
            crc = 0;
            ++failed;
        }
        sums.append({int(i), crc});
    }
    const double milliseconds = double(timer.nsecsElapsed()) / 1e6;
    const auto hex = [](quint32 crc) { return QStringLiteral("%1").arg(crc, 8, 16, QLatin1Char('0')); };
    if (json) {
        QJsonArray array;
        for (const auto& sum : std::as_const(sums))
            array.append(QJsonObject{{QStringLiteral("position"), sum.first},
                                     {QStringLiteral("crc32"), hex(sum.second)}});
        const QJsonObject root{{QStringLiteral("sprites"), array},
                               {QStringLiteral("undecodable"), failed},
                               {QStringLiteral("milliseconds"), milliseconds}};
        context.out << QJsonDocument(root).toJson(QJsonDocument::Indented);
    } else {
        for (const auto& sum : std::as_const(sums))
            context.out << sum.first << '\t' << hex(sum.second) << '\n';
        context.out << "decoded " << sums.size() - failed << " of " << sums.size() << " sprites in "
                    << QString::number(milliseconds, 'f', 2) << " ms\n";
    }
    return failed == 0 ? CliSuccess : CliFailed;
}

int QCliSffCommand::extract(QCliContext& context, QSprites& sprites, const QString& folder)
{
    QDir dir(folder);
    if (!dir.mkpath(QStringLiteral("palettes"))) return context.fail(folder, QStringLiteral("can't be made"));
    int written = 0;
    for (uint i = 0; i < sprites.count(); ++i) {
        const QSprite* sprite = sprites.at(i);
        QImage image = sprite->image(QSpriteImagePalette::Default);
        if (image.isNull()) {
            context.err << "tavrel-cli: " << sprites.fileName() << ": sprite " << i << " can't be decoded\n";
            continue;
        }
        if (image.format() != QImage::Format_Indexed8) image = image.convertToFormat(QImage::Format_ARGB32);
        const QString path = dir.filePath(itemName(int(i), sprite->itemGroup(), sprite->itemIndex(), "png"));
        if (!image.save(path, "PNG")) return context.fail(path, QStringLiteral("can't be written"));
        ++written;
    }
    for (uint i = 0; i < sprites.paletteCount(); ++i) {
        const QSpritePalette* palette = sprites.paletteAt(i);
        const QString path =
            dir.filePath(QStringLiteral("palettes/") +
                         itemName(int(i), palette->itemGroup(), palette->itemIndex(), QStringLiteral("act")));
        QSaveFile file(path);
        QRGBPal blank[QRGBPal::TableSize];
        if (!file.open(QIODevice::WriteOnly) ||
            !QACTPalette::write(&file, palette->table() ? palette->table() : blank) || !file.commit())
            return context.fail(path, QStringLiteral("can't be written"));
    }
    context.out << "wrote " << written << " sprites and " << sprites.paletteCount() << " palettes to "
                << folder << '\n';
    return written == int(sprites.count()) ? CliSuccess : CliFailed;
}

int QCliSffCommand::convert(QCliContext& context, QSprites& sprites, const QString& output,
                            const QString& version, bool reorder)
{
    const quint32 target = QSFF::parseVersion(version);
    if (target == 0 && !version.isEmpty())
        return context.usageError(QStringLiteral("sff: --version takes 1.01, 2.00 or 2.01"), usage());

    QList<uint> order;
    QObject::connect(&sprites, &QSprites::orderMustBeChanged, [&](const QList<uint>& list) {
        order = list;
        if (reorder) sprites.autoOrganize();
    });
    if (!sprites.toFile(output, target, true)) {
        if (!order.isEmpty() && !sprites.characterPaletteOrder().isEmpty()) {
            QStringList names;
            for (uint i : sprites.characterPaletteOrder())
                names << QStringLiteral("#%1 (%2, %3)")
                             .arg(i)
                             .arg(sprites.at(i)->itemGroup())
                             .arg(sprites.at(i)->itemIndex());
            return context.fail(
                output, QStringLiteral("version 1.01 can't give the character's palette to these sprites "
                                       "where they stand%1: %2")
                            .arg(reorder ? QString()
                                         : QStringLiteral(" (--reorder lets the sprites be "
                                                          "sorted)"))
                            .arg(names.join(QStringLiteral(", "))));
        }
        return context.fail(output, QStringLiteral("can't be written"));
    }
    context.out << "wrote " << output << " (version " << QSFF::versionText(sprites.version()) << ", "
                << sprites.count() << " sprites, " << sprites.paletteCount() << " palettes)\n";
    return CliSuccess;
}
