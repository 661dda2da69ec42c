// The file commands of the sprites editor: a new file, another file, saving, and moving sprites in and
// out through export files and other projects.

#include "QProgress.h"
#include "QSpriteTransfer.h"
#include "QSprites.h"
#include "QSpritesEditor.h"
#include "QUserDialogs.h"

#include <QApplication>

void QSpritesEditor::clear()
{
    if (!model || !model->canDiscard()) return;
    model->clear();
    model->setCurrentIndex(-1);
    updateSel();
    emit titleChanged();
}

void QSpritesEditor::open()
{
    if (!model || !model->canDiscard()) return;
    const QString path = QUserDialogs::getOpenFileName(tr("Open sprites"), startFolder("proj_path"),
                                                       tr("Sprite file (*.sff)"));
    if (path.isEmpty()) return;
    rememberFolder("proj_path", path);
    QProgress progress(QApplication::activeWindow(), tr("Loading sprites..."));
    connect(model, &QSprites::progress, &progress, &QProgress::onProgress);
    if (!model->fromFile(path))
        QUserDialogs::critical(tr("Open sprites"), tr("The file %1 could not be read.").arg(path));
    model->setCurrentIndex(model->count() > 0 ? 0 : -1);
    updateSel();
    emit titleChanged();
}

void QSpritesEditor::save()
{
    if (!model) return;
    if (model->fileName().isEmpty()) {
        saveAs();
        return;
    }
    QProgress progress(QApplication::activeWindow(), tr("Saving sprites..."));
    connect(model, &QSprites::progress, &progress, &QProgress::onProgress);
    model->toFile(model->fileName());
    emit titleChanged();
}

void QSpritesEditor::saveAs()
{
    if (!model) return;
    const QString path = QUserDialogs::getSaveFileName(tr("Save sprites"), startFolder("proj_path"),
                                                       tr("Sprite file (*.sff)"));
    if (path.isEmpty()) return;
    rememberFolder("proj_path", path);
    QProgress progress(QApplication::activeWindow(), tr("Saving sprites..."));
    connect(model, &QSprites::progress, &progress, &QProgress::onProgress);
    model->toFile(path);
    emit titleChanged();
}

void QSpritesEditor::fileImport()
{
    if (!model) return;
    const QString path = QUserDialogs::getOpenFileName(tr("Import sprites"), startFolder("spr_path"),
                                                       tr("Tavrel Export (*.tve)"));
    if (path.isEmpty()) return;
    rememberFolder("spr_path", path);
    const uint before = model->count();
    QProgress progress(QApplication::activeWindow(), tr("Importing sprites..."));
    progress.setRange(0, 0);
    QSpriteTransfer::importFrom(*model, path);
    const int imported = int(model->count() - before);
    if (imported > 0)
        QUserDialogs::information(tr("Import"), tr("%n sprite(s) were imported!", nullptr, imported));
    else
        QUserDialogs::information(tr("Import"), tr("No sprite imported!"));
    updateSel();
}

void QSpritesEditor::imgEditor()
{
    // The image editor window arrives with its own feature; the action stays disabled until then.
}
