#include "QImageFiles.h"

#include "QPCXCodec.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QSaveFile>

QString QImageFiles::openFilter()
{
    return QCoreApplication::translate("QImageFiles", "Images") + QStringLiteral(" (*.pcx *.png *.bmp);;") +
           QCoreApplication::translate("QImageFiles",
                                       "Personal Computer eXchange (*.pcx);;Portable Network Graphic "
                                       "(*.png);;Bitmap (*.bmp)");
}

QImage QImageFiles::load(const QString& path)
{
    if (QFileInfo(path).suffix().compare(QLatin1String("pcx"), Qt::CaseInsensitive) == 0) {
        QFile file(path);
        // A PCX of the largest sprite the file formats allow is far below this; a larger file is not one.
        if (!file.open(QIODevice::ReadOnly) || file.size() > (qint64(1) << 28)) return QImage();
        return decodePCX(file.readAll());
    }
    QImageReader reader(path);
    reader.setAutoTransform(false);
    // Refuse sizes no sprite can have before any pixel is allocated.
    const QSize size = reader.size();
    if (size.isValid() && (size.width() > 65535 || size.height() > 65535)) return QImage();
    return reader.read();
}

bool QImageFiles::save(const QImage& image, const QString& path)
{
    if (image.isNull()) return false;
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) return false;
    const QString suffix = QFileInfo(path).suffix().toLower();
    bool written = false;
    if (suffix == QLatin1String("pcx"))
        written = encodePCX(image, &file);
    else
        written = image.save(&file, suffix.isEmpty() ? "PNG" : suffix.toLatin1().constData());
    if (!written) {
        file.cancelWriting();
        return false;
    }
    return file.commit();
}
