#include "QSpritePalette.h"

#include "PaletteChangeColors.h"
#include "PaletteChangeInfo.h"
#include "QRGBPalette.h"
#include "QSpriteColorTable.h"
#include "QSprites.h"

#include <algorithm>
#include <cstring>

QSpritePalette::QSpritePalette(QSprites* parent) : QObject(parent), model(parent) {}

QSpritePalette::~QSpritePalette()
{
    QSpriteColorTable::release(colours);
}

int QSpritePalette::index() const
{
    return model->paletteIndexOf(this);
}

void QSpritePalette::setColorTable(QSpriteColorTable* table)
{
    if (table == colours) return;
    QSpriteColorTable::retain(table);
    QSpriteColorTable::release(colours);
    colours = table;
}

void QSpritePalette::setFields(int group, int index, int colorCount)
{
    this->group = group;
    number = index;
    count = quint16(std::clamp(colorCount, 0, int(MaxColors)));
}

void QSpritePalette::setInfo(int group, int index, int colorCount)
{
    colorCount = std::clamp(colorCount, 0, int(MaxColors));
    if (group == this->group && index == number && colorCount == count) return;
    const int position = this->index();
    if (model->noUndoCount() == 0 && position >= 0)
        model->pushCommand(new PaletteChangeInfo(model, uint(position)));
    setFields(group, index, colorCount);
    model->finishChange();
}

void QSpritePalette::setItemGroup(int value)
{
    setInfo(value, number, count);
}

void QSpritePalette::setItemIndex(int value)
{
    setInfo(group, value, count);
}

void QSpritePalette::setColorCount(int value)
{
    setInfo(group, number, value);
}

const QRGBPal* QSpritePalette::table() const
{
    return colours ? colours->colors : nullptr;
}

QVector<uint> QSpritePalette::colors() const
{
    QVector<uint> result(MaxColors, 0);
    if (colours)
        for (int i = 0; i < MaxColors; ++i)
            result[i] = colours->colors[i].toRgb();
    return result;
}

void QSpritePalette::setColors(const QVector<uint>& colors, QSpriteShareMode mode)
{
    QRGBPal table[MaxColors];
    for (int i = 0; i < MaxColors; ++i)
        table[i] = i < colors.size() ? QRGBPal::fromRgb(colors.at(i)) : QRGBPal(0, 0, 0, 0);
    setColors(table, mode);
}

void QSpritePalette::setColors(const QRGBPal* colors, QSpriteShareMode mode)
{
    if (!colors) return;
    bool shared = false;
    for (const QSpritePalette* other : model->paletteItems())
        shared = shared || (other != this && other->colours == colours);
    const bool inPlace =
        colours && (mode == QSpriteShareMode::Share || mode == QSpriteShareMode::ReplaceShared || !shared);
    const int position = index();
    if (model->noUndoCount() == 0 && position >= 0)
        model->pushCommand(new PaletteChangeColors(model, uint(position), inPlace));
    if (inPlace)
        std::memcpy(static_cast<void*>(colours->colors), colors, QRGBPal::TableBytes);
    else
        setColorTable(QSpriteColorTable::create(colors));
    model->finishChange();
}

bool QSpritePalette::fromFile(const QString& path)
{
    QRGBPal table[MaxColors];
    std::fill(std::begin(table), std::end(table), QRGBPal(0, 0, 0, 0));
    if (colours) std::copy(colours->colors, colours->colors + MaxColors, table);
    QRGBPalette reader(table);
    if (!reader.fromFile(path)) return false;
    setColors(table, QSpriteShareMode::NoShare);
    return true;
}

bool QSpritePalette::toFile(const QString& path) const
{
    QRGBPal table[MaxColors];
    std::fill(std::begin(table), std::end(table), QRGBPal(0, 0, 0, 0));
    if (colours) std::copy(colours->colors, colours->colors + MaxColors, table);
    const QRGBPalette writer(table);
    return writer.toFile(path);
}
