#pragma once

#include "QRGBPal.h"

// The 256 colours of one or more palettes, held by reference count; the last release frees them.
struct QSpriteColorTable
{
    QRGBPal colors[QRGBPal::TableSize];
    quint32 refCount = 0;

    // A table of zero bytes with a count of 0; with source, a copy of those colours.
    static QSpriteColorTable* create(const QRGBPal* source = nullptr);
    static QSpriteColorTable* retain(QSpriteColorTable* table);
    static void release(QSpriteColorTable* table);
};
