// One paint pass of the sprite view, in a fixed order: backdrop, background, onion skin, guide lines,
// the sprite, boxes and crosses, rulers. Paint only reads the cached rectangles.

#include "QSprRender.h"

#include "QAnimationFrame.h"
#include "QSprGeometry.h"

#include <QPaintEvent>
#include <QPainter>
#include <QWidget>

#include <cmath>

namespace {

int rounded(double value)
{
    return int(std::floor(value + 0.5));
}

// A table whose every entry is the destination factor in each channel: drawn with Multiply it scales
// what lies below by that factor where the sprite has pixels.
QVector<QRgb> factorTable(const QVector<QRgb>& table, int factor)
{
    const int value = qBound(0, factor, 255);
    QVector<QRgb> result(table.size());
    for (int i = 0; i < table.size(); ++i)
        result[i] = qRgba(value, value, value, qAlpha(table[i]));
    return result;
}

// Red and blue exchanged and alpha inverted: drawn first under a blended sprite whose transparent
// colour is shown, so that the colour's backing stays visible through the blend.
QVector<QRgb> backingTable(const QVector<QRgb>& table)
{
    QVector<QRgb> result(table.size());
    for (int i = 0; i < table.size(); ++i)
        result[i] = qRgba(qBlue(table[i]), qGreen(table[i]), qRed(table[i]), 255 - qAlpha(table[i]));
    return result;
}

} // namespace

void QSprRender::paint(QPainter& painter, QPaintEvent* event)
{
    const QRect area = event ? event->rect() : QRect(QPoint(0, 0), widget() ? widget()->size() : QSize());
    painter.fillRect(area, backBrush);
    const int k = QSprGeometry::wholeZoom(zoom.factor());
    if (!hidden) {
        if (!background.isNull()) painter.drawImage(backgroundScreen, background);
        if (showOnion && !onion.isNull()) {
            painter.setOpacity(onionOpacity);
            painter.drawImage(onionScreen, onion);
            painter.setOpacity(1.0);
        }
        if (spriteOverGuides) drawGuides(painter, k);
        drawSprite(painter);
        if (clsnOverAxis) {
            drawCrosses(painter);
            drawBoxes(painter, k);
        } else {
            drawBoxes(painter, k);
            drawCrosses(painter);
        }
        if (!spriteOverGuides) drawGuides(painter, k);
    }
    if (rulers) drawRulers(painter);
}

void QSprRender::drawSpriteWith(QPainter& painter, const QVector<QRgb>& table, QPainter::CompositionMode mode,
                                double opacity)
{
    QImage image = spriteImage;
    if (image.format() == QImage::Format_Indexed8) image.setColorTable(table);
    painter.setCompositionMode(mode);
    painter.setOpacity(opacity);
    painter.drawImage(QPoint(0, 0), image);
    painter.setOpacity(1.0);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
}

void QSprRender::drawSprite(QPainter& painter)
{
    if (spriteImage.isNull()) return;
    // The palette is applied by exchanging the colour table, never by touching pixels.
    QVector<QRgb> table = colorTable;
    if (showTransparent && !table.isEmpty()) table[0] = table[0] | 0xff000000u;
    if (!currentFrame) {
        QImage image = spriteImage;
        if (image.format() == QImage::Format_Indexed8) image.setColorTable(table);
        painter.drawImage(spriteScreen, image);
        return;
    }
    const double z = zoom.factor();
    painter.save();
    painter.translate(axis);
    painter.rotate(-frameAngle);
    painter.scale(z * (frameScaleX == 0 ? 1 : frameScaleX), z * (frameScaleY == 0 ? 1 : frameScaleY));
    painter.translate(-axisInUse);
    const QAnimationFrameBlend blend = currentFrame->blend;
    if (blend == QAnimationFrameBlend::None) {
        drawSpriteWith(painter, table, QPainter::CompositionMode_SourceOver, 1.0);
    } else {
        if (showTransparent && !colorTable.isEmpty())
            drawSpriteWith(painter, backingTable(table), QPainter::CompositionMode_SourceOver, 1.0);
        if (blend == QAnimationFrameBlend::Addition) {
            if (destinationAlpha < 255)
                drawSpriteWith(painter, factorTable(table, destinationAlpha),
                               QPainter::CompositionMode_Multiply, 1.0);
            drawSpriteWith(painter, table, QPainter::CompositionMode_Plus, sourceAlpha * 0.00390625);
        } else {
            // Lighten then Difference leave what lies below minus the sprite, floored at 0.
            drawSpriteWith(painter, table, QPainter::CompositionMode_Lighten, 1.0);
            drawSpriteWith(painter, table, QPainter::CompositionMode_Difference, 1.0);
        }
    }
    painter.restore();
}

