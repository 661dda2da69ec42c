#pragma once

#include "QSFFFormat.h"

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>

#include <vector>

class QIODevice;
class QSprite;
class QSprites;
class QSpritePalette;
struct QRGBPal;
struct QSpriteImageRecord;

// Reads a sprite file of version 1.01, 2.00 or 2.01 into a QSprites model. The file is read with one
// read; image blocks are kept in the form in which the file stores them and are not decoded, except
// where pixels of a version 1.01 sprite must be clipped to a small palette and where the sharing pass
// must tell images of the same size and form apart, which it does row by row and only as far as they
// are equal. No block is decoded twice. No count, offset or size of the file makes it read or
// allocate more than the file holds.
class QSFFReader
{
public:
    explicit QSFFReader(QSprites* sprites);

    // False with no message when the file can't be opened or isn't a sprite file.
    bool read(const QString& path, bool copy);
    // The same on an open device; name stands for the file in messages.
    bool read(QIODevice* device, const QString& name, bool copy);

private:
    // A block as the sharing pass compares it: the bytes as stored (a view of the file, or raw pixels
    // the reader made) and the filter that decodes them.
    struct Block
    {
        QSpriteImageRecord* record = nullptr;
        QByteArray bytes;
        uint filter = 0;
    };

    bool readVersion1(QList<QSprite*>& loaded);
    bool readVersion2(quint32 version, QList<QSprite*>& loaded);
    // The bytes of the file at offset, cut at its end; a view that lives as long as the file's bytes.
    QByteArray view(qint64 offset, qint64 length) const;
    QSpritePalette* ownPalette(const QRGBPal* colours, int group);
    void clip(Block& block, int colorCount, const QRGBPal* table, int tableColours);
    void shareEqualImages();
    void shareEqualPixels(const std::vector<int>& members,
                          QHash<QSpriteImageRecord*, QSpriteImageRecord*>& into);
    void discard(QList<QSprite*>& loaded);
    bool fail(QList<QSprite*>& loaded);
    void linkError(int sprite, qint64 link, bool palette);

    QSprites* model;
    QByteArray contents;
    qint64 fileSize = 0;
    QString name;
    QSFFLayout layout;
    // Palettes by their 1024 bytes, the first of each: what the add operation would find.
    QHash<QByteArray, QSpritePalette*> paletteByColours;
    // Every block made during this load, in the order of the sprites that first use them.
    std::vector<Block> blocks;
    qint64 keptBytes = 0;
};
