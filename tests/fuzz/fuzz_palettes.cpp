// Every palette file reader on arbitrary bytes. The first byte picks the reader, the rest is the file.
// Readers must never crash, hang or read beyond the bytes, and whatever they answer, colour 0 of a
// table read through QRGBPalette ends transparent.

#include "QACOPalette.h"
#include "QACTPalette.h"
#include "QASEPalette.h"
#include "QIndexedImagePalette.h"
#include "QJascPalette.h"
#include "QPainterPalette.h"
#include "QRGBPalette.h"
#include "QRIFFPalette.h"

#include <QBuffer>

#include <array>
#include <cstdlib>
#include <memory>

namespace {

std::unique_ptr<QAbstractPalette> readerFor(uchar selector, const QByteArray& bytes)
{
    switch (selector % 10) {
    case 0:
        return std::make_unique<QACTPalette>();
    case 1:
        return std::make_unique<QRIFFPalette>();
    case 2:
        return std::make_unique<QJascPalette>();
    case 3:
        return std::make_unique<QACOPalette>();
    case 4:
        return std::make_unique<QASEPalette>();
    case 5:
        return std::make_unique<QPainterPalette>();
    case 6:
        return std::make_unique<QIndexedImagePalette>(QStringLiteral("png"));
    case 7:
        return std::make_unique<QIndexedImagePalette>(QStringLiteral("bmp"));
    case 8:
        return std::make_unique<QIndexedImagePalette>(QStringLiteral("pcx"));
    default:
        // The choice by content, as palette files without a known suffix are read.
        return QAbstractPalette::forFile(QString(), bytes.left(4));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size == 0) return 0;
    // An exact copy, so that a read past the end is one past the allocation.
    QByteArray bytes(reinterpret_cast<const char*>(data) + 1, qsizetype(size - 1));
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    std::array<QRGBPal, QRGBPal::TableSize> table{};
    const std::unique_ptr<QAbstractPalette> reader = readerFor(data[0], bytes);
    const bool accepted = reader->read(&buffer, table.data());
    if (accepted != reader->errorString().isEmpty()) std::abort();

    // The operations that follow a read work on any table.
    QRGBPalette palette(table.data());
    palette.nearest(table[17]);
    palette.lastUsed();
    palette.replaceDuplicates(QRGBPal(255, 0, 255));
    palette.transform(1 + data[0] % 14, nullptr);
    return 0;
}
