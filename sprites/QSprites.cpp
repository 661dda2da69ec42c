#include "QSprites.h"

#include "PaletteInsert.h"
#include "PaletteMove.h"
#include "PaletteRemove.h"
#include "QMugenModel.h"
#include "QOctreeQuantizer.h"
#include "QPaletteObject.h"
#include "QSFFReader.h"
#include "QSFFWriter.h"
#include "QSprite.h"
#include "QSpriteColorTable.h"
#include "QSpriteImageRecord.h"
#include "QSpritePalette.h"
#include "QUserDialogs.h"
#include "SpriteChangeInfo.h"
#include "SpriteInsert.h"
#include "SpriteMove.h"
#include "SpriteRemove.h"

#include <QHash>
#include <QSet>

#include <cstring>

namespace {

bool isSpecial(const QSprite* sprite)
{
    return (sprite->itemGroup() == 0 || sprite->itemGroup() == 9000) && sprite->itemIndex() == 0;
}

// Keys of (group, index) pairs for hashing.
quint64 key(int group, int index)
{
    return (quint64(quint32(group)) << 32) | quint32(index);
}

} // namespace

QSprites::QSprites(QProjectContext* project, QObject* parent)
    : QSprites(project, numberSetting("cache_type", 0), flagSetting("cache_compression", true), parent)
{}

QSprites::QSprites(QProjectContext* project, uint cacheType, bool cacheCompression, QObject* parent)
    : QOrganizableObject(parent), QProjectFile(pftSprites, project),
      streamCache(QStringLiteral("tavrel_sprites_XXXXXX.cache"), cacheType, cacheCompression),
      palettes(new QPaletteObject(this))
{
    undo.setUndoLimit(int(numberSetting("undo_limit", 64)));
}

QSprites::~QSprites()
{
    undo.clear();
    for (QSprite* sprite : std::as_const(spriteList))
        if (sprite->imageRecord()) sprite->imageRecord()->detach();
    qDeleteAll(spriteList);
    spriteList.clear();
    qDeleteAll(paletteList);
    paletteList.clear();
    streamCache.clear();
}

int QSprites::indexOf(const QSprite* sprite) const
{
    return spriteList.indexOf(const_cast<QSprite*>(sprite));
}

int QSprites::paletteIndexOf(const QSpritePalette* palette) const
{
    return palette ? paletteList.indexOf(const_cast<QSpritePalette*>(palette)) : -1;
}

void QSprites::finishChange()
{
    modified = true;
    if (loading) return;
    emit changed();
    check();
}

void QSprites::pushCommand(QUndoCommand* command)
{
    if (noUndo == 0)
        undo.push(command);
    else
        delete command;
}

void QSprites::undoChange()
{
    undo.undo();
    finishChange();
}

void QSprites::redoChange()
{
    undo.redo();
    finishChange();
}

// ---- Sprites

void QSprites::insertSpriteObject(uint at, QSprite* sprite)
{
    at = std::min(at, count());
    beginInsertRows(QModelIndex(), int(at), int(at));
    spriteList.insert(at, sprite);
    endInsertRows();
}

QSprite* QSprites::takeSprite(uint at)
{
    if (at >= count()) return nullptr;
    beginRemoveRows(QModelIndex(), int(at), int(at));
    QSprite* sprite = spriteList.takeAt(at);
    endRemoveRows();
    return sprite;
}

void QSprites::moveSpriteObject(uint from, uint to)
{
    if (from >= count() || to >= count() || from == to) return;
    beginMoveRows(QModelIndex(), int(from), int(from), QModelIndex(), int(to > from ? to + 1 : to));
    spriteList.move(from, to);
    endMoveRows();
}

void QSprites::appendLoaded(const QList<QSprite*>& sprites)
{
    if (sprites.isEmpty()) return;
    beginInsertRows(QModelIndex(), spriteList.size(), spriteList.size() + sprites.size() - 1);
    spriteList.append(sprites);
    endInsertRows();
}

QSprite* QSprites::add()
{
    return insert(count());
}

QSprite* QSprites::insert(uint index)
{
    index = std::min(index, count());
    auto* sprite = new QSprite(this);
    insertSpriteObject(index, sprite);
    pushCommand(new SpriteInsert(this, index));
    finishChange();
    return sprite;
}

