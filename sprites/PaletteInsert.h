#pragma once

#include "SpriteUndoCommand.h"

#include <QtGlobal>

struct QSpriteColorTable;

// A palette was inserted. Made after the insertion, from the palette that stands at position; it
// keeps the colour table record, so that tables shared with other palettes stay shared.
class PaletteInsert : public SpriteUndoCommand
{
public:
    PaletteInsert(QSprites* sprites, uint position);
    ~PaletteInsert() override;
    void undo() override;
    void apply() override;

protected:
    PaletteInsert(QSprites* sprites, uint position, const QString& text);
    void insertIt();
    void removeIt();

private:
    uint position;
    qint32 group = 0;
    qint32 index = 0;
    int colorCount = 0;
    QSpriteColorTable* colors = nullptr;
};
