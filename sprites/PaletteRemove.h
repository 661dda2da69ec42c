#pragma once

#include "PaletteInsert.h"

// A palette was removed. Made before the removal, from the palette at position; it holds what
// PaletteInsert holds and does the opposite.
class PaletteRemove : public PaletteInsert
{
public:
    PaletteRemove(QSprites* sprites, uint position);
    void undo() override;
    void apply() override;
};
