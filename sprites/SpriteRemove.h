#pragma once

#include "SpriteUndoCommand.h"

#include <QtGlobal>

struct QSpriteImageRecord;

// A sprite was removed; the command keeps its image record alive and its fields.
class SpriteRemove : public SpriteUndoCommand
{
public:
    // Takes what it keeps from the sprite that stands at position now.
    SpriteRemove(QSprites* sprites, uint position);
    ~SpriteRemove() override;
    void undo() override;
    void apply() override;

private:
    uint position;
    QSpriteImageRecord* image;
    int palette;
    qint32 group;
    qint32 index;
    qint32 x;
    qint32 y;
    quint16 flags;
};
