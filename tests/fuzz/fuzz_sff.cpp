// The sprite file reader on arbitrary bytes, then every sprite decoded and, for small models, the model
// written again in every version. Nothing may crash, hang or allocate beyond what the bytes justify.

#include "QSFFReader.h"
#include "QSFFWriter.h"
#include "QSilentDialogs.h"
#include "QSprite.h"
#include "QSpritePalette.h"
#include "QSprites.h"

#include <QBuffer>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    // Boxes are answered at once: nobody is there.
    static QSilentDialogs dialogs;
    QUserDialogs::install(&dialogs);
    QBuffer buffer;
    buffer.setData(reinterpret_cast<const char*>(data), qsizetype(size));
    if (!buffer.open(QIODevice::ReadOnly)) return 0;
    QSprites sprites(nullptr, 0, size % 2 == 0);
    QSFFReader reader(&sprites);
    if (!reader.read(&buffer, QStringLiteral("fuzz.sff"), false)) return 0;
    qint64 pixels = 0;
    for (uint i = 0; i < sprites.count(); ++i) {
        const QImage image = sprites.at(i)->image();
        pixels += qint64(image.width()) * image.height();
    }
    for (uint i = 0; i < sprites.paletteCount(); ++i)
        sprites.paletteAt(i)->colors();
    sprites.check();
    // Writing encodes every block that isn't in a form the version keeps; only small models, so that a
    // run stays quick.
    if (pixels < 64 * 1024 && sprites.count() < 64) {
        QSFFWriter writer(&sprites);
        for (quint32 version : {QSprites::Version_201, QSprites::Version_200, QSprites::Version_101}) {
            sprites.setVersion(version);
            QBuffer out;
            out.open(QIODevice::WriteOnly);
            writer.write(&out, true);
        }
    }
    return 0;
}
