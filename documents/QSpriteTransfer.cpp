#include "QSpriteTransfer.h"

#include "QPCXCodec.h"
#include "QRGBPalette.h"
#include "QSprite.h"
#include "QSpritePalette.h"
#include "QSprites.h"
#include "QTextScanner.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStringConverter>
#include <QTextStream>

#include <algorithm>

namespace {

const char* const exportHeader = ";0 always import the palette, 1 import only if all colors doesn't match to "
                                 "any existing palette\nnoDuplicatePal = 0\n";

const char* const sprMakerOptions = ".sff\r\n\r\n[Option]\r\nsprite.compress.5 = lz5\r\nsprite.compress.8 = "
                                    "png8\r\nsprite.compress.24 = png24\r\nsprite.compress.32 = "
                                    "png32\r\nsprite.decompressonload = 0\r\npal.reversepng = 0\r\n\r\n";

// The options that SprMaker must be told for one sprite.
struct SpriteOptions
{
    bool decompress = false;
    bool removeColors = false;

    bool any() const { return decompress || removeColors; }
    bool operator==(const SpriteOptions& other) const
    {
        return decompress == other.decompress && removeColors == other.removeColors;
    }
    bool operator!=(const SpriteOptions& other) const { return !(*this == other); }
};

SpriteOptions optionsOf(const QSprite* sprite)
{
    SpriteOptions options;
    options.decompress = sprite->flag(QSpriteFlag::DecompressOnLoad);
    options.removeColors = sprite->imageProperties().imageFormat() == QImage::Format_Indexed8 &&
                           sprite->palette() && sprite->palette()->colorCount() < QSpritePalette::MaxColors;
    return options;
}

bool writeText(const QString& path, const QString& text, QStringConverter::Encoding encoding)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) return false;
    QTextStream stream(&file);
    stream.setEncoding(encoding);
    stream << text;
    stream.flush();
    if (stream.status() != QTextStream::Ok) {
        file.cancelWriting();
        return false;
    }
    return file.commit();
}

bool writeImage(const QString& path, const QImage& image)
{
    if (image.isNull()) return false;
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) return false;
    if (!image.save(&file, "PNG")) {
        file.cancelWriting();
        return false;
    }
    return file.commit();
}

// Writes the image and palette files of a selection into a folder.
bool writeFiles(const QSprites& sprites, const QSpriteSelection& selection, const QDir& folder)
{
    bool ok = true;
    for (const QSpritePalette* palette : QSpriteTransfer::selectedPalettes(sprites, selection)) {
        const QString name = QSpriteTransfer::paletteFileName(palette->itemGroup(), palette->itemIndex());
        ok = palette->toFile(folder.filePath(name)) && ok;
    }
    for (const QSprite* sprite : QSpriteTransfer::selectedSprites(sprites, selection)) {
        // An empty sprite has no pixels to save; its definition still names the file, and reading it
        // back gives an empty sprite again.
        if (!sprite->hasImage()) continue;
        const QString name = QSpriteTransfer::imageFileName(sprite->itemGroup(), sprite->itemIndex());
        ok = writeImage(folder.filePath(name), sprite->image(QSpriteImagePalette::Default)) && ok;
    }
    return ok;
}

// One [SpriteDef] or [PaletteDef] section of an export file.
struct Definition
{
    bool sprite = false;
    int group = 0;
    int number = 0;
    int x = 0;
    int y = 0;
    int flags = 0;
    bool hasPalette = false;
    QSubItem palette;
    QString file;
};

int numberValue(const QList<QTextToken>& values, int at = 0)
{
    if (at >= values.size()) return 0;
    const QTextToken& token = values.at(at);
    if (token.kind == tkInteger) return token.text.toInt();
    if (token.kind == tkReal) return int(token.text.toDouble());
    return 0;
}

// A file name runs from behind the "=" to the end of the line or a comment; the scanner would cut it
// into numbers and identifiers, so it is taken from the line itself.
QString fileValue(const QString& line, int column)
{
    QString value = line.mid(column);
    const int comment = value.indexOf(QLatin1Char(';'));
    if (comment >= 0) value.truncate(comment);
    value = value.trimmed();
    if (value.size() >= 2 && value.startsWith(QLatin1Char('"')) && value.endsWith(QLatin1Char('"')))
        value = value.mid(1, value.size() - 2);
    return value;
}

class ExportReader
{
public:
    explicit ExportReader(const QString& text) : lines(text.split(QLatin1Char('\n'))) { read(text); }

    bool noDuplicatePal = false;
    QList<Definition> definitions;

private:
    void read(const QString& text)
    {
        QTextScanner scanner(text);
        QList<QTextToken> tokens;
        int line = 0;
        for (;;) {
            const int kind = scanner.next();
            if (kind == tkEnd || kind == tkEndOfLine) {
                readLine(tokens, line);
                tokens.clear();
                if (kind == tkEnd) break;
                continue;
            }
            if (tokens.isEmpty()) line = scanner.line();
            tokens.append(QTextToken{kind, scanner.tokenColumn(), scanner.text()});
        }
    }

