#pragma once

#include "QSFFFormat.h"

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>

class QIODevice;
class QSprite;
class QSprites;
class QSpritePalette;
struct QRGBPal;
struct QStreamCacheItem;

// Reads a sprite file of version 1.01, 2.00 or 2.01 into a QSprites model. Image blocks are kept in
// the form in which the file stores them and are not decoded, except where pixels of a version 1.01
// sprite must be clipped to a small palette and where the sharing pass compares images of the same
// size and form. No count, offset or size of the file makes it read or allocate more than the file
// holds.
class QSFFReader
{
public:
    explicit QSFFReader(QSprites* sprites);

    // False with no message when the file can't be opened or isn't a sprite file.
    bool read(const QString& path, bool copy);
    // The same on an open device; name stands for the file in messages.
    bool read(QIODevice* device, const QString& name, bool copy);

private:
    bool readVersion1(QList<QSprite*>& loaded);
    bool readVersion2(quint32 version, QList<QSprite*>& loaded);
    QByteArray readAt(qint64 offset, qint64 length);
    QSpritePalette* ownPalette(const QRGBPal* colours, int group);
    bool clip(QStreamCacheItem* item, struct QSpriteImageRecord* record, int colorCount, const QRGBPal* table,
              int tableColours);
    void shareEqualImages();
    void keep(QStreamCacheItem* item, const QByteArray& raw);
    void discard(QList<QSprite*>& loaded);
    bool fail(QList<QSprite*>& loaded);
    void linkError(int sprite, qint64 link, bool palette);

    QSprites* model;
    QIODevice* device = nullptr;
    qint64 fileSize = 0;
    QString name;
    QSFFLayout layout;
    // Palettes by their 1024 bytes, the first of each: what the add operation would find.
    QHash<QByteArray, QSpritePalette*> paletteByColours;
    // Raw pixels already decoded during this load, so that no block is decoded twice.
    QHash<QStreamCacheItem*, QByteArray> decodedBlocks;
    qint64 keptBytes = 0;
};
