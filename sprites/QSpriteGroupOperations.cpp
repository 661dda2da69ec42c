// The operations of the sprite model that work on a range of sprites at once: renaming a group, the
// common canvas of aligned images, splitting channels and taking sprites over from another model.
// Each is one undo step.

#include "QSprite.h"
#include "QSpriteChangeGroup.h"
#include "QSpritePalette.h"
#include "QSprites.h"

#include <QHash>

#include <algorithm>
#include <cstring>

namespace {

// A palette of another model, as this model takes it: the one with the same colours if there is one,
// else a new palette under the same group and index, or the next free index when that pair is taken.
QSpritePalette* paletteFrom(QSprites& model, const QSpritePalette& source)
{
    const int group = source.itemGroup();
    const int index = model.findPalette(0, group, source.itemIndex()) >= 0 ? -1 : source.itemIndex();
    const uint before = model.paletteCount();
    QSpritePalette* taken = model.addPalette(source.table(), QSpritePaletteShareMode::NoShare, group, index);
    // A new palette counts its colours from the table; the source knows how many it really uses.
    if (taken && model.paletteCount() > before) taken->setColorCount(source.colorCount());
    return taken;
}

} // namespace

QList<uint> QSprites::rangeRows(bool all, int group, bool allIndices, int from, int to) const
{
    QList<uint> rows;
    for (uint i = 0; i < count(); ++i) {
        const QSprite* sprite = spriteList.at(i);
        if (all || (sprite->itemGroup() == group &&
                    (allIndices || (sprite->itemIndex() >= from && sprite->itemIndex() <= to))))
            rows.append(i);
    }
    return rows;
}

int QSprites::renameGroup(int group, int newGroup, bool all, int from, int to)
{
    if (group == newGroup) return 0;
    QSpriteChangeGroup changes(this, QStringLiteral("renameGroup"));
    int moved = 0;
    for (uint row : rangeRows(false, group, all, from, to)) {
        QSprite* sprite = spriteList.at(row);
        changes.open();
        sprite->setInfo(sprite->palette(), newGroup, sprite->itemIndex(), sprite->offsetX(),
                        sprite->offsetY(), sprite->flags());
        ++moved;
    }
    return moved;
}

QSize QSprites::alignedCanvas(const QList<uint>& rows, QPoint* axis) const
{
    bool any = false;
    int ax = 0;
    int ay = 0;
    int right = 0;
    int down = 0;
    for (uint row : rows) {
        const QSprite* sprite = at(row);
        if (!sprite || !sprite->hasImage()) continue;
        const QImageInfo info = sprite->imageProperties();
        const int x = sprite->offsetX();
        const int y = sprite->offsetY();
        if (!any) {
            ax = x;
            ay = y;
            right = info.width - x;
            down = info.height - y;
            any = true;
            continue;
        }
        ax = std::max(ax, x);
        ay = std::max(ay, y);
        right = std::max(right, info.width - x);
        down = std::max(down, info.height - y);
    }
    if (axis) *axis = QPoint(ax, ay);
    return any ? QSize(ax + right, ay + down) : QSize();
}

QImage QSprite::alignedImage(QPoint axis, QSize canvas) const
{
    QImage source = image(QSpriteImagePalette::Default);
    if (source.isNull() || canvas.isEmpty()) return QImage();
    QImage result;
    if (source.format() == QImage::Format_Indexed8) {
        result = QImage(canvas, QImage::Format_Indexed8);
        result.setColorTable(source.colorTable());
        result.fill(0);
    } else {
        source = source.convertToFormat(QImage::Format_ARGB32);
        result = QImage(canvas, QImage::Format_ARGB32);
        result.fill(Qt::transparent);
    }
    if (result.isNull()) return QImage();
    // Where the image's top left corner falls, so that its axis lands on the common one.
    const QPoint at = axis - QPoint(axisX, axisY);
    const int bytes = source.depth() / 8;
    const int first = std::max(0, -at.x());
    const int last = std::min(source.width(), canvas.width() - at.x());
    if (last <= first) return result;
    for (int y = std::max(0, -at.y()); y < source.height() && at.y() + y < canvas.height(); ++y)
        std::memcpy(result.scanLine(at.y() + y) + (at.x() + first) * bytes,
                    source.constScanLine(y) + first * bytes, size_t(last - first) * size_t(bytes));
    return result;
}

int QSprites::splitRGB(const QList<uint>& rows)
{
    QList<uint> order = rows;
    // From the last row up: each split inserts two sprites after its own, which moves only later rows.
    std::sort(order.begin(), order.end(), std::greater<uint>());
    order.erase(std::unique(order.begin(), order.end()), order.end());
    QSpriteChangeGroup changes(this, QStringLiteral("splitRGB"));
    int split = 0;
    for (uint row : std::as_const(order)) {
        QSprite* sprite = at(row);
        if (!sprite || !sprite->hasImage() ||
            sprite->imageProperties().imageFormat() == QImage::Format_Indexed8)
            continue;
        changes.open();
        if (sprite->splitRGB()) ++split;
    }
    return split;
}

int QSprites::importSprites(const QSprites& source, const QList<uint>& rows)
{
    if (&source == this) return 0;
    QSpriteChangeGroup changes(this, QStringLiteral("import"));
    QHash<const QSpritePalette*, QSpritePalette*> palettesTaken;
    const uint total = uint(rows.size());
    bool allow = true;
    emit progress(0, total, allow);
    int imported = 0;
    for (uint k = 0; k < total && allow; ++k) {
        const QSprite* from = source.at(rows.at(k));
        if (from) {
            changes.open();
            QSpritePalette* palette = nullptr;
            if (const QSpritePalette* own = from->palette(); own && !own->isEmpty()) {
                palette = palettesTaken.value(own);
                if (!palette) {
                    palette = paletteFrom(*this, *own);
                    palettesTaken.insert(own, palette);
                }
            }
            QSprite* sprite = add();
            sprite->setInfo(palette, from->itemGroup(), from->itemIndex(), from->offsetX(), from->offsetY(),
                            from->flags());
            // The pixels as they are: the palette is already the sprite's, and identical pixels here are
            // shared rather than stored twice.
            if (from->hasImage())
                sprite->setImage(from->image(QSpriteImagePalette::None), QSpriteShareMode::Share, false,
                                 QSpritePaletteMode::Ignore, QSubItem());
            ++imported;
        }
        emit progress(k + 1, total, allow);
    }
    return imported;
}
