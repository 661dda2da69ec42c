#pragma once

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QString>

class QSprite;
class QSprites;

// What tools show of a sprite file: a summary, one row per sprite, and the pixels of a sprite in a
// form that doesn't depend on row padding.
namespace QSFFInfo {

struct Summary
{
    QString version;
    int sprites = 0;
    int palettes = 0;
    // Stored format name → number of sprites, as the file stored them.
    QMap<QString, int> formats;
    // Sprites and palettes that the file wrote as links.
    int linkedSprites = 0;
    int linkedPalettes = 0;
    // Sprites that use the image record of an earlier sprite after loading.
    int sharedSprites = 0;
};

struct Row
{
    int position = 0;
    int group = 0;
    int index = 0;
    int axisX = 0;
    int axisY = 0;
    int width = 0;
    int height = 0;
    QString format;
    int depth = 0;
    // The position of the sprite's palette, or -1.
    int palette = -1;
    // The sprite the file linked it to, or -1.
    int link = -1;
    int flags = 0;
};

Summary summary(const QSprites& sprites);
QList<Row> rows(const QSprites& sprites);
// The pixels without row padding: palette indices for an indexed sprite, else 4 bytes per pixel in
// the order red, green, blue, alpha. Empty when the image can't be decoded.
QByteArray pixels(const QSprite& sprite);

} // namespace QSFFInfo
