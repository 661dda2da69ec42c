#include "PaletteChangeColors.h"

#include "QSpriteColorTable.h"
#include "QSpritePalette.h"
#include "QSprites.h"

#include <algorithm>

PaletteChangeColors::PaletteChangeColors(QSprites* sprites, uint position, bool inPlace)
    : SpriteUndoCommand(sprites, QObject::tr("Change colors")), position(position), inPlace(false),
      other(nullptr)
{
    const QSpritePalette* palette = sprites->paletteAt(position);
    QSpriteColorTable* table = palette ? palette->colorTable() : nullptr;
    if (inPlace && table) {
        this->inPlace = true;
        other = QSpriteColorTable::retain(QSpriteColorTable::create(table->colors));
    } else {
        other = QSpriteColorTable::retain(table);
    }
}

PaletteChangeColors::~PaletteChangeColors()
{
    QSpriteColorTable::release(other);
}

void PaletteChangeColors::swap()
{
    QSpritePalette* palette = sprites->paletteAt(position);
    if (!palette) return;
    if (inPlace) {
        if (palette->colorTable()) std::swap(palette->colorTable()->colors, other->colors);
        return;
    }
    QSpriteColorTable* mine = QSpriteColorTable::retain(palette->colorTable());
    palette->setColorTable(other);
    QSpriteColorTable::release(other);
    other = mine;
}

void PaletteChangeColors::undo()
{
    const Applying applying(sprites);
    swap();
}

void PaletteChangeColors::apply()
{
    swap();
}
