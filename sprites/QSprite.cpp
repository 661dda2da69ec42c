#include "QSprite.h"

#include "QRGBPalette.h"
#include "QSpriteImageRecord.h"
#include "QSpritePalette.h"
#include "QSprites.h"
#include "QStreamCache.h"
#include "QStreamCacheFilter.h"
#include "QUserDialogs.h"
#include "SpriteChangeImage.h"
#include "SpriteChangeInfo.h"

#include <QHash>

QSprite::QSprite(QSprites* parent) : QObject(parent), model(parent) {}

QSprite::~QSprite()
{
    QSpriteImageRecord::release(record);
}

int QSprite::index() const
{
    return model->indexOf(this);
}

void QSprite::setImageRecord(QSpriteImageRecord* value)
{
    if (value == record) return;
    QSpriteImageRecord::retain(value);
    QSpriteImageRecord::release(record);
    record = value;
}

void QSprite::setFields(QSpritePalette* palette, int group, int index, int x, int y, quint16 flags)
{
    pal = palette;
    this->group = group;
    number = index;
    axisX = x;
    axisY = y;
    flagBits = flags;
}

void QSprite::pushInfo()
{
    if (model->noUndoCount() == 0) model->pushCommand(new SpriteChangeInfo(model, uint(index())));
}

void QSprite::setInfo(QSpritePalette* palette, int group, int index, int x, int y, quint16 flags)
{
    if (palette == pal && group == this->group && index == number && x == axisX && y == axisY &&
        flags == flagBits)
        return;
    pushInfo();
    setFields(palette, group, index, x, y, flags);
    const int row = this->index();
    if (row >= 0) emit model->dataChanged(model->index(row), model->index(row));
    model->finishChange();
}

void QSprite::setItemGroup(int value)
{
    setInfo(pal, value, number, axisX, axisY, flagBits);
}

void QSprite::setItemIndex(int value)
{
    setInfo(pal, group, value, axisX, axisY, flagBits);
}

void QSprite::setOffsetX(int value)
{
    setInfo(pal, group, number, value, axisY, flagBits);
}

void QSprite::setOffsetY(int value)
{
    setInfo(pal, group, number, axisX, value, flagBits);
}

void QSprite::setPalette(QSpritePalette* value)
{
    setInfo(value, group, number, axisX, axisY, flagBits);
}

void QSprite::setFlag(QSpriteFlag which, bool on)
{
    setFlags(on ? quint16(flagBits | quint16(which)) : quint16(flagBits & ~quint16(which)));
}

void QSprite::setFlags(quint16 value)
{
    setInfo(pal, group, number, axisX, axisY, value);
}

bool QSprite::imageIsShared() const
{
    if (!record) return false;
    for (const QSprite* other : model->spriteItems())
        if (other != this && other->record == record) return true;
    return false;
}

QImageInfo QSprite::imageProperties() const
{
    return record ? record->info : QImageInfo();
}

QImage QSprite::image(QSpriteImagePalette mode) const
{
    if (!record) return QImage();
    QImage result = record->image();
    if (result.isNull() || result.format() != QImage::Format_Indexed8 || mode == QSpriteImagePalette::None)
        return result;
    const QSpritePalette* source = pal;
    if (mode == QSpriteImagePalette::Remapped && pal) {
        int group = 0;
        int index = 0;
        if (model->remapModel()->find(pal->itemGroup(), pal->itemIndex(), &group, &index)) {
            const int found = model->findPalette(0, group, index);
            if (found >= 0) source = model->paletteAt(uint(found));
        }
    }
    QList<QRgb> table(QRGBPal::TableSize, 0);
    if (source && source->table())
        for (int i = 0; i < QRGBPal::TableSize; ++i)
            table[i] = source->table()[i].toRgb();
    result.setColorTable(table);
    return result;
}

// The image in the colours of a palette, each pixel taking the nearest colour.
QImage QSprite::adaptToPalette(const QImage& image, const QSpritePalette* palette) const
{
    QRGBPal colours[QRGBPal::TableSize];
    std::copy(palette->table(), palette->table() + QRGBPal::TableSize, colours);
    const QRGBPalette lookup(colours);
    QImage result(image.size(), QImage::Format_Indexed8);
    QList<QRgb> table(QRGBPal::TableSize);
    for (int i = 0; i < QRGBPal::TableSize; ++i)
        table[i] = colours[i].toRgb();
    result.setColorTable(table);
    if (image.format() == QImage::Format_Indexed8) {
        uchar map[QRGBPal::TableSize] = {};
        const QList<QRgb> own = image.colorTable();
        for (int i = 0; i < QRGBPal::TableSize; ++i)
            map[i] = i < own.size() ? lookup.nearest(QRGBPal::fromRgb(own.at(i))) : 0;
        for (int y = 0; y < image.height(); ++y) {
            const uchar* from = image.constScanLine(y);
            uchar* to = result.scanLine(y);
            for (int x = 0; x < image.width(); ++x)
                to[x] = map[from[x]];
        }
        return result;
    }
    QHash<QRgb, uchar> known;
    for (int y = 0; y < image.height(); ++y) {
        const QRgb* from = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        uchar* to = result.scanLine(y);
        for (int x = 0; x < image.width(); ++x) {
            auto it = known.constFind(from[x]);
            if (it == known.constEnd()) it = known.insert(from[x], lookup.nearest(QRGBPal::fromRgb(from[x])));
            to[x] = it.value();
        }
    }
    return result;
}

