#pragma once

#include <QByteArray>

// CRC-64, reflected, polynomial constant 0x95AC9329AC4BC9B5, starting value all ones and no final
// inversion. The hash of the image cache: an empty input gives all ones.
quint64 crc64(const char* data, qsizetype size);
inline quint64 crc64(const QByteArray& data)
{
    return crc64(data.constData(), data.size());
}