void QSprites::remove(uint index)
{
    if (index >= count()) return;
    pushCommand(new SpriteRemove(this, index));
    delete takeSprite(index);
    finishChange();
}

void QSprites::move(uint from, uint to)
{
    if (from >= count() || to >= count() || from == to) return;
    pushCommand(new SpriteMove(this, from, to));
    moveSpriteObject(from, to);
    finishChange();
}

void QSprites::clearSprites()
{
    beginResetModel();
    undo.clear();
    for (QSprite* sprite : std::as_const(spriteList))
        if (sprite->imageRecord()) sprite->imageRecord()->detach();
    qDeleteAll(spriteList);
    spriteList.clear();
    streamCache.clear();
    endResetModel();
}

void QSprites::clear()
{
    clearSprites();
    path.clear();
    layout = QSFFLayout();
    modified = false;
    if (loading) return;
    emit changed();
    check();
}

int QSprites::find(uint start, int group, int index) const
{
    for (uint i = start; i < count(); ++i)
        if (spriteList.at(i)->itemGroup() == group && spriteList.at(i)->itemIndex() == index) return int(i);
    return -1;
}

int QSprites::findPalette(uint start, int group, int index) const
{
    for (uint i = start; i < paletteCount(); ++i)
        if (paletteList.at(i)->itemGroup() == group && paletteList.at(i)->itemIndex() == index) return int(i);
    return -1;
}

// ---- Palettes

void QSprites::insertPaletteObject(uint at, QSpritePalette* palette)
{
    at = std::min(at, paletteCount());
    palettes->beginInsertRows(QModelIndex(), int(at), int(at));
    paletteList.insert(at, palette);
    palettes->endInsertRows();
}

QSpritePalette* QSprites::takePalette(uint at)
{
    if (at >= paletteCount()) return nullptr;
    QSpritePalette* palette = paletteList.at(at);
    for (QSprite* sprite : std::as_const(spriteList))
        if (sprite->palette() == palette) sprite->setPalettePointer(nullptr);
    palettes->beginRemoveRows(QModelIndex(), int(at), int(at));
    paletteList.removeAt(at);
    palettes->endRemoveRows();
    return palette;
}

void QSprites::movePaletteObject(uint from, uint to)
{
    if (from >= paletteCount() || to >= paletteCount() || from == to) return;
    palettes->beginMoveRows(QModelIndex(), int(from), int(from), QModelIndex(), int(to > from ? to + 1 : to));
    paletteList.move(from, to);
    palettes->endMoveRows();
}

QSpritePalette* QSprites::addPalette(const QVector<uint>& colors, QSpritePaletteShareMode mode, int group,
                                     int index)
{
    return insertPalette(paletteCount(), colors, mode, group, index);
}

QSpritePalette* QSprites::addPalette(const QRGBPal* colors, QSpritePaletteShareMode mode, int group,
                                     int index)
{
    return makePalette(-1, colors, mode, group, index);
}

QSpritePalette* QSprites::insertPalette(uint at, const QVector<uint>& colors, QSpritePaletteShareMode mode,
                                        int group, int index)
{
    QRGBPal table[QRGBPal::TableSize];
    for (int i = 0; i < QRGBPal::TableSize; ++i)
        table[i] = i < colors.size() ? QRGBPal::fromRgb(colors.at(i)) : QRGBPal(0, 0, 0, 0);
    return makePalette(int(std::min(at, paletteCount())), table, mode, group, index);
}

QSpritePalette* QSprites::insertPalette(uint at, const QRGBPal* colors, QSpritePaletteShareMode mode,
                                        int group, int index)
{
    return makePalette(int(std::min(at, paletteCount())), colors, mode, group, index);
}

