#pragma once

#include "SpriteUndoCommand.h"

struct QSpriteColorTable;

// The colours of a palette changed. Normally the palette went to a table of its own, and undo and redo
// swap the palette's table with the one kept here; when the colours were written into a table that
// other palettes share, the command keeps a private copy of the other colours and swaps contents.
class PaletteChangeColors : public SpriteUndoCommand
{
public:
    // Made before the change, from the palette at position.
    PaletteChangeColors(QSprites* sprites, uint position, bool inPlace);
    ~PaletteChangeColors() override;
    void undo() override;
    void apply() override;

private:
    void swap();

    uint position;
    bool inPlace;
    QSpriteColorTable* other;
};
