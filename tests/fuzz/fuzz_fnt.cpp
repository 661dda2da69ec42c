// The old font reader on arbitrary bytes, then the conversion into definitions text and sprites for
// what it accepts. Nothing may crash, hang or allocate beyond what the bytes justify.

#include "QFntReader.h"
#include "QFontFile.h"
#include "QSprite.h"
#include "QSprites.h"

#include <QBuffer>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    QBuffer buffer;
    buffer.setData(reinterpret_cast<const char*>(data), qsizetype(size));
    if (!buffer.open(QIODevice::ReadOnly)) return 0;
    QFntFont font;
    if (!QFntReader::read(&buffer, font)) return 0;
    for (const QFntGlyph& glyph : std::as_const(font.map)) {
        const QRect cell = font.cell(glyph);
        if (!cell.isEmpty() && !font.image.rect().contains(cell)) __builtin_trap();
    }
    QFontFile::definitionsText(font, QStringLiteral("fuzz"));
    // The models only for images of a sensible size, so that a run stays quick.
    if (qint64(font.image.width()) * font.image.height() > 1024 * 1024) return 0;
    QSprites sprites(nullptr, 0, size % 2 == 0);
    QFontFile::toSprites(font, sprites);
    for (uint i = 0; i < sprites.count(); ++i)
        sprites.at(i)->image();
    return 0;
}
