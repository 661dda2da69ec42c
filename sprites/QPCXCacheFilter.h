#pragma once

#include "QStreamCacheFilter.h"

// Decodes the PCX files of SFF v1 sprites, also those stored without their palette.
class QPCXCacheFilter : public QStreamCacheFilter
{
public:
    QByteArray decode(const QByteArray& data, const QImageInfo* info) const override;
};
