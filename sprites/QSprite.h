#pragma once

#include "QImageInfo.h"
#include "QSpriteTypes.h"

#include <QImage>
#include <QObject>
#include <QPoint>
#include <QRect>
#include <QSize>

class QSprites;
class QSpritePalette;
struct QSpriteImageRecord;

// One sprite of a sprite file: a reference to an image record that other sprites may share, a palette
// that other sprites may share, a group and index, an axis and the flags of the file. Setters record
// undo commands on the model unless its no-undo counter is raised.
class QSprite : public QObject
{
    Q_OBJECT
    Q_PROPERTY(int itemGroup READ itemGroup WRITE setItemGroup)
    Q_PROPERTY(int itemIndex READ itemIndex WRITE setItemIndex)
    Q_PROPERTY(int offsetX READ offsetX WRITE setOffsetX)
    Q_PROPERTY(int offsetY READ offsetY WRITE setOffsetY)

public:
    explicit QSprite(QSprites* parent);
    ~QSprite() override;

    QSprites* sprites() const { return model; }
    // The position in the model's list; -1 when the sprite isn't in it.
    int index() const;

    int itemGroup() const { return group; }
    int itemIndex() const { return number; }
    int offsetX() const { return axisX; }
    int offsetY() const { return axisY; }
    QSpritePalette* palette() const { return pal; }
    quint16 flags() const { return flagBits; }
    bool flag(QSpriteFlag which) const { return flagBits & quint16(which); }

    void setItemGroup(int value);
    void setItemIndex(int value);
    void setOffsetX(int value);
    void setOffsetY(int value);
    void setPalette(QSpritePalette* value);
    void setFlag(QSpriteFlag which, bool on);
    void setFlags(quint16 value);
    // Every field at once, as one undo step.
    void setInfo(QSpritePalette* palette, int group, int index, int x, int y, quint16 flags);

    bool hasImage() const { return record != nullptr; }
    // Whether another sprite of the model uses the same image record.
    bool imageIsShared() const;
    // Width, height and format; an invalid format for an empty sprite.
    QImageInfo imageProperties() const;
    // The pixels; an indexed image gets the colour table that mode asks for.
    QImage image(QSpriteImagePalette mode = QSpriteImagePalette::Default) const;
    // Sets new pixels; a null image empties the sprite.
    bool setImage(const QImage& image, QSpriteShareMode shareMode = QSpriteShareMode::Share,
                  bool invert = false, QSpritePaletteMode paletteMode = QSpritePaletteMode::Ignore,
                  QSubItem item = QSubItem());

    // The bounds of what an image holds: the pixels other than 0 for an indexed image, the pixels that
    // differ from the top left one for RGB32 and ARGB32. Invalid for an image that holds nothing, a
    // null image or another format.
    static QRect contentBox(const QImage& image);
    // The box crop() would cut the image to; invalid when there is nothing to crop. pixels receives
    // the decoded image.
    QRect cropBox(QImage* pixels = nullptr) const;
    // Cuts the pixels to box inside the shared record, and moves the axis of every sprite sharing it
    // so that the image stays in place.
    bool cropTo(const QImage& pixels, const QRect& box);
    bool crop();
    // Splits the image into its red, green and blue channels: this sprite keeps the red, two new
    // sprites after it get the green and the blue, each with a palette of that channel's ramp.
    bool splitRGB();

    // The image on a canvas of the given size, with this sprite's axis placed at axis. An indexed
    // image stays indexed on colour 0, any other becomes ARGB32 on a transparent ground.
    QImage alignedImage(QPoint axis, QSize canvas) const;

    // Plain access for the model, its undo commands and the file code: these record nothing and
    // report nothing.
    QSpriteImageRecord* imageRecord() const { return record; }
    // Takes a reference to the record and lets go of the one it had.
    void setImageRecord(QSpriteImageRecord* value);
    void setFields(QSpritePalette* palette, int group, int index, int x, int y, quint16 flags);
    void setPalettePointer(QSpritePalette* value) { pal = value; }

private:
    void pushInfo();
    QImage adaptToPalette(const QImage& image, const QSpritePalette* palette) const;

    QSprites* model;
    QSpriteImageRecord* record = nullptr;
    QSpritePalette* pal = nullptr;
    qint32 group = 0;
    qint32 number = 0;
    qint32 axisX = 0;
    qint32 axisY = 0;
    quint16 flagBits = 0;
};
