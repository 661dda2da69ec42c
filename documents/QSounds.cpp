#include "QSounds.h"

#include "QMugenModel.h"
#include "QSNDReader.h"
#include "QSNDWriter.h"
#include "QSound.h"
#include "QSoundPlayer.h"
#include "QUserDialogs.h"
#include "SoundChangeInfo.h"
#include "SoundChangeSample.h"
#include "SoundInsert.h"
#include "SoundMove.h"
#include "SoundRemove.h"

#include <QFile>
#include <QSaveFile>

#include <algorithm>
#include <cmath>

namespace {

quint64 key(uint group, uint sample)
{
    return (quint64(group) << 32) | sample;
}

} // namespace

QSounds::QSounds(QProjectContext* project, QObject* parent)
    : QSounds(project, numberSetting("cache_type", 0), flagSetting("cache_compression", true), parent)
{}

QSounds::QSounds(QProjectContext* project, uint cacheType, bool cacheCompression, QObject* parent)
    : QOrganizableObject(parent), QProjectFile(pftSounds, project),
      streamCache(QStringLiteral("tavrel_sounds_XXXXXX.cache"), cacheType, cacheCompression)
{
    undo.setUndoLimit(int(numberSetting("undo_limit", 64)));
    stopTimer.setSingleShot(true);
    connect(&stopTimer, &QTimer::timeout, this, &QSounds::stopTimerFired);
}

QSounds::~QSounds()
{
    stop();
    undo.clear();
    qDeleteAll(sounds);
    sounds.clear();
    uses.clear();
    streamCache.clear();
}

QByteArray QSounds::bytes(uint index) const
{
    const QSound* sound = at(index);
    return sound ? streamCache.decoded(sound->data) : QByteArray();
}

int QSounds::find(uint group, uint sample, uint start) const
{
    for (uint i = start; i < count(); ++i)
        if (sounds.at(i)->group == group && sounds.at(i)->sample == sample) return int(i);
    return -1;
}

QStreamCacheItem* QSounds::acquire(const QByteArray& bytes)
{
    if (bytes.isEmpty()) return nullptr;
    QStreamCacheItem* item = streamCache.find(bytes);
    if (!item) item = streamCache.add(bytes, 0, nullptr);
    ++uses[item];
    return item;
}

void QSounds::release(QStreamCacheItem* item)
{
    if (!item) return;
    auto it = uses.find(item);
    if (it == uses.end()) return;
    if (--it.value() > 0) return;
    uses.erase(it);
    streamCache.remove(item);
}

void QSounds::finishChange()
{
    modified = true;
    if (isInMacro()) return;
    emit changed();
    check();
}

// ---- Editing

void QSounds::insert(uint index, uint group, uint sample, const QByteArray& bytes)
{
    index = std::min(index, count());
    if (undoEnabled) {
        undo.push(new SoundInsert(this, index, group, sample, bytes));
        return;
    }
    auto* sound = new QSound;
    sound->group = group;
    sound->sample = sample;
    sound->data = acquire(bytes);
    sound->info = QSoundInfo::fromWav(bytes);
    beginInsertRows(QModelIndex(), int(index), int(index));
    sounds.insert(index, sound);
    endInsertRows();
    finishChange();
}

void QSounds::remove(uint index)
{
    if (index >= count()) return;
    if (undoEnabled) {
        undo.push(new SoundRemove(this, index));
        return;
    }
    beginRemoveRows(QModelIndex(), int(index), int(index));
    QSound* sound = sounds.takeAt(index);
    endRemoveRows();
    release(sound->data);
    delete sound;
    finishChange();
}

void QSounds::move(uint from, uint to)
{
    if (from >= count() || to >= count() || from == to) return;
    if (undoEnabled) {
        undo.push(new SoundMove(this, from, to));
        return;
    }
    beginMoveRows(QModelIndex(), int(from), int(from), QModelIndex(), int(to > from ? to + 1 : to));
    sounds.move(from, to);
    endMoveRows();
    finishChange();
}

void QSounds::setInfo(uint index, uint group, uint sample)
{
    QSound* sound = at(index);
    if (!sound) return;
    if (undoEnabled) {
        undo.push(new SoundChangeInfo(this, index, group, sample));
        return;
    }
    sound->group = group;
    sound->sample = sample;
    const QModelIndex row = QAbstractListModel::index(int(index));
    emit dataChanged(row, row);
    finishChange();
}

