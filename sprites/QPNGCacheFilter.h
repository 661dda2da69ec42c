#pragma once

#include "QStreamCacheFilter.h"

// Decodes the PNG blocks of SFF v2 sprites: the common forms by our own decoder, the rest through
// Qt's image codec, with the same pixels either way.
class QPNGCacheFilter : public QStreamCacheFilter
{
public:
    QByteArray decode(const QByteArray& data, const QImageInfo* info) const override;
};
