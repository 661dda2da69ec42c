#pragma once

#include <QByteArray>
#include <QString>

class QIODevice;
class QSprite;
class QSprites;

// Writes a QSprites model as a sprite file of its version (1.01, 2.00 or 2.01). Sprites that share an
// image record are written as links, palettes that share a colour table likewise. A stored block whose
// form suits the version is written as it is; the others are encoded anew, and unless the save is a
// copy the cache keeps the new form, so that the next save costs no encoding. The file is replaced only
// when the whole of it could be written.
class QSFFWriter
{
public:
    explicit QSFFWriter(QSprites* sprites);

    // Checks the model (boxes for the user where it can't be saved), then writes. False when the model
    // can't be saved, the file can't be written, or the user stopped the save.
    bool write(const QString& path, bool copy);
    // Writes without the checks; the model must have passed them.
    bool write(QIODevice* device, bool copy);

private:
    bool checkModel();
    bool writeVersion1(QIODevice* device);
    bool writeVersion2(QIODevice* device, bool copy);
    bool pcxBlock(const QSprite* sprite, int position, bool samePalette, QByteArray& data);
    bool saveError(int position, const QString& reason);

    QSprites* model;
};
