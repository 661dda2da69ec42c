#include "PaletteChangeInfo.h"

#include "QSpritePalette.h"
#include "QSprites.h"

PaletteChangeInfo::PaletteChangeInfo(QSprites* sprites, uint position)
    : SpriteUndoCommand(sprites, QObject::tr("Change palette")), position(position)
{
    if (const QSpritePalette* palette = sprites->paletteAt(position)) {
        group = palette->itemGroup();
        index = palette->itemIndex();
        colorCount = palette->colorCount();
    }
}

void PaletteChangeInfo::swap()
{
    QSpritePalette* palette = sprites->paletteAt(position);
    if (!palette) return;
    const qint32 g = palette->itemGroup();
    const qint32 i = palette->itemIndex();
    const int c = palette->colorCount();
    palette->setFields(group, index, colorCount);
    group = g;
    index = i;
    colorCount = c;
}

void PaletteChangeInfo::undo()
{
    const Applying applying(sprites);
    swap();
}

void PaletteChangeInfo::apply()
{
    swap();
}
