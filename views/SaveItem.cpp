#include "SaveItem.h"

#include "QSprites.h"

QList<uint> SaveItem::rows(const QSprites& sprites, int current) const
{
    switch (kind) {
    case Current:
        if (current >= 0 && uint(current) < sprites.count()) return {uint(current)};
        return {};
    case All:
        return sprites.rangeRows(true, 0, true, 0, 0);
    case Group:
        return sprites.rangeRows(false, group, allNumbers, from, to);
    }
    return {};
}
