// The commands of the palettes editor that change the list of palettes or move palettes in and out
// through files: adding, deleting, opening, saving, and the substitution table.

#include "AddPal.h"
#include "QBlockCounter.h"
#include "QDialogRunner.h"
#include "QPalettesEditor.h"
#include "QProgress.h"
#include "QRGBPalette.h"
#include "QSpritePalette.h"
#include "QSprites.h"
#include "QUserDialogs.h"
#include "QViewSettings.h"
#include "RemapDlg.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <iterator>
#include <vector>

namespace {
using Block = QBlockCounter;

// A table that starts all zero: a file that fills only part of it leaves the rest transparent black.
struct Table
{
    Table() { std::fill(std::begin(colors), std::end(colors), QRGBPal(0, 0, 0, 0)); }
    QRGBPal colors[QRGBPal::TableSize];
};

// File names in the order a person counts them: "pal2" before "pal10", letters without case.
bool numberOrder(const QString& a, const QString& b)
{
    int i = 0;
    int j = 0;
    while (i < a.size() && j < b.size()) {
        if (a.at(i).isDigit() && b.at(j).isDigit()) {
            const int startA = i;
            const int startB = j;
            while (i < a.size() && a.at(i).isDigit())
                ++i;
            while (j < b.size() && b.at(j).isDigit())
                ++j;
            const QString numberA = a.mid(startA, i - startA);
            const QString numberB = b.mid(startB, j - startB);
            const qulonglong valueA = numberA.toULongLong();
            const qulonglong valueB = numberB.toULongLong();
            if (valueA != valueB) return valueA < valueB;
            continue;
        }
        const int order = QString::compare(a.at(i), b.at(j), Qt::CaseInsensitive);
        if (order != 0) return order < 0;
        ++i;
        ++j;
    }
    if (a.size() - i != b.size() - j) return a.size() - i < b.size() - j;
    return a < b;
}

// One past the highest index used in a group, the index a new palette of that group takes.
int nextIndex(const QSprites& sprites, int group)
{
    int highest = -1;
    for (const QSpritePalette* palette : sprites.paletteItems())
        if (palette->itemGroup() == group) highest = std::max(highest, palette->itemIndex());
    return highest + 1;
}
} // namespace

QString QPalettesEditor::startFolder() const
{
    return variables ? variables->value(QStringLiteral("proj_path")) : QString();
}

void QPalettesEditor::rememberFolder(const QString& folder)
{
    if (variables && !folder.isEmpty()) (*variables)[QStringLiteral("proj_path")] = folder;
}

void QPalettesEditor::clear()
{
    if (!currentPalette()) return;
    if (QViewSettings::value("confirm_delete", true).toBool() &&
        QUserDialogs::question(tr("Delete all palettes"),
                               tr("Do you really want to delete all the palettes?")) != QUserDialogs::Yes)
        return;
    ensurePage();
    {
        Block guard(block);
        model->clearPalettes();
    }
    showPalette(0);
}

void QPalettesEditor::clearUnused()
{
    if (!currentPalette()) return;
    ensurePage();
    {
        Block guard(block);
        model->clearUnusedPalettes();
    }
    showPalette(0);
}

void QPalettesEditor::delDupl()
{
    if (!currentPalette()) return;
    ensurePage();
    {
        Block guard(block);
        model->removeDuplicatePalettes();
    }
    const int kept = shown ? model->paletteIndexOf(shown) : -1;
    showPalette(kept >= 0 ? kept : qMin(current, int(model->paletteCount()) - 1));
}

void QPalettesEditor::del()
{
    if (!currentPalette()) return;
    if (QViewSettings::value("confirm_delete", true).toBool() &&
        QUserDialogs::question(tr("Delete palette"), tr("Do you really want to delete the palette?")) !=
            QUserDialogs::Yes)
        return;
    ensurePage();
    const int position = current;
    {
        Block guard(block);
        model->removePalette(uint(position));
    }
    showPalette(qMin(position, int(model->paletteCount()) - 1));
}

