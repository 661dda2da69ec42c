#pragma once

#include "SpriteUndoCommand.h"

// An empty sprite was inserted at a position.
class SpriteInsert : public SpriteUndoCommand
{
public:
    SpriteInsert(QSprites* sprites, uint position);
    void undo() override;
    void apply() override;

private:
    uint position;
};
