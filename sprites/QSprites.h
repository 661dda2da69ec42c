#pragma once

#include "QOrganizableObject.h"
#include "QProjectFile.h"
#include "QRGBPal.h"
#include "QRemapModel.h"
#include "QSFFFormat.h"
#include "QSpriteTypes.h"
#include "QStreamCache.h"

#include <QList>
#include <QPoint>
#include <QSize>
#include <QString>
#include <QUndoStack>
#include <QVector>

class QMimeData;
class QPaletteObject;
class QSprite;
class QSpritePalette;
class QProjectContext;
struct QSpriteClipItem;

// The model of one sprite file: the ordered sprites, the ordered palettes, their sharing of image
// records and colour tables, the validation and the undo stack. It is the list model of the sprites
// and, through paletteObject(), of the palettes.
//
// Every change ends the same way: the modified flag is set and, unless the loading flag is set,
// changed() is emitted and check() runs. While the no-undo counter is above 0 nothing is pushed on the
// undo stack; undo commands raise it while they apply themselves.
class QSprites : public QOrganizableObject, public QProjectFile
{
    Q_OBJECT
    Q_PROPERTY(quint32 version READ version WRITE setVersion)
    Q_PROPERTY(int currentIndex READ currentIndex WRITE setCurrentIndex)
    Q_PROPERTY(bool isModified READ isModified)

public:
    enum Version : quint32
    {
        Version_101 = QSFF::Version101,
        Version_200 = QSFF::Version200,
        Version_201 = QSFF::Version201
    };

    // The cache follows the "cache_type" and "cache_compression" settings (memory and compressed when
    // there is no configuration); the undo limit follows "undo_limit".
    explicit QSprites(QProjectContext* project = nullptr, QObject* parent = nullptr);
    QSprites(QProjectContext* project, uint cacheType, bool cacheCompression, QObject* parent = nullptr);
    ~QSprites() override;

    uint count() const { return uint(spriteList.size()); }
    uint paletteCount() const { return uint(paletteList.size()); }
    QSprite* at(uint index) const { return index < count() ? spriteList.at(index) : nullptr; }
    QSpritePalette* paletteAt(uint index) const
    {
        return index < paletteCount() ? paletteList.at(index) : nullptr;
    }
    int indexOf(const QSprite* sprite) const;
    int paletteIndexOf(const QSpritePalette* palette) const;
    const QList<QSprite*>& spriteItems() const { return spriteList; }
    const QList<QSpritePalette*>& paletteItems() const { return paletteList; }

    // A new empty sprite at the end or at a position (a position past the end appends).
    QSprite* add();
    QSprite* insert(uint index);
    void remove(uint index) override;
    void move(uint from, uint to) override;
    // Removes every sprite and forgets the file name, the cache, the undo stack and the modified
    // flag. The palettes stay: those that a project reads from its palette files survive the load of
    // a version 1.01 file.
    void clear();
    // The first sprite from start on with this group and index, or -1.
    int find(uint start, int group, int index) const;
    int findPalette(uint start, int group, int index) const;

    QSpritePalette* addPalette(const QVector<uint>& colors, QSpritePaletteShareMode mode, int group,
                               int index);
    QSpritePalette* addPalette(const QRGBPal* colors, QSpritePaletteShareMode mode, int group, int index);
    QSpritePalette* insertPalette(uint at, const QVector<uint>& colors, QSpritePaletteShareMode mode,
                                  int group, int index);
    QSpritePalette* insertPalette(uint at, const QRGBPal* colors, QSpritePaletteShareMode mode, int group,
                                  int index);
    // Removes a palette; the sprites that used it are left without one.
    void removePalette(uint index);
    void movePalette(uint from, uint to);
    void clearPalettes();

    void beginChanges() override;
    void endChanges() override;
    // Sorts the sprites: by group and index, and for version 1.01 so that sprites of one palette stand
    // together (the character's first).
    void autoOrganize() override;