QSpritePalette* QSprites::makePalette(int at, const QRGBPal* colors, QSpritePaletteShareMode mode, int group,
                                      int index)
{
    QRGBPal blank[QRGBPal::TableSize];
    if (!colors) {
        std::memset(static_cast<void*>(blank), 0, sizeof blank);
        colors = blank;
    }
    if (mode != QSpritePaletteShareMode::Share) {
        for (QSpritePalette* palette : std::as_const(paletteList)) {
            if (!palette->table() || std::memcmp(palette->table(), colors, QRGBPal::TableBytes) != 0)
                continue;
            if (mode != QSpritePaletteShareMode::AskToShare || palette->itemGroup() != 1) return palette;
            break;
        }
    }
    if (index < 0) {
        int highest = -1;
        for (const QSpritePalette* palette : std::as_const(paletteList))
            if (palette->itemGroup() == group) highest = std::max(highest, palette->itemIndex());
        index = highest + 1;
    }
    int used = 0;
    for (int i = 254; i >= 0; --i)
        if (colors[i] != colors[255]) {
            used = i;
            break;
        }
    auto* palette = new QSpritePalette(this);
    palette->setFields(group, index, used < 32 ? 32 : QSpritePalette::MaxColors);
    palette->setColorTable(QSpriteColorTable::create(colors));
    const uint position = at < 0 ? paletteCount() : uint(at);
    insertPaletteObject(position, palette);
    pushCommand(new PaletteInsert(this, position));
    finishChange();
    return palette;
}

void QSprites::removePalette(uint index)
{
    if (index >= paletteCount()) return;
    QSpritePalette* palette = paletteList.at(index);
    const bool recording = noUndo == 0;
    if (recording) undo.beginMacro(tr("Remove palette"));
    for (int i = 0; i < spriteList.size(); ++i) {
        QSprite* sprite = spriteList.at(i);
        if (sprite->palette() != palette) continue;
        pushCommand(new SpriteChangeInfo(this, uint(i)));
        sprite->setPalettePointer(nullptr);
    }
    pushCommand(new PaletteRemove(this, index));
    delete takePalette(index);
    if (recording) undo.endMacro();
    finishChange();
}

void QSprites::movePalette(uint from, uint to)
{
    if (from >= paletteCount() || to >= paletteCount() || from == to) return;
    pushCommand(new PaletteMove(this, from, to));
    movePaletteObject(from, to);
    finishChange();
}

void QSprites::clearPalettes()
{
    if (paletteList.isEmpty()) return;
    const bool recording = noUndo == 0;
    const bool wasLoading = loading;
    if (recording) undo.beginMacro(tr("Clear palettes"));
    loading = true;
    for (uint i = paletteCount(); i-- > 0;)
        removePalette(i);
    loading = wasLoading;
    if (recording) undo.endMacro();
    finishChange();
}

// ---- Groups of changes and order

void QSprites::beginChanges()
{
    undo.beginMacro(QString());
    loading = true;
}

void QSprites::endChanges()
{
    loading = false;
    undo.endMacro();
    emit changed();
    check();
}

bool QSprites::lessThan(const QSprite* a, const QSprite* b) const
{
    const auto byNumber = [](const QSprite* x, const QSprite* y) {
        return x->itemGroup() != y->itemGroup() ? x->itemGroup() < y->itemGroup()
                                                : x->itemIndex() < y->itemIndex();
    };
    if (sffVersion != Version_101) return byNumber(a, b);
    const bool a9000 = a->itemGroup() == 9000;
    const bool b9000 = b->itemGroup() == 9000;
    if (a9000 || b9000) return a9000 && b9000 ? a->itemIndex() < b->itemIndex() : b9000;
    if (!a->palette() || !b->palette()) return !a->palette() && (b->palette() || byNumber(a, b));
    const bool aCharacter = a->palette()->itemGroup() == 1;
    const bool bCharacter = b->palette()->itemGroup() == 1;
    if (aCharacter != bCharacter) return aCharacter;
    if (aCharacter || a->palette() == b->palette()) return byNumber(a, b);
    return paletteIndexOf(a->palette()) < paletteIndexOf(b->palette());
}

void QSprites::autoOrganize()
{
    if (count() < 2) return;
    undo.beginMacro(QStringLiteral("autoOrganize"));
    const bool wasLoading = loading;
    loading = true;
    for (uint i = 1; i < count(); ++i)
        for (uint j = 0; j < i; ++j)
            if (lessThan(spriteList.at(i), spriteList.at(j))) {
                move(i, j);
                break;
            }
    loading = wasLoading;
    undo.endMacro();
    finishChange();
}

