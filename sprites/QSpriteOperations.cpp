// The whole-file operations of the sprite model and the sprite operations that touch several sprites
// or palettes at once. Each opens one macro on the undo stack, so that one undo takes it all back.

#include "QSprite.h"
#include "QSpriteClipItem.h"
#include "QSpriteColorTable.h"
#include "QSpriteImageRecord.h"
#include "QSpritePalette.h"
#include "QSprites.h"
#include "SpriteChangeImage.h"
#include "SpriteChangeInfo.h"

#include <QSet>

#include <cstring>

namespace {

// A macro that opens at the first real change, so that an operation that changes nothing leaves no
// empty step on the stack. The model runs as loading meanwhile: validation runs once at the end.
class QLazyMacro
{
public:
    QLazyMacro(QSprites* model, const QString& text)
        : model(model), text(text), recording(model->noUndoCount() == 0), wasLoading(model->isLoading())
    {
        model->setLoading(true);
    }

    ~QLazyMacro()
    {
        if (opened && recording) model->undoStack()->endMacro();
        model->setLoading(wasLoading);
        if (opened) model->finishChange();
    }

    QLazyMacro(const QLazyMacro&) = delete;
    QLazyMacro& operator=(const QLazyMacro&) = delete;

    void open()
    {
        if (opened) return;
        opened = true;
        if (recording) model->undoStack()->beginMacro(text);
    }

private:
    QSprites* model;
    QString text;
    bool recording;
    bool wasLoading;
    bool opened = false;
};

} // namespace

// ---- Sprites

QRect QSprite::contentBox(const QImage& image)
{
    if (image.isNull()) return QRect();
    const QImage::Format format = image.format();
    if (format != QImage::Format_Indexed8 && format != QImage::Format_RGB32 &&
        format != QImage::Format_ARGB32)
        return QRect();
    int left = 100000;
    int top = 100000;
    int right = 0;
    int bottom = 0;
    const auto take = [&](int x, int y) {
        left = std::min(left, x);
        right = std::max(right, x);
        top = std::min(top, y);
        bottom = std::max(bottom, y);
    };
    if (format == QImage::Format_Indexed8) {
        for (int y = 0; y < image.height(); ++y) {
            const uchar* row = image.constScanLine(y);
            for (int x = 0; x < image.width(); ++x)
                if (row[x] != 0) take(x, y);
        }
    } else {
        // RGB32 leaves the top byte undefined in principle; only the colour counts there.
        const QRgb mask = format == QImage::Format_RGB32 ? 0x00FFFFFFu : 0xFFFFFFFFu;
        const QRgb corner = reinterpret_cast<const QRgb*>(image.constScanLine(0))[0] & mask;
        for (int y = 0; y < image.height(); ++y) {
            const QRgb* row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
            for (int x = 0; x < image.width(); ++x)
                if ((row[x] & mask) != corner) take(x, y);
        }
    }
    if (right < left || bottom < top) return QRect();
    return QRect(QPoint(left, top), QPoint(right, bottom));
}

QRect QSprite::cropBox(QImage* pixels) const
{
    if (!record) return QRect();
    const QImage image = record->image();
    const QRect box = contentBox(image);
    if (!box.isValid() || box == image.rect()) return QRect();
    if (pixels) *pixels = image;
    return box;
}

bool QSprite::cropTo(const QImage& pixels, const QRect& box)
{
    const int position = index();
    if (position < 0 || !record || !box.isValid() || !pixels.rect().contains(box)) return false;
    const bool recording = model->noUndoCount() == 0;
    if (recording) {
        model->undoStack()->beginMacro(QStringLiteral("crop"));
        model->pushCommand(new SpriteChangeImage(model, uint(position), true));
        model->pushCommand(new SpriteChangeInfo(model, uint(position)));
    }
    record->setPixels(pixels.copy(box));
    // Every sharer sees the cropped pixels; moving their axes keeps the image where it stood.
    const QList<QSprite*>& all = model->spriteItems();
    for (int i = 0; i < all.size(); ++i) {
        QSprite* sprite = all.at(i);
        if (sprite->record != record) continue;
        if (recording && sprite != this) model->pushCommand(new SpriteChangeInfo(model, uint(i)));
        sprite->setFields(sprite->pal, sprite->group, sprite->number, sprite->axisX - box.left(),
                          sprite->axisY - box.top(), sprite->flagBits);
        emit model->dataChanged(model->index(i), model->index(i));
    }
    if (recording) model->undoStack()->endMacro();
    model->finishChange();
    return true;
}

bool QSprite::crop()
{
    QImage pixels;
    const QRect box = cropBox(&pixels);
    return box.isValid() && cropTo(pixels, box);
}