    void readLine(const QList<QTextToken>& tokens, int line)
    {
        if (tokens.isEmpty()) return;
        if (tokens.at(0).kind == tkLeftBracket) {
            current = -1;
            if (tokens.size() < 2) return;
            const QString name = tokens.at(1).text;
            const bool sprite = name.compare(QLatin1String("SpriteDef"), Qt::CaseInsensitive) == 0;
            if (!sprite && name.compare(QLatin1String("PaletteDef"), Qt::CaseInsensitive) != 0) return;
            Definition definition;
            definition.sprite = sprite;
            definitions.append(definition);
            current = int(definitions.size()) - 1;
            return;
        }
        if (tokens.size() < 2 || tokens.at(0).kind != tkIdentifier || tokens.at(1).kind != tkEqual) return;
        const QString key = tokens.at(0).text.toLower();
        const QList<QTextToken> values = tokens.mid(2);
        if (key == QLatin1String("noduplicatepal")) {
            noDuplicatePal = numberValue(values) != 0;
            return;
        }
        if (current < 0) return;
        Definition& definition = definitions[current];
        if (key == QLatin1String("group")) {
            definition.group = numberValue(values);
        } else if (key == QLatin1String("number") || key == QLatin1String("image")) {
            definition.number = numberValue(values);
        } else if (key == QLatin1String("xaxis")) {
            definition.x = numberValue(values);
        } else if (key == QLatin1String("yaxis")) {
            definition.y = numberValue(values);
        } else if (key == QLatin1String("flags")) {
            definition.flags = numberValue(values);
        } else if (key == QLatin1String("palette")) {
            if (values.size() < 3 || values.at(1).kind != tkComma) return;
            definition.hasPalette = true;
            definition.palette = QSubItem{numberValue(values, 0), numberValue(values, 2)};
        } else if (key == QLatin1String("file") || key == QLatin1String("pcxfile")) {
            if (line >= 1 && line <= lines.size())
                definition.file = fileValue(lines.at(line - 1), tokens.at(1).column + 1);
        }
    }

    QStringList lines;
    int current = -1;
};

QImage loadImage(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return QImage();
    const QByteArray data = file.readAll();
    QImage image = QImage::fromData(data);
    if (image.isNull()) image = decodePCX(data);
    return image;
}

} // namespace

QSpriteSelection QSpriteSelection::ofGroups(const QList<int>& groups)
{
    QSpriteSelection selection;
    selection.kind = Groups;
    selection.groups = groups;
    return selection;
}

QSpriteSelection QSpriteSelection::run(int group, int first, int last)
{
    QSpriteSelection selection;
    selection.kind = Run;
    selection.group = group;
    selection.first = first;
    selection.last = last;
    return selection;
}

bool QSpriteSelection::contains(int itemGroup, int index) const
{
    switch (kind) {
    case All:
        return true;
    case Groups:
        return groups.contains(itemGroup);
    case Run:
        return itemGroup == group && index >= first && index <= last;
    }
    return false;
}

QString QSpriteTransfer::imageFileName(int group, int index)
{
    return QStringLiteral("%1-%2.png").arg(group).arg(index);
}

QString QSpriteTransfer::paletteFileName(int group, int index)
{
    return QStringLiteral("%1-%2.act").arg(group).arg(index);
}

QList<QSprite*> QSpriteTransfer::selectedSprites(const QSprites& sprites, const QSpriteSelection& selection)
{
    QList<QSprite*> result;
    for (QSprite* sprite : sprites.spriteItems())
        if (selection.contains(sprite->itemGroup(), sprite->itemIndex())) result.append(sprite);
    return result;
}

QList<QSpritePalette*> QSpriteTransfer::selectedPalettes(const QSprites& sprites,
                                                         const QSpriteSelection& selection)
{
    if (selection.kind == QSpriteSelection::All) return sprites.paletteItems();
    const QList<QSprite*> chosen = selectedSprites(sprites, selection);
    QList<QSpritePalette*> result;
    for (QSpritePalette* palette : sprites.paletteItems()) {
        const bool used = std::any_of(chosen.cbegin(), chosen.cend(), [palette](const QSprite* sprite) {
            return sprite->palette() == palette;
        });
        if (used) result.append(palette);
    }
    return result;
}

QString QSpriteTransfer::exportText(const QSprites& sprites, const QSpriteSelection& selection)
{
    QString text = QLatin1String(exportHeader);
    for (const QSpritePalette* palette : selectedPalettes(sprites, selection)) {
        text += QStringLiteral("\n[PaletteDef]\ngroup = %1\nnumber = %2\nfile = %3\n")
                    .arg(palette->itemGroup())
                    .arg(palette->itemIndex())
                    .arg(paletteFileName(palette->itemGroup(), palette->itemIndex()));
    }
    for (const QSprite* sprite : selectedSprites(sprites, selection)) {
        text += QStringLiteral("\n[SpriteDef]\ngroup = %1\nimage = %2\nxaxis = %3\nyaxis = %4\nflags = %5\n")
                    .arg(sprite->itemGroup())
                    .arg(sprite->itemIndex())
                    .arg(sprite->offsetX())
                    .arg(sprite->offsetY())
                    .arg(sprite->flags());
        if (const QSpritePalette* palette = sprite->palette())
            text += QStringLiteral("palette = %1,%2\n").arg(palette->itemGroup()).arg(palette->itemIndex());
        text += QStringLiteral("file = %1\n").arg(imageFileName(sprite->itemGroup(), sprite->itemIndex()));
    }
    return text;
}