bool QSprite::setImage(const QImage& source, QSpriteShareMode shareMode, bool invert,
                       QSpritePaletteMode paletteMode, QSubItem item)
{
    const int position = index();
    if (position < 0) return false;
    if (!source.isNull() && source.format() != QImage::Format_Indexed8 &&
        paletteMode != QSpritePaletteMode::AdaptImage && model->version() < QSprites::Version_201)
        QUserDialogs::warning(
            tr("Warning!"),
            tr("The image to be set to the sprite %1, %2 (#%3) isn't color indexed.\nFor the "
               "current SFF version, the image will be converted to indexed with an optimized "
               "palette when you save the file.")
                .arg(group)
                .arg(number)
                .arg(position + 1));

    const bool recording = model->noUndoCount() == 0;
    if (recording) model->undoStack()->beginMacro(tr("Set image"));
    const bool inPlace = shareMode == QSpriteShareMode::ReplaceShared && record;
    if (recording) model->pushCommand(new SpriteChangeImage(model, uint(position), inPlace));

    if (source.isNull()) {
        setImageRecord(nullptr);
    } else {
        QImage image = source;
        if (image.format() != QImage::Format_Indexed8 && image.format() != QImage::Format_RGB32 &&
            image.format() != QImage::Format_ARGB32)
            image = image.convertToFormat(QImage::Format_RGB32);
        if (invert && image.format() == QImage::Format_Indexed8) {
            QList<QRgb> table = image.colorTable();
            table.resize(QRGBPal::TableSize, 0);
            std::reverse(table.begin(), table.end());
            image.setColorTable(table);
            for (int y = 0; y < image.height(); ++y) {
                uchar* row = image.scanLine(y);
                for (int x = 0; x < image.width(); ++x)
                    row[x] = uchar(255 - row[x]);
            }
        }

        if (recording) {
            if (paletteMode == QSpritePaletteMode::AdaptImage ||
                paletteMode == QSpritePaletteMode::SwapPalette) {
                const int found = model->findPalette(0, item.group, item.index);
                QSpritePalette* chosen = found >= 0 ? model->paletteAt(uint(found)) : nullptr;
                if (chosen && paletteMode == QSpritePaletteMode::AdaptImage) {
                    if (chosen->table()) {
                        image = adaptToPalette(image, chosen);
                        setPalette(chosen);
                    }
                } else if (chosen) {
                    setPalette(chosen);
                }
            }
            if (image.format() == QImage::Format_Indexed8 &&
                (!pal || paletteMode == QSpritePaletteMode::OwnPalette)) {
                QRGBPal colours[QRGBPal::TableSize];
                const QList<QRgb> table = image.colorTable();
                for (int i = 0; i < QRGBPal::TableSize; ++i)
                    colours[i] = i < table.size() ? QRGBPal::fromRgb(table.at(i)) : QRGBPal(0, 0, 0, 0);
                colours[0].a = 0;
                setPalette(model->addPalette(colours, QSpritePaletteShareMode::NoShare, 0, -1));
            }
        }

        if (inPlace) {
            record->setPixels(image);
        } else {
            const QByteArray raw = QImageInfo::raw(image);
            QStreamCache* cache = model->cache();
            QSpriteImageRecord* taken = nullptr;
            if (shareMode != QSpriteShareMode::NoShare) {
                if (QStreamCacheItem* same = cache->find(raw, record ? record->item : nullptr))
                    for (const QSprite* other : model->spriteItems())
                        if (other->record && other->record->item == same &&
                            other->record->info.format == quint32(image.format()) &&
                            other->record->info.width == image.width() &&
                            other->record->info.height == image.height()) {
                            taken = other->record;
                            break;
                        }
            }
            if (taken) {
                setImageRecord(taken);
            } else {
                QList<uint> followers;
                if (record && shareMode != QSpriteShareMode::NoShare) {
                    const QList<QSprite*>& all = model->spriteItems();
                    for (int i = 0; i < all.size(); ++i)
                        if (all.at(i) != this && all.at(i)->record == record) followers.append(uint(i));
                    if (!followers.isEmpty() && shareMode == QSpriteShareMode::AskToShare)
                        emit model->dataSharing(followers);
                }
                QSpriteImageRecord* fresh = QSpriteImageRecord::create(cache);
                fresh->setBlock(raw, QStreamCacheFilter::RawFilter, QImageInfo::of(image),
                                QStreamCache::hash(raw), false);
                QSpriteImageRecord* old = record;
                setImageRecord(fresh);
                for (uint follower : std::as_const(followers)) {
                    QSprite* other = model->at(follower);
                    if (!other || other->record != old) continue;
                    if (recording) model->pushCommand(new SpriteChangeImage(model, follower));
                    other->setImageRecord(fresh);
                }
            }
        }
    }
    if (recording) model->undoStack()->endMacro();
    emit model->dataChanged(model->index(position), model->index(position));
    model->finishChange();
    return true;
}
