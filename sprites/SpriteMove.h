#pragma once

#include "SpriteUndoCommand.h"

// A sprite was moved from one position so that it stands at another.
class SpriteMove : public SpriteUndoCommand
{
public:
    SpriteMove(QSprites* sprites, uint from, uint to);
    void undo() override;
    void apply() override;

private:
    uint from;
    uint to;
};