QString QSpriteTransfer::sprMakerText(const QSprites& sprites, const QSpriteSelection& selection,
                                      const QString& baseName)
{
    QString text = QLatin1String("[Output]\r\n;filename = ") + baseName + QLatin1String(sprMakerOptions);
    text += QLatin1String("[Pal]\r\n");
    for (const QSpritePalette* palette : selectedPalettes(sprites, selection)) {
        text += QStringLiteral("%1,%2, %3, 0,%4\r\n")
                    .arg(palette->itemGroup())
                    .arg(palette->itemIndex())
                    .arg(paletteFileName(palette->itemGroup(), palette->itemIndex()))
                    .arg(palette->colorCount());
    }
    text += QLatin1String("\r\n[Sprite]\r\n");
    // Consecutive sprites that need the same options share one [Option] block. SprMaker keeps an
    // option until it is set again, so the run after sprites that were decompressed on load turns
    // that off again; the file's own option block starts with none of them.
    SpriteOptions previous;
    for (const QSprite* sprite : selectedSprites(sprites, selection)) {
        const SpriteOptions options = optionsOf(sprite);
        if (options != previous) {
            text += QLatin1String("\r\n[Option]\r\n");
            if (options.decompress)
                text += QLatin1String("sprite.decompressonload = 1\r\n");
            else if (previous.decompress)
                text += QLatin1String("sprite.decompressonload = 0\r\n");
            if (options.removeColors) text += QLatin1String("sprite.removecolors = 32,255\r\n");
            text += QLatin1String("\r\n[Sprite]\r\n");
            previous = options;
        }
        text += QStringLiteral("%1,%2, %3, %4,%5")
                    .arg(sprite->itemGroup())
                    .arg(sprite->itemIndex())
                    .arg(imageFileName(sprite->itemGroup(), sprite->itemIndex()))
                    .arg(sprite->offsetX())
                    .arg(sprite->offsetY());
        if (const QSpritePalette* palette = sprite->palette())
            text +=
                QStringLiteral(" ? usepal = %1,%2\r\n").arg(palette->itemGroup()).arg(palette->itemIndex());
        else
            text += QLatin1String("\r\n");
    }
    return text;
}

bool QSpriteTransfer::exportTo(QSprites& sprites, const QString& target, const QSpriteSelection& selection)
{
    const QFileInfo info(target);
    const QDir folder = info.absoluteDir();
    const bool sprMaker = info.suffix().compare(QLatin1String("def"), Qt::CaseInsensitive) == 0;
    bool ok = writeFiles(sprites, selection, folder);
    if (sprMaker)
        ok = writeText(target, sprMakerText(sprites, selection, info.completeBaseName()),
                       QStringConverter::Latin1) &&
             ok;
    else
        ok = writeText(target, exportText(sprites, selection), QStringConverter::Utf8) && ok;
    return ok;
}

bool QSpriteTransfer::importFrom(QSprites& sprites, const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return false;
    QTextStream stream(&file);
    stream.setEncoding(QStringConverter::Utf8);
    const ExportReader reader(stream.readAll());
    if (reader.definitions.isEmpty()) return true;

    const QDir folder = QFileInfo(path).absoluteDir();
    const QSpritePaletteShareMode paletteMode =
        reader.noDuplicatePal ? QSpritePaletteShareMode::NoShare : QSpritePaletteShareMode::Share;
    const bool wasLoading = sprites.isLoading();
    sprites.undoStack()->beginMacro(QStringLiteral("import"));
    sprites.setLoading(true);
    for (const Definition& definition : reader.definitions) {
        const QString source = definition.file.isEmpty() ? QString() : folder.filePath(definition.file);
        if (!definition.sprite) {
            QRGBPal table[QRGBPal::TableSize];
            std::fill(std::begin(table), std::end(table), QRGBPal(0, 0, 0, 0));
            QRGBPalette palette(table);
            if (!source.isEmpty() && palette.fromFile(source))
                sprites.addPalette(table, paletteMode, definition.group, definition.number);
            continue;
        }
        QSprite* sprite = sprites.add();
        sprite->setInfo(nullptr, definition.group, definition.number, definition.x, definition.y,
                        quint16(definition.flags));
        const QImage image = source.isEmpty() ? QImage() : loadImage(source);
        if (image.isNull()) continue;
        sprite->setImage(image, QSpriteShareMode::Share, false,
                         definition.hasPalette ? QSpritePaletteMode::SwapPalette : QSpritePaletteMode::Ignore,
                         definition.palette);
    }
    sprites.setLoading(wasLoading);
    sprites.undoStack()->endMacro();
    if (!wasLoading) {
        emit sprites.changed();
        sprites.check();
    }
    return true;
}
