#pragma once

#include "SpriteUndoCommand.h"

#include <QtGlobal>

// The palette, group, index, axis or flags of a sprite changed; undo and redo swap them with the
// values kept here. The palette is kept as its position, -1 for none.
class SpriteChangeInfo : public SpriteUndoCommand
{
public:
    // Made before the change: keeps the values of the sprite at position.
    SpriteChangeInfo(QSprites* sprites, uint position);
    void undo() override;
    void apply() override;

private:
    void swap();

    uint position;
    int palette = -1;
    qint32 group = 0;
    qint32 index = 0;
    qint32 x = 0;
    qint32 y = 0;
    quint16 flags = 0;
};
