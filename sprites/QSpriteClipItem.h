#pragma once

#include <QImage>
#include <QList>
#include <QString>

class QMimeData;
class QSprite;

// One sprite as it travels through the clipboard: its numbers, axis, flags and pixels (an indexed
// image carries its palette as colour table).
struct QSpriteClipItem
{
    int group = 0;
    int index = 0;
    int x = 0;
    int y = 0;
    quint16 flags = 0;
    QImage image;

    static QSpriteClipItem fromSprite(const QSprite* sprite);

    // The format that carries the fields of the copied sprites.
    static QString mimeType();
    // The items in their own format, and the first image as a plain image for other programs.
    static QMimeData* toMimeData(const QList<QSpriteClipItem>& items);
    // The items of our own format; else one item with the plain image at 0, 0; else none.
    static QList<QSpriteClipItem> fromMimeData(const QMimeData* data);
};