bool QSprite::splitRGB()
{
    const int position = index();
    if (position < 0 || !record) return false;
    const QImage rgb = image(QSpriteImagePalette::Default).convertToFormat(QImage::Format_RGB888);
    if (rgb.isNull()) return false;

    QImage channels[3];
    QRGBPal ramps[3][QRGBPal::TableSize];
    for (int c = 0; c < 3; ++c) {
        QList<QRgb> table(QRGBPal::TableSize);
        for (int i = 0; i < QRGBPal::TableSize; ++i) {
            const uchar v = uchar(i);
            ramps[c][i] = QRGBPal(c == 0 ? v : 0, c == 1 ? v : 0, c == 2 ? v : 0, 255);
            table[i] = ramps[c][i].toRgb();
        }
        channels[c] = QImage(rgb.size(), QImage::Format_Indexed8);
        channels[c].setColorTable(table);
        for (int y = 0; y < rgb.height(); ++y) {
            const uchar* from = rgb.constScanLine(y);
            uchar* to = channels[c].scanLine(y);
            for (int x = 0; x < rgb.width(); ++x)
                to[x] = from[x * 3 + c];
        }
    }

    QLazyMacro macro(model, QStringLiteral("splitRGB"));
    macro.open();
    for (int c = 0; c < 3; ++c) {
        QSprite* target = c == 0 ? this : model->insert(uint(position + c));
        QSpritePalette* palette = model->addPalette(ramps[c], QSpritePaletteShareMode::NoShare, 0, -1);
        target->setInfo(palette, group, number, axisX, axisY, flagBits);
        // A fresh record of its own: the sprites that shared the RGB image keep it.
        target->setImage(channels[c], QSpriteShareMode::NoShare, false, QSpritePaletteMode::Ignore,
                         QSubItem());
    }
    return true;
}

// ---- The model

void QSprites::removeGroup(uint group, bool all, int from, int to)
{
    QLazyMacro macro(this, QStringLiteral("removeGroup"));
    for (uint i = count(); i-- > 0;) {
        const QSprite* sprite = spriteList.at(i);
        if (sprite->itemGroup() != int(group)) continue;
        if (!all && (sprite->itemIndex() < from || sprite->itemIndex() > to)) continue;
        macro.open();
        remove(i);
    }
}

void QSprites::removeDuplicatePalettes()
{
    QLazyMacro macro(this, QStringLiteral("removeDuplicatePalettes"));
    for (uint i = paletteCount(); i-- > 0;) {
        QSpritePalette* current = paletteList.at(i);
        if (current->isEmpty()) continue;
        int match = -1;
        for (uint j = 0; j < i && match < 0; ++j)
            if (paletteList.at(j)->colorTable() == current->colorTable()) match = int(j);
        for (uint j = 0; j < i && match < 0; ++j)
            if (!paletteList.at(j)->isEmpty() &&
                std::memcmp(paletteList.at(j)->table(), current->table(), QRGBPal::TableBytes) == 0)
                match = int(j);
        if (match < 0) continue;
        macro.open();
        QSpritePalette* kept = paletteList.at(match);
        for (QSprite* sprite : std::as_const(spriteList))
            if (sprite->palette() == current) sprite->setPalette(kept);
        removePalette(i);
    }
}

void QSprites::clearUnusedPalettes()
{
    QSet<const QSpritePalette*> used;
    for (const QSprite* sprite : std::as_const(spriteList))
        if (sprite->palette()) used.insert(sprite->palette());
    QLazyMacro macro(this, QStringLiteral("removeUnusedPalettes"));
    // The palettes of group 1 are the character's selectable ones and always stay.
    for (uint i = paletteCount(); i-- > 0;) {
        const QSpritePalette* palette = paletteList.at(i);
        if (used.contains(palette) || palette->itemGroup() == 1) continue;
        macro.open();
        removePalette(i);
    }
}

void QSprites::cropAll(bool all, uint group, bool allIndices, int from, int to)
{
    QLazyMacro macro(this, QStringLiteral("cropAll"));
    const uint total = count();
    bool allow = true;
    emit progress(0, total, allow);
    QSet<const QSpriteImageRecord*> handled;
    for (uint i = 0; i < total && i < count() && allow; ++i) {
        QSprite* sprite = spriteList.at(i);
        const bool passes =
            all || (sprite->itemGroup() == int(group) &&
                    (allIndices || (sprite->itemIndex() >= from && sprite->itemIndex() <= to)));
        const QSpriteImageRecord* record = sprite->imageRecord();
        if (passes && record && !handled.contains(record)) {
            handled.insert(record);
            QImage pixels;
            const QRect box = sprite->cropBox(&pixels);
            if (box.isValid()) {
                macro.open();
                sprite->cropTo(pixels, box);
            }
        }
        emit progress(i + 1, total, allow);
    }
}

int QSprites::paste(uint at, const QList<QSpriteClipItem>& items)
{
    if (items.isEmpty()) return 0;
    at = std::min(at, count());
    QLazyMacro macro(this, QStringLiteral("paste"));
    macro.open();
    for (int k = 0; k < items.size(); ++k) {
        const QSpriteClipItem& item = items.at(k);
        QSprite* sprite = insert(at + uint(k));
        sprite->setImage(item.image, QSpriteShareMode::Share, false, QSpritePaletteMode::Ignore, QSubItem());
        sprite->setInfo(sprite->palette(), item.group, item.index, item.x, item.y, item.flags);
    }
    return int(items.size());
}

int QSprites::paste(uint at, const QMimeData* data)
{
    return paste(at, QSpriteClipItem::fromMimeData(data));
}
