// The commands of the sounds editor on single sounds and groups: adding WAV files, replacing and saving
// a sound's WAV, duplicating, deleting, renumbering groups and the clipboard.

#include "AddSom.h"
#include "QDialogRunner.h"
#include "QGroupRangeBox.h"
#include "QNaturalOrder.h"
#include "QSound.h"
#include "QSoundTransfer.h"
#include "QSounds.h"
#include "QSoundsEditor.h"
#include "QUserDialogs.h"
#include "QViewSettings.h"
#include "SndGrpDlg.h"

#include <QApplication>
#include <QClipboard>
#include <QDataStream>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMimeData>
#include <QSaveFile>
#include <QSpinBox>

#include <algorithm>

namespace {

const char* const soundMime = "application/x-tavrel-sound";

QString wavFilter()
{
    return QSoundsEditor::tr("WAV sound (*.wav)");
}

// The engine plays RIFF WAVE files only; anything else would be a sound that never sounds.
bool isWav(const QByteArray& bytes)
{
    return bytes.size() >= 12 && bytes.startsWith("RIFF") && bytes.mid(8, 4) == "WAVE";
}

QByteArray readFile(const QString& path, bool* ok)
{
    QFile file(path);
    *ok = file.open(QIODevice::ReadOnly);
    return *ok ? file.readAll() : QByteArray();
}

} // namespace

int QSoundsEditor::addFiles(const QStringList& files)
{
    const QSound* sound = currentSound();
    const bool ask = QViewSettings::value("show_addsound_dialog", true).toBool();
    AddSom::Values values = addValues;
    // The numbers follow on from the current sound.
    values.group = sound ? int(sound->group) : 0;
    values.number = sound ? int(sound->sample) + 1 : 0;
    if (ask) {
        AddSom dialog(values, int(files.size()), dialogParent());
        if (QDialogRunner::run(&dialog) != QDialog::Accepted) return -1;
        values = dialog.values();
        addValues = values;
    }

    QList<QByteArray> samples;
    QStringList refused;
    for (const QString& file : files) {
        bool ok = false;
        QByteArray bytes = readFile(file, &ok);
        if (ok && isWav(bytes))
            samples << bytes;
        else
            refused << QFileInfo(file).fileName();
    }
    int first = -1;
    if (!samples.isEmpty()) {
        uint at = sound ? uint(position() + 1) : model->count();
        first = int(at);
        const uint group = uint(values.group);
        uint number = uint(values.number);
        model->beginEdit();
        for (const QByteArray& bytes : std::as_const(samples)) {
            // Without the dialog the numbers simply follow on, as in the sprites editor.
            if (ask && values.nextFree)
                while (model->find(group, number) >= 0)
                    ++number;
            model->insert(at++, group, number++, bytes);
        }
        model->endEdit();
    }
    if (!refused.isEmpty())
        QUserDialogs::warning(
            tr("Add sounds"),
            tr("These files are no WAV sounds and were passed over:\n%1").arg(refused.join('\n')));
    return first;
}

void QSoundsEditor::add()
{
    if (!model) return;
    addWavFiles(QUserDialogs::getOpenFileNames(tr("Add sounds"), startFolder("snd_path"), wavFilter()));
}

void QSoundsEditor::addWavFiles(const QStringList& chosen)
{
    if (!model || chosen.isEmpty()) return;
    QStringList files = chosen;
    if (QViewSettings::value("sort_file_names", true).toBool()) {
        std::stable_sort(files.begin(), files.end(), [](const QString& a, const QString& b) {
            return QNaturalOrder::less(QFileInfo(a).fileName(), QFileInfo(b).fileName());
        });
    }
    rememberFolder("snd_path", files.first());
    emit flushFields();
    const int first = addFiles(files);
    if (first >= 0) definePos(first);
}

void QSoundsEditor::del()
{
    if (!currentSound()) return;
    if (QViewSettings::value("confirm_delete", true).toBool() &&
        QUserDialogs::question(tr("Delete sound"), tr("Do you really want to delete the sound?")) !=
            QUserDialogs::Yes)
        return;
    emit flushFields();
    model->remove(uint(position()));
    updateSel();
}

void QSoundsEditor::openWav()
{
    if (!currentSound()) return;
    const QString file = QUserDialogs::getOpenFileName(tr("Open WAV"), startFolder("snd_path"), wavFilter());
    if (file.isEmpty()) return;
    rememberFolder("snd_path", file);
    bool ok = false;
    const QByteArray bytes = readFile(file, &ok);
    if (!ok || !isWav(bytes)) {
        QUserDialogs::warning(tr("Open WAV"),
                              tr("The file %1 is not a WAV sound.").arg(QFileInfo(file).fileName()));
        return;
    }
    emit flushFields();
    model->setSample(uint(position()), bytes);
}

void QSoundsEditor::saveWav()
{
    const QSound* sound = currentSound();
    if (!sound) return;
    if (!sound->data) {
        QUserDialogs::information(tr("Save WAV"), tr("The sound is empty: there is no WAV to save."));
        return;
    }
    const QString name = QSoundTransfer::wavFileName(sound->group, sound->sample);
    const QString folder = startFolder("snd_path");
    QString path = QUserDialogs::getSaveFileName(
        tr("Save WAV"), folder.isEmpty() ? name : QDir(folder).filePath(name), wavFilter());
    if (path.isEmpty()) return;
    if (QFileInfo(path).suffix().isEmpty()) path += QLatin1String(".wav");
    rememberFolder("snd_path", path);
    const QByteArray bytes = model->bytes(uint(position()));
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit())
        QUserDialogs::warning(tr("Save WAV"), tr("The file %1 could not be written.").arg(path));
}

