// The file commands of the sprites editor: a new file, another file, saving, and moving sprites in and
// out through export files and other projects.

#include "ExpDlg.h"
#include "QDialogRunner.h"
#include "QProgress.h"
#include "QSprite.h"
#include "QSpriteTransfer.h"
#include "QSprites.h"
#include "QSpritesEditor.h"
#include "QUserDialogs.h"
#include "sprimport.h"

#include <QApplication>
#include <QFileInfo>

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
    bool allow = true;
    // A busy bar: the import reports no steps, but the window may show before it starts.
    progress.onProgress(0, 0, allow);
    QSpriteTransfer::importFrom(*model, path);
    const int imported = int(model->count() - before);
    if (imported > 0)
        QUserDialogs::information(tr("Import"), tr("%n sprite(s) were imported!", nullptr, imported));
    else
        QUserDialogs::information(tr("Import"), tr("No sprite imported!"));
    updateSel();
}

void QSpritesEditor::fileExport()
{
    if (!model) return;
    const QSprite* sprite = currentSprite();
    ExpDlg dialog(*model, sprite ? sprite->itemGroup() : 0, dialogParent());
    if (QDialogRunner::run(&dialog) != QDialog::Accepted) return;
    QString selected;
    QString path = QUserDialogs::getSaveFileName(
        tr("Export sprites"), startFolder("spr_path"),
        tr("Tavrel Export (*.tve)") + tr(";;Elecbyte SprMaker 2 (*.def)"), &selected);
    if (path.isEmpty()) return;
    // The form follows the suffix; a name typed without one takes the form of the filter chosen.
    if (QFileInfo(path).suffix().isEmpty())
        path += selected.contains(QLatin1String("*.def")) ? QLatin1String(".def") : QLatin1String(".tve");
    rememberFolder("spr_path", path);
    QProgress progress(dialogParent(), tr("Exporting sprites..."));
    bool allow = true;
    // A busy bar: the export reports no steps, but the window may show before it starts.
    progress.onProgress(0, 0, allow);
    if (!QSpriteTransfer::exportTo(*model, path, dialog.selection()))
        QUserDialogs::warning(
            tr("Export sprites"),
            tr("Some of the files could not be written to %1.").arg(QFileInfo(path).absolutePath()));
}

void QSpritesEditor::projImport()
{
    if (!model) return;
    if (importSources.isEmpty()) {
        QUserDialogs::information(tr("Import"), tr("There is no other open project to import from."));
        return;
    }
    sprimport dialog(importSources, dialogParent());
    if (QDialogRunner::run(&dialog) != QDialog::Accepted || !dialog.source()) return;
    if (dialog.source() == model) {
        QUserDialogs::warning(tr("Warning"), tr("You can't import from the destination project!"));
        return;
    }
    emit flushFields();
    int imported = 0;
    {
        QProgress progress(dialogParent(), tr("Importing sprites..."));
        connect(model, &QSprites::progress, &progress, &QProgress::onProgress);
        imported = model->importSprites(*dialog.source(), dialog.rows());
    }
    if (imported > 0)
        QUserDialogs::information(tr("Import"), tr("%n sprite(s) were imported!", nullptr, imported));
    else
        QUserDialogs::information(tr("Import"), tr("No sprite imported!"));
    updateSel();
}

void QSpritesEditor::sheetImport()
{
    if (model) emit sheetImportRequested();
}

void QSpritesEditor::imgEditor()
{
    // The image editor window arrives with its own feature; the action stays disabled until then.
}
