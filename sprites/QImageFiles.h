#pragma once

#include <QImage>
#include <QString>

// Image files as the sprite tools read and write them: PCX by the program's own codec (Qt has none),
// PNG and BMP by Qt, keeping an indexed image indexed so that its colour indices and table survive.
namespace QImageFiles {
// The filter of the image dialogs: the three kinds a sprite can come from.
QString openFilter();
// A null image when the file can't be read or isn't an image.
QImage load(const QString& path);
// By the suffix of path; false when the file can't be written.
bool save(const QImage& image, const QString& path);
} // namespace QImageFiles
