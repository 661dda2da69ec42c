#pragma once

#include <QtGlobal>

// How a sprite's new pixels relate to the image record it shares with other sprites. Scripts see the
// first three; ReplaceShared writes the pixels into the shared record itself, so that every sharer
// changes with it.
enum class QSpriteShareMode : int
{
    Share = 0,
    NoShare = 1,
    AskToShare = 2,
    ReplaceShared = 3
};

// How an added palette relates to the palettes already there. The names read the other way round for
// Share and NoShare, which is how scripts have always known them: Share always makes a new palette,
// NoShare returns an existing palette with the same colours, AskToShare does so unless that palette is
// one of the character's (group 1).
enum class QSpritePaletteShareMode : int
{
    Share = 0,
    NoShare = 1,
    AskToShare = 2
};

// What setting an image does with palettes.
enum class QSpritePaletteMode : int
{
    Ignore = 0,
    OwnPalette = 1,
    AdaptImage = 2,
    SwapPalette = 3
};

// The colour table that QSprite::image() gives an indexed image; None leaves it without one.
enum class QSpriteImagePalette : int
{
    None = 0,
    Default = 1,
    Remapped = 2
};

enum class QSpriteFlag : quint16
{
    DecompressOnLoad = 1
};

// A group and an index, naming a sprite or a palette.
struct QSubItem
{
    int group = 0;
    int index = 0;
};
