#include "SpriteChangeInfo.h"

#include "QSprite.h"
#include "QSprites.h"

SpriteChangeInfo::SpriteChangeInfo(QSprites* sprites, uint position)
    : SpriteUndoCommand(sprites, QObject::tr("Change sprite")), position(position)
{
    if (const QSprite* sprite = sprites->at(position)) {
        palette = sprites->paletteIndexOf(sprite->palette());
        group = sprite->itemGroup();
        index = sprite->itemIndex();
        x = sprite->offsetX();
        y = sprite->offsetY();
        flags = sprite->flags();
    }
}

void SpriteChangeInfo::swap()
{
    QSprite* sprite = sprites->at(position);
    if (!sprite) return;
    const SpriteChangeInfo now(sprites, position);
    sprite->setFields(palette >= 0 ? sprites->paletteAt(uint(palette)) : nullptr, group, index, x, y, flags);
    palette = now.palette;
    group = now.group;
    index = now.index;
    x = now.x;
    y = now.y;
    flags = now.flags;
    emit sprites->dataChanged(sprites->index(int(position)), sprites->index(int(position)));
}

void SpriteChangeInfo::undo()
{
    const Applying applying(sprites);
    swap();
}

void SpriteChangeInfo::apply()
{
    swap();
}
