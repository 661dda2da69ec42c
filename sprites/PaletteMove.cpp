#include "PaletteMove.h"

#include "QSprites.h"

PaletteMove::PaletteMove(QSprites* sprites, uint from, uint to)
    : SpriteUndoCommand(sprites, QObject::tr("Move palette")), from(from), to(to)
{}

void PaletteMove::undo()
{
    const Applying applying(sprites);
    sprites->movePaletteObject(to, from);
}

void PaletteMove::apply()
{
    sprites->movePaletteObject(from, to);
}
