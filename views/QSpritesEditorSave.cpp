// Saving sprites as image files: plain, or aligned on one canvas with a common axis.

#include "QImageFiles.h"
#include "QProgress.h"
#include "QSprite.h"
#include "QSprites.h"
#include "QSpritesEditor.h"
#include "QUserDialogs.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {
const char* const defaultSuffix = "png";
} // namespace

QString QSpritesEditor::rangeFolder(const QString& path)
{
    const QFileInfo info(path);
    return QDir(info.path()).filePath(info.completeBaseName());
}

QString QSpritesEditor::askImageSave(const QString& title, const SaveItem& item)
{
    const QString filter =
        tr("Portable Network Graphic (*.png);;Personal Computer eXchange (*.pcx);;Bitmap (*.bmp)");
    const QSprite* sprite = currentSprite();
    // A range goes into a folder named after the file, so the name proposed reads as one.
    const QString name = item.isRange() || !sprite
                             ? QStringLiteral("images")
                             : QStringLiteral("%1-%2").arg(sprite->itemGroup()).arg(sprite->itemIndex());
    const QString folder = startFolder("spr_path");
    QString selected;
    QString path = QUserDialogs::getSaveFileName(
        title, (folder.isEmpty() ? name : QDir(folder).filePath(name)) + QLatin1String(".png"), filter,
        &selected);
    if (path.isEmpty()) return path;
    if (QFileInfo(path).suffix().isEmpty()) {
        // No suffix typed: the one of the filter chosen, which names it as "(*.pcx)".
        const int star = selected.indexOf(QLatin1String("*."));
        const QString suffix =
            star < 0 ? QString::fromLatin1(defaultSuffix)
                     : selected.mid(star + 2, selected.indexOf(QLatin1Char(')'), star) - star - 2);
        path += QLatin1Char('.') + suffix;
    }
    rememberFolder("spr_path", path);
    return path;
}

int QSpritesEditor::saveImages(const SaveItem& item, const QList<uint>& rows, const QString& path,
                               bool aligned, QPoint* axis)
{
    QPoint common;
    const QSize canvas = aligned ? model->alignedCanvas(rows, &common) : QSize();
    if (axis) *axis = common;
    const auto imageOf = [&](const QSprite* sprite) {
        return aligned ? sprite->alignedImage(common, canvas) : sprite->image(QSpriteImagePalette::Default);
    };
    if (!item.isRange()) {
        const QSprite* sprite = rows.isEmpty() ? nullptr : model->at(rows.first());
        return sprite && QImageFiles::save(imageOf(sprite), path) ? 0 : 1;
    }

    const QDir folder(rangeFolder(path));
    QString suffix = QFileInfo(path).suffix();
    if (suffix.isEmpty()) suffix = QString::fromLatin1(defaultSuffix);
    if (!QDir().mkpath(folder.path())) return int(rows.size());
    QProgress progress(dialogParent(), tr("Saving images..."));
    const uint total = uint(rows.size());
    bool allow = true;
    int failed = 0;
    for (uint k = 0; k < total && allow; ++k) {
        progress.onProgress(k, total, allow);
        const QSprite* sprite = model->at(rows.at(k));
        // An empty sprite has no picture to write; that is no failure.
        if (!sprite || !sprite->hasImage()) continue;
        const QString file = folder.filePath(
            QStringLiteral("%1-%2.%3").arg(sprite->itemGroup()).arg(sprite->itemIndex()).arg(suffix));
        if (!QImageFiles::save(imageOf(sprite), file)) ++failed;
    }
    progress.onProgress(total, total, allow);
    return failed;
}

void QSpritesEditor::saveImg()
{
    if (!currentSprite()) return;
    SaveItem item;
    if (!askRange(tr("Save images"), item)) return;
    const QList<uint> rows = item.rows(*model, position());
    if (rows.isEmpty()) {
        QUserDialogs::information(tr("Save images"), tr("No sprite lies in the range."));
        return;
    }
    const QString path = askImageSave(tr("Save images"), item);
    if (path.isEmpty()) return;
    if (const int failed = saveImages(item, rows, path, false, nullptr))
        QUserDialogs::warning(tr("Save images"), tr("%n image(s) could not be saved.", nullptr, failed));
}

void QSpritesEditor::saveImgAlign()
{
    if (!currentSprite()) return;
    SaveItem item;
    if (!askRange(tr("Save aligned images"), item)) return;
    const QList<uint> rows = item.rows(*model, position());
    if (rows.isEmpty()) {
        QUserDialogs::information(tr("Save aligned images"), tr("No sprite lies in the range."));
        return;
    }
    const QString path = askImageSave(tr("Save aligned images"), item);
    if (path.isEmpty()) return;
    QPoint axis;
    if (const int failed = saveImages(item, rows, path, true, &axis))
        QUserDialogs::warning(tr("Save aligned images"),
                              tr("%n image(s) could not be saved.", nullptr, failed));
    if (QUserDialogs::question(tr("Perfect axis"),
                               tr("The axis is X: %1, Y: %2. Do you want to save this information to a file?")
                                   .arg(axis.x())
                                   .arg(axis.y()),
                               QUserDialogs::Yes | QUserDialogs::No, QUserDialogs::Yes) != QUserDialogs::Yes)
        return;
    QFile file(QFileInfo(path).path() + QStringLiteral("/axis.txt"));
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)) return;
    file.write(QStringLiteral("X axis: %1\r\nY axis: %2").arg(axis.x()).arg(axis.y()).toLatin1());
}
