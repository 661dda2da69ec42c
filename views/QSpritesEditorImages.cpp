// The image commands of the sprites editor: adding sprites from image files, replacing the current
// sprite's image, cropping and splitting channels.

#include "AddSpr.h"
#include "PalDlg.h"
#include "QDialogRunner.h"
#include "QImageFiles.h"
#include "QNaturalOrder.h"
#include "QProgress.h"
#include "QSprRender.h"
#include "QSprite.h"
#include "QSpriteChangeGroup.h"
#include "QSpriteNumbering.h"
#include "QSpritePalette.h"
#include "QSprites.h"
#include "QSpritesEditor.h"
#include "QUserDialogs.h"
#include "QViewSettings.h"
#include "SaveSpr.h"

#include <algorithm>

namespace {

// An image in one of the forms a sprite holds, so that cropping sees the same pixels the sprite will.
QImage normalised(const QImage& image)
{
    switch (image.format()) {
    case QImage::Format_Indexed8:
    case QImage::Format_RGB32:
    case QImage::Format_ARGB32:
        return image;
    default:
        return image.convertToFormat(image.hasAlphaChannel() ? QImage::Format_ARGB32 : QImage::Format_RGB32);
    }
}

QImage cropped(const QImage& image)
{
    const QRect box = QSprite::contentBox(image);
    return box.isValid() && box != image.rect() ? image.copy(box) : image;
}

// Whether an indexed image brings exactly the colours of a palette, all 256 of them. Transparency isn't
// compared: a palette's colour 0 is always transparent, an image file's often isn't.
bool sameColours(const QImage& image, const QSpritePalette* palette)
{
    if (!palette || palette->isEmpty() || image.format() != QImage::Format_Indexed8) return false;
    const QList<QRgb> table = image.colorTable();
    const QVector<uint> colours = palette->colors();
    for (int i = 0; i < colours.size(); ++i) {
        const QRgb own = i < table.size() ? table.at(i) : qRgb(0, 0, 0);
        if ((own & 0xFFFFFFu) != (colours.at(i) & 0xFFFFFFu)) return false;
    }
    return true;
}

} // namespace

void QSpritesEditor::add()
{
    if (!model) return;
    QStringList files =
        QUserDialogs::getOpenFileNames(tr("Add sprites"), startFolder("spr_path"), QImageFiles::openFilter());
    if (files.isEmpty()) return;
    if (QViewSettings::value("sort_file_names", true).toBool()) {
        std::stable_sort(files.begin(), files.end(), QNaturalOrder::less);
    }
    rememberFolder("spr_path", files.first());
    emit flushFields();

    const QSprite* current = currentSprite();
    const bool ask = QViewSettings::value("show_addsprite_dialog", true).toBool();
    AddSpr::Values values;
    if (ask) values = addValues;
    // The numbers follow on from the current sprite.
    values.group = current ? current->itemGroup() : 0;
    values.number = current ? current->itemIndex() + 1 : 0;
    if (ask) {
        AddSpr dialog(values, int(files.size()), dialogParent());
        if (QDialogRunner::run(&dialog) != QDialog::Accepted) return;
        values = dialog.values();
        addValues = values;
    }

    QSpriteNumbering numbering(*model, values.group, values.number, values.step);
    int nextNumber = values.number;
    uint at = current ? uint(position() + 1) : model->count();
    int first = -1;
    {
        QSpriteChangeGroup changes(model, QStringLiteral("add"));
        for (const QString& file : std::as_const(files)) {
            QImage image = normalised(QImageFiles::load(file));
            if (image.isNull()) continue;
            if (values.crop) image = cropped(image);
            const int number = ask ? numbering.next() : nextNumber++;
            if (number < 0) continue;
            changes.open();
            QSprite* sprite = model->insert(at);
            const QPoint axis =
                values.bottomCenter ? QPoint(image.width() / 2, image.height()) : QPoint(values.x, values.y);
            sprite->setInfo(nullptr, values.group, number, axis.x(), axis.y(), 0);
            sprite->setImage(image, values.shareMode(), false, values.paletteMode, values.palette);
            if (ask) numbering.taken(number);
            if (first < 0) first = int(at);
            ++at;
        }
    }
    if (first >= 0) definePos(first);
}

