#pragma once

#include "QOrganizableObject.h"
#include "QProjectFile.h"
#include "QStreamCache.h"

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <QUndoStack>

class QIODevice;
class QProjectContext;
class QSound;
class QSoundPlayer;

// The model of a project's sound file (SND): an ordered list of WAV samples, each with a group and a
// sample number. The samples live in a QStreamCache, in memory or in a temporary file; sounds with the
// same bytes share one block, which is freed when the last sound using it goes. Undo commands keep
// their own copy of the bytes they need.
//
// Every edit goes through the same operations, which push their command while undo is enabled and
// apply themselves otherwise; a command applies the same operation with undo switched off. Each change
// sets the modified flag and, outside a beginEdit()/endEdit() pair and outside a load, emits
// changed() and runs check().
class QSounds : public QOrganizableObject, public QProjectFile
{
    Q_OBJECT
    Q_PROPERTY(bool isModified READ isModified)

public:
    // The cache follows the "cache_type" and "cache_compression" settings (memory and compressed when
    // there is no configuration); the undo limit follows "undo_limit".
    explicit QSounds(QProjectContext* project = nullptr, QObject* parent = nullptr);
    QSounds(QProjectContext* project, uint cacheType, bool cacheCompression, QObject* parent = nullptr);
    ~QSounds() override;

    uint count() const { return uint(sounds.size()); }
    QSound* at(uint index) const { return index < count() ? sounds.at(index) : nullptr; }
    const QList<QSound*>& soundItems() const { return sounds; }
    // The WAV file of a sound; empty for an empty sound or a position past the end.
    QByteArray bytes(uint index) const;
    // The first sound from start on with this group and sample, or -1.
    int find(uint group, uint sample, uint start = 0) const;

    // Editing, each one undo step while undo is enabled. Positions past the end append (insert) or are
    // ignored (the others).
    void insert(uint index, uint group, uint sample, const QByteArray& bytes);
    void add(uint group, uint sample, const QByteArray& bytes) { insert(count(), group, sample, bytes); }
    void remove(uint index) override;
    void move(uint from, uint to) override;
    void setInfo(uint index, uint group, uint sample);
    // Gives a sound other bytes; empty bytes make it an empty sound.
    void setSample(uint index, const QByteArray& bytes);
    // Stops playing and removes every sound, with the undo steps that addressed them.
    void clear();

    // A group of edits that undo takes back in one step; changed() and check() wait for its end.
    void beginEdit();
    void endEdit();
    void beginChanges() override { beginEdit(); }
    void endChanges() override { endEdit(); }
    void removeGroup(uint group);
    void renameGroup(uint from, uint to);
    // Sorts the sounds by group and sample, keeping the order of equal pairs.
    void autoOrganize() override;

    // Reads a sound file. A file that isn't one, or ends before its sounds do, leaves the model empty
    // and answers false with errorString(); so does a progress receiver that stops the load. An
    // import keeps the model's file name.
    bool fromFile(const QString& path, bool asImport = false);
    // Writes the sounds through a save file: a failed save leaves what was at path untouched. A copy
    // keeps the model's file name.
    bool toFile(const QString& path, bool asCopy = false);
    // The same on a device, without the file name.
    bool read(QIODevice* device);
    bool write(QIODevice* device);
    QString errorString() const { return error; }

    // Plays a sound from memory. Without looping, stopped() follows once its duration and a second
    // have passed.
    void play(uint index, bool loop = false);
    void stop();
    bool isPlaying() const;
    // What the last read had to take liberties with (a sample cut short by the end of the file, ...).
    QStringList readWarnings() const;
    // The player, made when a sound is first played; nullptr before that or when none can be made.
    QSoundPlayer* soundPlayer() const { return player; }
    // The bytes that play now; they stay unchanged until the next stop.
    const QByteArray& playingBytes() const { return playing; }
    const QTimer& playTimer() const { return stopTimer; }

    bool canSave(quint32 version) override;
    bool canDiscard() override;
    bool isModified() override { return modified; }
    bool isEmpty() override { return sounds.isEmpty(); }
    void check() override;

    QString fileName() const { return path; }
    void setFileName(const QString& value) { path = value; }
    void setModified(bool value) { modified = value; }
    bool isUndoEnabled() const { return undoEnabled; }
    void setUndoEnabled(bool value) { undoEnabled = value; }
    bool isInMacro() const { return editDepth > 0 || loading; }
    QUndoStack* undoStack() { return &undo; }
    QStreamCache* cache() { return &streamCache; }
    const QStreamCache* cache() const { return &streamCache; }

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

Q_SIGNALS:
    void changed();
    void stopped();
    void progress(uint pos, uint max, bool& allow);

private:
    void finishChange();
    // The cache block of bytes: an existing one with the same bytes, or a new one.
    QStreamCacheItem* acquire(const QByteArray& bytes);
    void release(QStreamCacheItem* item);
    void removeAll();
    void stopTimerFired();
    bool ensurePlayer();

    bool undoEnabled = true;
    QList<QSound*> sounds;
    QStreamCache streamCache;
    QHash<QStreamCacheItem*, int> uses;
    QString path;
    QUndoStack undo;
    QSoundPlayer* player = nullptr;
    QByteArray playing;
    QTimer stopTimer;
    bool modified = false;
    int editDepth = 0;
    bool macroOpen = false;
    bool loading = false;
    QString error;
    // Warnings of the last read, by sound row.
    QList<QPair<int, QString>> loadNotes;
};