void QSprRender::drawCrosses(QPainter& painter)
{
    if (showSprCross) painter.drawImage(spriteCrossScreen, spriteCross);
    if (showAnimCross && mode == AnimationMode && !animationCrossScreen.isEmpty())
        painter.drawImage(animationCrossScreen, animationCross);
    if (showExtra) painter.drawImage(extraCrossScreen, extraCrossImage);
}

void QSprRender::drawBoxes(QPainter& painter, int k)
{
    if (mode != AnimationMode) return;
    painter.setPen(Qt::NoPen);
    for (int i = 0; i < boxes; ++i) {
        const Box& entry = boxTable[size_t(i)];
        const int type = typeOf(i);
        if (!showBox[type]) continue;
        const QColor colour = boxColors[type];
        const QRect rect = entry.screen.normalized();
        if (entry.selected)
            painter.fillRect(rect, QBrush(colour, type & 2 ? Qt::FDiagPattern : Qt::BDiagPattern));
        painter.setOpacity(boxOpacity);
        const int w = rect.width(), h = rect.height();
        painter.fillRect(QRect(rect.left(), rect.top(), qMin(k, w), h), colour);
        painter.fillRect(QRect(rect.left(), rect.top(), w, qMin(k, h)), colour);
        painter.fillRect(QRect(rect.right() - qMin(k, w) + 1, rect.top(), qMin(k, w), h), colour);
        painter.fillRect(QRect(rect.left(), rect.bottom() - qMin(k, h) + 1, w, qMin(k, h)), colour);
        painter.setOpacity(1.0);
    }
    // While a new box is drawn its handles would only hide its corner.
    if (selection && !(drawing && pressed)) {
        painter.setPen(QPen(Qt::gray, 1, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin));
        painter.setBrush(Qt::white);
        for (const QPoint& handle : handles)
            painter.drawRect(handle.x() - 4, handle.y() - 4, 8, 8);
        painter.setBrush(Qt::NoBrush);
    }
}

void QSprRender::drawGuides(QPainter& painter, int k)
{
    if (!showGuideLines) return;
    const double z = zoom.factor();
    const int width = widget() ? widget()->width() : 0;
    const int height = widget() ? widget()->height() : 0;
    painter.setPen(QPen(QColor(0, 255, 255), rounded(z)));
    const int y = int(guide.y() * z + axis.y() + (k >> 1));
    painter.drawLine(-k, y, width + 1 + k, y);
    const int x = int(guide.x() * z + axis.x() + (k >> 1));
    painter.drawLine(x, -k, x, height + 1 + k);
}

void QSprRender::drawRulers(QPainter& painter)
{
    const int width = widget() ? widget()->width() : 0;
    const int height = widget() ? widget()->height() : 0;
    const double z = zoom.factor();
    painter.setPen(Qt::NoPen);
    painter.setBrush(backStart);
    painter.drawRect(QRect(QPoint(0, 0), QPoint(29, height - 1)));
    painter.drawRect(QRect(QPoint(30, 0), QPoint(width - 1, 29)));
    painter.setBrush(Qt::white);
    painter.drawRect(QRect(QPoint(10, 10), QPoint(19, height + 9)));
    painter.drawRect(QRect(QPoint(20, 10), QPoint(width + 9, 19)));
    painter.setBrush(Qt::NoBrush);
    painter.setPen(Qt::black);
    // One tick every ten sprite pixels or so, in whole screen pixels; a long one with its value every five.
    const int unit = qMax(1, int(10.0 / z));
    const int step = qMax(1, int(unit * z));
    const auto ruler = [&](int length, int origin, bool top) {
        const int ticks = (length - 1 - 29) / step;
        int position = ((origin - 30) % step + step) % step + 30;
        int n = (origin - position) / step;
        int value = -n * unit;
        for (int i = 0; i <= ticks; ++i) {
            const bool major = n % 5 == 0;
            const int from = major ? 20 : 24;
            if (top)
                painter.drawLine(position, from, position, 29);
            else
                painter.drawLine(from, position, 29, position);
            if (major && i != 0) {
                const QString text = QStringLiteral("%1").arg(value);
                if (top) {
                    painter.drawText(QRect(position - 5 * step, 0, 10 * step, 30).adjusted(0, 0, 0, -10),
                                     Qt::AlignHCenter | Qt::AlignVCenter, text);
                } else {
                    painter.save();
                    painter.translate(0, position);
                    painter.rotate(-90);
                    painter.drawText(QRect(-5 * step, 0, 10 * step, 20), Qt::AlignHCenter | Qt::AlignVCenter,
                                     text);
                    painter.restore();
                }
            }
            --n;
            value += unit;
            position += step;
        }
    };
    ruler(width, axis.x(), true);
    ruler(height, axis.y(), false);
}
