#include "SpriteRemove.h"

#include "QSprite.h"
#include "QSpriteImageRecord.h"
#include "QSprites.h"

SpriteRemove::SpriteRemove(QSprites* sprites, uint position)
    : SpriteUndoCommand(sprites, QObject::tr("Remove sprite")), position(position)
{
    const QSprite* sprite = sprites->at(position);
    image = QSpriteImageRecord::retain(sprite ? sprite->imageRecord() : nullptr);
    palette = sprite ? sprites->paletteIndexOf(sprite->palette()) : -1;
    group = sprite ? sprite->itemGroup() : 0;
    index = sprite ? sprite->itemIndex() : 0;
    x = sprite ? sprite->offsetX() : 0;
    y = sprite ? sprite->offsetY() : 0;
    flags = sprite ? sprite->flags() : 0;
}

SpriteRemove::~SpriteRemove()
{
    QSpriteImageRecord::release(image);
}

void SpriteRemove::undo()
{
    const Applying applying(sprites);
    auto* sprite = new QSprite(sprites);
    sprite->setImageRecord(image);
    sprite->setFields(palette >= 0 ? sprites->paletteAt(uint(palette)) : nullptr, group, index, x, y, flags);
    sprites->insertSpriteObject(position, sprite);
}

void SpriteRemove::apply()
{
    delete sprites->takeSprite(position);
}
