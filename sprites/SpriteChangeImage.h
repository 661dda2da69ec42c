#pragma once

#include "SpriteUndoCommand.h"

struct QSpriteImageRecord;

// The image of a sprite changed. Normally the sprite went to another record, and undo and redo swap
// the sprite's record with the one kept here. When the pixels were replaced inside a shared record,
// the command keeps a private record with the other pixels and swaps the contents instead, so that
// every sharer follows.
class SpriteChangeImage : public SpriteUndoCommand
{
public:
    // Made before the change: keeps the record the sprite at position has now, or, with inPlace, a
    // copy of its pixels.
    SpriteChangeImage(QSprites* sprites, uint position, bool inPlace = false);
    ~SpriteChangeImage() override;
    void undo() override;
    void apply() override;

private:
    void swap();

    uint position;
    bool inPlace;
    QSpriteImageRecord* other;
};
