#pragma once

#include "SpriteUndoCommand.h"

#include <QtGlobal>

// The group, index or colour count of a palette changed; undo and redo swap them with the values kept.
class PaletteChangeInfo : public SpriteUndoCommand
{
public:
    // Made before the change, from the palette at position.
    PaletteChangeInfo(QSprites* sprites, uint position);
    void undo() override;
    void apply() override;

private:
    void swap();

    uint position;
    qint32 group = 0;
    qint32 index = 0;
    int colorCount = 0;
};
