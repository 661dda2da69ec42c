#include "QActionGif.h"

#include "QAnimation.h"
#include "QAnimationFrame.h"
#include "QGifWriter.h"
#include "QOctreeQuantizer.h"
#include "QRGBPal.h"
#include "QSprite.h"
#include "QSpritePalette.h"
#include "QSprites.h"

#include <QCoreApplication>
#include <QHash>

#include <algorithm>

namespace {

constexpr int TicksPerSecond = 60;
constexpr int MaxDelay = 0xFFFF;
constexpr int MaxSide = 0xFFFF;

QString tr(const char* text)
{
    return QCoreApplication::translate("QActionGif", text);
}

// What a frame puts on the canvas: the sprite's pixels as drawn, or nothing.
struct Picture
{
    QImage image;
    QList<QRgb> table;
    int left = 0;
    int top = 0;
    int delay = 0;
    bool loop = false;
};

// The palette an indexed sprite is drawn with, chosen as the sprite view chooses it.
const QSpritePalette* paletteFor(QSprites& sprites, const QSprite* sprite, int paletteIndex)
{
    if (paletteIndex < 0 || paletteIndex >= int(sprites.paletteCount())) return sprite->palette();
    const QSpritePalette* palette = sprites.paletteAt(uint(paletteIndex));
    int group = 0, number = 0;
    if (sprites.remapModel()->find(palette->itemGroup(), palette->itemIndex(), &group, &number)) {
        const int linked = sprites.findPalette(0, group, number);
        if (linked >= 0) palette = sprites.paletteAt(uint(linked));
    }
    return palette;
}

QList<QRgb> tableOf(const QSpritePalette* palette)
{
    QList<QRgb> table(QRGBPal::TableSize, 0);
    if (palette && palette->table())
        for (int i = 0; i < QRGBPal::TableSize; ++i)
            table[i] = palette->table()[i].toRgb();
    return table;
}

// The hundredth of a second at which an action time in ticks falls, to the nearest.
qint64 hundredths(qint64 ticks)
{
    return (ticks * 100 + TicksPerSecond / 2) / TicksPerSecond;
}

} // namespace