void QSounds::setSample(uint index, const QByteArray& bytes)
{
    QSound* sound = at(index);
    if (!sound) return;
    if (undoEnabled) {
        undo.push(new SoundChangeSample(this, index, bytes));
        return;
    }
    // The sound that plays keeps its own copy of the bytes, so a new sample can't disturb it.
    QStreamCacheItem* old = sound->data;
    sound->data = acquire(bytes);
    release(old);
    sound->info = QSoundInfo::fromWav(bytes);
    const QModelIndex row = QAbstractListModel::index(int(index));
    emit dataChanged(row, row);
    finishChange();
}

void QSounds::removeAll()
{
    beginResetModel();
    undo.clear();
    qDeleteAll(sounds);
    sounds.clear();
    uses.clear();
    streamCache.clear();
    endResetModel();
}

void QSounds::clear()
{
    stop();
    removeAll();
}

void QSounds::beginEdit()
{
    if (editDepth++ == 0 && undoEnabled) {
        undo.beginMacro(QString());
        macroOpen = true;
    }
}

void QSounds::endEdit()
{
    if (editDepth == 0) return;
    if (--editDepth > 0) return;
    if (macroOpen) {
        undo.endMacro();
        macroOpen = false;
    }
    if (loading) return;
    emit changed();
    check();
}

void QSounds::removeGroup(uint group)
{
    if (std::none_of(sounds.cbegin(), sounds.cend(), [group](const QSound* s) { return s->group == group; }))
        return;
    beginEdit();
    for (uint i = count(); i-- > 0;)
        if (sounds.at(i)->group == group) remove(i);
    endEdit();
}

void QSounds::renameGroup(uint from, uint to)
{
    if (from == to ||
        std::none_of(sounds.cbegin(), sounds.cend(), [from](const QSound* s) { return s->group == from; }))
        return;
    beginEdit();
    for (uint i = 0; i < count(); ++i)
        if (sounds.at(i)->group == from) setInfo(i, to, sounds.at(i)->sample);
    endEdit();
}

void QSounds::autoOrganize()
{
    QList<QSound*> sorted = sounds;
    std::stable_sort(sorted.begin(), sorted.end(), [](const QSound* a, const QSound* b) {
        return key(a->group, a->sample) < key(b->group, b->sample);
    });
    if (sorted == sounds) return;
    beginEdit();
    for (int target = 0; target < sorted.size(); ++target) {
        const int current = sounds.indexOf(sorted.at(target));
        if (current != target) move(uint(current), uint(target));
    }
    endEdit();
}

// ---- Files

bool QSounds::read(QIODevice* device)
{
    stop();
    removeAll();
    error.clear();
    const bool wasEnabled = undoEnabled;
    undoEnabled = false;
    loading = true;

    QSNDReader reader(device);
    bool ok = reader.readHeader();
    if (!ok) error = reader.errorString();
    bool allow = true;
    QList<QSound*> loaded;
    if (ok) emit progress(0, reader.count(), allow);
    for (quint32 i = 0; ok && allow && i < reader.count(); ++i) {
        QSNDRecord record;
        if (!reader.readRecord(&record)) break;
        auto* sound = new QSound;
        sound->group = record.group;
        sound->sample = record.sample;
        sound->data = acquire(record.bytes);
        sound->info = QSoundInfo::fromWav(record.bytes);
        loaded.append(sound);
        emit progress(i + 1, reader.count(), allow);
    }
    loadNotes.clear();
    for (const QSNDReader::Warning& warning : reader.warnings())
        loadNotes.append({int(warning.sound), warning.text});
    if (ok && !allow) {
        error = tr("The load was stopped.");
        ok = false;
    }
    if (ok && !loaded.isEmpty()) {
        beginInsertRows(QModelIndex(), 0, int(loaded.size()) - 1);
        sounds = loaded;
        endInsertRows();
    } else if (!ok) {
        for (const QSound* sound : std::as_const(loaded))
            release(sound->data);
        qDeleteAll(loaded);
    }

    undoEnabled = wasEnabled;
    loading = false;
    modified = false;
    if (editDepth == 0) {
        emit changed();
        check();
    }
    return ok;
}

QStringList QSounds::readWarnings() const
{
    QStringList texts;
    for (const auto& note : loadNotes)
        texts << note.second;
    return texts;
}

bool QSounds::write(QIODevice* device)
{
    stop();
    error.clear();
    QSNDWriter writer(device);
    bool ok = writer.writeHeader(count());
    bool allow = true;
    for (uint i = 0; ok && allow && i < count(); ++i) {
        const QSound* sound = sounds.at(i);
        ok = writer.writeRecord(sound->group, sound->sample, streamCache.decoded(sound->data));
        emit progress(i + 1, count(), allow);
    }
    if (!ok) error = writer.errorString();
    // What was written is a well-formed file: the notes about how the old one was read are over.
    if (ok && allow) loadNotes.clear();
    if (ok && !allow) {
        error = tr("The save was stopped.");
        ok = false;
    }
    return ok;
}