    // Whole-file operations, each one undo step.
    // Removes the sprites of a group: all of them, or those whose index lies within from and to.
    void removeGroup(uint group, bool all, int from, int to);
    // Gives the sprites of every palette that repeats an earlier one's colours that earlier palette,
    // and removes the repeat.
    void removeDuplicatePalettes();
    // Removes the palettes that no sprite uses, except the character's (group 1).
    void clearUnusedPalettes();
    // Crops the sprites that pass the filter to their content; an image shared by several is cropped
    // once. progress() reports each step and can stop the walk.
    void cropAll(bool all, uint group, bool allIndices, int from, int to);
    // The rows of a range: every sprite, or those of a group, with all of its indices or those within
    // from and to.
    QList<uint> rangeRows(bool all, int group, bool allIndices, int from, int to) const;
    // Moves the sprites of a group (all of them, or those whose index lies within from and to) to
    // another group; answers how many moved.
    int renameGroup(int group, int newGroup, bool all, int from, int to);
    // The one canvas on which every sprite of rows stands with a common axis: axis receives the
    // largest axis of them, and the canvas reaches as far right and down as the farthest of them.
    QSize alignedCanvas(const QList<uint>& rows, QPoint* axis) const;
    // Splits every sprite of rows whose image isn't indexed into its three channels; answers how many
    // were split.
    int splitRGB(const QList<uint>& rows);
    // Appends copies of the sprites of rows of another model with their numbers, axes and flags. Their
    // palettes come along: a palette with the same colours is taken where there is one, else the palette
    // is added under its own group and index, or the next free index when that pair is taken here.
    // progress() reports each sprite and can stop the run; answers how many were imported.
    int importSprites(const QSprites& source, const QList<uint>& rows);
    // Inserts sprites made from copied items at a position (past the end appends); returns how many.
    int paste(uint at, const QList<QSpriteClipItem>& items);
    int paste(uint at, const QMimeData* data);

    bool fromFile(const QString& path, bool copy = false);
    // version 0 keeps the current one; another value is stored in the model first.
    bool toFile(const QString& path, quint32 version = 0, bool copy = false);

    bool canSave(quint32 version) override;
    bool canDiscard() override;
    bool isModified() override { return modified; }
    bool isEmpty() override { return spriteList.isEmpty() && paletteList.isEmpty(); }
    void check() override;

    quint32 version() const { return sffVersion; }
    void setVersion(quint32 value) { sffVersion = value; }
    int currentIndex() const { return current; }
    void setCurrentIndex(int value) { current = value; }
    QString fileName() const { return path; }
    void setFileName(const QString& value) { path = value; }
    void setModified(bool value) { modified = value; }
    bool isLoading() const { return loading; }
    void setLoading(bool value) { loading = value; }
    uint noUndoCount() const { return noUndo; }
    void beginNoUndo() { ++noUndo; }
    void endNoUndo()
    {
        if (noUndo > 0) --noUndo;
    }
    QUndoStack* undoStack() { return &undo; }
    QStreamCache* cache() { return &streamCache; }
    const QStreamCache* cache() const { return &streamCache; }
    QRemapModel* remapModel() { return &remap; }
    QPaletteObject* paletteObject() const { return palettes; }
    // How the last file read stored its sprites and palettes.
    const QSFFLayout& storedLayout() const { return layout; }
    void setStoredLayout(const QSFFLayout& value) { layout = value; }

    // The end of every change: the modified flag, then changed() and check() unless loading.
    void finishChange();
    // Pushes a command unless the no-undo counter is raised; otherwise deletes it.
    void pushCommand(class QUndoCommand* command);
    // Sprites that a version 1.01 file can't give the character's palette where they stand: each uses a
    // palette of group 1, isn't (0, 0) or (9000, 0), and is the first sprite or follows a sprite whose
    // palette is of another group.
    QList<uint> characterPaletteOrder() const;
    // Turns every sprite that isn't indexed into an indexed one with a palette of its own colours.
    void reduceToIndexed();

    // Plain list operations for undo commands and the file code: they push nothing and report only
    // the row changes.
    void insertSpriteObject(uint at, QSprite* sprite);
    QSprite* takeSprite(uint at);
    void moveSpriteObject(uint from, uint to);
    void insertPaletteObject(uint at, QSpritePalette* palette);
    // Takes the palette out of the list; sprites that used it are left without one.
    QSpritePalette* takePalette(uint at);
    void movePaletteObject(uint from, uint to);
    // Appends sprites made while reading, with one row notification.
    void appendLoaded(const QList<QSprite*>& sprites);

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

    // The group and index pairs that the game needs in every character.
    static const QList<QSubItem>& requiredSprites();

public Q_SLOTS:
    void undoChange();
    void redoChange();

Q_SIGNALS:
    void changed();
    void progress(uint pos, uint max, bool& allow);
    void orderMustBeChanged(QList<uint> list);
    void dataSharing(QList<uint>& list);
    void charPalette(QRGBPal* palette);

private:
    void init();
    void clearSprites();
    QSpritePalette* makePalette(int at, const QRGBPal* colors, QSpritePaletteShareMode mode, int group,
                                int index);
    bool lessThan(const QSprite* a, const QSprite* b) const;

    QRemapModel remap;
    quint32 noUndo = 0;
    QStreamCache streamCache;
    QString path;
    quint32 sffVersion = Version_201;
    bool modified = false;
    bool loading = false;
    QUndoStack undo;
    qint32 current = -1;
    QList<QSprite*> spriteList;
    QPaletteObject* palettes;
    QList<QSpritePalette*> paletteList;
    QSFFLayout layout;
};
