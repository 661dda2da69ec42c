#include "SpriteMove.h"

#include "QSprites.h"

SpriteMove::SpriteMove(QSprites* sprites, uint from, uint to)
    : SpriteUndoCommand(sprites, QObject::tr("Move sprite")), from(from), to(to)
{}

void SpriteMove::undo()
{
    const Applying applying(sprites);
    sprites->moveSpriteObject(to, from);
}

void SpriteMove::apply()
{
    sprites->moveSpriteObject(from, to);
}
