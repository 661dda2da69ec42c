#include "SpriteInsert.h"

#include "QSprite.h"
#include "QSprites.h"

SpriteInsert::SpriteInsert(QSprites* sprites, uint position)
    : SpriteUndoCommand(sprites, QObject::tr("Insert sprite")), position(position)
{}

void SpriteInsert::undo()
{
    const Applying applying(sprites);
    delete sprites->takeSprite(position);
}

void SpriteInsert::apply()
{
    sprites->insertSpriteObject(position, new QSprite(sprites));
}
