// The sprite file reader on arbitrary bytes, then every sprite decoded and, for small models, the model
// written again in every version. Nothing may crash, hang or allocate beyond what the bytes justify.

#include "QSFFReader.h"
#include "QSFFWriter.h"
#include "QSprite.h"
#include "QSpritePalette.h"
#include "QSprites.h"
#include "QUserDialogs.h"

#include <QBuffer>

namespace {

// Boxes are answered at once: nobody is there.
class SilentDialogs : public QUserDialogs
{
public:
    Button message(QMessageBox::Icon, QWidget*, const QString&, const QString&, Buttons,
                   Button defaultButton) override
    {
        return defaultButton;
    }
    QString openFileName(QWidget*, const QString&, const QString&, const QString&, QString*) override
    {
        return QString();
    }
    QStringList openFileNames(QWidget*, const QString&, const QString&, const QString&, QString*) override
    {
        return QStringList();
    }
    QString saveFileName(QWidget*, const QString&, const QString&, const QString&, QString*) override
    {
        return QString();
    }
    QString existingDirectory(QWidget*, const QString&, const QString&) override { return QString(); }
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static SilentDialogs dialogs;
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