void QPalettesEditor::add()
{
    if (!model) return;
    const QUserDialogs::Button answer =
        QUserDialogs::question(tr("Add palette"), tr("Do you want to load the palettes from files?"),
                               QUserDialogs::Yes | QUserDialogs::No | QUserDialogs::Cancel);
    if (answer != QUserDialogs::Yes && answer != QUserDialogs::No) return;
    const QSpritePalette* palette = currentPalette();
    // New palettes join the current one's group, after it.
    int group = palette ? palette->itemGroup() : 1;
    const uint at = palette ? uint(current + 1) : model->paletteCount();
    if (answer == QUserDialogs::No) {
        ensurePage();
        {
            Block guard(block);
            model->insertPalette(at, static_cast<const QRGBPal*>(nullptr), QSpritePaletteShareMode::Share,
                                 group, -1);
        }
        showPalette(int(at));
        return;
    }

    QStringList files =
        QUserDialogs::getOpenFileNames(tr("Add palettes"), startFolder(), QRGBPalette::openFilter());
    if (files.isEmpty()) return;
    rememberFolder(QFileInfo(files.first()).absolutePath());
    if (QViewSettings::value("sort_file_names", true).toBool()) {
        std::sort(files.begin(), files.end(), numberOrder);
    }
    int index = nextIndex(*model, group);
    int step = 1;
    bool reversed = false;
    if (QViewSettings::value("show_addpalette_dialog", true).toBool()) {
        AddPal dialog(QApplication::activeWindow());
        dialog.setGroup(group);
        dialog.setIndex(index);
        if (QDialogRunner::run(&dialog) != QDialog::Accepted) return;
        group = dialog.group();
        index = dialog.index();
        step = dialog.step();
        reversed = dialog.reversed();
    }

    // Every file is read before the first palette goes in, so the additions are one undo step and a
    // file that can't be read adds nothing.
    std::vector<Table> tables;
    QStringList unread;
    for (const QString& file : std::as_const(files)) {
        Table table;
        QRGBPalette reader(table.colors);
        if (!reader.fromFile(file)) {
            unread << QDir::toNativeSeparators(file);
            continue;
        }
        if (reversed) reader.reverse(nullptr, true);
        tables.push_back(table);
    }
    if (!tables.empty()) {
        ensurePage();
        Block guard(block);
        model->undoStack()->beginMacro(tr("Add palettes"));
        uint position = at;
        for (const Table& table : tables) {
            model->insertPalette(position++, table.colors, QSpritePaletteShareMode::Share, group, index);
            index += step;
        }
        model->undoStack()->endMacro();
    }
    if (!unread.isEmpty())
        QUserDialogs::warning(
            tr("Add palettes"),
            tr("These files could not be read as palettes:\n%1").arg(unread.join(QLatin1Char('\n'))));
    if (!tables.empty()) showPalette(int(at + uint(tables.size()) - 1));
}

void QPalettesEditor::open()
{
    QSpritePalette* palette = currentPalette();
    if (!palette) return;
    const QString path =
        QUserDialogs::getOpenFileName(tr("Open palette"), startFolder(), QRGBPalette::openFilter());
    if (path.isEmpty()) return;
    rememberFolder(QFileInfo(path).absolutePath());
    Table table;
    if (palette->table()) std::copy(palette->table(), palette->table() + QRGBPal::TableSize, table.colors);
    QRGBPalette reader(table.colors);
    if (!reader.fromFile(path)) {
        QUserDialogs::warning(
            tr("Open palette"),
            tr("The file %1 could not be read as a palette.").arg(QDir::toNativeSeparators(path)));
        return;
    }
    ensurePage();
    writeColors(table.colors);
    show(current, true);
}

void QPalettesEditor::save()
{
    QSpritePalette* palette = currentPalette();
    if (!palette) return;
    if (model->paletteCount() > 1) {
        const QStringList choices{tr("Current palette"), tr("Palettes of group %1").arg(palette->itemGroup()),
                                  tr("All palettes")};
        const QString choice =
            QUserDialogs::getItem(tr("Save palettes"), tr("Palettes to save:"), choices, 0);
        if (choice.isEmpty()) return;
        if (choice != choices.first()) {
            saveRange(palette->itemGroup(), choice == choices.last());
            return;
        }
    }
    const QString suggested = QDir(startFolder())
                                  .filePath(QStringLiteral("%1-%2.%3")
                                                .arg(palette->itemGroup())
                                                .arg(palette->itemIndex())
                                                .arg(QStringLiteral("act")));
    QString path = QUserDialogs::getSaveFileName(tr("Save palette"), suggested, QRGBPalette::saveFilter());
    if (path.isEmpty()) return;
    if (QFileInfo(path).suffix().isEmpty()) path += QStringLiteral(".act");
    rememberFolder(QFileInfo(path).absolutePath());
    if (!palette->toFile(path))
        QUserDialogs::critical(tr("Save palette"),
                               tr("The file %1 could not be written.").arg(QDir::toNativeSeparators(path)));
}

void QPalettesEditor::saveRange(int group, bool all)
{
    const QString folder = QUserDialogs::getExistingDirectory(tr("Save palettes"), startFolder());
    if (folder.isEmpty()) return;
    rememberFolder(folder);
    QList<const QSpritePalette*> range;
    for (const QSpritePalette* palette : model->paletteItems())
        if (all || palette->itemGroup() == group) range << palette;
    QProgress progress(QApplication::activeWindow(), tr("Saving palettes..."));
    progress.setRange(0, int(range.size()));
    QStringList unwritten;
    for (int i = 0; i < range.size() && !progress.wasCanceled(); ++i) {
        const QSpritePalette* palette = range.at(i);
        const QString path = QDir(folder).filePath(QStringLiteral("%1-%2.%3")
                                                       .arg(palette->itemGroup())
                                                       .arg(palette->itemIndex())
                                                       .arg(QStringLiteral("act")));
        if (!palette->toFile(path)) unwritten << QDir::toNativeSeparators(path);
        progress.setValue(i + 1);
    }
    if (!unwritten.isEmpty())
        QUserDialogs::critical(
            tr("Save palettes"),
            tr("These files could not be written:\n%1").arg(unwritten.join(QLatin1Char('\n'))));
}

void QPalettesEditor::remap()
{
    if (!model) return;
    RemapDlg dialog(model->remapModel(), QApplication::activeWindow());
    connect(&dialog, &RemapDlg::updateView, this, [this]() { remapChanged(QModelIndex(), QModelIndex()); });
    QDialogRunner::run(&dialog);
}