bool QActionGif::prepare(const QAnimation& animation, QSprites& sprites, QGifWriter* gif, QString* error,
                         int paletteIndex)
{
    const auto fail = [error](const QString& reason) {
        if (error) *error = reason;
        return false;
    };
    *gif = QGifWriter();

    // Timing first: which frames get any time at all.
    QList<const QAnimationFrame*> shown;
    QList<int> delays;
    QList<bool> loops;
    qint64 ticks = 0;
    bool loopPending = false;
    for (const QAnimationFrame* frame : animation.frames) {
        loopPending = loopPending || frame->checkInterFrame(QInterFrameElementType::LoopStart);
        int delay = MaxDelay;
        if (frame->time >= 0) {
            const qint64 start = ticks;
            ticks += frame->time;
            delay = int(std::min<qint64>(hundredths(ticks) - hundredths(start), MaxDelay));
        }
        if (delay > 0) {
            shown << frame;
            delays << delay;
            loops << loopPending;
            loopPending = false;
        }
        if (frame->time < 0) break;
    }
    if (shown.isEmpty() && !animation.frames.isEmpty()) {
        shown << animation.frames.first();
        delays << 0;
        loops << true;
    }
    if (!loops.contains(true) && !loops.isEmpty()) loops.first() = true;

    // The pictures, each sprite decoded once however many frames show it.
    QHash<const QSprite*, QImage> decoded;
    QList<Picture> pictures;
    int maxLeft = 0, maxTop = 0, maxRight = 0, maxBottom = 0;
    bool anyPicture = false;
    for (int i = 0; i < shown.size(); ++i) {
        const QAnimationFrame* frame = shown.at(i);
        Picture picture;
        picture.delay = delays.at(i);
        picture.loop = loops.at(i);
        const int found = sprites.find(0, frame->spriteGroup, frame->spriteIndex);
        const QSprite* sprite = found >= 0 ? sprites.at(uint(found)) : nullptr;
        if (sprite) {
            auto cached = decoded.find(sprite);
            if (cached == decoded.end())
                cached = decoded.insert(sprite, sprite->image(QSpriteImagePalette::None));
            picture.image = cached.value();
        }
        if (!picture.image.isNull()) {
            const bool horizontal = frame->flip & int(QAnimationFrameFlip::Horizontally);
            const bool vertical = frame->flip & int(QAnimationFrameFlip::Vertically);
            if (horizontal || vertical) picture.image = picture.image.mirrored(horizontal, vertical);
            if (picture.image.format() == QImage::Format_Indexed8) {
                picture.table = tableOf(paletteFor(sprites, sprite, paletteIndex));
                picture.image.setColorTable(picture.table);
            } else {
                // A GIF holds indices only: a true colour sprite gets colours of its own, with the
                // engine's transparent index 0 for what it doesn't cover.
                picture.image = QOctreeQuantizer::quantizeKeepingTransparency(picture.image);
                picture.table = picture.image.colorTable();
            }
            const int width = picture.image.width();
            const int height = picture.image.height();
            const int axisX = horizontal ? width - sprite->offsetX() - 1 : sprite->offsetX();
            const int axisY = vertical ? height - sprite->offsetY() - 1 : sprite->offsetY();
            picture.left = axisX - frame->offsetX;
            picture.top = axisY - frame->offsetY;
            maxLeft = std::max(maxLeft, picture.left);
            maxTop = std::max(maxTop, picture.top);
            maxRight = std::max(maxRight, width - picture.left);
            maxBottom = std::max(maxBottom, height - picture.top);
            anyPicture = true;
        }
        pictures << picture;
    }
    if (!anyPicture)
        return fail(tr("No frame of action %1 shows a sprite of the sprite file.").arg(animation.number));
    const qint64 canvasWidth = qint64(maxLeft) + maxRight;
    const qint64 canvasHeight = qint64(maxTop) + maxBottom;
    if (canvasWidth > MaxSide || canvasHeight > MaxSide)
        return fail(tr("The frames of action %1 spread over %2 x %3 pixels, more than a GIF can hold.")
                        .arg(animation.number)
                        .arg(canvasWidth)
                        .arg(canvasHeight));
    gif->width = ushort(canvasWidth);
    gif->height = ushort(canvasHeight);

    // One global table when every picture has the same colours, else a table per frame.
    const QList<QRgb>* common = nullptr;
    bool samePalette = true;
    for (const Picture& picture : pictures) {
        if (picture.image.isNull()) continue;
        if (!common)
            common = &picture.table;
        else if (picture.table != *common)
            samePalette = false;
    }
    if (samePalette) gif->palette = *common;

    gif->frames.reserve(pictures.size());
    for (const Picture& picture : pictures) {
        QGifFrame frame;
        frame.delay = ushort(picture.delay);
        frame.loop = picture.loop;
        if (picture.image.isNull()) {
            // Nothing to show for this time: one transparent pixel clears the frame before it.
            frame.image = QImage(1, 1, QImage::Format_Indexed8);
            frame.image.setColorTable(QList<QRgb>{0});
            frame.image.fill(0);
            if (!samePalette) frame.palette = QList<QRgb>{0};
        } else {
            frame.image = picture.image;
            frame.x = ushort(maxLeft - picture.left);
            frame.y = ushort(maxTop - picture.top);
            if (!samePalette) frame.palette = picture.table;
        }
        gif->frames << frame;
    }
    return true;
}

bool QActionGif::write(const QAnimation& animation, QSprites& sprites, const QString& path, QString* error,
                       int paletteIndex)
{
    QGifWriter gif;
    return prepare(animation, sprites, &gif, error, paletteIndex) && gif.save(path, error);
}