void QSpritesEditor::openImg()
{
    if (!currentSprite()) return;
    const QString file =
        QUserDialogs::getOpenFileName(tr("Open image"), startFolder("spr_path"), QImageFiles::openFilter());
    if (file.isEmpty()) return;
    rememberFolder("spr_path", file);
    QImage image = normalised(QImageFiles::load(file));
    if (image.isNull()) return;
    if (QUserDialogs::question(tr("Open image"), tr("Do you want to crop the image?"),
                               QUserDialogs::Yes | QUserDialogs::No, QUserDialogs::No) == QUserDialogs::Yes)
        image = cropped(image);
    replaceImage(image);
}

void QSpritesEditor::setSprite(QImage& image)
{
    replaceImage(image);
}

void QSpritesEditor::changeSprite(QImage& image)
{
    replaceImage(image);
}

bool QSpritesEditor::replaceImage(QImage image)
{
    QSprite* sprite = currentSprite();
    if (!sprite || image.isNull()) return false;
    emit flushFields();
    const QSpritePalette* own = sprite->palette();
    // What the palette question starts from, and what stands when it is closed without Ok.
    QSpritePaletteMode paletteMode = QSpritePaletteMode::OwnPalette;
    QSpriteShareMode shareMode = QSpriteShareMode::NoShare;
    bool reversed = false;
    QSubItem item = own ? QSubItem{own->itemGroup(), own->itemIndex()} : QSubItem{1, 1};
    if (sameColours(image, own)) {
        // The image was drawn in the sprite's own colours: pixels and palette stay as they are, index
        // for index, even where the palette repeats a colour.
        paletteMode = QSpritePaletteMode::Ignore;
    } else {
        PalDlg dialog(item, dialogParent());
        if (QDialogRunner::run(&dialog) == QDialog::Accepted) {
            paletteMode = dialog.paletteMode();
            shareMode = dialog.shareMode();
            reversed = dialog.reversed();
            item = dialog.palette();
        }
    }
    const bool done = sprite->setImage(image, shareMode, reversed, paletteMode, item);
    if (active) view()->reloadSprite();
    showSprite(model->indexOf(sprite));
    return done;
}

bool QSpritesEditor::askRange(const QString& title, SaveItem& item)
{
    item = lastRange;
    if (const QSprite* sprite = currentSprite()) item.group = sprite->itemGroup();
    if (!SaveSpr::ask(title, item, dialogParent())) return false;
    lastRange = item;
    return true;
}

void QSpritesEditor::crop()
{
    if (!currentSprite()) return;
    SaveItem item;
    if (!askRange(tr("Crop sprites"), item)) return;
    emit flushFields();
    QSprite* shown = currentSprite();
    if (item.kind == SaveItem::Current) {
        shown->crop();
    } else {
        QProgress progress(dialogParent(), tr("Cropping sprites..."));
        connect(model, &QSprites::progress, &progress, &QProgress::onProgress);
        model->cropAll(item.kind == SaveItem::All, uint(item.group), item.allNumbers, item.from, item.to);
    }
    if (active) view()->reloadSprite();
    showSprite(model->indexOf(shown));
}

void QSpritesEditor::splitRGB()
{
    if (!currentSprite()) return;
    SaveItem item;
    if (!askRange(tr("Split channels"), item)) return;
    emit flushFields();
    QSprite* shown = currentSprite();
    if (model->splitRGB(item.rows(*model, position())) == 0) {
        QUserDialogs::information(
            tr("Split channels"),
            tr("There is no true colour sprite in the range. Only true colour sprites are split into "
               "channels."));
        return;
    }
    if (active) view()->reloadSprite();
    showSprite(model->indexOf(shown));
}
