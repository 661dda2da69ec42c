#pragma once

#include "QStreamCacheFilter.h"

// Decodes RLE8 blocks of SFF v2 sprites.
class QRLE8CacheFilter : public QStreamCacheFilter
{
public:
    QByteArray decode(const QByteArray& data, const QImageInfo* info) const override;
};