QList<uint> QSprites::characterPaletteOrder() const
{
    QList<uint> list;
    for (int i = 0; i < spriteList.size(); ++i) {
        const QSprite* sprite = spriteList.at(i);
        if (!sprite->palette() || isSpecial(sprite) || sprite->palette()->itemGroup() != 1) continue;
        const QSprite* before = i > 0 ? spriteList.at(i - 1) : nullptr;
        if (i == 0 || (before->palette() && before->palette()->itemGroup() != 1)) list.append(uint(i));
    }
    return list;
}

void QSprites::reduceToIndexed()
{
    QStringList reduced;
    for (const QSprite* sprite : std::as_const(spriteList))
        if (sprite->imageRecord() && sprite->imageRecord()->info.format != QImage::Format_Indexed8)
            reduced << QStringLiteral("%1,%2").arg(sprite->itemGroup()).arg(sprite->itemIndex());
    if (reduced.isEmpty()) return;
    // The version being written holds 256 colours a sprite: the user learns which sprites change
    // before they do.
    constexpr int shown = 20;
    QString names = reduced.mid(0, shown).join(QStringLiteral(", "));
    if (reduced.size() > shown) names += tr(" and %n more", nullptr, int(reduced.size() - shown));
    QUserDialogs::information(
        tr("Save sprites"), tr("This version of the sprite file holds sprites of 256 colours. These sprites "
                               "are reduced to 256 colours, their transparent pixels kept transparent: %1")
                                .arg(names));
    beginChanges();
    for (QSprite* sprite : std::as_const(spriteList)) {
        QSpriteImageRecord* record = sprite->imageRecord();
        if (!record || record->info.format == QImage::Format_Indexed8) continue;
        // The sprites that shared the true-colour image share the reduced one, with its palette. A sprite
        // that merely has equal bytes (a blank indexed sprite beside a blank true-colour one) may end up
        // sharing the record, but keeps its own palette: nobody touched it.
        QList<QSprite*> sharers;
        for (QSprite* other : std::as_const(spriteList))
            if (other != sprite && other->imageRecord() == record) sharers.append(other);
        sprite->setImage(QOctreeQuantizer::quantizeKeepingTransparency(record->image()),
                         QSpriteShareMode::Share, false, QSpritePaletteMode::OwnPalette, QSubItem());
        for (QSprite* other : std::as_const(sharers))
            if (other->imageRecord() == sprite->imageRecord() && other->palette() != sprite->palette())
                other->setPalette(sprite->palette());
    }
    endChanges();
}

// ---- Files

bool QSprites::fromFile(const QString& path, bool copy)
{
    QSFFReader reader(this);
    return reader.read(path, copy);
}

bool QSprites::toFile(const QString& path, quint32 version, bool copy)
{
    if (version != 0) sffVersion = version;
    QSFFWriter writer(this);
    return writer.write(path, copy);
}

// ---- The project file interface

bool QSprites::canSave(quint32 version)
{
    if (version == 0) version = sffVersion;
    if (spriteList.isEmpty()) {
        QUserDialogs::warning(tr("Save SFF"),
                              tr("You can't save an empty SFF because M.U.G.E.N. will not open it."));
        return false;
    }
    if (version == Version_201) {
        bool indexed = false;
        for (const QSprite* sprite : std::as_const(spriteList))
            indexed = indexed || (sprite->imageRecord() &&
                                  sprite->imageRecord()->info.format == QImage::Format_Indexed8);
        if (!indexed) return true;
    }
    if (paletteList.isEmpty()) {
        QUserDialogs::warning(tr("Save SFF"), tr("You can't save this SFF without palettes."));
        return false;
    }
    return true;
}

bool QSprites::canDiscard()
{
    if (!modified) return true;
    return QUserDialogs::question(
               tr("Discard changes"),
               tr("Do you really want to discard the changes made in the sprites and/or palettes?"),
               QUserDialogs::Yes | QUserDialogs::No, QUserDialogs::No) == QUserDialogs::Yes;
}

