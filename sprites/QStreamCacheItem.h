#pragma once

#include <QByteArray>

struct QImageInfo;

// One block of a QStreamCache. Items come from a process-wide pool and are never deleted by a cache.
struct QStreamCacheItem
{
    // What is stored; empty when the block lives in the temporary file.
    QByteArray data;
    // Hash of the decoded bytes; 0 while not known.
    quint64 hash = 0;
    // Index in the filter table; 0 for raw pixels.
    quint32 filter = 0;
    // The image the block decodes to; owned by whoever added the block.
    QImageInfo* info = nullptr;
    // Position in the temporary file.
    quint32 offset = 0;
    // Stored bytes.
    quint32 size = 0;
    // Size of the block as it was given in.
    quint32 rawSize = 0;
};