bool QSounds::fromFile(const QString& fileName, bool asImport)
{
    stop();
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        removeAll();
        error = tr("The file can't be opened.");
        return false;
    }
    if (!read(&file)) return false;
    if (!asImport) path = fileName;
    return true;
}

bool QSounds::toFile(const QString& fileName, bool asCopy)
{
    stop();
    QSaveFile file(fileName);
    if (!file.open(QIODevice::WriteOnly)) {
        error = tr("The file can't be written.");
        return false;
    }
    if (!write(&file)) {
        file.cancelWriting();
        return false;
    }
    if (!file.commit()) {
        error = tr("The file can't be written.");
        return false;
    }
    modified = false;
    if (!asCopy) path = fileName;
    return true;
}

// ---- Playing

void QSounds::play(uint index, bool loop)
{
    stop();
    const QSound* sound = at(index);
    if (!sound || !sound->data) return;
    if (!ensurePlayer()) return;
    playing = streamCache.decoded(sound->data);
    if (!player->play(playing, loop)) {
        playing = QByteArray();
        QUserDialogs::warning(tr("Play sound"), tr("The sound %1, %2 can't be played: %3")
                                                    .arg(sound->group)
                                                    .arg(sound->sample)
                                                    .arg(player->errorString()));
        return;
    }
    if (!loop) stopTimer.start(int(std::lround(double(sound->info.duration) * 1000.0)) + 1000);
}

bool QSounds::ensurePlayer()
{
    if (player) return true;
    // Made on the first play only: an audio back end that is missing or broken must never keep a
    // project from opening, and asking for it costs a look at the system.
    QString reason;
    player = QSoundPlayer::create(this, &reason);
    if (!player) {
        QUserDialogs::warning(tr("Play sound"),
                              tr("Sounds can't be played on this computer.\n%1").arg(reason));
        return false;
    }
    connect(player, &QSoundPlayer::failed, this, [this](const QString& why) {
        stopTimer.stop();
        playing = QByteArray();
        QUserDialogs::warning(tr("Play sound"), tr("Playing stopped: %1").arg(why));
        emit stopped();
    });
    return true;
}

void QSounds::stop()
{
    stopTimer.stop();
    if (player) player->stop();
    playing = QByteArray();
}

bool QSounds::isPlaying() const
{
    return player && player->isPlaying();
}

void QSounds::stopTimerFired()
{
    if (player) player->stop();
    playing = QByteArray();
    emit stopped();
}

// ---- Project file

bool QSounds::canSave(quint32 version)
{
    Q_UNUSED(version)
    if (!sounds.isEmpty()) return true;
    QUserDialogs::warning(tr("Save SND"),
                          tr("You can't save an empty SND because M.U.G.E.N. will not open it."));
    return false;
}

bool QSounds::canDiscard()
{
    if (!modified) return true;
    return QUserDialogs::question(
               tr("Discard changes"), tr("Do you really want to discard the changes made in the sounds?"),
               QUserDialogs::Yes | QUserDialogs::No, QUserDialogs::No) == QUserDialogs::Yes;
}

void QSounds::check()
{
    QMessages* list = messages();
    list->begin();
    // The positions so far of each group and sample pair, so that a repeat names every earlier one,
    // the nearest first.
    QHash<quint64, QList<int>> seen;
    for (int i = 0; i < sounds.size(); ++i) {
        const QSound* sound = sounds.at(i);
        if (!sound->data) list->add(1, tr("Empty sound!"), i);
        QList<int>& earlier = seen[key(sound->group, sound->sample)];
        for (auto j = earlier.crbegin(); j != earlier.crend(); ++j)
            list->add(0,
                      tr("The group %2, index %3 is already in use by sound #%4!")
                          .arg(sound->group)
                          .arg(sound->sample)
                          .arg(*j),
                      i);
        earlier.append(i);
    }
    // How the file was read stays in the list until the sounds are written in a form that needs none.
    for (const auto& note : std::as_const(loadNotes))
        list->add(1, note.second, note.first);
    list->end();
}

// ---- List model

int QSounds::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(sounds.size());
}

QVariant QSounds::data(const QModelIndex& index, int role) const
{
    const QSound* sound = index.isValid() ? at(uint(index.row())) : nullptr;
    if (!sound || role != Qt::DisplayRole) return QVariant();
    return QStringLiteral("%1, %2").arg(sound->group).arg(sound->sample);
}