const QList<QSubItem>& QSprites::requiredSprites()
{
    static const QList<QSubItem> list = [] {
        QList<QSubItem> pairs;
        for (int group : {5000, 5001, 5002, 5010, 5011, 5012, 5020, 5040, 5041, 5042, 5070, 5071, 5072})
            for (int index : {0, 10, 20})
                pairs.append(QSubItem{group, index});
        for (int group : {5030, 5031, 5032})
            for (int index : {0, 10, 20, 30, 40, 50})
                pairs.append(QSubItem{group, index});
        for (int group : {5060, 5061, 5062})
            for (int index : {0, 10})
                pairs.append(QSubItem{group, index});
        return pairs;
    }();
    return list;
}

void QSprites::check()
{
    QMessages* list = messages();
    list->begin();
    const bool character = projectType() == Character;
    QHash<quint64, int> required;
    if (character)
        for (int i = 0; i < requiredSprites().size(); ++i)
            required.insert(key(requiredSprites().at(i).group, requiredSprites().at(i).index), i);
    QVector<bool> found(requiredSprites().size(), false);

    QHash<quint64, QList<int>> seen;
    for (int i = 0; i < spriteList.size(); ++i) {
        const QSprite* sprite = spriteList.at(i);
        const QSpriteImageRecord* record = sprite->imageRecord();
        if (!record) {
            list->add(0, tr("Empty sprite!"), i, 0);
        } else {
            const bool indexed = record->info.format == QImage::Format_Indexed8;
            if (indexed && !sprite->palette()) list->add(0, tr("Indexed sprite without palette!"), i, 0);
            // Saving in this version reduces the sprite to 256 colours, which loses colours: an error
            // the user should see before saving, though the save itself goes on.
            if (sffVersion != Version_201 && !indexed)
                list->add(
                    0,
                    tr("Image format not supported for the current version (automatic conversion to 8bit "
                       "will be made on save)!"),
                    i, 0);
        }
        if (i > 0 && character && sffVersion == Version_101 && sprite->palette() &&
            sprite->palette()->itemGroup() == 1 && !isSpecial(sprite)) {
            const QSprite* before = spriteList.at(i - 1);
            if (!isSpecial(before) && (!before->palette() || before->palette()->itemGroup() != 1))
                list->add(1, tr("Sprite can't receive the group 1 (character) palette at his position!"), i,
                          0);
        }
        QList<int>& earlier = seen[key(sprite->itemGroup(), sprite->itemIndex())];
        for (int j = earlier.size() - 1; j >= 0; --j)
            list->add(1,
                      tr("The group %2, index %3 is already in use by sprite #%4!")
                          .arg(sprite->itemGroup())
                          .arg(sprite->itemIndex())
                          .arg(earlier.at(j)),
                      i, 0);
        earlier.append(i);
        if (character) {
            const auto it = required.constFind(key(sprite->itemGroup(), sprite->itemIndex()));
            if (it != required.constEnd()) found[it.value()] = true;
        }
    }
    if (character)
        for (int r = 0; r < requiredSprites().size(); ++r)
            if (!found.at(r))
                list->add(0,
                          tr("Required sprite %1, %2 is missing!")
                              .arg(requiredSprites().at(r).group)
                              .arg(requiredSprites().at(r).index),
                          -1, 0);

    QHash<quint64, QList<int>> seenPalettes;
    for (int i = 0; i < paletteList.size(); ++i) {
        const QSpritePalette* palette = paletteList.at(i);
        if (palette->isEmpty()) list->add(0, tr("Empty palette!"), i, 1);
        QList<int>& earlier = seenPalettes[key(palette->itemGroup(), palette->itemIndex())];
        for (int j = earlier.size() - 1; j >= 0; --j)
            list->add(1,
                      tr("The group %2, index %3 is already in use by palette #%4!")
                          .arg(palette->itemGroup())
                          .arg(palette->itemIndex())
                          .arg(earlier.at(j)),
                      i, 1);
        earlier.append(i);
    }
    list->end();
}

// ---- The list model

int QSprites::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : spriteList.size();
}

QVariant QSprites::data(const QModelIndex& index, int role) const
{
    const QSprite* sprite = index.isValid() ? at(uint(index.row())) : nullptr;
    if (!sprite || role != Qt::DisplayRole) return QVariant();
    return QStringLiteral("%1, %2").arg(sprite->itemGroup()).arg(sprite->itemIndex());
}
