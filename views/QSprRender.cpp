// The sprite view's content and positions: which sprite or frame it shows, with which colours, where
// every picture stands on the screen, and the zoom. Painting and input live in their own files.

#include "QSprRender.h"

#include "QAnimation.h"
#include "QAnimationFrame.h"
#include "QAnimations.h"
#include "QCollisionBox.h"
#include "QElementTextEditor.h"
#include "QSprGeometry.h"
#include "QSprite.h"
#include "QSpritePalette.h"
#include "QSprites.h"

#include <QPainter>
#include <QWidget>

#include <algorithm>

namespace {

// The built-in crosses: a plus of 15 pixels, its centre on pixel 7 so that it stands on the axis, in
// a light colour with a dark outline so that it shows on any sprite and backdrop.
QImage builtInCross(QRgb colour)
{
    QImage image(15, 15, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    const QRgb outline = qRgba(0, 0, 0, 160);
    for (int i = 0; i < 15; ++i) {
        for (int side : {6, 8}) {
            image.setPixel(i, side, outline);
            image.setPixel(side, i, outline);
        }
    }
    for (int i = 0; i < 15; ++i) {
        image.setPixel(i, 7, colour);
        image.setPixel(7, i, colour);
    }
    return image;
}

QImage crossImage(int type, const QString& file, QRgb colour)
{
    if (type != 0 && !file.isEmpty()) {
        const QImage custom(file);
        if (!custom.isNull()) return custom.convertToFormat(QImage::Format_ARGB32);
    }
    return builtInCross(colour);
}

// The onion skin's tints of a colour table; alpha stays.
QVector<QRgb> onionTable(const QVector<QRgb>& table, int effect)
{
    QVector<QRgb> result = table;
    for (QRgb& colour : result) {
        const int r = qRed(colour), g = qGreen(colour), b = qBlue(colour), a = qAlpha(colour);
        switch (effect) {
        case QSprRender::OnionMonochrome: {
            const int grey = (r + g + b) / 3;
            colour = qRgba(grey, grey, grey, a);
            break;
        }
        case QSprRender::OnionLighter:
            colour = qRgba(qMin(r + 32, 255), qMin(g + 32, 255), qMin(b + 32, 255), a);
            break;
        case QSprRender::OnionDarker:
            colour = qRgba(qMax(r - 32, 0), qMax(g - 32, 0), qMax(b - 32, 0), a);
            break;
        default:
            break;
        }
    }
    return result;
}

QVector<QRgb> tableOf(const QSpritePalette* palette)
{
    QVector<QRgb> table(QRGBPal::TableSize, 0);
    if (palette && palette->table())
        for (int i = 0; i < QRGBPal::TableSize; ++i)
            table[i] = palette->table()[i].toRgb();
    return table;
}

} // namespace

QSprRender::QSprRender(QObject* parent) : QRenderer(parent)
{
    readAhead.setSingleShot(true);
    readAhead.setInterval(0);
    connect(&readAhead, &QTimer::timeout, this, &QSprRender::readNeighbours);
    setCrosshair(0, QString(), QString(), QString());
    setBackground(QColor(96, 96, 128), QColor(16, 16, 32), 0, QPoint(), QString());
}

QSprRender::~QSprRender() = default;

void QSprRender::setSprites(QSprites* sprites)
{
    if (spriteModel == sprites) return;
    spriteModel = sprites;
    readAheadFrom = -1;
    imageCache.clear();
    clear();
}

void QSprRender::setAnimations(QAnimations* animations)
{
    if (actionModel == animations) return;
    actionModel = animations;
    if (mode == AnimationMode) clear();
}

void QSprRender::clear()
{
    currentSprite = nullptr;
    spriteWidth = spriteHeight = 0;
    currentAction = nullptr;
    currentFrame = nullptr;
    frameAngle = 0;
    frameScaleX = frameScaleY = 1;
    sourceAlpha = destinationAlpha = 256;
    spriteImage = QImage();
    colorTable.clear();
    onion = QImage();
    onionSprite = nullptr;
    boxes = 0;
    currentBox = 0;
    selection = false;
    drawing = false;
    pressed = false;
    spriteScreen = animationCrossScreen = onionScreen = QRect();
    update();
}

void QSprRender::setRenderMode(int value)
{
    mode = value == AnimationMode ? AnimationMode : SpriteMode;
    clear();
}

void QSprRender::loadSpriteImage(QSprite* sprite, int flip)
{
    currentSprite = sprite;
    loadedFlip = flip;
    spriteImage = sprite ? imageCache.pixels(sprite) : QImage();
    if (!spriteImage.isNull() && (flip & 3))
        spriteImage = spriteImage.mirrored(flip & int(QAnimationFrameFlip::Horizontally),
                                           flip & int(QAnimationFrameFlip::Vertically));
    spriteWidth = quint16(spriteImage.width());
    spriteHeight = quint16(spriteImage.height());
    if (!spriteImage.isNull()) zoom.fitSprite(spriteImage.size());
    applyPalette();
}

void QSprRender::applyPalette()
{
    colorTable.clear();
    if (!currentSprite || spriteImage.format() != QImage::Format_Indexed8) return;
    const QSpritePalette* palette = currentSprite->palette();
    if (spriteModel && paletteIndex >= 0 && paletteIndex < int(spriteModel->paletteCount())) {
        palette = spriteModel->paletteAt(uint(paletteIndex));
        // A link of the remap table shows another palette in place of this one.
        int group = 0, number = 0;
        if (spriteModel->remapModel()->find(palette->itemGroup(), palette->itemIndex(), &group, &number)) {
            const int linked = spriteModel->findPalette(0, group, number);
            if (linked >= 0) palette = spriteModel->paletteAt(uint(linked));
        }
    }
    colorTable = tableOf(palette);
}

void QSprRender::setSprite(int index)
{
    QSprite* sprite = spriteModel && index >= 0 ? spriteModel->at(uint(index)) : nullptr;
    currentFrame = nullptr;
    loadSpriteImage(sprite, 0);
    refresh();
    readAheadFrom = sprite ? index : -1;
    if (sprite) readAhead.start();
}

void QSprRender::readNeighbours()
{
    if (!spriteModel || readAheadFrom < 0) return;
    for (int index : {readAheadFrom + 1, readAheadFrom - 1})
        if (const QSprite* neighbour = index >= 0 ? spriteModel->at(uint(index)) : nullptr)
            imageCache.pixels(neighbour);
}

void QSprRender::setAction(int index)
{
    currentAction = actionModel && index >= 0 ? actionModel->at(uint(index)) : nullptr;
    currentFrame = nullptr;
    boxes = 0;
    selection = false;
    setFrame(0);
}

void QSprRender::setFrame(int index)
{
    lookSet = false;
    currentFrame = currentAction && index >= 0 ? currentAction->frameAt(uint(index)) : nullptr;
    if (!currentFrame) {
        loadSpriteImage(nullptr, 0);
        boxes = 0;
        selection = false;
        refresh();
        return;
    }
    frameAngle = qint32(currentFrame->angle);
    frameScaleX = currentFrame->scaleX;
    frameScaleY = currentFrame->scaleY;
    sourceAlpha = qint16(currentFrame->blendTarget.source);
    destinationAlpha = qint16(currentFrame->blendTarget.destination);
    QSprite* sprite = nullptr;
    if (spriteModel) {
        const int found = spriteModel->find(0, currentFrame->spriteGroup, currentFrame->spriteIndex);
        if (found >= 0) sprite = spriteModel->at(uint(found));
    }
    loadSpriteImage(sprite, currentFrame->flip);
    refreshBoxes();
}

void QSprRender::setFrameLook(QPoint offset, double scaleX, double scaleY, int angle, int source,
                              int destination)
{
    if (!currentFrame) return;
    lookSet = true;
    lookOffset = offset;
    frameScaleX = scaleX;
    frameScaleY = scaleY;
    frameAngle = angle;
    sourceAlpha = qint16(qBound(0, source, 256));
    destinationAlpha = qint16(qBound(0, destination, 256));
    refresh();
}

void QSprRender::setPalette(int index)
{
    paletteIndex = index;
    applyPalette();
    update();
}

void QSprRender::setOnionSprite(int index)
{
    onionIndex = index;
    loadOnion();
    computeRects();
    update();
}

void QSprRender::loadOnion()
{
    onionSprite = spriteModel && onionIndex >= 0 ? spriteModel->at(uint(onionIndex)) : nullptr;
    onion = QImage();
    if (!onionSprite) return;
    QImage pixels = imageCache.pixels(onionSprite);
    if (pixels.isNull()) return;
    if (pixels.format() == QImage::Format_Indexed8) {
        pixels.setColorTable(onionTable(tableOf(onionSprite->palette()), onionEffect));
        onion = pixels.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    } else {
        QImage tinted = pixels.convertToFormat(QImage::Format_ARGB32);
        for (int y = 0; y < tinted.height(); ++y) {
            auto* line = reinterpret_cast<QRgb*>(tinted.scanLine(y));
            const QVector<QRgb> row(line, line + tinted.width());
            const QVector<QRgb> tinted_row = onionTable(row, onionEffect);
            std::copy(tinted_row.begin(), tinted_row.end(), line);
        }
        onion = tinted.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    }
}

void QSprRender::reloadSprite()
{
    if (mode == AnimationMode) {
        if (currentFrame && currentAction) setFrame(int(currentAction->frames.indexOf(currentFrame)));
        return;
    }
    setSprite(currentSprite && spriteModel ? spriteModel->indexOf(currentSprite) : -1);
}

void QSprRender::refresh()
{
    computeRects();
    update();
}

void QSprRender::computeRects()
{
    const double z = zoom.factor();
    backgroundScreen =
        background.isNull() ? QRect() : QSprGeometry::placed(backgroundPos, background.size(), z, axis);
    if (!spriteImage.isNull()) {
        const QSize size = spriteImage.size();
        if (currentFrame) {
            QSprGeometry::Frame frame;
            frame.offset = lookSet ? lookOffset : QPoint(currentFrame->offsetX, currentFrame->offsetY);
            frame.flipH = loadedFlip & int(QAnimationFrameFlip::Horizontally);
            frame.flipV = loadedFlip & int(QAnimationFrameFlip::Vertically);
            axisInUse = QSprGeometry::axisInFrame(QPoint(currentSprite->offsetX(), currentSprite->offsetY()),
                                                  size, frame);
            spriteScreen = QSprGeometry::sprite(size, axisInUse, z, axis);
        } else if (mode == SpriteMode) {
            axisInUse = QPoint(currentSprite->offsetX(), currentSprite->offsetY());
            spriteScreen = QSprGeometry::sprite(size, axisInUse, z, axis);
        }
        // In animation mode without a frame the sprite stays where it was.
    } else {
        spriteScreen = QRect();
    }
    onionScreen = showOnion && onionSprite && !onion.isNull()
                      ? QSprGeometry::sprite(onion.size(),
                                             QPoint(onionSprite->offsetX(), onionSprite->offsetY()), z, axis)
                      : QRect();
    spriteCrossScreen = QSprGeometry::axisCross(spriteCross.size(), z, axis);
    animationCrossScreen =
        currentFrame ? QSprGeometry::crossAt(lookSet ? lookOffset
                                                     : QPoint(currentFrame->offsetX, currentFrame->offsetY),
                                             animationCross.size(), z, axis)
                     : QRect();
    extraCrossScreen = QSprGeometry::crossAt(extraAxis, extraCrossImage.size(), z, axis);
    if (mode == AnimationMode) {
        for (int i = 0; i < boxes; ++i)
            if (boxTable[size_t(i)].box)
                boxTable[size_t(i)].screen = QSprGeometry::box(boxTable[size_t(i)].box->rect(), z, axis);
        if (selection) refreshHandles();
    }
}

void QSprRender::setBackground(const QColor& start, const QColor& end, int type, QPoint position,
                               const QString& file)
{
    backStart = start;
    backEnd = end;
    resize();
    backgroundPos = position;
    // Type 0 shows none; any other type shows the chosen picture, and a file that doesn't load shows
    // nothing rather than failing.
    background = type != 0 && !file.isEmpty() ? QImage(file) : QImage();
    computeRects();
    update();
}

void QSprRender::setCrosshair(int type, const QString& sprite, const QString& animation, const QString& extra)
{
    spriteCross = crossImage(type, sprite, qRgb(255, 255, 255));
    animationCross = crossImage(type, animation, qRgb(255, 255, 0));
    extraCrossImage = crossImage(type, extra, qRgb(0, 255, 0));
    computeRects();
    update();
}

void QSprRender::setBoxColors(const QColor& clsn1, const QColor& clsn1Default, const QColor& clsn2,
                              const QColor& clsn2Default, int opacityPercent)
{
    // Indexed by the box type: bit 0 for Clsn2, bit 1 for a default set.
    boxColors[0] = clsn1;
    boxColors[1] = clsn2;
    boxColors[2] = clsn1Default;
    boxColors[3] = clsn2Default;
    boxOpacity = float(qBound(0, opacityPercent, 100)) / 100.0f;
    update();
}

void QSprRender::setZoomMode(int row)
{
    zoom.setRow(row);
    computeRects();
    update();
}

void QSprRender::setZoomCentre(int centre)
{
    zoomCentre = centre == QViewZoom::WorkspaceCentre ? QViewZoom::WorkspaceCentre : QViewZoom::SpriteAxis;
}

void QSprRender::setOnion(bool on, int effect, int opacityPercent)
{
    showOnion = on;
    onionEffect = qBound(0, effect, 3);
    onionOpacity = qBound(0, opacityPercent, 100) / 100.0;
    loadOnion();
    computeRects();
    update();
}

void QSprRender::setOrder(bool clsnFirst, bool spriteFirst)
{
    clsnOverAxis = clsnFirst;
    spriteOverGuides = spriteFirst;
    update();
}

void QSprRender::showSpriteCross(bool on)
{
    showSprCross = on;
    update();
}

void QSprRender::showAnimationCross(bool on)
{
    showAnimCross = on;
    update();
}

void QSprRender::showExtraCross(bool on)
{
    showExtra = on;
    update();
}

void QSprRender::showRulers(bool on)
{
    rulers = on;
    update();
}

void QSprRender::showGuides(bool on)
{
    showGuideLines = on;
    update();
}

void QSprRender::showBoxes(bool clsn1, bool clsn2, bool clsn1Default, bool clsn2Default)
{
    showBox[0] = clsn1;
    showBox[1] = clsn2;
    showBox[2] = clsn1Default;
    showBox[3] = clsn2Default;
    update();
}

void QSprRender::showTransparentColor(bool on)
{
    showTransparent = on;
    update();
}

void QSprRender::setColorCapture(bool on)
{
    capture = on;
}

void QSprRender::setBoxDrawing(bool on, int boxType)
{
    drawing = on;
    drawingType = boxType & 3;
    setCursorFor(TargetView);
}

void QSprRender::setLocked(bool on)
{
    locked = on;
}

void QSprRender::setContentsHidden(bool on)
{
    hidden = on;
    update();
}

QPoint QSprRender::viewCentre() const
{
    const QWidget* view = widget();
    return view ? QPoint(view->width() / 2, view->height() / 2) : QPoint();
}

void QSprRender::zoomTo(QPoint newAxis)
{
    axis = newAxis;
    refresh();
}

void QSprRender::setZoomIndex(int index)
{
    // A step below index 0 arrives as 255 from the old byte-wide arithmetic; it means 0.
    if (index >= 255 || index < 0) index = 0;
    zoomTo(zoom.setIndex(index, axis, viewCentre(), QViewZoom::Centre(zoomCentre)));
}

void QSprRender::zoomIn()
{
    zoomTo(zoom.zoomIn(axis, viewCentre(), QViewZoom::Centre(zoomCentre)));
}

void QSprRender::zoomOut()
{
    const QSize size = spriteImage.isNull() ? QSize(4, 4) : spriteImage.size();
    zoomTo(zoom.zoomOut(size, axis, viewCentre(), QViewZoom::Centre(zoomCentre)));
}

void QSprRender::zoomActual()
{
    zoomTo(zoom.zoomActual(axis, viewCentre(), QViewZoom::Centre(zoomCentre)));
}

void QSprRender::setMainAxis(QPoint value)
{
    axis = value;
    computeRects();
    update();
}

void QSprRender::setExtraCross(QPoint value)
{
    extraAxis = value;
    computeRects();
    update();
}

void QSprRender::setGuides(QPoint value)
{
    guide = value;
    update();
}

void QSprRender::resize()
{
    // The backdrop runs from the top of the view to its bottom, whatever its height.
    const int height = widget() ? widget()->height() : 600;
    backBrush = QLinearGradient(0, 0, 0, height);
    backBrush.setColorAt(0, backStart);
    backBrush.setColorAt(1, backEnd);
}
