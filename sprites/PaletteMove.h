#pragma once

#include "SpriteUndoCommand.h"

// A palette was moved from one position so that it stands at another. Commands keep palettes by
// position, so a move that no command recorded would make the later ones point at the wrong palette.
class PaletteMove : public SpriteUndoCommand
{
public:
    PaletteMove(QSprites* sprites, uint from, uint to);
    void undo() override;
    void apply() override;

private:
    uint from;
    uint to;
};
