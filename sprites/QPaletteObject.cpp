#include "QPaletteObject.h"

#include "QSpritePalette.h"
#include "QSprites.h"

QPaletteObject::QPaletteObject(QSprites* sprites) : QOrganizableObject(sprites), model(sprites) {}

void QPaletteObject::beginChanges()
{
    model->beginChanges();
}

void QPaletteObject::endChanges()
{
    model->endChanges();
}

void QPaletteObject::remove(uint index)
{
    model->removePalette(index);
}

void QPaletteObject::move(uint from, uint to)
{
    model->movePalette(from, to);
}

void QPaletteObject::autoOrganize()
{
    const uint count = model->paletteCount();
    if (count < 2) return;
    model->undoStack()->beginMacro(tr("autoOrganize"));
    const bool wasLoading = model->isLoading();
    model->setLoading(true);
    for (uint i = 1; i < count; ++i) {
        const QSpritePalette* moving = model->paletteAt(i);
        for (uint j = 0; j < i; ++j) {
            const QSpritePalette* other = model->paletteAt(j);
            if (moving->itemGroup() < other->itemGroup() ||
                (moving->itemGroup() == other->itemGroup() && moving->itemIndex() < other->itemIndex())) {
                model->movePalette(i, j);
                break;
            }
        }
    }
    model->setLoading(wasLoading);
    model->undoStack()->endMacro();
    model->finishChange();
}

int QPaletteObject::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(model->paletteCount());
}

QVariant QPaletteObject::data(const QModelIndex& index, int role) const
{
    const QSpritePalette* palette = index.isValid() ? model->paletteAt(uint(index.row())) : nullptr;
    if (!palette || role != Qt::DisplayRole) return QVariant();
    return QStringLiteral("%1, %2").arg(palette->itemGroup()).arg(palette->itemIndex());
}
