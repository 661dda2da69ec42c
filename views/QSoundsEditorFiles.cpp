// The file commands of the sounds editor: a new file, another file, saving, and moving sounds in and
// out through export lists and other projects.

#include "QDialogRunner.h"
#include "QProgress.h"
#include "QSoundTransfer.h"
#include "QSounds.h"
#include "QSoundsEditor.h"
#include "QUserDialogs.h"
#include "TabImport.h"

#include <QApplication>
#include <QFileInfo>

namespace {
QSoundTransfer::Progress progressOf(QProgress& progress)
{
    return [&progress](uint pos, uint max) {
        bool allow = true;
        progress.onProgress(pos, max, allow);
        return allow;
    };
}
} // namespace

void QSoundsEditor::clear()
{
    if (!model || !model->canDiscard()) return;
    model->clear();
    updateSel();
    emit titleChanged();
}

void QSoundsEditor::open()
{
    if (!model || !model->canDiscard()) return;
    const QString path =
        QUserDialogs::getOpenFileName(tr("Open sounds"), startFolder("proj_path"), tr("Sound file (*.snd)"));
    if (path.isEmpty()) return;
    rememberFolder("proj_path", path);
    {
        QProgress progress(dialogParent(), tr("Loading sounds..."));
        connect(model, &QSounds::progress, &progress, &QProgress::onProgress);
        if (!model->fromFile(path))
            QUserDialogs::critical(tr("Open sounds"), tr("The file %1 could not be read.").arg(path));
    }
    lastRow = model->count() > 0 ? 0 : -1;
    updateSel();
    emit titleChanged();
}

void QSoundsEditor::save()
{
    if (!model) return;
    if (model->fileName().isEmpty()) {
        saveAs();
        return;
    }
    if (!model->canSave(0)) return;
    emit flushFields();
    bool saved = false;
    {
        QProgress progress(dialogParent(), tr("Saving sounds..."));
        connect(model, &QSounds::progress, &progress, &QProgress::onProgress);
        saved = model->toFile(model->fileName());
    }
    if (!saved)
        QUserDialogs::critical(
            tr("Save sounds"),
            tr("The file %1 could not be written.\n%2").arg(model->fileName(), model->errorString()));
    emit titleChanged();
}

void QSoundsEditor::saveAs()
{
    if (!model || !model->canSave(0)) return;
    const QString path =
        QUserDialogs::getSaveFileName(tr("Save sounds"), startFolder("proj_path"), tr("Sound file (*.snd)"));
    if (path.isEmpty()) return;
    rememberFolder("proj_path", path);
    emit flushFields();
    bool saved = false;
    {
        QProgress progress(dialogParent(), tr("Saving sounds..."));
        connect(model, &QSounds::progress, &progress, &QProgress::onProgress);
        saved = model->toFile(path);
    }
    if (!saved)
        QUserDialogs::critical(tr("Save sounds"),
                               tr("The file %1 could not be written.\n%2").arg(path, model->errorString()));
    emit titleChanged();
}

void QSoundsEditor::fileExport()
{
    if (!model) return;
    if (model->count() == 0) {
        QUserDialogs::information(tr("Export sounds"), tr("There are no sounds to export."));
        return;
    }
    QString selected;
    QString path = QUserDialogs::getSaveFileName(
        tr("Export sounds"), startFolder("snd_path"),
        tr("Tavrel Export (*.tve)") + tr(";;Elecbyte SndMaker (*.def)"), &selected);
    if (path.isEmpty()) return;
    // The form follows the suffix; a name typed without one takes the form of the filter chosen.
    if (QFileInfo(path).suffix().isEmpty())
        path += selected.contains(QLatin1String("*.def")) ? QLatin1String(".def") : QLatin1String(".tve");
    rememberFolder("snd_path", path);
    emit flushFields();
    bool listWritten = false;
    bool ok = false;
    {
        QProgress progress(dialogParent(), tr("Exporting sounds..."));
        ok = QSoundTransfer::exportTo(*model, path, &listWritten, progressOf(progress));
    }
    // A list that can't be written ends the export as if nothing was asked.
    if (listWritten && !ok)
        QUserDialogs::warning(
            tr("Export sounds"),
            tr("Some of the files could not be written to %1.").arg(QFileInfo(path).absolutePath()));
}

void QSoundsEditor::fileImport()
{
    if (!model) return;
    const QString path = QUserDialogs::getOpenFileName(tr("Import sounds"), startFolder("snd_path"),
                                                       tr("Tavrel Export (*.tve)"));
    if (path.isEmpty()) return;
    rememberFolder("snd_path", path);
    emit flushFields();
    const int first = int(model->count());
    int imported = 0;
    {
        QProgress progress(dialogParent(), tr("Importing sounds..."));
        imported = QSoundTransfer::importFrom(*model, path, progressOf(progress));
    }
    if (imported > 0) {
        QUserDialogs::information(tr("Import"), tr("%n sound(s) were imported!", nullptr, imported));
        definePos(first);
    } else {
        QUserDialogs::information(tr("Import"), tr("No sound imported!"));
    }
}

void QSoundsEditor::projImport()
{
    if (!model) return;
    if (importSources.isEmpty()) {
        QUserDialogs::information(tr("Import"), tr("There is no other open project to import from."));
        return;
    }
    TabImport dialog(importSources, dialogParent());
    if (QDialogRunner::run(&dialog) != QDialog::Accepted || !dialog.source()) return;
    if (dialog.source() == model) {
        QUserDialogs::warning(tr("Warning"), tr("You can't import from the destination project!"));
        return;
    }
    emit flushFields();
    const int first = int(model->count());
    int imported = 0;
    {
        QProgress progress(dialogParent(), tr("Importing sounds..."));
        bool allow = true;
        // A busy bar: copying between models reports no steps.
        progress.onProgress(0, 0, allow);
        imported = QSoundTransfer::importSounds(*model, *dialog.source(), dialog.rows());
    }
    if (imported > 0) {
        QUserDialogs::information(tr("Import"), tr("%n sound(s) were imported!", nullptr, imported));
        definePos(first);
    } else {
        QUserDialogs::information(tr("Import"), tr("No sound imported!"));
    }
}
