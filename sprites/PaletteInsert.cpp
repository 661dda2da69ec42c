#include "PaletteInsert.h"

#include "QSpriteColorTable.h"
#include "QSpritePalette.h"
#include "QSprites.h"

PaletteInsert::PaletteInsert(QSprites* sprites, uint position)
    : PaletteInsert(sprites, position, QObject::tr("Insert palette"))
{}

PaletteInsert::PaletteInsert(QSprites* sprites, uint position, const QString& text)
    : SpriteUndoCommand(sprites, text), position(position)
{
    if (const QSpritePalette* palette = sprites->paletteAt(position)) {
        group = palette->itemGroup();
        index = palette->itemIndex();
        colorCount = palette->colorCount();
        colors = QSpriteColorTable::retain(palette->colorTable());
    }
}

PaletteInsert::~PaletteInsert()
{
    QSpriteColorTable::release(colors);
}

void PaletteInsert::insertIt()
{
    auto* palette = new QSpritePalette(sprites);
    palette->setFields(group, index, colorCount);
    palette->setColorTable(colors);
    sprites->insertPaletteObject(position, palette);
}

void PaletteInsert::removeIt()
{
    delete sprites->takePalette(position);
}

void PaletteInsert::undo()
{
    const Applying applying(sprites);
    removeIt();
}

void PaletteInsert::apply()
{
    insertIt();
}
