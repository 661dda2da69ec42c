#pragma once

#include "QRGBPal.h"
#include "QSpriteTypes.h"

#include <QObject>
#include <QVector>

class QSprites;
struct QSpriteColorTable;

// One palette of a sprite file: a colour table record that another palette may share, a group and
// index, and how many of its colours are in use (32 or 256 in practice, never above 256).
class QSpritePalette : public QObject
{
    Q_OBJECT
    Q_PROPERTY(int itemGroup READ itemGroup WRITE setItemGroup)
    Q_PROPERTY(int itemIndex READ itemIndex WRITE setItemIndex)
    Q_PROPERTY(int colorCount READ colorCount WRITE setColorCount)

public:
    static constexpr int MaxColors = 256;

    explicit QSpritePalette(QSprites* parent);
    ~QSpritePalette() override;

    QSprites* sprites() const { return model; }
    int index() const;

    int itemGroup() const { return group; }
    int itemIndex() const { return number; }
    int colorCount() const { return count; }
    void setItemGroup(int value);
    void setItemIndex(int value);
    // Held to 0..256.
    void setColorCount(int value);
    void setInfo(int group, int index, int colorCount);

    // Whether the palette has no colour table.
    bool isEmpty() const { return colours == nullptr; }
    // The 256 colours, or null for an empty palette.
    const QRGBPal* table() const;
    // The 256 colours as QRgb values; zeros for an empty palette.
    QVector<uint> colors() const;
    // Sets the colours (missing entries become 0). Share writes into a table that other palettes
    // share, so that they change too; the other modes give this palette a table of its own first.
    void setColors(const QVector<uint>& colors, QSpriteShareMode mode = QSpriteShareMode::NoShare);
    void setColors(const QRGBPal* colors, QSpriteShareMode mode = QSpriteShareMode::NoShare);
    // Reads any palette file that QRGBPalette reads; false when it can't.
    bool fromFile(const QString& path);
    // Writes the colours as an ACT file.
    bool toFile(const QString& path) const;

    // Plain access for the model, its undo commands and the file code.
    QSpriteColorTable* colorTable() const { return colours; }
    // Takes a reference to the table and lets go of the one it had.
    void setColorTable(QSpriteColorTable* table);
    void setFields(int group, int index, int colorCount);

private:
    QSprites* model;
    QSpriteColorTable* colours = nullptr;
    qint32 group = 0;
    qint32 number = 0;
    quint16 count = MaxColors;
};
