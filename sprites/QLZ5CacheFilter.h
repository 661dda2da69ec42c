#pragma once

#include "QStreamCacheFilter.h"

// Decodes LZ5 blocks of SFF v2 sprites.
class QLZ5CacheFilter : public QStreamCacheFilter
{
public:
    QByteArray decode(const QByteArray& data, const QImageInfo* info) const override;
};
