#pragma once

#include <QString>

class QDefinitions;
class QIODevice;
class QSprites;
struct QFntFont;

// Converts the old single-file font into the current form of a font: definitions text that names a
// sprite file, and a version 2.00 sprite model with one sprite per character (group 0, the character's
// code as index) and one palette of group 0 per colour bank.
//
// The pixels keep their indices. A font of fewer than 256 colours draws with the last colours of its
// table, and bank k replaces them with the k-th run of that many colours further down: palette k is
// the image's table with its top run taken from there, so that every bank is one palette to switch.
class QFontFile
{
public:
    // Reads the file and replaces the text of definitions and the sprites and palettes of sprites.
    // A file that can't be opened or read as a font answers false, and both models stay as they were.
    static bool importFnt(const QString& path, QDefinitions& definitions, QSprites& sprites);
    // The same on an open device; name is the font's name, which also names its sprite file.
    static bool importFnt(QIODevice* device, const QString& name, QDefinitions& definitions,
                          QSprites& sprites);

    // The definitions text of a font of that name.
    static QString definitionsText(const QFntFont& font, const QString& name);
    // Replaces the sprites and palettes of the model by those of the font, with no undo step.
    static void toSprites(const QFntFont& font, QSprites& sprites);
};
