#pragma once

#include "QStreamCacheFilter.h"

// Decodes the PNG blocks of SFF v2 sprites through Qt's image codec.
class QPNGCacheFilter : public QStreamCacheFilter
{
public:
    QByteArray decode(const QByteArray& data, const QImageInfo* info) const override;
};
