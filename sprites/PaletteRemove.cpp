#include "PaletteRemove.h"

#include "QSprites.h"

PaletteRemove::PaletteRemove(QSprites* sprites, uint position)
    : PaletteInsert(sprites, position, QObject::tr("Remove palette"))
{}

void PaletteRemove::undo()
{
    const Applying applying(sprites);
    insertIt();
}

void PaletteRemove::apply()
{
    removeIt();
}
