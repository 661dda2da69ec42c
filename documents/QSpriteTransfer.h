#pragma once

#include <QList>
#include <QString>

class QSprites;
class QSprite;
class QSpritePalette;

// Which sprites an export takes: all of them, every sprite of some groups, or a run of indices within
// one group (first to last, both included).
struct QSpriteSelection
{
    enum Kind
    {
        All,
        Groups,
        Run
    };

    Kind kind = All;
    QList<int> groups;
    int group = 0;
    int first = 0;
    int last = -1;

    static QSpriteSelection all() { return QSpriteSelection(); }
    static QSpriteSelection ofGroups(const QList<int>& groups);
    static QSpriteSelection run(int group, int first, int last);

    bool contains(int group, int index) const;
};

// Moves sprites and palettes out of a sprite file as PNG and ACT files named by a small text file, and
// back in from such a text file. Two text forms are written: the editor's own export file (any suffix
// but "def"), which is also what import reads, and the definitions of Elecbyte's SprMaker 2 ("def"),
// with which the game's tools build the sprite file again.
//
// Every file is written through QSaveFile, so a failed save leaves an earlier file of that name as it
// was.
class QSpriteTransfer
{
public:
    // Writes the text file at target and the image and palette files beside it. False when any file
    // could not be written; the others are written all the same.
    static bool exportTo(QSprites& sprites, const QString& target,
                         const QSpriteSelection& selection = QSpriteSelection());
    // Adds the palettes and sprites that an export file names, as one undo step named "import". A file
    // that can't be opened changes nothing and answers false.
    static bool importFrom(QSprites& sprites, const QString& path);

    // The texts alone, as exportTo() writes them; the SprMaker text takes the target's base name.
    static QString exportText(const QSprites& sprites, const QSpriteSelection& selection);
    static QString sprMakerText(const QSprites& sprites, const QSpriteSelection& selection,
                                const QString& baseName);

    static QString imageFileName(int group, int index);
    static QString paletteFileName(int group, int index);

    // The selected sprites in list order, and the palettes that go with them in palette order: every
    // palette when all sprites are taken, else those that the selected sprites use.
    static QList<QSprite*> selectedSprites(const QSprites& sprites, const QSpriteSelection& selection);
    static QList<QSpritePalette*> selectedPalettes(const QSprites& sprites,
                                                   const QSpriteSelection& selection);
};