void QSoundsEditor::duplicate()
{
    const QSound* sound = currentSound();
    if (!sound) return;
    emit flushFields();
    const int row = position();
    model->insert(uint(row + 1), sound->group, sound->sample, model->bytes(uint(row)));
    definePos(row + 1);
}

QList<uint> QSoundsEditor::rangeRows(int group, bool allNumbers, int from, int to) const
{
    QList<uint> rows;
    for (uint i = 0; model && i < model->count(); ++i) {
        const QSound* sound = model->at(i);
        if (sound->group == uint(group) &&
            (allNumbers || (sound->sample >= uint(qMax(0, from)) && sound->sample <= uint(qMax(0, to)))))
            rows << i;
    }
    return rows;
}

void QSoundsEditor::delGroup()
{
    const QSound* sound = currentSound();
    if (!sound) return;
    SndGrpDlg dialog(SndGrpDlg::Delete, int(sound->group), dialogParent());
    if (QDialogRunner::run(&dialog) != QDialog::Accepted) return;
    const QGroupRangeBox* range = dialog.range();
    const QList<uint> rows = rangeRows(range->group(), range->allNumbers(), range->from(), range->to());
    if (rows.isEmpty()) {
        QUserDialogs::information(tr("Delete group"),
                                  tr("No sound of the group %1 lies in the range.").arg(range->group()));
        return;
    }
    emit flushFields();
    model->beginEdit();
    for (auto row = rows.crbegin(); row != rows.crend(); ++row)
        model->remove(*row);
    model->endEdit();
    updateSel();
}

void QSoundsEditor::renameGroup()
{
    const QSound* sound = currentSound();
    if (!sound) return;
    SndGrpDlg dialog(SndGrpDlg::Rename, int(sound->group), dialogParent());
    if (QDialogRunner::run(&dialog) != QDialog::Accepted) return;
    const QGroupRangeBox* range = dialog.range();
    const uint newGroup = uint(dialog.toGroupBox()->value());
    const QList<uint> rows = rangeRows(range->group(), range->allNumbers(), range->from(), range->to());
    if (rows.isEmpty() || uint(range->group()) == newGroup) {
        QUserDialogs::information(tr("Renumber group"),
                                  tr("No sound of the group %1 lies in the range.").arg(range->group()));
        return;
    }
    // Numbers that the other group uses already would stand twice; the user may mean to merge.
    const bool clash = std::any_of(rows.cbegin(), rows.cend(), [&](uint row) {
        return model->find(newGroup, model->at(row)->sample) >= 0;
    });
    if (clash &&
        QUserDialogs::question(tr("Renumber group"),
                               tr("The group %1 already uses some of these numbers. Do you want to "
                                  "move the sounds anyway?")
                                   .arg(newGroup),
                               QUserDialogs::Yes | QUserDialogs::No, QUserDialogs::No) != QUserDialogs::Yes)
        return;
    emit flushFields();
    model->beginEdit();
    for (const uint row : rows)
        model->setInfo(row, newGroup, model->at(row)->sample);
    model->endEdit();
    updateSel();
}

// ---- Clipboard: a sound travels with its numbers between projects, and as a plain WAV to other programs.

void QSoundsEditor::copy()
{
    const QSound* sound = currentSound();
    if (!sound) return;
    const QByteArray bytes = model->bytes(uint(position()));
    QByteArray packed;
    QDataStream stream(&packed, QIODevice::WriteOnly);
    stream << quint32(sound->group) << quint32(sound->sample) << bytes;
    auto* data = new QMimeData;
    data->setData(QLatin1String(soundMime), packed);
    if (!bytes.isEmpty()) data->setData(QStringLiteral("audio/wav"), bytes);
    QApplication::clipboard()->setMimeData(data);
}

void QSoundsEditor::cut()
{
    if (!currentSound()) return;
    copy();
    emit flushFields();
    model->remove(uint(position()));
    updateSel();
}

void QSoundsEditor::paste()
{
    if (!model) return;
    const QMimeData* data = QApplication::clipboard()->mimeData();
    if (!data) return;
    const QSound* sound = currentSound();
    quint32 group = sound ? sound->group : 0;
    quint32 sample = sound ? sound->sample + 1 : 0;
    QByteArray bytes;
    if (data->hasFormat(QLatin1String(soundMime))) {
        QDataStream stream(data->data(QLatin1String(soundMime)));
        stream >> group >> sample >> bytes;
        if (stream.status() != QDataStream::Ok) return;
    } else {
        for (const char* format : {"audio/wav", "audio/x-wav", "audio/wave"})
            if (data->hasFormat(QLatin1String(format))) {
                bytes = data->data(QLatin1String(format));
                break;
            }
        if (!isWav(bytes)) return;
    }
    emit flushFields();
    const int at = sound ? position() + 1 : int(model->count());
    model->insert(uint(at), group, sample, bytes);
    definePos(at);
}

void QSoundsEditor::undo()
{
    if (!model) return;
    emit flushFields();
    model->undoStack()->undo();
    updateSel();
}

void QSoundsEditor::redo()
{
    if (!model) return;
    emit flushFields();
    model->undoStack()->redo();
    updateSel();
}
