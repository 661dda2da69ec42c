#include "QSpriteColorTable.h"

#include <cstring>

QSpriteColorTable* QSpriteColorTable::create(const QRGBPal* source)
{
    auto* table = new QSpriteColorTable;
    if (source)
        std::memcpy(static_cast<void*>(table->colors), source, QRGBPal::TableBytes);
    else
        std::memset(static_cast<void*>(table->colors), 0, QRGBPal::TableBytes);
    return table;
}

QSpriteColorTable* QSpriteColorTable::retain(QSpriteColorTable* table)
{
    if (table) ++table->refCount;
    return table;
}

void QSpriteColorTable::release(QSpriteColorTable* table)
{
    if (!table) return;
    if (table->refCount > 1) {
        --table->refCount;
        return;
    }
    delete table;
}
