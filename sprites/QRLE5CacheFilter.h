#pragma once

#include "QStreamCacheFilter.h"

// Decodes RLE5 blocks of SFF v2 sprites.
class QRLE5CacheFilter : public QStreamCacheFilter
{
public:
    QByteArray decode(const QByteArray& data, const QImageInfo* info) const override;
};
